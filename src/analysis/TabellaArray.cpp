#include "analysis/TabellaArray.h"

#include <algorithm>

namespace lapvane {

void TabellaArray::Alloca(int numCampi, int numCampiLaterali, std::int32_t numRighe) {
    laterale_ = {};
    numLaterali_ = std::clamp(numCampiLaterali, 0, kUltimoCanale);
    dati_.Alloca(numCampi, numRighe);
    AzzeraLaterale();
}

std::int32_t TabellaArray::Leggi(LettoreDati& lettore, Piano piano, std::int32_t da,
                                 std::int32_t a) {
    if (piano == Piano::Laterale) return laterale_.Leggi(lettore, da, a);
    return lettore.LeggiRighe(dati_.Inizi(), da, a);
}

void TabellaArray::AzzeraLaterale() {
    laterale_.Alloca(numLaterali_, dati_.Righe());
}

}  // namespace lapvane
