#pragma once

#include <filesystem>

#include "analysis/ElencoCanali.h"

namespace lapvane {

/// The session of an open log: the .ses file beside it, `DatiSessione` and the channels' settings.
class SessioneLog {
 public:
    /// Reads the file. What one that is cut short lacks keeps its default.
    void LeggiDatiSessione(const std::filesystem::path& nomeFileDati, ElencoCanali& canali);
    /// Writes it over the beginning of the old one; nothing before a log is read.
    void SalvaDatiSessione(const ElencoCanali& canali) const;

 private:
    std::filesystem::path NomeFileSessione_;  ///< the CSV with "ses" for its last three characters
};

}  // namespace lapvane
