#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "device/TabelleRecord.h"
#include "sensors/frmScambio.h"
#include "shell/Voci.h"

namespace lapvane {

/// One exchange of an editor with the instrument: the operation code that keeps the poll off the
/// port, the numbers of the question's title and of the status text, the routines, 50 ms apart, and
/// the number of the closing message (0: none).
struct ScambioEditor {
    std::int16_t Fase = 0;
    Voce TitoloDomanda = Voce::Nessuna;
    Voce TestoStato = Voce::Nessuna;
    Voce TestoFine = Voce::Nessuna;
    std::vector<void (*)()> Routine;
    std::vector<const TabellaRecord*> Record = {};  ///< what is sent
};

/// What the editors of the instrument's settings share: they have OK, Cancel and the frame with the
/// buttons that need the instrument, and exchange what their controls show. One that closes in the
/// middle of an exchange says nothing, unless the window runs its own (`Scambia`).
class frmEditor : public frmScambio {
    Q_OBJECT
 public:
    void AbilitaStrumento(bool presente) override;
    ControlliEditor* Controlli() override { return controlli_.get(); }

 protected:
    frmEditor(const char* nome, QWidget* parent);

    /// The frame with the two instrument buttons.
    QGroupBox* CreaStrumento();
    /// The last step of a constructor: OK and Cancel behind all other controls, texts, states.
    void Completa(std::unique_ptr<ControlliEditor> controlli);

    virtual void OKButton_Click() = 0;
    virtual void cmdInviaDati_Click() = 0;
    virtual void cmdLeggiDati_Click() = 0;

    /// Asks before the instrument (`corpo` 147) or the window (232) is written over.
    static bool Conferma(Voce titolo, Voce corpo);
    /// An exchange that the window runs itself: the changes of state that all exchanges share stand
    /// around `corso`; `fine` tells how it went, before the poll gets the port back.
    void Scambia(const ScambioEditor& scambio, const std::function<void()>& corso,
                 const std::function<void()>& fine);
    /// Whether the records can be sent as they stand; if not, the focus goes where the reason is.
    bool PuoInviare(const ScambioEditor& scambio);
    /// Brings a control into view and gives it the focus.
    virtual void Vai(QWidget* controllo) { controllo->setFocus(); }
    /// The same with a box's whole text selected.
    void VaiAllaCasella(QLineEdit& casella);
    /// The line beside the buttons watches a box for the numbers that its field of the record
    /// carries, `massimo` at most.
    void Sorveglia(QLineEdit* casella, std::optional<double> massimo = {});
    void Programma(const ScambioEditor& scambio);
    void Leggi(const ScambioEditor& scambio);

    void AggiornaTesti(Mnemonica& lettere) final;
    void Stringi() override;
    /// The texts of what the window adds to buttons and frame.
    virtual void TestiPropri(Mnemonica& lettere) = 0;

 private:
    bool Esegui(const ScambioEditor& scambio);

    std::unique_ptr<ControlliEditor> controlli_;
    QGroupBox* fraStrumento_ = nullptr;
    QPushButton* cmdInviaDati_ = nullptr;
    QPushButton* cmdLeggiDati_ = nullptr;
};

}  // namespace lapvane
