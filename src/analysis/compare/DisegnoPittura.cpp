#include "analysis/compare/DisegnoPittura.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "analysis/compare/DisegnoNumeri.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kPesoDistacco = 114.0;
constexpr double kPesi[] = {104.0, 74.0, 50.0};  // of the other panes, the last for all further
constexpr double kRespiro = 4.0;                 // pixels between the curves and the pane's ends
constexpr double kTacca = 4.0;                   // length of a tick
// Lines of text from one tick to the next; closer where there would be fewer than three ticks.
constexpr double kRigheTacca[] = {1.7, 1.3, 0.9};
constexpr int kTaccheMassime = 12;
constexpr double kDistaccoMinimo = 0.1;  // seconds that a pane spans at least
constexpr double kParteMinima = 0.01;    // of the value, the same for the others
constexpr double kTrattoRiferimento = 2.8;
constexpr double kTrattoFuoco = 2.0;
constexpr double kTratto = 1.4;
constexpr double kColonna = 2.5;          // pixels in which a noisy line keeps two points
constexpr double kScarto = 0.1;           // device pixels that a line may be off
constexpr int kSvolteMassime = 1;         // turns in a column of a line that is not noisy
constexpr double kVeloTratto = 0.6;       // of the colour of a part where much is lost
constexpr double kVeloSuperficie = 0.22;  // of the area below the lap in focus
constexpr double kPunto = 4.0;            // pixels from one dot of a cut to the next
constexpr double kLontano = 2000.0;       // pixels
constexpr qsizetype kPuntiFila = 64;      // of one path on paper

bool Finiti(const Tratto& punti, const Rettangolo& campo) {
    return std::all_of(punti.begin(), punti.end(), [&](const PuntoGrafico& q) {
        return q.X >= campo.Sinistra && q.X <= campo.Destra && q.Y >= campo.Alto &&
               q.Y <= campo.Basso;
    });
}

/// The indices of the points in sight, with one more at each side; the second lies behind the last.
std::pair<std::size_t, std::size_t> InVista(const CurvaGiro& curva, double da, double a) {
    const auto& x = curva.X;
    const std::size_t numero = std::min(x.size(), curva.Y.size());
    const auto fine = x.begin() + static_cast<std::ptrdiff_t>(numero);
    auto primo = static_cast<std::size_t>(std::lower_bound(x.begin(), fine, da) - x.begin());
    auto oltre = static_cast<std::size_t>(std::upper_bound(x.begin(), fine, a) - x.begin());
    if (primo > 0) --primo;
    if (oltre < numero) ++oltre;
    return {primo, oltre};
}

/// Lowest and highest value of a curve in sight, its two ends there included.
void Allarga(const CurvaGiro& curva, double da, double a, double& minimo, double& massimo) {
    if (curva.X.empty() || curva.Y.empty()) return;
    const auto prendi = [&](double y) {
        if (!std::isfinite(y)) return;
        minimo = std::min(minimo, y);
        massimo = std::max(massimo, y);
    };
    const auto [primo, oltre] = InVista(curva, da, a);
    for (std::size_t i = primo; i < oltre; ++i) {
        if (curva.X[i] >= da && curva.X[i] <= a) prendi(curva.Y[i]);
    }
    for (const double x : {da, a}) {
        if (x >= curva.X.front() && x <= curva.X.back()) prendi(ValoreCurva(curva, x));
    }
}

/// Of the points that fall on one column: the lowest and the highest, in their order, and, unless
/// the line goes up and down all through the column, the first and the last one.
void Scegli(const Tratto& punti, std::size_t primo, std::size_t ultimo, Tratto& pochi) {
    std::size_t minimo = primo;
    std::size_t massimo = primo;
    int svolte = 0;
    double verso = 0.0;
    for (std::size_t i = primo + 1; i <= ultimo; ++i) {
        if (punti[i].Y < punti[minimo].Y) minimo = i;
        if (punti[i].Y > punti[massimo].Y) massimo = i;
        const double passo = punti[i].Y - punti[i - 1].Y;
        if (passo * verso < 0.0) ++svolte;
        if (passo != 0.0) verso = passo;
    }
    const auto [uno, altro] = std::minmax({minimo, massimo});
    const bool liscio = svolte <= kSvolteMassime;
    if (liscio && primo != uno) pochi.push_back(punti[primo]);
    // A step begins where its level ends.
    std::size_t fine = uno;
    while (fine + 1 < altro && punti[fine + 1].Y == punti[uno].Y) ++fine;
    if (liscio && fine != uno) pochi.push_back(punti[uno]);
    pochi.push_back(punti[fine]);
    if (altro != fine) pochi.push_back(punti[altro]);
    if ((liscio || altro == primo) && ultimo != altro) pochi.push_back(punti[ultimo]);
}

