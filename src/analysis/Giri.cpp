#include "analysis/Giri.h"

#include <algorithm>
#include <cmath>

#include "shell/NumeroTesto.h"

namespace lapvane {

void RicercaGiri::Righe(std::span<const double> giri) {
    for (const double giro : giri) {
        // From row to row it is nearly always the same lap.
        if (giro != ultimo_ || righe_.Numero == 0) {
            Giro(std::fabs(giro) < 2147483647.0 ? ConvertiInt32(giro) : 0);
        }
        if (piena_) return;
        ultimo_ = giro;
        righe_.Fine[righe_.Numero] = riga_++;
    }
}

void RicercaGiri::Giro(std::int32_t numero) {
    if (righe_.Numero != 0 && numero == numero_) return;
    piena_ = righe_.Numero == kUltimaRiga;
    if (piena_) return;
    numero_ = numero;
    righe_.Inizio[++righe_.Numero] = riga_;
}

RigheGiri CercaGiri(const TabellaDati& tabella) {
    constexpr std::int32_t kFinestra = 4096;
    RicercaGiri ricerca(tabella.PrimaRiga());
    const std::int32_t righe = tabella.Laterale().Righe(kColonnaGiro);
    for (std::int32_t da = 0; da < righe;) {
        const std::int32_t a = da + std::min(righe - da, kFinestra);
        ricerca.Righe(tabella.Laterale().Celle(kColonnaGiro, da, a));
        da = a;
    }
    return ricerca.Trovate();
}

}  // namespace lapvane
