#include "platform/ErroreRuntime.h"

#include <utility>

namespace lapvane {

const Parole& ParoleDi(NumeroErrore numero) {
    for (const RigaErrore& riga : kErrori) {
        if (riga.Numero == numero) return riga.Testo;
    }
    static constexpr Parole kAltro = {"Application-defined or object-defined error",
                                      "Application-defined or object-defined error"};
    return kAltro;
}

const Parole& ParoleDi(Lavoro lavoro) {
    return kLavori[static_cast<std::size_t>(lavoro)];
}

ErroreRuntime::ErroreRuntime(NumeroErrore numero, Lavoro cosa, std::filesystem::path file,
                             std::int64_t riga)
    : std::runtime_error(ParoleDi(numero).Inglese),
      numero_(numero),
      cosa_(cosa),
      file_(std::move(file)),
      riga_(riga) {}

}  // namespace lapvane
