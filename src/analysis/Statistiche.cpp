#include "analysis/Statistiche.h"

#include <array>

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

}  // namespace

double MassimoColonna(std::span<const double> valori) {
    return Percorri(valori, 0.0, Maggiore);
}

double MinimoColonna(std::span<const double> valori) {
    return Percorri(valori, 0.0, Minore);
}

double MediaColonna(std::span<const double> valori, double righe) {
    if (righe < 1.0) return 0.0;
    return Percorri(valori, 0.0, [](double somma, double v) { return somma + v; }) / righe;
}

double MassimoCelle(std::span<const double> celle) {
    return celle.empty() ? 0.0 : Percorri(celle, celle.front(), Maggiore);
}

double MinimoCelle(std::span<const double> celle) {
    return celle.empty() ? 0.0 : Percorri(celle, celle.front(), Minore);
}

}  // namespace lapvane
