#include "shell/TabelleNomi.h"

#include <initializer_list>

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

std::vector<std::string> DaTesti(std::initializer_list<int> numeri) {
    std::vector<std::string> lista;
    for (const int n : numeri) lista.push_back(Testo(n));
    return lista;
}

}  // namespace

void CaricaTabelleNomi() {
    ListaLingue = {"Italiano", "English"};
    ListaUMVelocita = {"Km/h", "mph"};
    ListaUMTemperatura = {"\xB0 C", "\xB0 F"};
    ListaUMPressione = {"bar", "psi"};
    ListaIngressiAN = {"AN 1", "AN 2"};
    ListaCanaliA = DaTesti({221, 222, 223});
    ListaCanaliB = ListaCanaliA;
    ListaTipiSensore = DaTesti({134, 135, 136, 137, 138, 139, 290, 319, 314});
    ListaAllarmeBase = DaTesti({253});
    ListaAllarmi = DaTesti({255, 256, 257, 258, 259, 260, 261});
    ListaAllarmeExtra = DaTesti({263});
}

}  // namespace lapvane
