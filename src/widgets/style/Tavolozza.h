#pragma once

#include <QPalette>
#include <optional>

#include "widgets/style/Colori.h"

class QWidget;

namespace lapvane {

/// The colours of the theme that the widget's palette belongs to.
const Colori& ColoriDi(const QWidget& widget);
const Colori& ColoriDi(const QPalette& paletta);

/// The colour of the lap with that letter; that of the reference for a letter that no lap has.
const ColoreGiro& GiroDi(const Colori& colori, char lettera);
/// The colour at `quota` of the continuous scale, 0 (least) to 1 (greatest). Its lightness grows
/// steadily and its hue runs from blue to yellow, so that the red-green blind read it too.
QColor Gradazione(const Colori& colori, double quota);

/// The palette of a theme, with all roles of all groups.
QPalette PalettaDi(Tema tema);

/// The theme of the program: `Box` in the mode for the pit lane, else that of `ImpostaTema`, else
/// the desktop's.
Tema TemaInUso();
/// Sets the theme by hand for as long as the application lives; none: the desktop's again.
void ImpostaTema(std::optional<Tema> tema);
/// Asks the desktop anew, whose window ground is light or dark, and gives all widgets the palette
/// of the theme in use.
void AggiornaTema();

}  // namespace lapvane
