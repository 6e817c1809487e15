#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane {

/// The description of a data file and its side file that a text driver looks for in their folder:
/// columns F1, F2 ... as Double, the last column of the side file as Integer.
std::string TestoSchema(std::string_view nomeCsv, int numCampi, std::string_view nomeLaterale,
                        int numCampiTxt);

/// Writes it as schema.ini into the folder of the two files; a folder that takes nothing stays as
/// it is.
void ScriviSchema(const std::filesystem::path& cartella, const std::filesystem::path& nomeCsv,
                  int numCampi, const std::filesystem::path& nomeLaterale, int numCampiTxt);

}  // namespace lapvane
