// How the graph is painted: layout of its parts, panes, axes, curves, legend, cursor.
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/QtPlatform.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Contrasto.h"
#include "widgets/GraficoWidget.h"

namespace lapvane {

namespace {

constexpr double kMargine = 10.0;
constexpr double kTacca = 5.0;            // length of a tick
constexpr double kSpazioRiquadri = 14.0;  // between separate panes
constexpr double kContrastoLinea = 2.2;
constexpr double kContrastoTesto = 4.5;
constexpr double kContrastoAsse = 3.0;
constexpr double kTratto = 1.4;  // pixels of a line of width 1: a hairline is lost in the sun
constexpr double kLarghezzaCursore = 1.5;
constexpr int kRigheLegenda = 3;

/// A place on the grid of the screen's own pixels, so that a thin line is sharp.
double SulPixel(double valore, double rapporto) {
    return (std::floor(valore * rapporto) + 0.5) / rapporto;
}

Colore Tenue(Colore sfondo, Colore inchiostro, double parte) {
    const auto componente = [&](int s) {
        const double a = (sfondo >> s) & 0xFFu;
        const double b = (inchiostro >> s) & 0xFFu;
        return static_cast<unsigned>(std::lround(a + (b - a) * parte));
    };
    return Rgb(componente(0), componente(8), componente(16));
}

}  // namespace

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
    std::vector<Pannello> Pannelli;
    std::vector<RigaAsse> TaccheX;
    double LarghezzaY = 0.0;  ///< of the widest label
    QRectF Titolo;
    QRectF Legenda;
    QRectF EtichettaX;
};

std::vector<GraficoWidget::Riquadro> GraficoWidget::Riquadri() const {
    return separati_.empty() ? std::vector<Riquadro>{unico_} : separati_;
}

GraficoWidget::Disposizione GraficoWidget::Disponi() const {
    const QFontMetricsF misura(font());
    const char separatore = platform().DecimalSeparator();
    const double riga = misura.height();
    Disposizione d;
    double alto = kMargine;
    if (!titolo_.empty()) {
        d.Titolo = QRectF(kMargine, alto, width() - 2 * kMargine, riga);
        alto += riga + kMargine / 2;
    }
    if (!elementi_.empty()) {
        double larghezza = 0.0;
        for (const Elemento& e : elementi_) {
            larghezza += misura.horizontalAdvance(InQt(e.Nome)) + 3.5 * riga;
        }
        const double utile = std::max(1.0, width() - 2 * kMargine);
        const double righe = std::clamp(std::ceil(larghezza / utile), 1.0, double{kRigheLegenda});
        d.Legenda = QRectF(kMargine, alto, utile, righe * riga * 1.2);
        alto += d.Legenda.height() + kMargine / 2;
    }
    double basso = height() - kMargine;
    if (!etichettaX_.empty()) {
        d.EtichettaX = QRectF(kMargine, basso - riga, width() - 2 * kMargine, riga);
        basso -= riga + kMargine / 2;
    }
    basso -= riga + kTacca + 2.0;  // labels of the x axis

    const std::vector<Riquadro> riquadri = Riquadri();
    const double numero = static_cast<double>(riquadri.size());
    const double altezza =
        std::max(1.0, (basso - alto - kSpazioRiquadri * (numero - 1.0)) / numero);
    bool conEtichetta = false;
    for (const Riquadro& r : riquadri) {
        Disposizione::Pannello p;
        p.Dati = r;
        const int massime = static_cast<int>(std::clamp(altezza / (2.2 * riga), 2.0, 12.0));
        const Tacche tacche = CalcolaTacche(r.YMin / r.Scala, r.YMax / r.Scala, massime);
        for (const double valore : tacche.Valori) {
            p.Tacche.push_back({valore * r.Scala, InQt(TestoTacca(valore, tacche, separatore))});
            d.LarghezzaY = std::max(d.LarghezzaY, misura.horizontalAdvance(p.Tacche.back().Testo));
        }
        conEtichetta = conEtichetta || !r.Etichetta.empty();
        d.Pannelli.push_back(std::move(p));
    }
    const double sinistra =
        kMargine + (conEtichetta ? riga + 4.0 : 0.0) + d.LarghezzaY + kTacca + 3.0;
    const double larghezza = std::max(1.0, width() - sinistra - 2.0 * kMargine);
    for (Disposizione::Pannello& p : d.Pannelli) {
        p.Area = QRectF(sinistra, alto, larghezza, altezza);
        alto += altezza + kSpazioRiquadri;
    }
    const double etichetta = misura.horizontalAdvance(QStringLiteral("00000.0"));
    const Tacche tacche =
        CalcolaTacche(xMin_, xMax_, static_cast<int>(std::clamp(larghezza / etichetta, 2.0, 20.0)));
    for (const double valore : tacche.Valori) {
        d.TaccheX.push_back({valore, InQt(TestoTacca(valore, tacche, separatore))});
    }
    return d;
}

