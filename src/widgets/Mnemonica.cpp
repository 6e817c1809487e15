#include "widgets/Mnemonica.h"

namespace lapvane {

QString Mnemonica::Senza(QString testo) {
    return testo.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString Mnemonica::Con(const QString& testo) {
    const auto libera = [&](qsizetype i) {
        return testo[i].isLetterOrNumber() && !prese_.contains(testo[i].toUpper());
    };
    qsizetype scelta = -1;
    for (qsizetype i = 0; i < testo.size() && scelta < 0; ++i) {
        if (libera(i) && (i == 0 || testo[i - 1].isSpace())) scelta = i;
    }
    for (qsizetype i = 0; i < testo.size() && scelta < 0; ++i) {
        if (libera(i)) scelta = i;
    }
    if (scelta < 0) return Senza(testo);
    prese_.insert(testo[scelta].toUpper());
    return Senza(testo.left(scelta)) + QLatin1Char('&') + Senza(testo.mid(scelta));
}

}  // namespace lapvane
