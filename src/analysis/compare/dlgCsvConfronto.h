#pragma once

#include "analysis/compare/CsvConfronto.h"
#include "widgets/Dialogo.h"

class QComboBox;
class QDoubleSpinBox;

namespace lapvane {

/// Asks how numbers and fields are to stand in the file of the compared laps.
class dlgCsvConfronto : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgCsvConfronto(QWidget* parent = nullptr);

    FormaCsv Forma() const;

 private:
    void AggiornaTesti(Mnemonica& lettere) override;
    void AbilitaOK();

    QLabel* lblDecimale_ = nullptr;
    QLabel* lblCampi_ = nullptr;
    QLabel* lblPasso_ = nullptr;
    QComboBox* cboDecimale_ = nullptr;
    QComboBox* cboCampi_ = nullptr;
    QDoubleSpinBox* txtPasso_ = nullptr;
};

}  // namespace lapvane