QRectF GraficoWidget::AreaDisegno(int riquadro) const {
    const Disposizione d = Disponi();
    const auto ultimo = static_cast<int>(d.Pannelli.size()) - 1;
    return d.Pannelli[static_cast<std::size_t>(std::clamp(riquadro, 0, ultimo))].Area;
}

ScalaPixel GraficoWidget::ScalaX(const QRectF& area) const {
    return {xMin_, xMax_, area.left(), area.right()};
}

Colore GraficoWidget::Sfondo() const {
    return sfondo_ ? *sfondo_ : DaQColor(palette().color(QPalette::Base));
}

Colore GraficoWidget::Inchiostro(double minimo) const {
    return ColoreLeggibile(DaQColor(palette().color(QPalette::Text)), Sfondo(), minimo);
}

void GraficoWidget::Disegna(QPainter& penna) const {
    penna.fillRect(rect(), InQColor(Sfondo()));
    penna.setFont(font());
    const Disposizione d = Disponi();
    penna.setPen(InQColor(Inchiostro(kContrastoTesto)));
    if (!titolo_.empty()) penna.drawText(d.Titolo, Qt::AlignCenter, InQt(titolo_));
    penna.drawText(d.EtichettaX, Qt::AlignCenter, InQt(etichettaX_));
    for (std::size_t i = 0; i < d.Pannelli.size(); ++i) {
        DisegnaRiquadro(penna, d, i);
        DisegnaElementi(penna, d, i);
    }
    DisegnaAsseX(penna, d);
    DisegnaLegenda(penna, d);
}

