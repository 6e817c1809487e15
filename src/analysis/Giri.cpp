#include "analysis/Giri.h"

#include "analysis/FileTim.h"

namespace lapvane {

RigheGiri CercaGiri(std::span<const std::int32_t> giri, std::int32_t primaRiga) {
    RigheGiri righe;
    righe.Inizio.assign(kGiriMassimi + 1, 0);
    righe.Fine.assign(kGiriMassimi + 1, 0);
    for (std::size_t i = 0; i < giri.size() && righe.Numero < kGiriMassimi;) {
        std::size_t oltre = i + 1;
        while (oltre < giri.size() && giri[oltre] == giri[i]) ++oltre;
        ++righe.Numero;
        const auto indice = static_cast<std::size_t>(righe.Numero);
        righe.Inizio[indice] = primaRiga + static_cast<std::int32_t>(i);
        righe.Fine[indice] = primaRiga + static_cast<std::int32_t>(oltre - 1);
        i = oltre;
    }
    return righe;
}

}  // namespace lapvane
