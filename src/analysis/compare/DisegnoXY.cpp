#include "analysis/compare/DisegnoXY.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kPunto = 3.0;  // a dot
constexpr double kPuntoRiferimento = 4.0;
constexpr double kTrattoPunto = 0.01;  // pixels of the screen
constexpr double kTratto = 1.4;
constexpr double kTrattoFuoco = 2.0;
constexpr double kTrattoRiferimento = 2.8;
constexpr double kRespiro = 0.03;  // of the range, at each end
constexpr double kRaggioAnello = 7.0;
constexpr double kMargine = 12.0;
constexpr int kTaccheMassime = 10;
constexpr double kTacca = 6.0;  // between an axis and its figures

/// The range with room at both ends; that of one value gets some width.
void Allarga(double& da, double& a) {
    double respiro = (a - da) * kRespiro;
    if (respiro <= 0.0) respiro = std::max(1.0, std::fabs(da) * kRespiro);
    da -= respiro;
    a += respiro;
}

}  // namespace

/// Where everything goes for the present size and points.
struct DisegnoXY::Disposizione {
    QRectF Area;  ///< empty: there is nothing to show
    ScalaPixel X;
    ScalaPixel Y;
    Tacche TaccheX;
    Tacche TaccheY;
    double Legenda = 0.0;  ///< its left edge
};

DisegnoXY::DisegnoXY(QWidget* parent) : DisegnoPronto(parent) {
    setObjectName(QStringLiteral("xy"));
}

void DisegnoXY::Imposta(DatiXY dati) {
    dati_ = std::move(dati);
    setAccessibleName(dati_.Y.Nome + QStringLiteral(" / ") + dati_.X.Nome);
    cursore_.reset();
    disposta_.reset();
    Sporca();
}

void DisegnoXY::Cursore(std::optional<PuntoGrafico> punto) {
    if (punto == cursore_) return;
    update(Intorno());
    cursore_ = punto;
    update(Intorno());
}

bool DisegnoXY::Intervallo(double& xMin, double& xMax, double& yMin, double& yMax) const {
    xMin = yMin = std::numeric_limits<double>::max();
    xMax = yMax = std::numeric_limits<double>::lowest();
    for (const SerieXY& serie : dati_.Serie) {
        for (std::size_t i = 0; i < serie.Punti.X.size(); ++i) {
            const double x = serie.Punti.X[i], y = serie.Punti.Y[i];
            if (!std::isfinite(x) || !std::isfinite(y)) continue;
            xMin = std::min(xMin, x);
            xMax = std::max(xMax, x);
            yMin = std::min(yMin, y);
            yMax = std::max(yMax, y);
        }
    }
    if (xMax < xMin) return false;
    Allarga(xMin, xMax);
    Allarga(yMin, yMax);
    return true;
}

double DisegnoXY::LarghezzaLegenda() const {
    const QFontMetricsF misure(font());
    double testo =
        QFontMetricsF(Carattere(*this, Scrittura::Piccola)).horizontalAdvance(dati_.Nota);
    for (const SerieXY& serie : dati_.Serie) {
        testo =
            std::max(testo, Misure(*this).Lettera + kSpazio + misure.horizontalAdvance(serie.Nome));
    }
    return testo;
}

double DisegnoXY::LarghezzaEtichette(const Tacche& tacche) const {
    const QFontMetricsF piccole(Carattere(*this, Scrittura::Piccola));
    double larga = 0.0;
    for (const double v : tacche.Valori) {
        larga = std::max(larga, piccole.horizontalAdvance(TestoAsse(v, tacche)));
    }
    return larga;
}

