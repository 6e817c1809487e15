// The commands of the tool bar.
#include <utility>

#include "analysis/AnalisiDati.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
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
    platform().MsgBox(Testo(Voce::TreCanaliAlMassimo), Buttons::Ok, Icon::Information,
                      platform().ExeName());
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

void AnalisiDati::Circuito_Click() {
    if (TracciatoVisibile) {
        TracciatoVisibile = false;
        vista_.MostraMappa(false);
        return;
    }
    if (!CaricaMappa()) {
        platform().MsgBox(Testo(Voce::TracciatoNonTrovato), Buttons::Ok, Icon::Critical,
                          platform().ExeName());
    }
}

bool AnalisiDati::CaricaMappa() {
    int righe = 0;
    auto punti = LeggiFileTracciato(DatiSessione.Circuito, &righe);
    TracciatoVisibile = punti.has_value();
    vista_.MostraMappa(TracciatoVisibile);
    if (!punti) return false;
    // Kept: lines that have no place among the points count, and a lap is spread over them as well.
    NumPuntiTracciato = righe;
    vista_.Mappa(std::move(*punti), DatiSessione.Circuito, DatiSessione.Piloti);
    vista_.MarcatoreMappa(0);
    return true;
}

bool AnalisiDati::CiSonoGiri() const {
    if (NumGiri >= 1) return true;
    platform().MsgBox(Testo(Voce::NessunGiroCompleto), Buttons::Ok, Icon::Information,
                      platform().ExeName());
    return false;
}

void AnalisiDati::RicompilaTabella() {
    for (int riga = 0; riga <= NumRigheTabella; ++riga) SvuotaTabella(riga);
    vista_.CellaCorrente(1, 1);
    LeggiSettori();
    CompilaTabellaGiri();
    if (TracciatoVisibile) CaricaMappa();  // another circuit has another map, or none
    if (NumGiri < 1) {
        SelezionaPrimoGiro();  // the table knows of no lap, and the log has its one stretch
        return;
    }
    // The lap that is drawn stays the chosen one.
    ColoraGiroSelezionato();
    EvidenziaTempi();
}

}  // namespace lapvane