/// A line of many points in few: a line about as wide as the columns looks the same. What is not
/// finite stays, to break the line.
Tratto Dirada(const Tratto& punti, double colonna) {
    Tratto pochi;
    pochi.reserve(punti.size());
    for (std::size_t i = 0; i < punti.size();) {
        const double fine = (std::floor(punti[i].X / colonna) + 1.0) * colonna;
        std::size_t oltre = i + 1;
        if (std::isfinite(punti[i].Y)) {
            while (oltre < punti.size() && punti[oltre].X < fine && std::isfinite(punti[oltre].Y)) {
                ++oltre;
            }
        }
        if (oltre - i < 3) {
            pochi.insert(pochi.end(), punti.begin() + static_cast<std::ptrdiff_t>(i),
                         punti.begin() + static_cast<std::ptrdiff_t>(oltre));
        } else {
            Scegli(punti, i, oltre - 1, pochi);
        }
        i = oltre;
    }
    return pochi;
}

/// The line without the points that lie on it anyway, as near as can be seen: each piece is as long
/// as the slopes that pass all of its points allow (Sklansky and Gonzalez: Fast polygonal
/// approximation of digitized curves, 1980).
Tratto Raddrizza(const Tratto& punti) {
    Tratto pochi;
    pochi.reserve(punti.size());
    double meno = -HUGE_VAL;
    double piu = HUGE_VAL;
    for (std::size_t i = 0; i < punti.size(); ++i) {
        if (i == 0) {
            pochi.push_back(punti[i]);
            continue;
        }
        double lungo = punti[i].X - pochi.back().X;
        double alto = punti[i].Y - pochi.back().Y;
        // Written so that what is not finite ends a piece.
        if (!(lungo > 0.0 && alto >= meno * lungo && alto <= piu * lungo)) {
            pochi.push_back(punti[i - 1]);
            lungo = punti[i].X - punti[i - 1].X;
            alto = punti[i].Y - punti[i - 1].Y;
            meno = -HUGE_VAL;
            piu = HUGE_VAL;
        }
        if (!(lungo > 0.0)) continue;
        meno = std::max(meno, (alto - kScarto) / lungo);
        piu = std::min(piu, (alto + kScarto) / lungo);
    }
    if (punti.size() > 1) pochi.push_back(punti.back());
    return pochi;
}

QString ColMeno(const std::string& testo) {
    return InQt(testo).replace(QLatin1Char('-'), QChar(0x2212));
}

/// What a pane spans at least, so that noise looks like noise.
double AmpiezzaMinima(const QuadroConfronto& dati, double minimo, double massimo) {
    if (dati.Distacco) return kDistaccoMinimo;
    return std::max(4.0 * std::pow(10.0, -dati.Decimali),
                    kParteMinima * std::max(std::fabs(minimo), std::fabs(massimo)));
}

/// The ticks of a pane's scale; a gained time has signs.
std::vector<EtichettaAsse> TaccheY(const QuadroConfronto& dati, double da, double a, int massime) {
    std::vector<EtichettaAsse> etichette;
    const Tacche tacche = CalcolaTacche(da, a, massime);
    const char separatore = platform().DecimalSeparator();
    for (const double valore : tacche.Valori) {
        QString testo = ColMeno(TestoTacca(valore, tacche, separatore));
        if (dati.Distacco && valore > tacche.Passo / 2.0) testo.prepend(QLatin1Char('+'));
        etichette.push_back({valore, std::move(testo)});
    }
    return etichette;
}

}  // namespace

