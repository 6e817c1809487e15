#include "widgets/TastoInvio.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace lapvane {

TastoInvio::TastoInvio(QObject* padre) : QObject(padre) {
    qApp->installEventFilter(this);
}

bool TastoInvio::eventFilter(QObject* oggetto, QEvent* evento) {
    const bool lettera = evento->type() == QEvent::Shortcut;
    if (!lettera && evento->type() != QEvent::KeyPress) return false;
    if (qobject_cast<QPushButton*>(oggetto) == nullptr &&
        qobject_cast<QToolButton*>(oggetto) == nullptr) {
        return false;
    }
    auto* pulsante = static_cast<QAbstractButton*>(oggetto);
    if (lettera) {
        const QWidget* prima = QApplication::focusWidget();
        const auto prendi = [pulsante, prima] {
            if (prima == QApplication::focusWidget()) pulsante->setFocus(Qt::ShortcutFocusReason);
        };
        if ((pulsante->focusPolicy() & Qt::ClickFocus) != 0 &&
            qobject_cast<const QLineEdit*>(prima) == nullptr) {
            connect(pulsante, &QAbstractButton::clicked, pulsante, prendi,
                    Qt::SingleShotConnection);
        }
        return false;
    }
    const auto* tasto = static_cast<const QKeyEvent*>(evento);
    if (tasto->key() != Qt::Key_Return && tasto->key() != Qt::Key_Enter) return false;
    if ((tasto->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    if (!tasto->isAutoRepeat()) pulsante->click();
    return true;
}

}  // namespace lapvane
