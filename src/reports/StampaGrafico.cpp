#include "reports/StampaGrafico.h"

#include <algorithm>

#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr Voce kPrimoAllarme = Voce::AllarmePompaOlio;
constexpr int kAllarmi = 8;

std::string SenzaRitorni(std::string testo) {
    std::replace_if(
        testo.begin(), testo.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return testo;
}

TestiStampaGrafico Righe() {
    TestiStampaGrafico testi;
    testi.Righe = {Testo(Voce::StampaSessione) + DatiSessione.Sessione,
                   Testo(Voce::StampaData) + DatiSessione.DataSessione,
                   Testo(Voce::StampaOra) + DatiSessione.OraSessione,
                   Testo(Voce::StampaCircuito) + DatiSessione.Circuito,
                   Testo(Voce::StampaVettura) + DatiProgetto.Veicolo,
                   Testo(Voce::StampaPiloti) + SenzaRitorni(DatiSessione.Piloti),
                   Testo(Voce::StampaNote) + SenzaRitorni(DatiSessione.NoteSessione)};
    return testi;
}

}  // namespace

TestiStampaGrafico TestiGraficoCanali() {
    TestiStampaGrafico testi = Righe();
    testi.Legenda = Testo(Voce::CanaliDelGiro);
    return testi;
}

TestiStampaGrafico TestiGraficoAllarmi() {
    TestiStampaGrafico testi = Righe();
    for (int k = 0; k < kAllarmi; ++k) testi.Legenda += Testo(Dopo(kPrimoAllarme, k)) + ";";
    return testi;
}

}  // namespace lapvane