double LarghezzaTacche(const DatiQuadri& dati, ScrittoriQuadri& scrittori) {
    double largo = 0.0;
    for (const QuadroConfronto& quadro : dati.Quadri) {
        double minimo = HUGE_VAL;
        double massimo = -HUGE_VAL;
        for (const CurvaGiro& curva : quadro.Curve) {
            Allarga(curva, 0.0, dati.Fine, minimo, massimo);
        }
        if (minimo > massimo) continue;
        const double mezza = AmpiezzaMinima(quadro, minimo, massimo) / 2.0;
        // The narrowest scales have the longest figures.
        for (const auto& [da, a] : {std::pair(minimo, massimo),
                                    {minimo - mezza, minimo + mezza},
                                    {massimo - mezza, massimo + mezza}}) {
            for (const EtichettaAsse& tacca : TaccheY(quadro, da, a, kTaccheMassime)) {
                largo = std::max(largo, scrittori.Piccolo.LargoCifre(tacca.Testo));
            }
        }
    }
    return largo;
}

std::vector<double> AltezzeQuadri(const std::vector<double>& pesi, double altezza, double minima) {
    std::vector<double> altezze(pesi.size(), minima);
    std::vector<bool> minimi(pesi.size(), false);
    for (bool ancora = true; ancora;) {
        ancora = false;
        double resto = altezza;
        double somma = 0.0;
        for (std::size_t i = 0; i < pesi.size(); ++i) {
            if (minimi[i]) {
                resto -= minima;
            } else {
                somma += pesi[i];
            }
        }
        for (std::size_t i = 0; i < pesi.size(); ++i) {
            if (minimi[i]) continue;
            altezze[i] = resto * pesi[i] / somma;
            if (altezze[i] >= minima) continue;
            altezze[i] = minima;
            minimi[i] = true;
            ancora = true;
        }
    }
    return altezze;
}

std::vector<double> Scosta(std::vector<double> centri, double lato, double da, double a) {
    if (centri.empty()) return centri;
    lato = std::min(lato, (a - da) / static_cast<double>(centri.size()));
    struct Gruppo {
        double Somma = 0.0;  // of the first mark's places that each of its marks wishes
        int Numero = 0;
        double Primo = 0.0;
    };
    std::vector<Gruppo> gruppi;
    const auto metti = [&](Gruppo& g) {
        g.Primo = std::clamp(g.Somma / g.Numero, da + lato / 2.0,
                             std::max(da + lato / 2.0, a + lato / 2.0 - g.Numero * lato));
    };
    for (const double centro : centri) {
        gruppi.push_back({centro, 1, 0.0});
        metti(gruppi.back());
        while (gruppi.size() > 1) {
            Gruppo& sopra = gruppi[gruppi.size() - 2];
            const Gruppo& sotto = gruppi.back();
            if (sopra.Primo + sopra.Numero * lato <= sotto.Primo) break;
            sopra.Somma += sotto.Somma - sotto.Numero * (sopra.Numero * lato);
            sopra.Numero += sotto.Numero;
            gruppi.pop_back();
            metti(sopra);
        }
    }
    auto centro = centri.begin();
    for (const Gruppo& g : gruppi) {
        for (int n = 0; n < g.Numero; ++n) *centro++ = g.Primo + n * lato;
    }
    return centri;
}

double ValoreCurva(const CurvaGiro& curva, double x) {
    const auto& xs = curva.X;
    if (xs.empty() || curva.Y.size() < xs.size()) return 0.0;
    const auto dopo = std::upper_bound(xs.begin(), xs.end(), x);
    if (dopo == xs.begin()) return curva.Y.front();
    if (dopo == xs.end()) return curva.Y[xs.size() - 1];
    const auto i = static_cast<std::size_t>(dopo - xs.begin());
    const double parte = (x - xs[i - 1]) / (xs[i] - xs[i - 1]);
    return curva.Y[i - 1] + parte * (curva.Y[i] - curva.Y[i - 1]);
}

QString TestoPosto(const DatiQuadri& dati, double x) {
    return dati.PerDistanza ? Numero(x, 0) + QStringLiteral(" m")
                            : Numero(x, 2) + QStringLiteral(" s");
}

ScrittoriQuadri::ScrittoriQuadri(const QFont& base, double rapporto)
    : Piccolo(Carattere(base, Scrittura::Piccola), rapporto),
      Corpo(base, rapporto),
      Forte(Carattere(base, Scrittura::Forte), rapporto),
      Marca(Carattere(base, Scrittura::Lettera), rapporto) {}

