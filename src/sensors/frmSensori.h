#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QTabWidget>
#include <array>
#include <vector>

#include "sensors/SensoriEditor.h"
#include "sensors/frmEditor.h"
#include "widgets/CasellaNumerica.h"

class QGridLayout;

namespace lapvane {

/// The editor of the sensor assignment: which channels are on, with which sensor of the library,
/// how often they are sampled, on which analogue input the optional ones sit.
class frmSensori : public frmEditor {
    Q_OBJECT
 public:
    explicit frmSensori(QWidget* parent = nullptr);

    void done(int esito) override;

 private:
    struct Didascalia {
        QLabel* Etichetta = nullptr;
        Voce Numero = Voce::Nessuna;
    };
    struct Cornice {
        QGroupBox* Riquadro = nullptr;
        Voce Titolo = Voce::Nessuna;
    };

    void TestiPropri(Mnemonica& lettere) override;
    void OKButton_Click() override;
    void cmdInviaDati_Click() override;
    void cmdLeggiDati_Click() override;

    QWidget* CreaBase();
    QWidget* CreaOpzionali();
    QGridLayout* CreaCornice(QWidget* dove, std::string_view nome, Voce titolo);
    QComboBox* CreaLista(QWidget* dove, std::string_view nome);
    void AggiungiRiga(QGridLayout* griglia, int riga, std::string_view etichetta, Voce didascalia,
                      QWidget* campo);
    void AggiungiNumero(QGridLayout* griglia, int riga, std::size_t numero);
    void AggiungiFrequenza(QGridLayout* griglia, int riga, std::string_view etichetta,
                           std::string_view lista);
    QWidget* CreaGiri(QWidget* dove);
    QWidget* CreaVelocita(QWidget* dove);
    QWidget* CreaLivello(QWidget* dove, std::size_t numero);
    QWidget* CreaCanale(QWidget* dove, std::size_t numero);

    void Vai(QWidget* controllo) override;
    void Stringi() override;
    void DiceInsieme();
    bool ValidaSensori();
    bool ValidaCanali();
    bool NumeriValidi(bool ancheVuoti);
    void Concludi(bool riuscito, Voce fine, const std::string& titolo, Voce interrotta);

    ControlliEditor* campi_ = nullptr;  // owned by the base
    QTabWidget* SSTab1_ = nullptr;
    std::vector<Cornice> cornici_;
    std::vector<Didascalia> didascalie_;
    std::array<CasellaNumerica*, 3> caselle_{};
    std::array<QCheckBox*, 9> spunte_{};
    std::array<QComboBox*, 9> nomi_{};
    std::array<QComboBox*, 9> ingressi_{};
};

}  // namespace lapvane
