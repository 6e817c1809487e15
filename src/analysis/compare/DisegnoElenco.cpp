#include "analysis/compare/DisegnoElenco.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kRientro = 10;
constexpr int kDistacco = 52;  // column of the gap

int AltezzaDi(const VoceElenco& voce, const QWidget& widget) {
    const Misure misure(widget);
    const int piccola = QFontMetrics(Carattere(widget, Scrittura::Piccola)).height();
    if (voce.Testata) return misure.Linea + piccola + kSpazio;
    return misure.Riga - 1;
}

QRect SpuntaIn(const QRect& riga) {
    return {riga.left() + kRientro, riga.center().y() - kLatoSpunta / 2, kLatoSpunta, kLatoSpunta};
}

class Delegato : public QStyledItemDelegate {
 public:
    explicit Delegato(DisegnoElenco& elenco) : QStyledItemDelegate(&elenco), elenco_(elenco) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& indice) const override {
        return {0, AltezzaDi(Voce(indice), elenco_)};
    }

    void paint(QPainter* penna, const QStyleOptionViewItem& opzione,
               const QModelIndex& indice) const override {
        const VoceElenco& voce = Voce(indice);
        const Colori& colori = ColoriDi(elenco_);
        const QRect riga = opzione.rect;
        penna->save();
        penna->fillRect(riga, voce.Testata ? colori.Alt
                              : voce.Fuoco ? colori.SelSoft
                                           : colori.Base);
        penna->fillRect(QRect(riga.left(), riga.bottom(), riga.width(), 1), colori.Grid);
        if (voce.Testata) {
            DipingiTestata(*penna, riga, voce, colori);
        } else {
            DipingiRiga(*penna, riga, voce, colori, opzione);
        }
        if (opzione.state.testFlag(QStyle::State_HasFocus)) {
            penna->setPen(QPen(colori.Accent, 2));
            penna->drawRect(riga.adjusted(1, 1, -1, -2));
        }
        penna->restore();
    }

 private:
    const VoceElenco& Voce(const QModelIndex& indice) const {
        return elenco_.Voci()[static_cast<std::size_t>(indice.row())];
    }

    void Scrivi(QPainter& penna, const QRect& dove, int come, const QString& testo) const {
        penna.drawText(dove, come | Qt::AlignVCenter | Qt::TextSingleLine,
                       penna.fontMetrics().elidedText(testo, Qt::ElideRight, dove.width()));
    }

    void DipingiTestata(QPainter& penna, const QRect& riga, const VoceElenco& voce,
                        const Colori& colori) const {
        const Misure misure(elenco_);
        QRect dove = riga.adjusted(kRientro, kSpazio / 2, -kSpazio, 0);
        dove.setHeight(misure.Linea);
        penna.setFont(Carattere(elenco_, Scrittura::Forte));
        penna.setPen(colori.Text);
        Scrivi(penna, dove, Qt::AlignLeft, voce.Nome);
        dove.translate(0, misure.Linea);
        dove.setBottom(riga.bottom() - kSpazio / 2);
        penna.setFont(Carattere(elenco_, Scrittura::Piccola));
        penna.setPen(colori.Text2);
        Scrivi(penna, dove, Qt::AlignLeft, voce.Sotto);
    }

    void DipingiRiga(QPainter& penna, const QRect& riga, const VoceElenco& voce,
                     const Colori& colori, const QStyleOptionViewItem& opzione) const {
        QStyleOptionButton spunta;
        spunta.rect = SpuntaIn(riga);
        spunta.palette = opzione.palette;
        spunta.state =
            QStyle::State_Enabled | (voce.Spuntata ? QStyle::State_On : QStyle::State_Off);
        elenco_.style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &spunta, &penna,
                                       &elenco_);
        int x = spunta.rect.right() + 1 + kSpazio;
        if (voce.ConLettera) {
            const int lato = Misure(elenco_).Lettera;
            if (voce.Lettera != 0) {
                LetteraGiro(penna, QRectF(x, riga.center().y() - lato / 2, lato, lato),
                            GiroDi(colori, voce.Lettera), elenco_.font());
            }
            x += lato + kSpazio;
        }
        const QRect fine = riga.adjusted(0, 0, -kSpazio, 0);
        const int destra = voce.Valore.isEmpty() ? 0 : kDistacco;
        penna.setFont(Carattere(elenco_, Scrittura::Piccola));
        penna.setPen(colori.Text2);
        if (destra == 0 && voce.Destra.isEmpty() == false) {
            Scrivi(penna, fine, Qt::AlignRight, voce.Destra);
        } else {
            Scrivi(penna, fine.adjusted(fine.width() - destra, 0, 0, 0), Qt::AlignRight,
                   voce.Destra);
        }
        const int suoi = destra == 0 ? penna.fontMetrics().horizontalAdvance(voce.Destra) : destra;
        QRect dove = fine.adjusted(0, 0, -suoi - kSpazio / 2, 0);
        dove.setLeft(x);
        penna.setFont(Carattere(elenco_, voce.Forte ? Scrittura::Forte : Scrittura::Corpo));
        penna.setPen(voce.Forte ? colori.Ok : colori.Text);
        Scrivi(penna, dove, Qt::AlignRight, voce.Valore);
        const int tempo = penna.fontMetrics().horizontalAdvance(voce.Valore);
        penna.setFont(Carattere(elenco_, Scrittura::Corpo));
        penna.setPen(colori.Text);
        Scrivi(penna, dove.adjusted(0, 0, -tempo - (tempo > 0 ? kSpazio : 0), 0), Qt::AlignLeft,
               voce.Nome);
    }

    const DisegnoElenco& elenco_;
};

}  // namespace

