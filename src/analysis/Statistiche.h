#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace lapvane {

/// Highest of the values and 0. Kept: the search starts at 0, so that a channel with only negative
/// values gives 0.
double MassimoColonna(std::span<const double> valori);
/// Lowest of the values and 0. Kept: a channel with only positive values gives 0.
double MinimoColonna(std::span<const double> valori);
/// Sum of the values, one added to the other in the order of the rows, divided by `righe`, the rows
/// that were asked for; 0 for no row.
double MediaColonna(std::span<const double> valori, double righe);
/// The same of several columns at once, in the time that one or two of them take.
std::vector<double> MediaColonne(std::span<const std::span<const double>> colonne, double righe);

/// Highest and lowest of a range of cells, from its first cell on; 0 for an empty range.
double MassimoCelle(std::span<const double> celle);
double MinimoCelle(std::span<const double> celle);

}  // namespace lapvane
