#include "analysis/compare/DisegnoQuadri.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "analysis/compare/DisegnoPittura.h"
#include "platform/qt/TestoQt.h"
#include "shell/Protetto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kScattoRotella = 120.0;  // of the wheel, one notch
constexpr double kZoomScatto = 1.25;      // of a notch
constexpr double kZoomTasto = 1.5;
constexpr double kVistaMinima = 1.0 / 500.0;  // of the whole
constexpr double kPagina = 0.8;               // of the view
constexpr double kMargineVista = 0.1;    // of the view, behind a cursor that is brought into it
constexpr int kSalto = 10;               // samples, with Ctrl
constexpr double kPresa = 4.0;           // pixels; so near to the second cursor is on it
constexpr double kRitaglioMinimo = 6.0;  // pixels; less is a click with an unsteady hand
constexpr double kLarghezzaCursore = 1.5;
constexpr double kTratteggio = 10.0;  // from one dash of the second cursor to the next
constexpr double kTrattoPieno = 6.0;
constexpr double kMezzoCursore = 3.0;
constexpr double kVeloRitaglio = 0.12;
constexpr double kFuoco = 2.0;
constexpr double kLarghezzaCarta = 1000.0;  // pixels that a printed page stands for ...
constexpr double kAltezzaCarta = 640.0;
constexpr int kCarattereCarta = 13;  // ... and its letters

}  // namespace

DisegnoQuadri::DisegnoQuadri(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    // The right button draws the stretch to zoom to.
    setContextMenuPolicy(Qt::PreventContextMenu);
}

DisegnoQuadri::~DisegnoQuadri() = default;

void DisegnoQuadri::Imposta(DatiQuadri dati) {
    LasciaGesto();
    const bool intera = Intera() || dati.PerDistanza != dati_.PerDistanza;
    const bool altroAsse = dati.PerDistanza != dati_.PerDistanza;
    pittura_.reset();  // it looks at the old data
    larghezzaTacche_.reset();
    dati_ = std::move(dati);
    Sporca();
    updateGeometry();
    Descrivi();
    const auto [da, a] = intera ? std::pair(0.0, dati_.Fine) : std::pair(da_, a_);
    MettiVista(da, a);
    MettiCursore(altroAsse ? 0.0 : cursore_);
    MettiSecondo(altroAsse ? std::nullopt : secondo_);
}

void DisegnoQuadri::Invito(const QString& frase) {
    invito_ = frase;
    Sporca();
}

bool DisegnoQuadri::Vuoto() const {
    return !(dati_.Fine > 0.0) || dati_.Quadri.empty();
}

void DisegnoQuadri::Sporca() {
    sporco_ = true;
    pittura_.reset();
    update();
}

/// The accessible name, unless the window has given one.
void DisegnoQuadri::Descrivi() {
    if (accessibleName() != descrizione_) return;
    QStringList nomi;
    for (const QuadroConfronto& q : dati_.Quadri) nomi.append(InQt(q.Titolo));
    descrizione_ = nomi.join(QStringLiteral(", "));
    setAccessibleName(descrizione_);
}

const PitturaQuadri& DisegnoQuadri::Pittura(double rapporto) const {
    if (!scrittori_ || scrittori_->Piccolo.Rapporto() != rapporto) {
        pittura_.reset();
        larghezzaTacche_.reset();
        scrittori_ = std::make_unique<ScrittoriQuadri>(font(), rapporto);
    }
    if (!larghezzaTacche_) larghezzaTacche_ = LarghezzaTacche(dati_, *scrittori_);
    if (!pittura_ || pittura_->Misura() != QSizeF(size())) {
        pittura_ = std::make_unique<PitturaQuadri>(dati_, da_, a_, size(), ColoriDi(*this),
                                                   *scrittori_, *larghezzaTacche_);
    }
    return *pittura_;
}

