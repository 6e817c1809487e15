#include "widgets/GrigliaGiri.h"

#include <QEvent>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>

#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "widgets/Contrasto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr int kColonnaTempi = 1;
constexpr int kTwipPixel = 15;
constexpr int kMargineCella = 8;
constexpr int kSpazioSettori = 48;  // beside what stays
constexpr Colore kBianco = Rgb(255, 255, 255);
constexpr Colore kNero = Rgb(0, 0, 0);
constexpr Colore kColoreGiro = Rgb(0, 0, 255);

Qt::Alignment Allineamento(int colonna) {
    return (colonna == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
}

/// Paints a cell in its own colours with letters that can be read on them, the lap that is drawn
/// between two bars, and the current cell with a frame.
class PittoreGiri : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* penna, const QStyleOptionViewItem& opzione,
               const QModelIndex& indice) const override {
        const QPalette& tavolozza = opzione.palette;
        const bool giro = indice.data(ModelloGiri::kRuoloGiro).toBool();
        const QVariant sfondoCella = indice.data(Qt::BackgroundRole);
        const QVariant caratteriCella = indice.data(Qt::ForegroundRole);
        Colore sfondo = DaQColor(tavolozza.color(QPalette::Base));
        Colore caratteri = DaQColor(tavolozza.color(QPalette::Text));
        if (sfondoCella.isValid()) sfondo = DaQColor(sfondoCella.value<QColor>());
        if (caratteriCella.isValid()) caratteri = DaQColor(caratteriCella.value<QColor>());
        if (giro && indice.column() == 0) sfondo = kColoreGiro;
        penna->save();
        penna->fillRect(opzione.rect, InQColor(sfondo));
        const QRect area = opzione.rect;
        if (giro) {
            const QColor barra = InQColor(
                ColoreLeggibile(kColoreGiro, DaQColor(tavolozza.color(QPalette::Base)), 3.0));
            penna->fillRect(QRect(area.left(), area.top(), area.width(), 2), barra);
            penna->fillRect(QRect(area.left(), area.bottom() - 1, area.width(), 2), barra);
        }
        const bool forte = giro || sfondoCella.isValid();
        penna->setFont(forte ? Carattere(opzione.font, Scrittura::Forte) : opzione.font);
        penna->setPen(InQColor(CaratteriLeggibili(caratteri, sfondo)));
        penna->drawText(area.adjusted(kMargineCella, 0, -kMargineCella, 0),
                        static_cast<int>(Allineamento(indice.column())), indice.data().toString());
        if (opzione.state.testFlag(QStyle::State_HasFocus)) {
            penna->setPen(QPen(InQColor(CaratteriLeggibili(kNero, sfondo)), 2.0));
            penna->setBrush(Qt::NoBrush);
            penna->drawRect(area.adjusted(2, 2, -2, -2));
        }
        penna->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& opzione, const QModelIndex& indice) const override {
        const QFont forte =
            Carattere(opzione.font, Scrittura::Forte);  // the label of the lap that is drawn
        if (larghezze_.isEmpty() || forte != carattere_) {
            larghezze_.clear();
            carattere_ = forte;
            riga_ = Misure(QFontMetrics(forte)).Riga;
        }
        const QString testo = indice.data().toString();
        auto larga = larghezze_.constFind(testo);
        if (larga == larghezze_.cend()) {
            larga = larghezze_.insert(testo, QFontMetrics(forte).horizontalAdvance(testo));
        }
        return {*larga + 2 * kMargineCella, riga_};
    }

 private:
    // A log has a thousand laps, whose labels are measured anew whenever one of them changes.
    mutable QFont carattere_;
    mutable QHash<QString, int> larghezze_;
    mutable int riga_ = 0;
};

/// The heading; its first columns stay as those of the table do.
class TestataGiri : public QHeaderView {
 public:
    explicit TestataGiri(GrigliaGiri* griglia)
        : QHeaderView(Qt::Horizontal, griglia), griglia_(griglia) {}

 protected:
    void paintEvent(QPaintEvent* evento) override {
        QHeaderView::paintEvent(evento);
        QPainter penna(viewport());
        int x = 0;
        for (int c = 0; c < griglia_->ColonneFerme(); ++c) {
            paintSection(&penna, QRect(x, 0, sectionSize(c), height()), c);
            x += sectionSize(c);
        }
    }

 private:
    const GrigliaGiri* griglia_;
};

}  // namespace

int ModelloGiri::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(0, Righe() - 1);
}

int ModelloGiri::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColonne;
}

ModelloGiri::Contenuto* ModelloGiri::In(int riga, int colonna) {
    if (riga < 0 || riga >= Righe() || colonna < 0 || colonna >= kColonne) return nullptr;
    return &celle_[static_cast<std::size_t>(riga)][static_cast<std::size_t>(colonna)];
}

