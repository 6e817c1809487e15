// How the graph is painted: layout of its parts, panes, axes, curves, legend, cursor.
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Contrasto.h"
#include "widgets/GraficoWidget.h"
#include "widgets/Scrittore.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr double kRespiro = 0.04;  // of the range, on each side of curves with marks
constexpr double kSegno = 7.0;     // width of a mark
constexpr double kMargine = 10.0;
constexpr double kPassoTacche = 1.7;      // lines of text a number of the y axis has, at least
constexpr double kTacca = 5.0;            // length of a tick
constexpr double kAsse = 2.0;             // width of a y axis
constexpr double kSpazioRiquadri = 14.0;  // between separate panes
constexpr double kContrastoLinea = 1.9;   // keeps all colours of the channels as they are
constexpr double kContrastoTesto = 4.5;
constexpr double kContrastoAsse = 3.0;
constexpr double kTratto = 1.5;     // pixels of a line of width 1: a hairline is lost in the sun
constexpr double kTrattoBox = 2.7;  // the same in the pit lane
constexpr double kTrattoCarta = 1.0;
constexpr int kSpessoreMassimo = 20;
constexpr double kLontano = 2000.0;  // pixels
constexpr double kLarghezzaCursore = 2.0;
constexpr double kCursoreCarta = 0.8;
constexpr double kFuoco = 2.0;  // width of the mark of the focus
constexpr int kRigheLegenda = 3;
constexpr double kVelo = 0.10;            // of the zoom rectangle
constexpr std::size_t kPuntiFila = 64;    // of one path on paper
constexpr double kLarghezzaCarta = 1000;  // pixels that a printed page stands for ...
constexpr double kAltezzaCarta = 640;
constexpr int kCarattereCarta = 13;  // ... and its letters
constexpr double kFiloCarta = 0.4;
constexpr double kRientroLivello = 8.0;  // of a level's name from the axis
constexpr double kAriaLivello = 1.3;     // lines of text between two levels, at least

Colore Tenue(Colore sfondo, Colore inchiostro, double parte) {
    const auto componente = [&](int s) {
        const double a = (sfondo >> s) & 0xFFu;
        const double b = (inchiostro >> s) & 0xFFu;
        return static_cast<unsigned>(std::lround(a + (b - a) * parte));
    };
    return Rgb(componente(0), componente(8), componente(16));
}

std::uint32_t Pixel(Colore colore) {
    return InQColor(colore).rgb();
}

Tracciatore::Tela TelaDi(QImage& foto) {
    return {reinterpret_cast<std::uint32_t*>(foto.bits()), foto.bytesPerLine() / 4};
}

/// Where the curves of a pane run, in the picture's own pixels: the frame belongs to it, but not
/// the axis.
Tracciatore::Campo CampoDi(const QImage& foto, const QRectF& area) {
    const double r = foto.devicePixelRatio();
    const QRectF a(area.topLeft() * r, area.size() * r);
    const auto fra = [](double v, int oltre, int fine) {
        return std::clamp(static_cast<int>(std::lround(v)) + oltre, 0, fine);
    };
    return {fra(a.left(), 0, foto.width()), fra(a.top(), -1, foto.height()),
            fra(a.right(), 1, foto.width()), fra(a.bottom(), 1, foto.height())};
}

/// Where a painter over a whole graph of so many pixels puts the first of them, if they may be
/// written there as they are; else null. `x`, `y` of the result are those of the picture.
Tracciatore::Tela TelaSotto(const QPainter& penna, const QSize& pixel, double rapporto) {
    const QPaintEngine* const motore = penna.paintEngine();
    if (motore == nullptr || motore->type() != QPaintEngine::Raster) return {};
    auto* const sotto = dynamic_cast<QImage*>(motore->paintDevice());
    if (sotto == nullptr || !sotto->isDetached()) return {};
    if (sotto->format() != QImage::Format_RGB32 &&
        sotto->format() != QImage::Format_ARGB32_Premultiplied) {
        return {};
    }
    const QTransform t = penna.deviceTransform();
    const QRect qui(QPoint(qRound(t.dx()), qRound(t.dy())), pixel);
    if (t.type() > QTransform::TxScale || t.m11() != rapporto || t.m22() != rapporto ||
        t.dx() != qui.x() || t.dy() != qui.y() || !sotto->rect().contains(qui)) {
        return {};
    }
    const QRegion lecito = motore->systemClip();
    if (!lecito.isEmpty() && !QRegion(qui).subtracted(lecito).isEmpty()) return {};
    Tracciatore::Tela tela = TelaDi(*sotto);
    tela.Pixel += qui.y() * tela.Passo + qui.x();
    return tela;
}

/// Times the width of a thin line.
double Spessore(std::int16_t spessore) {
    return std::clamp<int>(spessore, 1, kSpessoreMassimo);
}

}  // namespace

