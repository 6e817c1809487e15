#include "sensors/frmScambio.h"

#include <utility>

#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

ScambioInCorso::ScambioInCorso(QWidget& finestra, std::vector<QWidget*> spenti, std::int16_t fase,
                               int stato, bool& inCorso)
    : finestra_(finestra),
      spenti_(std::move(spenti)),
      fuoco_(finestra.focusWidget()),
      inCorso_(inCorso) {
    inCorso_ = true;
    // Neither the disabled controls nor the one button left get the keys of an impatient hand.
    for (QWidget* controllo : spenti_) controllo->setEnabled(false);
    finestra_.setFocus();
    platform().MousePointer(Pointer::Busy);
    principale().TestoPannello(Pannello::Progresso, stato == 0 ? "" : Testo(stato));
    FaseComunicazione = fase;
}

ScambioInCorso::~ScambioInCorso() {
    inCorso_ = false;
    principale().TestoPannello(Pannello::Progresso, "");
    platform().MousePointer(Pointer::Normal);
    for (QWidget* controllo : spenti_) controllo->setEnabled(true);
    if (fuoco_ != nullptr && finestra_.isVisible()) fuoco_->setFocus();
    TrasferimentoAbbandonato = false;
    FaseComunicazione = 0;
}

bool ScambioInCorso::Esegui(void (*scambio)(std::int16_t), std::int16_t valore) const {
    const bool pronto = LinkPronto();
    if (pronto && finestra_.isVisible()) {
        platform().MousePointer(Pointer::Busy);
        scambio(valore);
    }
    return finestra_.isVisible();
}

}  // namespace lapvane
