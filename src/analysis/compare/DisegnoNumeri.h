#pragma once

#include <QString>
#include <cstdint>

namespace lapvane {

// Numbers as the comparison shows them: the desktop's decimal separator and a true minus.

QString Numero(double valore, int decimali);
/// A difference: always with its sign, but for what rounds to zero.
QString Differenza(double valore, int decimali);
/// "1:04.22" or "6.18" of hundredths of a second; empty for 0, which is not known.
QString TempoGiro(std::int32_t centesimi);

/// The text with plain hyphens for minus, which other programs read as numbers.
QString ConTratto(QString testo);

}  // namespace lapvane
