#include "analysis/compare/DisegnoIstogramma.h"

#include <algorithm>
#include <cmath>

#include "platform/qt/TestoQt.h"
#include "shell/NumeroTesto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kMargine = 12.0;
constexpr double kTacca = 6.0;
constexpr double kBarraMassima = 32.0;
constexpr double kFraGruppi = 0.22;  // of a band, without bars
constexpr double kFraBarre = 2.0;    // where the bars are wide enough for it

}  // namespace

/// Where everything goes for the present size and bands.
struct DisegnoIstogramma::Disposizione {
    QRectF Area;
    ScalaPixel Y;  ///< per cent
    Tacche TaccheY;
    double Gruppo = 0.0;  ///< width of a band
    double Barra = 0.0;   ///< and of a bar with its gap
    bool Numeri = false;  ///< there is room for the per cent over each bar
    bool Lettere = false;
};

DisegnoIstogramma::DisegnoIstogramma(QWidget* parent) : DisegnoPronto(parent) {
    setObjectName(QStringLiteral("istogramma"));
}

void DisegnoIstogramma::Imposta(DatiIstogramma dati) {
    dati_ = std::move(dati);
    setAccessibleName(dati_.Titolo);
    Sporca();
}

DisegnoIstogramma::Disposizione DisegnoIstogramma::Disponi() const {
    Disposizione d;
    const FasceCanale& f = dati_.Fasce;
    if (f.Numero <= 0 || f.Giri.empty()) return d;
    double massimo = 0.0;
    for (const QuoteGiro& giro : f.Giri) {
        for (const double quota : giro.Quote) massimo = std::max(massimo, quota * 100.0);
    }
    if (massimo <= 0.0) massimo = 100.0;
    const QFontMetricsF piccole(Carattere(*this, Scrittura::Piccola));
    const double riga = fontMetrics().height();
    const double sinistra = kMargine + piccole.horizontalAdvance(QStringLiteral("100")) + kTacca;
    const double sopra = kMargine + riga + kSpazio + piccole.height();
    const double sotto = piccole.height() + 4.0 + riga + kSpazio;
    d.Area.setCoords(std::round(sinistra), std::round(sopra), std::round(width() - kMargine),
                     std::round(height() - sotto));
    if (d.Area.width() < 20.0 || d.Area.height() < 20.0) {
        d.Area = {};
        return d;
    }
    d.Y = {0.0, massimo, d.Area.bottom(), d.Area.top()};
    d.TaccheY = CalcolaTacche(
        0.0, massimo, static_cast<int>(std::clamp(d.Area.height() / (2.5 * riga), 2.0, 8.0)));
    d.Gruppo = d.Area.width() / f.Numero;
    d.Barra =
        std::min(d.Gruppo * (1.0 - kFraGruppi) / static_cast<double>(f.Giri.size()), kBarraMassima);
    d.Numeri = d.Barra >= piccole.horizontalAdvance(QStringLiteral("00")) + 2.0;
    d.Lettere = d.Barra >= piccole.horizontalAdvance(QLatin1Char('R')) + 2.0;
    return d;
}

QRectF DisegnoIstogramma::Barra(const Disposizione& d, const DatiIstogramma& dati, int fascia,
                                int giro) {
    const auto& giri = dati.Fasce.Giri;
    const double quota =
        giri[static_cast<std::size_t>(giro)].Quote[static_cast<std::size_t>(fascia)];
    const double tutte = d.Barra * static_cast<double>(giri.size());
    const double x = d.Area.left() + (fascia + 0.5) * d.Gruppo - tutte / 2.0 + giro * d.Barra;
    const double vuoto = d.Barra > 3.0 * kFraBarre ? kFraBarre : 0.0;
    const double y = d.Y.Pixel(quota * 100.0);
    return {x + vuoto / 2.0, y, d.Barra - vuoto, d.Area.bottom() - y};
}

QRectF DisegnoIstogramma::Barra(int fascia, int giro) const {
    return Barra(Disponi(), dati_, fascia, giro);
}

/// The lower end of a band as text.
QString DisegnoIstogramma::Confine(int i) const {
    const FasceCanale& f = dati_.Fasce;
    Tacche tacche;
    tacche.Passo = f.Passo;
    tacche.Decimali = std::max(0, -static_cast<int>(std::floor(std::log10(f.Passo) + 1e-9)));
    // 3 * 0.1 and the like must not end in a rounding.
    return TestoAsse(std::round(f.Da / f.Passo + i) * f.Passo, tacche);
}

void DisegnoIstogramma::Disegna(QImage& foto) {
    QPainter penna(&foto);
    const Disposizione d = Disponi();
    if (d.Area.isEmpty()) {
        DisegnaInvito(penna, dati_.Invito);
        return;
    }
    DisegnaAsse(penna, d);
    DisegnaBarre(penna, d);
    DisegnaFasce(penna, d);
    DisegnaLegenda(penna, d);
}

