// Moving through a lap: zoom, shift, automatic scroll, tabs, mouse zoom.
#include "analysis/AnalisiDati.h"

namespace lapvane {

namespace {

constexpr double kAllarmiDa = 0.0;  // y range of the overview
constexpr double kAllarmiA = 18.0;
constexpr double kZoomPieno = 1.0;  // right edge below which the window is not made narrower
constexpr int kRitmo = 16;          // ms of a round of scroll, as a screen shows it

}  // namespace

void AnalisiDati::LeggiFinestra(bool conY) {
    const IntervalloGrafico letto = NTGraph1.LeggiIntervallo();
    XMin = letto.XMin;
    XMax = letto.XMax;
    if (!conY) return;
    YMin = letto.YMin;
    YMax = letto.YMax;
}

void AnalisiDati::AggiornaZoomIn() {
    // Kept: the right edge of the window decides, not its width.
    if (XMax < kZoomPieno) {
        vista_.AbilitaZoomIn(false);
    } else if (!ZoomAttivo) {
        vista_.AbilitaZoomIn(true);
    }
}

void AnalisiDati::cmdZoom_Click(double fattore, bool fuori) {
    const PuntatoreOccupato occupato;
    LeggiFinestra(true);
    const double larghezza = XMax - XMin;
    XMax = (fuori ? larghezza / fattore : larghezza * fattore) + XMin;
    NTGraph1.CursoreX(XMin);
    NTGraphAll.CursoreX(XMin);
    NTGraph1.ImpostaIntervallo(XMin, XMax, YMin, YMax, 0);
    CalcolaPassoSposta();
    Ridisegna();
    NTGraphAll.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    AggiornaZoomIn();
}

void AnalisiDati::cmdSposta_Click(int passi) {
    const bool unoAvanti = passi == 1;
    if (!unoAvanti || LeggePrimaDiSpostare()) LeggiFinestra(false);
    // Nothing holds the window inside the lap.
    const double spostamento = passi * PassoSposta;
    XMin = XMin + spostamento;
    XMax = XMax + spostamento;
    NTGraph1.CursoreX(XMin);
    NTGraphAll.CursoreX(XMin);
    NTGraph1.ImpostaIntervallo(XMin, XMax, YMin, YMax, 0);
    CalcolaPassoSposta();
    if (!unoAvanti) Ridisegna();
    NTGraphAll.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    if (unoAvanti) Ridisegna();
    IndiceCursore = NTGraph1.IndiceDaX(XMin, 1.0);
    EventoCursore(IndiceCursore);
    EventoCursoreAllarmi(IndiceCursore);
    platform().DoEvents();
}

void AnalisiDati::cmdScorri_Click(Verso verso) {
    if (Scheda != 0 && Scheda != 1) return;
    const bool panoramica = Scheda == 1;
    if (ScorrimentoAttivo) {
        FermaScorrimento(panoramica);
        return;
    }
    const StatoScorri verde{true, true};
    const StatoScorri spento{false, false};
    const bool destra = verso == Verso::DX;
    vista_.Scorri(destra ? spento : verde, destra ? verde : spento);
    ScorrimentoAttivo = true;
    GraphControl& grafico = panoramica ? NTGraphAll : NTGraph1;
    grafico.CursoreAttivo(false);
    while (ScorrimentoAttivo && !scaricata_) {
        const std::int64_t inizio = platform().GetTickCount();
        PassoDiScorrimento(verso, panoramica);
        // Events run here: a second click, another lap or tab, the end of the window.
        platform().DoEvents();
        while (ScorrimentoAttivo && !scaricata_) {
            const std::int64_t resto = inizio + kRitmo - platform().GetTickCount();
            if (resto <= 0) break;
            platform().DoEvents(static_cast<int>(resto));
        }
    }
    if (scaricata_) return;
    grafico.CursoreAttivo(true);  // also if the tab was changed meanwhile
}

bool AnalisiDati::FineScorrimento(Verso verso, bool panoramica) const {
    if (verso == Verso::SX) return XMin < 0.0;
    // Kept: the time column says where the lap ends, also when the axis is the distance. A lap that
    // has no such row has nothing to scroll through.
    const std::int32_t riga = FineGiro(GiroSelezionato) - 1;
    const Piano piano = PianoDelTempo(panoramica);
    return !Tabella().Contiene(kColonnaTempo, piano, riga) ||
           XMax > Tabella().Valore(kColonnaTempo, piano, riga);
}

void AnalisiDati::PassoDiScorrimento(Verso verso, bool panoramica) {
    GraphControl& grafico = panoramica ? NTGraphAll : NTGraph1;
    const IntervalloGrafico letto = grafico.LeggiIntervallo();
    XMin = letto.XMin;
    XMax = letto.XMax;
    if (!panoramica) {
        YMin = letto.YMin;
        YMax = letto.YMax;
    }
    // More panes than there can be would bring their message in every round.
    const bool nonDisegna = !panoramica && Separati && NumCanaliAttivi > kRiquadriMassimi;
    if (nonDisegna || FineScorrimento(verso, panoramica)) {
        FermaScorrimento(panoramica);
        return;
    }
    const double passo = verso == Verso::DX ? PassoScorri : -PassoScorri;
    XMin = XMin + passo;
    XMax = XMax + passo;
    grafico.CursoreX(XMin);
    if (panoramica) {
        grafico.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    } else {
        grafico.ImpostaIntervallo(XMin, XMax, YMin, YMax, 0);
    }
    CalcolaPassoScorri();
    if (panoramica) {
        DisegnaAllarmi(grafico);
    } else {
        DisegnaCanali(grafico);
    }
    IndiceCursore = grafico.IndiceDaX(XMin, 1.0);
    if (panoramica) {
        EventoCursoreAllarmi(IndiceCursore);
    } else {
        EventoCursore(IndiceCursore);
    }
}

void AnalisiDati::FermaScorrimento(bool panoramica) {
    vista_.Scorri({}, {});
    ScorrimentoAttivo = false;
    (panoramica ? NTGraphAll : NTGraph1).CursoreAttivo(true);
}

void AnalisiDati::SSTab1_Click(int scheda) {
    Scheda = scheda;
    if (scheda == 1) {
        LeggiFinestra(false);
        NTGraphAll.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    }
    CalcolaPassoSposta();
    Ridisegna();
    // The boxes hold what was under the overview's cursor, and here another one is seen.
    if (scheda == 0) EventoCursore(NTGraph1.IndiceDaX(NTGraph1.CursoreX(), 1.0));
    UltimaScheda = scheda;
}

void AnalisiDati::EventoZoom() {
    LeggiFinestra(true);
    CalcolaPassoSposta();
    Ridisegna();
    NTGraphAll.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    AggiornaZoomIn();
}

void AnalisiDati::DimOriginali_Click() {
    CalcolaScale(NTGraph1);
    NTGraphAll.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    CalcolaPassoSposta();
    RinnovaScala();
    Ridisegna();
}

void AnalisiDati::PreparaPanoramica() {
    NTGraphAll.ColoreSfondo(Rgb(255, 255, 255));
    NTGraphAll.ColoreAsse(0);
    NTGraphAll.ColoreCornice(0);
    NTGraphAll.MostraGriglia(false);
    NTGraphAll.MostraNumeriY(false);
    ConfiguraCursore(NTGraphAll);
    NTGraphAll.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    CalcolaPassoSposta();
}

void AnalisiDati::DisegnaAllarmi(GraphControl& grafico) {
    grafico.PulisciGrafico();
    grafico.EtichettaX(TestoAsseX());
    ConfiguraCursore(grafico);
    grafico.ImpostaIntervallo(XMin, XMax, kAllarmiDa, kAllarmiA, 0);
    CalcolaPassoSposta();
    CalcolaRighe();
    if (RigaA < RigaDa) return;
    for (int k = 0; k < kNumAllarmi; ++k) {
        const int c = kPrimoAllarme + k;
        ElementoCanale[static_cast<std::size_t>(c)][1] = grafico.ElementoCorrente();
        // Kept: the last alarm counts as the last channel drawn, and its filter is the one that
        // the cursor reads with.
        UltimoCanale = static_cast<std::int16_t>(c);
        grafico.ColoreElemento(kColoriAllarmi[static_cast<std::size_t>(k)]);
        grafico.SpessoreElemento(1);
        DisegnaColonna(grafico, Piano::Laterale, c, 1.0, Decimazione);
    }
}

}  // namespace lapvane