PitturaQuadri::PitturaQuadri(const DatiQuadri& dati, double da, double a, const QSizeF& misura,
                             const Colori& colori, ScrittoriQuadri& scrittori,
                             double larghezzaTacche)
    : dati_(dati), da_(da), a_(a), misura_(misura), colori_(colori), scrittori_(scrittori) {
    DisponiQuadri(larghezzaTacche);
    DisponiX();
}

/// On whole pixels of the widget and of the screen: borders are sharp, and a value falls on the
/// same pixel whatever the texts around it.
double PitturaQuadri::Intero(double v) const {
    if (SuCarta()) return v;
    return std::round(std::round(v) * Rapporto()) / Rapporto();
}

double PitturaQuadri::Confine(int parte) const {
    if (parte <= 0) return 0.0;
    if (parte >= Parti()) return dati_.Fine;
    return dati_.Confini[static_cast<std::size_t>(parte) - 1];
}

std::size_t PitturaQuadri::ConLettere() const {
    const auto& quadri = dati_.Quadri;
    const auto trovato = std::find_if(quadri.begin(), quadri.end(),
                                      [](const QuadroConfronto& q) { return q.Distacco; });
    return trovato == quadri.end() ? 0 : static_cast<std::size_t>(trovato - quadri.begin());
}

void PitturaQuadri::DisponiQuadri(double larghezzaTacche) {
    const double riga = scrittori_.Corpo.Riga();
    const double largo = misura_.width();
    const double alto = dati_.Confini.empty() ? 0.0 : Intero(scrittori_.Piccolo.Riga() + 3.0);
    const double basso = Intero(misura_.height() - scrittori_.Piccolo.Riga() - 8.0);
    std::vector<double> pesi;
    std::size_t altri = 0;
    for (const QuadroConfronto& q : dati_.Quadri) {
        pesi.push_back(q.Distacco ? kPesoDistacco : kPesi[std::min(altri++, std::size(kPesi) - 1)]);
    }
    const auto altezze = AltezzeQuadri(pesi, basso - alto, kQuadroMinimo);
    double y = alto;
    for (std::size_t i = 0; i < pesi.size(); ++i) {
        Quadro quadro;
        quadro.Posto.setCoords(0.0, Intero(y), largo, Intero(y + altezze[i]));
        quadro.Area = quadro.Posto.adjusted(0.0, riga + 2.0, 0.0, -1.0);
        y += altezze[i];
        DisponiY(dati_.Quadri[i], quadro);
        quadri_.push_back(std::move(quadro));
    }
    const double sinistra = Intero(std::max(3.3 * riga, larghezzaTacche + 16.0));
    const double destra = std::max(sinistra + 1.0, Intero(largo - 2.1 * riga));
    for (Quadro& quadro : quadri_) {
        quadro.Area.setLeft(sinistra);
        quadro.Area.setRight(destra);
    }
    if (alto > 0.0) righello_ = QRectF(sinistra, 0.0, destra - sinistra, alto);
    asse_ = QRectF(0.0, basso, largo, misura_.height() - basso);
    x_ = {da_, a_, sinistra, destra};
}

/// The scale of what is in sight. Where that lies near zero, a gained time shows its zero.
void PitturaQuadri::DisponiY(const QuadroConfronto& dati, Quadro& quadro) const {
    double minimo = HUGE_VAL;
    double massimo = -HUGE_VAL;
    for (const CurvaGiro& curva : dati.Curve) Allarga(curva, da_, a_, minimo, massimo);
    const bool niente = minimo > massimo;
    if (niente) minimo = massimo = 0.0;
    const double ampia = AmpiezzaMinima(dati, minimo, massimo);
    const double aggiunta = std::max(0.0, ampia - (massimo - minimo)) / 2.0;
    minimo -= aggiunta;
    massimo += aggiunta;
    if (dati.Distacco) {
        const double ampiezza = massimo - minimo;
        if (minimo > 0.0 && minimo <= ampiezza) minimo = 0.0;
        if (massimo < 0.0 && -massimo <= ampiezza) massimo = 0.0;
    }
    const QRectF& area = quadro.Area;
    const double respiro = std::min(kRespiro, area.height() / 4.0);
    const ScalaPixel dentro{minimo, massimo, area.bottom() - respiro, area.top() + respiro};
    quadro.Y = {dentro.Valore(area.bottom()), dentro.Valore(area.top()), area.bottom(), area.top()};
    if (niente && !dati.Distacco) return;
    const double riga = scrittori_.Piccolo.Riga();
    for (const double righe : kRigheTacca) {
        const int massime = static_cast<int>(area.height() / (righe * riga)) + 1;
        quadro.Tacche =
            TaccheY(dati, quadro.Y.Da, quadro.Y.A, std::clamp(massime, 3, kTaccheMassime));
        if (quadro.Tacche.size() >= 3) break;
    }
}

