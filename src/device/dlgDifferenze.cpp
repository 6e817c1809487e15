#include "device/dlgDifferenze.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/StatoShell.h"
#include "widgets/MenuUscita.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr int kRigheMinime = 6;
constexpr int kRigheVisibili = 16;
constexpr int kLarghezzaMinima = 760;
constexpr QSize kMisuraMassima(1100, 700);  // with lines of kLinea pixels
constexpr double kLinea = 18.0;

/// The name that is proposed for the table: beside the project, and named after it.
std::filesystem::path NomeProposto() {
    if (PercorsoProgetto.empty()) return platform().AppPath() / "differences.csv";
    return NomeAccanto(PercorsoProgetto, "-differences.csv");
}

}  // namespace

dlgDifferenze::dlgDifferenze(const std::vector<Differenza>& differenze, QWidget* parent)
    : Dialogo("dlgDifferenze", parent) {
    lblEsito_ = Etichetta(this, "lblEsito");
    lblEsito_->setFont(Carattere(*this, Scrittura::Titolo));
    tabella_ = new TabellaDifferenze(this);
    tabella_->NomeCsv(NomeProposto(), ".csv");
    cmdCopia_ =
        CreaPulsante("cmdCopia", [this] { CopiaTesto(ConTabulazioni(tabella_->Contenuto())); });
    cmdCsv_ =
        CreaPulsante("cmdCsv", [this] { SalvaTabella(tabella_->Contenuto(), NomeProposto()); });
    CreaCancel()->setDefault(true);
    Testi();
    tabella_->Mostra(differenze);
    const bool uguali = differenze.empty();
    lblEsito_->setText(uguali ? InQt(Testo(Voce::NessunaDifferenza))
                              : InQt(Testo(Voce::NumeroDifferenze) + " " +
                                     TestoNumero(static_cast<int>(differenze.size()))));
    tabella_->setVisible(!uguali);
    cmdCopia_->setVisible(!uguali);
    cmdCsv_->setVisible(!uguali);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(kMargineDialogo, kMargineDialogo, kMargineDialogo, kMargineDialogo);
    colonna->setSpacing(kMargineCornice);
    colonna->addWidget(lblEsito_);
    colonna->addWidget(tabella_, 1);
    auto* riga = new QHBoxLayout;
    riga->addWidget(cmdCopia_);
    riga->addWidget(cmdCsv_);
    riga->addStretch(1);
    riga->addWidget(CancelButton_);
    colonna->addLayout(riga);
    CancelButton_->setFocus();
    if (uguali) return;
    const int righe = static_cast<int>(differenze.size());
    tabella_->setMinimumHeight(tabella_->AltezzaPer(std::min(righe, kRigheMinime)));
    const QMargins bordi = colonna->contentsMargins();
    const int larghezza =
        std::max(tabella_->LarghezzaPerTesti() + bordi.left() + bordi.right(), kLarghezzaMinima);
    const int altezza = minimumSizeHint().height() - tabella_->minimumHeight() +
                        tabella_->AltezzaPer(std::min(righe, kRigheVisibili));
    const QSize massima = kMisuraMassima * std::max(1.0, fontMetrics().height() / kLinea);
    resize(NelloSchermo(*this, QSize(larghezza, altezza).boundedTo(massima)));
}

void dlgDifferenze::AggiornaTesti(Mnemonica& lettere) {
    setWindowTitle(InQt(Testo(Voce::TitoloDifferenze)));
    tabella_->setAccessibleName(windowTitle());
    tabella_->Lati(InQt(Testo(Voce::MenuProgetto)), InQt(Testo(Voce::MenuStrumento)));
    cmdCopia_->setText(lettere.Con(InQt(Testo(Voce::CopiaTabella))));
    cmdCsv_->setText(lettere.Con(InQt(Testo(Voce::SalvaTabellaCsv))));
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Chiudi))));
}

}  // namespace lapvane