const DisegnoXY::Disposizione& DisegnoXY::Disposta() const {
    if (disposta_) return *disposta_;
    auto d = std::make_shared<Disposizione>();
    disposta_ = d;
    if (!Intervallo(d->X.Da, d->X.A, d->Y.Da, d->Y.A)) return *d;
    const QFontMetricsF piccole(Carattere(*this, Scrittura::Piccola));
    const double riga = fontMetrics().height();
    const double legenda = LarghezzaLegenda() + 2.0 * kSpazioGruppi;
    // How many labels there are is not known before the side is: as for the most.
    d->TaccheY = CalcolaTacche(d->Y.Da, d->Y.A, kTaccheMassime);
    const double etichetta = LarghezzaEtichette(d->TaccheY);
    const double sopra = kMargine + riga + 4.0;
    const double sotto = kTacca + piccole.height() + 2.0 + riga + kSpazio;
    const double largo = width() - 2.0 * kMargine - etichetta - kTacca - legenda;
    const double lato = std::floor(std::max(40.0, std::min(largo, height() - sopra - sotto)));
    const double resto = std::max(0.0, largo - lato);
    d->Area = QRectF(std::round(kMargine + etichetta + kTacca + resto / 2.0), std::round(sopra),
                     lato, lato);
    d->Legenda = d->Area.right() + kSpazioGruppi;
    d->X.PixelDa = d->Area.left();
    d->X.PixelA = d->Area.right();
    d->Y.PixelDa = d->Area.bottom();
    d->Y.PixelA = d->Area.top();
    const auto quante = [lato](double posto) {
        return static_cast<int>(std::clamp(lato / posto, 2.0, double{kTaccheMassime}));
    };
    d->TaccheX = CalcolaTacche(d->X.Da, d->X.A, 6);
    const double larga = LarghezzaEtichette(d->TaccheX);
    d->TaccheX = CalcolaTacche(d->X.Da, d->X.A, quante(larga + kSpazio));
    d->TaccheY = CalcolaTacche(d->Y.Da, d->Y.A, quante(1.6 * riga));
    return *d;
}

QPointF DisegnoXY::Posizione(const PuntoGrafico& punto) const {
    const Disposizione& d = Disposta();
    return {d.X.Pixel(punto.X), d.Y.Pixel(punto.Y)};
}

QRect DisegnoXY::Intorno() const {
    if (!cursore_ || Disposta().Area.isEmpty()) return {};
    const double r = kRaggioAnello + 3.0;
    return QRectF(Posizione(*cursore_) - QPointF(r, r), QSizeF(2.0 * r, 2.0 * r)).toAlignedRect();
}

/// The reference lies at the bottom, the lap in focus on top.
std::vector<const SerieXY*> DisegnoXY::InOrdine() const {
    std::vector<const SerieXY*> ordine;
    for (const SerieXY& serie : dati_.Serie) ordine.push_back(&serie);
    const auto piano = [this](const SerieXY* s) {
        const char lettera = s->Punti.Lettera;
        return lettera == kRiferimento ? 0 : lettera == dati_.Fuoco ? 2 : 1;
    };
    std::stable_sort(ordine.begin(), ordine.end(),
                     [&](const SerieXY* a, const SerieXY* b) { return piano(a) < piano(b); });
    return ordine;
}

void DisegnoXY::Disegna(QImage& foto) {
    {
        QPainter penna(&foto);
        if (Disposta().Area.isEmpty()) {
            DisegnaInvito(penna, dati_.Invito);
            return;
        }
        DisegnaAssi(penna);
        DisegnaLegenda(penna);
    }
    DisegnaSerie(foto);
}

void DisegnoXY::DisegnaAssi(QPainter& penna) const {
    const Disposizione& d = Disposta();
    const Colori& c = ColoriDi(*this);
    const QFont piccolo = Carattere(*this, Scrittura::Piccola);
    const QFontMetricsF misure(piccolo);
    const QFontMetricsF normali(font());
    penna.setFont(piccolo);
    penna.setPen(c.Text2);
    for (const double v : d.TaccheX.Valori) {
        const double x = d.X.Pixel(v);
        FiloSinistro(penna, QRectF(x, d.Area.top(), 1.0, d.Area.height()), c.Grid);
        const QString testo = TestoAsse(v, d.TaccheX);
        penna.drawText(QPointF(x - misure.horizontalAdvance(testo) / 2.0,
                               d.Area.bottom() + kTacca + misure.ascent()),
                       testo);
    }
    for (const double v : d.TaccheY.Valori) {
        const double y = d.Y.Pixel(v);
        FiloAlto(penna, QRectF(d.Area.left(), y, d.Area.width(), 1.0), c.Grid);
        const QString testo = TestoAsse(v, d.TaccheY);
        penna.drawText(QPointF(d.Area.left() - kTacca - misure.horizontalAdvance(testo),
                               y + misure.capHeight() / 2.0),
                       testo);
    }
    const double filo = Filo(penna);
    FiloSinistro(penna, d.Area.adjusted(-filo, 0, 0, filo), c.Edge);
    FiloBasso(penna, d.Area.adjusted(-filo, 0, 0, filo), c.Edge);
    DisegnaTitolo(penna, d.Area.topLeft() - QPointF(0.0, 4.0 + normali.descent()), dati_.Y.Nome,
                  dati_.Y.Unita);
    const double largo = LarghezzaTitolo(dati_.X.Nome, dati_.X.Unita);
    DisegnaTitolo(penna,
                  QPointF(std::max(kMargine, d.Area.right() - largo),
                          d.Area.bottom() + kTacca + misure.height() + 2.0 + normali.ascent()),
                  dati_.X.Nome, dati_.X.Unita);
}

