#pragma once

#include <array>
#include <vector>

#include "analysis/compare/DatiConfronto.h"

namespace lapvane {

/// Two channels of one lap against each other, row by row; both of one length.
struct PuntiXY {
    char Lettera = kRiferimento;
    std::vector<double> X;
    std::vector<double> Y;
};

/// The rows of laps whose places lie in `da` to `a` of the axis, one channel against another. Laps
/// that lack one of them are left out.
std::vector<PuntiXY> Accoppia(const QuadroConfronto& x, const QuadroConfronto& y, double da,
                              double a);

/// Share of a lap's time in each band.
struct QuoteGiro {
    char Lettera = kRiferimento;
    std::vector<double> Quote;  ///< 0 to 1, together 1
};

/// Bands of a channel: band i reaches from `Da` + i * `Passo` up to, but without, the next.
struct FasceCanale {
    double Da = 0.0;
    double Passo = 1.0;
    int Numero = 0;
    std::vector<QuoteGiro> Giri;
};

constexpr int kFasceMassime = 60;

/// Three widths of bands (1, 2 or 5 times a power of ten) that cut the values in sight into some 6,
/// 12 and 24 bands. All 1 where there are none.
std::array<double, 3> PassiFasce(const QuadroConfronto& canale, double da, double a);
/// How the time between `da` and `a` of the axis is shared out, by rows, which lie a tenth of a
/// second apart. `passo` is above 0; where it asks for more than `kFasceMassime` bands there are
/// none.
FasceCanale Ripartisci(const QuadroConfronto& canale, double da, double a, double passo);

}  // namespace lapvane
