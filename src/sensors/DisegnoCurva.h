#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QString>
#include <functional>
#include <vector>

#include "widgets/GraficoWidget.h"

namespace lapvane {

/// The graph of a sensor's curve, whose points can be dragged. What a drag may do the window says.
class DisegnoCurva : public GraficoWidget {
    Q_OBJECT
 public:
    explicit DisegnoCurva(QWidget* parent = nullptr);

    /// A point was taken (counted from 0); false: it may not move now.
    std::function<bool(int)> EventoPreso;
    /// The one that was taken is wanted there; inside the axes.
    std::function<void(int, const QPointF&)> EventoSpostato;
    /// It was let go.
    std::function<void()> EventoLasciato;
    /// What stands beside a point under the mouse.
    std::function<QString(int)> Scritta;

    /// The points that can be taken.
    void Maniglie(std::vector<QPointF> punti);
    /// A curve behind that of the points, thin; empty: none.
    void Dietro(std::vector<QPointF> punti);
    /// Whether it shows: it does where it is not that of the points.
    bool DietroSiVede() const { return dietro_.size() > 1 && dietro_ != punti_; }
    /// Whether one is being dragged: the axes stay as they are meanwhile.
    bool Trascina() const { return presa_ >= 0; }

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void leaveEvent(QEvent* evento) override;

 private:
    QPolygonF InPixel(const std::vector<QPointF>& punti) const;
    void DisegnaDietro(QPainter& penna) const;
    void DisegnaManiglia(QPainter& penna) const;
    int Vicina(const QPointF& pixel) const;
    void Sotto(int maniglia);

    std::vector<QPointF> punti_;
    std::vector<QPointF> dietro_;
    int sotto_ = -1;  // under the mouse
    int presa_ = -1;
};

}  // namespace lapvane
