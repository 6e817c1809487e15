#include "runs/DisegnoTempi.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "analysis/compare/DisegnoNumeri.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kMargine = 12.0;
constexpr double kTacca = 8.0;   // between an axis and its figures
constexpr double kStelo = 2.0;   // width of a stick
constexpr double kRaggio = 3.5;  // of a head
constexpr double kRaggioMigliore = 5.0;
constexpr double kCima = 5.0;  // half the side of the mark of a lap that is cut
constexpr int kTaccheMassime = 5;
constexpr double kLentezza = 4.0;  // the middle lap's distance from the best, times this
constexpr double kLentezzaMinima = 0.02;
constexpr int kLaggiu = 8;  // the floor lies so many parts of the range below the best

/// "1:05", and with the decimals that the step needs.
QString TestoTaccaTempo(std::int32_t centesimi, std::int32_t passo) {
    QString testo = TempoGiro(centesimi);
    if (passo % 100 == 0)
        testo.chop(3);
    else if (passo % 10 == 0)
        testo.chop(1);
    return testo;
}

/// Hundredths between two ticks: the least step of a clock that gives at most `kTaccheMassime`.
std::int32_t PassoTempi(std::int32_t intervallo) {
    constexpr std::array<std::int32_t, 14> kPassi = {1,   2,   5,    10,   20,   50,   100,
                                                     200, 500, 1000, 1500, 3000, 6000, 12000};
    for (const std::int32_t passo : kPassi) {
        if (intervallo / passo <= kTaccheMassime) return passo;
    }
    return 60000 * (1 + intervallo / (60000 * kTaccheMassime));
}

/// What makes a text readable over sticks and lines.
void Velo(QPainter& penna, const QRectF& dove, const Colori& colori) {
    QColor fondo = colori.Base;
    fondo.setAlphaF(0.8F);
    penna.fillRect(dove, fondo);
}

}  // namespace

ScalaTempi CalcolaScalaTempi(const std::vector<TempoDisegnato>& giri) {
    std::vector<std::int32_t> tempi;
    for (const TempoDisegnato& giro : giri) {
        if (giro.Centesimi > 0) tempi.push_back(giro.Centesimi);
    }
    if (tempi.empty()) return {};
    std::sort(tempi.begin(), tempi.end());
    const std::int32_t migliore = tempi.front();
    const std::int32_t mezzo = tempi[tempi.size() / 2];
    const double lontano = std::max(kLentezza * (mezzo - migliore), kLentezzaMinima * migliore);
    const auto oltre = std::upper_bound(tempi.begin(), tempi.end(), migliore + lontano);
    const std::int32_t ultimo = *std::prev(oltre);
    ScalaTempi scala;
    const std::int32_t intervallo = std::max<std::int32_t>(ultimo - migliore, 20);
    const std::int32_t passo = PassoTempi(intervallo);
    scala.Pavimento = std::max(0, migliore - std::max(intervallo / kLaggiu, passo / 2));
    scala.Tetto = std::max(ultimo, migliore + intervallo) + intervallo / kLaggiu;
    for (std::int32_t t = (scala.Pavimento / passo + 1) * passo; t <= scala.Tetto; t += passo) {
        scala.Tacche.push_back(t);
    }
    return scala;
}

DisegnoTempi::DisegnoTempi(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("tempi"));
}

void DisegnoTempi::Imposta(std::vector<TempoDisegnato> giri, std::int32_t media,
                           const QString& parole, const QString& invito) {
    giri_ = std::move(giri);
    media_ = media;
    parole_ = parole;
    invito_ = invito;
    scala_ = CalcolaScalaTempi(giri_);
    migliore_ = 0;
    QStringList detti;
    for (const TempoDisegnato& giro : giri_) {
        if (giro.Centesimi <= 0) continue;
        if (migliore_ == 0 || giro.Centesimi < migliore_) migliore_ = giro.Centesimi;
        detti << QString::number(giro.Numero) + QLatin1Char(' ') + TempoGiro(giro.Centesimi);
    }
    setAccessibleDescription(detti.join(QStringLiteral(", ")));
    update();
}

QSize DisegnoTempi::sizeHint() const {
    return {500, 208};
}

QSize DisegnoTempi::minimumSizeHint() const {
    return {200, 5 * Misure(*this).Linea};
}

