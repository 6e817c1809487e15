#include "analysis/MappaTracciato.h"

#include <utility>

#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"

namespace lapvane {

bool MappaTracciato::Carica() {
    int righe = 0;
    auto punti = LeggiFileTracciato(DatiSessione.Circuito, &righe);
    tracciatoVisibile_ = punti.has_value();
    vista_.MostraMappa(tracciatoVisibile_);
    if (!punti) return false;
    // Kept: lines that have no place among the points count, and a lap is spread over them as well.
    numPuntiTracciato_ = righe;
    vista_.Mappa(std::move(*punti), DatiSessione.Circuito, DatiSessione.Piloti);
    vista_.MarcatoreMappa(0);
    return true;
}

void MappaTracciato::Nascondi() {
    tracciatoVisibile_ = false;
    vista_.MostraMappa(false);
}

}  // namespace lapvane