void DisegnoQuadri::MettiVista(double da, double a) {
    const double fine = dati_.Fine;
    if (!std::isfinite(da) || !std::isfinite(a) || !(fine > 0.0)) {
        da = a = 0.0;
    } else {
        const double minima = fine * kVistaMinima;
        if (a < da) std::swap(da, a);
        if (a - da < minima) {
            const double mezzo = (da + a) / 2.0;
            da = mezzo - minima / 2.0;
            a = mezzo + minima / 2.0;
        }
        const double ampiezza = std::min(a - da, fine);
        da = std::clamp(da, 0.0, fine - ampiezza);
        // The very end, whatever the sums have made of it.
        a = ampiezza >= fine ? fine : std::min(da + ampiezza, fine);
    }
    if (da == da_ && a == a_) return;
    da_ = da;
    a_ = a;
    Sporca();
    Q_EMIT VistaCambiata(da_, a_);
}

void DisegnoQuadri::VediParte(int parte) {
    const auto numero = static_cast<int>(dati_.Confini.size());
    if (parte < 0 || parte > numero) return;
    const auto confine = [&](int n) { return dati_.Confini[static_cast<std::size_t>(n)]; };
    MettiVista(parte == 0 ? 0.0 : confine(parte - 1),
               parte == numero ? dati_.Fine : confine(parte));
}

void DisegnoQuadri::Ingrandisci(double fattore, double x) {
    if (!(fattore > 0.0) || Vuoto()) return;
    // Where the least view is reached the value has to stay too.
    const double ampiezza = std::clamp((a_ - da_) / fattore, dati_.Fine * kVistaMinima, dati_.Fine);
    const double da = x - (x - da_) * ampiezza / (a_ - da_);
    MettiVista(da, da + ampiezza);
}

void DisegnoQuadri::MettiCursore(double x) {
    x = std::isfinite(x) ? std::clamp(x, 0.0, std::max(0.0, dati_.Fine)) : 0.0;
    if (x == cursore_) return;
    AggiornaCursore(cursore_);
    cursore_ = x;
    AggiornaCursore(cursore_);
    Q_EMIT CursoreMosso(x);
}

void DisegnoQuadri::MettiSecondo(std::optional<double> x) {
    if (x) x = std::isfinite(*x) ? std::clamp(*x, 0.0, std::max(0.0, dati_.Fine)) : 0.0;
    if (x == secondo_) return;
    AggiornaCursore(secondo_);
    secondo_ = x;
    AggiornaCursore(secondo_);
    Q_EMIT SecondoMosso(x);
}

QRectF DisegnoQuadri::Area(int quadro) const {
    return Pittura().Quadri().at(static_cast<std::size_t>(quadro)).Area;
}

std::pair<double, double> DisegnoQuadri::EstremiY(int quadro) const {
    const ScalaPixel& y = Pittura().Quadri().at(static_cast<std::size_t>(quadro)).Y;
    return {y.Da, y.A};
}

QRectF DisegnoQuadri::Righello() const {
    return Pittura().Righello();
}

double DisegnoQuadri::PixelX(double x) const {
    return Pittura().X().Pixel(x);
}

double DisegnoQuadri::ValoreX(double pixel) const {
    const PitturaQuadri& p = Pittura();
    return p.X().Valore(std::clamp(pixel, p.Sinistra(), p.Destra()));
}

// The picture.

void DisegnoQuadri::DisegnaInvito(QPainter& penna, const QRectF& posto,
                                  const Colori& colori) const {
    penna.fillRect(posto, colori.Plot);
    Riquadro(penna, posto, 0.0, {}, colori.Line);
    penna.setFont(font());
    penna.setPen(colori.Text2);
    penna.drawText(posto.adjusted(8.0, 8.0, -8.0, -8.0), Qt::AlignCenter | Qt::TextWordWrap,
                   invito_);
}

void DisegnoQuadri::Dipingi(QImage& foto, double rapporto) const {
    const QSize pixel = (QSizeF(size()) * rapporto).toSize().expandedTo(QSize(1, 1));
    if (foto.size() != pixel) foto = QImage(pixel, QImage::Format_RGB32);
    foto.setDevicePixelRatio(rapporto);
    QPainter penna(&foto);
    if (Vuoto()) {
        DisegnaInvito(penna, rect(), ColoriDi(*this));
        return;
    }
    const PitturaQuadri& pittura = Pittura(rapporto);
    pittura.Fondo(penna);
    penna.end();
    pittura.Curve(foto, tracciatore_);
}

