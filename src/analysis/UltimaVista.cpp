#include "analysis/UltimaVista.h"

#include <algorithm>

#include "platform/FileTesto.h"
#include "reports/CanaliLog.h"
#include "shell/NumeroTesto.h"
#include "shell/Ricordi.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "lapvane-view 1";
constexpr std::string_view kFile = "View.lapvane";

bool Canale(int c) {
    return c >= kPrimoCanale && c <= kUltimoCanale;
}

}  // namespace

std::optional<UltimaVista> LeggiUltimaVista(std::string_view testo) {
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRiga) return std::nullopt;
    UltimaVista vista;
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        const std::size_t uguale = std::min(riga.find('='), riga.size());
        const std::string_view chiave = riga.substr(0, uguale);
        const std::string_view valore = riga.substr(std::min(uguale + 1, riga.size()));
        const int numero = LeggiIntero(valore).value_or(0);
        if (chiave == "channel" && Canale(numero)) vista.Canali.push_back(numero);
        if (chiave == "scale" && Canale(numero)) vista.Scala = numero;
        if (chiave == "axis") vista.Distanza = valore == "distance";
        if (chiave == "panes") vista.Separati = valore == "separate";
    }
    std::sort(vista.Canali.begin(), vista.Canali.end());
    vista.Canali.erase(std::unique(vista.Canali.begin(), vista.Canali.end()), vista.Canali.end());
    if (vista.Canali.empty()) return std::nullopt;
    return vista;
}

std::string ScriviUltimaVista(const UltimaVista& vista) {
    std::string testo(kPrimaRiga);
    testo += std::string("\naxis=") + (vista.Distanza ? "distance" : "time");
    testo += std::string("\npanes=") + (vista.Separati ? "separate" : "one") + "\n";
    for (const int c : vista.Canali) {
        testo += "channel=" + TestoNumero(static_cast<std::int64_t>(c)) + "\n";
    }
    testo += "scale=" + TestoNumero(static_cast<std::int64_t>(vista.Scala)) + "\n";
    return testo;
}

std::optional<UltimaVista> CaricaUltimaVista() {
    return LeggiUltimaVista(LeggiRicordo(kFile, Lavoro::LeggereVista));
}

void SalvaUltimaVista(const UltimaVista& vista) {
    if (!vista.Canali.empty()) {
        SalvaRicordo(kFile, ScriviUltimaVista(vista), Lavoro::ScrivereVista);
    }
}

}  // namespace lapvane
