#include "analysis/TabellaArray.h"

#include <new>
#include <utility>

#include "platform/PagineGrandi.h"

namespace lapvane {

void TabellaArray::Alloca(int numCampi, int numCampiLaterali, std::int32_t numRighe) {
    numRighe_ = 0;
    memoria_.reset();
    laterale_ = {};
    numero_ = 0;
    numLaterali_ = std::clamp(numCampiLaterali, 0, kUltimoCanale);
    const auto colonne = static_cast<std::size_t>(std::clamp(numCampi, 0, kUltimoCanale));
    const auto righe = static_cast<std::size_t>(std::max(numRighe, 1));
    if (colonne != 0) {
        // Pages of calloc come from the system as zeros when they are first written: columns that
        // no row fills cost next to nothing.
        memoria_.reset(static_cast<double*>(std::calloc(colonne * righe, sizeof(double))));
        if (!memoria_) throw std::bad_alloc();
        PagineGrandi(memoria_.get(), colonne * righe * sizeof(double));
        for (std::size_t c = 0; c < colonne; ++c) inizi_[c] = memoria_.get() + c * righe;
        numero_ = colonne;
    }
    numRighe_ = std::max(numRighe, 0);
    AzzeraLaterale();
}

std::int32_t TabellaArray::Leggi(LettoreDati& lettore, Piano piano, std::int32_t da,
                                 std::int32_t a) {
    if (piano == Piano::Laterale) return laterale_.Leggi(lettore, da, a);
    return lettore.LeggiRighe({inizi_.data(), numero_}, da, a);
}

void TabellaArray::AzzeraLaterale() {
    laterale_.Alloca(numLaterali_, numRighe_);
}

std::span<const double> TabellaArray::Colonna(int colonna) const {
    if (colonna < 1 || std::cmp_greater(colonna, numero_)) return {};
    return {inizi_[static_cast<std::size_t>(colonna - 1)], static_cast<std::size_t>(numRighe_)};
}

}  // namespace lapvane
