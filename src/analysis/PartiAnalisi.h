#pragma once

#include "analysis/ElencoCanali.h"
#include "analysis/FinestraX.h"
#include "analysis/FormaDati.h"
#include "analysis/GiriLog.h"
#include "analysis/VistaAnalisi.h"

namespace lapvane {

/// What the graphs, the cursor and the lap table of one open analysis work on together.
struct PartiAnalisi {
    VistaAnalisi& Vista;
    FormaDati& Forma;
    ElencoCanali Canali{};
    FinestraX Finestra{};
    GiriLog Giri{};
};

}  // namespace lapvane
