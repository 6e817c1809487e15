#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>

#include "sensors/Calibrazione.h"
#include "sensors/frmScambio.h"

namespace lapvane {

/// Measures a fuel level curve step by step into the table of the window that opened it. Closing it
/// by its frame leaves the points as they were measured; what Cancel leaves to do is the caller's.
class dlgCalibrazione : public frmScambio {
    Q_OBJECT
 public:
    /// `mostra` shows the table after each change.
    dlgCalibrazione(TabellaPunti& tabella, std::function<void()> mostra, QWidget* parent = nullptr);

    /// The line above the instructions.
    QLabel* lblTitolo = nullptr;

    std::int16_t StatoCalibrazione() const { return calibrazione_.StatoCalibrazione; }
    std::int16_t ValoreBenzina() const { return calibrazione_.ValoreBenzina; }

    void AbilitaStrumento(bool presente) override;

    /// Cancel and Esc.
    void reject() override;

 protected:
    void closeEvent(QCloseEvent* evento) override;

 private:
    void Disponi();
    void CreaIstruzioni();
    QLayout* CreaLitri();
    QLayout* CreaComandi(Mnemonica& lettere);
    void MostraLitri(bool mostra);
    void OKButton_Click();
    void cmdFineProcedura_Click();
    void Descrivi(const std::string& fase);

    Calibrazione calibrazione_;
    std::function<void()> mostra_;
    QLabel* lblDescrizioneFase_ = nullptr;
    QLabel* lblLitri_ = nullptr;   ///< unit of the litres
    QLabel* lblValore_ = nullptr;  ///< the last reading
    QLabel* Label1_ = nullptr;
    QLineEdit* txtLitri_ = nullptr;
    QPushButton* cmdFineProcedura_ = nullptr;
};

}  // namespace lapvane
