#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sensors/CSensore.h"

namespace lapvane {

/// One row of the table of points, as its controls show it.
struct RigaPunto {
    std::string X;              ///< `txtX`
    std::string Y;              ///< `txtY`
    bool Caselle = false;       ///< the boxes are enabled
    bool Spunta = false;        ///< `Check1`: the row is in use
    bool SpuntaAttiva = false;  ///< `Check1` is enabled
};

/// The range of the graph; zero is always inside.
struct LimitiCurva {
    double XMin = 0.0;
    double XMax = 0.0;
    double YMin = 0.0;
    double YMax = 0.0;
};

/// A number as the sensor editors write it: shortest text, a point, no zero before it.
std::string TestoPunto(double valore);

/// The table of points of a sensor. Rows are used from the top without gaps, and only the last one
/// in use or the next one can change. Row numbers go from 0 to 19.
class TabellaPunti {
 public:
    static constexpr int kRighe = static_cast<int>(CSensore::kPunti);

    TabellaPunti() { righe_[0].SpuntaAttiva = true; }

    /// Rows in use.
    int NumPuntiTabella() const { return numPuntiTabella_; }
    const RigaPunto& Riga(int i) const { return righe_.at(static_cast<std::size_t>(i)); }
    double X(int i) const;  ///< numeric value of the box, 0 for a text that is none
    double Y(int i) const;
    /// The texts of the rows in use.
    std::vector<std::string> AsseX() const { return Asse(&RigaPunto::X); }
    std::vector<std::string> AsseY() const { return Asse(&RigaPunto::Y); }

    void X(int i, std::string_view testo) { In(i).X = testo; }
    void Y(int i, std::string_view testo) { In(i).Y = testo; }
    /// Sets a tick. One that changes is a click on it: it moves the border of the rows in use, or
    /// comes back where that may not move.
    void Spunta(int i, bool accesa);

    void SvuotaTabella();
    /// The empty table of a new sensor.
    void NuovoSensore();
    /// Fills the empty table with a sensor of the library; `tipo` is the selected type, which gives
    /// the decimals.
    void MostraSensore(const CSensore& sensore, std::string_view tipo);
    /// Fills all rows from `CurvaX` and `CurvaY`, which hold units of the instrument.
    void MostraCurva(int fattore);

    /// Whether X of a row does not fall behind the row above.
    bool Crescente(int i) const { return i < 1 || X(i - 1) <= X(i); }
    /// The first and the last of the rows about `i` that stand at one point with it: the tail of a
    /// saved curve moves as one.
    std::pair<int, int> Insieme(int i) const;
    /// The X nearest to `x` that those rows can move to: between their neighbours, and where none
    /// is as far as the input goes (0 at least, or the curve's own least). With `cala` the ends may
    /// go either way.
    double XPossibile(int primo, int ultimo, double x, bool cala) const;
    LimitiCurva CalcolaLimiti() const;
    /// Whether the ticks have asked for a new drawing since the last call.
    bool DaDisegnare();

 private:
    RigaPunto& In(int i) { return righe_.at(static_cast<std::size_t>(i)); }
    std::vector<std::string> Asse(std::string RigaPunto::*asse) const;
    void Check1_Click(int i);
    void AbilitaFino(int i);
    void SpegniDa(int i);

    std::array<RigaPunto, kRighe> righe_;
    std::int16_t numPuntiTabella_ = 0;
    bool daDisegnare_ = false;
};

}  // namespace lapvane
