#include <cmath>

#include "analysis/AnalisiDati.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr Colore kColoreCursore = Rgb(0, 0, 255);

/// Row number of a time or distance in the window, ties to even, kept inside 32 bits.
std::int32_t Riga(double valore) {
    const double r = std::nearbyint(valore);
    if (!(r > -2147483648.0)) return -2147483647;
    return r < 2147483647.0 ? static_cast<std::int32_t>(r) : 2147483647;
}

}  // namespace

void ConfiguraCursore(GraphControl& grafico) {
    if (grafico.NumeroCursori() != 0) return;
    grafico.AggiungiCursore();
    grafico.ImpostaModoCursore(ModoCursore::Aggancio);
    grafico.CursoreX(0.0);
    grafico.CursoreY(0.0);
    grafico.CursoreVisibile(true);
    grafico.ImpostaModoMouse(ModoMouse::Cursore);
    grafico.ColoreCursore(kColoreCursore);
}

void AnalisiDati::CalcolaRighe() {
    const TabellaDati& tabella = Tabella();
    const std::int32_t fine = FineGiro(GiroSelezionato);
    // Time starts again at 0 with each lap, so that XMin * 10 is a row offset inside the lap. Kept:
    // both tests look at the time column whatever the axis shows, and the last row counts from the
    // first row of the window.
    RigaDa = InizioGiro(GiroSelezionato);
    if (XMin > tabella.Valore(kColonnaTempo, Piano::Dati, RigaDa))
        RigaDa = Riga(XMin * 10.0 + RigaDa);
    RigaA = fine;
    if (tabella.Valore(kColonnaTempo, Piano::Dati, RigaA) > XMax) {
        RigaA = Riga(XMax * 10.0 + RigaDa);
        if (RigaA > fine) RigaA = fine;
    }
}

std::string AnalisiDati::TestoAsseX() const {
    return AsseDistanza ? NomeCampo[kColonnaDistanza] + " [m]"
                        : NomeCampo[kColonnaTempo] + " [sec]";
}

void AnalisiDati::DisegnaCanali(GraphControl& grafico) {
    if (Separati && NumCanaliAttivi > kRiquadriMassimi) {
        TroppiRiquadri();
        return;
    }
    UltimoCanale = 0;
    NumElementi = 0;
    grafico.PulisciGrafico();
    grafico.EtichettaX(TestoAsseX());
    CalcolaRighe();
    const bool vuoto = RigaA < RigaDa;
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        const bool spuntato = chkGrafico[static_cast<std::size_t>(c)];
        if (spuntato && !vuoto) DisegnaCanale(grafico, c);
        vista_.SegnaCanale(c, spuntato);
    }
}

void AnalisiDati::DisegnaCanale(GraphControl& grafico, int c) {
    const auto i = static_cast<std::size_t>(c);
    ElementoCanale[i][0] = grafico.ElementoCorrente();
    UltimoCanale = static_cast<std::int16_t>(c);
    grafico.ColoreElemento(ColoreCanale[i]);
    grafico.SpessoreElemento(SpessoreCanale[i]);
    grafico.NomeElemento(NomeCampo[i]);
    ConfiguraCursore(grafico);
    double scala = 1.0;
    if (Separati) {
        grafico.ColoreAsse(ColoreCanale[i]);
        grafico.EtichettaY(TitoloCanale(c));
        ++NumElementi;
        grafico.ImpostaIntervallo(XMin, XMax, MinCanale[i] - MinCanale[i] * 0.1,
                                  MaxCanale[i] + MaxCanale[i] * 0.1, NumElementi);
    } else {
        grafico.ImpostaIntervallo(XMin, XMax, YMin, YMax, 0);
        scala = FattoreScala[i];
    }
    CalcolaPassoSposta();
    // The filter is no smoothing: a filter of n draws one point out of n at full zoom.
    DisegnaColonna(grafico, Piano::Dati, c, scala, FiltroCanale[i] * Decimazione);
}

