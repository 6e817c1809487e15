#include "analysis/ElencoGiri.h"

#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr int kUltimaColonna = kNumCanali - 1;  // of the lap table
constexpr Colore kBianco = Rgb(255, 255, 255);
constexpr Colore kNero = Rgb(0, 0, 0);
constexpr Colore kVerde = Rgb(0, 255, 0);
constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kBlu = Rgb(0, 0, 255);

}  // namespace

void ElencoGiri::Compila() {
    VistaAnalisi& vista = parti_.Vista;
    const GiriLog& giri = parti_.Giri;
    vista.MostraGriglia(true);
    vista.RigheGriglia(giri.NumRigheTabella());
    vista.Cella(0, kColonnaTempoGiro, Testo(Voce::ColonnaTempoGiro));
    vista.LarghezzaColonna(kColonnaTempoGiro, 1100);
    for (int c = 2; c <= giri.UltimaColonna(); ++c)
        vista.Cella(0, c, Testo(Voce::ColonnaSettore) + TestoNumero(c - 1));
    for (int c = 2; c <= kUltimaColonna; ++c) vista.LarghezzaColonna(c, 850);
    vista.Cella(1, 0, "Start");
    const int fine = giri.NumRigheTabella() - 1;
    for (int r = 2; r < fine; ++r) CompilaRiga(r);
    vista.Cella(fine, 0, "End");
    EvidenziaTempi();
}

void ElencoGiri::CompilaRiga(int riga) {
    VistaAnalisi& vista = parti_.Vista;
    GiriLog& giri = parti_.Giri;
    const TabellaDati& tabella = parti_.Forma.Tabella();
    // Without rows of its own the instrument timed the lap, and the log does not hold it.
    const bool vuoto = giri.InizioGiro(riga) == giri.FineGiro(riga);
    if (!vuoto) giri.CalcolaSettoriGiro(riga, tabella);
    const double numero =
        vuoto ? riga - 1 : tabella.Valore(kColonnaGiro, Piano::Laterale, giri.InizioGiro(riga));
    vista.Cella(riga, 0, Testo(Voce::RigaGiro) + TestoNumero(numero));
    const int ultima = vuoto ? kColonnaTempoGiro : giri.UltimaColonna();
    for (int c = kColonnaTempoGiro; c <= ultima; ++c) vista.Cella(riga, c, giri.TempoGiro(riga, c));
}

void ElencoGiri::EvidenziaTempi() {
    const GiriLog& giri = parti_.Giri;
    if (giri.NumGiri() < 1) return;
    for (int c = kColonnaTempoGiro; c <= giri.UltimaColonna(); ++c) {
        for (int r = 2; r <= giri.NumGiri() + 1; ++r)
            parti_.Vista.Cella(r, c, giri.TempoGiro(r, c));
        const GiriLog::Estremi estremi = giri.MiglioreEPeggiore(c);
        parti_.Vista.SfondoCella(estremi.Migliore, c, kVerde);
        parti_.Vista.SfondoCella(estremi.Peggiore, c, kRosso);
    }
}

void ElencoGiri::ColoraRiga(int riga, Colore sfondo, Colore caratteri) {
    for (int c = 2; c <= kUltimaColonna; ++c) {
        parti_.Vista.SfondoCella(riga, c, sfondo);
        parti_.Vista.CaratteriCella(riga, c, caratteri);
    }
}

void ElencoGiri::TogliScelta() {
    const int giro = parti_.Giri.GiroSelezionato();
    if (giro >= 1) ColoraRiga(giro, kBianco, kNero);
}

void ElencoGiri::MostraScelta() {
    ColoraRiga(parti_.Giri.GiroSelezionato(), kBlu, kBianco);
    parti_.Vista.SegnaGiro(parti_.Giri.GiroSelezionato());
}

void ElencoGiri::Svuota() {
    for (int riga = 0; riga <= parti_.Giri.NumRigheTabella(); ++riga) {
        if (riga > 0) ColoraRiga(riga, kBianco, kNero);
        for (int c = 2; c <= kUltimaColonna; ++c) parti_.Vista.Cella(riga, c, {});
    }
}

std::string ElencoGiri::EtichettaGiro() const {
    const double numero =
        parti_.Giri.NumeroGiro(parti_.Forma.Tabella(), parti_.Giri.GiroSelezionato());
    return " " + Testo(Voce::Giro) + " " + TestoNumero(numero);
}

std::string ElencoGiri::NomeGiro() const {
    const int giro = parti_.Giri.GiroSelezionato();
    std::string nome = EtichettaGiro().substr(1);
    const bool completo = giro >= 2 && giro <= parti_.Giri.NumGiri() + 1;
    if (completo) nome += " - " + parti_.Giri.GetTempoGiro(giro);
    return nome;
}

}  // namespace lapvane
