#pragma once

#include <QPixmap>
#include <QWidget>

namespace lapvane {

/// The ground of the main window: a circuit as a wide ribbon, hardly darker than the window. It is
/// drawn once a size.
class Sfondo : public QWidget {
    Q_OBJECT
 public:
    explicit Sfondo(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    QPixmap Disegna() const;
    QPixmap disegno_;
};

}  // namespace lapvane
