#include "analysis/Statistiche.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lapvane {

namespace {

/// Side by side, so that no step waits for the one before: the columns of a long lap then go by as
/// fast as memory hands them over.
constexpr std::size_t kCorsie = 16;

/// `passo(result, value)` over all values, each lane starting from `inizio`, and then over the
/// lanes.
template <class Passo>
double Percorri(std::span<const double> valori, double inizio, Passo passo) {
    std::array<double, kCorsie> corsie{};
    corsie.fill(inizio);
    const std::size_t interi = valori.size() - valori.size() % kCorsie;
    for (std::size_t i = 0; i < interi; i += kCorsie) {
        for (std::size_t n = 0; n < kCorsie; ++n) corsie[n] = passo(corsie[n], valori[i + n]);
    }
    for (std::size_t i = interi; i < valori.size(); ++i) {
        corsie[i - interi] = passo(corsie[i - interi], valori[i]);
    }
    // In pairs, then pairs of pairs.
    for (std::size_t meta = kCorsie / 2; meta > 0; meta /= 2) {
        for (std::size_t n = 0; n < meta; ++n) corsie[n] = passo(corsie[n], corsie[n + meta]);
    }
    return corsie[0];
}

double Maggiore(double massimo, double v) {
    return v > massimo ? v : massimo;
}

double Minore(double minimo, double v) {
    return v < minimo ? v : minimo;
}

/// Columns whose sums run side by side: each is in the order of its rows, and none waits for
/// another's step.
constexpr std::size_t kColonneInsieme = 8;

template <std::size_t N>
void SommaInsieme(const std::span<const double>* colonne, double* somme) {
    std::array<const double*, N> valori{};
    std::array<double, N> corsie{};
    std::size_t righe = colonne[0].size();
    for (std::size_t c = 0; c < N; ++c) {
        valori[c] = colonne[c].data();
        righe = std::min(righe, colonne[c].size());
    }
    for (std::size_t r = 0; r < righe; ++r) {
        for (std::size_t c = 0; c < N; ++c) corsie[c] += valori[c][r];
    }
    for (std::size_t c = 0; c < N; ++c) {
        // What a longer column has beyond the shortest.
        for (const double v : colonne[c].subspan(righe)) corsie[c] += v;
        somme[c] = corsie[c];
    }
}

template <std::size_t... N>
void SommaInsieme(std::size_t numero, const std::span<const double>* colonne, double* somme,
                  std::index_sequence<N...>) {
    ((numero == N + 1 ? SommaInsieme<N + 1>(colonne, somme) : void()), ...);
}

}  // namespace

double MassimoColonna(std::span<const double> valori) {
    return Percorri(valori, 0.0, Maggiore);
}

double MinimoColonna(std::span<const double> valori) {
    return Percorri(valori, 0.0, Minore);
}

std::vector<double> MediaColonne(std::span<const std::span<const double>> colonne, double righe) {
    std::vector<double> medie(colonne.size(), 0.0);
    if (righe < 1.0) return medie;
    // Bundles of the same size: a small one takes as long as a full one.
    const std::size_t fasci = (colonne.size() + kColonneInsieme - 1) / kColonneInsieme;
    for (std::size_t f = 0; f < fasci; ++f) {
        const std::size_t da = colonne.size() * f / fasci;
        const std::size_t a = colonne.size() * (f + 1) / fasci;
        SommaInsieme(a - da, &colonne[da], &medie[da], std::make_index_sequence<kColonneInsieme>());
    }
    for (double& media : medie) media /= righe;
    return medie;
}

double MediaColonna(std::span<const double> valori, double righe) {
    return MediaColonne({{valori}}, righe)[0];
}

double MassimoCelle(std::span<const double> celle) {
    return celle.empty() ? 0.0 : Percorri(celle, celle.front(), Maggiore);
}

double MinimoCelle(std::span<const double> celle) {
    return celle.empty() ? 0.0 : Percorri(celle, celle.front(), Minore);
}

}  // namespace lapvane
