#pragma once

#include <array>
#include <string_view>

namespace lapvane {

/// The one place through which a curve passes on its way to or from the instrument: raw axis and
/// physical axis, elements 0 to 19 used. `CurvaY` holds scaled values while a curve is sent and the
/// instrument's units after a read, until the reader divides them by the factor.
extern std::array<double, 21> CurvaX;
extern std::array<double, 21> CurvaY;

/// The scale between a physical value and the integer of the instrument, by sensor type
/// ("Pressione" ...); 0 for a type that is none.
int FattoreSensore(std::string_view tipo);

}  // namespace lapvane
