#include "analysis/Quadro.h"

#include "platform/Platform.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr Colore kColoreCursore = Rgb(0, 0, 255);
constexpr double kAllarmiDa = 0.0;  // y range of the overview
constexpr double kAllarmiA = 18.0;

constexpr Colore kColoriAllarmi[kNumAllarmi] = {
    Rgb(192, 0, 0),   Rgb(128, 0, 0), Rgb(192, 0, 192), Rgb(128, 0, 128),
    Rgb(0, 128, 128), Rgb(0, 128, 0), Rgb(0, 0, 255),   Rgb(0, 0, 128)};

}  // namespace

Colore ColoreAllarme(int k) {
    return kColoriAllarmi[k];
}

void Quadro::ConfiguraCursore() {
    if (grafico_.NumeroCursori() != 0) return;
    grafico_.AggiungiCursore();
    grafico_.ImpostaModoCursore(ModoCursore::Aggancio);
    grafico_.CursoreX(0.0);
    grafico_.CursoreY(0.0);
    grafico_.CursoreVisibile(true);
    grafico_.ImpostaModoMouse(ModoMouse::Cursore);
    grafico_.ColoreCursore(kColoreCursore);
}

void Quadro::Pulisci() {
    grafico_.PulisciGrafico();
    const bool distanza = parti_.Finestra.AsseDistanza();
    const Canale& asse = parti_.Canali[distanza ? kColonnaDistanza : kColonnaTempo];
    grafico_.EtichettaX(asse.NomeCampo + (distanza ? " [m]" : " [sec]"));
}

void Quadro::CalcolaRighe() {
    parti_.Finestra.CalcolaRighe(parti_.Forma.Tabella(), parti_.Giri.InizioSelezionato(),
                                 parti_.Giri.FineSelezionato());
}

void Quadro::DisegnaColonna(Piano piano, int c, double scala, int passo,
                            const MisureCanale& misure) {
    const FinestraX& finestra = parti_.Finestra;
    const int x = parti_.Forma.ColonnaX(finestra.AsseDistanza());
    if (x == 0) return;
    const TabellaDati& tabella = parti_.Forma.Tabella();
    const std::int32_t da = finestra.RigaDa(), a = finestra.RigaA();
    const auto disegna = [&](std::span<const double> ascisse, std::span<const double> valori) {
        grafico_.DisegnaArray(ascisse, valori, grafico_.ElementoCorrente(), scala, passo, misure);
    };
    if (piano == Piano::Dati) {
        disegna(tabella.Righe(x, da, a), tabella.Righe(c, da, a));
    } else {
        disegna(tabella.RigheLaterali(x, da, a), tabella.RigheLaterali(c, da, a));
    }
}

bool QuadroCanali::SiDisegna() const {
    return !separati_ || parti_.Canali.NumCanaliAttivi() <= kRiquadriMassimi;
}

void QuadroCanali::ImpostaIntervallo() {
    const FinestraX& f = parti_.Finestra;
    grafico_.ImpostaIntervallo(f.XMin(), f.XMax(), f.YMin(), f.YMax(), 0);
}

void QuadroCanali::Disegna() {
    if (!SiDisegna()) {
        platform().MsgBox(Testo(Voce::TreCanaliAlMassimo), Buttons::Ok, Icon::Information,
                          platform().ExeName());
        return;
    }
    parti_.Canali.UltimoCanale(0);
    numElementi_ = 0;
    Pulisci();
    CalcolaRighe();
    const bool vuota = parti_.Finestra.Vuota();
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        const bool spuntato = parti_.Canali[c].chkGrafico;
        if (spuntato && !vuota) DisegnaCanale(c);
        parti_.Vista.SegnaCanale(c, spuntato);
    }
}

void QuadroCanali::DisegnaCanale(int c) {
    FinestraX& finestra = parti_.Finestra;
    const Canale& canale = parti_.Canali[c];
    parti_.Canali.UltimoCanale(c);
    grafico_.ColoreElemento(canale.ColoreCanale);
    grafico_.SpessoreElemento(canale.SpessoreCanale);
    grafico_.NomeElemento(canale.NomeCampo);
    ConfiguraCursore();
    double scala = 1.0;
    if (separati_) {
        grafico_.ColoreAsse(canale.ColoreCanale);
        grafico_.EtichettaY(parti_.Canali.TitoloCanale(c));
        ++numElementi_;
        grafico_.ImpostaIntervallo(finestra.XMin(), finestra.XMax(),
                                   canale.MinCanale - canale.MinCanale * 0.1,
                                   canale.MaxCanale + canale.MaxCanale * 0.1, numElementi_);
    } else {
        ImpostaIntervallo();
        scala = canale.FattoreScala;
    }
    finestra.CalcolaPassoSposta();
    // The filter is no smoothing: a filter of n draws one point out of n at full zoom.
    DisegnaColonna(Piano::Dati, c, scala, canale.FiltroCanale * finestra.Decimazione(),
                   {canale.MinCanale, canale.MaxCanale, canale.MediaCanale});
}

void QuadroCanali::RinnovaScala() {
    const int c = parti_.Canali.CanaleScala();
    if (c == 0) return;
    const Canale& canale = parti_.Canali[c];
    if (!separati_) grafico_.ScalaY(canale.FattoreScala);
    grafico_.ColoreAsse(canale.ColoreCanale);
    grafico_.EtichettaY(parti_.Canali.TitoloCanale(c));
}

void QuadroAllarmi::ImpostaIntervallo() {
    grafico_.ImpostaIntervallo(parti_.Finestra.XMin(), parti_.Finestra.XMax(), kAllarmiDa,
                               kAllarmiA, 0);
}

void QuadroAllarmi::Prepara() {
    grafico_.ColoreSfondo(Rgb(255, 255, 255));
    grafico_.ColoreAsse(0);
    grafico_.ColoreCornice(0);
    grafico_.MostraGriglia(false);
    grafico_.MostraNumeriY(false);
    ConfiguraCursore();
    ImpostaIntervallo();
    parti_.Finestra.CalcolaPassoSposta();
}

void QuadroAllarmi::Disegna() {
    Pulisci();
    ConfiguraCursore();
    ImpostaIntervallo();
    parti_.Finestra.CalcolaPassoSposta();
    CalcolaRighe();
    if (parti_.Finestra.Vuota()) return;
    for (int k = 0; k < kNumAllarmi; ++k) {
        const int c = kPrimoAllarme + k;
        // Kept: the last alarm counts as the last channel drawn, and its filter is the one that
        // the cursor reads with.
        parti_.Canali.UltimoCanale(c);
        grafico_.ColoreElemento(ColoreAllarme(k));
        grafico_.SpessoreElemento(1);
        DisegnaColonna(Piano::Laterale, c, 1.0, parti_.Finestra.Decimazione(), {});
    }
}

}  // namespace lapvane
