#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sensors/CanaliSensore.h"
#include "sensors/TabellaPunti.h"

namespace lapvane {

/// Position in `kTipiSensore` of the type that a curve channel (0 to 8) takes.
std::size_t TipoDelCanale(int canale);

/// Names of the library sensors of a type, in the library's order.
std::vector<std::string> NomiSensori(std::string_view tipo);

/// The first sensor of that name, of any type; null if there is none. Kept: a curve that is sent
/// comes from the last sensor of its name.
const CSensore* CercaSensore(std::string_view nome);

/// Saves the table as a sensor file of that name and loads the library anew. Asks before a file is
/// replaced (one whose name differs by case alone as well) and says why nothing was saved; `titolo`
/// is that of its messages. `nome` is UTF-8. False: nothing was saved, the library is as it was.
bool SalvaSensore(std::string_view tipo, const std::string& nome, const TabellaPunti& tabella,
                  const std::string& titolo);

}  // namespace lapvane
