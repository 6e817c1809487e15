#pragma once

#include <array>
#include <string_view>

namespace lapvane {

/// An axis of a curve.
using AsseCurva = std::array<double, 21>;

/// The one place through which a curve passes on its way to or from the instrument: raw axis and
/// physical axis, elements 0 to 19 used. `CurvaY` holds scaled values while a curve is sent and the
/// instrument's units after a read, until the reader divides them by the factor.
extern AsseCurva CurvaX;
extern AsseCurva CurvaY;

/// The scale between a physical value and the integer of the instrument, by sensor type
/// ("Pressione" ...); 0 for a type that is none.
int FattoreSensore(std::string_view tipo);

}  // namespace lapvane
