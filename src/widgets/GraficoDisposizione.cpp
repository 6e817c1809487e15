// Where the parts of the graph go: legend, panes, axes, and the scales of the curves.
#include <algorithm>
#include <cmath>

#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Contrasto.h"
#include "widgets/GraficoFoglio.h"

namespace lapvane {

namespace {

constexpr double kRespiro = 0.04;         // of the range, on each side of curves with marks
constexpr double kPassoTacche = 1.7;      // lines of text a number of the y axis has, at least
constexpr double kSpazioRiquadri = 14.0;  // between separate panes
constexpr int kRigheLegenda = 3;

}  // namespace

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
    f.Testo = ColoreLeggibile(DaQColor(palette().color(QPalette::Text)), f.Sfondo,
                              Foglio::kContrastoTesto);
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
    const double destra = foglio.Misura.width() - Foglio::kMargine;
    double x = Foglio::kMargine;
    double y = alto;
    for (const Elemento& elemento : elementi_) {
        if (elemento.Nome.empty()) continue;
        const QString nome = InQt(elemento.Nome);
        const double testo = foglio.Penna->Largo(nome);
        if (x + segno + 6.0 + testo > destra && x > Foglio::kMargine) {
            // The channel list shows those that are left; there is none on paper.
            if (!foglio.Carta() && y + riga * 1.5 > alto + kRigheLegenda * riga) break;
            x = Foglio::kMargine;
            y += riga;
        }
        d.Legenda.push_back({QRectF(x, y + riga / 2 - 2.0, segno, 4.0),
                             QRectF(x + segno + 6.0, y, testo, riga), nome, elemento.Tinta});
        x += segno + 6.0 + testo + foglio.Penna->Riga();
    }
    if (!d.Legenda.empty()) alto = y + riga + Foglio::kMargine / 2;
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
    double alto = Foglio::kMargine;
    if (!titolo_.empty()) {
        d.Titolo = QRectF(Foglio::kMargine, alto, largo - 2 * Foglio::kMargine, riga);
        alto += riga + Foglio::kMargine / 2;
    }
    DisponiLegenda(foglio, d, alto);
    double basso = foglio.Misura.height() - Foglio::kMargine;
    if (!etichettaX_.empty()) {
        d.EtichettaX = QRectF(Foglio::kMargine, basso - riga, largo - 2 * Foglio::kMargine, riga);
        basso -= riga + Foglio::kMargine / 2;
    }
    basso -= riga + Foglio::kTacca + 2.0;  // labels of the x axis

    const std::vector<Riquadro> riquadri = Riquadri();
    const double numero = static_cast<double>(riquadri.size());
    const double altezza =
        std::max(1.0, (basso - alto - kSpazioRiquadri * (numero - 1.0)) / numero);
    DisponiAssiY(foglio, riquadri, altezza, d);
    const bool conEtichetta = std::any_of(riquadri.begin(), riquadri.end(),
                                          [](const Riquadro& r) { return !r.Etichetta.empty(); });
    const double sinistra = Foglio::kMargine + (conEtichetta ? riga + 4.0 : 0.0) + d.LarghezzaY +
                            Foglio::kTacca + 3.0 + Foglio::kAsse;
    const double larghezza = std::max(1.0, largo - sinistra - 2.0 * Foglio::kMargine);
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

}  // namespace lapvane
