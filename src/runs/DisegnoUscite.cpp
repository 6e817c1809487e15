#include "runs/DisegnoUscite.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kRientro = kSpazio;  // as the heads of the columns
constexpr int kFreccia = 14;       // room of the arrow of a group
constexpr int kSpazioColonna = 16;
constexpr int kSessioneMinima = 60;
constexpr int kTestoMassimo = 220;  // longer texts are cut

const QString kFrecciaOrdine = QStringLiteral(" ▾");

/// A text that each column has room for.
constexpr std::array<const char*, kColonneUscite> kCampioni = {
    "00 mmm 0000", "00:00",    "Rocca Sere", "Free practi", "Bianchi", "Formula 4",
    "000",         "00:00.00", "0:00.00",    "0:00.00",     "0:00:00"};

constexpr std::array<ColonnaUscite, 6> kPrimeAdAndare = {
    ColonnaUscite::Veicolo, ColonnaUscite::Ideale, ColonnaUscite::Durata,
    ColonnaUscite::Media,   ColonnaUscite::Ora,    ColonnaUscite::Piloti};

bool Cifre(int colonna) {
    return colonna >= static_cast<int>(ColonnaUscite::Giri);
}

/// All rows are as high as those of the design: a little more than those of other tables.
class AltezzaUscite : public QStyledItemDelegate {
 public:
    explicit AltezzaUscite(QWidget& vista) : QStyledItemDelegate(&vista), vista_(vista) {}
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {10, Misure(vista_).Riga + 2};
    }

 private:
    const QWidget& vista_;
};

}  // namespace

DisegnoUscite::Scrittori::Scrittori(const QFont& base, double rapporto)
    : Corpo(Carattere(base, Scrittura::Corpo), rapporto),
      Forte(Carattere(base, Scrittura::Forte), rapporto) {}

