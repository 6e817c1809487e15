#include "analysis/compare/ConfrontoGiri.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lapvane {

double Distacco(const GiroAllineato& giro, const GiroAllineato& riferimento, double metri) {
    if (riferimento.Lunghezza <= 0.0) return 0.0;
    const double quota = std::clamp(metri / riferimento.Lunghezza, 0.0, 1.0);
    return giro.TempoA(quota * giro.Lunghezza) - riferimento.TempoA(quota * riferimento.Lunghezza);
}

std::vector<double> Griglia(double lunghezza, double passo) {
    std::vector<double> posti;
    for (int k = 0; k * passo < lunghezza; ++k) posti.push_back(k * passo);
    posti.push_back(lunghezza);
    return posti;
}

std::vector<double> ConfiniSettori(const std::vector<double>& settori, double lunghezza) {
    std::vector<double> confini;
    double somma = 0.0;
    for (std::size_t s = 0; s + 1 < settori.size(); ++s) {
        somma += settori[s];
        if (somma > 0.0 && somma < lunghezza) confini.push_back(somma);
    }
    return confini;
}

std::vector<double> ConfiniUguali(int parti, double lunghezza) {
    std::vector<double> confini;
    for (int p = 1; p < parti; ++p) confini.push_back(lunghezza * p / parti);
    return confini;
}

std::vector<std::int32_t> TempiSettori(const GiroAllineato& giro,
                                       const std::vector<double>& confini, double lunghezza) {
    std::vector<std::int32_t> tempi;
    std::int32_t prima = 0;
    // Moments are rounded, not their differences: so the parts add up.
    const auto taglia = [&](double secondi) {
        const auto ora = static_cast<std::int32_t>(std::lround(secondi * 100.0));
        tempi.push_back(ora - prima);
        prima = ora;
    };
    for (const double confine : confini) taglia(giro.TempoA(confine / lunghezza * giro.Lunghezza));
    taglia(giro.Durata);
    return tempi;
}

GiroIdeale Ideale(const std::vector<std::vector<std::int32_t>>& giri) {
    GiroIdeale ideale;
    if (giri.empty()) return ideale;
    const std::size_t settori = giri.front().size();
    for (std::size_t s = 0; s < settori; ++s) {
        std::size_t migliore = 0;
        for (std::size_t i = 1; i < giri.size(); ++i) {
            if (giri[i].at(s) < giri[migliore].at(s)) migliore = i;
        }
        ideale.Settori.push_back(giri[migliore].at(s));
        ideale.Di.push_back(static_cast<int>(migliore));
    }
    ideale.Centesimi = std::accumulate(ideale.Settori.begin(), ideale.Settori.end(), 0);
    return ideale;
}

}  // namespace lapvane
