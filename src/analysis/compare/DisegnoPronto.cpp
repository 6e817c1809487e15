#include "analysis/compare/DisegnoPronto.h"

#include <QEvent>
#include <QPaintEvent>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr double kPrimaDellUnita = 5.0;

}  // namespace

DisegnoPronto::DisegnoPronto(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void DisegnoPronto::Sporca() {
    sporco_ = true;
    update();
}

void DisegnoPronto::paintEvent(QPaintEvent* evento) {
    const double rapporto = devicePixelRatioF();
    const QSize misura = (QSizeF(size()) * rapporto).toSize();
    if (sporco_ || foto_.size() != misura || foto_.devicePixelRatio() != rapporto) {
        foto_ = QImage(misura, QImage::Format_RGB32);
        foto_.setDevicePixelRatio(rapporto);
        foto_.fill(Fondo());
        Disegna(foto_);
        sporco_ = false;
    }
    QPainter penna(this);
    penna.setClipRegion(evento->region());
    penna.drawImage(QPointF(), foto_);
    DisegnaSopra(penna);
}

void DisegnoPronto::changeEvent(QEvent* evento) {
    QWidget::changeEvent(evento);
    switch (evento->type()) {
        case QEvent::FontChange:
        case QEvent::PaletteChange:
        case QEvent::StyleChange:
        case QEvent::EnabledChange:
            updateGeometry();
            Sporca();
            break;
        default:
            break;
    }
}

void DisegnoPronto::DisegnaInvito(QPainter& penna, const QString& frase) const {
    penna.setFont(font());
    penna.setPen(ColoriDi(*this).Text2);
    penna.drawText(QRectF(rect()).adjusted(kMargineDialogo, 0, -kMargineDialogo, 0),
                   Qt::AlignCenter | Qt::TextWordWrap, frase);
}

void DisegnoPronto::DisegnaTitolo(QPainter& penna, const QPointF& inizio, const QString& nome,
                                  const QString& unita) const {
    const QFont forte = Carattere(*this, Scrittura::Forte);
    penna.setFont(forte);
    penna.setPen(ColoriDi(*this).Text);
    penna.drawText(inizio, nome);
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    penna.setPen(ColoriDi(*this).Text2);
    const double dopo = QFontMetricsF(forte).horizontalAdvance(nome) + kPrimaDellUnita;
    penna.drawText(inizio + QPointF(dopo, 0.0), unita);
}

double DisegnoPronto::LarghezzaTitolo(const QString& nome, const QString& unita) const {
    const QFontMetricsF forte(Carattere(*this, Scrittura::Forte));
    const QFontMetricsF piccola(Carattere(*this, Scrittura::Piccola));
    return forte.horizontalAdvance(nome) + kPrimaDellUnita + piccola.horizontalAdvance(unita);
}

QString DisegnoPronto::TestoAsse(double valore, const Tacche& tacche) {
    QString testo = InQt(TestoTacca(valore, tacche, platform().DecimalSeparator()));
    if (testo.startsWith(QLatin1Char('-'))) testo[0] = QChar(0x2212);
    return testo;
}

}  // namespace lapvane