QVariant ModelloGiri::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= kColonne) return {};
    const Contenuto& cella =
        celle_[static_cast<std::size_t>(index.row()) + 1][static_cast<std::size_t>(index.column())];
    switch (role) {
        case Qt::DisplayRole:
            return InQt(cella.Testo);
        case Qt::BackgroundRole:
            return cella.Sfondo ? QVariant(InQColor(*cella.Sfondo)) : QVariant();
        case Qt::ForegroundRole:
            return cella.Caratteri ? QVariant(InQColor(*cella.Caratteri)) : QVariant();
        case kRuoloGiro:
            return index.row() + 1 == giro_;
        default:
            return {};
    }
}

QVariant ModelloGiri::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || celle_.empty() || section < 0 || section >= kColonne) {
        return {};
    }
    if (role == Qt::DisplayRole) return InQt(celle_[0][static_cast<std::size_t>(section)].Testo);
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Allineamento(section));
    return {};
}

void ModelloGiri::Mutata(int riga, int colonna) {
    if (riga == 0) {
        Q_EMIT headerDataChanged(Qt::Horizontal, colonna, colonna);
    } else {
        Q_EMIT dataChanged(index(riga - 1, colonna), index(riga - 1, colonna));
    }
}

void ModelloGiri::Righe(int righe) {
    beginResetModel();
    celle_.resize(static_cast<std::size_t>(std::max(righe, 0)), std::vector<Contenuto>(kColonne));
    endResetModel();
}

void ModelloGiri::Cella(int riga, int colonna, const std::string& testo) {
    Contenuto* const cella = In(riga, colonna);
    if (cella == nullptr || cella->Testo == testo) return;
    cella->Testo = testo;
    Mutata(riga, colonna);
}

void ModelloGiri::Sfondo(int riga, int colonna, Colore colore) {
    Contenuto* const cella = In(riga, colonna);
    if (cella == nullptr || riga == 0) return;
    // White is the colour of a cell without a mark.
    cella->Sfondo = colore == kBianco ? std::nullopt : std::optional(colore);
    Mutata(riga, colonna);
}

void ModelloGiri::Caratteri(int riga, int colonna, Colore colore) {
    Contenuto* const cella = In(riga, colonna);
    if (cella == nullptr || riga == 0) return;
    cella->Caratteri = colore == kNero ? std::nullopt : std::optional(colore);
    Mutata(riga, colonna);
}

void ModelloGiri::SegnaGiro(int riga) {
    const std::array toccate = {giro_, riga};
    giro_ = riga;
    for (const int r : toccate) {
        if (r >= 1 && r < Righe()) {
            Q_EMIT dataChanged(index(r - 1, 0), index(r - 1, kColonne - 1));
        }
    }
}

GrigliaGiri::GrigliaGiri(QWidget* parent) : QTableView(parent) {
    setPalette(PalettaDi(Tema::Chiaro));  // a sheet of paper in both themes
    setHorizontalHeader(new TestataGiri(this));
    setModel(&modello_);
    setItemDelegate(new PittoreGiri(this));
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    for (int c = 2; c < ModelloGiri::kColonne; ++c) setColumnHidden(c, true);
    AdattaRighe();
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& indice) {
        Q_EMIT CellaScelta(indice.row() + 1, indice.column());
    });
}

void GrigliaGiri::AdattaRighe() {
    const Misure misure(*this);
    verticalHeader()->setMinimumSectionSize(misure.Linea);
    verticalHeader()->setDefaultSectionSize(misure.Riga);
    horizontalHeader()->setMinimumHeight(misure.Testata);
}

void GrigliaGiri::Righe(int righe) {
    modello_.Righe(righe);
}

void GrigliaGiri::Cella(int riga, int colonna, const std::string& testo) {
    modello_.Cella(riga, colonna, testo);
    // A sector column shows while it has a heading.
    if (riga == 0 && colonna >= 2) setColumnHidden(colonna, testo.empty());
}

void GrigliaGiri::Larghezza(int colonna, int twip) {
    if (colonna < 0 || colonna >= ModelloGiri::kColonne) return;
    const QFontMetrics misura(Carattere(*this, Scrittura::Forte));
    const QString titolo = modello_.headerData(colonna, Qt::Horizontal, Qt::DisplayRole).toString();
    const int testo =
        std::max(misura.horizontalAdvance(QStringLiteral("00:00.00")),
                 QFontMetrics(Carattere(*this, Scrittura::Piccola)).horizontalAdvance(titolo));
    const int larghezza = std::max(twip / kTwipPixel, testo + 2 * kMargineCella);
    larghezze_[static_cast<std::size_t>(colonna)] = {twip, larghezza};
    setColumnWidth(colonna, larghezza);
}

void GrigliaGiri::CellaCorrente(int riga, int colonna) {
    const int ultima = modello_.rowCount();
    if (riga < 1 || riga > ultima) return;
    setCurrentIndex(modello_.index(riga - 1, colonna));
}

RigheTabella GrigliaGiri::Contenuto() const {
    RigheTabella righe(static_cast<std::size_t>(modello_.rowCount()) + 1);
    for (int c = 0; c < ModelloGiri::kColonne; ++c) {
        if (isColumnHidden(c)) continue;
        righe[0].push_back(
            DaQt(modello_.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString()));
        for (int r = 0; r < modello_.rowCount(); ++r) {
            righe[static_cast<std::size_t>(r) + 1].push_back(
                DaQt(modello_.index(r, c).data().toString()));
        }
    }
    return righe;
}

