#include "widgets/GrigliaGiri.h"

#include <QEvent>
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

namespace lapvane {

namespace {

constexpr int kColonnaTempi = 1;
constexpr int kTwipPixel = 15;
constexpr int kMargineCella = 8;
constexpr double kAltezzaRiga = 2.0;  // of the letters
constexpr Colore kBianco = Rgb(255, 255, 255);
constexpr Colore kNero = Rgb(0, 0, 0);
constexpr Colore kColoreGiro = Rgb(0, 0, 255);

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
        QFont carattere = opzione.font;
        carattere.setBold(giro || sfondoCella.isValid());
        penna->setFont(carattere);
        penna->setPen(InQColor(CaratteriLeggibili(caratteri, sfondo)));
        const auto dove = indice.column() == 0 ? Qt::AlignLeft : Qt::AlignHCenter;
        penna->drawText(area.adjusted(kMargineCella, 0, -kMargineCella, 0),
                        static_cast<int>(dove | Qt::AlignVCenter), indice.data().toString());
        if (opzione.state.testFlag(QStyle::State_HasFocus)) {
            penna->setPen(QPen(InQColor(CaratteriLeggibili(kNero, sfondo)), 2.0));
            penna->setBrush(Qt::NoBrush);
            penna->drawRect(area.adjusted(2, 2, -2, -2));
        }
        penna->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& opzione, const QModelIndex& indice) const override {
        QFont grassetto = opzione.font;
        grassetto.setBold(true);  // the label of the lap that is drawn
        const QFontMetrics misura(grassetto);
        return {misura.horizontalAdvance(indice.data().toString()) + 2 * kMargineCella + 4,
                static_cast<int>(misura.height() * kAltezzaRiga)};
    }
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
    // White is the colour of a cell without a mark: the ground of the palette, light or dark.
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
    const int altezza = static_cast<int>(fontMetrics().height() * kAltezzaRiga);
    verticalHeader()->setDefaultSectionSize(altezza);
    horizontalHeader()->setMinimumHeight(altezza);
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
    QFont grassetto = font();
    grassetto.setBold(true);
    const QFontMetrics misura(grassetto);
    const QString titolo = modello_.headerData(colonna, Qt::Horizontal, Qt::DisplayRole).toString();
    const int larghezza =
        std::max({twip / kTwipPixel, misura.horizontalAdvance(QStringLiteral("00:00.00")) + 24,
                  misura.horizontalAdvance(titolo) + 24});
    if (colonna >= 0 && colonna < ModelloGiri::kColonne) {
        larghezze_[static_cast<std::size_t>(colonna)] = larghezza;
    }
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

void GrigliaGiri::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int prima = horizontalScrollBar()->value();
    const int sinistra = columnViewportPosition(index.column());
    const int destra = sinistra + columnWidth(index.column());
    const int inVista = std::min(destra, viewport()->width()) - std::max(sinistra, 0);
    QTableView::scrollTo(index, hint);
    if (2 * inVista >= destra - sinistra) horizontalScrollBar()->setValue(prima);
}

QSize GrigliaGiri::sizeHint() const {
    int larghezza = 2 * frameWidth() + verticalScrollBar()->sizeHint().width() + 4;
    for (int c = 0; c < ModelloGiri::kColonne; ++c) {
        if (isColumnHidden(c)) continue;
        // The last column in view is stretched to whatever room there is.
        const int propria = larghezze_[static_cast<std::size_t>(c)];
        larghezza += propria > 0 ? propria : columnWidth(c);
    }
    return {larghezza, 400};
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
    if (evento->type() == QEvent::FontChange) AdattaRighe();
}

}  // namespace lapvane
