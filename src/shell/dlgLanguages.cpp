#include "shell/dlgLanguages.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/qt/TestoQt.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"

namespace lapvane {

dlgLanguages::dlgLanguages(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("dlgLanguages"));
    optItaliano_ = new QRadioButton(QStringLiteral("&Italiano"), this);
    optItaliano_->setObjectName(QStringLiteral("optItaliano"));
    optInglese_ = new QRadioButton(QStringLiteral("&English"), this);
    optInglese_->setObjectName(QStringLiteral("optInglese"));
    // An index that is neither leaves both unselected.
    optItaliano_->setChecked(IndiceLingua == 0);
    optInglese_->setChecked(IndiceLingua == 1);
    auto* OKButton = new QPushButton(QStringLiteral("OK"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CancelButton_ = new QPushButton(this);
    CancelButton_->setObjectName(QStringLiteral("CancelButton"));

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(12);
    colonna->addWidget(optItaliano_);
    colonna->addWidget(optInglese_);
    colonna->addSpacing(8);
    auto* riga = new QHBoxLayout;
    riga->addStretch(1);
    riga->addWidget(OKButton);
    riga->addWidget(CancelButton_);
    colonna->addLayout(riga);
    setMinimumWidth(300);

    // Kept: the click itself chooses the language, so that a Cancel behind it leaves the choice
    // standing for the rest of the run; only OK saves it.
    connect(optItaliano_, &QRadioButton::clicked, this, [] { IndiceLingua = 0; });
    connect(optInglese_, &QRadioButton::clicked, this, [] { IndiceLingua = 1; });
    connect(OKButton, &QPushButton::clicked, this, [this] {
        Protetto([this] {
            try {
                SalvaLingua();
            } catch (const ErroreRuntime& errore) {
                SegnalaScrittura(errore, Voce::LinguaNonSalvata);
            }
            accept();
        });
    });
    connect(CancelButton_, &QPushButton::clicked, this, &QDialog::reject);
    AggiornaTesti();
}

void dlgLanguages::AggiornaTesti() {
    CalcolaBaseTesti();
    setWindowTitle(InQt(Testo(Voce::Lingua)));
    CancelButton_->setText(InQt(Testo(Voce::Annulla)));
}

bool dlgLanguages::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowActivate) Protetto([this] { AggiornaTesti(); });
    return QDialog::event(evento);
}

}  // namespace lapvane
