#include "shell/LogRecenti.h"

#include "platform/Cartelle.h"
#include "platform/FileTesto.h"
#include "shell/Ricordi.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "lapvane-logs 1";
constexpr std::string_view kChiave = "log=";
constexpr std::string_view kFile = "RecentLogs.lapvane";

}  // namespace

ElencoLog LeggiLogRecenti(std::string_view testo) {
    ElencoLog elenco;
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRiga) return {};
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        if (!riga.starts_with(kChiave) || riga.size() == kChiave.size()) return {};
        const std::string file = DaUnaRiga(riga.substr(kChiave.size()));
        if (elenco.size() < kLogRecenti) {
            elenco.emplace_back(std::u8string(file.begin(), file.end()));
        }
    }
    return elenco;
}

std::string ScriviLogRecenti(const ElencoLog& elenco) {
    std::string testo(kPrimaRiga);
    testo += "\n";
    for (const std::filesystem::path& log : elenco) {
        const std::u8string file = log.u8string();
        testo += std::string(kChiave) + InUnaRiga(std::string(file.begin(), file.end())) + "\n";
    }
    return testo;
}

void MettiInCima(ElencoLog& elenco, const std::filesystem::path& file) {
    const std::filesystem::path nuovo = file;  // `file` may be one of the list
    std::erase_if(elenco, [&nuovo](const auto& uno) { return StessoPercorso(uno, nuovo); });
    elenco.insert(elenco.begin(), nuovo);
    if (elenco.size() > kLogRecenti) elenco.resize(kLogRecenti);
}

ElencoLog CaricaLogRecenti() {
    return LeggiLogRecenti(LeggiRicordo(kFile, Lavoro::LeggereRecenti));
}

void SalvaLogRecenti(const ElencoLog& elenco) {
    SalvaRicordo(kFile, ScriviLogRecenti(elenco), Lavoro::ScrivereRecenti);
}

}  // namespace lapvane
