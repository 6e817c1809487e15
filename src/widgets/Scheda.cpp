#include "widgets/Scheda.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kRientro = 10;

}  // namespace

Scheda::Scheda(const char* nome, QWidget* parent) : QFrame(parent) {
    setObjectName(QLatin1String(nome));
    contenuto_ = new QVBoxLayout;
    contenuto_->setSpacing(0);
    colonna_ = new QVBoxLayout(this);
    colonna_->setSpacing(0);
    colonna_->addLayout(contenuto_, 1);
    Misura();
}

void Scheda::Titolo(const QString& testo) {
    if (testo == titolo_) return;
    titolo_ = testo;
    setAccessibleName(testo);
    update(0, 0, width(), capo_);
}

void Scheda::Nota(const QString& testo) {
    if (testo == nota_) return;
    nota_ = testo;
    update(0, 0, width(), capo_);
}

void Scheda::Misura() {
    capo_ = Misure(*this).Testata;
    colonna_->setContentsMargins(1, capo_, 1, 1);
}

void Scheda::changeEvent(QEvent* evento) {
    QFrame::changeEvent(evento);
    if (evento->type() == QEvent::FontChange) Misura();
}

void Scheda::paintEvent(QPaintEvent*) {
    const Colori& colori = ColoriDi(*this);
    QPainter penna(this);
    Riquadro(penna, rect(), kRaggioScheda, colori.Base, colori.Line);
    Riquadro(penna, QRectF(1, 1, width() - 2, capo_ - 2), kRaggioScheda - 1, colori.Alt);
    FiloBasso(penna, QRectF(1, 0, width() - 2, capo_), colori.Line);
    const QRect riga(kRientro, 0, width() - 2 * kRientro, capo_);
    penna.setFont(Carattere(*this, Scrittura::Forte));
    penna.setPen(colori.Text);
    const int suo = std::min(penna.fontMetrics().horizontalAdvance(titolo_), riga.width());
    penna.drawText(riga, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   penna.fontMetrics().elidedText(titolo_, Qt::ElideRight, riga.width()));
    const QRect resto = riga.adjusted(suo + kSpazio, 0, 0, 0);
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    penna.setPen(colori.Text2);
    penna.drawText(resto, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                   penna.fontMetrics().elidedText(nota_, Qt::ElideRight, resto.width()));
}

}  // namespace lapvane
