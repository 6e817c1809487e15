#include "shell/Ricordi.h"

#include <exception>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"

namespace lapvane {

namespace {

constexpr std::size_t kByteMassimi = std::size_t{1} << 18;

}  // namespace

std::string LeggiRicordo(std::string_view nome, Lavoro lavoro) {
    try {
        const std::filesystem::path file = platform().AppPath() / nome;
        if (!FileEsiste(file)) return {};
        return LeggiFile(file, lavoro, kByteMassimi);
    } catch (const std::exception&) {
        return {};
    }
}

void SalvaRicordo(std::string_view nome, std::string_view testo, Lavoro lavoro) {
    try {
        ScriviFile(platform().AppPath() / nome, testo, lavoro);
    } catch (const ErroreRuntime&) {
        // As above.
    }
}

std::vector<RigaRicordo> RigheRicordo(std::string_view testo, std::string_view primaRiga) {
    std::vector<RigaRicordo> trovate;
    LettoreRighe righe(testo);
    if (righe.Prossima() != primaRiga) return trovate;
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        const std::size_t uguale = riga.find('=');
        if (uguale == std::string_view::npos) continue;
        trovate.emplace_back(riga.substr(0, uguale), DaUnaRiga(riga.substr(uguale + 1)));
    }
    return trovate;
}

std::string TestoRicordo(std::string_view primaRiga, const std::vector<RigaRicordo>& righe) {
    std::string testo(primaRiga);
    testo += "\n";
    for (const auto& [chiave, valore] : righe) testo += chiave + "=" + InUnaRiga(valore) + "\n";
    return testo;
}

}  // namespace lapvane
