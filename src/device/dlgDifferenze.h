#pragma once

#include "device/DisegnoDifferenze.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// What differs between the project and the instrument, to read, to copy and to save.
class dlgDifferenze : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgDifferenze(const std::vector<Differenza>& differenze, QWidget* parent = nullptr);

 protected:
    void AggiornaTesti(Mnemonica& lettere) override;

 private:
    QLabel* lblEsito_ = nullptr;
    TabellaDifferenze* tabella_ = nullptr;
    QPushButton* cmdCopia_ = nullptr;
    QPushButton* cmdCsv_ = nullptr;
};

}  // namespace lapvane
