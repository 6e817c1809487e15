#pragma once

#include <QFont>
#include <QFontMetrics>

class QWidget;

namespace lapvane {

// Sizes in pixels at scale 1. Heights come from the font, so that a larger one makes a larger
// window and not a broken one.

constexpr int kGriglia = 4;
constexpr int kSpazio = 8;  ///< inside a control and between controls
constexpr int kMargineCornice = 12;
constexpr int kSpazioGruppi = 16;
constexpr int kMargineDialogo = 16;
constexpr int kMargineFinestra = 8;
constexpr int kRaggioControllo = 3;
constexpr int kRaggioScheda = 4;
constexpr int kLarghezzaPulsante = 96;  ///< least, in a row of OK and Cancel
constexpr int kLatoSpunta = 16;
constexpr int kLatoIcona = 24;

/// Whether the program is in the mode for the pit lane: larger letters, and controls for gloves.
bool ModoBox();
/// Only the measures; `ImpostaModoBox` gives them to the windows that there are.
void UsaMisureBox(bool acceso);
/// What a control has around its text or picture, larger in that mode: one factor for all.
int InBox(int lunghezza);
/// Side of the box of a tick.
int LatoSpunta();
/// Side of the icons of tool bars, from the program's font.
int LatoIcona();

/// The heights that come from a font.
struct Misure {
    explicit Misure(const QFontMetrics& carattere);
    explicit Misure(const QWidget& widget);

    /// A width in pixels that is right beside the letters of 10 pt, for letters that are larger.
    int Largo(int pixel) const;

    int Linea = 0;      ///< of a line of text
    int Controllo = 0;  ///< button, box, combo
    int Riga = 0;       ///< of a table, of a list of channels; status bar
    int Testata = 0;    ///< head of a table or a card
    int Linguetta = 0;  ///< tab
    int Lettera = 0;    ///< square of a lap's letter
};

/// The steps of the type scale.
enum class Scrittura {
    Piccola,  ///< base - 1: units, heads of columns, hints, axis figures
    Corpo,    ///< base
    Forte,    ///< base, semibold: titles of cards and groups
    Titolo,   ///< base + 1, semibold
    Testa,    ///< base x 2, semibold: one a window
    Cifra,    ///< base x 3, semibold: live values
    Lettera,  ///< base - 1, bold: the letter of a lap
};

QFont Carattere(const QFont& base, Scrittura scrittura);
QFont Carattere(const QWidget& widget, Scrittura scrittura);

}  // namespace lapvane