void GraficoWidget::DisegnaRiquadro(QPainter& penna, const Disposizione& d, std::size_t i) const {
    const auto& p = d.Pannelli[i];
    const QRectF& area = p.Area;
    const double rapporto = penna.device()->devicePixelRatioF();
    const Colore sfondo = Sfondo();
    const Colore testo = Inchiostro(kContrastoTesto);
    const QPen rete(InQColor(Tenue(sfondo, testo, 0.16)), 1.0 / rapporto);
    const ScalaPixel x = ScalaX(area);
    const ScalaPixel y{p.Dati.YMin, p.Dati.YMax, area.bottom(), area.top()};
    if (griglia_) {
        penna.setPen(rete);
        for (const auto& tacca : d.TaccheX) {
            const double px = SulPixel(x.Pixel(tacca.Valore), rapporto);
            penna.drawLine(QPointF(px, area.top()), QPointF(px, area.bottom()));
        }
        for (const auto& tacca : p.Tacche) {
            const double py = SulPixel(y.Pixel(tacca.Valore), rapporto);
            penna.drawLine(QPointF(area.left(), py), QPointF(area.right(), py));
        }
    }
    const Colore cornice =
        cornice_ ? ColoreLeggibile(*cornice_, sfondo, kContrastoAsse) : Tenue(sfondo, testo, 0.55);
    penna.setPen(QPen(InQColor(cornice), 1.0 / rapporto));
    penna.setBrush(Qt::NoBrush);
    penna.drawRect(
        QRectF(QPointF(SulPixel(area.left(), rapporto), SulPixel(area.top(), rapporto)),
               QPointF(SulPixel(area.right(), rapporto), SulPixel(area.bottom(), rapporto))));

    // The y axis wears the colour of the channel that its labels belong to.
    const QPen asse(InQColor(ColoreLeggibile(p.Dati.Tinta, sfondo, kContrastoAsse)), 2.0);
    const QPen numeri(InQColor(ColoreLeggibile(p.Dati.Tinta, sfondo, kContrastoTesto)));
    const double riga = QFontMetricsF(font()).height();
    penna.setPen(asse);
    penna.drawLine(area.topLeft(), area.bottomLeft());
    for (const auto& tacca : p.Tacche) {
        const double py = SulPixel(y.Pixel(tacca.Valore), rapporto);
        penna.setPen(asse);
        penna.drawLine(QPointF(area.left() - kTacca, py), QPointF(area.left(), py));
        penna.setPen(numeri);
        penna.drawText(
            QRectF(area.left() - kTacca - 3.0 - d.LarghezzaY, py - riga / 2, d.LarghezzaY, riga),
            Qt::AlignRight | Qt::AlignVCenter, tacca.Testo);
    }
    if (p.Dati.Etichetta.empty()) return;
    penna.save();
    penna.translate(kMargine, area.center().y());
    penna.rotate(-90.0);
    QFont grassetto = font();
    grassetto.setBold(true);
    penna.setFont(grassetto);
    penna.drawText(
        QRectF(-area.height() / 2, 0.0, area.height(), riga), Qt::AlignCenter,
        QFontMetricsF(grassetto).elidedText(InQt(p.Dati.Etichetta), Qt::ElideRight, area.height()));
    penna.restore();
}

void GraficoWidget::DisegnaElementi(QPainter& penna, const Disposizione& d, std::size_t i) const {
    const auto& p = d.Pannelli[i];
    const ScalaPixel x = ScalaX(p.Area);
    const ScalaPixel y{p.Dati.YMin, p.Dati.YMax, p.Area.bottom(), p.Area.top()};
    if (!x.Valida() || !y.Valida()) return;
    const int riquadro = separati_.empty() ? 0 : static_cast<int>(i) + 1;
    const Rettangolo area{p.Area.left(), p.Area.top(), p.Area.right(), p.Area.bottom()};
    penna.save();
    penna.setClipRect(p.Area.adjusted(-1.0, -1.0, 1.0, 1.0));
    penna.setRenderHint(QPainter::Antialiasing);
    for (const Elemento& elemento : elementi_) {
        if (elemento.Riquadro != riquadro) continue;
        Tratto punti;
        punti.reserve(elemento.Punti.size());
        for (const PuntoGrafico& punto : elemento.Punti) {
            punti.push_back({x.Pixel(punto.X), y.Pixel(punto.Y)});
        }
        // Square ends close the notches at the corners of a broad line; on a thin one they show as
        // beads.
        const int spessore = std::clamp<int>(elemento.Spessore, 1, 20);
        penna.setPen(QPen(InQColor(ColoreLeggibile(elemento.Tinta, Sfondo(), kContrastoLinea)),
                          kTratto * spessore, Qt::SolidLine,
                          spessore == 1 ? Qt::FlatCap : Qt::SquareCap));
        for (const Tratto& tratto :
             TagliaLinea(Assottiglia(std::move(punti), area.Destra - area.Sinistra), area)) {
            // One by one: as a single path a jagged line costs the rasterizer hundreds of times
            // more.
            QList<QLineF> segmenti;
            segmenti.reserve(static_cast<qsizetype>(tratto.size()));
            for (std::size_t n = 1; n < tratto.size(); ++n) {
                segmenti.append(QLineF(tratto[n - 1].X, tratto[n - 1].Y, tratto[n].X, tratto[n].Y));
            }
            penna.drawLines(segmenti);
        }
    }
    penna.restore();
}

