#pragma once

#include <QFrame>
#include <QStringList>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace lapvane {

/// What could not be done, in a strip above the content of a window: it is there only then, and
/// pushes the content down.
class StrisciaAvviso : public QFrame {
    Q_OBJECT
 public:
    explicit StrisciaAvviso(QWidget* parent = nullptr);

    /// A sentence a line; none: the strip goes.
    void Mostra(const QStringList& frasi);
    /// What one can do about it, at the right.
    void Aggiungi(QPushButton* pulsante);

 private:
    QHBoxLayout* riga_ = nullptr;
    QLabel* lblAvviso_ = nullptr;
};

}  // namespace lapvane
