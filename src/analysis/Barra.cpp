// The commands of the tool bar.
#include "analysis/AnalisiDati.h"
#include "shell/LoadStrings.h"

namespace lapvane {

void AnalisiDati::Sovrapposti_Click() {
    Separati = false;
    barra_.SovrappostiPremuto = true;
    barra_.SeparatiPremuto = false;
    barra_.ZoomPremuto = ZoomAttivo;
    vista_.Barra(barra_);
    VistaSovrapposti();
}

void AnalisiDati::VistaSovrapposti() {
    barra_.ZoomAcceso = true;
    barra_.SeparatiAcceso = NumCanaliAttivi <= kRiquadriMassimi;
    vista_.Barra(barra_);
    RinnovaScala();
    NTGraph1.ImpostaIntervallo(XMin, XMax, YMin, YMax, 0);
    CalcolaPassoSposta();
    DisegnaCanali(NTGraph1);
}

void AnalisiDati::Separati_Click() {
    Separati = true;
    barra_.SovrappostiPremuto = false;
    barra_.SeparatiPremuto = true;
    vista_.Barra(barra_);
    VistaSeparati();
}

void AnalisiDati::VistaSeparati() {
    barra_.ZoomAcceso = false;
    barra_.ZoomPremuto = false;
    ZoomAttivo = false;
    vista_.Barra(barra_);
    AggiornaZoomIn();
    ApplicaZoom(false);
    if (NumCanaliAttivi > kRiquadriMassimi) {
        TroppiRiquadri();
        return;
    }
    NTGraph1.ScalaY(1.0);
    DisegnaCanali(NTGraph1);
}

void AnalisiDati::TroppiRiquadri() {
    platform().MsgBox(Testo(145), Buttons::Ok, Icon::Information, platform().ExeName());
}

void AnalisiDati::SetZoom_Click() {
    ZoomAttivo = !ZoomAttivo;
    barra_.ZoomPremuto = ZoomAttivo;
    vista_.Barra(barra_);
    vista_.AbilitaZoomIn(!ZoomAttivo);
    ApplicaZoom(true);
}

void AnalisiDati::ApplicaZoom(bool ridisegna) {
    NTGraph1.ImpostaModoMouse(ZoomAttivo ? ModoMouse::Zoom : ModoMouse::Cursore);
    if (!ZoomAttivo && ridisegna) Ridisegna();
}

bool AnalisiDati::CiSonoGiri() const {
    if (NumGiri >= 1) return true;
    platform().MsgBox(Testo(302), Buttons::Ok, Icon::Information, platform().ExeName());
    return false;
}

void AnalisiDati::RicompilaTabella() {
    for (int riga = 0; riga <= NumRigheTabella; ++riga) SvuotaTabella(riga);
    vista_.CellaCorrente(1, 1);
    LeggiSettori();
    CompilaTabellaGiri();
    if (NumGiri < 1) return;
    // The lap that is drawn stays the chosen one.
    ColoraGiroSelezionato();
    EvidenziaTempi();
}

}  // namespace lapvane
