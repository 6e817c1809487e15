#include "logs/frmDownload.h"

#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"

namespace lapvane {

frmDownload::frmDownload(QWidget* parent) : Dialogo("frmDownload", parent) {
    setWindowTitle(InQt(Testo(Voce::ScaricaDati)));
    lblStatoDownload_ = Etichetta(this, "lblStatoDownload");
    lblStatoDownload_->setWordWrap(true);
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setRange(0, 100);
    ProgressBar1_->setTextVisible(false);
    ProgressBar1_->setMinimumHeight(20);
    lblPerc_ = Etichetta(this, "lblPerc");
    lblPerc_->setText(QStringLiteral("0 %"));
    lblPerc_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblPerc_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("100 %")) + 8);
    CreaOK([this] { accept(); })->setEnabled(false);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(14);
    colonna->addWidget(lblStatoDownload_);
    auto* avanzamento = new QHBoxLayout;
    avanzamento->addWidget(ProgressBar1_, 1);
    avanzamento->addWidget(lblPerc_);
    colonna->addLayout(avanzamento);
    colonna->addLayout(RigaPulsanti(nullptr, {OKButton_}));
    setMinimumWidth(440);
}

void frmDownload::showEvent(QShowEvent* evento) {
    QDialog::showEvent(evento);
    if (avviato_) return;
    avviato_ = true;
    QTimer::singleShot(0, this, [this] {
        inCorso_ = true;
        Protetto([this] { Scarico(*this).Esegui(); });
        inCorso_ = false;
        collegamento().Abbandonato = false;
        FaseComunicazione = 0;
        platform().MousePointer(Pointer::Normal);
    });
}

void frmDownload::done(int esito) {
    // While the download still unwinds, the poll stays off the port: the routine frees it itself.
    if (inCorso_) {
        collegamento().Abbandonato = true;
    } else {
        FaseComunicazione = 0;
    }
    QDialog::done(esito);
}

void frmDownload::Stato(const std::string& testo) {
    lblStatoDownload_->setText(InQt(testo));
}

void frmDownload::Percento(int percento) {
    ProgressBar1_->setValue(percento);
    lblPerc_->setText(QStringLiteral("%1 %").arg(percento));
}

void frmDownload::AbilitaOK(bool acceso) {
    OKButton_->setEnabled(acceso);
    if (acceso) OKButton_->setFocus();
}

}  // namespace lapvane
