#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <string>
#include <vector>

namespace lapvane {

/// The descriptive head of the project.
class dlgNoteProgetto : public QDialog {
    Q_OBJECT
 public:
    explicit dlgNoteProgetto(QWidget* parent = nullptr);

 protected:
    bool event(QEvent* evento) override;

 private:
    /// A box, the field of the project that it shows, its label and the label's text number.
    struct Riga {
        QLineEdit* Casella;
        std::string* Campo;
        QLabel* Etichetta;
        int Testo;
    };

    void AggiornaTesti();
    void OKButton_Click();

    std::vector<Riga> righe_;
    QPlainTextEdit* txtNoteProgetto_ = nullptr;
    QLabel* lblNoteProgetto_ = nullptr;
    QPushButton* CancelButton_ = nullptr;
};

}  // namespace lapvane
