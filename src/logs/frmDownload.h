#pragma once

#include <QCheckBox>
#include <QProgressBar>

#include "logs/Scarico.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// The window of a download. It fetches as soon as it is shown and keeps what comes on the disk;
/// closing it stops the download, when the person who is asked agrees.
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
    void Scarica() override { Chiudi(Rejected); }
    void Andamento(const AndamentoScarico& andamento) override;
    void Avviso(const std::string& testo) override;
    void MostraAndamento();
    void CreaSceltaCopia();
    bool SiFerma();
    void Chiudi(int esito);

    QLabel* lblQuanto_ = nullptr;    // how much of how much
    QLabel* lblResta_ = nullptr;     // time left
    QLabel* lblDisturbi_ = nullptr;  // pages dropped, retries
    QLabel* lblAvviso_ = nullptr;    // there only when there is something to say
    QLabel* lblStatoDownload_ = nullptr;
    QLabel* lblPerc_ = nullptr;
    QProgressBar* ProgressBar1_ = nullptr;
    QCheckBox* chkImpostazioni_ = nullptr;
    AndamentoScarico andamento_;
    std::int64_t mostrato_ = 0;  // when it was shown
    bool avviato_ = false;
    bool inCorso_ = false;
    bool finito_ = false;
};

}  // namespace lapvane
