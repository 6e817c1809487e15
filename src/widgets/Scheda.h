#pragma once

#include <QFrame>
#include <QString>

class QVBoxLayout;

namespace lapvane {

/// A card: a head with its title and, at the right, a hint, and its content below. Both texts
/// change with every move of a cursor, so they are drawn and take no part in the layout.
class Scheda : public QFrame {
    Q_OBJECT
 public:
    explicit Scheda(const char* nome, QWidget* parent = nullptr);

    void Titolo(const QString& testo);
    void Nota(const QString& testo);
    const QString& Titolo() const { return titolo_; }
    const QString& Nota() const { return nota_; }
    QVBoxLayout* Contenuto() { return contenuto_; }

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    void Misura();

    QVBoxLayout* colonna_ = nullptr;
    QVBoxLayout* contenuto_ = nullptr;
    QString titolo_;
    QString nota_;
    int capo_ = 0;  ///< height of the head
};

}  // namespace lapvane