/// Lines and dots alike: a dot is a line too short to be seen, with round ends.
void DisegnoXY::DisegnaSerie(QImage& foto) {
    const Colori& c = ColoriDi(*this);
    const double rapporto = foto.devicePixelRatio();
    tracciatore_.Inizia({reinterpret_cast<std::uint32_t*>(foto.bits()), foto.bytesPerLine() / 4},
                        {0, 0, foto.width(), foto.height()});
    Tratto tratto;
    for (const SerieXY* serie : InOrdine()) {
        const PuntiXY& p = serie->Punti;
        const double largo = Larghezza(p.Lettera) * rapporto;
        const auto chiudi = [&] {
            if (tratto.size() > 1)
                tracciatore_.Linea(tratto, largo, GiroDi(c, p.Lettera).Tinta.rgb());
            tratto.clear();
        };
        for (std::size_t i = 0; i < p.X.size(); ++i) {
            if (!std::isfinite(p.X[i]) || !std::isfinite(p.Y[i])) {
                chiudi();
                continue;
            }
            const QPointF dove = Posizione({p.X[i], p.Y[i]}) * rapporto;
            tratto.push_back({dove.x(), dove.y()});
            if (dati_.Linea) continue;
            tratto.push_back({dove.x() + kTrattoPunto, dove.y()});
            chiudi();
        }
        chiudi();
    }
    tracciatore_.Traccia();
}

/// Of a lap's line or dots. What lies on the reference leaves a rim of it.
double DisegnoXY::Larghezza(char lettera) const {
    const bool riferimento = lettera == kRiferimento;
    if (!dati_.Linea) return riferimento ? kPuntoRiferimento : kPunto;
    if (riferimento) return kTrattoRiferimento;
    return lettera == dati_.Fuoco ? kTrattoFuoco : kTratto;
}

void DisegnoXY::DisegnaLegenda(QPainter& penna) const {
    const Disposizione& d = Disposta();
    const Colori& c = ColoriDi(*this);
    const Misure m(*this);
    double y = d.Area.top();
    for (const SerieXY& serie : dati_.Serie) {
        LetteraGiro(penna, QRectF(d.Legenda, y, m.Lettera, m.Lettera),
                    GiroDi(c, serie.Punti.Lettera), font());
        penna.setFont(font());
        penna.setPen(c.Text);
        penna.drawText(QRectF(d.Legenda + m.Lettera + kSpazio, y, width(), m.Lettera),
                       Qt::AlignLeft | Qt::AlignVCenter, serie.Nome);
        y += m.Lettera + kGriglia;
    }
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    penna.setPen(c.Text2);
    penna.drawText(QRectF(d.Legenda, y + kSpazio, width(), m.Linea), Qt::AlignLeft | Qt::AlignTop,
                   dati_.Nota);
}

void DisegnoXY::DisegnaSopra(QPainter& penna) {
    if (!cursore_ || Disposta().Area.isEmpty()) return;
    const Colori& c = ColoriDi(*this);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setBrush(Qt::NoBrush);
    // A rim of the ground parts the ring from the dots below it.
    for (const auto& [colore, largo] : {std::pair{c.Plot, 4.0}, {c.Accent, 2.0}}) {
        penna.setPen(QPen(colore, largo));
        penna.drawEllipse(Posizione(*cursore_), kRaggioAnello, kRaggioAnello);
    }
}

void DisegnoXY::resizeEvent(QResizeEvent* evento) {
    DisegnoPronto::resizeEvent(evento);
    disposta_.reset();
}

void DisegnoXY::changeEvent(QEvent* evento) {
    disposta_.reset();
    DisegnoPronto::changeEvent(evento);
}

}  // namespace lapvane
