#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lapvane {

// Everything that turns numbers into text and text into numbers. Nothing else in the program
// formats or parses a number.

/// Plain number text: the shortest decimal text of a value with at most 15 significant digits, no
/// leading blank, `separatore` as decimal separator, a zero before the point; an exponent ("1E+20")
/// from 1E+15 up and below 1E-4 ... as the classic environment shows it. "-0" does not occur.
std::string TestoNumero(double valore, char separatore = '.');
std::string TestoNumero(std::int64_t valore);
inline std::string TestoNumero(int valore) {
    return TestoNumero(std::int64_t{valore});
}

/// Blank-led number text: one blank in front of a value that is not negative, a point as separator
/// and no zero before the point (0.5 gives " .5").
std::string TestoNumeroConSpazio(double valore);

/// The longest numeric prefix of a text, point as separator, leading blanks skipped; 0 if there is
/// none. An exponent counts if digits follow it.
double PrefissoNumerico(std::string_view testo);

/// A value in a picture such as "0", "0#", "#", "0.0#", "#.0##", "#0.##", "##0.000". The value is
/// taken to 15 significant digits, then rounded half away from zero to the picture's decimals; a
/// value that rounds to zero has no minus sign. "0" stands for a digit that is always there, "#"
/// for one that is left out when it is an outer zero. The point is left out when no decimal follows
/// it.
std::string Formatta(double valore, std::string_view figura, char separatore = '.');

/// `Formatta(valore, "0.0#", separatore)` written at `dove`; returns the end of what was written
/// (at most 340 characters). The road of the conversion, where millions of values are written.
char* ScriviDecimali(char* dove, double valore, char separatore);
/// A whole number in plain decimal at `dove`; returns the end (at most 20 characters).
char* ScriviIntero(char* dove, std::int64_t valore);

/// The longest numeric prefix of a field, with a point or a comma as decimal separator; 0 if there
/// is none or it is out of range. The road of the analysis, where millions of fields are read.
double CampoNumerico(const char* inizio, const char* fine);

/// `Formatta(valore, "0#")` of a whole number: two digits at least.
std::string DueCifre(std::int64_t valore);

/// Rounded to the nearest whole number, ties to even. Raise error 6 (overflow) out of range or for
/// what is not a number.
std::int16_t ConvertiInt16(double valore);
std::int32_t ConvertiInt32(double valore);

/// The number that the whole text is (blanks at both ends allowed, point or comma as separator);
/// empty if the text is anything else.
std::optional<double> LeggiNumero(std::string_view testo);

/// The whole text as a number, fraction rounded half to even; empty if it is no number or does not
/// fit the type.
std::optional<std::int16_t> LeggiInt16(std::string_view testo);
std::optional<std::int32_t> LeggiInt32(std::string_view testo);

/// The whole text as a whole number (sign and digits only, blanks at both ends allowed); empty if
/// it is anything else or does not fit 32 bits.
std::optional<std::int32_t> LeggiIntero(std::string_view testo);

/// A text without the blanks at its ends.
std::string_view Rifila(std::string_view testo);

}  // namespace lapvane
