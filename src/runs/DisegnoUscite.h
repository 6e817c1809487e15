#pragma once

#include <QTreeView>
#include <array>
#include <memory>
#include <utility>

#include "runs/ElencoUscite.h"
#include "widgets/Scrittore.h"

namespace lapvane {

/// What a row of the list tells its painter beside the texts of its cells.
enum RuoloUscite {
    RuoloGruppo = Qt::UserRole,  ///< bool: the head of a group; the text of its first cell its name
    RuoloSotto,                  ///< of a head: what stands behind the name
    RuoloAperto,                 ///< of a head: bool, its runs show
    RuoloGuaio,                  ///< of a run: what is wrong with it; empty: nothing
    RuoloPrimo,                  ///< of a run: bool, the best one of its circuit
    RuoloIncerto,                ///< of a run: bool, day and time are those of the file
    RuoloSenzaNome,              ///< of its session: bool, it is the name of the file
    RuoloVecchio,  ///< of a run: bool, its files can't be reached, the values are older
};

/// The list of runs: rows and heads of groups over one another, painted as one piece each. Arrow
/// keys pass over the heads, Left and Right fold and unfold; Enter or a double click opens.
class DisegnoUscite : public QTreeView {
    Q_OBJECT
 public:
    explicit DisegnoUscite(QWidget* parent = nullptr);
    ~DisegnoUscite() override;

    /// The box whose focus counts as that of the list, since its arrow keys move here.
    void Compagno(QWidget* casella) { compagno_ = casella; }
    /// The longest text of each column, as far as one knows.
    void Campioni(const std::array<QString, kColonneUscite>& testi);
    /// Widths for the texts and the font of now; the least needed ones hide where there is no room.
    void AdattaColonne();
    /// The circuit stands in the heads of the groups, not in a column.
    void SenzaCircuito(bool senza);
    /// Sentence and button in the middle of a list that is empty; none: an empty sentence.
    void Invito(const QString& frase, QWidget* pulsante);
    /// Where a cell is in the viewport; a column of -1: the whole row.
    QRect Cella(int riga, int colonna) const;
    /// The first and the last row in sight; -1 without rows.
    std::pair<int, int> InVista() const;
    int AltezzaRiga() const;
    /// A head is folded or unfolded, a run acted on, by key or mouse.
    void Aziona(const QModelIndex& indice);

    void setModel(QAbstractItemModel* modello) override;

 Q_SIGNALS:
    void Aperta(int riga);
    void PiegaChiesta(int riga, bool aperto);
    void SceltaCambiata();
    /// Something else is in sight.
    void VistaMossa();
    /// By the right button or the menu key, for what is chosen; a place of the screen.
    void MenuChiesto(QPoint dove);
    void CopiaChiesta();

 protected:
    void drawRow(QPainter* penna, const QStyleOptionViewItem& opzioni,
                 const QModelIndex& indice) const override;
    void drawBranches(QPainter*, const QRect&, const QModelIndex&) const override {}
    QModelIndex moveCursor(CursorAction verso, Qt::KeyboardModifiers tasti) override;
    void selectionChanged(const QItemSelection& scelte, const QItemSelection& prima) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void paintEvent(QPaintEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    struct Scrittori {
        Scrittori(const QFont& base, double rapporto);
        Scrittore Corpo;
        Scrittore Forte;
    };
    struct Larghezze {
        std::array<int, kColonneUscite> Minime{};
        std::array<int, kColonneUscite> Volute{};
    };
    Larghezze Richieste() const;
    Scrittori& Scritti() const;
    bool Gruppo(const QModelIndex& indice) const;
    bool Attivo() const;
    void DisegnaGruppo(QPainter& penna, const QRect& riga, const QModelIndex& indice) const;
    void DisegnaUscita(QPainter& penna, const QRect& riga, const QModelIndex& indice,
                       bool scelta) const;
    QRect PostoGuaio(const QRect& riga, const QString& parole, bool vecchio) const;
    void DisegnaGuaio(QPainter& penna, QRect dove, const QString& parole, bool scelta) const;
    QRect Colonna(ColonnaUscite colonna, const QRect& riga) const;
    void DisponiInvito();

    QWidget* compagno_ = nullptr;
    std::array<QString, kColonneUscite> campioni_;
    bool senzaCircuito_ = false;
    QString invito_;
    QWidget* pulsante_ = nullptr;
    mutable std::unique_ptr<Scrittori> scrittori_;
};

}  // namespace lapvane