DisegnoUscite::DisegnoUscite(QWidget* parent) : QTreeView(parent) {
    setObjectName(QStringLiteral("uscite"));
    setItemDelegate(new AltezzaUscite(*this));
    setFrameShape(QFrame::NoFrame);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setExpandsOnDoubleClick(false);
    setItemsExpandable(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(20);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

DisegnoUscite::~DisegnoUscite() = default;

void DisegnoUscite::setModel(QAbstractItemModel* modello) {
    QTreeView::setModel(modello);
    AdattaColonne();
}

DisegnoUscite::Scrittori& DisegnoUscite::Scritti() const {
    const double rapporto = devicePixelRatioF();
    if (!scrittori_ || scrittori_->Corpo.Rapporto() != rapporto) {
        scrittori_ = std::make_unique<Scrittori>(font(), rapporto);
    }
    return *scrittori_;
}

bool DisegnoUscite::Gruppo(const QModelIndex& indice) const {
    return indice.data(RuoloGruppo).toBool();
}

/// Whether what is chosen is what the keys act on.
bool DisegnoUscite::Attivo() const {
    return hasFocus() || (compagno_ != nullptr && compagno_->hasFocus());
}

void DisegnoUscite::SenzaCircuito(bool senza) {
    if (senza == senzaCircuito_) return;
    senzaCircuito_ = senza;
    AdattaColonne();
}

void DisegnoUscite::Campioni(const std::array<QString, kColonneUscite>& testi) {
    if (testi == campioni_) return;
    campioni_ = testi;
    AdattaColonne();
}

/// What the columns ask for, and what the texts of a person can do with.
DisegnoUscite::Larghezze DisegnoUscite::Richieste() const {
    const QFontMetrics corpo(Carattere(*this, Scrittura::Forte));
    const QFontMetrics piccole(Carattere(*this, Scrittura::Piccola));
    Larghezze larghezze;
    for (int c = 0; c < kColonneUscite; ++c) {
        const auto i = static_cast<std::size_t>(c);
        // Whatever column has it, there is room for the arrow of the order.
        const QString testa = model()->headerData(c, Qt::Horizontal).toString();
        const int titolo = piccole.horizontalAdvance(testa + kFrecciaOrdine);
        const int minima = std::max(corpo.horizontalAdvance(QLatin1String(kCampioni[i])), titolo);
        const int sua = std::min(corpo.horizontalAdvance(campioni_[i]), kTestoMassimo);
        larghezze.Minime[i] = minima + kSpazioColonna;
        larghezze.Volute[i] = std::max(minima, sua) + kSpazioColonna;
    }
    return larghezze;
}

void DisegnoUscite::AdattaColonne() {
    if (model() == nullptr) return;
    Larghezze larghezze = Richieste();
    std::array<bool, kColonneUscite> via{};
    int resto = viewport()->width();
    for (const int minima : larghezze.Minime) resto -= minima;
    const auto nascondi = [&](ColonnaUscite quale) {
        const auto c = static_cast<std::size_t>(quale);
        via[c] = true;
        resto += larghezze.Minime[c];
    };
    if (senzaCircuito_) nascondi(ColonnaUscite::Circuito);
    const QFontMetrics piccole(Carattere(*this, Scrittura::Piccola));
    const QVariant testa =
        model()->headerData(static_cast<int>(ColonnaUscite::Sessione), Qt::Horizontal);
    const int minima =
        std::max(kSessioneMinima, piccole.horizontalAdvance(testa.toString()) + kSpazio);
    const auto cede = [&](ColonnaUscite quale) {
        return larghezze.Minime[static_cast<std::size_t>(quale)] - minima;
    };
    for (const ColonnaUscite prima : kPrimeAdAndare) {
        if (resto + cede(ColonnaUscite::Sessione) < 0) nascondi(prima);
    }
    int mancano = 0;
    for (std::size_t c = 0; c < kColonneUscite; ++c) {
        if (!via[c]) mancano += larghezze.Volute[c] - larghezze.Minime[c];
    }
    // Room goes to the texts that are longer, what is left then to the sessions.
    const double parte = mancano > 0 ? std::clamp(1.0 * resto / mancano, 0.0, 1.0) : 0.0;
    for (std::size_t c = 0; c < kColonneUscite; ++c) {
        if (via[c]) continue;
        const int suo = static_cast<int>((larghezze.Volute[c] - larghezze.Minime[c]) * parte);
        larghezze.Minime[c] += suo;
        resto -= suo;
    }
    auto& sessione = larghezze.Minime[static_cast<std::size_t>(ColonnaUscite::Sessione)];
    auto& piloti = larghezze.Minime[static_cast<std::size_t>(ColonnaUscite::Piloti)];
    piloti += std::max(0, resto / 2);
    sessione = std::max(minima, sessione + resto - std::max(0, resto / 2));
    for (int c = 0; c < kColonneUscite; ++c) {
        const auto i = static_cast<std::size_t>(c);
        header()->setSectionHidden(c, via[i]);
        if (!via[i]) header()->resizeSection(c, larghezze.Minime[i]);
    }
}

QRect DisegnoUscite::Colonna(ColonnaUscite colonna, const QRect& riga) const {
    const int c = static_cast<int>(colonna);
    if (isColumnHidden(c)) return {};
    return {columnViewportPosition(c), riga.top(), columnWidth(c), riga.height()};
}

QRect DisegnoUscite::Cella(int riga, int colonna) const {
    const QRect prima = visualRect(model()->index(riga, 0));
    if (colonna < 0) return {0, prima.top(), viewport()->width(), prima.height()};
    return Colonna(static_cast<ColonnaUscite>(colonna), prima);
}

int DisegnoUscite::AltezzaRiga() const {
    return Misure(*this).Riga + 2;
}

std::pair<int, int> DisegnoUscite::InVista() const {
    if (model() == nullptr || model()->rowCount() == 0) return {-1, -1};
    const QModelIndex prima = indexAt(QPoint(1, 0));
    const int quante = viewport()->height() / AltezzaRiga() + 1;
    const int da = std::max(0, prima.row());
    return {da, std::min(model()->rowCount() - 1, da + quante)};
}

void DisegnoUscite::drawRow(QPainter* penna, const QStyleOptionViewItem& opzioni,
                            const QModelIndex& indice) const {
    const Colori& colori = ColoriDi(*this);
    const QRect riga(0, opzioni.rect.top(), viewport()->width(), opzioni.rect.height());
    const bool scelta = selectionModel()->isSelected(indice);
    penna->save();
    if (Gruppo(indice)) {
        penna->fillRect(riga, colori.Alt);
        DisegnaGruppo(*penna, riga, indice);
    } else {
        penna->fillRect(riga, !scelta ? colori.Base : Attivo() ? colori.Sel : colori.SelSoft);
        DisegnaUscita(*penna, riga, indice, scelta && Attivo());
    }
    FiloBasso(*penna, riga, colori.Grid);
    const bool corrente = indice.row() == currentIndex().row();
    if (hasFocus() && corrente && !(scelta && selectionModel()->selectedRows().size() == 1)) {
        Riquadro(*penna, riga, 0.0, {}, scelta ? colori.SelText : colori.Accent, 2.0);
    }
    penna->restore();
}

void DisegnoUscite::DisegnaGruppo(QPainter& penna, const QRect& riga,
                                  const QModelIndex& indice) const {
    const Colori& colori = ColoriDi(*this);
    const bool aperto = indice.data(RuoloAperto).toBool();
    Freccia(penna, QPointF(kRientro + 4, riga.center().y() + 1),
            aperto ? Qt::DownArrow : Qt::RightArrow, colori.Text2, 8.0);
    QRect dove = riga.adjusted(kRientro + kFreccia, 0, -kSpazio, 0);
    const QString nome = indice.data().toString();
    penna.setFont(Carattere(*this, Scrittura::Forte));
    penna.setPen(colori.Text);
    const QString corto =
        penna.fontMetrics().elidedText(nome, Qt::ElideRight, dove.width() * 2 / 3);
    penna.drawText(dove, Qt::AlignVCenter | Qt::TextSingleLine, corto);
    dove.setLeft(dove.left() + penna.fontMetrics().horizontalAdvance(corto) + kMargineCornice);
    penna.setFont(Carattere(*this, Scrittura::Piccola));
    penna.setPen(colori.Text2);
    penna.drawText(dove, Qt::AlignVCenter | Qt::TextSingleLine,
                   penna.fontMetrics().elidedText(indice.data(RuoloSotto).toString(),
                                                  Qt::ElideRight, dove.width()));
}

/// The room of what is wrong with a run: before its numbers where the words fit there, or where
/// they tell of those numbers; else they stand in the place of the numbers.
QRect DisegnoUscite::PostoGuaio(const QRect& riga, const QString& parole, bool vecchio) const {
    QRect dove = riga;
    dove.setLeft(Colonna(ColonnaUscite::Piloti, riga).left() + kSpazio);
    const int prima = Colonna(ColonnaUscite::Giri, riga).left() - kSpazio;
    const int largo = fontMetrics().horizontalAdvance(QStringLiteral("▲ ") + parole) + kSpazio;
    dove.setRight(vecchio || dove.left() + largo <= prima ? prima : riga.right() - kSpazio);
    return dove;
}

void DisegnoUscite::DisegnaGuaio(QPainter& penna, QRect dove, const QString& parole,
                                 bool scelta) const {
    const Colori& colori = ColoriDi(*this);
    penna.setFont(Scritti().Corpo.Carattere());
    penna.setPen(scelta ? colori.SelText : colori.Warn);
    const QString segno = QStringLiteral("▲");
    penna.drawText(dove, Qt::AlignVCenter, segno);
    dove.setLeft(dove.left() + penna.fontMetrics().horizontalAdvance(segno) + kSpazio / 2);
    penna.setPen(scelta ? colori.SelText : colori.Text);
    penna.drawText(dove, Qt::AlignVCenter | Qt::TextSingleLine,
                   penna.fontMetrics().elidedText(parole, Qt::ElideRight, dove.width()));
}

void DisegnoUscite::DisegnaUscita(QPainter& penna, const QRect& riga, const QModelIndex& indice,
                                  bool scelta) const {
    const Colori& colori = ColoriDi(*this);
    const QString guaio = indice.data(RuoloGuaio).toString();
    const bool vecchio = indice.data(RuoloVecchio).toBool();
    const QRect parole = guaio.isEmpty() ? QRect() : PostoGuaio(riga, guaio, vecchio);
    const bool primo = indice.data(RuoloPrimo).toBool();
    const bool incerto = indice.data(RuoloIncerto).toBool();
    for (int c = 0; c < kColonneUscite; ++c) {
        const auto colonna = static_cast<ColonnaUscite>(c);
        QRect dove = Colonna(colonna, riga);
        if (dove.isEmpty() || dove.intersects(parole)) continue;
        dove.adjust(kSpazio, 0, -kSpazio, 0);
        const QString testo = indice.siblingAtColumn(c).data().toString();
        const bool quando = colonna == ColonnaUscite::Data || colonna == ColonnaUscite::Ora;
        const bool spento = colonna == ColonnaUscite::Ora || (quando && incerto) ||
                            indice.siblingAtColumn(c).data(RuoloSenzaNome).toBool();
        const bool forte = primo && colonna == ColonnaUscite::Migliore;
        penna.setPen(scelta                ? colori.SelText
                     : vecchio && Cifre(c) ? colori.Stale
                     : forte               ? colori.Ok
                     : spento              ? colori.Text2
                                           : colori.Text);
        if (Cifre(c)) {
            (forte ? Scritti().Forte : Scritti().Corpo).Cifre(penna, dove, testo);
        } else {
            penna.setFont(Scritti().Corpo.Carattere());
            penna.drawText(dove, Qt::AlignVCenter | Qt::TextSingleLine,
                           penna.fontMetrics().elidedText(testo, Qt::ElideRight, dove.width()));
        }
    }
    if (!guaio.isEmpty()) DisegnaGuaio(penna, parole, guaio, scelta);
}

void DisegnoUscite::Invito(const QString& frase, QWidget* pulsante) {
    if (pulsante_ != nullptr && pulsante_ != pulsante) pulsante_->hide();
    invito_ = frase;
    pulsante_ = pulsante;
    if (pulsante_ != nullptr) {
        pulsante_->setParent(viewport());
        pulsante_->setVisible(!frase.isEmpty());
        DisponiInvito();
    }
    viewport()->update();
}

void DisegnoUscite::DisponiInvito() {
    if (pulsante_ == nullptr || invito_.isEmpty()) return;
    pulsante_->resize(pulsante_->sizeHint());
    pulsante_->move((viewport()->width() - pulsante_->width()) / 2,
                    viewport()->height() / 2 + kSpazio);
}

void DisegnoUscite::paintEvent(QPaintEvent* evento) {
    const Colori& colori = ColoriDi(*this);
    {
        QPainter penna(viewport());
        penna.fillRect(evento->rect(), colori.Base);
        if (!invito_.isEmpty()) {
            const QRect mezza(0, 0, viewport()->width(), viewport()->height() / 2);
            penna.setPen(colori.Text2);
            penna.drawText(mezza.adjusted(4 * kSpazio, 0, -4 * kSpazio, -kSpazio),
                           Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap, invito_);
        }
    }
    QTreeView::paintEvent(evento);
}

void DisegnoUscite::resizeEvent(QResizeEvent* evento) {
    QTreeView::resizeEvent(evento);
    AdattaColonne();
    DisponiInvito();
    Q_EMIT VistaMossa();
}

void DisegnoUscite::changeEvent(QEvent* evento) {
    QTreeView::changeEvent(evento);
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
        scrittori_.reset();
        AdattaColonne();
    }
}

void DisegnoUscite::scrollContentsBy(int dx, int dy) {
    QTreeView::scrollContentsBy(dx, dy);
    Q_EMIT VistaMossa();
}

void DisegnoUscite::selectionChanged(const QItemSelection& scelte, const QItemSelection& prima) {
    QTreeView::selectionChanged(scelte, prima);
    viewport()->update();
    Q_EMIT SceltaCambiata();
}

/// Heads of groups that show their runs are no place to stop at.
QModelIndex DisegnoUscite::moveCursor(CursorAction verso, Qt::KeyboardModifiers tasti) {
    QModelIndex indice = QTreeView::moveCursor(verso, tasti);
    const bool su = verso == MoveUp || verso == MovePrevious || verso == MoveEnd;
    while (indice.isValid() && Gruppo(indice) && indice.data(RuoloAperto).toBool()) {
        const QModelIndex altro = indice.siblingAtRow(indice.row() + (su ? -1 : 1));
        if (!altro.isValid()) {
            // Above the first run its head comes into sight.
            scrollTo(indice);
            return currentIndex();
        }
        indice = altro;
    }
    return indice;
}

void DisegnoUscite::Aziona(const QModelIndex& indice) {
    if (!indice.isValid()) return;
    if (Gruppo(indice)) {
        Q_EMIT PiegaChiesta(indice.row(), !indice.data(RuoloAperto).toBool());
    } else {
        Q_EMIT Aperta(indice.row());
    }
}

void DisegnoUscite::keyPressEvent(QKeyEvent* evento) {
    const QModelIndex corrente = currentIndex();
    switch (evento->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Aziona(corrente);
            return;
        case Qt::Key_Left:
        case Qt::Key_Right: {
            const bool apri = evento->key() == Qt::Key_Right;
            for (int riga = corrente.row(); riga >= 0; --riga) {
                if (!Gruppo(model()->index(riga, 0))) continue;
                Q_EMIT PiegaChiesta(riga, apri);
                break;
            }
            return;
        }
        default:
            if (evento->matches(QKeySequence::Copy)) {
                Q_EMIT CopiaChiesta();
                return;
            }
            QTreeView::keyPressEvent(evento);
    }
}

void DisegnoUscite::contextMenuEvent(QContextMenuEvent* evento) {
    const bool tasto = evento->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex indice =
        tasto ? currentIndex() : indexAt(viewport()->mapFrom(this, evento->pos()));
    if (!indice.isValid() || Gruppo(indice)) return;
    const QPoint dove =
        tasto ? viewport()->mapToGlobal(Cella(indice.row(), -1).center()) : evento->globalPos();
    Q_EMIT MenuChiesto(dove);
}

void DisegnoUscite::mousePressEvent(QMouseEvent* evento) {
    const QModelIndex indice = indexAt(evento->pos());
    if (evento->button() == Qt::LeftButton && indice.isValid() && Gruppo(indice)) {
        setFocus(Qt::MouseFocusReason);
        Aziona(indice);
        return;
    }
    QTreeView::mousePressEvent(evento);
}

void DisegnoUscite::mouseDoubleClickEvent(QMouseEvent* evento) {
    const QModelIndex indice = indexAt(evento->pos());
    if (evento->button() == Qt::LeftButton && indice.isValid()) Aziona(indice);
}

}  // namespace lapvane
