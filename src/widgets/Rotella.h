#pragma once

#include <QComboBox>
#include <QEvent>

namespace lapvane {

/// True for a turn of the wheel over a list that has not the focus: the wheel only passes over it
/// and must not choose from it. For an event filter, which then takes the event.
inline bool RotellaDiPassaggio(QObject* oggetto, QEvent* evento) {
    if (evento->type() != QEvent::Wheel) return false;
    const auto* lista = qobject_cast<QComboBox*>(oggetto);
    if (lista == nullptr || lista->hasFocus()) return false;
    evento->ignore();
    return true;
}

}  // namespace lapvane