QImage DisegnoQuadri::Fotografa(double rapporto) const {
    QImage foto;
    Dipingi(foto, rapporto);
    return foto;
}

void DisegnoQuadri::DisegnaSu(QPainter& penna, const QRectF& posto) const {
    if (posto.width() <= 0.0 || posto.height() <= 0.0) return;
    const double scala =
        std::sqrt(posto.width() * posto.height() / (kLarghezzaCarta * kAltezzaCarta));
    const QSizeF misura = posto.size() / scala;
    const Colori& colori = ColoriDi(Tema::Chiaro);
    QFont carattere = font();
    // In pixels: the page's resolution is in the scale already.
    carattere.setPixelSize(kCarattereCarta);
    carattere.setHintingPreference(QFont::PreferNoHinting);
    penna.save();
    penna.translate(posto.topLeft());
    penna.scale(scala, scala);
    penna.setClipRect(QRectF(QPointF(), misura), Qt::IntersectClip);
    if (Vuoto()) {
        DisegnaInvito(penna, QRectF(QPointF(), misura), colori);
    } else {
        ScrittoriQuadri scrittori(carattere, 0.0);
        const PitturaQuadri pittura(dati_, da_, a_, misura, colori, scrittori,
                                    LarghezzaTacche(dati_, scrittori));
        pittura.Fondo(penna);
        pittura.Curve(penna);
    }
    penna.restore();
}

QRectF DisegnoQuadri::Bandiera(double x) const {
    const PitturaQuadri& p = Pittura();
    const double largo = scrittori_->Marca.Largo(TestoPosto(dati_, x)) + 24.0;
    const double alto = std::min(p.Asse().height() - 3.0, scrittori_->Marca.Riga() + 2.0);
    const double sinistra =
        std::clamp(p.X().Pixel(x) - largo / 2.0, 0.0, std::max(0.0, p.Misura().width() - largo));
    return {sinistra, p.Asse().top() + 3.0, largo, alto};
}

void DisegnoQuadri::DisegnaCursore(QPainter& penna, double x, bool secondo) const {
    const PitturaQuadri& p = Pittura();
    if (x < da_ || x > a_ || !p.X().Valida()) return;
    const Colori& colori = ColoriDi(*this);
    const double r = p.Rapporto();
    const double sinistra = std::round((p.X().Pixel(x) - kLarghezzaCursore / 2.0) * r) / r;
    const double fine = p.Asse().top();
    penna.setRenderHint(QPainter::Antialiasing);
    const double passo = secondo ? kTratteggio : fine;
    const int tratti = static_cast<int>(std::ceil(fine / passo));
    for (int n = 0; n < tratti; ++n) {
        const double y = n * passo;
        const double lungo = secondo ? std::min(kTrattoPieno, fine - y) : fine;
        penna.fillRect(QRectF(sinistra, y, kLarghezzaCursore, lungo), colori.Accent);
    }
    const QRectF bandiera = Bandiera(x);
    Riquadro(penna, bandiera, kRaggioControllo, secondo ? colori.Plot : colori.Accent,
             colori.Accent);
    penna.setFont(scrittori_->Marca.Carattere());
    penna.setPen(secondo ? colori.Accent : colori.AccentText);
    scrittori_->Marca.Scrivi(penna, bandiera, Qt::AlignCenter, TestoPosto(dati_, x));
}

/// The stretch that is being drawn, to be zoomed to.
void DisegnoQuadri::DisegnaRitaglio(QPainter& penna) const {
    const auto [da, a] = std::minmax({PixelX(altroCapo_), PixelX(capo_)});
    const QRectF tratto(da, 0.0, a - da, Pittura().Asse().top());
    const QColor accento = ColoriDi(*this).Accent;
    QColor velo = accento;
    velo.setAlphaF(static_cast<float>(kVeloRitaglio));
    penna.fillRect(SuiPixel(penna, tratto), velo);
    FiloSinistro(penna, tratto, accento);
    FiloSinistro(penna, tratto.translated(tratto.width(), 0.0), accento);
}

