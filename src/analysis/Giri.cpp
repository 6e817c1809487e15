#include "analysis/Giri.h"

#include <cmath>

#include "shell/NumeroTesto.h"

namespace lapvane {

RigheGiri CercaGiri(std::span<const std::int32_t> giri, std::int32_t primaRiga) {
    RigheGiri righe;
    for (std::size_t i = 0; i < giri.size() && righe.Numero < kUltimaRiga;) {
        std::size_t oltre = i + 1;
        while (oltre < giri.size() && giri[oltre] == giri[i]) ++oltre;
        ++righe.Numero;
        righe.Inizio[righe.Numero] = primaRiga + static_cast<std::int32_t>(i);
        righe.Fine[righe.Numero] = primaRiga + static_cast<std::int32_t>(oltre - 1);
        i = oltre;
    }
    return righe;
}

RigheGiri CercaGiriColonna(std::span<const double> giri, std::int32_t primaRiga) {
    std::vector<std::int32_t> numeri;
    numeri.reserve(giri.size());
    // From row to row it is nearly always the same lap.
    double ultimo = 0.0;
    std::int32_t numero = 0;
    for (const double giro : giri) {
        if (giro != ultimo) numero = std::fabs(giro) < 2147483647.0 ? ConvertiInt32(giro) : 0;
        ultimo = giro;
        numeri.push_back(numero);
    }
    return CercaGiri(std::span<const std::int32_t>(numeri), primaRiga);
}

}  // namespace lapvane
