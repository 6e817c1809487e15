#include "shell/TabelleNomi.h"

#include <initializer_list>
#include <span>

#include "shell/LoadStrings.h"

namespace lapvane {

std::vector<std::string> ListaLingue;
std::vector<std::string> ListaUMVelocita;
std::vector<std::string> ListaUMTemperatura;
std::vector<std::string> ListaUMPressione;
std::vector<std::string> ListaIngressiAN;
std::vector<std::string> ListaCanaliA;
std::vector<std::string> ListaCanaliB;
std::vector<std::string> ListaTipiSensore;
std::vector<std::string> ListaAllarmeBase;
std::vector<std::string> ListaAllarmi;
std::vector<std::string> ListaAllarmeExtra;

namespace {

std::vector<std::string> DaTesti(std::span<const Voce> voci) {
    std::vector<std::string> lista;
    for (const Voce voce : voci) lista.push_back(Testo(voce));
    return lista;
}

std::vector<std::string> DaTesti(std::initializer_list<Voce> voci) {
    return DaTesti(std::span(voci.begin(), voci.size()));
}

}  // namespace

void CaricaTabelleNomi() {
    ListaLingue = {"Italiano", "English"};
    ListaUMVelocita = {"Km/h", "mph"};
    ListaUMTemperatura = {"\xB0 C", "\xB0 F"};
    ListaUMPressione = {"bar", "psi"};
    ListaIngressiAN = {"AN 1", "AN 2"};
    ListaCanaliA = DaTesti({Voce::LivelloNonUsato, Voce::AttivoBasso, Voce::AttivoAlto});
    ListaCanaliB = ListaCanaliA;
    ListaTipiSensore = DaTesti(kTestiTipiSensore);
    ListaAllarmeBase = DaTesti({Voce::AllarmeEsterno});
    ListaAllarmi = DaTesti({Voce::UscitaTemperaturaOlio, Voce::UscitaPressioneOlio,
                            Voce::UscitaPressioneBenzina, Voce::UscitaTemperaturaAcqua,
                            Voce::UscitaLivelloBenzina, Voce::UscitaTensioneBatteria,
                            Voce::UscitaQualsiasiAllarme});
    ListaAllarmeExtra = DaTesti({Voce::LedQualsiasiAllarme});
}

}  // namespace lapvane
