#pragma once

#include <QWidget>

namespace lapvane {

/// A line of text at the right edge of the room that is left over, cut at its end where that is too
/// little; the whole of it is the tool tip.
class Didascalia : public QWidget {
    Q_OBJECT
 public:
    explicit Didascalia(QWidget* parent = nullptr);

    void Testo(const QString& testo);
    const QString& Testo() const { return testo_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QString testo_;
};

}  // namespace lapvane
