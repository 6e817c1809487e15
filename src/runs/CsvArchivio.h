#pragma once

#include <string>

#include "runs/ElencoUscite.h"

namespace lapvane {

/// The list as shown, filtered and in its order, as the text of a CSV file in Windows-1252: a
/// heading, a line a run, no lines for groups. Times are mm:ss.cc with `decimale`, lengths h:mm:ss,
/// days yyyy-mm-dd. `campi` parts the fields and is not `decimale`.
std::string CsvArchivio(const std::vector<Uscita>& uscite, const ElencoUscite& elenco,
                        char decimale, char campi);

}  // namespace lapvane
