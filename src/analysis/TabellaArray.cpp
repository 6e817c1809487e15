#include "analysis/TabellaArray.h"

#include <new>
#include <utility>

#include "platform/PagineGrandi.h"

namespace lapvane {

void TabellaArray::Alloca(int numCampi, int numCampiLaterali, std::int32_t numRighe) {
    numRighe_ = 0;
    piani_ = {};
    const auto riempi = [numRighe](PianoDati& piano, int colonne) {
        const auto numero = static_cast<std::size_t>(std::clamp(colonne, 0, kUltimoCanale));
        const auto righe = static_cast<std::size_t>(std::max(numRighe, 1));
        if (numero == 0) return;
        // Pages of calloc come from the system as zeros when they are first written: columns that
        // no row fills cost next to nothing.
        piano.Memoria.reset(static_cast<double*>(std::calloc(numero * righe, sizeof(double))));
        if (!piano.Memoria) throw std::bad_alloc();
        PagineGrandi(piano.Memoria.get(), numero * righe * sizeof(double));
        for (std::size_t c = 0; c < numero; ++c) piano.Inizi[c] = piano.Memoria.get() + c * righe;
        piano.Numero = numero;
    };
    riempi(piani_[Piano::Dati], numCampi);
    riempi(piani_[Piano::Laterale], numCampiLaterali);
    numRighe_ = std::max(numRighe, 0);
}

void TabellaArray::Azzera(Piano piano) {
    for (double* const colonna : Destinazioni(piano)) std::fill_n(colonna, numRighe_, 0.0);
}

std::span<const double> TabellaArray::Colonna(int colonna, Piano piano) const {
    const PianoDati& p = piani_[piano];
    if (colonna < 1 || std::cmp_greater(colonna, p.Numero)) return {};
    return {p.Inizi[static_cast<std::size_t>(colonna - 1)], static_cast<std::size_t>(numRighe_)};
}

std::span<double* const> TabellaArray::Destinazioni(Piano piano) {
    PianoDati& p = piani_[piano];
    return {p.Inizi.data(), p.Numero};
}

}  // namespace lapvane
