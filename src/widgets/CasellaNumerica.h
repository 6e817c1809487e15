#pragma once

#include <QLineEdit>
#include <functional>

namespace lapvane {

/// What a box is called: its accessible name, else the text of the label that leads to it.
QString NomeCasella(const QWidget& casella);

/// Another text in a box, as if it were typed over the old one: Ctrl+Z brings that back.
void Riscrivi(QLineEdit& casella, const QString& testo);

/// Says that the text of a box is no number that it takes, and which box (text 262 and its name),
/// under its window's title.
void MostraNumeroErrato(const QWidget& casella);

/// A number box of an editor. Left with a text that is no 16-bit number (a fraction is rounded) it
/// says so (text 262, titled like its window), blanks itself and keeps the focus, and the click
/// that wanted to go elsewhere does nothing. Another program, a menu or a message does not take the
/// user away from the box, so nothing is checked then.
class CasellaNumerica : public QLineEdit {
    Q_OBJECT
 public:
    explicit CasellaNumerica(QWidget* parent = nullptr);

    /// What losing the focus does, behind the check.
    std::function<void()> PersoFuoco;

    /// The focus may leave a box for this control without the check: the way out of a window.
    static void SenzaControllo(QWidget* controllo);

    /// Leaves the box of the window that has the focus, as a key does that acts without moving it
    /// (Enter). False: the box was refused, or one that was refused just before waits for its
    /// message; the caller does nothing then.
    static bool Lascia(const QWidget& finestra);

    /// If the window's focus is in a box whose text would be refused, moves it to that control,
    /// without a check and without a word.
    static void NonRestareInUnaErrata(const QWidget& finestra, QWidget& altrove);

 protected:
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

 private:
    bool Valida() const;
    void Rifiuta();
    void Avvisa();
    bool Esci();

    bool rifiutata_ = false;  // the message is still to come
    bool esente_ = false;     // it may be left as it is
};

}  // namespace lapvane
