#include "analysis/TabellaArray.h"

#include <new>

namespace lapvane {

void TabellaArray::Alloca(int numCampi, int numCampiLaterali, std::int32_t numRighe) {
    numRighe_ = 0;
    for (PianoDati& piano : piani_) piano = PianoDati{};
    const auto riempi = [numRighe](PianoDati& piano, int colonne) {
        // Pages of calloc come from the system as zeros when they are first written: a column that
        // no row fills costs nothing.
        for (int c = 0; c < std::clamp(colonne, 0, kUltimoCanale); ++c) {
            const auto i = static_cast<std::size_t>(c);
            piano.Colonne[i].reset(static_cast<double*>(
                std::calloc(static_cast<std::size_t>(std::max(numRighe, 1)), sizeof(double))));
            if (!piano.Colonne[i]) throw std::bad_alloc();
            piano.Inizi[i] = piano.Colonne[i].get();
            piano.Numero = c + 1;
        }
    };
    riempi(In(Piano::Dati), numCampi);
    riempi(In(Piano::Laterale), numCampiLaterali);
    numRighe_ = std::max(numRighe, 0);
}

std::span<const double> TabellaArray::Colonna(int colonna, Piano piano) const {
    const PianoDati& p = In(piano);
    if (colonna < 1 || colonna > p.Numero) return {};
    return {p.Inizi[static_cast<std::size_t>(colonna - 1)], static_cast<std::size_t>(numRighe_)};
}

std::span<double* const> TabellaArray::Destinazioni(Piano piano) {
    PianoDati& p = In(piano);
    return {p.Inizi.data(), static_cast<std::size_t>(p.Numero)};
}

}  // namespace lapvane
