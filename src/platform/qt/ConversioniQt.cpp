#include "platform/qt/ConversioniQt.h"

#include <QColor>
#include <QDir>
#include <QString>

namespace lapvane {

QString PercorsoInQt(const std::filesystem::path& path) {
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.wstring());
#else
    return QString::fromStdString(path.string());
#endif
}

std::filesystem::path PercorsoDaQt(const QString& text) {
#ifdef Q_OS_WIN
    // Not the "/" of the toolkit: paths are shown, kept in lists and compared.
    return QDir::toNativeSeparators(text).toStdWString();
#else
    return text.toStdString();
#endif
}

QColor InQColor(Colore colore) {
    return {static_cast<int>(colore & 0xFFu), static_cast<int>((colore >> 8) & 0xFFu),
            static_cast<int>((colore >> 16) & 0xFFu)};
}

Colore DaQColor(const QColor& colore) {
    return Rgb(static_cast<unsigned>(colore.red()), static_cast<unsigned>(colore.green()),
               static_cast<unsigned>(colore.blue()));
}

}  // namespace lapvane
