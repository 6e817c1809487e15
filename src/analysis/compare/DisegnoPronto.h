#pragma once

#include <QImage>
#include <QPainter>
#include <QString>
#include <QWidget>

#include "widgets/AsseGrafico.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

/// A drawing that is made once at the screen's own resolution, and again only when something of it
/// has changed; what moves is laid over it.
class DisegnoPronto : public QWidget {
    Q_OBJECT
 public:
    explicit DisegnoPronto(QWidget* parent = nullptr);

 protected:
    /// Makes the picture anew before it is shown the next time.
    void Sporca();
    /// Draws into a picture of the ground's colour. It counts in the widget's pixels.
    virtual void Disegna(QImage& foto) = 0;
    /// Draws what moves, over the picture.
    virtual void DisegnaSopra(QPainter&) {}
    virtual QColor Fondo() const { return ColoriDi(*this).Plot; }

    /// The sentence of an empty drawing, in its middle.
    void DisegnaInvito(QPainter& penna, const QString& frase) const;
    /// A name in semibold with its unit behind it, from `inizio` on, which lies on the line of the
    /// letters.
    void DisegnaTitolo(QPainter& penna, const QPointF& inizio, const QString& nome,
                       const QString& unita) const;
    double LarghezzaTitolo(const QString& nome, const QString& unita) const;
    /// The label of a tick, with a true minus.
    static QString TestoAsse(double valore, const Tacche& tacche);

    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    QImage foto_;
    bool sporco_ = true;
};

}  // namespace lapvane