void DisegnoQuadri::AggiornaCursore(std::optional<double> x) {
    // With a new picture to come the whole is painted anyway.
    if (!x || sporco_ || *x < da_ || *x > a_) return;
    const double pixel = PixelX(*x);
    update(QRectF(pixel - kMezzoCursore, 0.0, 2.0 * kMezzoCursore, height()).toAlignedRect());
    update(Bandiera(*x).adjusted(-1.0, -1.0, 1.0, 1.0).toAlignedRect());
}

void DisegnoQuadri::paintEvent(QPaintEvent*) {
    const double rapporto = devicePixelRatioF();
    if (sporco_ || foto_.devicePixelRatio() != rapporto ||
        foto_.size() != (QSizeF(size()) * rapporto).toSize()) {
        Dipingi(foto_, rapporto);
        sporco_ = false;
        ++ridisegni_;
    }
    QPainter penna(this);
    // Pixel for pixel: with a scale of its own the picture would be drawn as if it were stretched.
    const QImage pixel(foto_.constBits(), foto_.width(), foto_.height(), foto_.bytesPerLine(),
                       foto_.format());
    penna.save();
    penna.scale(1.0 / rapporto, 1.0 / rapporto);
    penna.drawImage(0, 0, pixel);
    penna.restore();
    if (!Vuoto()) {
        if (gesto_ == Gesto::Ritaglio) DisegnaRitaglio(penna);
        if (secondo_) DisegnaCursore(penna, *secondo_, true);
        DisegnaCursore(penna, cursore_, false);
    }
    if (hasFocus()) Riquadro(penna, rect(), 0.0, {}, ColoriDi(*this).Accent, kFuoco);
}

void DisegnoQuadri::changeEvent(QEvent* evento) {
    switch (evento->type()) {
        case QEvent::PaletteChange:
        case QEvent::FontChange:
        case QEvent::StyleChange:
        case QEvent::LanguageChange:
            pittura_.reset();
            scrittori_.reset();
            Sporca();
            updateGeometry();
            break;
        default:
            break;
    }
    QWidget::changeEvent(evento);
}

// The mouse.

bool DisegnoQuadri::SulSecondo(const QPointF& punto) const {
    return secondo_ && *secondo_ >= da_ && *secondo_ <= a_ &&
           std::fabs(PixelX(*secondo_) - punto.x()) <= kPresa;
}

/// The part whose number in the ruler is at the point; -1: none.
int DisegnoQuadri::ParteA(const QPointF& punto) const {
    if (Vuoto() || !Righello().contains(punto)) return -1;
    const auto& confini = dati_.Confini;
    return static_cast<int>(std::upper_bound(confini.begin(), confini.end(), ValoreX(punto.x())) -
                            confini.begin());
}

void DisegnoQuadri::AdattaPuntatore(const QPointF& punto) {
    Qt::CursorShape forma = Qt::ArrowCursor;
    if (gesto_ == Gesto::Sposta) {
        forma = Qt::ClosedHandCursor;
    } else if (gesto_ == Gesto::Ritaglio || gesto_ == Gesto::Secondo ||
               (!Vuoto() && SulSecondo(punto))) {
        forma = Qt::SplitHCursor;
    } else if (ParteA(punto) >= 0) {
        forma = Qt::PointingHandCursor;
    }
    if (cursor().shape() != forma) setCursor(forma);
}

void DisegnoQuadri::Premi(const QMouseEvent& evento) {
    if (Vuoto() || gesto_ != Gesto::Nessuno) return;
    const auto con = evento.modifiers();
    premuto_ = evento.position();
    afferrato_ = ValoreX(premuto_.x());
    const bool sinistro = evento.button() == Qt::LeftButton;
    nuovo_ = false;
    if (evento.button() == Qt::RightButton || (sinistro && con.testFlag(Qt::ControlModifier))) {
        gesto_ = Gesto::Ritaglio;
        altroCapo_ = capo_ = afferrato_;
    } else if (sinistro && con.testFlag(Qt::ShiftModifier)) {
        gesto_ = Gesto::Secondo;
        nuovo_ = !SulSecondo(premuto_);
        if (nuovo_) MettiSecondo(afferrato_);
    } else if (sinistro) {
        gesto_ = Gesto::Premuto;
    }
    AdattaPuntatore(premuto_);
}