DisegnoTempi::Posto DisegnoTempi::Disponi() const {
    const QFontMetricsF piccole(Carattere(*this, Scrittura::Piccola));
    double etichetta = 0.0;
    const std::int32_t passo = scala_.Tacche.size() > 1 ? scala_.Tacche[1] - scala_.Tacche[0] : 100;
    for (const std::int32_t t : scala_.Tacche) {
        etichetta = std::max(etichetta, piccole.horizontalAdvance(TestoTaccaTempo(t, passo)));
    }
    Posto posto;
    const double alto = piccole.height();
    posto.Area = QRectF(QPointF(std::round(kMargine + etichetta + kTacca), kMargine + alto / 2),
                        QPointF(width() - kMargine, height() - kMargine / 2 - alto - kTacca));
    posto.Passo = posto.Area.width() / static_cast<double>(std::max<std::size_t>(giri_.size(), 1));
    return posto;
}

double DisegnoTempi::X(const Posto& posto, std::size_t giro) const {
    return posto.Area.left() + posto.Passo * (static_cast<double>(giro) + 0.5);
}

double DisegnoTempi::Y(const Posto& posto, std::int32_t centesimi) const {
    const double quota = static_cast<double>(centesimi - scala_.Pavimento) /
                         std::max(1, scala_.Tetto - scala_.Pavimento);
    return posto.Area.bottom() - std::min(quota, 1.0) * posto.Area.height();
}

/// Rules with their times, and below the numbers of the laps: as many as have room.
void DisegnoTempi::DisegnaAsse(QPainter& penna, const Posto& posto) const {
    const Colori& colori = ColoriDi(*this);
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    const QFontMetricsF metrica(penna.font());
    const double alto = metrica.height();
    const std::int32_t passo = scala_.Tacche.size() > 1 ? scala_.Tacche[1] - scala_.Tacche[0] : 100;
    for (const std::int32_t t : scala_.Tacche) {
        const double y = Y(posto, t);
        FiloBasso(penna, QRectF(posto.Area.left(), y - 1, posto.Area.width(), 1), colori.Grid);
        penna.setPen(colori.Text2);
        penna.drawText(QRectF(0, y - alto / 2, posto.Area.left() - kTacca, alto),
                       Qt::AlignRight | Qt::AlignVCenter, TestoTaccaTempo(t, passo));
    }
    FiloAlto(penna, QRectF(posto.Area.left(), posto.Area.bottom(), posto.Area.width(), 2),
             colori.Edge);
    double largo = 0.0;
    for (const TempoDisegnato& giro : giri_) {
        largo = std::max(largo, metrica.horizontalAdvance(QString::number(giro.Numero)));
    }
    const auto ogni = static_cast<std::size_t>(
        std::max(1.0, std::ceil((largo + kSpazio) / std::max(posto.Passo, 0.1))));
    penna.setPen(colori.Text2);
    for (std::size_t i = 0; i < giri_.size(); i += ogni) {
        penna.drawText(
            QRectF(X(posto, i) - largo, posto.Area.bottom() + kTacca / 2, 2 * largo, alto),
            Qt::AlignCenter, QString::number(giri_[i].Numero));
    }
}

void DisegnoTempi::DisegnaGiri(QPainter& penna, const Posto& posto) const {
    const Colori& colori = ColoriDi(*this);
    const double stelo = std::min(kStelo, posto.Passo / 2);
    penna.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < giri_.size(); ++i) {
        const std::int32_t tempo = giri_[i].Centesimi;
        if (tempo <= 0) continue;
        const QPointF testa(X(posto, i), Y(posto, tempo));
        penna.fillRect(
            QRectF(testa.x() - stelo / 2, testa.y(), stelo, posto.Area.bottom() - testa.y()),
            colori.Line);
        if (tempo > scala_.Tetto) {
            penna.setBrush(colori.Warn);
            penna.drawPolygon(QPolygonF({testa + QPointF(0, -kCima), testa + QPointF(kCima, kCima),
                                         testa + QPointF(-kCima, kCima)}));
            continue;
        }
        const bool migliore = tempo == migliore_;
        penna.setBrush(migliore ? colori.Ok : colori.Text2);
        const double raggio =
            std::min(migliore ? kRaggioMigliore : kRaggio, std::max(1.0, posto.Passo / 2));
        penna.drawEllipse(testa, raggio, raggio);
    }
}

