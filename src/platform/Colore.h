#pragma once

#include <cstdint>

namespace lapvane {

/// A colour as the system stores it: red in the low byte, then green, then blue.
using Colore = std::uint32_t;

constexpr Colore Rgb(unsigned rosso, unsigned verde, unsigned blu) {
    return (rosso & 0xFFu) | ((verde & 0xFFu) << 8) | ((blu & 0xFFu) << 16);
}

}  // namespace lapvane
