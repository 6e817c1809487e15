#include "reports/StampaGrafico.h"

#include <algorithm>

#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr int kPrimoAllarme = 274;
constexpr int kAllarmi = 8;

std::string SenzaRitorni(std::string testo) {
    std::replace_if(
        testo.begin(), testo.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return testo;
}

TestiStampaGrafico Righe() {
    TestiStampaGrafico testi;
    testi.Righe = {Testo(195) + DatiSessione.Sessione,
                   Testo(196) + DatiSessione.DataSessione,
                   Testo(197) + DatiSessione.OraSessione,
                   Testo(198) + DatiSessione.Circuito,
                   Testo(199) + DatiProgetto.Veicolo,
                   Testo(200) + SenzaRitorni(DatiSessione.Piloti),
                   Testo(201) + SenzaRitorni(DatiSessione.NoteSessione)};
    return testi;
}

}  // namespace

TestiStampaGrafico TestiGraficoCanali() {
    TestiStampaGrafico testi = Righe();
    testi.Legenda = Testo(202);
    return testi;
}

TestiStampaGrafico TestiGraficoAllarmi() {
    TestiStampaGrafico testi = Righe();
    for (int k = 0; k < kAllarmi; ++k) testi.Legenda += Testo(kPrimoAllarme + k) + ";";
    return testi;
}

}  // namespace lapvane
