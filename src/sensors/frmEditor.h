#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/TabelleRecord.h"
#include "shell/Editor.h"
#include "shell/Voci.h"
#include "widgets/Mnemonica.h"

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

/// What the editors of the instrument's settings share: they are `FormAttiva` while they are open,
/// have OK, Cancel and the frame with the buttons that need the instrument, and exchange what their
/// controls show. Closing one in the middle of an exchange ends the exchange, in silence unless the
/// window runs its own (`Scambia`).
class frmEditor : public QDialog, public Editor {
    Q_OBJECT
 public:
    ~frmEditor() override;

    std::string_view Nome() const override { return nome_; }
    void AbilitaStrumento(bool presente) override;
    ControlliEditor* Controlli() override { return controlli_.get(); }

    void done(int esito) override;

 protected:
    frmEditor(const char* nome, QWidget* parent);

    /// Everything but OK and Cancel; disabled during an exchange.
    QWidget* Corpo() { return corpo_; }
    /// The frame with the two instrument buttons.
    QGroupBox* CreaStrumento();
    /// The last step of a constructor: OK and Cancel behind all other controls, texts, states.
    void Completa(std::unique_ptr<ControlliEditor> controlli);

    virtual void AggiornaTesti(Mnemonica& lettere) = 0;
    virtual void OKButton_Click() = 0;
    virtual void cmdInviaDati_Click() = 0;
    virtual void cmdLeggiDati_Click() = 0;

    /// Runs what a click of `chi` asks for, behind the poll, unless the window has closed
    /// meanwhile.
    void Comandato(const QObject* chi, std::function<void()> azione);
    /// Asks before the instrument (`corpo` 147) or the window (232) is written over.
    static bool Conferma(Voce titolo, Voce corpo);
    /// An exchange that the window runs itself: the changes of state that all exchanges share stand
    /// around `corso`; `fine` tells how it went, before the poll gets the port back.
    void Scambia(const ScambioEditor& scambio, const std::function<void()>& corso,
                 const std::function<void()>& fine);
    /// What an exchange is at, shown in the window and in the status bar.
    void Progresso(Voce testo);
    /// Whether the records can be sent as they stand; if not, the focus goes where the reason is.
    bool PuoInviare(const ScambioEditor& scambio);
    /// Brings a control into view and gives it the focus.
    virtual void Vai(QWidget* controllo) { controllo->setFocus(); }
    /// The same with a box's whole text selected.
    void VaiAllaCasella(QLineEdit& casella);
    void Programma(const ScambioEditor& scambio);
    void Leggi(const ScambioEditor& scambio);

    bool event(QEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

 private:
    class InCorso;

    void Testi();
    bool Esegui(const ScambioEditor& scambio);

    std::string nome_;
    std::unique_ptr<ControlliEditor> controlli_;
    QWidget* corpo_ = nullptr;
    QGroupBox* fraStrumento_ = nullptr;
    QPushButton* cmdInviaDati_ = nullptr;
    QPushButton* cmdLeggiDati_ = nullptr;
    QPushButton* OKButton_ = nullptr;
    QPushButton* CancelButton_ = nullptr;
    QLabel* lblProgresso_ = nullptr;
    bool inCorso_ = false;
};

}  // namespace lapvane
