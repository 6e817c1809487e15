#include "widgets/style/Pennello.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr double kRaggioLettera = 3.0;

double Scala(const QPainter& penna) {
    const double scala = std::abs(penna.deviceTransform().m11());
    return scala > 0.0 ? scala : 1.0;
}

}  // namespace

double Filo(const QPainter& penna, double spessore) {
    const double scala = Scala(penna);
    // At 1.5 a thin line keeps one pixel: two would be as heavy as a line of 2 at scale 1.
    return std::max(1.0, std::floor(spessore * scala + 0.4)) / scala;
}

QPointF SuiPixel(const QPainter& penna, const QPointF& punto) {
    const QTransform schermo = penna.deviceTransform();
    const QPointF p = schermo.map(punto);
    return schermo.inverted().map(QPointF(std::round(p.x()), std::round(p.y())));
}

QRectF SuiPixel(const QPainter& penna, const QRectF& posto) {
    return {SuiPixel(penna, posto.topLeft()), SuiPixel(penna, posto.bottomRight())};
}

void Riquadro(QPainter& penna, const QRectF& posto, double raggio, const QColor& fondo,
              const QColor& bordo, double spessore) {
    const double filo = bordo.isValid() ? Filo(penna, spessore) : 0.0;
    const double mezzo = filo / 2.0;
    const QRectF dentro = SuiPixel(penna, posto).adjusted(mezzo, mezzo, -mezzo, -mezzo);
    if (dentro.width() <= 0.0 || dentro.height() <= 0.0) return;
    penna.save();
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(filo > 0.0 ? QPen(bordo, filo) : QPen(Qt::NoPen));
    penna.setBrush(fondo.isValid() ? QBrush(fondo) : QBrush(Qt::NoBrush));
    const double giro = std::max(0.0, raggio - mezzo);
    if (giro > 0.0) {
        penna.drawRoundedRect(dentro, giro, giro);
    } else {
        penna.drawRect(dentro);
    }
    penna.restore();
}

void FiloBasso(QPainter& penna, const QRectF& posto, const QColor& colore, double spessore) {
    const QRectF p = SuiPixel(penna, posto);
    const double filo = Filo(penna, spessore);
    penna.fillRect(QRectF(p.left(), p.bottom() - filo, p.width(), filo), colore);
}

void FiloAlto(QPainter& penna, const QRectF& posto, const QColor& colore, double spessore) {
    const QRectF p = SuiPixel(penna, posto);
    penna.fillRect(QRectF(p.left(), p.top(), p.width(), Filo(penna, spessore)), colore);
}

void FiloSinistro(QPainter& penna, const QRectF& posto, const QColor& colore, double spessore) {
    const QRectF p = SuiPixel(penna, posto);
    penna.fillRect(QRectF(p.left(), p.top(), Filo(penna, spessore), p.height()), colore);
}

void Spezzata(QPainter& penna, std::span<const QPointF> punti, const QColor& colore,
              double spessore) {
    penna.save();
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(QPen(colore, spessore, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    penna.drawPolyline(punti.data(), static_cast<int>(punti.size()));
    penna.restore();
}

void Freccia(QPainter& penna, const QPointF& centro, Qt::ArrowType verso, const QColor& colore,
             double lato) {
    const double a = lato / 2.0;
    const double b = lato / 4.0;
    std::array<QPointF, 3> punti;
    switch (verso) {
        case Qt::UpArrow:
            punti = {QPointF(-a, b), QPointF(0, -b), QPointF(a, b)};
            break;
        case Qt::LeftArrow:
            punti = {QPointF(b, -a), QPointF(-b, 0), QPointF(b, a)};
            break;
        case Qt::RightArrow:
            punti = {QPointF(-b, -a), QPointF(b, 0), QPointF(-b, a)};
            break;
        default:
            punti = {QPointF(-a, -b), QPointF(0, b), QPointF(a, -b)};
            break;
    }
    for (QPointF& punto : punti) punto += centro;
    Spezzata(penna, punti, colore, 1.5);
}

void LetteraGiro(QPainter& penna, const QRectF& posto, const ColoreGiro& giro, const QFont& base) {
    Riquadro(penna, posto, kRaggioLettera, giro.Tinta);
    penna.save();
    penna.setFont(Carattere(base, Scrittura::Lettera));
    penna.setPen(giro.Carattere);
    penna.drawText(posto, Qt::AlignCenter | Qt::TextDontClip, QString(QLatin1Char(giro.Lettera)));
    penna.restore();
}

QColor Tinta(const QColor& a, const QColor& b, double parte) {
    const auto fra = [parte](int x, int y) { return qRound(x + (y - x) * parte); };
    return {fra(a.red(), b.red()), fra(a.green(), b.green()), fra(a.blue(), b.blue())};
}

}  // namespace lapvane