void DisegnoQuadri::Muovi(const QPointF& punto) {
    if (Vuoto()) return;
    const double x = ValoreX(punto.x());
    const PitturaQuadri& p = Pittura();
    const bool lontano = (punto - premuto_).manhattanLength() >= QApplication::startDragDistance();
    if (gesto_ == Gesto::Premuto && lontano) gesto_ = Gesto::Sposta;
    switch (gesto_) {
        case Gesto::Sposta: {
            const double ampiezza = a_ - da_;
            const double quota = (punto.x() - p.Sinistra()) / (p.Destra() - p.Sinistra());
            MettiVista(afferrato_ - quota * ampiezza, afferrato_ + (1.0 - quota) * ampiezza);
            MettiCursore(ValoreX(punto.x()));
            break;
        }
        case Gesto::Ritaglio:
            capo_ = x;
            MettiCursore(x);
            update();
            break;
        case Gesto::Secondo:
            // A press on it takes it away, unless the mouse moves it.
            if (!nuovo_ && lontano) nuovo_ = true;
            if (nuovo_) MettiSecondo(x);
            break;
        default:
            if (punto.x() >= p.Sinistra() - kPresa && punto.x() <= p.Destra() + kPresa) {
                MettiCursore(x);
            }
            break;
    }
    AdattaPuntatore(punto);
}

void DisegnoQuadri::Rilascia(const QPointF& punto) {
    const Gesto gesto = gesto_;
    const double da = altroCapo_;
    const double a = capo_;
    LasciaGesto();
    AdattaPuntatore(punto);
    switch (gesto) {
        case Gesto::Premuto:
            if (ParteA(premuto_) >= 0) VediParte(ParteA(premuto_));
            break;
        case Gesto::Ritaglio:
            if (std::fabs(PixelX(a) - PixelX(da)) >= kRitaglioMinimo) MettiVista(da, a);
            break;
        case Gesto::Secondo:
            if (!nuovo_) MettiSecondo(std::nullopt);
            break;
        default:
            break;
    }
}

void DisegnoQuadri::LasciaGesto() {
    if (gesto_ == Gesto::Ritaglio) update();
    gesto_ = Gesto::Nessuno;
}

void DisegnoQuadri::mousePressEvent(QMouseEvent* evento) {
    Protetto([&] { Premi(*evento); });
}

void DisegnoQuadri::mouseMoveEvent(QMouseEvent* evento) {
    Protetto([&] { Muovi(evento->position()); });
}

void DisegnoQuadri::mouseReleaseEvent(QMouseEvent* evento) {
    Protetto([&] {
        Muovi(evento->position());
        Rilascia(evento->position());
    });
}

void DisegnoQuadri::mouseDoubleClickEvent(QMouseEvent* evento) {
    if (evento->button() == Qt::LeftButton && evento->modifiers() == Qt::NoModifier) {
        Protetto([&] { VediTutto(); });
    } else {
        mousePressEvent(evento);  // the second of two quick clicks that each set a cursor
    }
}

void DisegnoQuadri::wheelEvent(QWheelEvent* evento) {
    evento->accept();
    if (Vuoto()) return;
    const QPoint giro = evento->angleDelta();
    Protetto([&] {
        if (std::abs(giro.x()) > std::abs(giro.y())) {
            const double passo = -giro.x() / kScattoRotella * (a_ - da_) * kMargineVista;
            MettiVista(da_ + passo, a_ + passo);
        } else {
            Ingrandisci(std::pow(kZoomScatto, giro.y() / kScattoRotella),
                        ValoreX(evento->position().x()));
        }
    });
}

// The keys.