int GrigliaGiri::ColonneFerme() const {
    if (horizontalOffset() == 0) return 0;
    // The times only while they leave a sector room.
    int ferme = 0;
    int resto = viewport()->width();
    for (; ferme <= kColonnaTempi; ++ferme) {
        resto -= columnWidth(ferme);
        if (resto < kSpazioSettori) break;
    }
    return ferme;
}

int GrigliaGiri::LarghezzaFerma() const {
    int larghezza = 0;
    for (int c = 0; c < ColonneFerme(); ++c) larghezza += columnWidth(c);
    return larghezza;
}

QModelIndex GrigliaGiri::indexAt(const QPoint& punto) const {
    const bool ferma = punto.x() < LarghezzaFerma();
    return QTableView::indexAt(ferma ? punto - QPoint(horizontalOffset(), 0) : punto);
}

QRect GrigliaGiri::visualRect(const QModelIndex& index) const {
    const QRect posto = QTableView::visualRect(index);
    return index.column() < ColonneFerme() ? posto.translated(horizontalOffset(), 0) : posto;
}

void GrigliaGiri::paintEvent(QPaintEvent* evento) {
    QTableView::paintEvent(evento);
    const int ferme = ColonneFerme();
    if (ferme == 0) return;
    QPainter penna(viewport());
    QStyleOptionViewItem opzione;
    initViewItemOption(&opzione);
    const QColor filo = QColor::fromRgba(
        static_cast<QRgb>(style()->styleHint(QStyle::SH_Table_GridLineColor, &opzione, this)));
    for (int r = std::max(0, rowAt(0)); r < modello_.rowCount(); ++r) {
        for (int c = 0; c < ferme; ++c) {
            const QModelIndex indice = modello_.index(r, c);
            opzione.rect = visualRect(indice);
            opzione.state.setFlag(QStyle::State_HasFocus, hasFocus() && indice == currentIndex());
            itemDelegate()->paint(&penna, opzione, indice);
            penna.fillRect(
                QRect(opzione.rect.right() + 1, opzione.rect.top(), 1, opzione.rect.height() + 1),
                c == ferme - 1 ? palette().color(QPalette::Dark) : filo);
            penna.fillRect(
                QRect(opzione.rect.left(), opzione.rect.bottom() + 1, opzione.rect.width(), 1),
                filo);
        }
        if (opzione.rect.bottom() > viewport()->height()) break;
    }
}

void GrigliaGiri::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dx == 0) return;
    // What stays would be carried away with the rest.
    viewport()->update();
    horizontalHeader()->viewport()->update();
}

void GrigliaGiri::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QScrollBar& barra = *horizontalScrollBar();
    const int prima = barra.value();
    QTableView::scrollTo(index, hint);
    if (index.column() < std::max(ColonneFerme(), 1)) {
        barra.setValue(prima);
        return;
    }
    const int coperto = LarghezzaFerma() - columnViewportPosition(index.column());
    if (coperto > 0) barra.setValue(barra.value() - coperto);
}

int GrigliaGiri::LarghezzaPer(int settori) const {
    int larghezza = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < ModelloGiri::kColonne; ++c) {
        if (isColumnHidden(c)) continue;
        if (c > kColonnaTempi && settori-- <= 0) break;
        // The last column in view is stretched to whatever room there is.
        const int propria = larghezze_[static_cast<std::size_t>(c)].Pixel;
        larghezza += propria > 0 ? propria : columnWidth(c);
    }
    return larghezza;
}

QSize GrigliaGiri::sizeHint() const {
    return {LarghezzaPer(ModelloGiri::kColonne), 400};
}

void GrigliaGiri::keyPressEvent(QKeyEvent* evento) {
    const bool invio = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
    if (invio && currentIndex().isValid()) {
        // Whatever the column: from the keyboard Enter means the lap of this row.
        Q_EMIT CellaScelta(currentIndex().row() + 1, kColonnaTempi);
        return;
    }
    QTableView::keyPressEvent(evento);
}

void GrigliaGiri::mouseMoveEvent(QMouseEvent* evento) {
    // Only the lap times can be clicked, and the pointer says so.
    const QModelIndex sotto = indexAt(evento->position().toPoint());
    viewport()->setCursor(sotto.isValid() && sotto.column() == kColonnaTempi
                              ? Qt::PointingHandCursor
                              : Qt::ArrowCursor);
    QTableView::mouseMoveEvent(evento);
}

void GrigliaGiri::changeEvent(QEvent* evento) {
    QTableView::changeEvent(evento);
    if (evento->type() != QEvent::FontChange) return;
    AdattaRighe();
    for (int c = 0; c < ModelloGiri::kColonne; ++c) {
        const Chiesta chiesta = larghezze_[static_cast<std::size_t>(c)];
        if (chiesta.Pixel > 0) Larghezza(c, chiesta.Twip);
    }
}

}  // namespace lapvane
