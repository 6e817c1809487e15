#include "sensors/frmScambio.h"

#include <utility>

#include "device/SerialComm.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

QLabel* CreaProgresso(QWidget* finestra) {
    auto* riga = new QLabel(finestra);
    riga->setObjectName(QStringLiteral("lblProgresso"));
    riga->setTextFormat(Qt::PlainText);
    riga->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return riga;
}

void MostraProgresso(QLabel& riga, const std::string& testo) {
    riga.setText(InQt(testo));
    principale().TestoPannello(Pannello::Progresso, testo);
}

ScambioInCorso::ScambioInCorso(QWidget& finestra, std::vector<QWidget*> spenti, std::int16_t fase,
                               Voce stato, QLabel* progresso, bool& inCorso)
    : finestra_(finestra),
      spenti_(std::move(spenti)),
      fuoco_(finestra.focusWidget()),
      progresso_(progresso),
      inCorso_(inCorso) {
    inCorso_ = true;
    // Neither the disabled controls nor the one button left get the keys of an impatient hand.
    for (QWidget* controllo : spenti_) controllo->setEnabled(false);
    finestra_.setFocus();
    platform().MousePointer(Pointer::Busy);
    if (progresso_ != nullptr) MostraProgresso(*progresso_, Testo(stato));
    FaseComunicazione = fase;
}

ScambioInCorso::~ScambioInCorso() {
    inCorso_ = false;
    if (progresso_ != nullptr) MostraProgresso(*progresso_, "");
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
