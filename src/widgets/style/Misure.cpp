#include "widgets/style/Misure.h"

#include <QWidget>
#include <algorithm>

namespace lapvane {

namespace {

constexpr double kPuntiMinimi = 6.0;

/// A size in the unit that the font has its own in: points, or pixels.
void Dimensione(QFont& carattere, double fattore, double punti) {
    if (carattere.pointSizeF() > 0.0) {
        const double nuova = carattere.pointSizeF() * fattore + punti;
        carattere.setPointSizeF(std::max(kPuntiMinimi, nuova));
    } else {
        carattere.setPixelSize(std::max(8, qRound(carattere.pixelSize() * fattore + punti * 1.33)));
    }
}

}  // namespace

Misure::Misure(const QFontMetrics& carattere)
    : Linea(carattere.height()),
      Controllo(Linea + 10),
      Riga(Linea + 8),
      Testata(Linea + 10),
      Linguetta(Linea + 12),
      Lettera(Linea) {}

Misure::Misure(const QWidget& widget) : Misure(widget.fontMetrics()) {}

QFont Carattere(const QFont& base, Scrittura scrittura) {
    QFont carattere = base;
    switch (scrittura) {
        case Scrittura::Piccola:
            Dimensione(carattere, 1.0, -1.0);
            break;
        case Scrittura::Corpo:
            break;
        case Scrittura::Forte:
            carattere.setWeight(QFont::DemiBold);
            break;
        case Scrittura::Titolo:
            Dimensione(carattere, 1.0, 1.0);
            carattere.setWeight(QFont::DemiBold);
            break;
        case Scrittura::Testa:
            Dimensione(carattere, 2.0, 0.0);
            carattere.setWeight(QFont::DemiBold);
            break;
        case Scrittura::Cifra:
            Dimensione(carattere, 3.0, 0.0);
            carattere.setWeight(QFont::DemiBold);
            break;
        case Scrittura::Lettera:
            Dimensione(carattere, 1.0, -1.0);
            carattere.setWeight(QFont::Bold);
            break;
    }
    return carattere;
}

QFont Carattere(const QWidget& widget, Scrittura scrittura) {
    return Carattere(widget.font(), scrittura);
}

}  // namespace lapvane
