#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace lapvane::strumento {

/// A circuit that cannot be driven: a file is missing or holds no outline. The text is for people.
class ErroreCircuito : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

struct Punto {
    double X = 0.0;
    double Y = 0.0;
};

/// A closed circuit as the car feels it: its length and how sharply it turns. The outline's points
/// are equally spaced along the lap, in any unit; the first one lies on the line.
class Circuito {
 public:
    /// Raises `ErroreCircuito` for an outline without an extent or a length (metres) below 400.
    Circuito(const std::vector<Punto>& contorno, double lunghezza);

    /// Reads the outline `trk` and, beside it, the length from line 1 of the `.sec` file of the
    /// same name. Raises `ErroreCircuito`.
    static Circuito Leggi(const std::filesystem::path& trk);

    double Lunghezza() const { return lunghezza_; }  ///< metres
    /// Curvature (1/m, not negative) at a distance from the line in metres; it goes round.
    double Curvatura(double distanza) const;
    /// Distance in metres from the line to the sharpest corner.
    double CurvaStretta() const;

 private:
    double lunghezza_;
    std::vector<double> curvatura_;  // one an outline point
};

/// The `.trk` files of a folder that have their `.sec` file, in name order; empty if the folder is
/// missing.
std::vector<std::filesystem::path> ElencaCircuiti(const std::filesystem::path& cartella);

}  // namespace lapvane::strumento
