#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

/// Path of the data file chosen by the save command.
extern std::filesystem::path PercorsoCsv;

/// The whole text of the three files.
struct FileLog {
    std::string Csv;
    std::string Txt;
    std::string Tim;
};

/// The title lines, without line end, in Italian (0) or English (any other index); the units are
/// names as `ListaUMVelocita` and `ListaUMTemperatura` hold them.
std::string TitoliCsv(int lingua, std::string_view umVelocita, std::string_view umTemperatura);
std::string TitoliTxt(int lingua);

/// Turns log records of 128 bytes into the data file and the alarm side file: ten rows a record,
/// the slow channels spread over them by linear interpolation. The title lines are not part of it.
/// Error 9 for more than 163841 rows.
void ConvertiBlocchi(const std::vector<std::string>& blocchi, std::size_t numero, char separatore,
                     std::string& csv, std::string& txt);

/// The three files of the download buffers.
FileLog ComponiLog();

/// Writes the three files beside `PercorsoCsv`, all of them or none, and shows text 269. Errors as
/// those of `ScriviFile`.
void ConvertiLog();

/// The save command: asks for the path, then converts. What can't be written is told of, and the
/// log stays in memory.
void mnuSaveData_Click();

}  // namespace lapvane
