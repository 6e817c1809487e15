#pragma once

#include <span>
#include <string>
#include <vector>

namespace lapvane {

// The arithmetic of a drawing. Lengths are in pixels, y grows downwards.

/// Round places on an axis: multiples of 1, 2 or 5 times a power of ten.
struct Tacche {
    double Passo = 0.0;
    int Decimali = 0;  ///< digits after the point that the step needs
    std::vector<double> Valori;
};

/// The ticks of the range `da` to `a`, `massime` at most, ascending. None for a range that is
/// empty, not finite, or too narrow for its numbers to differ.
Tacche CalcolaTacche(double da, double a, int massime);

/// Label of a tick: as many decimals as its step needs; an exponent for very large and very small
/// numbers.
std::string TestoTacca(double valore, const Tacche& tacche, char separatore);

/// A straight mapping of an axis range to pixels.
struct ScalaPixel {
    double Da = 0.0;
    double A = 1.0;
    double PixelDa = 0.0;
    double PixelA = 1.0;

    /// Whether the range is finite and not empty.
    bool Valida() const;
    double Pixel(double valore) const { return PixelDa + (valore - Da) * Fattore(); }
    double Valore(double pixel) const { return Da + (pixel - PixelDa) / Fattore(); }

 private:
    double Fattore() const { return (PixelA - PixelDa) / (A - Da); }
};

struct PuntoGrafico {
    double X = 0.0;
    double Y = 0.0;
    friend bool operator==(const PuntoGrafico&, const PuntoGrafico&) = default;
};

struct Rettangolo {
    double Sinistra = 0.0;
    double Alto = 0.0;
    double Destra = 0.0;
    double Basso = 0.0;
};

using Tratto = std::vector<PuntoGrafico>;

/// What of a line through the points lies inside the rectangle, as connected stretches. A point
/// that is not finite breaks the line.
std::vector<Tratto> TagliaLinea(std::span<const PuntoGrafico> punti, const Rettangolo& area);

/// A line of many points in few: of the points that fall on one pixel column only the first, the
/// lowest, the highest and the last are left, in their order, so that the picture stays the same.
/// A line of few points is left alone.
Tratto Assottiglia(Tratto punti, double larghezza);

}  // namespace lapvane
