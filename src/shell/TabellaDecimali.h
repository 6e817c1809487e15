#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "shell/NumeroTesto.h"

namespace lapvane {

/// Numbers as `ScriviDecimali` and `ScriviIntero` write them, put together from short texts that
/// are made once: for files of millions of numbers. Each call may write up to eight bytes behind
/// what it returns.
class TabellaDecimali {
 public:
    explicit TabellaDecimali(char separatore);

    /// `ScriviDecimali` and a semicolon.
    char* Campo(char* dove, double valore) const {
        const double centesimi = std::fabs(valore) * 100.0;
        if (centesimi < kCentesimiMassimi) {
            const auto intero = static_cast<std::int32_t>(centesimi);
            const double resto = centesimi - intero;
            // As there: near a half the exact rule decides.
            if (std::fabs(resto - 0.5) > 1e-4) {
                const auto n = static_cast<std::uint32_t>(intero) + (resto > 0.5 ? 1u : 0u);
                if (valore < 0 && n != 0) *dove++ = '-';
                dove = Copia(dove, interi_[n / 100]);
                return Copia(dove, resti_[n % 100]);
            }
        }
        return Esatto(dove, valore);
    }
    /// The same of a tenth of a whole number from -128 to 255.
    char* Decimi(char* dove, int decimi) const {
        return Copia(dove, decimi_[static_cast<std::size_t>(decimi + kSotto)]);
    }
    /// The same of a whole number from 0 to 999999.
    char* CampoIntero(char* dove, std::uint32_t valore) const {
        return Copia(Intero(dove, valore, true), resti_[0]);
    }
    /// Tenths of a second in seconds, up to 9999999, and a semicolon.
    char* Tempo(char* dove, std::uint32_t decimi) const {
        return Copia(Intero(dove, decimi / 10, true), resti_[decimi % 10 * 10]);
    }
    /// `ScriviIntero` of 0 to 999999; with `punto` the separator behind it.
    char* Intero(char* dove, std::uint32_t valore, bool punto = false) const {
        const std::uint32_t migliaia = valore / 1000;
        if (migliaia != 0) {
            dove = Copia(dove, interi_[migliaia]) - 1;
            dove = Copia(dove, pieni_[valore % 1000]);
        } else {
            dove = Copia(dove, interi_[valore]);
        }
        return dove - (punto ? 0 : 1);
    }

 private:
    static constexpr double kCentesimiMassimi = 99998.0;
    static constexpr int kSotto = 128;

    struct Pezzo {
        std::array<char, 7> Testo{};
        std::uint8_t Lungo = 0;
    };
    static char* Copia(char* dove, const Pezzo& pezzo) {
        std::memcpy(dove, &pezzo, sizeof pezzo);
        return dove + pezzo.Lungo;
    }
    char* Esatto(char* dove, double valore) const;

    char separatore_;
    std::array<Pezzo, 1000> interi_;  ///< "7" and the separator
    std::array<Pezzo, 1000> pieni_;   ///< the same in three digits
    std::array<Pezzo, 100> resti_;    ///< hundredths, and a semicolon
    std::array<Pezzo, kSotto + 256> decimi_;
};

}  // namespace lapvane
