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

/// What the title lines depend on.
struct IntestazioneLog {
    std::int32_t Lingua = 0;
    std::string UMVelocita;
    std::string UMTemperatura;
};
/// The program's language and the units of the open project; empty for a position that its list
/// does not have.
IntestazioneLog IntestazioneCorrente();

/// The three files of the download buffers.
FileLog ComponiLog(const IntestazioneLog& intestazione = IntestazioneCorrente());

/// Writes the three files, all of them or none. Errors as those of `ScriviFile`; 55 for a data file
/// that would be its own side file.
void ScriviLog(const std::filesystem::path& csv, const FileLog& file);

/// Writes them beside `PercorsoCsv`, a copy of the settings beside them (`AggiornaImpostazioni`),
/// and shows text 269; what hinders the copy is told behind it. The download on the disk is not
/// offered any more.
void ConvertiLog();

/// The save command: asks for the path, then converts. What can't be written is told of, and the
/// log stays in memory.
void mnuSaveData_Click();

}  // namespace lapvane