void PitturaQuadri::DisponiX() {
    if (!x_.Valida()) return;
    const double etichetta = scrittori_.Piccolo.LargoCifre(QStringLiteral("0000")) * 1.6;
    const double quante = (Destra() - Sinistra()) / std::max(1.0, etichetta);
    const Tacche tacche = CalcolaTacche(da_, a_, static_cast<int>(std::clamp(quante, 2.0, 24.0)));
    const char separatore = platform().DecimalSeparator();
    for (const double valore : tacche.Valori) {
        tacche_.push_back({valore, ColMeno(TestoTacca(valore, tacche, separatore))});
    }
}

/// The points in sight, in pixels.
Tratto PitturaQuadri::Punti(const CurvaGiro& curva, const ScalaPixel& x,
                            const ScalaPixel& y) const {
    const auto [primo, oltre] = InVista(curva, da_, a_);
    const double fx = (x.PixelA - x.PixelDa) / (x.A - x.Da);
    const double fy = (y.PixelA - y.PixelDa) / (y.A - y.Da);
    Tratto punti;
    punti.reserve(oltre - primo);
    for (std::size_t i = primo; i < oltre; ++i) {
        punti.push_back(
            {x.PixelDa + (curva.X[i] - x.Da) * fx, y.PixelDa + (curva.Y[i] - y.Da) * fy});
    }
    return punti;
}

/// As they are drawn: the reference below all, the lap in focus above.
std::vector<const CurvaGiro*> PitturaQuadri::InOrdine(const QuadroConfronto& dati) const {
    std::vector<const CurvaGiro*> curve;
    for (const CurvaGiro& curva : dati.Curve) curve.push_back(&curva);
    const auto strato = [this](const CurvaGiro* c) {
        return c->Lettera == kRiferimento ? 0 : c->Lettera == dati_.Fuoco ? 2 : 1;
    };
    std::stable_sort(curve.begin(), curve.end(),
                     [&](const auto* a, const auto* b) { return strato(a) < strato(b); });
    return curve;
}

double PitturaQuadri::Larghezza(char lettera) const {
    if (lettera == kRiferimento) return kTrattoRiferimento;
    return lettera == dati_.Fuoco ? kTrattoFuoco : kTratto;
}

void PitturaQuadri::RigaVerticale(QPainter& penna, double x, double da, double a,
                                  const QColor& tinta) const {
    FiloSinistro(penna, QRectF(x, da, 1.0, a - da), tinta);
}

void PitturaQuadri::RigaOrizzontale(QPainter& penna, double y, double da, double a,
                                    const QColor& tinta) const {
    FiloAlto(penna, QRectF(da, y, a - da, 1.0), tinta);
}

void PitturaQuadri::Fondo(QPainter& penna) const {
    penna.fillRect(QRectF(QPointF(), misura_), colori_.Plot);
    DisegnaTratti(penna);
    DisegnaConfini(penna);
    for (std::size_t i = 0; i < quadri_.size(); ++i) DisegnaQuadro(penna, i);
    RigaVerticale(penna, Sinistra() - Filo(penna), 0.0, asse_.top(), colori_.Edge);
    DisegnaAsseX(penna);
    DisegnaLettere(penna);
    Riquadro(penna, QRectF(QPointF(), misura_), 0.0, {}, colori_.Line);
}

