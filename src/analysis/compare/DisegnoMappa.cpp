#include "analysis/compare/DisegnoMappa.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "shell/Protetto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kNastro = 10.0;  // width of the track
constexpr double kMolto = 0.06;   // s per 100 m
constexpr double kPoco = 0.02;
constexpr double kLargoMolto = 8.0;
constexpr double kLargoPoco = 4.0;
constexpr double kLargoUguale = 2.0;
constexpr double kLargoCanale = 7.0;
constexpr double kTraguardo = 18.0;  // length of the bar at the line
constexpr double kRaggioCursore = 6.0;
constexpr double kBordoCursore = 2.0;
constexpr double kVicino = 40.0;  // pixels from the outline
constexpr double kPassoTasti = 0.01;
constexpr int kPezzi = 4;              // of the smooth line, between two points of the outline
constexpr double kSpazioNumero = 4.0;  // between track and number

double Distanza(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// The closed outline with its corners taken off: its points lie on a coarse raster. Between two of
/// them stand `kPezzi` pieces (Catmull and Rom's curve), so that places along it stay where they
/// were.
QPolygonF Liscia(const std::vector<PuntoTracciato>& punti) {
    const std::size_t n = punti.size();
    const auto crudo = [&](std::size_t i) { return QPointF(punti[i % n].X, punti[i % n].Y); };
    std::vector<QPointF> p;
    for (std::size_t i = 0; i < n; ++i) {
        p.push_back((crudo(i + n - 1) + crudo(i) * 2.0 + crudo(i + 1)) / 4.0);
    }
    QPolygonF linea;
    for (std::size_t i = 0; i < n; ++i) {
        const QPointF &a = p[(i + n - 1) % n], &b = p[i], &c = p[(i + 1) % n], &d = p[(i + 2) % n];
        for (int k = 0; k < kPezzi; ++k) {
            const double t = static_cast<double>(k) / kPezzi;
            linea << 0.5 * (b * 2.0 + (c - a) * t + (a * 2.0 - b * 5.0 + c * 4.0 - d) * (t * t) +
                            (b * 3.0 - a - c * 3.0 + d) * (t * t * t));
        }
    }
    linea << linea.front();
    return linea;
}

/// Width and side of a step: 0 nothing is known, else how wide; negative: time is gained.
double Classe(double valore) {
    if (!std::isfinite(valore)) return 0.0;
    const double quanto = std::fabs(valore);
    if (quanto < kPoco) return 0.0;
    return (quanto > kMolto ? kLargoMolto : kLargoPoco) * (valore < 0.0 ? -1.0 : 1.0);
}

QPen Penna(const QColor& colore, double largo, Qt::PenCapStyle estremi) {
    return {colore, largo, Qt::SolidLine, estremi, Qt::RoundJoin};
}

}  // namespace

/// A word of the legend with the lines in front of it.
struct DisegnoMappa::Voce {
    QString Testo;
    QColor Colore;
    std::vector<double> Larghi;
    double Lunga = 0.0;  ///< pixels that it needs
};

