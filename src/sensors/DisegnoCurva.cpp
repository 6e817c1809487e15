#include "sensors/DisegnoCurva.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <algorithm>
#include <cmath>
#include <utility>

#include "shell/Protetto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kPresa = 10.0;  // pixels around a point
constexpr double kAnello = 6.5;
constexpr double kSegno = 3.5;     // radius of a point's mark
constexpr double kStriscia = 3.0;  // width of the curve
constexpr int kMargine = 4;

}  // namespace

DisegnoCurva::DisegnoCurva(QWidget* parent) : GraficoWidget(parent) {
    setMouseTracking(true);
}

void DisegnoCurva::Maniglie(std::vector<QPointF> punti) {
    punti_ = std::move(punti);
    const int numero = static_cast<int>(punti_.size());
    if (sotto_ >= numero) sotto_ = -1;
    if (presa_ >= numero) presa_ = -1;
    update();
}

void DisegnoCurva::Dietro(std::vector<QPointF> punti) {
    dietro_ = std::move(punti);
    update();
}

QPolygonF DisegnoCurva::InPixel(const std::vector<QPointF>& punti) const {
    QPolygonF pixel;
    for (const QPointF& punto : punti) {
        if (const auto posto = PixelDi(punto.x(), punto.y())) pixel += *posto;
    }
    return pixel;
}

/// The picture of the graph is there already: what lies behind its curve spares its strip.
void DisegnoCurva::DisegnaDietro(QPainter& penna) const {
    const QPolygonF sopra = InPixel(punti_);
    QPainterPath curva, libero;
    if (!sopra.isEmpty()) curva.addPolygon(sopra);
    for (const QPointF& punto : sopra) libero.addEllipse(punto, kSegno, kSegno);
    QPainterPathStroker striscia;
    striscia.setWidth(kStriscia);
    libero.addPath(striscia.createStroke(curva));
    QPainterPath area;
    area.addRect(AreaDisegno());
    penna.save();
    penna.setClipPath(area.subtracted(libero));
    penna.setPen(QPen(ColoriDi(Tema::Chiaro).Stale, 1.2));
    penna.drawPolyline(InPixel(dietro_));
    penna.restore();
}

/// The nearest point within reach; the first of those at one place.
int DisegnoCurva::Vicina(const QPointF& pixel) const {
    int vicina = -1;
    double distanza = kPresa;
    for (std::size_t i = 0; i < punti_.size(); ++i) {
        const auto posto = PixelDi(punti_[i].x(), punti_[i].y());
        if (!posto) continue;
        const double sua = std::hypot(posto->x() - pixel.x(), posto->y() - pixel.y());
        if (sua >= distanza) continue;
        distanza = sua;
        vicina = static_cast<int>(i);
    }
    return vicina;
}

void DisegnoCurva::Sotto(int maniglia) {
    if (sotto_ == maniglia) return;
    sotto_ = maniglia;
    setCursor(maniglia >= 0 ? Qt::OpenHandCursor : Qt::ArrowCursor);
    update();
}

void DisegnoCurva::mousePressEvent(QMouseEvent* evento) {
    if (evento->button() != Qt::LeftButton) return;
    const int vicina = Vicina(evento->position());
    if (vicina < 0) return;
    bool preso = false;
    Protetto([&] { preso = EventoPreso && EventoPreso(vicina); });
    if (!preso) return;
    presa_ = sotto_ = vicina;
    setCursor(Qt::ClosedHandCursor);
    update();
}

void DisegnoCurva::mouseMoveEvent(QMouseEvent* evento) {
    if (presa_ < 0) return Sotto(Vicina(evento->position()));
    const QRectF area = AreaDisegno();
    const auto valori = ValoriIn({std::clamp(evento->position().x(), area.left(), area.right()),
                                  std::clamp(evento->position().y(), area.top(), area.bottom())});
    if (valori && EventoSpostato) Protetto([&] { EventoSpostato(presa_, *valori); });
}

void DisegnoCurva::mouseReleaseEvent(QMouseEvent* evento) {
    if (presa_ < 0 || evento->button() != Qt::LeftButton) return;
    presa_ = -1;
    sotto_ = -1;
    if (EventoLasciato) Protetto(EventoLasciato);
    Sotto(Vicina(evento->position()));
}

void DisegnoCurva::leaveEvent(QEvent* evento) {
    GraficoWidget::leaveEvent(evento);
    if (presa_ < 0) Sotto(-1);
}

void DisegnoCurva::paintEvent(QPaintEvent* evento) {
    GraficoWidget::paintEvent(evento);
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    if (DietroSiVede()) DisegnaDietro(penna);
    if (sotto_ >= 0) DisegnaManiglia(penna);
}

void DisegnoCurva::DisegnaManiglia(QPainter& penna) const {
    const QPointF& punto = punti_[static_cast<std::size_t>(sotto_)];
    const auto posto = PixelDi(punto.x(), punto.y());
    if (!posto) return;
    // The sheet is white in both themes.
    const Colori& colori = ColoriDi(Tema::Chiaro);
    penna.setPen(QPen(colori.Accent, 2.0));
    penna.setBrush(Qt::NoBrush);
    penna.drawEllipse(*posto, kAnello, kAnello);
    if (!Scritta) return;
    const QString scritta = Scritta(sotto_);
    const Misure m(*this);
    QRectF cartello(0.0, 0.0, penna.fontMetrics().horizontalAdvance(scritta) + 2.0 * kSpazio,
                    m.Riga);
    const QRectF area = AreaDisegno();
    cartello.moveTopLeft(*posto + QPointF(kSpazio + kMargine, -m.Riga - kMargine));
    if (cartello.right() > area.right()) cartello.moveRight(posto->x() - kSpazio - kMargine);
    if (cartello.top() < area.top()) cartello.moveTop(posto->y() + kSpazio);
    lapvane::Riquadro(penna, cartello, kRaggioControllo, colori.Base, colori.Line);
    penna.setPen(colori.Text);
    penna.drawText(cartello, Qt::AlignCenter, scritta);
}

}  // namespace lapvane
