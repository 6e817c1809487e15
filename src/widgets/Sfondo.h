#pragma once

#include <QSvgRenderer>
#include <QWidget>

namespace lapvane {

/// The ground of the main window: the drawn emblem, centred, on the palette's own colour.
class Sfondo : public QWidget {
    Q_OBJECT
 public:
    explicit Sfondo(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QSvgRenderer disegno_;
};

}  // namespace lapvane
