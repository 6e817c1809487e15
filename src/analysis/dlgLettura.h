#pragma once

#include <QLabel>
#include <QProgressBar>

#include "widgets/Dialogo.h"

namespace lapvane {

/// Stands over the program while a log is read that takes long: how far it is, and a way to stop.
class dlgLettura : public Dialogo {
    Q_OBJECT
 public:
    dlgLettura(const QString& file, QWidget* parent);

    /// Shows how far it is, in per cent, and lets the interface run. False as soon as a person has
    /// stopped it: Stop, Esc or the close box.
    bool Avanza(int percento);

    void reject() override { fermata_ = true; }

 private:
    void AggiornaTesti(Mnemonica& lettere) override;

    QLabel* lblFile_ = nullptr;
    QLabel* lblPerc_ = nullptr;
    QProgressBar* ProgressBar1_ = nullptr;
    QPushButton* cmdFerma_ = nullptr;
    bool fermata_ = false;
};

}  // namespace lapvane
