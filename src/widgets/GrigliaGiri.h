#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/Colore.h"
#include "shell/CsvTabella.h"

namespace lapvane {

/// Cells of a lap table: text and colours. Row 0 of the table is the heading; the model's own rows
/// begin with row 1.
class ModelloGiri : public QAbstractTableModel {
    Q_OBJECT
 public:
    static constexpr int kColonne = 21;
    /// Whether the row is that of the lap that is drawn.
    static constexpr int kRuoloGiro = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Rows and columns of the table, from 0; what lies outside is passed over.
    void Righe(int righe);
    void Cella(int riga, int colonna, const std::string& testo);
    void Sfondo(int riga, int colonna, Colore colore);
    void Caratteri(int riga, int colonna, Colore colore);
    void SegnaGiro(int riga);
    int Righe() const { return static_cast<int>(celle_.size()); }

 private:
    struct Contenuto {
        std::string Testo;
        std::optional<Colore> Sfondo;  ///< none: the palette's own
        std::optional<Colore> Caratteri;
    };

    Contenuto* In(int riga, int colonna);
    void Mutata(int riga, int colonna);

    std::vector<std::vector<Contenuto>> celle_;
    int giro_ = 0;
};

/// The lap table: black on white in both themes. Laps and lap times stay where they are when the
/// sectors are scrolled sideways. A click on a cell, or Enter on a row, is told by `CellaScelta`.
class GrigliaGiri : public QTableView {
    Q_OBJECT
 public:
    explicit GrigliaGiri(QWidget* parent = nullptr);

    ModelloGiri& Modello() { return modello_; }
    void Righe(int righe);
    void Cella(int riga, int colonna, const std::string& testo);
    /// Width in twips, 15 a pixel; a column is never narrower than its texts.
    void Larghezza(int colonna, int twip);
    void CellaCorrente(int riga, int colonna);

    /// Headings and rows of the columns that show.
    RigheTabella Contenuto() const;

    /// Width that shows laps, times and up to so many sectors.
    int LarghezzaPer(int settori) const;
    /// How many columns lie over scrolled sectors: laps and times, or laps alone.
    int ColonneFerme() const;

    QSize sizeHint() const override;
    QModelIndex indexAt(const QPoint& punto) const override;
    QRect visualRect(const QModelIndex& index) const override;
    /// Sideways only to a sector, which then is not covered by what stays.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 Q_SIGNALS:
    /// Row and column of the table, row 0 being the heading.
    void CellaScelta(int riga, int colonna);

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    /// Width of a column as it was asked for, and what came of it before it was stretched.
    struct Chiesta {
        int Twip = 0;
        int Pixel = 0;  ///< 0: never asked for
    };

    void AdattaRighe();
    int LarghezzaFerma() const;

    ModelloGiri modello_;
    std::array<Chiesta, ModelloGiri::kColonne> larghezze_{};
};

}  // namespace lapvane
