#pragma once

#include <filesystem>

#include "platform/Colore.h"

class QColor;
class QString;

namespace lapvane {

/// Conversions of paths and colours at the border of the windows.
QString PercorsoInQt(const std::filesystem::path& path);
std::filesystem::path PercorsoDaQt(const QString& text);
QColor InQColor(Colore colore);
Colore DaQColor(const QColor& colore);

}  // namespace lapvane
