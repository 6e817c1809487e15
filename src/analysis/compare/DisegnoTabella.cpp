#include "analysis/compare/DisegnoTabella.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kFuoco = 2.0;
constexpr double kRigheMinime = 3.0;

}  // namespace

DisegnoTabella::DisegnoTabella(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

DisegnoTabella::~DisegnoTabella() = default;

ScrittoriQuadri& DisegnoTabella::Scritti() const {
    const double rapporto = devicePixelRatioF();
    if (!scrittori_ || scrittori_->Corpo.Rapporto() != rapporto) {
        scrittori_ = std::make_unique<ScrittoriQuadri>(font(), rapporto);
    }
    return *scrittori_;
}

void DisegnoTabella::Rinnova() {
    Adatta();
    viewport()->update();
    if (hasFocus()) setAccessibleDescription(Testo());
}

void DisegnoTabella::Adatta() {
    misura_ = Disponi(viewport()->width());
    const auto metti = [](QScrollBar& barra, double tutto, double pagina, double passo) {
        barra.setRange(0, std::max(0, static_cast<int>(std::ceil(tutto - pagina))));
        barra.setPageStep(std::max(1, static_cast<int>(pagina)));
        barra.setSingleStep(static_cast<int>(passo));
    };
    const double riga = Misure(*this).Riga;
    metti(*horizontalScrollBar(), misura_.Larga - misura_.Fisse,
          viewport()->width() - misura_.Fisse, 2.0 * riga);
    metti(*verticalScrollBar(), misura_.Alta, viewport()->height() - misura_.Testata, riga);
}

QPointF DisegnoTabella::InTabella(const QPointF& punto) const {
    const double x = punto.x() < misura_.Fisse ? 0.0 : horizontalScrollBar()->value();
    const double y = punto.y() < misura_.Testata ? 0.0 : verticalScrollBar()->value();
    return punto + QPointF(x, y);
}

QRectF DisegnoTabella::InVista(const QRectF& cella) const {
    return cella.translated(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
}

void DisegnoTabella::Mostra(const QRectF& cella) {
    const auto porta = [](QScrollBar& barra, double da, double a, double inizio, double fine) {
        const double valore = barra.value();
        if (da - valore < inizio) barra.setValue(static_cast<int>(std::floor(da - inizio)));
        if (a - valore > fine) barra.setValue(static_cast<int>(std::ceil(a - fine)));
    };
    porta(*horizontalScrollBar(), cella.left(), cella.right(), misura_.Fisse, viewport()->width());
    porta(*verticalScrollBar(), cella.top(), cella.bottom(), misura_.Testata, viewport()->height());
}

void DisegnoTabella::DisegnaFuoco(QPainter& penna) {
    Riquadro(penna, viewport()->rect(), 0.0, {}, ColoriDi(*this).Accent, kFuoco);
}

void DisegnoTabella::paintEvent(QPaintEvent*) {
    const Colori& colori = ColoriDi(*this);
    QPainter penna(viewport());
    const QRectF tutto = viewport()->rect();
    penna.fillRect(tutto, colori.Base);
    const double largo = tutto.width();
    for (const bool fisse : {false, true}) {
        const double da = fisse ? 0.0 : misura_.Fisse;
        const double a = fisse ? misura_.Fisse : largo;
        const double x = fisse ? 0.0 : horizontalScrollBar()->value();
        penna.save();
        penna.setClipRect(QRectF(da, misura_.Testata, a - da, tutto.height() - misura_.Testata));
        penna.translate(-x, -verticalScrollBar()->value());
        DisegnaRighe(penna, fisse);
        penna.restore();
        penna.save();
        penna.setClipRect(QRectF(da, 0.0, a - da, misura_.Testata));
        penna.translate(-x, 0.0);
        penna.fillRect(QRectF(da + x, 0.0, a - da, misura_.Testata), colori.Alt);
        DisegnaTestata(penna, fisse);
        penna.restore();
    }
    FiloBasso(penna, QRectF(0.0, 0.0, largo, misura_.Testata), colori.Line);
    // What slides below the first columns ends at a line.
    if (horizontalScrollBar()->value() > 0) {
        FiloSinistro(penna, QRectF(misura_.Fisse - 1.0, 0.0, 1.0, tutto.height()), colori.Line);
    }
    if (hasFocus()) DisegnaFuoco(penna);
}

void DisegnoTabella::resizeEvent(QResizeEvent* evento) {
    QAbstractScrollArea::resizeEvent(evento);
    Adatta();
}

void DisegnoTabella::changeEvent(QEvent* evento) {
    QAbstractScrollArea::changeEvent(evento);
    switch (evento->type()) {
        case QEvent::FontChange:
        case QEvent::PaletteChange:
        case QEvent::StyleChange:
        case QEvent::LanguageChange:
            scrittori_.reset();
            Rinnova();
            break;
        default:
            break;
    }
}

void DisegnoTabella::focusInEvent(QFocusEvent* evento) {
    QAbstractScrollArea::focusInEvent(evento);
    setAccessibleDescription(Testo());
    viewport()->update();
}

void DisegnoTabella::focusOutEvent(QFocusEvent* evento) {
    QAbstractScrollArea::focusOutEvent(evento);
    viewport()->update();
}

QSize DisegnoTabella::minimumSizeHint() const {
    const Misure misure(*this);
    return {8 * misure.Riga, misure.Testata + static_cast<int>(kRigheMinime * misure.Riga)};
}

}  // namespace lapvane
