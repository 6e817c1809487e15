#include "widgets/Tabella.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "widgets/MenuUscita.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr int kMargineCella = 16;

class Cella : public QTableWidgetItem {
 public:
    explicit Cella(const QString& testo)
        : QTableWidgetItem(testo), numero_(LeggiNumero(DaQt(testo))) {
        setTextAlignment(Qt::AlignCenter);
        setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }

    bool operator<(const QTableWidgetItem& altro) const override {
        const auto& numeroAltro = static_cast<const Cella&>(altro).numero_;
        if (numero_ && numeroAltro) return *numero_ < *numeroAltro;
        if (numero_.has_value() != numeroAltro.has_value()) return numero_.has_value();
        return text() < altro.text();
    }

 private:
    std::optional<double> numero_;
};

}  // namespace

Tabella::Tabella(QWidget* parent) : QTableWidget(parent) {
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->hide();
    AdattaRighe();
}

void Tabella::Quote(std::vector<double> quote) {
    quote_ = std::move(quote);
    setColumnCount(static_cast<int>(quote_.size()));
    AdattaColonne();
}

void Tabella::Titoli(const QStringList& titoli) {
    setHorizontalHeaderLabels(titoli);
    horizontalHeader()->show();
    AdattaColonne();
}

void Tabella::Riempi(const std::vector<QStringList>& righe) {
    setRowCount(static_cast<int>(righe.size()));
    for (int r = 0; r < rowCount(); ++r) {
        const QStringList& riga = righe[static_cast<std::size_t>(r)];
        for (int c = 0; c < columnCount(); ++c) setItem(r, c, new Cella(riga.value(c)));
    }
}

void Tabella::Numeri() {
    constexpr auto kDestra = Qt::AlignRight | Qt::AlignVCenter;
    horizontalHeader()->setDefaultAlignment(kDestra);
    for (int r = 0; r < rowCount(); ++r) {
        for (int c = 0; c < columnCount(); ++c) item(r, c)->setTextAlignment(kDestra);
    }
}

void Tabella::Ordina(int colonna) {
    sortItems(colonna, Qt::AscendingOrder);
    horizontalHeader()->setSortIndicator(colonna, Qt::AscendingOrder);
    horizontalHeader()->setSortIndicatorShown(true);
    scrollToTop();
}

int Tabella::AltezzaPer(int righe) const {
    const int titolo = horizontalHeader()->isHidden()
                           ? 0
                           : std::max(horizontalHeader()->sizeHint().height(),
                                      horizontalHeader()->minimumHeight());
    return 2 * frameWidth() + titolo + righe * verticalHeader()->defaultSectionSize();
}

int Tabella::LarghezzaPerTesti() const {
    QFont grassetto = font();
    grassetto.setBold(true);
    const QFontMetrics misuraTitolo(grassetto);
    double larghezza = 0.0;
    for (int c = 0; c < columnCount(); ++c) {
        int testo = horizontalHeader()->isHidden()
                        ? 0
                        : misuraTitolo.horizontalAdvance(horizontalHeaderItem(c)->text());
        for (int r = 0; r < rowCount(); ++r) {
            testo = std::max(testo, fontMetrics().horizontalAdvance(item(r, c)->text()));
        }
        larghezza =
            std::max(larghezza, (testo + kMargineCella) / quote_[static_cast<std::size_t>(c)]);
    }
    return static_cast<int>(std::ceil(larghezza));
}

QString Tabella::TestoCopia() const {
    const QModelIndexList scelte = selectedIndexes();
    const bool tutto = scelte.isEmpty() || scelte.size() == qsizetype{rowCount()} * columnCount();
    int da = tutto ? 0 : columnCount();
    int a = tutto ? columnCount() - 1 : -1;
    for (const QModelIndex& scelta : scelte) {
        da = std::min(da, scelta.column());
        a = std::max(a, scelta.column());
    }
    QStringList righe;
    QStringList celle;
    if (tutto && !horizontalHeader()->isHidden()) {
        for (int c = da; c <= a; ++c) celle << horizontalHeaderItem(c)->text();
        righe << celle.join(QLatin1Char('\t'));
    }
    for (int r = 0; r < rowCount(); ++r) {
        bool presa = tutto;
        celle.clear();
        for (int c = da; c <= a; ++c) {
            // A hole in the selection stays a hole, so that columns stay columns.
            const bool scelta = tutto || item(r, c)->isSelected();
            celle << (scelta ? item(r, c)->text() : QString());
            presa = presa || scelta;
        }
        if (presa) righe << celle.join(QLatin1Char('\t'));
    }
    return righe.join(QLatin1Char('\n'));
}

void Tabella::NomeCsv(const std::filesystem::path& log, const char* fine) {
    nomeCsv_ = NomeAccanto(log, fine);
}

RigheTabella Tabella::Contenuto() const {
    RigheTabella righe;
    const auto riga = [&](const auto& cella) {
        std::vector<std::string> celle;
        for (int c = 0; c < columnCount(); ++c) celle.push_back(DaQt(cella(c)->text()));
        righe.push_back(std::move(celle));
    };
    if (!horizontalHeader()->isHidden()) riga([this](int c) { return horizontalHeaderItem(c); });
    for (int r = 0; r < rowCount(); ++r) riga([this, r](int c) { return item(r, c); });
    return righe;
}

void Tabella::AdattaColonne() {
    const QFontMetrics piccole(Carattere(*this, Scrittura::Piccola));
    std::vector<int> larghe;
    int troppo = -width();
    for (int c = 0; c < columnCount(); ++c) {
        const auto* testa = horizontalHeader()->isHidden() ? nullptr : horizontalHeaderItem(c);
        const int minima =
            testa != nullptr ? piccole.horizontalAdvance(testa->text()) + kMargineCella : 0;
        const double quota = quote_[static_cast<std::size_t>(c)];
        larghe.push_back(std::max(minima, static_cast<int>(std::lround(width() * quota))));
        troppo += larghe.back();
    }
    // What a heading takes beyond its share the widest column gives.
    const auto massima = std::max_element(larghe.begin(), larghe.end());
    if (massima != larghe.end()) *massima -= std::clamp(troppo, 0, *massima / 2);
    for (int c = 0; c < columnCount(); ++c) {
        setColumnWidth(c, larghe[static_cast<std::size_t>(c)]);
    }
}

void Tabella::AdattaRighe() {
    const Misure misure(*this);
    verticalHeader()->setDefaultSectionSize(misure.Riga);
    horizontalHeader()->setMinimumHeight(misure.Testata);
}

void Tabella::resizeEvent(QResizeEvent* evento) {
    AdattaColonne();
    QTableWidget::resizeEvent(evento);
}

void Tabella::keyPressEvent(QKeyEvent* evento) {
    if (evento->matches(QKeySequence::Copy)) {
        CopiaTesto(TestoCopia());
        return;
    }
    QTableWidget::keyPressEvent(evento);
}

void Tabella::contextMenuEvent(QContextMenuEvent* evento) {
    Protetto([&] {
        MostraMenu(this, evento->globalPos(),
                   {{Voce::CopiaTabella, [this] { CopiaTesto(TestoCopia()); }},
                    {Voce::SalvaTabellaCsv, [this] { SalvaTabella(Contenuto(), nomeCsv_); }}});
    });
}

void Tabella::changeEvent(QEvent* evento) {
    QTableWidget::changeEvent(evento);
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
        AdattaRighe();
    }
}

}  // namespace lapvane
