#pragma once

#include <QPoint>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <optional>
#include <vector>

#include "shell/CsvTabella.h"
#include "shell/LoadStrings.h"

class QString;
class QWidget;

namespace lapvane {

/// An entry of a menu that opens under the mouse.
struct VoceMenu {
    Voce Testo;
    std::function<void()> Azione;
};

/// Shows a menu at a place of the screen; what is chosen runs once the menu has closed.
void MostraMenu(QWidget* padre, const QPoint& dove, const std::vector<VoceMenu>& voci);

/// Puts a text on the clipboard.
void CopiaTesto(const QString& testo);
/// Rows and cells with tabs between them, as spreadsheets take them.
QString ConTabulazioni(const RigheTabella& righe);

/// Asks under which name to save; another file of that name goes only with leave. Empty: no.
/// `proposto` is the folder and the name to start from; a name that has none of the endings
/// `fini` gets the first one.
std::optional<std::filesystem::path> ScegliFile(Voce titolo, const char* filtro,
                                                const std::filesystem::path& proposto,
                                                std::initializer_list<const char*> fini);
/// Writes what a person asked for; what hinders it is told in a box and ends nothing.
void ScriviOAvvisa(const std::function<void()>& scrivi);
/// The same for paper; `titolo` names what is printed.
void StampaOAvvisa(Voce titolo, const std::function<void()>& stampa);
/// Both of them for a table as CSV.
void SalvaTabella(const RigheTabella& righe, const std::filesystem::path& proposto);

/// The name that is proposed for something of a log: beside it, its name and `fine`.
std::filesystem::path NomeAccanto(const std::filesystem::path& log, const char* fine);

}  // namespace lapvane
