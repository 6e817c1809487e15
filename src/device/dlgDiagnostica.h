#pragma once

#include <QGroupBox>
#include <QTimer>
#include <array>

#include "device/Diagnostica.h"
#include "widgets/Dialogo.h"
#include "widgets/LegendaAllarmi.h"

namespace lapvane {

/// The live view: values, alarm lamps and raw analogue inputs, as fast as the link allows, to be
/// read from some metres away.
class dlgDiagnostica : public Dialogo, private VistaDiagnostica {
    Q_OBJECT
 public:
    explicit dlgDiagnostica(QWidget* parent = nullptr);

    void done(int esito) override;

 protected:
    void showEvent(QShowEvent* evento) override;

 private:
    void ValoreCampo(int campo, const std::string& testo) override;
    void Allarme(int n, bool acceso) override;
    void ValoreAnalogico(int ingresso, const std::string& testo) override;
    void Letto(GruppoLive gruppo, bool riuscito) override;
    bool Visibile() const override { return isVisible(); }

    QWidget* CreaCampo(const CampoLive& campo);
    QWidget* CreaAllarmi();
    QWidget* CreaIngressi();
    void AggiornaTesti(Mnemonica& lettere) override;

    std::array<QLabel*, kCampiLive> txtValoreCampo_{};
    std::array<QLabel*, kCampiLive> nomi_{};
    std::array<QLabel*, kCampiLive> lblUM_{};
    std::array<LampadaAllarme*, kAllarmiLive> shpAllarme_{};
    std::array<QLabel*, kAllarmiLive> lblNomeAllarme_{};
    std::array<QLabel*, kIngressiAnalogici> txtValoreAnalogico_{};
    QGroupBox* fraIngressiAnalogici_ = nullptr;
    QLabel* lblFermi_ = nullptr;
    std::array<QTimer, 2> eta_;  // of what each group shows
    std::array<bool, 2> letti_{};
    bool avviata_ = false;
    bool inCorso_ = false;
};

}  // namespace lapvane
