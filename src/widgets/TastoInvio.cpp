#include "widgets/TastoInvio.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace lapvane {

TastoInvio::TastoInvio(QObject* padre) : QObject(padre) {
    qApp->installEventFilter(this);
}

bool TastoInvio::eventFilter(QObject* oggetto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress) return false;
    const auto* tasto = static_cast<const QKeyEvent*>(evento);
    if (tasto->key() != Qt::Key_Return && tasto->key() != Qt::Key_Enter) return false;
    if ((tasto->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    if (qobject_cast<QPushButton*>(oggetto) == nullptr &&
        qobject_cast<QToolButton*>(oggetto) == nullptr) {
        return false;
    }
    if (!tasto->isAutoRepeat()) static_cast<QAbstractButton*>(oggetto)->click();
    return true;
}

}  // namespace lapvane
