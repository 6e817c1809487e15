#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane {

struct RecordProgetto;

// The settings of the day: a copy of the project as it was in memory when a log was converted. It
// lies beside the log and is a project file with one line more, so that Open takes it as well.

/// The copy's file: the last three characters of the data file's name replaced by "set".
std::filesystem::path FileImpostazioni(const std::filesystem::path& csv);

/// The text of a copy. Line breaks inside a value are blanks there: they would shift the values
/// behind them.
std::string TestoImpostazioni(const RecordProgetto& record);

/// Reads such a text. False, and `record` as it was, for one that is cut, damaged or no copy. The
/// input's flag of a project is in none.
bool ImpostazioniDaTesto(std::string_view testo, RecordProgetto& record);
/// The same from the copy beside a data file; false as well where there is none.
bool LeggiImpostazioni(const std::filesystem::path& csv, RecordProgetto& record);

/// Whether a copy is to be kept: the choice of the last time, yes without one.
bool CopiaScelta();
/// Keeps that choice. Errors as those of `ScriviFile`.
void ScegliCopia(bool copia);

/// Writes the copy of `DatiProgetto`. Errors as those of `ScriviFile`.
void ScriviImpostazioni(const std::filesystem::path& csv);

/// Removes the copy beside a data file; a file that is no copy stays. False: it could not be
/// removed.
bool TogliImpostazioni(const std::filesystem::path& csv);

/// Makes the copy beside a log that has just been written what it has to be: the settings of now
/// or, where none is wanted, where there is no project, or where it can't be written, none at all,
/// for one of an earlier log would lie about the run. Another file of that name stays. What a
/// person has to know of it as text, else the empty text; raises nothing.
std::string AggiornaImpostazioni(const std::filesystem::path& csv);

}  // namespace lapvane
