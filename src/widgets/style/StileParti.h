#pragma once

#include <QColor>

class QPainter;
class QStyleOption;
class QWidget;

namespace lapvane {

// What the sources of the style share.

/// A button that is filled with the accent: the default one, or one that is pressed in.
bool PulsantePieno(const QStyleOption& o);
/// The ground of a box to type in or to choose from, with its edge or the ring of the focus.
void Campo(QPainter& penna, const QStyleOption& o, bool fuoco);
QColor ColoreFreccia(const QStyleOption& o);
/// What lies under a scroll bar: the ground of the view that it belongs to.
QColor FondoBarra(const QStyleOption& o, const QWidget* widget);

}  // namespace lapvane