void AnalisiDati::DisegnaColonna(GraphControl& grafico, Piano piano, int c, double scala,
                                 int passo) {
    const int x = ColonnaX();
    if (x == 0) return;
    const auto i = static_cast<std::size_t>(c);
    const bool canale = piano == Piano::Dati;
    const MisureCanale misure = {MinCanale[i], MaxCanale[i], MediaCanale[i]};
    grafico.DisegnaArray(
        Tabella().Righe(x, piano, RigaDa, RigaA), Tabella().Righe(c, piano, RigaDa, RigaA),
        ElementoCanale[i][canale ? 0 : 1], scala, passo, canale ? misure : MisureCanale{});
}

void AnalisiDati::Ridisegna() {
    if (Scheda == 0) DisegnaCanali(NTGraph1);
    if (Scheda == 1) DisegnaAllarmi(NTGraphAll);
}

void AnalisiDati::chkGrafico_Click(int c, bool spuntato) {
    const auto i = static_cast<std::size_t>(c);
    if (c < kPrimoCanale || c > kUltimoCanale || chkGrafico[i] == spuntato) return;
    chkGrafico[i] = spuntato;
    NumCanaliAttivi = static_cast<std::int16_t>(NumCanaliAttivi + (spuntato ? 1 : -1));
    if (!Separati) {
        barra_.SeparatiAcceso = NumCanaliAttivi <= kRiquadriMassimi;
        vista_.Barra(barra_);
    }
    if (spuntato) {
        SelezionaScala(c);
    } else {
        for (int altro = kPrimoCanale; altro <= kUltimoCanale; ++altro) {
            if (!chkGrafico[static_cast<std::size_t>(altro)]) continue;
            SelezionaScala(altro);
            break;
        }
    }
    Ridisegna();
}

void AnalisiDati::SelezionaScala(int c) {
    // Choosing an option that is already chosen is no click. The caller redraws.
    if (CanaleScala == c) return;
    vista_.SelezionaScala(c);
    CanaleScala = static_cast<std::int16_t>(c);
    RinnovaScala();
}

void AnalisiDati::optScala_Click(int c) {
    if (c < kPrimoCanale || c > kUltimoCanale) return;
    CanaleScala = static_cast<std::int16_t>(c);
    RinnovaScala();
    Ridisegna();
}

void AnalisiDati::RinnovaScala() {
    if (CanaleScala == 0) return;
    const auto i = static_cast<std::size_t>(CanaleScala);
    if (!Separati) NTGraph1.ScalaY(FattoreScala[i]);
    NTGraph1.ColoreAsse(ColoreCanale[i]);
    NTGraph1.EtichettaY(TitoloCanale(CanaleScala));
}

void AnalisiDati::chkTempo_Click(bool spuntato) {
    chkTempo = spuntato;
    if (spuntato) CambiaAsse(false);
}

void AnalisiDati::chkDistanza_Click(bool spuntato) {
    chkDistanza = spuntato;
    if (spuntato) CambiaAsse(true);
}

void AnalisiDati::CambiaAsse(bool distanza) {
    chkTempo = !distanza;
    chkDistanza = distanza;
    vista_.SpuntaAssi(chkTempo, chkDistanza);
    PassoSposta = distanza ? 1.0 : 0.01;
    AsseDistanza = distanza;
    CalcolaScale(NTGraph1);
    RinnovaScala();
    Ridisegna();
}

void AnalisiDati::cmdSetGraph_Click(int c, const std::function<void()>& mostra) {
    if (c < kPrimoCanale || c > kUltimoCanale) return;
    const auto i = static_cast<std::size_t>(c);
    FiltroDialogo = FiltroCanale[i];
    SpessoreDialogo = SpessoreCanale[i];
    MinDialogo = MinCanale[i];
    MaxDialogo = MaxCanale[i];
    mostra();
    FiltroCanale[i] = FiltroDialogo;
    SpessoreCanale[i] = SpessoreDialogo;
    MinCanale[i] = MinDialogo;
    MaxCanale[i] = MaxDialogo;
    if (CanaleScala == c) RinnovaScala();
    vista_.Rinfresca();
    Ridisegna();
}

}  // namespace lapvane
