#include "reports/DisegnoTracciato.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/Colore.h"
#include "platform/qt/ConversioniQt.h"

namespace lapvane {

namespace {

constexpr double kMargine = 14.0;  // room for pen, cross and marker
constexpr double kCroceMinima = 5.0;
constexpr double kRaggioMarcatore = 7.0;
constexpr double kPuntiNumeri = 12.0;

constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kVerde = Rgb(0, 255, 0);
constexpr Colore kGiallo = Rgb(255, 255, 0);

/// Centre of a number beside point `n` of the line: across the line there, on the side that lies
/// further from the rest of the outline.
QPointF PostoNumero(const QPolygonF& linea, qsizetype n, double distanza) {
    const QPointF& punto = linea[n];
    const QPointF verso =
        linea[std::min(n + 1, linea.size() - 1)] - linea[std::max<qsizetype>(n - 1, 0)];
    const double lunghezza = std::hypot(verso.x(), verso.y());
    const QPointF traverso = lunghezza > 0.0 ? QPointF(-verso.y(), verso.x()) / lunghezza * distanza
                                             : QPointF(distanza, 0.0);
    const auto spazio = [&](const QPointF& posto) {
        double minimo = std::numeric_limits<double>::max();
        for (const QPointF& altro : linea) {
            const QPointF via = altro - posto;
            minimo = std::min(minimo, std::hypot(via.x(), via.y()));
        }
        return minimo;
    };
    const QPointF da = punto + traverso;
    const QPointF a = punto - traverso;
    const double spazioDa = spazio(da);
    const double spazioA = spazio(a);
    if (std::fabs(spazioDa - spazioA) > 1.0) return spazioDa > spazioA ? da : a;
    // Both sides are free: the one away from the middle.
    const QPointF centro = linea.boundingRect().center();
    const auto lontano = [&](const QPointF& p) {
        return std::hypot(p.x() - centro.x(), p.y() - centro.y());
    };
    return lontano(da) >= lontano(a) ? da : a;
}

}  // namespace

DisegnoTracciato::DisegnoTracciato(QWidget* parent) : QFrame(parent) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void DisegnoTracciato::ImpostaPunti(std::vector<PuntoTracciato> punti) {
    punti_ = std::move(punti);
    tratti_.clear();
    marcatore_ = -1;
    update();
}

void DisegnoTracciato::Settori(std::span<const std::int32_t> lunghezze, double lunghezzaTracciato) {
    tratti_ = TrattiDeiSettori(lunghezze, static_cast<int>(punti_.size()), lunghezzaTracciato);
    update();
}

void DisegnoTracciato::Marcatore(int n) {
    const int nuovo = n >= 0 && n < static_cast<int>(punti_.size()) ? n : -1;
    if (nuovo == marcatore_) return;
    marcatore_ = nuovo;
    update();
}

void DisegnoTracciato::Tratto(int spessore, bool croce) {
    spessore_ = spessore;
    croce_ = croce;
    update();
}

QFont DisegnoTracciato::CarattereNumeri() const {
    QFont carattere = font();
    carattere.setBold(true);
    carattere.setPointSizeF(kPuntiNumeri);
    return carattere;
}

/// Fits the outline into the widget, centred, with one scale for both directions. Returns that
/// scale, pixels a unit of the file.
double DisegnoTracciato::Linea(QPolygonF& punti) const {
    punti.clear();
    if (punti_.empty()) return 1.0;
    for (const PuntoTracciato& punto : punti_) punti << QPointF(punto.X, punto.Y);
    const double numeri =
        tratti_.empty() ? 0.0
                        : QFontMetricsF(CarattereNumeri()).horizontalAdvance(QStringLiteral("15"));
    const double margine = kMargine + numeri;
    const QRectF posto = QRectF(contentsRect()).adjusted(margine, margine, -margine, -margine);
    const QRectF ingombro = punti.boundingRect();
    double scala = 1.0;
    if (ingombro.width() > 0.0) scala = std::max(posto.width(), 1.0) / ingombro.width();
    if (ingombro.height() > 0.0) {
        const double altra = std::max(posto.height(), 1.0) / ingombro.height();
        scala = ingombro.width() > 0.0 ? std::min(scala, altra) : altra;
    }
    for (QPointF& punto : punti) punto = posto.center() + (punto - ingombro.center()) * scala;
    return scala;
}

QPointF DisegnoTracciato::Posizione(int n) const {
    QPolygonF linea;
    Linea(linea);
    return linea.value(n);
}

void DisegnoTracciato::paintEvent(QPaintEvent* evento) {
    QFrame::paintEvent(evento);
    QPolygonF linea;
    const double scala = Linea(linea);
    if (linea.isEmpty()) return;
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setClipRect(contentsRect());
    const QColor testo = palette().color(QPalette::Text);
    QPen tratto(testo, spessore_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    const auto disegna = [&](qsizetype da, qsizetype a) {
        if (a > da) penna.drawPolyline(linea.constData() + da, static_cast<int>(a - da + 1));
    };
    penna.setPen(tratto);
    qsizetype resto = 0;
    for (const TrattoSettore& t : tratti_) {
        tratto.setColor(InQColor(t.Settore % 2 != 0 ? kRosso : kVerde));
        penna.setPen(tratto);
        disegna(t.Inizio, t.Fine);
        resto = t.Fine;
    }
    // What no sector covers, and the way back to the first point, in the last colour.
    const qsizetype ultimo = linea.size() - 1;
    disegna(resto, ultimo);
    if (ultimo > 0) penna.drawLine(linea[ultimo], linea[0]);

    if (croce_) {
        // Yellow needs a dark rim on a light ground.
        const double braccio = std::max(scala, kCroceMinima);
        const QPointF su(braccio, braccio);
        const QPointF giu(braccio, -braccio);
        for (const auto& [colore, spessore] : {std::pair{QColor(Qt::black), spessore_ + 1.5},
                                               {InQColor(kGiallo), spessore_ - 1.0}}) {
            penna.setPen(QPen(colore, std::max(spessore, 1.0), Qt::SolidLine, Qt::RoundCap));
            penna.drawLine(linea[0] - su, linea[0] + su);
            penna.drawLine(linea[0] - giu, linea[0] + giu);
        }
    }

    penna.setFont(CarattereNumeri());
    penna.setPen(testo);
    const QFontMetricsF misure(CarattereNumeri());
    for (const TrattoSettore& t : tratti_) {
        const QString numero = QString::number(t.Settore + 1);
        const QSizeF misura(misure.horizontalAdvance(numero), misure.capHeight());
        const double distanza = std::hypot(misura.width(), misura.height()) / 2.0 + spessore_ + 3.0;
        const QPointF centro =
            PostoNumero(linea, std::min<qsizetype>(t.Inizio + 1, ultimo), distanza);
        penna.drawText(centro + QPointF(-misura.width() / 2.0, misura.height() / 2.0), numero);
    }

    if (marcatore_ >= 0) {
        penna.setPen(QPen(palette().color(QPalette::Base), 2.0));
        penna.setBrush(InQColor(kRosso));
        penna.drawEllipse(linea[marcatore_], kRaggioMarcatore, kRaggioMarcatore);
    }
}

}  // namespace lapvane
