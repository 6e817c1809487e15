// The picture of the graph in the screen's own pixels, and what moves over it.
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Contrasto.h"
#include "widgets/GraficoFoglio.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr double kSegno = 7.0;       // width of a mark
constexpr double kTratto = 1.5;      // pixels of a line of width 1: a hairline is lost in the sun
constexpr double kTrattoBox = 2.7;   // the same in the pit lane
constexpr double kLontano = 2000.0;  // pixels
constexpr double kLarghezzaCursore = 2.0;
constexpr double kFuoco = 2.0;  // width of the mark of the focus
constexpr double kVelo = 0.10;  // of the zoom rectangle

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

}  // namespace

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
                (ModoBox() ? kTrattoBox : kTratto) * Foglio::Spessore(elemento.Spessore) * r;
            const std::uint32_t tinta =
                Pixel(ColoreLeggibile(elemento.Tinta, foglio.Sfondo, Foglio::kContrastoLinea));
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
    const QColor tinta =
        InQColor(ColoreLeggibile(cursore_->Tinta, foglio.Sfondo, Foglio::kContrastoAsse));
    for (const auto& p : Disposta(rapporto).Pannelli) {
        QRectF riga = foglio.Verticale(*x, p.Area.top(), p.Area.bottom(), kLarghezzaCursore);
        // At the left edge it would hide the axis.
        riga.moveLeft(std::max(riga.left(), p.Area.left()));
        penna.fillRect(riga, tinta);
    }
}

void GraficoWidget::DisegnaZoom(QPainter& penna) const {
    QColor velo = palette().color(QPalette::Highlight);
    const Colore bordo = ColoreLeggibile(DaQColor(velo), Sfondo(), Foglio::kContrastoAsse);
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
                                             Sfondo(), Foglio::kContrastoAsse);
        const QRectF dentro = QRectF(rect()).adjusted(kFuoco, kFuoco, -kFuoco, -kFuoco);
        QRegion bordo = QRegion(rect()) - QRegion(dentro.toRect());
        for (const QRect& lato : bordo) penna.fillRect(lato, InQColor(fuoco));
    }
}

}  // namespace lapvane
