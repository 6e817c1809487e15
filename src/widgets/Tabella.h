#pragma once

#include <QStringList>
#include <QTableWidget>
#include <filesystem>
#include <vector>

#include "shell/CsvTabella.h"

namespace lapvane {

/// A grid of texts to read: columns of a fixed share of its width, every cell centred or, where all
/// of them are numbers, at the right; Ctrl+C
/// copies the selected cells, or the whole grid when none is selected, separated by tabs. The right
/// mouse button offers that, and to save the whole grid as CSV.
class Tabella : public QTableWidget {
    Q_OBJECT
 public:
    explicit Tabella(QWidget* parent = nullptr);

    /// Width of each column as a part of the width of the grid; the last one takes what is left.
    /// The grid has so many columns.
    void Quote(std::vector<double> quote);
    /// Heading of the columns; without one the grid shows none.
    void Titoli(const QStringList& titoli);
    /// All rows, each with a text a column.
    void Riempi(const std::vector<QStringList>& righe);
    /// Every column is one of numbers, which end below one another.
    void Numeri();
    /// Sorts by a column, ascending: numbers as numbers and ahead of texts, texts as texts. Rows
    /// that are equal there keep their order.
    void Ordina(int colonna);
    /// Height at which `righe` rows show without scrolling.
    int AltezzaPer(int righe) const;
    /// Width at which every text fits its column.
    int LarghezzaPerTesti() const;
    /// What Ctrl+C copies.
    QString TestoCopia() const;
    /// The whole grid in the order of now, headings first if it shows them.
    RigheTabella Contenuto() const;
    /// The file that is proposed where the grid is saved: beside `log`, its name and `fine`.
    void NomeCsv(const std::filesystem::path& log, const char* fine);

 protected:
    void resizeEvent(QResizeEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    void AdattaColonne();
    void AdattaRighe();

    std::vector<double> quote_;
    std::filesystem::path nomeCsv_;
};

}  // namespace lapvane
