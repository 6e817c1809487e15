#include "widgets/Scrittore.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lapvane {

namespace {

constexpr qsizetype kTestiPronti = 300;  // a scrolling axis makes new labels for ever

}  // namespace

Scrittore::Scrittore(const QFont& carattere, double rapporto)
    : rapporto_(rapporto), carattere_(carattere), misura_(carattere) {
    for (char c = '0'; c <= '9'; ++c) {
        cifra_ = std::max(cifra_, misura_.horizontalAdvance(QLatin1Char(c)));
    }
}

double Scrittore::SuPixel(double v) const {
    return rapporto_ > 0.0 ? std::round(v * rapporto_) / rapporto_ : v;
}

double Scrittore::Largo(const QString& testo) {
    return rapporto_ > 0.0 ? Pronto(testo).size().width() : misura_.horizontalAdvance(testo);
}

const QStaticText& Scrittore::Pronto(const QString& testo) {
    const auto trovato = pronti_.constFind(testo);
    if (trovato != pronti_.constEnd()) return *trovato;
    if (pronti_.size() >= kTestiPronti) pronti_.clear();
    QStaticText nuovo(testo);
    nuovo.setTextFormat(Qt::PlainText);
    nuovo.prepare(QTransform::fromScale(rapporto_, rapporto_), carattere_);
    return *pronti_.insert(testo, nuovo);
}

void Scrittore::Scrivi(QPainter& penna, const QRectF& posto, Qt::Alignment come,
                       const QString& testo) {
    if (testo.isEmpty()) return;
    if (rapporto_ <= 0.0) {
        penna.drawText(posto, static_cast<int>(come) | Qt::TextDontClip, testo);
        return;
    }
    const QStaticText& pronto = Pronto(testo);
    const QPointF dove = Inizio(posto, come, pronto.size());
    penna.drawStaticText(QPointF(SuPixel(dove.x()), SuPixel(dove.y())), pronto);
}

QPointF Scrittore::Inizio(const QRectF& posto, Qt::Alignment come, const QSizeF& misura) {
    const QSizeF resto = posto.size() - misura;
    QPointF inizio = posto.topLeft();
    if (come.testFlag(Qt::AlignRight)) inizio.rx() += resto.width();
    if (come.testFlag(Qt::AlignHCenter)) inizio.rx() += resto.width() / 2.0;
    if (come.testFlag(Qt::AlignVCenter)) inizio.ry() += resto.height() / 2.0;
    return inizio;
}

double Scrittore::Cella(QChar segno) {
    if (segno >= u'0' && segno <= u'9') return cifra_;
    const auto trovata = celle_.constFind(segno);
    if (trovata != celle_.constEnd()) return *trovata;
    return *celle_.insert(segno, misura_.horizontalAdvance(segno));
}

double Scrittore::LargoCifre(const QString& testo) {
    double largo = 0.0;
    for (const QChar segno : testo) largo += Cella(segno);
    return largo;
}

void Scrittore::Cifre(QPainter& penna, const QRectF& posto, const QString& testo) {
    penna.setFont(carattere_);
    constexpr Qt::Alignment kMezzo = Qt::AlignHCenter | Qt::AlignVCenter;
    QRectF cella(posto);
    cella.moveLeft(SuPixel(posto.right()) - LargoCifre(testo));
    for (const QChar segno : testo) {
        cella.setWidth(Cella(segno));
        if (rapporto_ <= 0.0) {
            Scrivi(penna, cella, kMezzo, QString(segno));
        } else {
            // Between pixels, as in a text of one piece.
            const QStaticText& pronto = Pronto(QString(segno));
            const QPointF dove = Inizio(cella, kMezzo, pronto.size());
            penna.drawStaticText(QPointF(dove.x(), SuPixel(dove.y())), pronto);
        }
        cella.moveLeft(cella.right());
    }
}

}  // namespace lapvane
