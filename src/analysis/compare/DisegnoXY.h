#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "analysis/compare/DisegnoPronto.h"
#include "analysis/compare/FasceConfronto.h"
#include "widgets/Tracciatore.h"

namespace lapvane {

/// The points of one lap, in the order in which they were driven. One that is not finite breaks a
/// line.
struct SerieXY {
    QString Nome;  ///< "Lap 12"
    PuntiXY Punti;
};

struct AsseXY {
    QString Nome;
    QString Unita;
};

struct DatiXY {
    AsseXY X;
    AsseXY Y;
    std::vector<SerieXY> Serie;  ///< the reference first
    bool Linea = false;          ///< joined by a line; else a dot for each point
    char Fuoco = 0;              ///< letter of the lap that lies on top; 0: none
    QString Nota;                ///< small, below the legend
    QString Invito;              ///< what stands there when there are no points
};

/// One channel of laps against another, in a square.
class DisegnoXY : public DisegnoPronto {
    Q_OBJECT
 public:
    explicit DisegnoXY(QWidget* parent = nullptr);

    /// Shows something else; the ring goes.
    void Imposta(DatiXY dati);
    const DatiXY& Dati() const { return dati_; }
    /// Puts the ring of the cursor around a point, in the units of the axes; none: takes it away.
    void Cursore(std::optional<PuntoGrafico> punto);
    /// Where a point is drawn, in the widget's coordinates.
    QPointF Posizione(const PuntoGrafico& punto) const;

    QSize sizeHint() const override { return {520, 360}; }
    QSize minimumSizeHint() const override { return {240, 200}; }

 protected:
    void Disegna(QImage& foto) override;
    void DisegnaSopra(QPainter& penna) override;
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    struct Disposizione;
    const Disposizione& Disposta() const;
    bool Intervallo(double& xMin, double& xMax, double& yMin, double& yMax) const;
    double LarghezzaLegenda() const;
    double LarghezzaEtichette(const Tacche& tacche) const;
    std::vector<const SerieXY*> InOrdine() const;
    QRect Intorno() const;
    void DisegnaAssi(QPainter& penna) const;
    void DisegnaSerie(QImage& foto);
    double Larghezza(char lettera) const;
    void DisegnaLegenda(QPainter& penna) const;

    DatiXY dati_;
    std::optional<PuntoGrafico> cursore_;
    mutable std::shared_ptr<const Disposizione> disposta_;
    Tracciatore tracciatore_;
};

}  // namespace lapvane
