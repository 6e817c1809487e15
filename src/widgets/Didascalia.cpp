#include "widgets/Didascalia.h"

#include <QPainter>

#include "widgets/style/Misure.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

Didascalia::Didascalia(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void Didascalia::Testo(const QString& testo) {
    testo_ = testo;
    setToolTip(testo);
    setAccessibleName(testo);
    updateGeometry();
    update();
}

QSize Didascalia::sizeHint() const {
    const QFontMetrics misura = fontMetrics();
    return {misura.horizontalAdvance(testo_) + 2 * kSpazio, misura.height()};
}

void Didascalia::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    penna.setPen(ColoriDi(*this).Text2);
    const QRect posto = rect().adjusted(2 * kSpazio, 0, -kSpazio, 0);
    penna.drawText(posto, Qt::AlignRight | Qt::AlignVCenter,
                   fontMetrics().elidedText(testo_, Qt::ElideRight, posto.width()));
}

}  // namespace lapvane
