#pragma once

#include <QProgressBar>

#include "logs/Scarico.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// The window of a download. It fetches as soon as it is shown; closing it stops the download.
class frmDownload : public Dialogo, private VistaScarico {
    Q_OBJECT
 public:
    explicit frmDownload(QWidget* parent = nullptr);

    void done(int esito) override;

 protected:
    void showEvent(QShowEvent* evento) override;

 private:
    bool Visibile() const override { return isVisible(); }
    void Stato(const std::string& testo) override;
    void Percento(int percento) override;
    void AbilitaOK(bool acceso) override;
    void Scarica() override { close(); }

    QLabel* lblStatoDownload_ = nullptr;
    QLabel* lblPerc_ = nullptr;
    QProgressBar* ProgressBar1_ = nullptr;
    bool avviato_ = false;
    bool inCorso_ = false;
};

}  // namespace lapvane
