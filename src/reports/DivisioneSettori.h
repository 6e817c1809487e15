#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace lapvane {

constexpr int kSettoriMassimi = 15;

/// The division of a track into sectors, metres. The sum stays the track length.
struct DivisioneSettori {
    /// One place more than sectors, always 0: the end of the list.
    std::array<std::int32_t, kSettoriMassimi + 1> SettoriCircuito{};
    int NumSettori = 0;  ///< in use, 0 to 15

    /// Takes over lengths as a file holds them, each rounded to a whole metre.
    void Prendi(std::span<const double> lunghezze);
    /// Equal sectors; the last one takes what the rounding leaves over.
    void Dividi(std::int32_t lunghezza, int numero);
    /// Gives sector `i` a new length at the cost of its neighbour, which may go negative. False,
    /// and nothing changed, for the last sector and for a length below 1 or not below the track
    /// length.
    bool Cambia(int i, std::int32_t nuovo, std::int32_t lunghezza);
    std::int64_t Somma() const;
    /// Index of the first sector in use that is negative; -1 if there is none.
    int PrimoNegativo() const;
};

/// The stretch of an outline that a sector covers: point numbers, both ends included.
struct TrattoSettore {
    int Settore = 0;  ///< from 0
    int Inizio = 0;
    int Fine = 0;
    bool operator==(const TrattoSettore&) const = default;
};

/// Maps sectors (metres, at most 15) to an outline of `numPunti` points by their share of
/// `lunghezza`, as if the points were equally spaced. The last sector ends at the last point but
/// one. Nothing without a track length.
std::vector<TrattoSettore> TrattiDeiSettori(std::span<const std::int32_t> settori, int numPunti,
                                            double lunghezza);

}  // namespace lapvane
