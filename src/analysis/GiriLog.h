#pragma once

#include <cstdint>
#include <string>

#include "analysis/FileTim.h"
#include "analysis/Giri.h"
#include "analysis/PerCanale.h"

namespace lapvane {

constexpr int kColonnaTempoGiro = 1;  ///< column of the lap times in the lap table; sectors follow

/// The laps of a log: their times, their rows, their sectors, and which of them is selected. Lap
/// index and row of the lap table are the same number: 1 is the stretch before the first mark, lap
/// n is index n + 1.
class GiriLog {
 public:
    /// Finds the rows of each stretch in the lap numbers of the side file.
    void CercaGiri(const TabellaDati& tabella);
    /// Takes over the lap times of a log.
    void Prendi(const FileTim& file);
    /// The sectors of a circuit; a circuit without a division has one.
    void LeggiSettori(const std::string& circuito);
    void UnSettore() { numSettori_ = 1; }

    int NumRigheTabella() const { return numRigheTabella_; }  ///< one past the last line index
    int NumGiri() const { return numGiri_; }                  ///< complete laps; may be negative
    int NumSettori() const { return numSettori_; }            ///< at least 1
    /// Last column of the lap table that has times.
    int UltimaColonna() const;

    /// First and last row of a lap; 0 outside the index.
    std::int32_t InizioGiro(int giro) const;
    std::int32_t FineGiro(int giro) const;
    /// Smallest lap index whose last row is above 2; 1000 if there is none.
    int PrimoGiroValido() const;
    /// Number of a lap as the log has it; of one that it has no rows of, that of its table row.
    double NumeroGiro(const TabellaDati& tabella, int giro) const;

    void Seleziona(int giro);
    int GiroSelezionato() const { return giroSelezionato_; }
    /// Last minus first row of the selected lap.
    std::int32_t RigheGiro() const { return righeGiro_; }
    std::int32_t InizioSelezionato() const { return InizioGiro(giroSelezionato_); }
    std::int32_t FineSelezionato() const { return FineGiro(giroSelezionato_); }

    /// Time or sector time of a lap: column 1 is the lap time. Index 0 to 999, column 0 to 20.
    const std::string& TempoGiro(int giro, int colonna) const;
    /// The same for the dialogs; an index outside 0 to 999 raises error 9.
    std::string GetTempoGiro(int giro) const;
    std::string GetSessioneTempo(int giro) const;
    /// Cuts a lap at the sectors of the track.
    void CalcolaSettoriGiro(int giro, const TabellaDati& tabella);

    /// Lap index of the lowest and the highest time of a column. There must be laps.
    struct Estremi {
        int Migliore;
        int Peggiore;
    };
    Estremi MiglioreEPeggiore(int colonna) const;
    /// Lap numbers of the fastest and the slowest lap; 0 without laps.
    int GiroMigliore() const;
    int GiroPeggiore() const;

 private:
    /// The times of a lap; makes room for them.
    PerCanale<std::string>& Tempi(int giro);

    std::vector<PerCanale<std::string>> TempiGiro_;  ///< as far as there are laps
    PerGiro<std::string> TempiSessione_;
    PerCanale<double> DistanzeSettori_;  ///< metres, entry 0 first
    RigheGiri righe_;
    int numRigheTabella_ = 0;
    int numGiri_ = 0;
    int numSettori_ = 1;
    int giroSelezionato_ = 0;
    std::int32_t righeGiro_ = 0;
};

}  // namespace lapvane
