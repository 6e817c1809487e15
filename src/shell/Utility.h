#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lapvane {

// Times are texts here: a lap time is mm:ss.cc, a running time hh:mm:ss.cc, cc in hundredths.

/// Every "," replaced by ".".
std::string VirgolaInPunto(std::string_view testo);

/// Appends zeros (and a point) until the text shows the decimals of `fattore` (10: one, 100: two,
/// 1000: three; any other: none). More decimals are left alone. A text that begins with the point
/// gets a zero in front.
std::string& FormattaDecimali(std::string& testo, int fattore);

/// Sum of two times hh:mm:ss.cc; a total of 24 hours or more wraps. An argument of fewer than 11
/// characters gets one "0" at its end. Error 13 for a text that is no time.
std::string SommaTempi(std::string& a, std::string& b);

/// The time hh:mm:ss.cc divided by `divisore`, as mm:ss.cc; every step truncates. Kept: the hours
/// of the result are computed and not shown. Error 11 for a divisor of 0, 13 for a text that is no
/// time.
std::string DividiTempo(std::string tempo, std::int16_t divisore);

/// Hundredths of a second as mm:ss.cc; minutes above 99 take more digits.
std::string CentesimiInTempo(std::int32_t centesimi);

}  // namespace lapvane
