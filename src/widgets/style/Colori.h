#pragma once

#include <QColor>
#include <array>

namespace lapvane {

/// `Box` is the light one for the sun of the pit lane.
enum class Tema { Chiaro, Scuro, Box };

/// The colour that a lap wears wherever it is shown, and that of its letter on it.
struct ColoreGiro {
    char Lettera = ' ';
    QColor Tinta;
    QColor Carattere;  ///< white where that gives a contrast of 4.5, else black
};

/// All colours of a theme. What `PalettaDi` hands to Qt as a role is here too, for own drawing.
struct Colori {
    QColor Window;  ///< ground of windows
    QColor Bar;     ///< menu, tool bar, status bar
    QColor Base;    ///< lists, boxes, cards
    QColor Alt;     ///< heads of tables and cards, group rows
    QColor Raised;  ///< buttons
    QColor Line;    ///< edges of cards; decoration only
    QColor Edge;    ///< outline of what one can click or type in
    QColor Grid;    ///< rows of tables, grid of own graphs
    QColor Text;
    QColor Text2;  ///< labels, units, heads of columns
    QColor Stale;  ///< a value that is not read any more
    QColor Off;    ///< disabled
    QColor Accent;
    QColor AccentText;
    QColor Sel;  ///< selected, in a list with focus
    QColor SelText;
    QColor SelSoft;  ///< selected without focus, pressed tool button, lap in focus
    QColor Gain;     ///< time gained; never without a sign or a width that says the same
    QColor GainSoft;
    QColor Loss;
    QColor LossSoft;
    QColor Ok;
    QColor Warn;
    QColor WarnSoft;
    QColor Err;
    QColor ErrSoft;
    QColor Tip;
    QColor TipText;
    QColor Plot;                       ///< ground of own graphs
    std::array<ColoreGiro, 7> Giri;    ///< the reference R, then A to F
    std::array<QColor, 3> Gradazione;  ///< least, middle and greatest of a continuous scale
};

const Colori& ColoriDi(Tema tema);

}  // namespace lapvane
