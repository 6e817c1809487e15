#include "analysis/compare/DisegnoNumeri.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/Platform.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

QString Numero(double valore, int decimali) {
    std::string figura = "0";
    if (decimali > 0) figura += "." + std::string(static_cast<std::size_t>(decimali), '0');
    QString testo = QString::fromStdString(Formatta(valore, figura, platform().DecimalSeparator()));
    testo.replace(QLatin1Char('-'), QChar(0x2212));
    return testo;
}

QString Differenza(double valore, int decimali) {
    const QString testo = Numero(valore, decimali);
    const bool zero =
        std::all_of(testo.begin(), testo.end(), [](QChar c) { return !c.isDigit() || c == u'0'; });
    return valore > 0.0 && !zero ? QLatin1Char('+') + testo : testo;
}

QString TempoGiro(std::int32_t centesimi) {
    if (centesimi <= 0) return {};
    constexpr std::int32_t kMinuto = 6000;
    QString secondi = Numero(centesimi % kMinuto / 100.0, 2);
    if (centesimi < kMinuto) return secondi;
    return QString::number(centesimi / kMinuto) + QLatin1Char(':') +
           secondi.rightJustified(5, QLatin1Char('0'));
}

QString ConTratto(QString testo) {
    return testo.replace(QChar(0x2212), QLatin1Char('-'));
}

}  // namespace lapvane
