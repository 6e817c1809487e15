#include "widgets/GraficoWidget.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "shell/Protetto.h"

namespace lapvane {

namespace {

constexpr int kRiquadriMassimi = 3;
constexpr double kZoomMinimo = 6.0;  // pixels; less is a click with an unsteady hand
constexpr int kScattoRotella = 120;  // eighths of a degree
constexpr double kMezzoCursore = 3.0;
constexpr std::int32_t kSaltoCursore = 10;  // points, with Ctrl

}  // namespace

void GraficoWidget::Titolo(const std::string& testo) {
    titolo_ = testo;
    Sporca();
}

void GraficoWidget::EtichettaX(const std::string& testo) {
    etichettaX_ = testo;
    Sporca();
}

void GraficoWidget::EtichettaY(const std::string& testo) {
    unico_.Etichetta = testo;
    Sporca();
}

void GraficoWidget::ColoreAsse(Colore colore) {
    unico_.Tinta = colore;
    Sporca();
}

void GraficoWidget::ColoreSfondo(Colore colore) {
    sfondo_ = colore;
    Sporca();
}

void GraficoWidget::ColoreCornice(Colore colore) {
    cornice_ = colore;
    Sporca();
}

void GraficoWidget::MostraGriglia(bool mostra) {
    griglia_ = mostra;
    Sporca();
}

void GraficoWidget::MostraPunti(bool mostra) {
    punti_ = mostra;
    Sporca();
}

std::optional<QPointF> GraficoWidget::PixelDi(double x, double y) const {
    const QRectF area = AreaDisegno();
    const ScalaPixel suX = ScalaX(area), suY = ScalaY(area, unico_);
    if (!suX.Valida() || !suY.Valida()) return std::nullopt;
    return QPointF(suX.Pixel(x), suY.Pixel(y));
}

std::optional<QPointF> GraficoWidget::ValoriIn(const QPointF& pixel) const {
    const QRectF area = AreaDisegno();
    const ScalaPixel suX = ScalaX(area), suY = ScalaY(area, unico_);
    if (!suX.Valida() || !suY.Valida()) return std::nullopt;
    return QPointF(suX.Valore(pixel.x()), suY.Valore(pixel.y()));
}

void GraficoWidget::Livelli(std::vector<LivelloGrafico> livelli) {
    livelli_ = std::move(livelli);
    Sporca();
}

void GraficoWidget::Invito(const std::string& testo) {
    if (invito_ == testo) return;
    invito_ = testo;
    Sporca();
}

void GraficoWidget::MostraNumeriY(bool mostra) {
    numeriY_ = mostra;
    Sporca();
}

void GraficoWidget::PulisciGrafico() {
    elementi_.clear();
    separati_.clear();
    riquadroCorrente_ = 0;
    elementoAperto_ = false;
    Sporca();
}

std::int16_t GraficoWidget::ElementoCorrente() const {
    return static_cast<std::int16_t>(elementi_.size() + (elementoAperto_ ? 0 : 1));
}

void GraficoWidget::ImpostaIntervallo(double xMin, double xMax, double yMin, double yMax,
                                      int riquadro) {
    xMin_ = xMin;
    xMax_ = xMax;
    riquadroCorrente_ = std::clamp(riquadro, 0, kRiquadriMassimi);
    if (riquadroCorrente_ == 0) {
        unico_.YMin = yMin;
        unico_.YMax = yMax;
    } else {
        const auto i = static_cast<std::size_t>(riquadroCorrente_);
        if (separati_.size() < i) separati_.resize(i);
        separati_[i - 1] = {yMin, yMax, unico_.Tinta, unico_.Etichetta, 1.0};
    }
    Sporca();
}

IntervalloGrafico GraficoWidget::LeggiIntervallo() const {
    return {xMin_, xMax_, unico_.YMin, unico_.YMax};
}

void GraficoWidget::ScalaY(double fattore) {
    // A factor that is none would leave the axis without labels.
    unico_.Scala = std::isfinite(fattore) && fattore != 0.0 ? fattore : 1.0;
    Sporca();
}

void GraficoWidget::DisegnaArray(std::span<const double> x, std::span<const double> y, std::int16_t,
                                 double scala, int passo, const MisureCanale&) {
    Elemento elemento = prossimo_;
    elemento.Riquadro = riquadroCorrente_;
    const auto salto = static_cast<std::size_t>(std::max(passo, 1));
    const std::size_t numero = std::min(x.size(), y.size());
    elemento.Punti.reserve(numero / salto + 1);
    for (std::size_t n = 0; n < numero; n += salto) elemento.Punti.push_back({x[n], y[n] * scala});
    elementi_.push_back(std::move(elemento));
    elementoAperto_ = false;
    Sporca();
}

void GraficoWidget::AggiungiPunto(double x, double y) {
    if (!elementoAperto_) {
        elementi_.push_back(prossimo_);
        elementi_.back().Riquadro = riquadroCorrente_;
        elementoAperto_ = true;
    }
    elementi_.back().Punti.push_back({x, y});
    Sporca();
}

void GraficoWidget::AggiungiCursore() {
    if (!cursore_) cursore_.emplace();
}

void GraficoWidget::ImpostaModoCursore(ModoCursore modo) {
    if (cursore_) cursore_->Modo = modo;
}

void GraficoWidget::ColoreCursore(Colore colore) {
    if (!cursore_) return;
    cursore_->Tinta = colore;
    AggiornaCursore(PixelCursore());
}

void GraficoWidget::CursoreVisibile(bool visibile) {
    if (!cursore_) return;
    const auto prima = PixelCursore();
    cursore_->Visibile = visibile;
    AggiornaCursore(prima);
}

void GraficoWidget::CursoreX(double x) {
    if (!cursore_) return;
    if (sporco_) {
        cursore_->X = x;  // the whole is to be painted anyway
        return;
    }
    const auto prima = PixelCursore();
    cursore_->X = x;
    AggiornaCursore(prima);
}

void GraficoWidget::CursoreY(double y) {
    if (cursore_) cursore_->Y = y;
}

std::int32_t GraficoWidget::IndiceDaX(double x, double scala) const {
    if (elementi_.empty()) return 0;
    const auto& punti = elementi_.back().Punti;
    const double cercato = x * scala;
    std::size_t vicino = 0;
    for (std::size_t i = 1; i < punti.size(); ++i) {
        if (std::fabs(punti[i].X - cercato) < std::fabs(punti[vicino].X - cercato)) vicino = i;
    }
    return static_cast<std::int32_t>(vicino);
}

void GraficoWidget::ImpostaModoMouse(ModoMouse modo) {
    modoMouse_ = modo;
    zoom_.reset();
    setCursor(modo == ModoMouse::Zoom ? Qt::CrossCursor : Qt::ArrowCursor);
    update();
}

std::optional<double> GraficoWidget::PixelCursore() const {
    if (!cursore_ || !cursore_->Visibile) return std::nullopt;
    const QRectF area = AreaDisegno();
    const ScalaPixel scala = ScalaX(area);
    if (!scala.Valida()) return std::nullopt;
    const double pixel = scala.Pixel(cursore_->X);
    if (!(pixel >= area.left() - 0.5 && pixel <= area.right() + 0.5)) return std::nullopt;
    return pixel;
}

void GraficoWidget::AggiornaCursore(const std::optional<double>& prima) {
    // Only the two strips under the old and the new place; the picture below is in the cache.
    for (const auto& pixel : {prima, PixelCursore()}) {
        if (!pixel) continue;
        update(QRectF(*pixel - kMezzoCursore, 0.0, 2.0 * kMezzoCursore, height()).toAlignedRect());
    }
}

void GraficoWidget::MettiCursore(double x, double y, std::int32_t indice) {
    CursoreX(x);
    CursoreY(y);
    if (EventoCursore) EventoCursore(x, y, indice);
}

void GraficoWidget::MuoviCursore(const QPointF& punto) {
    if (!cursore_ || !cursoreAttivo_ || elementi_.empty()) return;
    const QRectF area = AreaDisegno();
    const ScalaPixel scala = ScalaX(area);
    if (!scala.Valida()) return;
    double x = scala.Valore(std::clamp(punto.x(), area.left(), area.right()));
    double y = cursore_->Y;
    const std::int32_t indice = IndiceDaX(x, 1.0);
    const auto& punti = elementi_.back().Punti;
    if (cursore_->Modo == ModoCursore::Aggancio && !punti.empty()) {
        x = punti[static_cast<std::size_t>(indice)].X;
        y = punti[static_cast<std::size_t>(indice)].Y;
    }
    MettiCursore(x, y, indice);
}

bool GraficoWidget::MuoviConTasto(const QKeyEvent& evento) {
    if (!cursore_ || !cursoreAttivo_ || modoMouse_ != ModoMouse::Cursore || elementi_.empty()) {
        return false;
    }
    const bool conCtrl = evento.modifiers() == Qt::ControlModifier;
    if (!conCtrl && (evento.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    const auto& punti = elementi_.back().Punti;
    const auto inVista = [&](const PuntoGrafico& p) { return p.X >= xMin_ && p.X <= xMax_; };
    const auto primo = std::find_if(punti.begin(), punti.end(), inVista);
    if (primo == punti.end()) return false;
    const auto da = static_cast<std::int32_t>(primo - punti.begin());
    const auto a = static_cast<std::int32_t>(
        punti.rend() - std::find_if(punti.rbegin(), punti.rend(), inVista) - 1);
    std::int32_t indice = IndiceDaX(cursore_->X, 1.0);
    const std::int32_t salto = conCtrl ? kSaltoCursore : 1;
    switch (evento.key()) {
        case Qt::Key_Left:
            indice -= salto;
            break;
        case Qt::Key_Right:
            indice += salto;
            break;
        case Qt::Key_Home:
            indice = da;
            break;
        case Qt::Key_End:
            indice = a;
            break;
        default:
            return false;
    }
    indice = std::clamp(indice, da, a);
    const PuntoGrafico& punto = punti[static_cast<std::size_t>(indice)];
    MettiCursore(punto.X, cursore_->Modo == ModoCursore::Aggancio ? punto.Y : cursore_->Y, indice);
    return true;
}

void GraficoWidget::keyPressEvent(QKeyEvent* evento) {
    if (zoom_ && evento->key() == Qt::Key_Escape) {
        zoom_.reset();
        update();
        return;
    }
    bool preso = false;
    Protetto([&] { preso = MuoviConTasto(*evento); });
    if (!preso) QWidget::keyPressEvent(evento);
}

void GraficoWidget::mouseMoveEvent(QMouseEvent* evento) {
    if (zoom_) {
        zoom_->setBottomRight(evento->position());
        update();
        return;
    }
    if (modoMouse_ == ModoMouse::Cursore && AreaDisegno().contains(evento->position())) {
        Protetto([&] { MuoviCursore(evento->position()); });
    }
}

void GraficoWidget::mousePressEvent(QMouseEvent* evento) {
    if (evento->button() == Qt::RightButton && zoom_) {
        zoom_.reset();
        update();
        return;
    }
    if (evento->button() != Qt::LeftButton) return;
    if (modoMouse_ == ModoMouse::Zoom) {
        zoom_ = QRectF(evento->position(), QSizeF(0.0, 0.0));
    } else {
        Protetto([&] { MuoviCursore(evento->position()); });
    }
}

void GraficoWidget::mouseReleaseEvent(QMouseEvent* evento) {
    if (!zoom_ || evento->button() != Qt::LeftButton) return;
    Protetto([&] { Ingrandisci(); });
}

void GraficoWidget::contextMenuEvent(QContextMenuEvent* evento) {
    const bool tasto = evento->reason() == QContextMenuEvent::Keyboard;
    if (!EventoMenu || (modoMouse_ == ModoMouse::Zoom && !tasto)) {
        evento->ignore();
        return;
    }
    Protetto([&] { EventoMenu(evento->globalPos()); });
}

void GraficoWidget::wheelEvent(QWheelEvent* evento) {
    if (!EventoRotella) {
        evento->ignore();
        return;
    }
    evento->accept();
    if (zoom_) return;
    // Pads turn by parts of a notch, and a turn back begins anew.
    const int giro = evento->angleDelta().y();
    if ((giro < 0) != (rotella_ < 0)) rotella_ = 0;
    for (rotella_ += giro; std::abs(rotella_) >= kScattoRotella;) {
        const bool verso = rotella_ < 0;
        rotella_ += verso ? kScattoRotella : -kScattoRotella;
        Protetto([&] { EventoRotella(verso); });
    }
}

QRectF GraficoWidget::RettangoloZoom() const {
    const QRectF area = AreaDisegno();
    QRectF scelto = zoom_->normalized();
    if (!separati_.empty()) {
        // The panes share nothing but the x axis.
        scelto.setTop(area.top());
        scelto.setBottom(AreaDisegno(kRiquadriMassimi - 1).bottom());
        return scelto.intersected(QRectF(area.topLeft(), QPointF(area.right(), scelto.bottom())));
    }
    return scelto.intersected(area);
}

void GraficoWidget::Ingrandisci() {
    const QRectF area = AreaDisegno();
    const QRectF scelto = RettangoloZoom();
    zoom_.reset();
    update();
    const ScalaPixel x = ScalaX(area);
    const ScalaPixel y = ScalaY(area, unico_);
    if (scelto.width() < kZoomMinimo || scelto.height() < kZoomMinimo || !x.Valida()) return;
    if (separati_.empty()) {
        if (!y.Valida()) return;
        unico_.YMin = y.Valore(scelto.bottom());
        unico_.YMax = y.Valore(scelto.top());
    }
    xMin_ = x.Valore(scelto.left());
    xMax_ = x.Valore(scelto.right());
    Sporca();
    if (EventoZoom) EventoZoom();
}

void GraficoWidget::changeEvent(QEvent* evento) {
    switch (evento->type()) {
        case QEvent::PaletteChange:
        case QEvent::FontChange:
        case QEvent::StyleChange:
            SporcaMisure();
            break;
        default:
            break;
    }
    QWidget::changeEvent(evento);
}

QSize GraficoWidget::sizeHint() const {
    return {720, 480};
}

QSize GraficoWidget::minimumSizeHint() const {
    return {200, 140};
}

}  // namespace lapvane
