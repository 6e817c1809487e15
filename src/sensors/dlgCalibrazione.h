#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>

#include "sensors/Calibrazione.h"
#include "shell/Editor.h"

namespace lapvane {

/// Measures a fuel level curve step by step into the table of the window that opened it. Closing it
/// by its frame leaves the points as they were measured; what Cancel leaves to do is the caller's.
class dlgCalibrazione : public QDialog, public Editor {
    Q_OBJECT
 public:
    /// `mostra` shows the table after each change.
    dlgCalibrazione(TabellaPunti& tabella, std::function<void()> mostra, QWidget* parent = nullptr);
    ~dlgCalibrazione() override;

    /// The line above the instructions.
    QLabel* lblTitolo = nullptr;

    std::int16_t StatoCalibrazione() const { return calibrazione_.StatoCalibrazione; }
    std::int16_t ValoreBenzina() const { return calibrazione_.ValoreBenzina; }

    std::string_view Nome() const override { return "dlgCalibrazione"; }
    void AbilitaStrumento(bool presente) override;

    void done(int esito) override;
    /// Cancel and Esc.
    void reject() override;

 protected:
    void closeEvent(QCloseEvent* evento) override;

 private:
    void Disponi();
    void MostraLitri(bool mostra);
    void OKButton_Click();
    void cmdFineProcedura_Click();
    void Descrivi(const std::string& fase);

    Calibrazione calibrazione_;
    std::function<void()> mostra_;
    QWidget* corpo_ = nullptr;
    QLabel* lblDescrizioneFase_ = nullptr;
    QLabel* lblLitri_ = nullptr;   ///< unit of the litres
    QLabel* lblValore_ = nullptr;  ///< the last reading
    QLabel* Label1_ = nullptr;
    QLineEdit* txtLitri_ = nullptr;
    QPushButton* OKButton_ = nullptr;
    QPushButton* cmdFineProcedura_ = nullptr;
    QPushButton* CancelButton_ = nullptr;
    bool inCorso_ = false;
};

}  // namespace lapvane
