// Channels, axis, window and views: the events of the window that change what the graphs show.
#include "analysis/AnalisiDati.h"
#include "platform/Platform.h"
#include "platform/PuntatoreOccupato.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr double kZoomPieno = 1.0;  // right edge below which the window is not made narrower

}  // namespace

void AnalisiDati::CalcolaScale() {
    const std::int32_t da = parti_.Giri.InizioSelezionato();
    const std::int32_t a = parti_.Giri.FineSelezionato();
    const ElencoCanali::IntervalloY y = parti_.Canali.CalcolaScale(*this, da, a);
    parti_.Finestra.ApriSulGiro(Tabella(), da, a, y.YMin, y.YMax);
    NTGraph1_.ImpostaIntervallo();
    parti_.Finestra.CalcolaPassoSposta();
}

void AnalisiDati::Ridisegna() {
    if (scheda_ == 0) NTGraph1_.Disegna();
    if (scheda_ == 1) NTGraphAll_.Disegna();
}

// --- channels and axis ---------------------------------------------------------------------------

void AnalisiDati::chkGrafico_Click(int c, bool spuntato) {
    if (!parti_.Canali.Spunta(c, spuntato)) return;
    if (!NTGraph1_.Separati()) {
        barra_.SeparatiAcceso = parti_.Canali.NumCanaliAttivi() <= kRiquadriMassimi;
        parti_.Vista.Barra(barra_);
    }
    const int scelto = spuntato ? c : parti_.Canali.PrimoSpuntato();
    if (scelto != 0) SelezionaScala(scelto);
    Ridisegna();
}

void AnalisiDati::SelezionaScala(int c) {
    // Choosing an option that is already chosen is no click. The caller redraws.
    if (parti_.Canali.CanaleScala() == c) return;
    parti_.Vista.SelezionaScala(c);
    parti_.Canali.CanaleScala(c);
    NTGraph1_.RinnovaScala();
}

void AnalisiDati::optScala_Click(int c) {
    if (c < kPrimoCanale || c > kUltimoCanale) return;
    parti_.Canali.CanaleScala(c);
    NTGraph1_.RinnovaScala();
    Ridisegna();
}

void AnalisiDati::chkTempo_Click(bool spuntato) {
    if (parti_.Finestra.chkTempo_Click(spuntato)) CambiaAsse();
}

void AnalisiDati::chkDistanza_Click(bool spuntato) {
    if (parti_.Finestra.chkDistanza_Click(spuntato)) CambiaAsse();
}

void AnalisiDati::CambiaAsse() {
    parti_.Vista.SpuntaAssi(parti_.Finestra.chkTempo(), parti_.Finestra.chkDistanza());
    CalcolaScale();
    NTGraph1_.RinnovaScala();
    Ridisegna();
}

void AnalisiDati::cmdSetGraph_Click(int c, const std::function<void(ImpostazioniCanale&)>& mostra) {
    if (c < kPrimoCanale || c > kUltimoCanale) return;
    ImpostazioniCanale valori = parti_.Canali.Impostazioni(c);
    valori.Separati = NTGraph1_.Separati();
    mostra(valori);
    parti_.Canali.Imposta(valori);
    parti_.Vista.NomeCampo(c, valori.NomeCampo);
    parti_.Vista.UnitaCampo(c, valori.UnitaCampo);
    parti_.Vista.ColoreCanale(c, valori.ColoreCanale);
    if (parti_.Canali.CanaleScala() == c) NTGraph1_.RinnovaScala();
    parti_.Vista.Rinfresca();
    Ridisegna();
}

// --- moving through a lap ------------------------------------------------------------------------

void AnalisiDati::cmdZoom_Click(double fattore, bool fuori) {
    const PuntatoreOccupato occupato;
    NTGraph1_.LeggiFinestra();
    parti_.Finestra.Zoom(fattore, fuori);
    NTGraph1_.CursoreAlMargine();
    NTGraphAll_.CursoreAlMargine();
    NTGraph1_.ImpostaIntervallo();
    parti_.Finestra.CalcolaPassoSposta();
    Ridisegna();
    NTGraphAll_.ImpostaIntervallo();
    AggiornaZoomIn();
}

void AnalisiDati::AggiornaZoomIn() {
    // Kept: the right edge of the window decides, not its width.
    if (parti_.Finestra.XMax() < kZoomPieno) {
        parti_.Vista.AbilitaZoomIn(false);
    } else if (!zoomAttivo_) {
        parti_.Vista.AbilitaZoomIn(true);
    }
}

