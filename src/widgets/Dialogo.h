#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <initializer_list>
#include <string_view>

#include "widgets/Mnemonica.h"

class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QVBoxLayout;

namespace lapvane {

/// Keeps the place of a widget while it is hidden.
void TieniPosto(QWidget* widget);

/// A size that fits the screen of a window.
QSize NelloSchermo(const QWidget& finestra, QSize misura);

/// Moves a window that reaches beyond its screen back into it; one that is larger keeps its top
/// left corner in view.
void PortaNelloSchermo(QWidget& finestra);

/// A label of that name; its Alt letter leads to `compagno`.
QLabel* Etichetta(QWidget* dove, std::string_view nome, QWidget* compagno = nullptr);

/// A frame of that name.
QGroupBox* Cornice(QWidget* dove, std::string_view nome);

/// Runs `azione` when the link is free (`Principale::QuandoLibero`), if `vivo` still lives then.
void QuandoLibero(const QObject* chi, QObject* vivo, std::function<void()> azione);

/// What the dialogs share: a name, texts that follow the language, the row of their buttons, lists
/// that a passing wheel leaves alone, a size that the screen has room for.
class Dialogo : public QDialog {
    Q_OBJECT
 public:
    void setVisible(bool visibile) override;

 protected:
    Dialogo(const char* nome, QWidget* parent, Qt::WindowFlags tipo = {});

    /// Puts the captions on, at the end of the constructor; from then on it happens again whenever
    /// the window comes to the front.
    void Testi();
    virtual void AggiornaTesti(Mnemonica&) {}

    /// A button of that name; its click runs `azione`.
    QPushButton* CreaPulsante(const char* nome, std::function<void()> azione);
    /// OK, which is the default.
    QPushButton* CreaOK(std::function<void()> ok);
    /// Cancel, whose caption is the window's.
    QPushButton* CreaCancel();
    /// The last row: the buttons behind what stands in front of them (null: nothing).
    static QHBoxLayout* RigaPulsanti(QWidget* davanti, std::initializer_list<QPushButton*> quali);
    /// OK and Cancel in their row.
    QHBoxLayout* CreaPulsanti(QWidget* davanti, std::function<void()> ok);
    /// A wheel that passes over the list does not choose.
    void SenzaRotella(QComboBox* lista);

    /// Called once, before a window that its screen has no room for scrolls: half the margins and
    /// the spacing. What a window overrides may give way further.
    virtual void Stringi();

    bool event(QEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

    QPushButton* OKButton_ = nullptr;
    QPushButton* CancelButton_ = nullptr;

 private:
    void StaNelloSchermo();
    void MettiInRotolo(QVBoxLayout* colonna);

    QWidget* rotolo_ = nullptr;  // what scrolls, if the screen is too small
    bool stretta_ = false;       // what can give way has given way
    bool seguono_ = false;       // the texts, the language
    bool aSuoPosto_ = false;     // put into the screen once; where a person moves it is his affair
};

}  // namespace lapvane
