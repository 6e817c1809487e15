#pragma once

#include <QListWidget>
#include <QString>
#include <vector>

namespace lapvane {

/// A row of a list of the comparison: the head of a log, a lap, a pane.
struct VoceElenco {
    bool Testata = false;  ///< a head of two lines; it has no tick
    QString Nome;
    QString Sotto;  ///< second line of a head
    bool Spuntata = false;
    bool ConLettera = false;  ///< room is kept for a letter
    char Lettera = 0;         ///< 0: none
    QString Valore;           ///< a time
    bool Forte = false;       ///< that time is the best
    QString Destra;           ///< a gap or a unit
    bool Fuoco = false;
    QString Suggerimento;  ///< tool tip
};

/// A list with ticks and letters. The space bar or a click on the tick asks for it, a click on the
/// row chooses it, a double click or Enter acts on it.
class DisegnoElenco : public QListWidget {
    Q_OBJECT
 public:
    explicit DisegnoElenco(const char* nome, QWidget* parent = nullptr);

    /// Shows other rows; the current one and the place of the view stay.
    void Imposta(std::vector<VoceElenco> voci);
    const std::vector<VoceElenco>& Voci() const { return voci_; }
    /// The sentence of an empty list.
    void Invito(const QString& frase);
    /// Width that its longest row needs.
    int LarghezzaVoci() const;
    /// Where the tick of a row is, in the viewport.
    QRect PostoSpunta(int riga) const;

 Q_SIGNALS:
    void SpuntaChiesta(int riga, bool accesa);
    void Scelta(int riga);
    void Azionata(int riga);
    void MenuChiesto(int riga, QPoint sullo);

 protected:
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    bool ConSpunta(int riga) const;
    void Misura();

    std::vector<VoceElenco> voci_;
    QString invito_;
};

}  // namespace lapvane
