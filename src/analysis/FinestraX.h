#pragma once

#include <cstdint>

#include "analysis/TabellaDati.h"
#include "platform/GraphControl.h"

namespace lapvane {

/// The window that the graphs of an analysis show: its range, the rows of the log in it, and the
/// steps by which it moves.
class FinestraX {
 public:
    double XMin() const { return vista_.XMin; }  ///< seconds or metres
    double XMax() const { return vista_.XMax; }
    double YMin() const { return vista_.YMin; }
    double YMax() const { return vista_.YMax; }
    std::int32_t RigaDa() const { return rigaDa_; }  ///< first and last row of the drawing
    std::int32_t RigaA() const { return rigaA_; }
    bool Vuota() const { return rigaA_ < rigaDa_; }
    /// Rows between plotted points at this zoom, at least 1.
    std::int16_t Decimazione() const { return decimazione_; }
    double PassoSposta() const { return passoSposta_; }  ///< of the shift buttons
    double PassoScorri() const { return passoScorri_; }  ///< of one round of the automatic scroll
    bool AsseDistanza() const { return asseDistanza_; }
    bool chkTempo() const { return chkTempo_; }  ///< both boxes of the axis may be clear
    bool chkDistanza() const { return chkDistanza_; }

    /// The range that a graph shows now: all of it, or its x alone.
    void Leggi(const IntervalloGrafico& letto) { vista_ = letto; }
    void LeggiX(const IntervalloGrafico& letto);
    /// A whole lap from its first to its last row, with the y range of its channels.
    void ApriSulGiro(const TabellaDati& tabella, std::int32_t da, std::int32_t a, double yMin,
                     double yMax);
    /// The width times `fattore` or, if `fuori`, divided by it; the left edge stays.
    void Zoom(double fattore, bool fuori);
    /// Nothing holds the window inside the lap.
    void Sposta(double quanto);

    /// A click on a box of the axis; clearing one changes no axis. True if the axis is chosen anew.
    bool chkTempo_Click(bool spuntato);
    bool chkDistanza_Click(bool spuntato);

    /// `RigaDa` and `RigaA` for a lap from row `inizio` to row `fine`.
    void CalcolaRighe(const TabellaDati& tabella, std::int32_t inizio, std::int32_t fine);
    /// Decimation and step of the window as it is; without an axis the step stays.
    void CalcolaPassoSposta();
    void CalcolaPassoScorri();
    void RiportaDecimazione() { decimazione_ = 1; }

 private:
    void CambiaAsse(bool distanza);
    double PassoFinestra(double prima) const;
    void CalcolaDecimazione();

    IntervalloGrafico vista_;
    std::int32_t rigaDa_ = 0;
    std::int32_t rigaA_ = 0;
    std::int16_t decimazione_ = 1;
    double passoSposta_ = 0.0;
    double passoScorri_ = 0.0;
    bool asseDistanza_ = false;
    bool chkTempo_ = true;
    bool chkDistanza_ = false;
};

}  // namespace lapvane
