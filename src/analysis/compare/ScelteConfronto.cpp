#include "analysis/compare/ScelteConfronto.h"

#include <algorithm>
#include <utility>

#include "platform/FileTesto.h"
#include "shell/NumeroTesto.h"
#include "shell/Ricordi.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "lapvane-compare 1";
constexpr std::string_view kFile = "Compare.lapvane";

std::string Numero(int n) {
    return TestoNumero(static_cast<std::int64_t>(n));
}

/// "R12 A10": letters and laps of the log before.
void LeggiGiri(std::string_view valore, ScelteLog& log) {
    while (!(valore = Rifila(valore)).empty()) {
        const std::size_t fine = std::min(valore.find(' '), valore.size());
        const char lettera = valore.front();
        const auto numero = LeggiIntero(valore.substr(1, fine - 1));
        if ((lettera == 'R' || (lettera >= 'A' && lettera <= 'F')) && numero) {
            log.Giri.emplace_back(lettera, *numero);
        }
        valore.remove_prefix(fine);
    }
}

void LeggiRiga(std::string_view chiave, const std::string& valore, ScelteConfronto& scelte) {
    if (chiave == "axis") {
        scelte.PerDistanza = valore != "time";
    } else if (chiave == "parts") {
        const int parti = LeggiIntero(valore).value_or(0);
        if (parti >= 3 && parti <= 20) scelte.Parti = parti;
    } else if (chiave == "pane") {
        scelte.Quadri.push_back(valore);
    } else if (chiave == "map") {
        scelte.Mappa = valore;
    } else if (chiave == "x") {
        scelte.X = valore;
    } else if (chiave == "y") {
        scelte.Y = valore;
    } else if (chiave == "xy") {
        scelte.Linea = valore == "line";
    } else if (chiave == "histogram") {
        scelte.Istogramma = valore;
    } else if (chiave == "log" && scelte.Log.size() < kLogRicordati) {
        scelte.Log.push_back(
            {std::filesystem::path(std::u8string(valore.begin(), valore.end())), {}});
    } else if (chiave == "laps" && !scelte.Log.empty()) {
        LeggiGiri(valore, scelte.Log.back());
    }
}

}  // namespace

ScelteConfronto LeggiScelte(std::string_view testo) {
    ScelteConfronto scelte;
    for (const auto& [chiave, valore] : RigheRicordo(testo, kPrimaRiga)) {
        LeggiRiga(chiave, valore, scelte);
    }
    return scelte;
}

std::string ScriviScelte(const ScelteConfronto& scelte) {
    std::vector<RigaRicordo> righe;
    const auto riga = [&righe](std::string_view chiave, std::string_view valore) {
        righe.emplace_back(chiave, valore);
    };
    riga("axis", scelte.PerDistanza ? "distance" : "time");
    riga("parts", Numero(scelte.Parti));
    for (const std::string& quadro : scelte.Quadri) riga("pane", quadro);
    riga("map", scelte.Mappa);
    riga("x", scelte.X);
    riga("y", scelte.Y);
    riga("xy", scelte.Linea ? "line" : "points");
    riga("histogram", scelte.Istogramma);
    for (std::size_t i = 0; i < std::min(scelte.Log.size(), kLogRicordati); ++i) {
        const std::u8string file = scelte.Log[i].File.u8string();
        riga("log", std::string(file.begin(), file.end()));
        std::string giri;
        for (const auto& [lettera, numero] : scelte.Log[i].Giri) {
            giri += (giri.empty() ? "" : " ") + std::string(1, lettera) + Numero(numero);
        }
        riga("laps", giri);
    }
    return TestoRicordo(kPrimaRiga, righe);
}

ScelteConfronto CaricaScelte() {
    return LeggiScelte(LeggiRicordo(kFile, Lavoro::LeggereScelte));
}

void SalvaScelte(const ScelteConfronto& scelte) {
    SalvaRicordo(kFile, ScriviScelte(scelte), Lavoro::ScrivereScelte);
}

}  // namespace lapvane
