#pragma once

#include <QFrame>
#include <QPolygonF>
#include <span>
#include <vector>

#include "reports/Circuiti.h"
#include "reports/DivisioneSettori.h"

namespace lapvane {

/// The outline of a track, as large as the widget allows: closed, with a yellow cross at its first
/// point, and where asked with its sectors in colours and numbers, or with a round marker.
class DisegnoTracciato : public QFrame {
    Q_OBJECT
 public:
    explicit DisegnoTracciato(QWidget* parent = nullptr);

    /// Another outline; sectors and marker of the old one go. An empty one clears the picture.
    void ImpostaPunti(std::vector<PuntoTracciato> punti);
    /// Divides the outline by the sectors' share of the track length, metres; none: plain.
    void Settori(std::span<const std::int32_t> lunghezze, double lunghezzaTracciato);
    /// Puts the round marker on an outline point, counted from 0; any other number takes it away.
    void Marcatore(int n);
    /// Width of the outline, 4 pixels if nobody says otherwise, and whether the cross is drawn.
    void Tratto(int spessore, bool croce);

    const std::vector<PuntoTracciato>& Punti() const { return punti_; }
    const std::vector<TrattoSettore>& Tratti() const { return tratti_; }
    int PuntoMarcato() const { return marcatore_; }  ///< -1: none
    /// Where an outline point is drawn now, in the widget's coordinates.
    QPointF Posizione(int n) const;

    QSize sizeHint() const override { return {420, 420}; }
    QSize minimumSizeHint() const override { return {160, 140}; }

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QFont CarattereNumeri() const;
    double Linea(QPolygonF& punti) const;

    std::vector<PuntoTracciato> punti_;
    std::vector<TrattoSettore> tratti_;
    int marcatore_ = -1;
    int spessore_ = 4;
    bool croce_ = true;
};

}  // namespace lapvane