void DisegnoTempi::DisegnaMedia(QPainter& penna, const Posto& posto) const {
    if (media_ <= 0 || media_ > scala_.Tetto) return;
    const Colori& colori = ColoriDi(*this);
    const double y = Y(posto, media_);
    penna.setPen(QPen(colori.Accent, 1.2, Qt::DashLine));
    penna.drawLine(QPointF(posto.Area.left(), y), QPointF(posto.Area.right(), y));
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    const QFontMetricsF metrica(penna.font());
    // Below its line, where no head of the laps that made it can be higher; on a ground of its own.
    QRectF dove(posto.Area.left() + 4, y + 2, metrica.horizontalAdvance(parole_) + 4,
                metrica.height());
    if (dove.bottom() > posto.Area.bottom()) dove.moveBottom(y - 2);
    Velo(penna, dove, colori);
    penna.setPen(colori.Accent);
    penna.drawText(dove, Qt::AlignCenter, parole_);
}

/// The time of a lap beside or above its head.
void DisegnoTempi::DisegnaTempo(QPainter& penna, const Posto& posto, std::size_t giro) const {
    const Colori& colori = ColoriDi(*this);
    const std::int32_t tempo = giri_[giro].Centesimi;
    const bool tagliato = tempo > scala_.Tetto;
    const QFontMetricsF metrica(penna.font());
    const QString testo = TempoGiro(tempo);
    QRectF dove(0, 0, metrica.horizontalAdvance(testo) + 4, metrica.height());
    const QPointF testa(X(posto, giro), Y(posto, tempo));
    if (tagliato) {
        dove.moveCenter(testa);
        dove.moveLeft(testa.x() + kCima + 2);
        if (dove.right() > width()) dove.moveRight(testa.x() - kCima - 2);
    } else {
        dove.moveCenter(testa);
        dove.moveBottom(testa.y() - kRaggioMigliore - 1);
        dove.moveLeft(std::clamp(dove.left(), posto.Area.left(),
                                 std::max(posto.Area.left(), width() - dove.width())));
    }
    Velo(penna, dove, colori);
    penna.setPen(tagliato ? colori.Warn : colori.Ok);
    penna.drawText(dove, Qt::AlignCenter, testo);
}

void DisegnoTempi::paintEvent(QPaintEvent*) {
    const Colori& colori = ColoriDi(*this);
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    if (migliore_ == 0) {
        penna.setPen(colori.Text2);
        penna.drawText(rect().adjusted(kSpazio, kSpazio, -kSpazio, -kSpazio),
                       Qt::AlignCenter | Qt::TextWordWrap, invito_);
        return;
    }
    const Posto posto = Disponi();
    if (posto.Area.width() < 20 || posto.Area.height() < 20) return;
    DisegnaAsse(penna, posto);
    DisegnaGiri(penna, posto);
    DisegnaMedia(penna, posto);
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    const double largo = QFontMetricsF(penna.font()).horizontalAdvance(TempoGiro(migliore_));
    double libero = posto.Area.left();  // where the next time of a lap that is cut has room
    for (std::size_t i = 0; i < giri_.size(); ++i) {
        if (giri_[i].Centesimi <= scala_.Tetto || X(posto, i) < libero) continue;
        DisegnaTempo(penna, posto, i);
        libero = X(posto, i) + largo + 3 * kCima;
    }
    penna.setFont(Carattere(penna.font(), Scrittura::Forte));
    for (std::size_t i = 0; i < giri_.size(); ++i) {
        if (giri_[i].Centesimi == migliore_) return DisegnaTempo(penna, posto, i);
    }
}

std::optional<std::size_t> DisegnoTempi::GiroA(const QPointF& punto) const {
    const Posto posto = Disponi();
    if (migliore_ == 0 || punto.x() < posto.Area.left() || posto.Passo <= 0.0) return std::nullopt;
    const auto giro = static_cast<std::size_t>((punto.x() - posto.Area.left()) / posto.Passo);
    if (giro >= giri_.size() || giri_[giro].Centesimi <= 0) return std::nullopt;
    return giro;
}

bool DisegnoTempi::event(QEvent* evento) {
    if (evento->type() != QEvent::ToolTip) return QWidget::event(evento);
    const auto* chiede = static_cast<QHelpEvent*>(evento);
    if (const auto giro = GiroA(chiede->pos())) {
        QToolTip::showText(chiede->globalPos(),
                           InQt(Testo(Voce::RigaGiro)) + QString::number(giri_[*giro].Numero) +
                               QStringLiteral(": ") + TempoGiro(giri_[*giro].Centesimi),
                           this);
    } else {
        QToolTip::hideText();
    }
    return true;
}

}  // namespace lapvane
