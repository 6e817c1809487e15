#pragma once

#include <QTimer>
#include <array>
#include <optional>

#include "device/Diagnostica.h"
#include "device/DisegnoLive.h"
#include "widgets/Dialogo.h"
#include "widgets/LegendaAllarmi.h"

namespace lapvane {

/// The live view: values, alarm lamps and raw analogue inputs, as fast as the link allows, to be
/// read from a metre away.
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

    QWidget* CreaAllarmi();
    QWidget* CreaIngressi();
    void AggiornaTesti(Mnemonica& lettere) override;
    void DiceDaQuando();

    PannelloLive* pannello_;
    CorniceLive* fraAllarmi_ = nullptr;
    CorniceLive* fraIngressiAnalogici_ = nullptr;
    std::array<LampadaAllarme*, kAllarmiLive> shpAllarme_{};
    std::array<QLabel*, kAllarmiLive> lblNomeAllarme_{};
    std::array<QLabel*, kAllarmiLive> lblDaQuanto_{};
    std::array<std::optional<std::int64_t>, kAllarmiLive> acceso_{};  // ms, since when it is on
    std::array<QLabel*, kIngressiAnalogici> txtValoreAnalogico_{};
    std::array<BarraIngresso*, kIngressiAnalogici> barre_{};
    std::array<QTimer, 2> eta_;  // of what each group shows
    std::array<bool, 2> letti_{};
    std::array<std::int64_t, 2> ultima_{};  // ms, the last read of each
    QTimer secondi_;                        // while one of them is old
    bool avviata_ = false;
    bool inCorso_ = false;
};

}  // namespace lapvane
