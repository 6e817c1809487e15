#include "widgets/PannelloStato.h"

#include <QPainter>

#include "widgets/style/Misure.h"

namespace lapvane {

namespace {
constexpr int kMargine = 6;
}  // namespace

PannelloStato::PannelloStato(QWidget* parent) : QFrame(parent) {
    setFrameShape(QFrame::NoFrame);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PannelloStato::ImpostaTesto(const QString& testo) {
    testo_ = testo;
    if (atteso_ || testo_ == mostrato_) return;
    atteso_ = true;
    QMetaObject::invokeMethod(
        this, [this] { Mostra(); }, Qt::QueuedConnection);
}

void PannelloStato::Mostra() {
    atteso_ = false;
    if (testo_ == mostrato_) return;
    mostrato_ = testo_;
    setToolTip(mostrato_);
    setAccessibleName(mostrato_);
    updateGeometry();
    update();
}

void PannelloStato::ImpostaImmagine(const QIcon& immagine) {
    immagine_ = immagine;
    updateGeometry();
    update();
}

int PannelloStato::LarghezzaImmagine() const {
    return immagine_.isNull() ? 0 : LatoSpunta() + kMargine;
}

QSize PannelloStato::sizeHint() const {
    const int testo = mostrato_.isEmpty() ? 0 : fontMetrics().horizontalAdvance(mostrato_) + 2;
    return {2 * kMargine + LarghezzaImmagine() + testo, Misure(*this).Riga};
}

QSize PannelloStato::minimumSizeHint() const {
    return {2 * kMargine + LarghezzaImmagine(), sizeHint().height()};
}

void PannelloStato::paintEvent(QPaintEvent* evento) {
    QFrame::paintEvent(evento);
    QPainter p(this);
    const QColor linea = palette().color(QPalette::Mid);
    p.setPen(linea);
    p.drawLine(width() - 1, 4, width() - 1, height() - 5);
    int x = kMargine;
    if (!immagine_.isNull()) {
        const int lato = LatoSpunta();
        immagine_.paint(&p, QRect(x, (height() - lato) / 2, lato, lato), Qt::AlignCenter,
                        isEnabled() ? QIcon::Normal : QIcon::Disabled);
        x += lato + kMargine;
    }
    p.setPen(palette().color(QPalette::WindowText));
    const QRect posto(x, 0, width() - x - kMargine, height());
    const QString parole = fontMetrics().elidedText(mostrato_, Qt::ElideMiddle, posto.width());
    p.drawText(posto, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, parole);
}

}  // namespace lapvane
