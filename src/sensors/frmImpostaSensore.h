#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <array>
#include <functional>
#include <string>

#include "sensors/ImpostaSensore.h"
#include "sensors/TabellaPunti.h"
#include "sensors/frmScambio.h"
#include "widgets/CasellaNumerica.h"
#include "widgets/GraficoWidget.h"

namespace lapvane {

/// The editor of the sensor library: a type, its sensors, a table of points with its curve. Points
/// come from a sensor of the library, from typing, from the instrument or from a calibration.
class frmImpostaSensore : public frmScambio {
    Q_OBJECT
 public:
    explicit frmImpostaSensore(QWidget* parent = nullptr);

    void AbilitaStrumento(bool presente) override;

    void done(int esito) override;

 private:
    QPushButton* Pulsante(QWidget* dove, const char* nome, void (frmImpostaSensore::*gestore)());
    QComboBox* Lista(QWidget* dove, const char* nome, void (frmImpostaSensore::*gestore)());
    QGroupBox* CreaLibreria();
    QGroupBox* CreaStrumento();
    QGroupBox* CreaTabella();
    QLayout* CreaSalvataggio();
    void CreaRiga(std::size_t i);
    void AggiornaTesti(Mnemonica& lettere) override;

    void RiempiTipiSensore();
    void Form_Load();
    void Opzione_Click();
    void cboListaSensori_Click();
    void cboTipiSensore_Click();
    void cmdNuovoSensore_Click();
    void cmdDisegnaCurva_Click();
    void cmdSalvaSensore_Click();
    void cmdLeggiSensoreStrumento_Click();
    void cmdCalibrazione_Click();
    void Check1_Click(int i);
    void txtX_LostFocus(int i);
    void txtY_LostFocus(int i);

    const TipoSensore& Tipo() const;
    void Titolo(const std::string& sensore);
    void Mostra();
    void Svuota();
    bool Lascia();
    void AvvisaCrescente();
    void MostraAvviso();

    TabellaPunti tabella_;
    std::string TipoCorrente_;
    std::string titolo_;          // of a sensor loaded or new; empty: the window's own
    std::size_t rigaAvviso_ = 0;  // row that the rising rule has refused
    bool avviso_ = false;

    QGroupBox* fraLibreriaSensori_ = nullptr;
    QGroupBox* fraTabella_ = nullptr;
    QGroupBox* fraStrumento_ = nullptr;
    std::array<QRadioButton*, kTipiSensore.size()> opzioni_{};
    QLabel* lblSelezionaSensore_ = nullptr;
    QComboBox* cboListaSensori_ = nullptr;
    QPushButton* cmdNuovoSensore_ = nullptr;
    QLabel* lblTipoSensore_ = nullptr;
    QComboBox* cboTipiSensore_ = nullptr;
    QPushButton* cmdLeggiSensoreStrumento_ = nullptr;
    QPushButton* cmdCalibrazione_ = nullptr;
    QLabel* lblX_ = nullptr;
    QLabel* lblY_ = nullptr;
    std::array<QCheckBox*, TabellaPunti::kRighe> Check1_{};
    std::array<CasellaNumerica*, TabellaPunti::kRighe> txtX_{};
    std::array<CasellaNumerica*, TabellaPunti::kRighe> txtY_{};
    QPushButton* cmdDisegnaCurva_ = nullptr;
    GraficoWidget* GraficoSensore_ = nullptr;
    QLabel* lblNomeNuovo_ = nullptr;
    QLineEdit* txtNomeNuovo_ = nullptr;
    QPushButton* cmdSalvaSensore_ = nullptr;
};

}  // namespace lapvane
