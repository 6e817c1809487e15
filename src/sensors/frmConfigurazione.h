#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <array>

#include "sensors/Configurazione.h"
#include "sensors/frmEditor.h"
#include "widgets/ImmaginePagina.h"
#include "widgets/StrisciaPagine.h"

namespace lapvane {

/// The editor of the instrument's general settings: display, units, pages, recording, lap timer.
class frmConfigurazione : public frmEditor {
    Q_OBJECT
 public:
    explicit frmConfigurazione(QWidget* parent = nullptr);

 private:
    friend class ControlliSetup;

    void TestiPropri(Mnemonica& lettere) override;
    void OKButton_Click() override;
    void cmdInviaDati_Click() override;
    void cmdLeggiDati_Click() override;

    void Stringi() override;
    QLineEdit* Casella(QWidget* dove, std::size_t numero);
    QComboBox* Lista(QWidget* dove, std::size_t numero);
    QLayout* CreaLingua();
    QGroupBox* CreaUnita();
    QGroupBox* CreaRegistrazione();
    QGroupBox* CreaPagine();
    QGroupBox* CreaCronometro();

    void CaricaImmagini();
    void AggiornaPagina();
    QImage Immagine(int pagina) const;
    void MostraImmagine();
    void AggiornaStriscia();
    void VaiA(bool avanti);
    void VaiAllaPagina(int pagina);
    void chkAbilitaPagina_Click();
    void cmdScegliImmagine_Click();

    PagineSetup pagine_;
    std::array<QImage, PagineSetup::kImmagini> ImageList1_;

    std::array<QComboBox*, 4> liste_{};
    std::array<QLabel*, 4> etichetteListe_{};
    std::array<QLineEdit*, 9> caselle_{};
    std::array<QLabel*, 9> etichetteCaselle_{};
    QGroupBox* fraUnitaMisura_ = nullptr;
    QGroupBox* fraRegistrazione_ = nullptr;
    QCheckBox* chkAbilRecLAP_ = nullptr;
    QLabel* lblUnitaRecVel_ = nullptr;
    QGroupBox* fraPagine_ = nullptr;
    StrisciaPagine* striscia_ = nullptr;
    ImmaginePagina* imgPagina_ = nullptr;
    QLabel* lblPagina_ = nullptr;
    QLabel* lblCurrPagina_ = nullptr;
    QPushButton* cmdPrevPage_ = nullptr;
    QPushButton* cmdNextPage_ = nullptr;
    QCheckBox* chkAbilitaPagina_ = nullptr;
    QLineEdit* txtFilePagina_ = nullptr;
    QPushButton* cmdScegliImmagine_ = nullptr;
    QGroupBox* fraCronometro_ = nullptr;
};

}  // namespace lapvane