void DisegnoIstogramma::DisegnaAsse(QPainter& penna, const Disposizione& d) const {
    const Colori& c = ColoriDi(*this);
    const QFont piccolo = Carattere(*this, Scrittura::Piccola);
    const QFontMetricsF misure(piccolo);
    penna.setFont(piccolo);
    penna.setPen(c.Text2);
    for (const double v : d.TaccheY.Valori) {
        const double y = d.Y.Pixel(v);
        if (v > 0.0) FiloAlto(penna, QRectF(d.Area.left(), y, d.Area.width(), 1.0), c.Grid);
        const QString testo = TestoAsse(v, d.TaccheY);
        penna.drawText(QPointF(d.Area.left() - kTacca - misure.horizontalAdvance(testo),
                               y + misure.capHeight() / 2.0),
                       testo);
    }
    DisegnaTitolo(penna, QPointF(d.Area.left(), kMargine + QFontMetricsF(font()).ascent()),
                  dati_.Titolo, QStringLiteral("%"));
}

void DisegnoIstogramma::DisegnaBarre(QPainter& penna, const Disposizione& d) const {
    const Colori& c = ColoriDi(*this);
    const QFont piccolo = Carattere(*this, Scrittura::Piccola);
    const QFontMetricsF misure(piccolo);
    penna.setFont(piccolo);
    const auto centrato = [&](double x, double y, const QString& testo) {
        penna.drawText(QPointF(x - misure.horizontalAdvance(testo) / 2.0, y), testo);
    };
    const auto& giri = dati_.Fasce.Giri;
    for (int fascia = 0; fascia < dati_.Fasce.Numero; ++fascia) {
        for (int giro = 0; giro < static_cast<int>(giri.size()); ++giro) {
            const QuoteGiro& quote = giri[static_cast<std::size_t>(giro)];
            const QRectF barra = Barra(d, dati_, fascia, giro);
            penna.fillRect(SuiPixel(penna, barra), GiroDi(c, quote.Lettera).Tinta);
            penna.setPen(c.Text2);
            const double mezzo = barra.center().x();
            if (d.Numeri) {
                const double quota = quote.Quote[static_cast<std::size_t>(fascia)] * 100.0;
                centrato(mezzo, barra.top() - 3.0, InQt(Formatta(quota, "0")));
            }
            if (d.Lettere) {
                centrato(mezzo, d.Area.bottom() + 2.0 + misure.ascent(),
                         QString(QLatin1Char(quote.Lettera)));
            }
        }
    }
    FiloAlto(penna, QRectF(d.Area.left(), d.Area.bottom(), d.Area.width(), 1.0), c.Edge);
}

/// Both ends of each band below it; where they don't fit, the ends between the bands, and as many
/// of them as there is room for.
void DisegnoIstogramma::DisegnaFasce(QPainter& penna, const Disposizione& d) const {
    const QFontMetricsF misure(font());
    const double lettere =
        d.Lettere ? QFontMetricsF(Carattere(*this, Scrittura::Piccola)).height() : kGriglia;
    const double y = d.Area.bottom() + lettere + 4.0 + misure.ascent();
    const auto intera = [this](int i) { return dati_.Tratto.arg(Confine(i), Confine(i + 1)); };
    double larga = 0.0;
    double stretta = misure.horizontalAdvance(Confine(dati_.Fasce.Numero));
    for (int i = 0; i < dati_.Fasce.Numero; ++i) {
        larga = std::max(larga, misure.horizontalAdvance(intera(i)));
        stretta = std::max(stretta, misure.horizontalAdvance(Confine(i)));
    }
    const bool intere = larga + kSpazio <= d.Gruppo;
    const int ogni =
        intere ? 1 : std::max(1, static_cast<int>(std::ceil((stretta + kSpazio) / d.Gruppo)));
    penna.setFont(font());
    const Colori& c = ColoriDi(*this);
    penna.setPen(c.Text);
    for (int i = 0; i < dati_.Fasce.Numero + (intere ? 0 : 1); i += ogni) {
        const QString testo = intere ? intera(i) : Confine(i);
        const double x = d.Area.left() + (i + (intere ? 0.5 : 0.0)) * d.Gruppo;
        const double largo = misure.horizontalAdvance(testo);
        if (!intere) FiloSinistro(penna, QRectF(x, d.Area.bottom(), 1.0, kGriglia), c.Edge);
        penna.drawText(QPointF(std::min(x - largo / 2.0, width() - 2.0 - largo), y), testo);
    }
}

/// The letters above the bars, where they don't fit below them.
void DisegnoIstogramma::DisegnaLegenda(QPainter& penna, const Disposizione& d) const {
    if (d.Lettere) return;
    const double lato = Misure(*this).Lettera;
    double x = d.Area.right();
    for (auto giro = dati_.Fasce.Giri.rbegin(); giro != dati_.Fasce.Giri.rend(); ++giro) {
        x -= lato;
        LetteraGiro(penna, QRectF(x, kMargine, lato, lato), GiroDi(ColoriDi(*this), giro->Lettera),
                    font());
        x -= kGriglia;
    }
}

}  // namespace lapvane
