#include "widgets/Contrasto.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lapvane {

namespace {

constexpr double kContrastoTesto = 4.5;  // that small letters need
constexpr int kPassi = 20;
constexpr Colore kBianco = Rgb(255, 255, 255);
constexpr Colore kNero = Rgb(0, 0, 0);

double Componente(Colore colore, int scorrimento) {
    return static_cast<double>((colore >> scorrimento) & 0xFFu) / 255.0;
}

/// The light of each value of a component; powers are slow, and a drawing asks for thousands.
const std::array<double, 256>& Luce() {
    static const std::array<double, 256> tavola = [] {
        std::array<double, 256> t{};
        for (std::size_t i = 0; i < t.size(); ++i) {
            const double c = static_cast<double>(i) / 255.0;
            t[i] = c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        }
        return t;
    }();
    return tavola;
}

double Luminanza(Colore colore) {
    const auto& luce = Luce();
    return 0.2126 * luce[colore & 0xFFu] + 0.7152 * luce[(colore >> 8) & 0xFFu] +
           0.0722 * luce[(colore >> 16) & 0xFFu];
}

Colore Mescola(Colore colore, Colore altro, double parte) {
    const auto componente = [&](int s) {
        const double c = Componente(colore, s) * (1.0 - parte) + Componente(altro, s) * parte;
        return static_cast<unsigned>(std::lround(c * 255.0));
    };
    return Rgb(componente(0), componente(8), componente(16));
}

}  // namespace

double Contrasto(Colore a, Colore b) {
    const double la = Luminanza(a);
    const double lb = Luminanza(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Colore ColoreLeggibile(Colore colore, Colore sfondo, double minimo) {
    colore &= 0xFFFFFFu;
    const Colore verso = Contrasto(kNero, sfondo) > Contrasto(kBianco, sfondo) ? kNero : kBianco;
    for (int i = 0; i < kPassi; ++i) {
        const Colore provato = Mescola(colore, verso, static_cast<double>(i) / kPassi);
        if (Contrasto(provato, sfondo) >= minimo) return provato;
    }
    return verso;
}

Colore CaratteriLeggibili(Colore caratteri, Colore sfondo) {
    if (Contrasto(caratteri, sfondo) >= kContrastoTesto) return caratteri;
    return Contrasto(kNero, sfondo) > Contrasto(kBianco, sfondo) ? kNero : kBianco;
}

}  // namespace lapvane
