#pragma once

#include <QRadioButton>

#include "widgets/Dialogo.h"

namespace lapvane {

/// The choice of language.
class dlgLanguages : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgLanguages(QWidget* parent = nullptr);

 private:
    void AggiornaTesti(Mnemonica& lettere) override;

    QRadioButton* optItaliano_ = nullptr;
    QRadioButton* optInglese_ = nullptr;
};

}  // namespace lapvane
