#include "analysis/Statistiche.h"

namespace lapvane {

double MassimoColonna(std::span<const double> valori) {
    double massimo = 0.0;
    for (const double valore : valori) massimo = valore > massimo ? valore : massimo;
    return massimo;
}

double MinimoColonna(std::span<const double> valori) {
    double minimo = 0.0;
    for (const double valore : valori) minimo = valore < minimo ? valore : minimo;
    return minimo;
}

double MediaColonna(std::span<const double> valori, double righe) {
    if (righe < 1.0) return 0.0;
    double somma = 0.0;
    for (const double valore : valori) somma += valore;
    return somma / righe;
}

}  // namespace lapvane