DisegnoElenco::DisegnoElenco(const char* nome, QWidget* parent) : QListWidget(parent) {
    setObjectName(QLatin1String(nome));
    setItemDelegate(new Delegato(*this));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void DisegnoElenco::Imposta(std::vector<VoceElenco> voci) {
    voci_ = std::move(voci);
    const int corrente = currentRow();
    const int posto = verticalScrollBar()->value();
    while (count() > static_cast<int>(voci_.size())) delete takeItem(count() - 1);
    while (count() < static_cast<int>(voci_.size())) addItem(new QListWidgetItem);
    for (int r = 0; r < count(); ++r) {
        const VoceElenco& voce = voci_[static_cast<std::size_t>(r)];
        QListWidgetItem* const riga = item(r);
        riga->setText((voce.Nome + QLatin1Char(' ') + voce.Valore + QLatin1Char(' ') + voce.Destra)
                          .trimmed());
        riga->setToolTip(voce.Suggerimento);
        riga->setSizeHint({0, AltezzaDi(voce, *this)});
        // For who can't see the tick; the mouse and the keys go their own way.
        riga->setFlags(voce.Testata ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        if (voce.Testata) {
            riga->setData(Qt::CheckStateRole, QVariant());
        } else {
            riga->setCheckState(voce.Spuntata ? Qt::Checked : Qt::Unchecked);
        }
    }
    if (corrente >= 0 && corrente < count()) setCurrentRow(corrente);
    verticalScrollBar()->setValue(posto);
    viewport()->update();
}

void DisegnoElenco::Misura() {
    for (int r = 0; r < count(); ++r) {
        item(r)->setSizeHint({0, AltezzaDi(voci_[static_cast<std::size_t>(r)], *this)});
    }
}

void DisegnoElenco::Invito(const QString& frase) {
    invito_ = frase;
    viewport()->update();
}

int DisegnoElenco::LarghezzaVoci() const {
    const QFontMetrics corpo(Carattere(*this, Scrittura::Forte));
    const QFontMetrics piccola(Carattere(*this, Scrittura::Piccola));
    int larghezza = 0;
    for (const VoceElenco& voce : voci_) {
        if (voce.Testata) continue;
        int sua = kRientro + kLatoSpunta + kSpazio + corpo.horizontalAdvance(voce.Nome);
        if (voce.ConLettera) sua += Misure(*this).Lettera + kSpazio;
        if (!voce.Valore.isEmpty()) {
            sua += corpo.horizontalAdvance(voce.Valore) + kDistacco + 2 * kSpazio;
        } else {
            sua += piccola.horizontalAdvance(voce.Destra) + 2 * kSpazio;
        }
        larghezza = std::max(larghezza, sua + kSpazio);
    }
    return larghezza;
}

bool DisegnoElenco::ConSpunta(int riga) const {
    return riga >= 0 && riga < count() && !voci_[static_cast<std::size_t>(riga)].Testata;
}

QRect DisegnoElenco::PostoSpunta(int riga) const {
    return SpuntaIn(visualItemRect(item(riga)));
}

void DisegnoElenco::mousePressEvent(QMouseEvent* evento) {
    const int riga = row(itemAt(evento->pos()));
    if (evento->button() != Qt::LeftButton || !ConSpunta(riga)) return;
    setCurrentRow(riga);
    // The whole left end answers: a tick is small under a glove.
    if (evento->pos().x() <= PostoSpunta(riga).right() + kSpazio / 2) {
        Q_EMIT SpuntaChiesta(riga, !voci_[static_cast<std::size_t>(riga)].Spuntata);
    } else {
        Q_EMIT Scelta(riga);
    }
}

void DisegnoElenco::mouseDoubleClickEvent(QMouseEvent* evento) {
    const int riga = row(itemAt(evento->pos()));
    if (!ConSpunta(riga)) return;
    if (evento->pos().x() <= PostoSpunta(riga).right() + kSpazio / 2) {
        mousePressEvent(evento);
    } else {
        Q_EMIT Azionata(riga);
    }
}

void DisegnoElenco::keyPressEvent(QKeyEvent* evento) {
    const int riga = currentRow();
    if (ConSpunta(riga)) {
        if (evento->key() == Qt::Key_Space) {
            Q_EMIT SpuntaChiesta(riga, !voci_[static_cast<std::size_t>(riga)].Spuntata);
            return;
        }
        if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
            Q_EMIT Azionata(riga);
            return;
        }
    }
    QListWidget::keyPressEvent(evento);
}

void DisegnoElenco::contextMenuEvent(QContextMenuEvent* evento) {
    const int riga =
        evento->reason() == QContextMenuEvent::Keyboard ? currentRow() : row(itemAt(evento->pos()));
    if (riga < 0) return;
    const QPoint dove = evento->reason() == QContextMenuEvent::Keyboard
                            ? visualItemRect(item(riga)).center()
                            : evento->pos();
    Q_EMIT MenuChiesto(riga, viewport()->mapToGlobal(dove));
}

void DisegnoElenco::paintEvent(QPaintEvent* evento) {
    QListWidget::paintEvent(evento);
    if (!voci_.empty() || invito_.isEmpty()) return;
    QPainter penna(viewport());
    penna.setPen(ColoriDi(*this).Text2);
    penna.drawText(viewport()->rect().adjusted(kSpazio, kSpazio, -kSpazio, -kSpazio),
                   Qt::AlignCenter | Qt::TextWordWrap, invito_);
}

void DisegnoElenco::changeEvent(QEvent* evento) {
    QListWidget::changeEvent(evento);
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) Misura();
}

}  // namespace lapvane
