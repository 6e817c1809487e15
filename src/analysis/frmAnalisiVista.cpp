// What the analysis asks of its window.
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "analysis/frmAnalisi.h"
#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Mnemonica.h"

namespace lapvane {

void frmAnalisi::MostraCanale(int c, bool visibile) {
    if (RigaCanale* const riga = Riga(c)) riga->Mostra(visibile);
}

void frmAnalisi::NomeCampo(int c, const std::string& nome) {
    if (RigaCanale* const riga = Riga(c)) riga->Nome(InQt(nome));
}

void frmAnalisi::UnitaCampo(int c, const std::string& unita) {
    if (RigaCanale* const riga = Riga(c)) riga->Unita(InQt(unita));
}

void frmAnalisi::ColoreCanale(int c, Colore colore) {
    if (RigaCanale* const riga = Riga(c)) riga->ImpostaColore(colore);
}

void frmAnalisi::SegnaCanale(int c, bool spuntato) {
    if (c < kPrimoCanale) return;
    if (RigaCanale* const riga = Riga(c)) riga->Segna(spuntato);
}

void frmAnalisi::Valore(int c, const std::string& testo) {
    if (RigaCanale* const riga = Riga(c)) riga->txtValore->setText(InQt(testo));
}

void frmAnalisi::SelezionaScala(int c) {
    // The analysis runs the click itself; `clicked` comes from a person only.
    if (c < kPrimoCanale) return;
    if (RigaCanale* const riga = Riga(c)) riga->optScala->setChecked(true);
}

void frmAnalisi::SelezionaScheda(int scheda) {
    // `currentChanged` is told as a click of the person only.
    const QSignalBlocker muto(SSTab1_);
    SSTab1_->setCurrentIndex(scheda);
}

void frmAnalisi::TestoScheda(int scheda, const std::string& testo) {
    if (scheda < SSTab1_->count()) SSTab1_->setTabText(scheda, Mnemonica::Senza(InQt(testo)));
}

void frmAnalisi::MostraControlli(bool visibile) {
    fraMisure_->setVisible(visibile);
    SSTab1_->setVisible(visibile);
    navigazione_->setVisible(visibile);
}

void frmAnalisi::SpuntaAssi(bool tempo, bool distanza) {
    Riga(kColonnaTempo)->chkGrafico->setChecked(tempo);
    Riga(kColonnaDistanza)->chkGrafico->setChecked(distanza);
}

void frmAnalisi::AbilitaZoomIn(bool acceso) {
    navigazione_->AbilitaZoomIn(acceso);
}

void frmAnalisi::Scorri(const StatoScorri& sinistra, const StatoScorri& destra) {
    navigazione_->Scorri(sinistra.Acceso, sinistra.Verde, destra.Acceso, destra.Verde);
}

void frmAnalisi::Lampada(int k, bool accesa) {
    fraLegendaAllarmi_->Lampada(k, accesa);
}

void frmAnalisi::Barra(const StatoBarra& stato) {
    const auto imposta = [this](const char* chiave, bool premuto, bool acceso) {
        QToolButton* const pulsante = chiavi_.at(chiave);
        pulsante->setChecked(premuto);
        pulsante->setEnabled(acceso);
    };
    imposta("Sovrapposti", stato.SovrappostiPremuto, true);
    imposta("Separati", stato.SeparatiPremuto, stato.SeparatiAcceso);
    imposta("SetZoom", stato.ZoomPremuto, stato.ZoomAcceso);
}

void frmAnalisi::Rinfresca() {
    repaint();
}

void frmAnalisi::MostraMappa(bool visibile) {
    mappa_->setVisible(visibile);
    sinistra_->refresh();  // the bar between both comes and goes with it
    AdattaMisure();
}

void frmAnalisi::Mappa(std::vector<PuntoTracciato> punti, const std::string& circuito,
                       const std::string& piloti) {
    Picture1_->ImpostaPunti(std::move(punti));
    txtCircuito_->setText(InQt(circuito));
    txtPiloti_->setText(InQt(piloti));
    AdattaMappa();
}

void frmAnalisi::MarcatoreMappa(int punto) {
    // A point that the outline does not have leaves the marker where it is.
    if (punto >= 0 && punto < std::ssize(Picture1_->Punti())) {
        Picture1_->Marcatore(punto);
    }
}

void frmAnalisi::MostraGriglia(bool visibile) {
    MSFlexGrid1_->setVisible(visibile);
}

void frmAnalisi::RigheGriglia(int righe) {
    MSFlexGrid1_->Righe(righe);
}

void frmAnalisi::LarghezzaColonna(int colonna, int twip) {
    MSFlexGrid1_->Larghezza(colonna, twip);
}

void frmAnalisi::Cella(int riga, int colonna, const std::string& testo) {
    MSFlexGrid1_->Cella(riga, colonna, testo);
}

void frmAnalisi::SfondoCella(int riga, int colonna, Colore colore) {
    MSFlexGrid1_->Modello().Sfondo(riga, colonna, colore);
}

void frmAnalisi::CaratteriCella(int riga, int colonna, Colore colore) {
    MSFlexGrid1_->Modello().Caratteri(riga, colonna, colore);
}

void frmAnalisi::CellaCorrente(int riga, int colonna) {
    MSFlexGrid1_->CellaCorrente(riga, colonna);
}

void frmAnalisi::SegnaGiro(int riga) {
    MSFlexGrid1_->Modello().SegnaGiro(riga);
}

bool frmAnalisi::Lettura(int percento) {
    constexpr std::int64_t kLunga = 400;  // ms; a full log of the instrument takes a tenth of it
    if (platform().GetTickCount() - inizioLettura_ < kLunga) return true;
    if (!lettura_) {
        lettura_ =
            std::make_unique<dlgLettura>(PercorsoInQt(NomeFileDati.filename()), parentWidget());
        lettura_->show();
    }
    return lettura_->Avanza(percento);
}

void frmAnalisi::Scarica() {
    done(QDialog::Rejected);
}

}  // namespace lapvane
