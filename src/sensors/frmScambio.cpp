#include "sensors/frmScambio.h"

#include <QGridLayout>
#include <utility>

#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"

namespace lapvane {

frmScambio::frmScambio(const char* nome, QWidget* parent)
    : Dialogo(nome, parent), nome_(nome), corpo_(new QWidget(this)), avvisi_(new RigaAvvisi(this)) {
    ImpostaFormAttiva(this);
}

frmScambio::~frmScambio() {
    if (FormAttiva == this) ImpostaFormAttiva(nullptr);
}

void frmScambio::done(int esito) {
    // While an exchange still unwinds, the poll stays off the port: the exchange frees it itself.
    if (inCorso_) collegamento().Abbandonato = true;
    // Kept: a window that opened this one is not known to the poll any more.
    if (FormAttiva == this) ImpostaFormAttiva(nullptr);
    QDialog::done(esito);
}

void frmScambio::Comandato(const QObject* chi, std::function<void()> azione) {
    Protetto([&] {
        QuandoLibero(chi, this, [this, azione = std::move(azione)] {
            if (isVisible() && !inCorso_) azione();
        });
    });
}

QWidget* frmScambio::CreaProgresso() {
    auto* posto = new QWidget(this);
    auto* griglia = new QGridLayout(posto);
    griglia->setContentsMargins(0, 0, 0, 0);
    lblProgresso_ = Etichetta(this, "lblProgresso");
    lblProgresso_->setTextFormat(Qt::PlainText);
    lblProgresso_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    griglia->addWidget(avvisi_, 0, 0);
    griglia->addWidget(lblProgresso_, 0, 0);
    return posto;
}

void frmScambio::Progresso(const std::string& testo) {
    if (lblProgresso_ == nullptr) return;
    avvisi_->setVisible(testo.empty());
    lblProgresso_->setText(InQt(testo));
    principale().TestoPannello(Pannello::Progresso, testo);
}

frmScambio::Esito frmScambio::Passo(const std::function<void()>& scambio) {
    const bool pronto = LinkPronto();
    if (!isVisible()) return Esito::Chiusa;
    if (!pronto) {
        ErroreComunicazione = true;
        return Esito::SenzaLink;
    }
    platform().MousePointer(Pointer::Busy);  // the check of the link has put it back
    scambio();
    if (!isVisible()) return Esito::Chiusa;
    return ErroreComunicazione ? Esito::Fallito : Esito::Fatto;
}

frmScambio::InCorso::InCorso(frmScambio& finestra, std::vector<QWidget*> spenti, std::int16_t fase,
                             Voce stato, bool conStrumento)
    : finestra_(finestra),
      spenti_(std::move(spenti)),
      fuoco_(finestra.focusWidget()),
      conStrumento_(conStrumento) {
    finestra_.inCorso_ = true;
    // Neither the disabled controls nor the one button left get the keys of an impatient hand.
    for (QWidget* controllo : spenti_) controllo->setEnabled(false);
    finestra_.setFocus();
    platform().MousePointer(Pointer::Busy);
    if (stato != Voce::Nessuna) finestra_.Progresso(Testo(stato));
    FaseComunicazione = fase;
}

frmScambio::InCorso::~InCorso() {
    Chiudi();
    collegamento().Abbandonato = false;
    FaseComunicazione = 0;
}

void frmScambio::InCorso::Chiudi() {
    if (!finestra_.inCorso_) return;
    finestra_.inCorso_ = false;
    finestra_.Progresso("");
    platform().MousePointer(Pointer::Normal);
    for (QWidget* controllo : spenti_) controllo->setEnabled(true);
    if (conStrumento_) finestra_.AbilitaStrumento(StrumentoPresente);
    if (fuoco_ != nullptr && finestra_.isVisible()) fuoco_->setFocus();
}

}  // namespace lapvane