/// The ruler, and the parts where most is lost through all panes.
void PitturaQuadri::DisegnaTratti(QPainter& penna) const {
    if (righello_.isEmpty() || !x_.Valida()) return;
    const QColor velo = Tinta(colori_.Plot, colori_.LossSoft, kVeloTratto);
    for (int parte = 0; parte < Parti(); ++parte) {
        const double da = std::max(x_.Pixel(Confine(parte)), Sinistra());
        const double a = std::min(x_.Pixel(Confine(parte + 1)), Destra());
        if (a <= da) continue;
        // Where all parts are the worst the colour would tell nothing.
        const auto& peggiori = dati_.Peggiori;
        const bool peggiore = std::find(peggiori.begin(), peggiori.end(), parte) != peggiori.end();
        if (peggiore && std::ssize(peggiori) < Parti()) {
            penna.fillRect(SuiPixel(penna, QRectF(da, 0.0, a - da, asse_.top())), velo);
        }
        Scrittore& scritta = peggiore ? scrittori_.Marca : scrittori_.Piccolo;
        const QString numero = QString::number(parte + 1);
        if (scritta.Largo(numero) + 4.0 > a - da) continue;
        penna.setFont(scritta.Carattere());
        penna.setPen(peggiore ? colori_.Loss : colori_.Text2);
        scritta.Scrivi(penna, QRectF(da, 0.0, a - da, righello_.height()), Qt::AlignCenter, numero);
    }
    RigaOrizzontale(penna, righello_.bottom() - Filo(penna), 0.0, misura_.width(), colori_.Grid);
}

void PitturaQuadri::DisegnaConfini(QPainter& penna) const {
    if (!x_.Valida()) return;
    const double filo = Filo(penna);
    for (const double confine : dati_.Confini) {
        if (confine <= da_ || confine >= a_) continue;
        const double x = x_.Pixel(confine);
        if (SuCarta()) {
            QPen punteggiata(colori_.Edge, filo);
            punteggiata.setCapStyle(Qt::FlatCap);
            punteggiata.setDashPattern({1.0, kPunto / filo - 1.0});
            penna.setPen(punteggiata);
            penna.drawLine(QPointF(x, 0.0), QPointF(x, asse_.top()));
            continue;
        }
        const QRectF punto(SuiPixel(penna, QPointF(x, 0.0)), QSizeF(filo, filo));
        const int punti = static_cast<int>(asse_.top() / kPunto);
        for (int n = 0; n < punti; ++n) {
            penna.fillRect(punto.translated(0.0, (n + 0.5) * kPunto), colori_.Edge);
        }
    }
}

void PitturaQuadri::DisegnaQuadro(QPainter& penna, std::size_t i) const {
    const Quadro& quadro = quadri_[i];
    const QRectF& area = quadro.Area;
    const double riga = scrittori_.Piccolo.Riga();
    if (i > 0) RigaOrizzontale(penna, quadro.Posto.top(), 0.0, misura_.width(), colori_.Line);
    penna.setPen(colori_.Text2);
    for (const EtichettaAsse& tacca : quadro.Tacche) {
        const double y = quadro.Y.Pixel(tacca.Valore);
        const bool zero = dati_.Quadri[i].Distacco && tacca.Testo == QLatin1String("0");
        RigaOrizzontale(penna, y, area.left(), area.right(),
                        zero ? Tinta(colori_.Plot, colori_.Edge, kVeloTratto) : colori_.Grid);
        // Figures at the ends of a pane stay inside of it.
        const double alto = std::clamp(y - riga / 2.0, quadro.Posto.top(),
                                       std::max(quadro.Posto.top(), area.bottom() + 3.0 - riga));
        scrittori_.Piccolo.Cifre(penna, QRectF(0.0, alto, area.left() - 6.0, riga), tacca.Testo);
    }
    if (dati_.Quadri[i].Distacco) DisegnaSuperficie(penna, i);
    DisegnaTitolo(penna, i);
}

/// The area between the lap in focus and zero.
void PitturaQuadri::DisegnaSuperficie(QPainter& penna, std::size_t i) const {
    const Quadro& quadro = quadri_[i];
    const auto& curve = dati_.Quadri[i].Curve;
    const auto fuoco = std::find_if(curve.begin(), curve.end(), [this](const CurvaGiro& c) {
        return dati_.Fuoco != 0 && c.Lettera == dati_.Fuoco;
    });
    if (fuoco == curve.end() || !x_.Valida() || !quadro.Y.Valida()) return;
    const QRectF& area = quadro.Area;
    const double zero = quadro.Y.Pixel(0.0);
    const Rettangolo campo{area.left(), area.top() - kLontano, area.right(),
                           area.bottom() + kLontano};
    penna.save();
    penna.setPen(Qt::NoPen);
    for (const Tratto& tratto : TagliaLinea(Dirada(Punti(*fuoco, x_, quadro.Y), kColonna), campo)) {
        QPolygonF forma;
        forma.reserve(static_cast<qsizetype>(tratto.size()) + 2);
        forma.append(QPointF(tratto.front().X, zero));
        for (const PuntoGrafico& p : tratto) forma.append(QPointF(p.X, p.Y));
        forma.append(QPointF(tratto.back().X, zero));
        for (const bool sopra : {true, false}) {
            const double confine = std::clamp(zero, area.top(), area.bottom());
            QRectF mezza = area;
            sopra ? mezza.setBottom(confine) : mezza.setTop(confine);
            if (mezza.isEmpty()) continue;
            QColor velo = sopra ? colori_.Loss : colori_.Gain;
            velo.setAlphaF(static_cast<float>(kVeloSuperficie));
            penna.save();
            penna.setClipRect(mezza, Qt::IntersectClip);
            penna.setBrush(velo);
            penna.drawPolygon(forma);
            penna.restore();
        }
    }
    penna.restore();
}