void GraficoWidget::DisegnaAsseX(QPainter& penna, const Disposizione& d) const {
    const QRectF& area = d.Pannelli.back().Area;
    const double rapporto = penna.device()->devicePixelRatioF();
    const double riga = QFontMetricsF(font()).height();
    const ScalaPixel x = ScalaX(area);
    penna.setPen(QPen(InQColor(Inchiostro(kContrastoTesto)), 1.0));
    for (const auto& tacca : d.TaccheX) {
        const double px = SulPixel(x.Pixel(tacca.Valore), rapporto);
        penna.drawLine(QPointF(px, area.bottom()), QPointF(px, area.bottom() + kTacca));
        penna.drawText(QRectF(px - 60.0, area.bottom() + kTacca + 2.0, 120.0, riga),
                       Qt::AlignHCenter | Qt::AlignTop, tacca.Testo);
    }
}

void GraficoWidget::DisegnaLegenda(QPainter& penna, const Disposizione& d) const {
    if (elementi_.empty()) return;
    const QFontMetricsF misura(font());
    const double riga = misura.height() * 1.2;
    const double segno = misura.height() * 1.4;
    double x = d.Legenda.left();
    double y = d.Legenda.top();
    for (const Elemento& elemento : elementi_) {
        if (elemento.Nome.empty()) continue;
        const QString nome = InQt(elemento.Nome);
        const double larghezza = segno + 6.0 + misura.horizontalAdvance(nome);
        if (x + larghezza > d.Legenda.right() && x > d.Legenda.left()) {
            x = d.Legenda.left();
            y += riga;
            if (y + riga > d.Legenda.bottom() + 1.0) return;  // the channel list shows them all
        }
        penna.setPen(QPen(InQColor(ColoreLeggibile(elemento.Tinta, Sfondo(), kContrastoLinea)), 4.0,
                          Qt::SolidLine, Qt::FlatCap));
        penna.drawLine(QPointF(x, y + riga / 2), QPointF(x + segno, y + riga / 2));
        penna.setPen(InQColor(Inchiostro(kContrastoTesto)));
        penna.drawText(QRectF(x + segno + 6.0, y, larghezza, riga),
                       Qt::AlignLeft | Qt::AlignVCenter, nome);
        x += larghezza + misura.height();
    }
}

void GraficoWidget::paintEvent(QPaintEvent* evento) {
    const double rapporto = devicePixelRatioF();
    const QSize pixel = (QSizeF(size()) * rapporto).toSize();
    if (sporco_ || cache_.size() != pixel) {
        if (cache_.size() != pixel) cache_ = QPixmap(pixel);
        cache_.setDevicePixelRatio(rapporto);
        QPainter penna(&cache_);
        Disegna(penna);
        sporco_ = false;
        ++ridisegni_;
    }
    QPainter penna(this);
    penna.setClipRect(evento->rect());
    penna.drawPixmap(0, 0, cache_);
    const Disposizione d = cursore_ ? Disponi() : Disposizione{};
    // At the left edge the cursor would hide the axis.
    if (const auto x = PixelCursore(); x && *x > d.Pannelli[0].Area.left() + 1.0) {
        penna.setPen(QPen(InQColor(ColoreLeggibile(cursore_->Tinta, Sfondo(), kContrastoAsse)),
                          kLarghezzaCursore));
        for (const auto& p : d.Pannelli) {
            penna.drawLine(QPointF(*x, p.Area.top()), QPointF(*x, p.Area.bottom()));
        }
    }
    if (zoom_) {
        penna.setPen(QPen(InQColor(Inchiostro(kContrastoAsse)), 1.0, Qt::DashLine));
        penna.setBrush(Qt::NoBrush);
        penna.drawRect(zoom_->normalized());
    }
}

}  // namespace lapvane
