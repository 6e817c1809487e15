#pragma once

#include "analysis/compare/CsvConfronto.h"
#include "shell/LoadStrings.h"
#include "widgets/Dialogo.h"

class QComboBox;
class QDoubleSpinBox;

namespace lapvane {

/// Asks how numbers and fields are to stand in a file: that of the compared laps, or under a title
/// of its own one that has no grid of metres.
class dlgCsvConfronto : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgCsvConfronto(QWidget* parent = nullptr, Voce titolo = Voce::SalvaCsvConfronto);

    /// Begins with those.
    void Scegli(char decimale, char campi);
    FormaCsv Forma() const;

 private:
    void AggiornaTesti(Mnemonica& lettere) override;
    void AbilitaOK();

    Voce titolo_;
    QLabel* lblDecimale_ = nullptr;
    QLabel* lblCampi_ = nullptr;
    QLabel* lblPasso_ = nullptr;
    QComboBox* cboDecimale_ = nullptr;
    QComboBox* cboCampi_ = nullptr;
    QDoubleSpinBox* txtPasso_ = nullptr;
};

}  // namespace lapvane
