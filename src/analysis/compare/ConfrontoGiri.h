#pragma once

#include <cstdint>
#include <vector>

#include "analysis/compare/Allineamento.h"

namespace lapvane {

/// Seconds that `giro` has lost against `riferimento` (positive: it is slower) when both have
/// driven the same share of their lap; `metri` counts along the reference, 0 to its length.
double Distacco(const GiroAllineato& giro, const GiroAllineato& riferimento, double metri);

/// Places along a lap, metres from 0 to its length, both included, `passo` apart; the last step may
/// be shorter. `passo` is above 0.
std::vector<double> Griglia(double lunghezza, double passo);

/// Where a lap is cut: metres along a lap of the middle length, increasing, without its two ends.
/// Sectors that lie behind the end of the lap are left out.
std::vector<double> ConfiniSettori(const std::vector<double>& settori, double lunghezza);
/// The same for `parti` equal parts, 1 to 20.
std::vector<double> ConfiniUguali(int parti, double lunghezza);

/// Hundredths of a second of each part of a lap; they add up to its official time. `confini` count
/// along a lap of `lunghezza` metres and are stretched to this one's.
std::vector<std::int32_t> TempiSettori(const GiroAllineato& giro,
                                       const std::vector<double>& confini, double lunghezza);

/// The best parts of several laps, as by `TempiSettori`, put together.
struct GiroIdeale {
    std::int32_t Centesimi = 0;         ///< 0: there is no lap
    std::vector<std::int32_t> Settori;  ///< the best of each
    std::vector<int> Di;                ///< whose it is: index of the lap, the first of several
};
GiroIdeale Ideale(const std::vector<std::vector<std::int32_t>>& giri);

}  // namespace lapvane
