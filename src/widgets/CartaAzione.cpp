#include "widgets/CartaAzione.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kLatoCarta = 32;
constexpr int kMargineCarta = 14;
constexpr int kBordoPrincipale = 2;
constexpr int kLarghezzaMinima = 180;

}  // namespace

CartaAzione::CartaAzione(Forma forma, QWidget* parent) : QAbstractButton(parent), forma_(forma) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Misura();
}

void CartaAzione::Misura() {
    const int lato = forma_ == Forma::Carta ? InBox(kLatoCarta) : LatoIcona();
    setIconSize(QSize(lato, lato));
    updateGeometry();
}

void CartaAzione::Mostra(const QString& nome, const QString& riga, const QString& destra) {
    setText(nome);
    setAccessibleName(nome);
    setAccessibleDescription(riga);
    riga_ = riga;
    destra_ = destra;
    setToolTip(riga);
    updateGeometry();
    update();
}

void CartaAzione::Principale(bool principale) {
    principale_ = principale;
    update();
}

void CartaAzione::Fitta(bool fitta) {
    if (fitta == fitta_) return;
    fitta_ = fitta;
    updateGeometry();
}

int CartaAzione::Larghezza() const {
    const QFontMetrics piccola(Carattere(*this, Scrittura::Piccola));
    const QFontMetrics titolo(Carattere(*this, Scrittura::Titolo));
    const int tasti = destra_.isEmpty() ? 0 : kSpazio + piccola.horizontalAdvance(destra_);
    const int parole =
        std::max(titolo.horizontalAdvance(text()) + tasti, piccola.horizontalAdvance(riga_));
    return parole + iconSize().width() + 3 * Margine() + 1;
}

int CartaAzione::Margine() const {
    return forma_ == Forma::Carta ? kMargineCarta : kMargineCornice;
}

QSize CartaAzione::sizeHint() const {
    const int righe = QFontMetrics(Carattere(*this, Scrittura::Titolo)).height() +
                      QFontMetrics(Carattere(*this, Scrittura::Piccola)).height();
    const int aria = forma_ == Forma::Carta && !fitta_ ? 6 * kGriglia : 3 * kGriglia;
    return {Misure(*this).Largo(kLarghezzaMinima), std::max(righe, iconSize().height()) + aria};
}

QSize CartaAzione::minimumSizeHint() const {
    return sizeHint();
}

void CartaAzione::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    penna.setRenderHint(QPainter::Antialiasing);
    const Colori& colori = ColoriDi(*this);
    const bool puntata = isEnabled() && underMouse();
    const QColor fondo = isDown() ? colori.SelSoft : puntata ? colori.Alt : colori.Base;
    const QRectF posto(rect());
    if (forma_ == Forma::Carta) {
        const QColor bordo = principale_ && isEnabled() ? colori.Accent : colori.Line;
        Riquadro(penna, posto, kRaggioScheda, fondo, bordo, principale_ ? kBordoPrincipale : 1);
    } else {
        penna.fillRect(posto, fondo);
    }

    const int margine = Margine();
    const QRect icona(QPoint(margine, (height() - iconSize().height()) / 2), iconSize());
    icon().paint(&penna, icona, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);

    const QFont piccola = Carattere(*this, Scrittura::Piccola);
    const QFont titolo =
        Carattere(*this, forma_ == Forma::Carta ? Scrittura::Titolo : Scrittura::Corpo);
    const QFontMetrics misuraPiccola(piccola);
    const QFontMetrics misuraTitolo(titolo);
    const int sinistra = icona.right() + 1 + margine;
    int fine = width() - margine;
    penna.setPen(isEnabled() ? colori.Text2 : colori.Off);
    penna.setFont(piccola);
    const int alto = misuraTitolo.height() + misuraPiccola.height();
    const int cima = (height() - alto) / 2;
    const int largo = fine - sinistra;
    // The key stands beside the name, so that the line below has the whole width.
    if (!destra_.isEmpty()) {
        const int suo = misuraPiccola.horizontalAdvance(destra_);
        penna.drawText(QRect(fine - suo, cima, suo, misuraTitolo.height()), Qt::AlignVCenter,
                       destra_);
        fine -= suo + kSpazio;
    }
    penna.drawText(QRect(sinistra, cima + misuraTitolo.height(), largo, misuraPiccola.height()),
                   Qt::AlignVCenter,
                   misuraPiccola.elidedText(
                       riga_, forma_ == Forma::Riga ? Qt::ElideMiddle : Qt::ElideRight, largo));
    penna.setPen(isEnabled() ? colori.Text : colori.Off);
    penna.setFont(titolo);
    const int resto = fine - sinistra;
    penna.drawText(QRect(sinistra, cima, resto, misuraTitolo.height()), Qt::AlignVCenter,
                   misuraTitolo.elidedText(text(), Qt::ElideRight, resto));
}

void CartaAzione::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
        case Qt::Key_Down:
        case Qt::Key_Right:
            focusNextChild();
            break;
        case Qt::Key_Up:
        case Qt::Key_Left:
            focusPreviousChild();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!evento->isAutoRepeat()) click();
            break;
        default:
            QAbstractButton::keyPressEvent(evento);
    }
}

bool CartaAzione::event(QEvent* evento) {
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) Misura();
    return QAbstractButton::event(evento);
}

}  // namespace lapvane
