#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace lapvane {

struct RecordProgetto;

/// Values of a project file by position, as text; position 200 is the last.
using ValoriFile = std::array<std::string, 201>;
extern ValoriFile ValoriProgetto;

/// What is known of the open project beside its record and its path.
struct StatoProgetto {
    /// It has no file of its own yet, whatever `PercorsoProgetto` still holds. Set by New.
    bool SenzaFile = false;
};
StatoProgetto& progettoAperto();

/// Whether there is a project at all: one that was opened or saved, or a new one.
bool ProgettoPresente();

/// The 102 lines of a project file.
std::string TestoProgetto(const RecordProgetto& record);
/// Those of `DatiProgetto`.
std::string TestoProgetto();

/// Reads the value lines of a project file (everything after the magic line). False when a 202nd
/// value ended the reading.
bool LeggiValoriProgetto(std::string_view righe, ValoriFile& valori);
/// The same into `ValoriProgetto`.
bool LeggiValoriProgetto(std::string_view righe);

/// The lines behind the magic line of a project file's text; empty optional: it is no such file.
std::optional<std::string_view> RigheProgetto(std::string_view testo);

/// Writes `DatiProgetto` to `PercorsoProgetto`, enables Save, shows name and path in the status
/// bar. A write error ends the program; the old file stays whole.
void SalvaProgetto();

/// Reads a project file into `DatiProgetto`; a name without a folder is looked for in the program's
/// folder. False, with a message, when the file was not accepted.
bool LeggiProgetto(const std::filesystem::path& percorso);

/// Converts positions 0 to 100, less 80, to the fields, until the first number or flag that is
/// none: the fields from there on keep what they had, and the result is false.
bool ApplicaValoriProgetto(const ValoriFile& valori, RecordProgetto& record);
/// The same from `ValoriProgetto` to `DatiProgetto`.
void ApplicaValoriProgetto();

// The commands.
void mnuNew_Click();
void mnuOpen_Click();
void mnuSave_Click();
void mnuSaveAs_Click();

/// The question before the program stops. False: the person wants to go on.
bool ConfermaChiusura();

}  // namespace lapvane
