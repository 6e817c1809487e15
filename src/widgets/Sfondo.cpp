#include "widgets/Sfondo.h"

#include <QPainter>

#include "widgets/Icone.h"

namespace lapvane {

Sfondo::Sfondo(QWidget* parent) : QWidget(parent), disegno_(FileIcona("splash")) {}

void Sfondo::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(0x14, 0x1a, 0x22));
    if (!disegno_.isValid()) return;
    // Dimmed: it is a ground, and what stands on it is to be seen first.
    p.setOpacity(0.45);
    // The drawing covers the whole ground; what does not fit is cut evenly at both ends.
    const QSizeF disegno = disegno_.defaultSize();
    const QSizeF coperto = disegno.scaled(size(), Qt::KeepAspectRatioByExpanding);
    const QRectF posto(QPointF((width() - coperto.width()) / 2, (height() - coperto.height()) / 2),
                       coperto);
    disegno_.render(&p, posto);
}

}  // namespace lapvane
