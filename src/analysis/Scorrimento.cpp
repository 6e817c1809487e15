#include "analysis/Scorrimento.h"

#include "platform/Platform.h"

namespace lapvane {

namespace {

constexpr int kRitmo = 16;  // ms of a round of scroll, as a screen shows it

}  // namespace

void Scorrimento::Avvia(Verso verso) {
    const StatoScorri verde{true, true};
    const StatoScorri spento{false, false};
    const bool destra = verso == Verso::DX;
    parti_.Vista.Scorri(destra ? spento : verde, destra ? verde : spento);
    attivo_ = true;
    quadro_.Controllo().CursoreAttivo(false);
    while (attivo_ && !abbandonato_) {
        const std::int64_t inizio = platform().GetTickCount();
        Passo(verso);
        // Events run here: a second click, another lap or tab, the end of the window.
        platform().DoEvents();
        while (attivo_ && !abbandonato_) {
            const std::int64_t resto = inizio + kRitmo - platform().GetTickCount();
            if (resto <= 0) break;
            platform().DoEvents(static_cast<int>(resto));
        }
    }
    if (abbandonato_) return;
    quadro_.Controllo().CursoreAttivo(true);  // also if the tab was changed meanwhile
}

void Scorrimento::Ferma() {
    parti_.Vista.Scorri({}, {});
    attivo_ = false;
    quadro_.Controllo().CursoreAttivo(true);
}

void Scorrimento::Abbandona() {
    attivo_ = false;
    abbandonato_ = true;
}

bool Scorrimento::Fine(Verso verso) const {
    if (verso == Verso::SX) return parti_.Finestra.XMin() < 0.0;
    // Kept: the time column says where the lap ends, also when the axis is the distance. A lap that
    // has no such row has nothing to scroll through.
    const TabellaDati& tabella = parti_.Forma.Tabella();
    const std::int32_t riga = parti_.Giri.FineSelezionato() - 1;
    const Piano piano = parti_.Forma.PianoDelTempo(quadro_.Quale());
    return !tabella.Contiene(kColonnaTempo, piano, riga) ||
           parti_.Finestra.XMax() > tabella.Valore(kColonnaTempo, piano, riga);
}

void Scorrimento::Passo(Verso verso) {
    FinestraX& finestra = parti_.Finestra;
    quadro_.LeggiFinestra();
    // More panes than there can be would bring their message in every round.
    if (!quadro_.SiDisegna() || Fine(verso)) {
        Ferma();
        return;
    }
    finestra.Sposta(verso == Verso::DX ? finestra.PassoScorri() : -finestra.PassoScorri());
    quadro_.CursoreAlMargine();
    quadro_.ImpostaIntervallo();
    finestra.CalcolaPassoScorri();
    quadro_.Disegna();
    cursore_.EventoCursore(quadro_.Quale(), cursore_.IndiceCursore(quadro_));
}

}  // namespace lapvane