void PitturaQuadri::DisegnaTitolo(QPainter& penna, std::size_t i) const {
    const QuadroConfronto& dati = dati_.Quadri[i];
    const QRectF& area = quadri_[i].Area;
    const double alto = quadri_[i].Posto.top() + 1.0;
    double x = area.left() + 8.0;
    const double riga = scrittori_.Corpo.Riga();
    const auto scrivi = [&](Scrittore& con, const QColor& tinta, const QString& testo) {
        const double largo = con.Largo(testo);
        // A word that has no room is left out, with all behind it.
        if (x + largo > area.right()) {
            x = area.right();
            return;
        }
        penna.setFont(con.Carattere());
        penna.setPen(tinta);
        con.Scrivi(penna, QRectF(x, alto, largo, riga), Qt::AlignLeft | Qt::AlignVCenter, testo);
        x += largo;
    };
    scrivi(scrittori_.Forte, colori_.Text, InQt(dati.Titolo));
    x += riga / 4.0;
    scrivi(scrittori_.Corpo, colori_.Text2, InQt(dati.Unita));
    if (!dati.Distacco) return;
    x += 1.6 * riga;
    scrivi(scrittori_.Piccolo, colori_.Loss,
           QStringLiteral("\u25B2 ") + InQt(Testo(Voce::PiuLento)));
    x += 0.7 * riga;
    scrivi(scrittori_.Piccolo, colori_.Gain,
           QStringLiteral("\u25BC ") + InQt(Testo(Voce::PiuVeloce)));
}

/// The letters at the ends of the curves, in the pane of the gained time or else in the first.
void PitturaQuadri::DisegnaLettere(QPainter& penna) const {
    if (quadri_.empty()) return;
    const std::size_t i = ConLettere();
    const Quadro& quadro = quadri_[i];
    if (!quadro.Y.Valida()) return;
    struct Segno {
        char Lettera;
        double Y;
    };
    std::vector<Segno> segni;
    for (const CurvaGiro& curva : dati_.Quadri[i].Curve) {
        const double y = quadro.Y.Pixel(ValoreCurva(curva, a_));
        if (!curva.X.empty() && std::isfinite(y)) segni.push_back({curva.Lettera, y});
    }
    std::stable_sort(segni.begin(), segni.end(),
                     [](const Segno& a, const Segno& b) { return a.Y < b.Y; });
    std::vector<double> centri;
    centri.reserve(segni.size());
    for (const Segno& segno : segni) centri.push_back(segno.Y);
    const double lato = std::round(scrittori_.Corpo.Riga() - 4.0);
    centri = Scosta(std::move(centri), lato + 2.0, quadro.Posto.top() + 1.0, quadro.Posto.bottom());
    const double x = Destra() + lato / 3.0;
    for (std::size_t n = 0; n < segni.size(); ++n) {
        LetteraGiro(penna, QRectF(x, Intero(centri[n] - lato / 2.0), lato, lato),
                    GiroDi(colori_, segni[n].Lettera), scrittori_.Corpo.Carattere());
    }
}