/// What the graph is drawn on, and in which colours.
struct GraficoWidget::Foglio {
    QSizeF Misura;
    double Rapporto = 1.0;  ///< device pixels per pixel; 0: no pixels, but paper
    double Filo = 1.0;      ///< width of the thinnest line
    Colore Sfondo = 0;
    Colore Testo = 0;
    Scrittore* Penna = nullptr;
    /// The fields of the curves, in the screen's own pixels, when their ground is laid along with
    /// these, and that ground; else neither.
    std::vector<Tracciatore::Campo> Campi;
    std::vector<Tracciatore::Macchia> Fondo;

    /// An area of one colour: what lies in a field is put down for its ground.
    void Riempi(QPainter& penna, const QRectF& area, const QColor& tinta) {
        if (!Campi.empty()) {
            // As QPainter rounds.
            const QRectF r(area.topLeft() * Rapporto, area.size() * Rapporto);
            const Tracciatore::Campo qui{qRound(r.left()), qRound(r.top()), qRound(r.right()),
                                         qRound(r.bottom())};
            Fondo.push_back({qui, tinta.rgb()});
            for (const Tracciatore::Campo& c : Campi) {
                if (qui.Sinistra >= c.Sinistra && qui.Destra <= c.Destra && qui.Alto >= c.Alto &&
                    qui.Basso <= c.Basso) {
                    return;
                }
            }
        }
        penna.fillRect(area, tinta);
    }

    bool Carta() const { return Rapporto <= 0.0; }
    double SuPixel(double v) const { return Carta() ? v : std::round(v * Rapporto) / Rapporto; }
    /// The thinnest frame round an area.
    QRectF Intorno(const QRectF& area) const { return area.adjusted(-Filo, -Filo, Filo, Filo); }
    /// A thin line at `x` or `y`: on the screen one row or column of its own pixels.
    QRectF Verticale(double x, double da, double a, double spessore) const {
        return {Inizio(x, spessore), da, Spesso(spessore), a - da};
    }
    QRectF Orizzontale(double y, double da, double a, double spessore) const {
        return {da, Inizio(y, spessore), a - da, Spesso(spessore)};
    }

 private:
    double Spesso(double spessore) const {
        return Carta() ? spessore : std::max(1.0, std::round(spessore * Rapporto)) / Rapporto;
    }
    double Inizio(double dove, double spessore) const {
        if (Carta()) return dove - spessore / 2.0;
        const double pixel = Spesso(spessore) * Rapporto;
        return std::floor(dove * Rapporto - (pixel - 1.0) / 2.0) / Rapporto;
    }
};

/// Where everything goes for the present size, texts and ranges.
struct GraficoWidget::Disposizione {
    struct RigaAsse {
        double Valore = 0.0;  ///< in the units of the axis
        QString Testo;
    };
    struct Pannello {
        QRectF Area;
        Riquadro Dati;
        std::vector<RigaAsse> Tacche;
    };
    struct VoceLegenda {
        QRectF Segno;
        QRectF Posto;
        QString Testo;
        Colore Tinta = 0;
    };
    QSizeF Misura;
    double Rapporto = 1.0;
    std::vector<Pannello> Pannelli;
    std::vector<RigaAsse> TaccheX;
    std::vector<VoceLegenda> Legenda;
    std::vector<RigaAsse> Livelli;  ///< in the order of `livelli_`
    double LarghezzaY = 0.0;        ///< of the widest label
    QRectF Titolo;
    QRectF EtichettaX;
};

