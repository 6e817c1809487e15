#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "platform/Testo1252.h"

namespace lapvane {

/// The border between the program's text (Windows-1252) and Qt's.
inline QString InQt(std::string_view testo) {
    const std::string utf8 = Utf8Da1252(testo);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string DaQt(const QString& testo) {
    return Utf8In1252(testo.toStdString());
}

}  // namespace lapvane
