// What stands under the cursor: values, alarm lamps, the marker of the track map.
#include <algorithm>
#include <cmath>
#include <optional>

#include "analysis/AnalisiDati.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

/// A computed row or point as a whole number, ties to even; none if no 32 bits hold it.
std::optional<std::int32_t> Intero(double valore) {
    const double r = std::nearbyint(valore);
    if (!(r > -2147483648.0 && r < 2147483648.0)) return std::nullopt;
    return static_cast<std::int32_t>(r);
}

}  // namespace

void AnalisiDati::ScriviValori(std::int32_t indice) {
    const double ultimo = FiltroCanale[static_cast<std::size_t>(UltimoCanale)];
    for (int c = kColonnaTempo; c <= UltimoCanaleFile(); ++c) {
        const double filtro = FiltroCanale[static_cast<std::size_t>(c)];
        if (filtro == 0.0) continue;  // no row can be told, the value stands
        // All channels are read at the row of the last drawn one, whose points the index counts.
        const auto riga =
            Intero(static_cast<double>(indice) * Decimazione * filtro * (ultimo / filtro) + RigaDa);
        if (!riga || !Tabella().Contiene(c, Piano::Dati, *riga)) continue;
        const std::string testo = TestoNumeroConSpazio(Tabella().Valore(c, Piano::Dati, *riga));
        vista_.Valore(c, std::string(Rifila(testo)));
    }
}

void AnalisiDati::EventoCursore(std::int32_t indice) {
    ScriviValori(indice);
    MuoviMarcatore(indice);
}

void AnalisiDati::EventoCursoreAllarmi(std::int32_t indice) {
    ScriviValori(indice);
    const auto riga = Intero(static_cast<double>(indice) * Decimazione + RigaDa);
    for (int k = 0; k < kNumAllarmi && riga; ++k) {
        const int c = kPrimoAllarme + k;
        if (!Tabella().Contiene(c, Piano::Laterale, *riga)) break;
        // Alarm k holds 2k while it is on, 2k - 1 while it is off, k from 1.
        vista_.Lampada(k, Tabella().Valore(c, Piano::Laterale, *riga) == 2.0 * (k + 1));
    }
    MuoviMarcatore(indice);
}

void AnalisiDati::MuoviMarcatore(std::int32_t indice) {
    if (!TracciatoVisibile) return;
    const double ultimo = FiltroCanale[static_cast<std::size_t>(UltimoCanale)];
    const double campo = FiltroCanale[static_cast<std::size_t>(UltimoCanaleFile())];
    if (Decimazione == 0 || campo == 0.0) return;
    const double inLap =
        indice + static_cast<double>(RigaDa - InizioGiro(GiroSelezionato)) / Decimazione;
    const auto punto = Intero(inLap * (NumPuntiTracciato - 1) * Decimazione);
    const auto righe = Intero(RigheGiro * campo * ultimo / campo);
    if (!punto || !righe || *righe == 0) return;  // without a drawn channel there is no share
    int mostrato = *punto / *righe;
    // Lines that have no place among the points: the marker stops at the last one that has.
    constexpr int kUltimoPunto = static_cast<int>(kPuntiMassimi) - 1;
    if (mostrato < NumPuntiTracciato) mostrato = std::min(mostrato, kUltimoPunto);
    vista_.MarcatoreMappa(mostrato);
}

}  // namespace lapvane
