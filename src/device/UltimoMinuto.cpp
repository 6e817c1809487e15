#include "device/UltimoMinuto.h"

#include <algorithm>

namespace lapvane {

bool UltimoMinuto::Aggiungi(double valore, std::int64_t ora) {
    const std::int64_t posto = ora / kPosto;
    const auto in = [this](std::int64_t n) -> std::optional<double>& {
        return valori_[static_cast<std::size_t>(n) % kPosti];
    };
    if (posto == ultimo_) {
        if (in(posto) != valore) uguali_ = 1;
        in(posto) = valore;
        return false;
    }
    const bool vuoto = ultimo_ < 0 || posto - ultimo_ > kSalto;
    const std::optional<double> prima = vuoto ? std::nullopt : in(ultimo_);
    const std::int64_t passati = std::min<std::int64_t>(posto - ultimo_, kPosti);
    for (std::int64_t n = posto - passati + 1; n < posto; ++n) in(n) = prima;
    in(posto) = valore;
    ultimo_ = posto;
    uguali_ = prima == valore ? uguali_ + static_cast<std::size_t>(passati) : 1;
    return uguali_ < kPosti + static_cast<std::size_t>(passati);
}

std::optional<double> UltimoMinuto::Valore(std::size_t fa) const {
    if (ultimo_ < 0 || fa >= kPosti) return std::nullopt;
    // The numbers of places below 0 have never been written: those places are gaps still.
    return valori_[(static_cast<std::size_t>(ultimo_) + kPosti - fa) % kPosti];
}

UltimoMinuto::Campo UltimoMinuto::Intervallo(double apertura) const {
    std::optional<Campo> campo;
    for (const std::optional<double>& valore : valori_) {
        if (!valore) continue;
        if (!campo) campo = Campo{*valore, *valore};
        campo->Minimo = std::min(campo->Minimo, *valore);
        campo->Massimo = std::max(campo->Massimo, *valore);
    }
    if (!campo) return {0.0, apertura};
    const double manca = apertura - (campo->Massimo - campo->Minimo);
    if (manca <= 0.0) return *campo;
    return {campo->Minimo - manca / 2.0, campo->Massimo + manca / 2.0};
}

}  // namespace lapvane
