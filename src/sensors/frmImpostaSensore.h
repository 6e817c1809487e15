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
#include <optional>
#include <string>

#include "sensors/DisegnoCurva.h"
#include "sensors/ImpostaSensore.h"
#include "sensors/TabellaPunti.h"
#include "sensors/frmScambio.h"
#include "widgets/CasellaNumerica.h"

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
    QLayout* CreaGrafico();
    QLayout* CreaSalvataggio();
    void CreaRiga(std::size_t i);
    CasellaNumerica* CreaCasella(const char* nome, int n,
                                 void (TabellaPunti::*scrive)(int, std::string_view));
    void AggiornaTesti(Mnemonica& lettere) override;
    void Stringi() override;

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
    bool Cala() const;
    LimitiNumero LimitiX(int i) const;
    LimitiNumero LimitiY() const;
    void DisegnaLibreria();
    void DiceCurva();
    void Sposta(int i, const QPointF& dove);
    void AvvisaCrescente();
    void MostraAvviso();

    TabellaPunti tabella_;
    std::string TipoCorrente_;
    std::string titolo_;          // of a sensor loaded or new; empty: the window's own
    std::size_t rigaAvviso_ = 0;  // row that the rising rule has refused
    bool avviso_ = false;
    const QWidget* riscritta_ = nullptr;  // the box that was just put in order

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
    DisegnoCurva* GraficoSensore_ = nullptr;
    QLabel* lblAsseX_ = nullptr;
    QLabel* lblAsseY_ = nullptr;
    QLabel* lblCurva_ = nullptr;
    std::optional<CSensore> daLibreria_;  // the sensor that the table began with
    QLabel* lblNomeNuovo_ = nullptr;
    QLineEdit* txtNomeNuovo_ = nullptr;
    QPushButton* cmdSalvaSensore_ = nullptr;
};

}  // namespace lapvane
