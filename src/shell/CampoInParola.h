#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "shell/NumeroTesto.h"

namespace lapvane {

/// Powers of ten that a float holds exactly.
inline constexpr std::array<double, 23> kPotenze = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                    1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                    1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

inline constexpr std::uint64_t kTutti = 0x0101010101010101u;

/// Eight bytes as a number whose lowest byte is the first of them.
inline std::uint64_t Parola(const char* p) {
    std::uint64_t parola = 0;
    std::memcpy(&parola, p, sizeof parola);
    if constexpr (std::endian::native == std::endian::big) parola = __builtin_bswap64(parola);
    return parola;
}

/// The last n bytes of a word.
inline constexpr auto kUltimiByte = [] {
    std::array<std::uint64_t, 9> maschere{};
    for (unsigned n = 1; n <= 8; ++n) maschere[n] = ~std::uint64_t{0} << (64 - 8 * n);
    return maschere;
}();

/// By the place that the point has in a word.
inline constexpr std::array<double, 8> kDivisori = {1e7, 1e6, 1e5, 1e4, 1e3, 1e2, 1e1, 1e0};

/// Whether the eight bytes are 0 to 9.
inline bool Cifre(std::uint64_t x) {
    return (((x + kTutti * 0x76) | x) & (kTutti * 0x80)) == 0;
}

/// The number that eight digits stand for: in pairs, then pairs of pairs, each step multiplies what
/// stands for more by its weight.
inline double Intero8(std::uint64_t x) {
    constexpr std::uint64_t kDispari = 0x000000FF000000FF;
    x = x * 10 + (x >> 8);
    x = ((x & kDispari) * (100 + (std::uint64_t{1000000} << 32)) +
         ((x >> 16) & kDispari) * (1 + (std::uint64_t{10000} << 32))) >>
        32;
    return static_cast<double>(static_cast<std::int64_t>(x));
}

/// A field of one to eight digits, with a point or a comma among them or without; false, and
/// `valore` is left, if it is anything else. The eight bytes before its end must be readable: they
/// go by as one word, without a step for each character.
inline bool CampoInParola(const char* inizio, const char* fine, double& valore) {
    const auto lungo = static_cast<std::size_t>(fine - inizio);
    if (lungo > 8) return false;
    // Digits are 0 to 9 now, what stands before the field is 0.
    std::uint64_t x = (Parola(fine - 8) ^ (kTutti * '0')) & kUltimiByte[lungo];
    // A separator has a bit that no digit has.
    const std::uint64_t segno = x & (kTutti * 0x10);
    if (segno == 0) {
        if (!Cifre(x)) return false;
        valore = Intero8(x);
        return true;
    }
    const std::uint64_t prima = x & ((segno >> 4) - 1);
    const std::uint64_t dopo = x & (~(segno << 4) + 1);
    // What stands between them is a point, or a comma, which lacks one bit; and it is alone.
    const std::uint64_t punto = (segno << 1) - (segno >> 3);
    x = (x ^ prima ^ dopo) | (segno >> 3);
    if (x != punto || !Cifre(prima << 8 | dopo)) return false;
    // Both numbers are exact, so one division rounds correctly.
    valore = Intero8(prima << 8 | dopo) /
             kDivisori[static_cast<std::size_t>(std::countr_zero(segno)) / 8];
    return true;
}

}  // namespace lapvane
