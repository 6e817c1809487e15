#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

constexpr int kGiriMassimi = 999;  ///< highest lap index of an analysis

/// One line of a file of lap times.
struct RigaTim {
    std::string Tempo;     ///< mm:ss.cc as it stands
    std::string Sessione;  ///< number of the session that the lap belongs to
};

/// The lap times of a log as read.
struct FileTim {
    std::string PrimaRiga;       ///< version of the log
    std::vector<RigaTim> Righe;  ///< line 2 of the file on; at most index 999
    /// One past the last line index.
    int IndiceFine() const { return static_cast<int>(Righe.size()) + 2; }
};

/// Takes the text of a .tim file apart: the first line carries no lap; each further line is a time,
/// a comma, one character that is skipped and the session; without a comma the session is 1. Lines
/// past lap index 999 are dropped.
FileTim LeggiFileTim(std::string_view testo);

}  // namespace lapvane
