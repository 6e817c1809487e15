#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/FileTim.h"
#include "analysis/Giri.h"
#include "analysis/TabellaArray.h"
#include "analysis/compare/Allineamento.h"
#include "reports/DatiSessione.h"

namespace lapvane {

/// A column of a log by the words of its heading.
struct CanaleLog {
    int Colonna = 0;
    std::string Nome;   ///< "Engine"
    std::string Unita;  ///< "RPM"; empty: none is told
};

/// A log opened beside the analysis: its rows, laps, session and circuit, in memory of its own.
/// None of the system's records is read or written.
class LogAperto {
 public:
    /// Reads the data file and what lies beside it. Error 53 without a data file, 61, 75 or 76 for
    /// what can't be read; what is missing of the other files is left empty.
    explicit LogAperto(std::filesystem::path file);

    const std::filesystem::path& File() const { return file_; }
    const TabellaArray& Tabella() const { return tabella_; }
    const RecordSessione& Sessione() const { return sessione_; }
    bool ConTempi() const { return conTempi_; }        ///< there is a file of lap times
    bool ConLaterale() const { return conLaterale_; }  ///< there is a side file
    /// The channels, from column 3 on.
    const std::vector<CanaleLog>& Canali() const { return canali_; }
    /// Metres of each sector of the session's circuit; empty without one, or without a division.
    const std::vector<double>& Settori() const { return settori_; }

    /// Timed laps in the order of the log; without a file of lap times those that it marks.
    const std::vector<GiroDelLog>& Giri() const { return giri_; }
    /// The number that the lap table shows of lap `i`.
    int Numero(int i) const { return numeri_[static_cast<std::size_t>(i)]; }
    /// Session of lap `i`, as the file of lap times has it.
    const std::string& SessioneDelGiro(int i) const {
        return sessioni_[static_cast<std::size_t>(i)];
    }
    /// Which lap has this number, from 0; -1: none.
    int CercaNumero(int numero) const;
    /// The fastest lap, from 0; the first of several; -1: none.
    int Migliore() const;

    const Allineamento& Allineati() const { return *allineati_; }
    /// A channel at a moment of the log's clock (seconds since its first row), between its rows.
    double Valore(int colonna, double secondi) const;

 private:
    void LeggiTempi();
    void LeggiTabelle();
    void LeggiCanali(std::string_view titolo, int colonne);
    void LeggiSessioneECircuito();
    void TrovaGiri();

    std::filesystem::path file_;
    TabellaArray tabella_;
    FileTim tempi_;
    RigheGiri righe_;
    RecordSessione sessione_;
    std::vector<CanaleLog> canali_;
    std::vector<double> settori_;
    std::vector<GiroDelLog> giri_;
    std::vector<int> numeri_;
    std::vector<std::string> sessioni_;
    bool conTempi_ = false;
    bool conLaterale_ = false;
    std::unique_ptr<Allineamento> allineati_;
};

/// Hundredths of a time "mm:ss.cc", or with hours in front; 0 for what is none.
std::int32_t CentesimiDi(std::string_view tempo);

}  // namespace lapvane
