#pragma once

#include <cstdint>

#include "analysis/MappaTracciato.h"
#include "analysis/PartiAnalisi.h"
#include "analysis/Quadro.h"

namespace lapvane {

/// What stands under the cursor of a graph: values, alarm lamps, the marker of the track map.
class Cursore {
 public:
    Cursore(const PartiAnalisi& parti, const MappaTracciato& mappa)
        : parti_(parti), mappa_(mappa) {}

    /// Point `indice` of the last element of a graph is under its cursor.
    void EventoCursore(Grafico grafico, std::int32_t indice) const;
    /// Index of the point at the left edge of the window.
    std::int32_t IndiceCursore(Quadro& quadro) const;

 private:
    void ScriviValori(std::int32_t indice) const;
    void AccendiLampade(std::int32_t indice) const;
    void MuoviMarcatore(std::int32_t indice) const;

    const PartiAnalisi& parti_;
    const MappaTracciato& mappa_;
};

}  // namespace lapvane
