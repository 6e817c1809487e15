#include "analysis/Cursore.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "reports/Circuiti.h"
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

void Cursore::EventoCursore(Grafico grafico, std::int32_t indice) const {
    ScriviValori(indice);
    if (grafico == Grafico::Allarmi) AccendiLampade(indice);
    MuoviMarcatore(indice);
}

std::int32_t Cursore::IndiceCursore(Quadro& quadro) const {
    return quadro.Controllo().IndiceDaX(parti_.Finestra.XMin(), 1.0);
}

void Cursore::ScriviValori(std::int32_t indice) const {
    const ElencoCanali& canali = parti_.Canali;
    const FinestraX& finestra = parti_.Finestra;
    const TabellaDati& tabella = parti_.Forma.Tabella();
    const double ultimo = canali[canali.UltimoCanale()].FiltroCanale;
    for (int c = kColonnaTempo; c <= canali.Ultimo(); ++c) {
        const double filtro = canali[c].FiltroCanale;
        if (filtro == 0.0) continue;  // no row can be told, the value stands
        // All channels are read at the row of the last drawn one, whose points the index counts.
        const auto riga = Intero(
            1.0 * indice * finestra.Decimazione() * filtro * (ultimo / filtro) + finestra.RigaDa());
        if (!riga || !tabella.Contiene(c, Piano::Dati, *riga)) continue;
        const std::string testo = TestoNumeroConSpazio(tabella.Valore(c, Piano::Dati, *riga));
        parti_.Vista.Valore(c, std::string(Rifila(testo)));
    }
}

void Cursore::AccendiLampade(std::int32_t indice) const {
    const TabellaDati& tabella = parti_.Forma.Tabella();
    const auto riga =
        Intero(1.0 * indice * parti_.Finestra.Decimazione() + parti_.Finestra.RigaDa());
    for (int k = 0; k < kNumAllarmi && riga; ++k) {
        const int c = kPrimoAllarme + k;
        if (!tabella.Contiene(c, Piano::Laterale, *riga)) break;
        // Alarm k holds 2k while it is on, 2k - 1 while it is off, k from 1.
        parti_.Vista.Lampada(k, tabella.Valore(c, Piano::Laterale, *riga) == 2.0 * (k + 1));
    }
}

void Cursore::MuoviMarcatore(std::int32_t indice) const {
    if (!mappa_.TracciatoVisibile()) return;
    const ElencoCanali& canali = parti_.Canali;
    const int decimazione = parti_.Finestra.Decimazione();
    const int punti = mappa_.NumPuntiTracciato();
    const double ultimo = canali[canali.UltimoCanale()].FiltroCanale;
    const double campo = canali[canali.Ultimo()].FiltroCanale;
    if (campo == 0.0) return;
    const double nelGiro = parti_.Finestra.RigaDa() - parti_.Giri.InizioSelezionato();
    const double inLap = indice + nelGiro / decimazione;
    const auto punto = Intero(inLap * (punti - 1) * decimazione);
    const auto righe = Intero(parti_.Giri.RigheGiro() * campo * ultimo / campo);
    if (!punto || !righe || *righe == 0) return;  // without a drawn channel there is no share
    int mostrato = *punto / *righe;
    // Lines that have no place among the points: the marker stops at the last one that has.
    constexpr int kUltimoPunto{kPuntiMassimi - 1};
    if (mostrato < punti) mostrato = std::min(mostrato, kUltimoPunto);
    parti_.Vista.MarcatoreMappa(mostrato);
}

}  // namespace lapvane
