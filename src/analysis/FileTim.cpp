#include "analysis/FileTim.h"

#include "platform/FileTesto.h"

namespace lapvane {

FileTim LeggiFileTim(std::string_view testo) {
    FileTim file;
    LettoreRighe righe(testo);
    file.PrimaRiga = righe.Prossima();
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        if (++file.Linee >= kGiriMassimi) {
            file.TroppiGiri = file.TroppiGiri || !riga.empty();
            continue;
        }
        const std::size_t virgola = riga.find(',');
        if (virgola == std::string_view::npos) {
            file.Righe.push_back({std::string(riga), "1"});
            continue;
        }
        std::string_view sessione = riga.substr(virgola + 1);
        sessione.remove_prefix(sessione.empty() ? 0 : 1);
        file.Righe.push_back({std::string(riga.substr(0, virgola)), std::string(sessione)});
    }
    return file;
}

}  // namespace lapvane