/// The place `passi` samples of the reference behind x.
double DisegnoQuadri::Campione(double x, int passi) const {
    const CurvaGiro* guida = nullptr;
    for (const QuadroConfronto& q : dati_.Quadri) {
        for (const CurvaGiro& curva : q.Curve) {
            if (curva.X.empty()) continue;
            if (guida == nullptr ||
                (guida->Lettera != kRiferimento && curva.Lettera == kRiferimento)) {
                guida = &curva;
            }
        }
    }
    if (guida == nullptr) return x;
    const auto& xs = guida->X;
    const auto posto = passi > 0 ? std::upper_bound(xs.begin(), xs.end(), x) - xs.begin() - 1
                                 : std::lower_bound(xs.begin(), xs.end(), x) - xs.begin();
    const auto ultimo = static_cast<std::ptrdiff_t>(xs.size()) - 1;
    return xs[static_cast<std::size_t>(std::clamp(posto + passi, std::ptrdiff_t{0}, ultimo))];
}

void DisegnoQuadri::PortaInVista(double x) {
    const double ampiezza = a_ - da_;
    if (x < da_) MettiVista(x - kMargineVista * ampiezza, x + (1.0 - kMargineVista) * ampiezza);
    if (x > a_) MettiVista(x - (1.0 - kMargineVista) * ampiezza, x + kMargineVista * ampiezza);
}

bool DisegnoQuadri::TastoCursore(int tasto, Qt::KeyboardModifiers con) {
    const bool secondo = con.testFlag(Qt::ShiftModifier);
    const int passi = con.testFlag(Qt::ControlModifier) ? kSalto : 1;
    double x = secondo && secondo_ ? *secondo_ : cursore_;
    switch (tasto) {
        case Qt::Key_Left:
            x = Campione(x, -passi);
            break;
        case Qt::Key_Right:
            x = Campione(x, passi);
            break;
        case Qt::Key_Home:
            x = da_;
            break;
        case Qt::Key_End:
            x = a_;
            break;
        default:
            return false;
    }
    PortaInVista(x);
    secondo ? MettiSecondo(x) : MettiCursore(x);
    return true;
}

bool DisegnoQuadri::Tasto(int tasto, Qt::KeyboardModifiers con) {
    if (con.testFlag(Qt::AltModifier) || con.testFlag(Qt::MetaModifier)) return false;
    if (tasto == Qt::Key_Escape && gesto_ == Gesto::Ritaglio) {
        LasciaGesto();
        return true;
    }
    if (tasto == Qt::Key_Escape && secondo_) {
        MettiSecondo(std::nullopt);
        return true;
    }
    if (Vuoto()) return false;
    const double fulcro = cursore_ >= da_ && cursore_ <= a_ ? cursore_ : (da_ + a_) / 2.0;
    const double pagina = kPagina * (a_ - da_);
    switch (tasto) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:  // the same key without Shift
            Ingrandisci(kZoomTasto, fulcro);
            return true;
        case Qt::Key_Minus:
            Ingrandisci(1.0 / kZoomTasto, fulcro);
            return true;
        case Qt::Key_0:
            VediTutto();
            return true;
        case Qt::Key_PageUp:
            MettiVista(da_ - pagina, a_ - pagina);
            return true;
        case Qt::Key_PageDown:
            MettiVista(da_ + pagina, a_ + pagina);
            return true;
        default:
            return TastoCursore(tasto, con);
    }
}

void DisegnoQuadri::keyPressEvent(QKeyEvent* evento) {
    bool preso = false;
    Protetto([&] { preso = Tasto(evento->key(), evento->modifiers()); });
    if (!preso) QWidget::keyPressEvent(evento);
}

QSize DisegnoQuadri::sizeHint() const {
    return {768, 390};
}

QSize DisegnoQuadri::minimumSizeHint() const {
    const double riga = fontMetrics().height();
    const auto quadri = static_cast<double>(std::max<std::size_t>(1, dati_.Quadri.size()));
    return QSizeF(16.0 * riga, quadri * kQuadroMinimo + 2.0 * riga + 12.0).toSize();
}

}  // namespace lapvane
