#include "widgets/Sfondo.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <array>

#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kNastro = 22.0;
constexpr double kTono = 0.035;  // of the text's colour in the ground's

/// The circuit, in parts of the window's width and height.
constexpr std::array<std::array<double, 2>, 18> kCurva = {{{0.42, 1.04},
                                                           {0.42, 0.72},
                                                           {0.42, 0.40},
                                                           {0.44, 0.18},
                                                           {0.52, 0.08},
                                                           {0.60, 0.18},
                                                           {0.64, 0.34},
                                                           {0.74, 0.36},
                                                           {0.86, 0.24},
                                                           {0.95, 0.34},
                                                           {0.965, 0.54},
                                                           {0.92, 0.70},
                                                           {0.88, 0.82},
                                                           {0.92, 1.04},
                                                           {0.80, 1.20},
                                                           {0.68, 1.06},
                                                           {0.60, 1.10},
                                                           {0.50, 1.24}}};

/// A closed line through all points: a Catmull-Rom spline as Bezier pieces.
QPainterPath Curva(const QSizeF& spazio) {
    const auto punto = [&spazio](std::size_t i) {
        const auto& p = kCurva[i % kCurva.size()];
        return QPointF(p[0] * spazio.width(), p[1] * spazio.height());
    };
    QPainterPath curva(punto(0));
    for (std::size_t i = 0; i < kCurva.size(); ++i) {
        const QPointF prima = punto(i + kCurva.size() - 1);
        const QPointF da = punto(i);
        const QPointF a = punto(i + 1);
        const QPointF dopo = punto(i + 2);
        curva.cubicTo(da + (a - prima) / 6, a - (dopo - da) / 6, a);
    }
    return curva;
}

}  // namespace

Sfondo::Sfondo(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Sfondo::Tieni(bool tiene) {
    tiene_ = tiene;
    if (!tiene) disegno_ = {};
}

void Sfondo::Disegna(QPainter& penna) const {
    const Colori& colori = ColoriDi(*this);
    penna.fillRect(rect(), colori.Window);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.strokePath(Curva(size()), QPen(Tinta(colori.Window, colori.Text, kTono), kNastro,
                                         Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void Sfondo::paintEvent(QPaintEvent* evento) {
    QPainter penna(this);
    if (!tiene_) return Disegna(penna);
    const double rapporto = devicePixelRatio();
    if (disegno_.size() != size() * rapporto) {
        disegno_ = QPixmap(size() * rapporto);
        disegno_.setDevicePixelRatio(rapporto);
        QPainter su(&disegno_);
        Disegna(su);
    }
    const QRect dove = evento->rect();
    penna.drawPixmap(QRectF(dove), disegno_,
                     QRectF(dove.topLeft() * rapporto, dove.size() * rapporto));
}

void Sfondo::changeEvent(QEvent* evento) {
    if (evento->type() == QEvent::PaletteChange || evento->type() == QEvent::StyleChange) {
        disegno_ = {};
    }
    QWidget::changeEvent(evento);
}

}  // namespace lapvane
