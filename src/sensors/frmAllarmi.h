#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <array>

#include "sensors/Allarmi.h"
#include "sensors/frmEditor.h"
#include "widgets/CasellaNumerica.h"

namespace lapvane {

/// The editor of what the instrument signals to the driver: alarm thresholds, shift light, coloured
/// LEDs, digital input and output.
class frmAllarmi : public frmEditor {
    Q_OBJECT
 public:
    explicit frmAllarmi(QWidget* parent = nullptr);

 private:
    /// A list behind a check box: the three LEDs, the input, the output.
    struct Funzione {
        QCheckBox* Spunta = nullptr;
        QComboBox* Lista = nullptr;
    };

    void TestiPropri(Mnemonica& lettere) override;
    void OKButton_Click() override;
    void cmdInviaDati_Click() override;
    void cmdLeggiDati_Click() override;

    static QCheckBox* Spunta(QWidget* dove, std::string_view nome);
    static void Lega(QCheckBox* spunta, QWidget* campo);
    Funzione& CreaFunzione(QWidget* dove, std::size_t numero);
    QGroupBox* CreaAllarmi();
    QGroupBox* CreaLed();
    QGroupBox* CreaLinee();
    QGroupBox* CreaShiftLight();
    QLabel* Unita(UnitaSoglia unita);

    bool NumeriValidi();

    std::array<QCheckBox*, 6> spunte_{};
    std::array<CasellaNumerica*, 6> soglie_{};
    std::array<CasellaNumerica*, 5> txtLed_{};
    std::array<QLabel*, 5> lblLedShift_{};
    std::array<QLabel*, 2> lblTemp_{};
    std::array<QLabel*, 2> lblPress_{};
    std::array<Funzione, kFunzioniAllarme.size()> funzioni_;
    QLabel* lblLed_ = nullptr;
    QGroupBox* fraAllarmi_ = nullptr;
    QGroupBox* fraLed_ = nullptr;
    QGroupBox* fraShiftLight_ = nullptr;
};

}  // namespace lapvane
