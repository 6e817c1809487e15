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

}  // namespace lapvane
