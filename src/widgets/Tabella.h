#pragma once

#include <QStringList>
#include <QTableWidget>
#include <vector>

namespace lapvane {

/// A grid of texts to read: columns of a fixed share of its width, every cell centred, Ctrl+C
/// copies the selected cells, or the whole grid when none is selected, separated by tabs.
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
    /// Sorts by a column, ascending: numbers as numbers and ahead of texts, texts as texts. Rows
    /// that are equal there keep their order.
    void Ordina(int colonna);
    /// Height at which `righe` rows show without scrolling.
    int AltezzaPer(int righe) const;
    /// Width at which every text fits its column.
    int LarghezzaPerTesti() const;
    /// What Ctrl+C copies.
    QString TestoCopia() const;

 protected:
    void resizeEvent(QResizeEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    void AdattaColonne();
    void AdattaRighe();

    std::vector<double> quote_;
};

}  // namespace lapvane
