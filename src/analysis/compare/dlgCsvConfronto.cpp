#include "analysis/compare/dlgCsvConfronto.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr double kPassoMassimo = 100.0;  // m

}  // namespace

dlgCsvConfronto::dlgCsvConfronto(QWidget* parent, Voce titolo)
    : Dialogo("dlgCsvConfronto", parent), titolo_(titolo) {
    setModal(true);
    const auto lista = [this](const char* nome) {
        auto* una = new QComboBox(this);
        una->setObjectName(QLatin1String(nome));
        SenzaRotella(una);
        connect(una, &QComboBox::currentIndexChanged, this, [this] { AbilitaOK(); });
        return una;
    };
    cboDecimale_ = lista("cboDecimale");
    cboCampi_ = lista("cboCampi");
    txtPasso_ = new QDoubleSpinBox(this);
    txtPasso_->setObjectName(QStringLiteral("txtPasso"));
    txtPasso_->setRange(0.1, kPassoMassimo);
    txtPasso_->setDecimals(1);
    txtPasso_->setValue(1.0);
    lblDecimale_ = Etichetta(this, "lblDecimale", cboDecimale_);
    lblCampi_ = Etichetta(this, "lblCampi", cboCampi_);
    lblPasso_ = Etichetta(this, "lblPasso", txtPasso_);
    auto* griglia = new QFormLayout;
    griglia->addRow(lblDecimale_, cboDecimale_);
    griglia->addRow(lblCampi_, cboCampi_);
    griglia->addRow(lblPasso_, txtPasso_);
    griglia->setRowVisible(txtPasso_, titolo == Voce::SalvaCsvConfronto);
    auto* colonna = new QVBoxLayout(this);
    colonna->addLayout(griglia);
    colonna->addLayout(CreaPulsanti(nullptr, [this] { accept(); }));
    Testi();
    // What the desktop's own programs read.
    const bool virgola = platform().DecimalSeparator() == ',';
    cboDecimale_->setCurrentIndex(virgola ? 1 : 0);
    cboCampi_->setCurrentIndex(virgola ? 1 : 0);
}

void dlgCsvConfronto::AggiornaTesti(Mnemonica& lettere) {
    const auto testo = [](Voce voce) { return InQt(Testo(voce)); };
    setWindowTitle(testo(titolo_));
    lblDecimale_->setText(lettere.Con(testo(Voce::SeparatoreDecimale)));
    lblCampi_->setText(lettere.Con(testo(Voce::SeparatoreCampi)));
    lblPasso_->setText(lettere.Con(testo(Voce::PassoGriglia)));
    const auto riempi = [&](QComboBox* lista, std::initializer_list<std::pair<Voce, char>> voci) {
        const int scelto = std::max(lista->currentIndex(), 0);
        lista->clear();
        for (const auto& [voce, segno] : voci) lista->addItem(testo(voce), static_cast<int>(segno));
        lista->setCurrentIndex(scelto);
    };
    riempi(cboDecimale_, {{Voce::Punto, '.'}, {Voce::Virgola, ','}});
    riempi(cboCampi_, {{Voce::Virgola, ','}, {Voce::PuntoVirgola, ';'}, {Voce::Tabulazione, '\t'}});
    CancelButton_->setText(lettere.Con(testo(Voce::Annulla)));
}

/// A comma can't part numbers and fields at once.
void dlgCsvConfronto::AbilitaOK() {
    if (OKButton_ == nullptr) return;
    OKButton_->setEnabled(cboDecimale_->currentData() != cboCampi_->currentData());
}

void dlgCsvConfronto::Scegli(char decimale, char campi) {
    cboDecimale_->setCurrentIndex(cboDecimale_->findData(static_cast<int>(decimale)));
    cboCampi_->setCurrentIndex(cboCampi_->findData(static_cast<int>(campi)));
}

FormaCsv dlgCsvConfronto::Forma() const {
    return {static_cast<char>(cboDecimale_->currentData().toInt()),
            static_cast<char>(cboCampi_->currentData().toInt()), txtPasso_->value()};
}

}  // namespace lapvane
