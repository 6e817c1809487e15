#pragma once

#include <cstdint>
#include <string>

#include "platform/Colore.h"

namespace lapvane {

/// How one channel is shown, as the graph settings get it and give it back.
struct ImpostazioniCanale {
    int NumeroCanale = 0;  ///< 3 to 20
    std::string NomeCampo;
    std::string UnitaCampo;  ///< with its brackets
    Colore ColoreCanale = 0;
    std::int16_t FiltroDialogo = 1;  ///< rows between plotted points
    std::int16_t SpessoreDialogo = 1;
    double MinDialogo = 0.0;
    double MaxDialogo = 0.0;
    bool Separati = false;  ///< the graph shows panes, and each has its scale
};

}  // namespace lapvane
