#pragma once

#include <QPolygonF>
#include <vector>

#include "analysis/compare/DisegnoPronto.h"
#include "reports/Circuiti.h"

namespace lapvane {

/// What the map shows. Places along the lap are shares of it, 0 (the line) to 1.
struct DatiMappa {
    QString Nome;                       ///< for a screen reader
    std::vector<PuntoTracciato> Punti;  ///< closed outline, equally spaced along the lap
    /// One for each of equal steps along the lap; not finite: nothing is known there.
    std::vector<double> Valori;
    bool Tempo = true;  ///< `Valori` are seconds lost (positive) per 100 m; else a channel
    std::vector<double> Confini;  ///< cuts between the parts, ascending, without both ends
    std::vector<int> Peggiori;    ///< parts, from 0, whose number stands out
    // The words of the legend: three for the time, the two ends of the scale for a channel.
    QString Perde;
    QString Uguale;
    QString Guadagna;
    QString Minimo;
    QString Massimo;
    QString Invito;  ///< what stands there when there is no outline
};

/// The outline of a track, coloured by what happens along a lap, with the numbers of its parts and
/// the place of the cursor.
class DisegnoMappa : public DisegnoPronto {
    Q_OBJECT
 public:
    explicit DisegnoMappa(QWidget* parent = nullptr);

    /// Shows something else; the cursor stays where it is.
    void Imposta(DatiMappa dati);
    const DatiMappa& Dati() const { return dati_; }
    /// Puts the cursor at a place of the lap; below 0 there is none.
    void Cursore(double quota);
    /// Where a place of the lap is drawn, in the widget's coordinates.
    QPointF Posizione(double quota) const;

    QSize sizeHint() const override { return {282, 300}; }
    QSize minimumSizeHint() const override { return {180, 180}; }

 Q_SIGNALS:
    /// The mouse is near that place of the lap, or a key has moved the cursor there.
    void Mosso(double quota);

 protected:
    void Disegna(QImage& foto) override;
    void DisegnaSopra(QPainter& penna) override;
    QColor Fondo() const override { return ColoriDi(*this).Base; }
    void mouseMoveEvent(QMouseEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    struct Voce;
    const QPolygonF& Linea() const;
    QPolygonF Tratto(double da, double a) const;
    QRect Intorno(double quota) const;
    std::vector<Voce> VociLegenda() const;
    int RigheLegenda(const std::vector<Voce>& voci) const;
    double AltezzaLegenda() const;
    void DisegnaTempo(QPainter& penna) const;
    void DisegnaCanale(QPainter& penna) const;
    void DisegnaTraguardo(QPainter& penna) const;
    void DisegnaNumeri(QPainter& penna) const;
    QPointF PostoNumero(double da, double a, double raggio, std::span<const QPointF> altri) const;
    void DisegnaLegenda(QPainter& penna) const;
    void DisegnaScala(QPainter& penna) const;

    DatiMappa dati_;
    double cursore_ = -1.0;
    mutable QPolygonF linea_;  ///< the outline in pixels, smooth, its first point again at the end
};

}  // namespace lapvane
