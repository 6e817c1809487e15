#include "analysis/ColonneDati.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/PagineGrandi.h"

namespace lapvane {

void ColonneDati::Alloca(int colonne, std::int32_t righe) {
    numero_ = 0;
    righe_ = 0;
    memoria_.reset();
    const auto numero = static_cast<std::size_t>(std::clamp(colonne, 0, kUltimoCanale));
    const auto celle = static_cast<std::size_t>(std::max(righe, 1));
    if (numero != 0) {
        // Pages of calloc come from the system as zeros when they are first written: columns that
        // no row fills cost next to nothing.
        memoria_.reset(static_cast<double*>(std::calloc(numero * celle, sizeof(double))));
        if (!memoria_) throw std::bad_alloc();
        PagineGrandi(memoria_.get(), numero * celle * sizeof(double));
        for (std::size_t c = 0; c < numero; ++c) inizi_[c] = memoria_.get() + c * celle;
        numero_ = numero;
    }
    righe_ = std::max(righe, 0);
}

std::span<const double> ColonneDati::Colonna(int colonna) const {
    if (colonna < 1 || std::cmp_greater(colonna, numero_)) return {};
    return {inizi_[static_cast<std::size_t>(colonna - 1)], static_cast<std::size_t>(righe_)};
}

}  // namespace lapvane
