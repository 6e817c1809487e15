#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace lapvane::manual {

/// What the program can show in its message boxes, as its source says.
struct Messages {
    std::set<int> Texts;                 ///< numbers of the table of texts
    std::set<int> Captions;              ///< of those, captions that a message only quotes
    std::set<std::string> Literals;      ///< texts that are not in the table, UTF-8
    std::map<int, std::string> RunTime;  ///< number of a run-time error, its name in the source
    std::vector<std::string> Doing;      ///< English phrases of what the program was doing
    std::vector<std::string> Faults;     ///< what could not be understood, as file:line: what
};

/// Reads every `MsgBox` call of the sources; `names` are the texts by name. A part of a message
/// that is neither a literal nor a `Testo(number or name)` must have a rule that says where its
/// texts come from; without one it is a fault, so that a new message cannot slip past the manual.
Messages ScanMessages(const std::filesystem::path& src, const std::map<std::string, int>& names);

}  // namespace lapvane::manual
