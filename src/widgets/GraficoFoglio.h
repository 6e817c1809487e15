// What the graph is drawn on and where its parts go: for the files that draw it alone.
#pragma once

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "widgets/GraficoWidget.h"
#include "widgets/Scrittore.h"

namespace lapvane {

/// What the graph is drawn on, and in which colours.
struct GraficoWidget::Foglio {
    static constexpr double kMargine = 10.0;
    static constexpr double kTacca = 5.0;           // length of a tick
    static constexpr double kAsse = 2.0;            // width of a y axis
    static constexpr double kContrastoLinea = 1.9;  // keeps all colours of the channels as they are
    static constexpr double kContrastoTesto = 4.5;
    static constexpr double kContrastoAsse = 3.0;

    QSizeF Misura;
    double Rapporto = 1.0;  ///< device pixels per pixel; 0: no pixels, but paper
    double Filo = 1.0;      ///< width of the thinnest line
    Colore Sfondo = 0;
    Colore Testo = 0;
    Scrittore* Penna = nullptr;
    /// The fields of the curves, in the screen's own pixels, when their ground is laid along with
    /// these, and that ground; else neither.
    std::vector<Tracciatore::Campo> Campi;
    std::vector<Tracciatore::Macchia> Fondo;

    /// An area of one colour: what lies in a field is put down for its ground.
    void Riempi(QPainter& penna, const QRectF& area, const QColor& tinta) {
        if (!Campi.empty()) {
            // As QPainter rounds.
            const QRectF r(area.topLeft() * Rapporto, area.size() * Rapporto);
            const Tracciatore::Campo qui{qRound(r.left()), qRound(r.top()), qRound(r.right()),
                                         qRound(r.bottom())};
            Fondo.push_back({qui, tinta.rgb()});
            for (const Tracciatore::Campo& c : Campi) {
                if (qui.Sinistra >= c.Sinistra && qui.Destra <= c.Destra && qui.Alto >= c.Alto &&
                    qui.Basso <= c.Basso) {
                    return;
                }
            }
        }
        penna.fillRect(area, tinta);
    }

    /// Times the width of a thin line.
    static double Spessore(std::int16_t spessore) {
        constexpr int kMassimo = 20;
        return std::clamp<int>(spessore, 1, kMassimo);
    }
    bool Carta() const { return Rapporto <= 0.0; }
    double SuPixel(double v) const { return Carta() ? v : std::round(v * Rapporto) / Rapporto; }
    /// The thinnest frame round an area.
    QRectF Intorno(const QRectF& area) const { return area.adjusted(-Filo, -Filo, Filo, Filo); }
    /// A thin line at `x` or `y`: on the screen one row or column of its own pixels.
    QRectF Verticale(double x, double da, double a, double spessore) const {
        return {Inizio(x, spessore), da, Spesso(spessore), a - da};
    }
    QRectF Orizzontale(double y, double da, double a, double spessore) const {
        return {da, Inizio(y, spessore), a - da, Spesso(spessore)};
    }

 private:
    double Spesso(double spessore) const {
        return Carta() ? spessore : std::max(1.0, std::round(spessore * Rapporto)) / Rapporto;
    }
    double Inizio(double dove, double spessore) const {
        if (Carta()) return dove - spessore / 2.0;
        const double pixel = Spesso(spessore) * Rapporto;
        return std::floor(dove * Rapporto - (pixel - 1.0) / 2.0) / Rapporto;
    }
};

/// Where everything goes for the present size, texts and ranges.
struct GraficoWidget::Disposizione {
    struct RigaAsse {
        double Valore = 0.0;  ///< in the units of the axis
        QString Testo;
    };
    struct Pannello {
        QRectF Area;
        Riquadro Dati;
        std::vector<RigaAsse> Tacche;
    };
    struct VoceLegenda {
        QRectF Segno;
        QRectF Posto;
        QString Testo;
        Colore Tinta = 0;
    };
    QSizeF Misura;
    double Rapporto = 1.0;
    std::vector<Pannello> Pannelli;
    std::vector<RigaAsse> TaccheX;
    std::vector<VoceLegenda> Legenda;
    std::vector<RigaAsse> Livelli;  ///< in the order of `livelli_`
    double LarghezzaY = 0.0;        ///< of the widest label
    QRectF Titolo;
    QRectF EtichettaX;
};

}  // namespace lapvane
