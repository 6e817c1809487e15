#include "widgets/BarraTasti.h"

#include <QShortcut>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr int kAltezza = 44;

}  // namespace

BarraTasti::BarraTasti(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("barra"));
    setMinimumHeight(kAltezza);
}

QToolButton* BarraTasti::Aggiungi(const char* nome, Voce parole, const char* tasti,
                                  std::function<void()> azione) {
    auto* pulsante = new QToolButton(this);
    pulsante->setObjectName(QStringLiteral("barra_") + QLatin1String(nome));
    pulsante->setIcon(Icona(nome));
    pulsante->setAutoRaise(true);
    pulsante->setFocusPolicy(Qt::TabFocus);
    connect(pulsante, &QToolButton::clicked, this,
            [azione = std::move(azione)] { Protetto(azione); });
    // Of the window and not of the button, which a narrow bar may hide.
    auto* scorciatoia = new QShortcut(QKeySequence(QLatin1String(tasti)), parentWidget());
    connect(scorciatoia, &QShortcut::activated, pulsante, &QToolButton::click);
    tasti_.push_back({pulsante, parole, tasti});
    addWidget(pulsante);
    return pulsante;
}

void BarraTasti::Spazio() {
    auto* vuoto = new QWidget(this);
    vuoto->setFixedWidth(kSpazio);
    addWidget(vuoto);
}

void BarraTasti::SpazioLargo() {
    auto* vuoto = new QWidget(this);
    vuoto->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(vuoto);
}

void BarraTasti::AggiornaTesti() {
    for (const Tasto& tasto : tasti_) {
        const QString parole = InQt(Testo(tasto.Parole));
        const QKeySequence tasti(QLatin1String(tasto.Tasti));
        tasto.Pulsante->setAccessibleName(parole);
        tasto.Pulsante->setToolTip(parole + QStringLiteral("  ") +
                                   tasti.toString(QKeySequence::NativeText));
    }
}

}  // namespace lapvane