DisegnoMappa::DisegnoMappa(QWidget* parent) : DisegnoPronto(parent) {
    setObjectName(QStringLiteral("mappa"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void DisegnoMappa::Imposta(DatiMappa dati) {
    dati_ = std::move(dati);
    setAccessibleName(dati_.Nome);
    linea_.clear();
    Sporca();
}

void DisegnoMappa::Cursore(double quota) {
    if (quota == cursore_) return;
    update(Intorno(cursore_));
    cursore_ = quota;
    update(Intorno(cursore_));
}

const QPolygonF& DisegnoMappa::Linea() const {
    if (!linea_.isEmpty() || dati_.Punti.size() < 2) return linea_;
    linea_ = Liscia(dati_.Punti);
    const QRectF ingombro = linea_.boundingRect();
    const double numero = dati_.Confini.empty() ? 0.0 : fontMetrics().height() + kSpazioNumero;
    const double margine = kNastro / 2.0 + 3.0 + numero;
    const QRectF posto =
        QRectF(rect()).adjusted(margine, margine, -margine, -margine - AltezzaLegenda());
    const double scala =
        std::min(std::max(posto.width(), 1.0) / std::max(ingombro.width(), 1e-9),
                 std::max(posto.height(), 1.0) / std::max(ingombro.height(), 1e-9));
    for (QPointF& punto : linea_) punto = posto.center() + (punto - ingombro.center()) * scala;
    return linea_;
}

QPointF DisegnoMappa::Posizione(double quota) const {
    const QPolygonF& linea = Linea();
    if (linea.isEmpty()) return {};
    const double pezzi = static_cast<double>(linea.size() - 1);
    const double dove = (quota - std::floor(quota)) * pezzi;
    const auto i = std::min(static_cast<qsizetype>(dove), linea.size() - 2);
    return linea[i] + (linea[i + 1] - linea[i]) * (dove - static_cast<double>(i));
}

/// The stretch of the outline between two places, `da` before `a`.
QPolygonF DisegnoMappa::Tratto(double da, double a) const {
    const double pezzi = static_cast<double>(Linea().size() - 1);
    QPolygonF tratto;
    tratto << Posizione(da);
    for (auto i = static_cast<qsizetype>(std::floor(da * pezzi)) + 1;
         static_cast<double>(i) < a * pezzi; ++i) {
        tratto << linea_[i];
    }
    tratto << (a >= 1.0 ? linea_.back() : Posizione(a));
    return tratto;
}

QRect DisegnoMappa::Intorno(double quota) const {
    if (quota < 0.0 || Linea().isEmpty()) return {};
    const double r = kRaggioCursore + kBordoCursore + 2.0;
    return QRectF(Posizione(quota) - QPointF(r, r), QSizeF(2.0 * r, 2.0 * r)).toAlignedRect();
}

void DisegnoMappa::Disegna(QImage& foto) {
    QPainter penna(&foto);
    penna.setRenderHint(QPainter::Antialiasing);
    if (Linea().isEmpty()) {
        DisegnaInvito(penna, dati_.Invito);
        return;
    }
    const Colori& c = ColoriDi(*this);
    penna.setBrush(Qt::NoBrush);
    penna.setPen(Penna(dati_.Tempo ? c.Line : c.Edge, kNastro, Qt::RoundCap));
    penna.drawPolygon(linea_);
    if (dati_.Tempo) {
        DisegnaTempo(penna);
    } else {
        DisegnaCanale(penna);
    }
    DisegnaTraguardo(penna);
    DisegnaNumeri(penna);
    if (dati_.Tempo) {
        DisegnaLegenda(penna);
    } else {
        DisegnaScala(penna);
    }
}

void DisegnoMappa::DisegnaTempo(QPainter& penna) const {
    const Colori& c = ColoriDi(*this);
    penna.setPen(Penna(c.Edge, kLargoUguale, Qt::RoundCap));
    penna.drawPolygon(linea_);
    const auto passi = dati_.Valori.size();
    const auto quota = [passi](std::size_t i) {
        return static_cast<double>(i) / static_cast<double>(passi);
    };
    for (std::size_t i = 0; i < passi;) {
        const double classe = Classe(dati_.Valori[i]);
        std::size_t fine = i + 1;
        while (fine < passi && Classe(dati_.Valori[fine]) == classe) ++fine;
        if (classe != 0.0) {
            penna.setPen(Penna(classe > 0.0 ? c.Loss : c.Gain, std::fabs(classe), Qt::FlatCap));
            penna.drawPolyline(Tratto(quota(i), quota(fine)));
        }
        i = fine;
    }
}

void DisegnoMappa::DisegnaCanale(QPainter& penna) const {
    double minimo = std::numeric_limits<double>::max();
    double massimo = std::numeric_limits<double>::lowest();
    for (const double v : dati_.Valori) {
        if (!std::isfinite(v)) continue;
        minimo = std::min(minimo, v);
        massimo = std::max(massimo, v);
    }
    const Colori& c = ColoriDi(*this);
    const double passo = 1.0 / static_cast<double>(std::max<std::size_t>(dati_.Valori.size(), 1));
    for (std::size_t i = 0; i < dati_.Valori.size(); ++i) {
        const double v = dati_.Valori[i];
        if (!std::isfinite(v)) continue;
        const double quota = massimo > minimo ? (v - minimo) / (massimo - minimo) : 0.5;
        penna.setPen(Penna(Gradazione(c, quota), kLargoCanale, Qt::RoundCap));
        const double da = static_cast<double>(i) * passo;
        penna.drawPolyline(Tratto(da, std::min(1.0, da + passo)));
    }
}

/// A bar across the track at the line.
void DisegnoMappa::DisegnaTraguardo(QPainter& penna) const {
    const QPointF verso = linea_[1] - linea_[linea_.size() - 2];
    const double lungo = std::hypot(verso.x(), verso.y());
    if (lungo <= 0.0) return;
    const QPointF traverso = QPointF(-verso.y(), verso.x()) / lungo * (kTraguardo / 2.0);
    penna.setPen(Penna(ColoriDi(*this).Text, 3.0, Qt::FlatCap));
    penna.drawLine(linea_.front() - traverso, linea_.front() + traverso);
}

/// Centre of a part's number: beside the middle of the part, on the side with more room, and away
/// from the track and from the numbers that stand already.
QPointF DisegnoMappa::PostoNumero(double da, double a, double raggio,
                                  std::span<const QPointF> altri) const {
    const double voluta = kNastro / 2.0 + kSpazioNumero + raggio;
    const QPointF centro = linea_.boundingRect().center();
    QPointF migliore;
    double avanzo = std::numeric_limits<double>::lowest();
    for (const double spostata : {0.0, -0.12, 0.12, -0.24, 0.24}) {
        const double quota = (da + a) / 2.0 + (a - da) * spostata;
        const QPointF verso = Posizione(quota + 0.003) - Posizione(quota - 0.003);
        const double lungo = std::max(std::hypot(verso.x(), verso.y()), 1e-9);
        const QPointF traverso = QPointF(-verso.y(), verso.x()) / lungo;
        for (const double lato : {voluta, -voluta}) {
            const QPointF posto = Posizione(quota) + traverso * lato;
            double libero = 2.0 * voluta;
            for (const QPointF& p : linea_) libero = std::min(libero, Distanza(p, posto));
            for (const QPointF& p : altri) {
                libero = std::min(libero, Distanza(p, posto) - 2.0 * raggio + voluta);
            }
            // The middle of the part counts more, and the side away from the middle of the track.
            libero -= std::fabs(spostata) * 8.0;
            if (Distanza(posto, centro) > Distanza(Posizione(quota), centro)) libero += 1.0;
            if (libero <= avanzo + 0.5) continue;
            avanzo = libero;
            migliore = posto;
        }
    }
    return migliore;
}

void DisegnoMappa::DisegnaNumeri(QPainter& penna) const {
    if (dati_.Confini.empty()) return;
    const Colori& c = ColoriDi(*this);
    const QFont normale = Carattere(*this, Scrittura::Piccola);
    QFont peggiore = Carattere(*this, Scrittura::Lettera);
    const QFontMetricsF misure(peggiore);
    std::vector<QPointF> posti;
    for (std::size_t i = 0; i <= dati_.Confini.size(); ++i) {
        const double da = i == 0 ? 0.0 : dati_.Confini[i - 1];
        const double a = i < dati_.Confini.size() ? dati_.Confini[i] : 1.0;
        const QString numero = QString::number(i + 1);
        const QSizeF misura(misure.horizontalAdvance(numero), misure.capHeight());
        const double raggio = std::hypot(misura.width(), misura.height()) / 2.0;
        const QPointF posto = PostoNumero(da, a, raggio, posti);
        posti.push_back(posto);
        const bool spicca = std::find(dati_.Peggiori.begin(), dati_.Peggiori.end(),
                                      static_cast<int>(i)) != dati_.Peggiori.end();
        penna.setFont(spicca ? peggiore : normale);
        penna.setPen(spicca ? c.Loss : c.Text2);
        const double largo = QFontMetricsF(penna.font()).horizontalAdvance(numero);
        penna.drawText(posto + QPointF(-largo / 2.0, misura.height() / 2.0), numero);
    }
}

std::vector<DisegnoMappa::Voce> DisegnoMappa::VociLegenda() const {
    const Colori& c = ColoriDi(*this);
    std::vector<Voce> voci = {{dati_.Perde, c.Loss, {kLargoMolto, kLargoPoco}, 0.0},
                              {dati_.Uguale, c.Edge, {kLargoUguale}, 0.0},
                              {dati_.Guadagna, c.Gain, {kLargoPoco, kLargoMolto}, 0.0}};
    const QFontMetricsF misure(Carattere(*this, Scrittura::Piccola));
    for (Voce& voce : voci) {
        voce.Lunga = static_cast<double>(voce.Larghi.size()) * 19.0 + 3.0 +
                     misure.horizontalAdvance(voce.Testo);
    }
    return voci;
}

/// One row where all words fit, else one for each.
int DisegnoMappa::RigheLegenda(const std::vector<Voce>& voci) const {
    double lunga = 2.0 * kSpazio;
    for (const Voce& voce : voci) lunga += voce.Lunga + kSpazioGruppi;
    return lunga - kSpazioGruppi > width() ? static_cast<int>(voci.size()) : 1;
}

double DisegnoMappa::AltezzaLegenda() const {
    const double riga = QFontMetricsF(Carattere(*this, Scrittura::Piccola)).height();
    return riga * (dati_.Tempo ? RigheLegenda(VociLegenda()) : 1) + kSpazio;
}

void DisegnoMappa::DisegnaLegenda(QPainter& penna) const {
    const std::vector<Voce> voci = VociLegenda();
    const bool unaRiga = RigheLegenda(voci) == 1;
    const QFont carattere = Carattere(*this, Scrittura::Piccola);
    const QFontMetricsF misure(carattere);
    double libero = width() - 2.0 * kSpazio;
    for (const Voce& voce : voci) libero -= voce.Lunga;
    const double fra = std::min(40.0, libero / 2.0);
    double x = kSpazio;
    double y = height() - AltezzaLegenda() + kSpazio / 2.0;
    penna.setFont(carattere);
    for (const Voce& voce : voci) {
        double segno = x;
        for (const double largo : voce.Larghi) {
            const QRectF posto(segno, y + misure.height() / 2.0 - largo / 2.0, 16.0, largo);
            penna.fillRect(SuiPixel(penna, posto), voce.Colore);
            segno += 19.0;
        }
        penna.setPen(ColoriDi(*this).Text2);
        penna.drawText(QPointF(segno + 3.0, y + misure.ascent()), voce.Testo);
        if (unaRiga) {
            x += voce.Lunga + fra;
        } else {
            y += misure.height();
        }
    }
}

/// The scale of a channel, from its least to its greatest value.
void DisegnoMappa::DisegnaScala(QPainter& penna) const {
    const Colori& c = ColoriDi(*this);
    const QFont carattere = Carattere(*this, Scrittura::Piccola);
    const QFontMetricsF misure(carattere);
    const double y = height() - AltezzaLegenda() + kSpazio / 2.0;
    const double destra = misure.horizontalAdvance(dati_.Massimo);
    penna.setFont(carattere);
    penna.setPen(c.Text2);
    penna.drawText(QPointF(kSpazio, y + misure.ascent()), dati_.Minimo);
    penna.drawText(QPointF(width() - kSpazio - destra, y + misure.ascent()), dati_.Massimo);
    const double da = 2.0 * kSpazio + misure.horizontalAdvance(dati_.Minimo);
    const double a = width() - 2.0 * kSpazio - destra;
    if (a - da < 24.0) return;
    const QRectF fuori(da, y + misure.height() / 2.0 - kNastro / 2.0, a - da, kNastro);
    penna.fillRect(SuiPixel(penna, fuori), c.Edge);
    const QRectF dentro = SuiPixel(penna, fuori.adjusted(1.5, 1.5, -1.5, -1.5));
    const double filo = Filo(penna);
    for (double x = dentro.left(); x < dentro.right(); x += filo) {
        const QRectF riga(x, dentro.top(), std::min(filo, dentro.right() - x), dentro.height());
        penna.fillRect(riga, Gradazione(c, (x - dentro.left()) / dentro.width()));
    }
}

void DisegnoMappa::DisegnaSopra(QPainter& penna) {
    const Colori& c = ColoriDi(*this);
    if (hasFocus()) Riquadro(penna, rect(), kRaggioControllo, {}, c.Accent, 2.0);
    if (cursore_ < 0.0 || Linea().isEmpty()) return;
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(QPen(Qt::white, kBordoCursore));
    penna.setBrush(c.Accent);
    const double raggio = kRaggioCursore + kBordoCursore / 2.0;
    penna.drawEllipse(Posizione(cursore_), raggio, raggio);
}

void DisegnoMappa::mouseMoveEvent(QMouseEvent* evento) {
    const QPointF mouse = evento->position();
    const QPolygonF& linea = Linea();
    double vicino = kVicino;
    double quota = -1.0;
    for (qsizetype i = 0; i + 1 < linea.size(); ++i) {
        const QPointF verso = linea[i + 1] - linea[i];
        const double lungo = QPointF::dotProduct(verso, verso);
        const double t =
            lungo > 0.0 ? std::clamp(QPointF::dotProduct(mouse - linea[i], verso) / lungo, 0.0, 1.0)
                        : 0.0;
        const double distanza = Distanza(mouse, linea[i] + verso * t);
        if (distanza >= vicino) continue;
        vicino = distanza;
        quota = (static_cast<double>(i) + t) / static_cast<double>(linea.size() - 1);
    }
    if (quota >= 0.0) Protetto([&] { Q_EMIT Mosso(std::min(quota, 1.0)); });
}

void DisegnoMappa::keyPressEvent(QKeyEvent* evento) {
    const bool avanti = evento->key() == Qt::Key_Right;
    if ((!avanti && evento->key() != Qt::Key_Left) || Linea().isEmpty()) {
        QWidget::keyPressEvent(evento);
        return;
    }
    const double passo = avanti ? kPassoTasti : -kPassoTasti;
    const double nuova = std::max(cursore_, 0.0) + passo;
    Cursore(nuova - std::floor(nuova));
    Protetto([&] { Q_EMIT Mosso(cursore_); });
}

void DisegnoMappa::focusInEvent(QFocusEvent* evento) {
    QWidget::focusInEvent(evento);
    update();
}

void DisegnoMappa::focusOutEvent(QFocusEvent* evento) {
    QWidget::focusOutEvent(evento);
    update();
}

void DisegnoMappa::resizeEvent(QResizeEvent* evento) {
    QWidget::resizeEvent(evento);
    linea_.clear();
}

void DisegnoMappa::changeEvent(QEvent* evento) {
    linea_.clear();  // the room of the letters may change
    DisegnoPronto::changeEvent(evento);
}

}  // namespace lapvane
