#include "shell/dlgLanguages.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/ErroreRuntime.h"
#include "platform/qt/TestoQt.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"

namespace lapvane {

dlgLanguages::dlgLanguages(QWidget* parent) : Dialogo("dlgLanguages", parent) {
    optItaliano_ = new QRadioButton(QStringLiteral("&Italiano"), this);
    optItaliano_->setObjectName(QStringLiteral("optItaliano"));
    optInglese_ = new QRadioButton(QStringLiteral("&English"), this);
    optInglese_->setObjectName(QStringLiteral("optInglese"));
    // An index that is neither leaves both unselected.
    optItaliano_->setChecked(IndiceLingua == 0);
    optInglese_->setChecked(IndiceLingua == 1);
    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(24, 20, 24, 16);
    colonna->setSpacing(12);
    colonna->addWidget(optItaliano_);
    colonna->addWidget(optInglese_);
    colonna->addSpacing(8);
    colonna->addLayout(CreaPulsanti(nullptr, [this] {
        try {
            SalvaLingua();
        } catch (const ErroreRuntime& errore) {
            SegnalaScrittura(errore, Voce::LinguaNonSalvata);
        }
        accept();
    }));
    setMinimumWidth(300);

    // Kept: the click itself chooses the language, so that a Cancel behind it leaves the choice
    // standing for the rest of the run; only OK saves it.
    connect(optItaliano_, &QRadioButton::clicked, this, [] { IndiceLingua = 0; });
    connect(optInglese_, &QRadioButton::clicked, this, [] { IndiceLingua = 1; });
    Testi();
}

void dlgLanguages::AggiornaTesti(Mnemonica&) {
    setWindowTitle(InQt(Testo(Voce::Lingua)));
    CancelButton_->setText(InQt(Testo(Voce::Annulla)));
}

}  // namespace lapvane
