#pragma once

#include <QAbstractButton>
#include <QIcon>

namespace lapvane {

/// A button as large as a card: picture, name, one line about it, and at the right its key or a
/// date. The arrows go from one to the next.
class CartaAzione : public QAbstractButton {
    Q_OBJECT
 public:
    enum class Forma {
        Carta,  ///< with an edge of its own
        Riga    ///< one of a list, whose frame is drawn by whoever holds it
    };

    explicit CartaAzione(Forma forma, QWidget* parent = nullptr);

    /// What it says. A line or a key that has no room is cut, with the whole of it as tool tip.
    void Mostra(const QString& nome, const QString& riga, const QString& destra);
    /// The one that is pressed next.
    void Principale(bool principale);
    /// Half the room above and below its words.
    void Fitta(bool fitta);

    /// Width at which the name and the line below it are whole.
    int Larghezza() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    bool event(QEvent* evento) override;

 private:
    int Margine() const;
    void Misura();

    Forma forma_;
    QString riga_;
    QString destra_;
    bool principale_ = false;
    bool fitta_ = false;
};

}  // namespace lapvane
