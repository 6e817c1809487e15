#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

/// The logs that were analysed last, the newest first, at most `kLogRecenti`.
using ElencoLog = std::vector<std::filesystem::path>;

constexpr std::size_t kLogRecenti = 4;

/// Reads the text of such a file; a text that this program did not write gives no entries.
ElencoLog LeggiLogRecenti(std::string_view testo);
std::string ScriviLogRecenti(const ElencoLog& elenco);

/// Puts a log on top, wherever it was; the oldest one gives way.
void MettiInCima(ElencoLog& elenco, const std::filesystem::path& file);

/// The list of the last time; empty without a file that can be read.
ElencoLog CaricaLogRecenti();
/// Writes it; a folder that takes no file leaves things as they are.
void SalvaLogRecenti(const ElencoLog& elenco);

}  // namespace lapvane
