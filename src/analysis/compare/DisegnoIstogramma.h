#pragma once

#include <vector>

#include "analysis/compare/DisegnoPronto.h"
#include "analysis/compare/FasceConfronto.h"

namespace lapvane {

struct DatiIstogramma {
    FasceCanale Fasce;  ///< the reference first
    QString Titolo;     ///< of the axis at the left: "Share of time"
    QString Tratto;     ///< how a band is written: "%1 to %2"
    QString Invito;     ///< what stands there when there are no bands
};

/// How much of their time laps spend in each band of a channel: bars side by side.
class DisegnoIstogramma : public DisegnoPronto {
    Q_OBJECT
 public:
    explicit DisegnoIstogramma(QWidget* parent = nullptr);

    void Imposta(DatiIstogramma dati);
    const DatiIstogramma& Dati() const { return dati_; }
    /// The bar of a lap (by its place in `Fasce.Giri`) in a band, in the widget's coordinates.
    QRectF Barra(int fascia, int giro) const;

    QSize sizeHint() const override { return {520, 360}; }
    QSize minimumSizeHint() const override { return {240, 200}; }

 protected:
    void Disegna(QImage& foto) override;

 private:
    struct Disposizione;
    Disposizione Disponi() const;
    static QRectF Barra(const Disposizione& d, const DatiIstogramma& dati, int fascia, int giro);
    QString Confine(int i) const;
    void DisegnaAsse(QPainter& penna, const Disposizione& d) const;
    void DisegnaBarre(QPainter& penna, const Disposizione& d) const;
    void DisegnaFasce(QPainter& penna, const Disposizione& d) const;
    void DisegnaLegenda(QPainter& penna, const Disposizione& d) const;

    DatiIstogramma dati_;
};

}  // namespace lapvane