void AnalisiDati::cmdSposta_Click(int passi) {
    FinestraX& finestra = parti_.Finestra;
    const bool unoAvanti = passi == 1;
    if (!unoAvanti || LeggePrimaDiSpostare()) {
        finestra.LeggiX(NTGraph1_.Controllo().LeggiIntervallo());
    }
    finestra.Sposta(passi * finestra.PassoSposta());
    NTGraph1_.CursoreAlMargine();
    NTGraphAll_.CursoreAlMargine();
    NTGraph1_.ImpostaIntervallo();
    finestra.CalcolaPassoSposta();
    if (!unoAvanti) Ridisegna();
    NTGraphAll_.ImpostaIntervallo();
    if (unoAvanti) Ridisegna();
    const std::int32_t indice = cursore_.IndiceCursore(NTGraph1_);
    EventoCursore(Grafico::Canali, indice);
    EventoCursore(Grafico::Allarmi, indice);
    platform().DoEvents();
}

bool AnalisiDati::ScorrimentoAttivo() const {
    return scorriCanali_.ScorrimentoAttivo() || scorriAllarmi_.ScorrimentoAttivo();
}

void AnalisiDati::cmdScorri_Click(Verso verso) {
    if (scheda_ != 0 && scheda_ != 1) return;
    if (!ScorrimentoAttivo()) {
        (scheda_ == 0 ? scorriCanali_ : scorriAllarmi_).Avvia(verso);
        return;
    }
    for (Scorrimento* const scorri : {&scorriCanali_, &scorriAllarmi_}) {
        if (scorri->ScorrimentoAttivo()) scorri->Ferma();
    }
}

void AnalisiDati::SSTab1_Click(int scheda) {
    scheda_ = scheda;
    if (scheda == 1) {
        parti_.Finestra.LeggiX(NTGraph1_.Controllo().LeggiIntervallo());
        NTGraphAll_.ImpostaIntervallo();
    }
    parti_.Finestra.CalcolaPassoSposta();
    Ridisegna();
    // The boxes hold what was under the overview's cursor, and here another one is seen.
    GraphControl& grafico = NTGraph1_.Controllo();
    if (scheda == 0) EventoCursore(Grafico::Canali, grafico.IndiceDaX(grafico.CursoreX(), 1.0));
    ultimaScheda_ = scheda;
}

void AnalisiDati::EventoCursore(Grafico grafico, std::int32_t indice) {
    cursore_.EventoCursore(grafico, indice);
}

void AnalisiDati::EventoZoom() {
    NTGraph1_.LeggiFinestra();
    parti_.Finestra.CalcolaPassoSposta();
    Ridisegna();
    NTGraphAll_.ImpostaIntervallo();
    AggiornaZoomIn();
}

void AnalisiDati::DimOriginali_Click() {
    CalcolaScale();
    NTGraphAll_.ImpostaIntervallo();
    NTGraph1_.RinnovaScala();
    Ridisegna();
}

// --- views ---------------------------------------------------------------------------------------

void AnalisiDati::Sovrapposti_Click() {
    NTGraph1_.Separati(false);
    barra_.SovrappostiPremuto = true;
    barra_.SeparatiPremuto = false;
    barra_.ZoomPremuto = zoomAttivo_;
    parti_.Vista.Barra(barra_);
    VistaSovrapposti();
}

void AnalisiDati::VistaSovrapposti() {
    barra_.ZoomAcceso = true;
    barra_.SeparatiAcceso = parti_.Canali.NumCanaliAttivi() <= kRiquadriMassimi;
    parti_.Vista.Barra(barra_);
    NTGraph1_.RinnovaScala();
    NTGraph1_.ImpostaIntervallo();
    parti_.Finestra.CalcolaPassoSposta();
    NTGraph1_.Disegna();
}

void AnalisiDati::Separati_Click() {
    NTGraph1_.Separati(true);
    barra_.SovrappostiPremuto = false;
    barra_.SeparatiPremuto = true;
    parti_.Vista.Barra(barra_);
    VistaSeparati();
}

void AnalisiDati::VistaSeparati() {
    barra_.ZoomAcceso = false;
    barra_.ZoomPremuto = false;
    zoomAttivo_ = false;
    parti_.Vista.Barra(barra_);
    AggiornaZoomIn();
    ApplicaZoom(false);
    if (NTGraph1_.SiDisegna()) NTGraph1_.Controllo().ScalaY(1.0);
    NTGraph1_.Disegna();
}

void AnalisiDati::SetZoom_Click() {
    zoomAttivo_ = !zoomAttivo_;
    barra_.ZoomPremuto = zoomAttivo_;
    parti_.Vista.Barra(barra_);
    parti_.Vista.AbilitaZoomIn(!zoomAttivo_);
    ApplicaZoom(true);
}

void AnalisiDati::ApplicaZoom(bool ridisegna) {
    NTGraph1_.Controllo().ImpostaModoMouse(zoomAttivo_ ? ModoMouse::Zoom : ModoMouse::Cursore);
    if (!zoomAttivo_ && ridisegna) Ridisegna();
}

void AnalisiDati::Circuito_Click() {
    if (mappa_.TracciatoVisibile()) {
        mappa_.Nascondi();
    } else if (!mappa_.Carica()) {
        platform().MsgBox(Testo(Voce::TracciatoNonTrovato), Buttons::Ok, Icon::Critical,
                          platform().ExeName());
    }
}

}  // namespace lapvane
