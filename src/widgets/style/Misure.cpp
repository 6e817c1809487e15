#include "widgets/style/Misure.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>

namespace lapvane {

namespace {

constexpr double kPuntiMinimi = 6.0;
constexpr double kFattoreBox = 1.5;

bool modoBox = false;

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

bool ModoBox() {
    return modoBox;
}

void UsaMisureBox(bool acceso) {
    modoBox = acceso;
}

int InBox(int lunghezza) {
    return modoBox ? qRound(lunghezza * kFattoreBox) : lunghezza;
}

int LatoSpunta() {
    return InBox(kLatoSpunta);
}

int LatoIcona() {
    // Four thirds of a line, on the grid: 24 beside a line of 18, 32 beside one of 25.
    const int lato = QFontMetrics(QApplication::font()).height() * 4 / 3;
    return std::max(kLatoIcona, (lato + kGriglia / 2) / kGriglia * kGriglia);
}

Misure::Misure(const QFontMetrics& carattere)
    : Linea(carattere.height()),
      Controllo(Linea + InBox(10)),
      Riga(Linea + InBox(8)),
      Testata(Linea + InBox(10)),
      Linguetta(Linea + InBox(12)),
      Lettera(Linea) {}

Misure::Misure(const QWidget& widget) : Misure(widget.fontMetrics()) {}

int Misure::Largo(int pixel) const {
    constexpr int kLinea = 18;  // of 10 pt
    return pixel * std::max(kLinea, Linea) / kLinea;
}

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
