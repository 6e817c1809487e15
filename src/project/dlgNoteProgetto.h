#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <string>
#include <vector>

#include "shell/Voci.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// The descriptive head of the project.
class dlgNoteProgetto : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgNoteProgetto(QWidget* parent = nullptr);

    /// Whether a box shows something else than at the opening.
    bool Cambiate() const;
    /// What OK does: the boxes become the project's.
    void OKButton_Click();

 private:
    /// A box, the field of the project that it shows, its label and the label's text number.
    struct Riga {
        QLineEdit* Casella;
        std::string* Campo;
        QLabel* Etichetta;
        Voce Testo;
    };

    void AggiornaTesti(Mnemonica& lettere) override;
    std::vector<QString> Scritto() const;

    std::vector<Riga> righe_;
    std::vector<QString> allInizio_;
    QPlainTextEdit* txtNoteProgetto_ = nullptr;
    QLabel* lblNoteProgetto_ = nullptr;
};

}  // namespace lapvane
