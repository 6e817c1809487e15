#pragma once

#include <QPointer>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/Editor.h"
#include "shell/Voci.h"
#include "widgets/Dialogo.h"
#include "widgets/RigaAvvisi.h"

namespace lapvane {

/// What the windows share that exchange with the instrument through the open editor: each is
/// `FormAttiva` while it is open. One that closes in the middle of an exchange ends the exchange.
class frmScambio : public Dialogo, public Editor {
    Q_OBJECT
 public:
    ~frmScambio() override;

    std::string_view Nome() const override { return nome_; }
    void done(int esito) override;

 protected:
    frmScambio(const char* nome, QWidget* parent);

    /// How one step of an exchange has ended.
    enum class Esito {
        Fatto,
        Fallito,
        SenzaLink,  ///< there is no link: nothing ran
        Chiusa      ///< the window has closed meanwhile
    };
    /// One step of an exchange: opens the link and runs `scambio` if it is there. A link that is
    /// not there sets `ErroreComunicazione`, so that nothing is reported as sent that never left.
    Esito Passo(const std::function<void()>& scambio);

    /// The state of program and window while an exchange runs: the hourglass, the operation code
    /// that keeps the poll off the port, controls that nobody can use. Its end puts back what the
    /// exchange changed, however it comes.
    class InCorso {
     public:
        /// `spenti` are off meanwhile; `stato` is what the window says. With `conStrumento` the
        /// buttons that need the instrument follow it at the end.
        InCorso(frmScambio& finestra, std::vector<QWidget*> spenti, std::int16_t fase, Voce stato,
                bool conStrumento = false);
        ~InCorso();
        InCorso(const InCorso&) = delete;
        InCorso& operator=(const InCorso&) = delete;

        /// The exchange is over, its closing message still to come.
        void Chiudi();

     private:
        frmScambio& finestra_;
        std::vector<QWidget*> spenti_;
        QPointer<QWidget> fuoco_;
        bool conStrumento_;
    };

    /// Everything but the last row.
    QWidget* Corpo() { return corpo_; }
    /// Runs what a click of `chi` asks for, behind the poll, unless the window has closed
    /// meanwhile.
    void Comandato(const QObject* chi, std::function<void()> azione);
    /// The line that says how an exchange goes: on a small screen the window covers the status bar.
    /// It takes what room its row has left.
    QWidget* CreaProgresso();
    /// The line that shares its place: what there is to say while nothing is exchanged.
    RigaAvvisi& Avvisi() { return *avvisi_; }
    /// Shows a text there and in the status bar; nothing without the line.
    void Progresso(const std::string& testo);

 private:
    std::string nome_;
    QWidget* corpo_ = nullptr;
    RigaAvvisi* avvisi_;
    QLabel* lblProgresso_ = nullptr;
    bool inCorso_ = false;
};

}  // namespace lapvane
