#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace lapvane {

/// The last minute of a value of the live view, half a second a place. A place holds the last value
/// read in it; one in which nothing was read is a gap.
class UltimoMinuto {
 public:
    static constexpr std::size_t kPosti = 120;
    static constexpr std::int64_t kPosto = 500;  ///< ms

    /// The least and the greatest value of the line.
    struct Campo {
        double Minimo = 0.0;
        double Massimo = 1.0;
    };

    /// A value read at `ora` (ms of a clock that never goes back). True: the line looks different
    /// now; in the middle of a place, and behind a minute without a change, it does not.
    bool Aggiungi(double valore, std::int64_t ora);
    /// The value that many places ago, 0 to `kPosti` - 1; empty for a gap.
    std::optional<double> Valore(std::size_t fa) const;
    /// The range of the values, widened about its middle to `apertura` at least, so that noise
    /// looks like noise.
    Campo Intervallo(double apertura) const;

 private:
    /// A wait of the link leaves a place out now and then without a gap: up to 1.5 s.
    static constexpr std::int64_t kSalto = 3;

    std::array<std::optional<double>, kPosti> valori_{};
    std::int64_t ultimo_ = -1;  // number of the newest place
    std::size_t uguali_ = 0;    // places at the line's end that hold one value
};

}  // namespace lapvane
