#include "analysis/dlgLettura.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr int kLarghezza = 440;

}  // namespace

dlgLettura::dlgLettura(const QString& file, QWidget* parent) : Dialogo("dlgLettura", parent) {
    setModal(true);
    lblFile_ = Etichetta(this, "lblFile");
    lblFile_->setTextFormat(Qt::PlainText);
    lblFile_->setText(file);
    lblFile_->setWordWrap(true);
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setRange(0, 100);
    ProgressBar1_->setTextVisible(false);
    ProgressBar1_->setMinimumHeight(20);
    lblPerc_ = Etichetta(this, "lblPerc");
    lblPerc_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblPerc_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("100 %")) + 8);
    cmdFerma_ = CreaPulsante("cmdFerma", [this] { reject(); });
    cmdFerma_->setAutoDefault(false);  // the Enter that chose the file may come twice

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(14);
    colonna->addWidget(lblFile_);
    auto* avanzamento = new QHBoxLayout;
    avanzamento->addWidget(ProgressBar1_, 1);
    avanzamento->addWidget(lblPerc_);
    colonna->addLayout(avanzamento);
    colonna->addLayout(RigaPulsanti(nullptr, {cmdFerma_}));
    Testi();
    setMinimumWidth(std::max(kLarghezza, minimumSizeHint().width()));
}

void dlgLettura::AggiornaTesti(Mnemonica& lettere) {
    setWindowTitle(InQt(Testo(Voce::CaricamentoDati)));
    cmdFerma_->setText(lettere.Con(InQt(Testo(Voce::FermaAllineamento))));
    ProgressBar1_->setAccessibleName(windowTitle());
}

bool dlgLettura::Avanza(int percento) {
    ProgressBar1_->setValue(percento);
    lblPerc_->setText(QString::number(percento) + QStringLiteral(" %"));
    platform().DoEvents();
    return !fermata_;
}

}  // namespace lapvane
