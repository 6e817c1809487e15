#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "shell/Protetto.h"

namespace lapvane {

// What is not saved when a run-time error ends the program, the project and the downloaded log, is
// put aside in one file, and the next start offers it back. The file begins with "Lapvane rescue
// 1". A log that stands on the disk as it was downloaded (`DiarioScarico`) is not put aside once
// more: it is offered from there, whatever has ended the program.

constexpr std::string_view kFineSoccorso = ".rescue";    ///< of a file that is offered
constexpr std::string_view kFineRifiutato = ".rescued";  ///< of one that the person declined

/// Puts aside what is not saved, in the first place that takes it: the program's folder, the
/// person's documents, the machine's temporary files. For the one door (`ImpostaSoccorso`).
EsitoSoccorso MettiDaParte();

/// Offers back what was put aside and the downloads that were never converted, the newest first.
/// What is taken back counts as not saved, and its file stays until `ConcludiSoccorso` or the
/// conversion; one that is declined stays under another ending.
void OffriSoccorso();

/// Behind each save: the file that was taken back goes when nothing is unsaved any more.
void ConcludiSoccorso();

/// Before another project, or another download, takes the place of what is not saved: the file that
/// was taken back stays and is offered again at the next start.
void LasciaSoccorso(bool nonSalvato);

/// At the program's orderly end, when the person has been asked about the project: it goes unless
/// its log is not saved.
void FineSoccorso();

/// The text of such a file, made from the project and the download buffers of this moment;
/// `progetto` and `log` tell which of the two it is to hold.
std::string ScriviSoccorso(bool progetto, bool log);

/// What such a file holds, before it is taken back.
struct ContenutoSoccorso {
    bool Progetto = false;
    std::string NomeProgetto;  ///< name, or path where it has none
    std::int32_t Blocchi = 0;  ///< records of the log
};

/// Empty: no such file, one that is cut, or of another version.
std::optional<ContenutoSoccorso> GuardaSoccorso(std::string_view testo);

/// Puts it into the project and the buffers; only for a text that `GuardaSoccorso` accepted.
void RiprendiSoccorso(std::string_view testo);

}  // namespace lapvane
