#pragma once

#include <string>
#include <vector>

namespace lapvane {

/// A table as text: rows of cells, the headings among them.
using RigheTabella = std::vector<std::vector<std::string>>;

/// A text as a field of a CSV file: quoted where it holds the separator, a quote or a line end.
std::string CampoCsv(const std::string& testo, char separatore);

/// A table as a CSV file, fields parted by ";" as in a log. A number or a time takes `decimale`
/// for its point or comma; other texts stay as they are.
std::string CsvTabella(const RigheTabella& righe, char decimale);

}  // namespace lapvane
