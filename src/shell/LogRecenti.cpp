#include "shell/LogRecenti.h"

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "lapvane-logs 1";
constexpr std::string_view kChiave = "log=";
constexpr std::size_t kByteMassimi = 1 << 18;

}  // namespace

std::filesystem::path FileLogRecenti() {
    return platform().AppPath() / "RecentLogs.lapvane";
}

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
    std::erase(elenco, nuovo);
    elenco.insert(elenco.begin(), nuovo);
    if (elenco.size() > kLogRecenti) elenco.resize(kLogRecenti);
}

ElencoLog CaricaLogRecenti() {
    try {
        const auto file = FileLogRecenti();
        if (!FileEsiste(file)) return {};
        return LeggiLogRecenti(LeggiFile(file, Lavoro::LeggereRecenti, kByteMassimi));
    } catch (const std::exception&) {
        return {};
    }
}

void SalvaLogRecenti(const ElencoLog& elenco) {
    try {
        ScriviFile(FileLogRecenti(), ScriviLogRecenti(elenco), Lavoro::ScrivereRecenti);
    } catch (const ErroreRuntime&) {
        // A list of files is not worth a message.
    }
}

}  // namespace lapvane
