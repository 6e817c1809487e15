#pragma once

#include <QPixmap>
#include <QWidget>

namespace lapvane {

/// The ground of the main window: a circuit as a wide ribbon, hardly darker than the window. It is
/// drawn once a size, as long as it keeps the drawing.
class Sfondo : public QWidget {
    Q_OBJECT
 public:
    explicit Sfondo(QWidget* parent = nullptr);

    /// Whether the drawing stays between two paintings: not behind a window that needs its memory.
    void Tieni(bool tiene);

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    void Disegna(QPainter& penna) const;

    QPixmap disegno_;
    bool tiene_ = true;
};

}  // namespace lapvane
