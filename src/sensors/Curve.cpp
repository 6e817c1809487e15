#include "sensors/Curve.h"

#include "sensors/CanaliSensore.h"

namespace lapvane {

AsseCurva CurvaX{};
AsseCurva CurvaY{};

int FattoreSensore(std::string_view tipo) {
    for (const TipoSensore& noto : kTipiSensore) {
        if (noto.Tipo == tipo) return noto.Fattore;
    }
    return 0;
}

}  // namespace lapvane