// Here, where the types of the members are known.
GraficoWidget::GraficoWidget(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

GraficoWidget::~GraficoWidget() = default;

void GraficoWidget::Sporca() {
    sporco_ = true;
    disposta_.reset();
    update();
}

void GraficoWidget::SporcaMisure() {
    scrittore_.reset();
    Sporca();
}

std::vector<GraficoWidget::Riquadro> GraficoWidget::Riquadri() const {
    return separati_.empty() ? std::vector<Riquadro>{unico_} : separati_;
}

Colore GraficoWidget::Sfondo() const {
    return sfondo_ ? *sfondo_ : DaQColor(palette().color(QPalette::Base));
}

GraficoWidget::Foglio GraficoWidget::Schermo(double rapporto) const {
    if (!scrittore_ || scrittore_->Rapporto() != rapporto) {
        scrittore_ = std::make_unique<Scrittore>(font(), rapporto);
    }
    Foglio f;
    f.Misura = size();
    f.Rapporto = rapporto;
    f.Filo = 1.0 / rapporto;
    f.Sfondo = Sfondo();
    f.Testo = ColoreLeggibile(DaQColor(palette().color(QPalette::Text)), f.Sfondo, kContrastoTesto);
    f.Penna = scrittore_.get();
    return f;
}

const GraficoWidget::Disposizione& GraficoWidget::Disposta(double rapporto) const {
    if (!disposta_ || disposta_->Misura != QSizeF(size()) || disposta_->Rapporto != rapporto) {
        Foglio foglio = Schermo(rapporto);
        disposta_ = std::make_unique<Disposizione>(Disponi(foglio));
    }
    return *disposta_;
}

void GraficoWidget::DisponiLegenda(Foglio& foglio, Disposizione& d, double& alto) const {
    const double riga = foglio.Penna->Riga() * 1.2;
    const double segno = foglio.Penna->Riga() * 1.4;
    const double destra = foglio.Misura.width() - kMargine;
    double x = kMargine;
    double y = alto;
    for (const Elemento& elemento : elementi_) {
        if (elemento.Nome.empty()) continue;
        const QString nome = InQt(elemento.Nome);
        const double testo = foglio.Penna->Largo(nome);
        if (x + segno + 6.0 + testo > destra && x > kMargine) {
            // The channel list shows those that are left; there is none on paper.
            if (!foglio.Carta() && y + riga * 1.5 > alto + kRigheLegenda * riga) break;
            x = kMargine;
            y += riga;
        }
        d.Legenda.push_back({QRectF(x, y + riga / 2 - 2.0, segno, 4.0),
                             QRectF(x + segno + 6.0, y, testo, riga), nome, elemento.Tinta});
        x += segno + 6.0 + testo + foglio.Penna->Riga();
    }
    if (!d.Legenda.empty()) alto = y + riga + kMargine / 2;
}

/// The panes with the labels of their y axes, and the room that the widest of these needs.
void GraficoWidget::DisponiAssiY(Foglio& foglio, const std::vector<Riquadro>& riquadri,
                                 double altezza, Disposizione& d) const {
    Scrittore& penna = *foglio.Penna;
    const char separatore = platform().DecimalSeparator();
    const int massime =
        static_cast<int>(std::clamp(altezza / (kPassoTacche * penna.Riga()), 2.0, 12.0));
    const auto allarga = [&](const QString& testo) {
        d.LarghezzaY = std::max(d.LarghezzaY, penna.Largo(testo));
    };
    if (foglio.Carta() && separati_.empty()) {
        for (const LivelloGrafico& livello : livelli_) {
            d.Livelli.push_back({livello.Y, InQt(livello.Nome)});
            allarga(d.Livelli.back().Testo);
        }
    }
    for (const Riquadro& r : riquadri) {
        Disposizione::Pannello p;
        p.Dati = r;
        const auto [da, a] = std::minmax({r.YMin / r.Scala, r.YMax / r.Scala});
        const Tacche tacche =
            numeriY_ && r.YMin < r.YMax ? CalcolaTacche(da, a, massime) : Tacche{};
        for (const double valore : tacche.Valori) {
            p.Tacche.push_back({valore * r.Scala, InQt(TestoTacca(valore, tacche, separatore))});
            allarga(p.Tacche.back().Testo);
        }
        d.Pannelli.push_back(std::move(p));
    }
}

void GraficoWidget::DisponiAsseX(Foglio& foglio, double larghezza, Disposizione& d) const {
    const char separatore = platform().DecimalSeparator();
    const double etichetta = foglio.Penna->Largo(QStringLiteral("00000.0"));
    const Tacche tacche =
        CalcolaTacche(xMin_, xMax_, static_cast<int>(std::clamp(larghezza / etichetta, 2.0, 20.0)));
    for (const double valore : tacche.Valori) {
        d.TaccheX.push_back({valore, InQt(TestoTacca(valore, tacche, separatore))});
    }
}

GraficoWidget::Disposizione GraficoWidget::Disponi(Foglio& foglio) const {
    const double riga = foglio.Penna->Riga();
    const double largo = foglio.Misura.width();
    Disposizione d;
    d.Misura = foglio.Misura;
    d.Rapporto = foglio.Rapporto;
    double alto = kMargine;
    if (!titolo_.empty()) {
        d.Titolo = QRectF(kMargine, alto, largo - 2 * kMargine, riga);
        alto += riga + kMargine / 2;
    }
    DisponiLegenda(foglio, d, alto);
    double basso = foglio.Misura.height() - kMargine;
    if (!etichettaX_.empty()) {
        d.EtichettaX = QRectF(kMargine, basso - riga, largo - 2 * kMargine, riga);
        basso -= riga + kMargine / 2;
    }
    basso -= riga + kTacca + 2.0;  // labels of the x axis

    const std::vector<Riquadro> riquadri = Riquadri();
    const double numero = static_cast<double>(riquadri.size());
    const double altezza =
        std::max(1.0, (basso - alto - kSpazioRiquadri * (numero - 1.0)) / numero);
    DisponiAssiY(foglio, riquadri, altezza, d);
    const bool conEtichetta = std::any_of(riquadri.begin(), riquadri.end(),
                                          [](const Riquadro& r) { return !r.Etichetta.empty(); });
    const double sinistra =
        kMargine + (conEtichetta ? riga + 4.0 : 0.0) + d.LarghezzaY + kTacca + 3.0 + kAsse;
    const double larghezza = std::max(1.0, largo - sinistra - 2.0 * kMargine);
    // On whole pixels of the widget and of the screen, so that borders are sharp, a value falls on
    // the same pixel whatever the texts around it, and a larger scale only enlarges.
    const auto intero = [&](double v) {
        return foglio.Carta() ? v : foglio.SuPixel(std::round(v));
    };
    for (Disposizione::Pannello& p : d.Pannelli) {
        p.Area.setCoords(intero(sinistra), intero(alto), intero(sinistra + larghezza),
                         intero(alto + altezza));
        alto += altezza + kSpazioRiquadri;
    }
    DisponiAsseX(foglio, larghezza, d);
    return d;
}

QRectF GraficoWidget::AreaDisegno(int riquadro) const {
    const Disposizione& d = Disposta(devicePixelRatioF());
    const auto ultimo = static_cast<int>(d.Pannelli.size()) - 1;
    return d.Pannelli[static_cast<std::size_t>(std::clamp(riquadro, 0, ultimo))].Area;
}

ScalaPixel GraficoWidget::ScalaX(const QRectF& area) const {
    const double margine = punti_ ? kRespiro * (xMax_ - xMin_) : 0.0;
    return {xMin_ - margine, xMax_ + margine, area.left(), area.right()};
}

ScalaPixel GraficoWidget::ScalaY(const QRectF& area, const Riquadro& dati) const {
    const double margine = punti_ ? kRespiro * (dati.YMax - dati.YMin) : 0.0;
    return {dati.YMin - margine, dati.YMax + margine, area.bottom(), area.top()};
}

void GraficoWidget::DisegnaFondo(QPainter& penna, Foglio& foglio, const Disposizione& d) const {
    penna.setFont(foglio.Penna->Carattere());
    penna.setPen(InQColor(foglio.Testo));
    foglio.Penna->Scrivi(penna, d.Titolo, Qt::AlignCenter, InQt(titolo_));
    foglio.Penna->Scrivi(penna, d.EtichettaX, Qt::AlignCenter, InQt(etichettaX_));
    for (std::size_t i = 0; i < d.Pannelli.size(); ++i) DisegnaRiquadro(penna, foglio, d, i);
    DisegnaAsseX(penna, foglio, d);
    DisegnaLegenda(penna, foglio, d);
    if (foglio.Carta()) return;
    if (separati_.empty()) DisegnaLivelli(penna, foglio, d.Pannelli[0].Area);
    penna.setPen(InQColor(foglio.Testo));
    foglio.Penna->Scrivi(penna, d.Pannelli[0].Area, Qt::AlignCenter, InQt(invito_));
}

/// Each name at the left end of its level, where the curves then run over it.
void GraficoWidget::DisegnaLivelli(QPainter& penna, const Foglio& foglio,
                                   const QRectF& area) const {
    const ScalaPixel y = ScalaY(area, unico_);
    const double riga = foglio.Penna->Riga();
    if (livelli_.size() < 2 || !y.Valida()) return;
    if (std::fabs(y.Pixel(livelli_[1].Y) - y.Pixel(livelli_[0].Y)) < kAriaLivello * riga) return;
    for (const LivelloGrafico& livello : livelli_) {
        penna.setPen(InQColor(ColoreLeggibile(livello.Tinta, foglio.Sfondo, kContrastoTesto)));
        foglio.Penna->Scrivi(penna,
                             QRectF(area.left() + kRientroLivello, y.Pixel(livello.Y) - riga / 2,
                                    area.width() - 2 * kRientroLivello, riga),
                             Qt::AlignLeft | Qt::AlignVCenter, InQt(livello.Nome));
    }
}

void GraficoWidget::DisegnaRiquadro(QPainter& penna, Foglio& foglio, const Disposizione& d,
                                    std::size_t i) const {
    if (griglia_) DisegnaGriglia(penna, foglio, d, i);
    DisegnaCornice(penna, foglio, d.Pannelli[i].Area);
    DisegnaAsseY(penna, foglio, d, i);
    if (!d.Pannelli[i].Dati.Etichetta.empty()) DisegnaEtichettaY(penna, foglio, d, i);
}

void GraficoWidget::DisegnaGriglia(QPainter& penna, Foglio& foglio, const Disposizione& d,
                                   std::size_t i) const {
    const auto& p = d.Pannelli[i];
    const QRectF& area = p.Area;
    const ScalaPixel x = ScalaX(area);
    const ScalaPixel y = ScalaY(area, p.Dati);
    const QColor rete = InQColor(Tenue(foglio.Sfondo, foglio.Testo, 0.16));
    for (const auto& tacca : d.TaccheX) {
        foglio.Riempi(
            penna, foglio.Verticale(x.Pixel(tacca.Valore), area.top(), area.bottom(), foglio.Filo),
            rete);
    }
    for (const auto& tacca : p.Tacche) {
        foglio.Riempi(
            penna,
            foglio.Orizzontale(y.Pixel(tacca.Valore), area.left(), area.right(), foglio.Filo),
            rete);
    }
}

/// The frame lies around the area: a curve along the range's end is not hidden by it.
void GraficoWidget::DisegnaCornice(QPainter& penna, Foglio& foglio, const QRectF& area) const {
    const QColor cornice = InQColor(cornice_ && !foglio.Carta()
                                        ? ColoreLeggibile(*cornice_, foglio.Sfondo, kContrastoAsse)
                                        : Tenue(foglio.Sfondo, foglio.Testo, 0.55));
    const QRectF fuori = foglio.Intorno(area);
    foglio.Riempi(penna, QRectF(fuori.topLeft(), area.topRight()), cornice);
    foglio.Riempi(penna, QRectF(area.bottomLeft(), QPointF(area.right(), fuori.bottom())), cornice);
    foglio.Riempi(penna, QRectF(QPointF(area.right(), fuori.top()), fuori.bottomRight()), cornice);
}

/// The y axis wears the colour of the channel that its labels belong to.
void GraficoWidget::DisegnaAsseY(QPainter& penna, Foglio& foglio, const Disposizione& d,
                                 std::size_t i) const {
    const auto& p = d.Pannelli[i];
    const QRectF& area = p.Area;
    const QRectF fuori = foglio.Intorno(area);
    const ScalaPixel y = ScalaY(area, p.Dati);
    const QColor asse = InQColor(ColoreLeggibile(p.Dati.Tinta, foglio.Sfondo, kContrastoAsse));
    const double spessore = foglio.Carta() ? kAsse / 2.0 : kAsse;
    foglio.Riempi(
        penna,
        QRectF(QPointF(area.left() - spessore, fuori.top()), QPointF(area.left(), fuori.bottom())),
        asse);
    const double riga = foglio.Penna->Riga();
    const double numeri = area.left() - kAsse - kTacca - 3.0;
    const auto scrivi = [&](double py, const QString& testo) {
        foglio.Penna->Scrivi(penna,
                             QRectF(numeri - d.LarghezzaY, py - riga / 2, d.LarghezzaY, riga),
                             Qt::AlignRight | Qt::AlignVCenter, testo);
    };
    penna.setPen(InQColor(ColoreLeggibile(p.Dati.Tinta, foglio.Sfondo, kContrastoTesto)));
    for (const auto& tacca : p.Tacche) {
        const double py = y.Pixel(tacca.Valore);
        foglio.Riempi(
            penna,
            foglio.Orizzontale(py, area.left() - kAsse - kTacca, area.left(), spessore / 2.0),
            asse);
        scrivi(py, tacca.Testo);
    }
    for (std::size_t n = 0; n < d.Livelli.size(); ++n) {
        penna.setPen(InQColor(ColoreLeggibile(livelli_[n].Tinta, foglio.Sfondo, kContrastoTesto)));
        scrivi(y.Pixel(d.Livelli[n].Valore), d.Livelli[n].Testo);
    }
}

/// The text of the y axis, upwards, in the colour of its last label.
void GraficoWidget::DisegnaEtichettaY(QPainter& penna, const Foglio& foglio, const Disposizione& d,
                                      std::size_t i) const {
    const auto& p = d.Pannelli[i];
    const QRectF& area = p.Area;
    penna.save();
    penna.translate(kMargine, area.center().y());
    penna.rotate(-90.0);
    QFont grassetto = foglio.Penna->Carattere();
    grassetto.setBold(true);
    penna.setFont(grassetto);
    penna.drawText(
        QRectF(-area.height() / 2, 0.0, area.height(), foglio.Penna->Riga()), Qt::AlignCenter,
        QFontMetricsF(grassetto).elidedText(InQt(p.Dati.Etichetta), Qt::ElideRight, area.height()));
    penna.restore();
}

void GraficoWidget::DisegnaAsseX(QPainter& penna, Foglio& foglio, const Disposizione& d) const {
    const QRectF& area = d.Pannelli.back().Area;
    const double riga = foglio.Penna->Riga();
    const ScalaPixel x = ScalaX(area);
    const QColor inchiostro = InQColor(foglio.Testo);
    penna.setPen(inchiostro);
    for (const auto& tacca : d.TaccheX) {
        const double px = x.Pixel(tacca.Valore);
        foglio.Riempi(penna,
                      foglio.Verticale(px, area.bottom(), area.bottom() + kTacca,
                                       foglio.Carta() ? foglio.Filo : 1.0),
                      inchiostro);
        foglio.Penna->Scrivi(penna, QRectF(px - 60.0, area.bottom() + kTacca + 2.0, 120.0, riga),
                             Qt::AlignHCenter | Qt::AlignTop, tacca.Testo);
    }
}

void GraficoWidget::DisegnaLegenda(QPainter& penna, Foglio& foglio, const Disposizione& d) const {
    penna.setPen(InQColor(foglio.Testo));
    for (const auto& voce : d.Legenda) {
        penna.fillRect(voce.Segno,
                       InQColor(ColoreLeggibile(voce.Tinta, foglio.Sfondo, kContrastoLinea)));
        foglio.Penna->Scrivi(penna, voce.Posto, Qt::AlignLeft | Qt::AlignVCenter, voce.Testo);
    }
}

void GraficoWidget::DipingiCurve(QImage& foto, const Foglio& foglio, const Disposizione& d,
                                 const Tracciatore::Tela& schermo) const {
    const double r = foglio.Rapporto;
    const Tracciatore::Tela tela = TelaDi(foto);
    for (std::size_t i = 0; i < d.Pannelli.size(); ++i) {
        const auto& p = d.Pannelli[i];
        // In the picture's own pixels; the frame belongs to the field, but not the axis.
        const QRectF area(p.Area.topLeft() * r, p.Area.size() * r);
        const ScalaPixel x = ScalaX(area);
        const ScalaPixel y = ScalaY(area, p.Dati);
        const int riquadro = separati_.empty() ? 0 : static_cast<int>(i) + 1;
        const bool valida = x.Valida() && y.Valida();
        tracciatore_.Inizia(tela, CampoDi(foto, p.Area));
        tracciatore_.Fondo(foglio.Fondo);
        tracciatore_.Copia(schermo);
        for (const Elemento& elemento : elementi_) {
            if (elemento.Riquadro != riquadro || !valida) continue;
            const double larghezza =
                (ModoBox() ? kTrattoBox : kTratto) * Spessore(elemento.Spessore) * r;
            const std::uint32_t tinta =
                Pixel(ColoreLeggibile(elemento.Tinta, foglio.Sfondo, kContrastoLinea));
            // The tracer leaves out by itself what is not in the area, and faster: a noisy curve at
            // the range's end would be cut into many pieces. Only what is far out is cut off.
            const Rettangolo campo{area.left() - kLontano, area.top() - kLontano,
                                   area.right() + kLontano, area.bottom() + kLontano};
            Tratto punti(elemento.Punti.size());
            for (std::size_t n = 0; n < punti.size(); ++n) {
                punti[n] = {x.Pixel(elemento.Punti[n].X), y.Pixel(elemento.Punti[n].Y)};
            }
            if (punti_) {
                for (const PuntoGrafico& punto : punti) {
                    tracciatore_.Linea(std::span(&punto, 1), kSegno * r, tinta);
                }
            }
            punti = Assottiglia(std::move(punti), area.width());
            const bool dentro = std::all_of(punti.begin(), punti.end(), [&](const auto& q) {
                return q.X >= campo.Sinistra && q.X <= campo.Destra && q.Y >= campo.Alto &&
                       q.Y <= campo.Basso;
            });
            if (dentro && punti.size() > 1) {
                tracciatore_.Linea(punti, larghezza, tinta);
                continue;
            }
            for (const Tratto& tratto : TagliaLinea(punti, campo)) {
                tracciatore_.Linea(tratto, larghezza, tinta);
            }
        }
        tracciatore_.Traccia();
    }
}

void GraficoWidget::DisegnaCurve(QPainter& penna, const Foglio& foglio,
                                 const Disposizione& d) const {
    for (std::size_t i = 0; i < d.Pannelli.size(); ++i) {
        const auto& p = d.Pannelli[i];
        const ScalaPixel x = ScalaX(p.Area);
        const ScalaPixel y = ScalaY(p.Area, p.Dati);
        if (!x.Valida() || !y.Valida()) continue;
        const int riquadro = separati_.empty() ? 0 : static_cast<int>(i) + 1;
        penna.save();
        penna.setClipRect(p.Area.adjusted(0.0, -foglio.Filo, foglio.Filo, foglio.Filo),
                          Qt::IntersectClip);
        penna.setRenderHint(QPainter::Antialiasing);
        penna.setBrush(Qt::NoBrush);
        for (const Elemento& elemento : elementi_) {
            if (elemento.Riquadro != riquadro) continue;
            const double larghezza = kTrattoCarta * Spessore(elemento.Spessore);
            const Rettangolo campo{p.Area.left() - larghezza, p.Area.top() - larghezza,
                                   p.Area.right() + larghezza, p.Area.bottom() + larghezza};
            penna.setPen(
                QPen(InQColor(ColoreLeggibile(elemento.Tinta, foglio.Sfondo, kContrastoLinea)),
                     larghezza, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            Tratto punti(elemento.Punti.size());
            for (std::size_t n = 0; n < punti.size(); ++n) {
                punti[n] = {x.Pixel(elemento.Punti[n].X), y.Pixel(elemento.Punti[n].Y)};
            }
            for (const Tratto& tratto : TagliaLinea(punti, campo)) {
                // In pieces that share an end: one long jagged path takes a device that has to fill
                // it seconds.
                for (std::size_t da = 0; da + 1 < tratto.size(); da += kPuntiFila - 1) {
                    QPolygonF fila;
                    for (std::size_t n = da; n < std::min(tratto.size(), da + kPuntiFila); ++n) {
                        fila.append(QPointF(tratto[n].X, tratto[n].Y));
                    }
                    penna.drawPolyline(fila);
                }
            }
        }
        penna.restore();
    }
}

/// Whether no letters stand where the curves run.
bool GraficoWidget::CampiVuoti(const Disposizione& d) const {
    if (!invito_.empty() || (separati_.empty() && !livelli_.empty())) return false;
    // In a window that is far too small the plot runs into the text below it.
    return d.EtichettaX.isEmpty() || d.Pannelli.back().Area.bottom() + 2.0 <= d.EtichettaX.top();
}

void GraficoWidget::Dipingi(QImage& foto, double rapporto, const Tracciatore::Tela& schermo) const {
    const QSize pixel = (QSizeF(size()) * rapporto).toSize().expandedTo(QSize(1, 1));
    if (foto.size() != pixel) foto = QImage(pixel, QImage::Format_RGB32);
    foto.setDevicePixelRatio(rapporto);
    Foglio foglio = Schermo(rapporto);
    const Disposizione& d = Disposta(rapporto);
    QRegion fuori(foto.rect());
    if (CampiVuoti(d)) {
        for (const auto& p : d.Pannelli) {
            const Tracciatore::Campo campo = CampoDi(foto, p.Area);
            foglio.Campi.push_back(campo);
            fuori -= QRect(campo.Sinistra, campo.Alto, campo.Destra - campo.Sinistra,
                           campo.Basso - campo.Alto);
        }
        const Tracciatore::Campo tutto{0, 0, foto.width(), foto.height()};
        foglio.Fondo.push_back({tutto, Pixel(foglio.Sfondo)});
    }
    const Tracciatore::Tela tela = TelaDi(foto);
    for (const QRect& parte : fuori) {
        for (int y = parte.top(); y <= parte.bottom(); ++y) {
            std::fill_n(tela.Pixel + y * tela.Passo + parte.left(), parte.width(),
                        Pixel(foglio.Sfondo));
        }
    }
    {
        QPainter penna(&foto);
        DisegnaFondo(penna, foglio, d);
    }
    DipingiCurve(foto, foglio, d, foglio.Campi.empty() ? Tracciatore::Tela{} : schermo);
    if (schermo.Pixel == nullptr) return;
    for (const QRect& parte : fuori) {
        for (int y = parte.top(); y <= parte.bottom(); ++y) {
            std::copy_n(tela.Pixel + y * tela.Passo + parte.left(), parte.width(),
                        schermo.Pixel + y * schermo.Passo + parte.left());
        }
    }
}

QImage GraficoWidget::Fotografa(double rapporto) const {
    QImage foto;
    Dipingi(foto, rapporto, {});
    return foto;
}

void GraficoWidget::DisegnaCursoreSu(QPainter& penna, const Foglio& foglio,
                                     const Disposizione& d) const {
    if (!cursore_ || !cursore_->Visibile || !(cursore_->X >= xMin_ && cursore_->X <= xMax_)) return;
    for (const auto& p : d.Pannelli) {
        const ScalaPixel x = ScalaX(p.Area);
        if (!x.Valida()) continue;
        penna.fillRect(
            foglio.Verticale(x.Pixel(cursore_->X), p.Area.top(), p.Area.bottom(), kCursoreCarta),
            InQColor(ColoreLeggibile(cursore_->Tinta, foglio.Sfondo, kContrastoAsse)));
    }
}

void GraficoWidget::DisegnaSu(QPainter& painter, const QRectF& rect, bool conCursore) const {
    if (rect.width() <= 0.0 || rect.height() <= 0.0) return;
    const double scala =
        std::sqrt(rect.width() * rect.height() / (kLarghezzaCarta * kAltezzaCarta));
    QFont carattere = font();
    // In pixels: the page's resolution is in the scale already.
    carattere.setPixelSize(kCarattereCarta);
    carattere.setHintingPreference(QFont::PreferNoHinting);
    Scrittore scrittore(carattere, 0.0);
    Foglio foglio;
    foglio.Misura = rect.size() / scala;
    foglio.Rapporto = 0.0;
    foglio.Filo = kFiloCarta;
    foglio.Sfondo = Rgb(255, 255, 255);
    foglio.Testo = Rgb(0, 0, 0);
    foglio.Penna = &scrittore;
    const Disposizione d = Disponi(foglio);
    painter.save();
    painter.translate(rect.topLeft());
    painter.scale(scala, scala);
    painter.setClipRect(QRectF(QPointF(), foglio.Misura), Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(QPointF(), foglio.Misura), InQColor(foglio.Sfondo));
    DisegnaFondo(painter, foglio, d);
    DisegnaCurve(painter, foglio, d);
    if (conCursore) DisegnaCursoreSu(painter, foglio, d);
    painter.restore();
}

void GraficoWidget::DescriviGrafico() {
    if (accessibleName() != descrizione_) return;  // the window has named the graph itself
    QStringList nomi;
    for (const Elemento& elemento : elementi_) {
        if (!elemento.Nome.empty()) nomi.append(InQt(elemento.Nome));
    }
    QString descrizione = titolo_.empty() ? nomi.join(QStringLiteral(", ")) : InQt(titolo_);
    if (!etichettaX_.empty()) {
        if (!descrizione.isEmpty()) descrizione += QStringLiteral(" / ");
        descrizione += InQt(etichettaX_);
    }
    if (descrizione == descrizione_) return;
    descrizione_ = descrizione;
    setAccessibleName(descrizione);
}

bool GraficoWidget::AggiornaFoto(const QPainter& penna) {
    const double rapporto = devicePixelRatioF();
    if (!sporco_ && foto_.devicePixelRatio() == rapporto &&
        foto_.size() == (QSizeF(size()) * rapporto).toSize()) {
        return false;
    }
    const Tracciatore::Tela schermo =
        TelaSotto(penna, (QSizeF(size()) * rapporto).toSize(), rapporto);
    Dipingi(foto_, rapporto, schermo);
    sporco_ = false;
    ++ridisegni_;
    DescriviGrafico();
    return schermo.Pixel != nullptr;
}

void GraficoWidget::DisegnaCursore(QPainter& penna) const {
    const auto x = PixelCursore();
    if (!x) return;
    const double rapporto = devicePixelRatioF();
    const Foglio foglio = Schermo(rapporto);
    const QColor tinta = InQColor(ColoreLeggibile(cursore_->Tinta, foglio.Sfondo, kContrastoAsse));
    for (const auto& p : Disposta(rapporto).Pannelli) {
        QRectF riga = foglio.Verticale(*x, p.Area.top(), p.Area.bottom(), kLarghezzaCursore);
        // At the left edge it would hide the axis.
        riga.moveLeft(std::max(riga.left(), p.Area.left()));
        penna.fillRect(riga, tinta);
    }
}

void GraficoWidget::DisegnaZoom(QPainter& penna) const {
    QColor velo = palette().color(QPalette::Highlight);
    const Colore bordo = ColoreLeggibile(DaQColor(velo), Sfondo(), kContrastoAsse);
    velo.setAlphaF(static_cast<float>(kVelo));
    const QRectF scelto = RettangoloZoom();
    penna.fillRect(scelto, velo);
    penna.setPen(QPen(InQColor(bordo), 1.0));
    penna.setBrush(Qt::NoBrush);
    penna.drawRect(scelto);
}

void GraficoWidget::paintEvent(QPaintEvent* evento) {
    QPainter penna(this);
    if (!AggiornaFoto(penna)) {
        const double rapporto = foto_.devicePixelRatio();
        for (const QRect& parte : evento->region()) {
            penna.drawImage(
                QRectF(parte), foto_,
                QRectF(QPointF(parte.topLeft()) * rapporto, QSizeF(parte.size()) * rapporto));
        }
    }
    DisegnaCursore(penna);
    if (zoom_) DisegnaZoom(penna);
    if (hasFocus()) {
        const Colore fuoco = ColoreLeggibile(DaQColor(palette().color(QPalette::Highlight)),
                                             Sfondo(), kContrastoAsse);
        const QRectF dentro = QRectF(rect()).adjusted(kFuoco, kFuoco, -kFuoco, -kFuoco);
        QRegion bordo = QRegion(rect()) - QRegion(dentro.toRect());
        for (const QRect& lato : bordo) penna.fillRect(lato, InQColor(fuoco));
    }
}

}  // namespace lapvane
