#pragma once

#include "platform/Colore.h"

namespace lapvane {

/// Contrast of two colours, from 1 (none) to 21 (black on white).
double Contrasto(Colore a, Colore b);

/// The colour, made darker or lighter as far as it must be to stand out from `sfondo` by `minimo`;
/// a colour that does so already is left alone.
Colore ColoreLeggibile(Colore colore, Colore sfondo, double minimo);

/// The text colour, or black or white where it cannot be read on `sfondo`.
Colore CaratteriLeggibili(Colore caratteri, Colore sfondo);

}  // namespace lapvane
