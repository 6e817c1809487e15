#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

#include "logs/Impostazioni.h"
#include "runs/Uscita.h"

namespace lapvane {

class Confronto;

/// More bytes than any file of a log has: the memory of an instrument fills a tenth of it.
constexpr std::int64_t kByteLogMassimi = std::int64_t{1} << 28;

/// The files beside a log, named as the analysis names them; `FileImpostazioni` is the fourth.
std::filesystem::path FileTempi(const std::filesystem::path& csv);
std::filesystem::path FileLaterale(const std::filesystem::path& csv);
std::filesystem::path FileLateraleAlm(const std::filesystem::path& csv);
std::filesystem::path FileSessione(const std::filesystem::path& csv);

/// Whether a line is the heading of a log: its first two titles end with a unit in brackets.
bool TitoloDiLog(std::string_view riga);

/// Reads what lies beside the data file, and its first line; `file` are the states that the folder
/// tells. Raises nothing: what can't be read is the run's `Problema`. False: the file is no run at
/// all (no heading of a log, no lap times).
bool LeggiAccanto(const std::filesystem::path& csv, const FileUscita& file, Uscita& uscita);

/// A number for the division of a circuit into sectors as it is now; 0: it has none.
std::uint32_t DivisioneDi(const std::string& circuito);

/// The reading of one log itself, in pieces: its length, the numbers of its laps, the ideal lap of
/// the comparison with its usual parts, gaps.
class LetturaLog {
 public:
    LetturaLog();
    ~LetturaLog();
    LetturaLog(const LetturaLog&) = delete;
    LetturaLog& operator=(const LetturaLog&) = delete;

    /// One piece of about `ms` milliseconds; the first one reads the files and takes as long as
    /// that does. True: `uscita` has everything now. Raises nothing. Another run than that of the
    /// last call lets that one go.
    bool Passo(Uscita& uscita, int ms);

 private:
    void Apri(Uscita& uscita);
    void Finisci(Uscita& uscita);

    std::filesystem::path csv_;
    FileUscita file_;
    std::unique_ptr<Confronto> confronto_;
};

}  // namespace lapvane
