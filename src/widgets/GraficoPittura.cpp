// How the graph is painted on whatever takes lines and letters: panes, axes, legend, and on paper
// the curves.
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Contrasto.h"
#include "widgets/GraficoFoglio.h"

namespace lapvane {

namespace {

constexpr double kTrattoCarta = 1.0;
constexpr double kCursoreCarta = 0.8;
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

}  // namespace

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
        penna.setPen(
            InQColor(ColoreLeggibile(livello.Tinta, foglio.Sfondo, Foglio::kContrastoTesto)));
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
    const QColor cornice =
        InQColor(cornice_ && !foglio.Carta()
                     ? ColoreLeggibile(*cornice_, foglio.Sfondo, Foglio::kContrastoAsse)
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
    const QColor asse =
        InQColor(ColoreLeggibile(p.Dati.Tinta, foglio.Sfondo, Foglio::kContrastoAsse));
    const double spessore = foglio.Carta() ? Foglio::kAsse / 2.0 : Foglio::kAsse;
    foglio.Riempi(
        penna,
        QRectF(QPointF(area.left() - spessore, fuori.top()), QPointF(area.left(), fuori.bottom())),
        asse);
    const double riga = foglio.Penna->Riga();
    const double numeri = area.left() - Foglio::kAsse - Foglio::kTacca - 3.0;
    const auto scrivi = [&](double py, const QString& testo) {
        foglio.Penna->Scrivi(penna,
                             QRectF(numeri - d.LarghezzaY, py - riga / 2, d.LarghezzaY, riga),
                             Qt::AlignRight | Qt::AlignVCenter, testo);
    };
    penna.setPen(InQColor(ColoreLeggibile(p.Dati.Tinta, foglio.Sfondo, Foglio::kContrastoTesto)));
    for (const auto& tacca : p.Tacche) {
        const double py = y.Pixel(tacca.Valore);
        foglio.Riempi(penna,
                      foglio.Orizzontale(py, area.left() - Foglio::kAsse - Foglio::kTacca,
                                         area.left(), spessore / 2.0),
                      asse);
        scrivi(py, tacca.Testo);
    }
    for (std::size_t n = 0; n < d.Livelli.size(); ++n) {
        penna.setPen(
            InQColor(ColoreLeggibile(livelli_[n].Tinta, foglio.Sfondo, Foglio::kContrastoTesto)));
        scrivi(y.Pixel(d.Livelli[n].Valore), d.Livelli[n].Testo);
    }
}

/// The text of the y axis, upwards, in the colour of its last label.
void GraficoWidget::DisegnaEtichettaY(QPainter& penna, const Foglio& foglio, const Disposizione& d,
                                      std::size_t i) const {
    const auto& p = d.Pannelli[i];
    const QRectF& area = p.Area;
    penna.save();
    penna.translate(Foglio::kMargine, area.center().y());
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
                      foglio.Verticale(px, area.bottom(), area.bottom() + Foglio::kTacca,
                                       foglio.Carta() ? foglio.Filo : 1.0),
                      inchiostro);
        foglio.Penna->Scrivi(penna,
                             QRectF(px - 60.0, area.bottom() + Foglio::kTacca + 2.0, 120.0, riga),
                             Qt::AlignHCenter | Qt::AlignTop, tacca.Testo);
    }
}

void GraficoWidget::DisegnaLegenda(QPainter& penna, Foglio& foglio, const Disposizione& d) const {
    penna.setPen(InQColor(foglio.Testo));
    for (const auto& voce : d.Legenda) {
        penna.fillRect(voce.Segno, InQColor(ColoreLeggibile(voce.Tinta, foglio.Sfondo,
                                                            Foglio::kContrastoLinea)));
        foglio.Penna->Scrivi(penna, voce.Posto, Qt::AlignLeft | Qt::AlignVCenter, voce.Testo);
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
            const double larghezza = kTrattoCarta * Foglio::Spessore(elemento.Spessore);
            const Rettangolo campo{p.Area.left() - larghezza, p.Area.top() - larghezza,
                                   p.Area.right() + larghezza, p.Area.bottom() + larghezza};
            penna.setPen(QPen(
                InQColor(ColoreLeggibile(elemento.Tinta, foglio.Sfondo, Foglio::kContrastoLinea)),
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

void GraficoWidget::DisegnaCursoreSu(QPainter& penna, const Foglio& foglio,
                                     const Disposizione& d) const {
    if (!cursore_ || !cursore_->Visibile || !(cursore_->X >= xMin_ && cursore_->X <= xMax_)) return;
    for (const auto& p : d.Pannelli) {
        const ScalaPixel x = ScalaX(p.Area);
        if (!x.Valida()) continue;
        penna.fillRect(
            foglio.Verticale(x.Pixel(cursore_->X), p.Area.top(), p.Area.bottom(), kCursoreCarta),
            InQColor(ColoreLeggibile(cursore_->Tinta, foglio.Sfondo, Foglio::kContrastoAsse)));
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

}  // namespace lapvane
