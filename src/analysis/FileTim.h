#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

constexpr int kGiriMassimi = 999;  ///< highest lap index of an analysis
/// Index of the last row of a full lap table, which is no lap but the stretch after the last mark.
constexpr int kUltimaRiga = kGiriMassimi + 1;

/// One line of a file of lap times.
struct RigaTim {
    std::string Tempo;     ///< mm:ss.cc as it stands
    std::string Sessione;  ///< number of the session that the lap belongs to
};

/// The lap times of a log as read.
struct FileTim {
    std::string PrimaRiga;       ///< version of the log
    std::vector<RigaTim> Righe;  ///< line 2 of the file on; at most index 999
    int Linee = 0;            ///< lines behind the first, also those that `Righe` has no place for
    bool TroppiGiri = false;  ///< a lap did not fit
    /// One past the last line index; 1001 at most.
    int IndiceFine() const { return std::min(Linee, kGiriMassimi) + 2; }
};

/// Takes the text of a .tim file apart: the first line carries no lap; each further line is a time,
/// a comma, one character that is skipped and the session; without a comma the session is 1. Of the
/// lines past lap index 999 one still counts, the last line of a full table; none is kept.
FileTim LeggiFileTim(std::string_view testo);

}  // namespace lapvane
