#include "widgets/StrisciaPagine.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <array>

#include "shell/Protetto.h"
#include "widgets/ImmaginePagina.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr QSize kPiccola{56, 30};  // at least; wider ones are twice as wide as high
constexpr int kMargine = 3;        // around a picture
constexpr double kSpenta = 0.35;

}  // namespace

StrisciaPagine::StrisciaPagine(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StrisciaPagine::Pagine(int numero) {
    const auto quante = static_cast<std::size_t>(std::max(numero, 1));
    if (pagine_.size() == quante) return;
    pagine_.resize(quante);
    updateGeometry();
    update();
}

void StrisciaPagine::Mostra(int pagina, const QImage& immagine, bool accesa) {
    Pagina& quale = pagine_.at(static_cast<std::size_t>(pagina - 1));
    if (quale.Accesa == accesa && quale.Immagine.cacheKey() == immagine.cacheKey()) return;
    if (quale.Immagine.cacheKey() != immagine.cacheKey()) quale.Piccola = {};
    quale.Immagine = immagine;
    quale.Accesa = accesa;
    update(Posto(pagina));
}

void StrisciaPagine::Corrente(int pagina) {
    if (corrente_ == pagina) return;
    update(Posto(corrente_));
    corrente_ = pagina;
    update(Posto(corrente_));
}

QRect StrisciaPagine::Posto(int pagina) const {
    const int da = width() * (pagina - 1) / Pagine();
    return {da, 0, width() * pagina / Pagine() - da, height()};
}

QSize StrisciaPagine::minimumSizeHint() const {
    return {(kPiccola.width() + 2 * kMargine) * Pagine(),
            kPiccola.height() + 3 * kMargine + Misure(*this).Linea};
}

QSize StrisciaPagine::sizeHint() const {
    return minimumSizeHint();
}

void StrisciaPagine::Disegna(QPainter& penna, int pagina) {
    Pagina& quale = pagine_[static_cast<std::size_t>(pagina - 1)];
    const Colori& colori = ColoriDi(*this);
    const QRect posto = Posto(pagina);
    const int numero = Misure(*this).Linea;
    if (pagina == corrente_)
        Riquadro(penna, posto, kRaggioControllo, colori.SelSoft, colori.Accent, 2.0);
    const QRect spazio = posto.adjusted(kMargine, kMargine, -kMargine, -kMargine - numero);
    const int largo = std::min(spazio.width(), spazio.height() * 2);
    const QRect foto(spazio.center().x() - largo / 2 + 1, spazio.top(), largo, largo / 2);
    penna.setOpacity(quale.Accesa ? 1.0 : kSpenta);
    if (quale.Immagine.isNull()) {
        Riquadro(penna, foto, 0.0, {}, colori.Edge);
    } else {
        const QSize misura = (QSizeF(foto.size()) * devicePixelRatioF()).toSize();
        if (quale.Piccola.size() != misura)
            quale.Piccola = ImmaginePagina::Adatta(quale.Immagine, misura);
        penna.drawImage(foto, quale.Piccola);
        Riquadro(penna, foto, 0.0, {}, colori.Line);
    }
    penna.setOpacity(1.0);
    const QString testo = QString::number(pagina);
    const int spunta = quale.Accesa ? numero * 2 / 3 : 0;
    const int largoTesto = penna.fontMetrics().horizontalAdvance(testo);
    const int x = posto.center().x() - (largoTesto + spunta) / 2;
    const int y = posto.bottom() - kMargine - numero;
    penna.setPen(quale.Accesa ? colori.Text : colori.Text2);
    penna.drawText(QRect(x + spunta, y, largoTesto + 1, numero), Qt::AlignVCenter, testo);
    if (!quale.Accesa) return;
    const double lato = spunta - 3.0, mezzo = y + numero / 2.0;
    const std::array<QPointF, 3> punti = {QPointF(x, mezzo), QPointF(x + lato * 0.38, mezzo + 3.5),
                                          QPointF(x + lato, mezzo - 3.5)};
    Spezzata(penna, punti, colori.Ok, 2.0);
}

void StrisciaPagine::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    for (int n = 1; n <= Pagine(); ++n) Disegna(penna, n);
    if (hasFocus())
        Riquadro(penna, Posto(corrente_).adjusted(3, 3, -3, -3), 0.0, {}, ColoriDi(*this).Accent);
}

void StrisciaPagine::Chiedi(int pagina) {
    pagina = std::clamp(pagina, 1, Pagine());
    if (pagina == corrente_ || !EventoPagina) return;
    Protetto([&] { EventoPagina(pagina); });
}

void StrisciaPagine::mousePressEvent(QMouseEvent* evento) {
    if (evento->button() != Qt::LeftButton) return;
    for (int n = 1; n <= Pagine(); ++n) {
        if (Posto(n).contains(evento->position().toPoint())) return Chiedi(n);
    }
}

void StrisciaPagine::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
        case Qt::Key_Left:
            return Chiedi(corrente_ - 1);
        case Qt::Key_Right:
            return Chiedi(corrente_ + 1);
        case Qt::Key_Home:
            return Chiedi(1);
        case Qt::Key_End:
            return Chiedi(Pagine());
        default:
            QWidget::keyPressEvent(evento);
    }
}

void StrisciaPagine::focusInEvent(QFocusEvent* evento) {
    QWidget::focusInEvent(evento);
    update();
}

void StrisciaPagine::focusOutEvent(QFocusEvent* evento) {
    QWidget::focusOutEvent(evento);
    update();
}

}  // namespace lapvane