void PitturaQuadri::DisegnaAsseX(QPainter& penna) const {
    RigaOrizzontale(penna, asse_.top(), 0.0, misura_.width(), colori_.Edge);
    if (!x_.Valida()) return;
    Scrittore& scritta = scrittori_.Piccolo;
    const double riga = scritta.Riga();
    const double alto = asse_.top() + kTacca + 1.0;
    const QString unita = dati_.PerDistanza ? QStringLiteral("m") : QStringLiteral("s");
    const double fine = misura_.width() - 6.0;
    penna.setFont(scritta.Carattere());
    penna.setPen(colori_.Text2);
    scritta.Scrivi(penna, QRectF(0.0, alto, fine, riga), Qt::AlignRight, unita);
    for (const EtichettaAsse& tacca : tacche_) {
        const double x = x_.Pixel(tacca.Valore);
        RigaVerticale(penna, x, asse_.top(), asse_.top() + kTacca, colori_.Edge);
        const double mezzo = scritta.Largo(tacca.Testo) / 2.0;
        if (x + mezzo > fine - scritta.Largo(unita) - 4.0) continue;
        scritta.Scrivi(penna, QRectF(x - mezzo, alto, 2.0 * mezzo, riga), Qt::AlignHCenter,
                       tacca.Testo);
    }
}

void PitturaQuadri::Curve(QImage& foto, Tracciatore& tracciatore) const {
    const double r = Rapporto();
    const auto intero = [](double v) { return static_cast<int>(std::lround(v)); };
    const Tracciatore::Tela tela{reinterpret_cast<std::uint32_t*>(foto.bits()),
                                 foto.bytesPerLine() / 4};
    for (std::size_t i = 0; i < quadri_.size(); ++i) {
        // In the picture's own pixels.
        const QRectF area(quadri_[i].Area.topLeft() * r, quadri_[i].Area.size() * r);
        const ScalaPixel x{da_, a_, area.left(), area.right()};
        const ScalaPixel y{quadri_[i].Y.Da, quadri_[i].Y.A, area.bottom(), area.top()};
        if (!x.Valida() || !y.Valida()) continue;
        tracciatore.Inizia(tela, {std::clamp(intero(area.left()), 0, foto.width()),
                                  std::clamp(intero(area.top()), 0, foto.height()),
                                  std::clamp(intero(area.right()) + 1, 0, foto.width()),
                                  std::clamp(intero(area.bottom()), 0, foto.height())});
        const Rettangolo campo{area.left() - kLontano, area.top() - kLontano,
                               area.right() + kLontano, area.bottom() + kLontano};
        for (const CurvaGiro* curva : InOrdine(dati_.Quadri[i])) {
            const double larghezza = Larghezza(curva->Lettera) * r;
            const std::uint32_t tinta = GiroDi(colori_, curva->Lettera).Tinta.rgb();
            const Tratto punti =
                Raddrizza(Dirada(Punti(*curva, x, y), std::max(larghezza, kColonna * r)));
            if (punti.size() > 1 && Finiti(punti, campo)) {
                tracciatore.Linea(punti, larghezza, tinta);
                continue;
            }
            for (const Tratto& tratto : TagliaLinea(punti, campo)) {
                tracciatore.Linea(tratto, larghezza, tinta);
            }
        }
        tracciatore.Traccia();
    }
}

void PitturaQuadri::Curve(QPainter& penna) const {
    for (std::size_t i = 0; i < quadri_.size(); ++i) {
        const Quadro& quadro = quadri_[i];
        if (!x_.Valida() || !quadro.Y.Valida()) continue;
        penna.save();
        penna.setClipRect(quadro.Area, Qt::IntersectClip);
        penna.setRenderHint(QPainter::Antialiasing);
        penna.setBrush(Qt::NoBrush);
        const QRectF area = quadro.Area.adjusted(-4.0, -4.0, 4.0, 4.0);
        for (const CurvaGiro* curva : InOrdine(dati_.Quadri[i])) {
            penna.setPen(QPen(GiroDi(colori_, curva->Lettera).Tinta, Larghezza(curva->Lettera),
                              Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            for (const Tratto& tratto :
                 TagliaLinea(Punti(*curva, x_, quadro.Y),
                             {area.left(), area.top(), area.right(), area.bottom()})) {
                // In pieces that share an end: one long jagged path takes a device that has to
                // fill it seconds.
                QPolygonF fila;
                for (const PuntoGrafico& p : tratto) {
                    fila.append(QPointF(p.X, p.Y));
                    if (fila.size() < kPuntiFila) continue;
                    penna.drawPolyline(fila);
                    fila = QPolygonF({fila.last()});
                }
                if (fila.size() > 1) penna.drawPolyline(fila);
            }
        }
        penna.restore();
    }
}

}  // namespace lapvane
