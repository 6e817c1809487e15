#pragma once

#include <cstdint>
#include <span>

namespace lapvane {

// How a colour is laid over pixels through a mask of coverage, a byte each.

inline constexpr int kTessera = 8;  ///< pixels of one mark
inline constexpr int kBordo = 16;   ///< pixels around the field; a whole number of marks

/// Lays the colour over the marked pixels of a row and leaves mask and marks empty. The pixels
/// begin where the mask does, a border before the field; the width is that of the mask.
using StendiRiga = void (*)(std::uint32_t* pixel, std::uint8_t* maschera,
                            std::span<std::uint64_t> marcate, int larghezza, std::uint32_t colore);

/// The one that every processor has.
void StendiSemplice(std::uint32_t* pixel, std::uint8_t* maschera, std::span<std::uint64_t> marcate,
                    int larghezza, std::uint32_t colore);

/// The quickest that this processor has; all give the same bytes.
StendiRiga MiglioreStendi();

}  // namespace lapvane
