#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "instrument/Protocollo.h"

namespace lapvane::strumento {

enum class TipoGuasto {
    Scarta,       ///< drop: no reply
    Taglia,       ///< cut: only the first `Valore` characters
    Ritarda,      ///< delay: `Valore` ms later
    Altera,       ///< corrupt: one bit of character `Valore` (from 1) turned over
    Muto,         ///< silent: from this frame on nothing is answered any more
    SommaErrata,  ///< badsum: wrong checksum of log page `Valore` (from 0)
    PaginaVuota,  ///< blank: log page `Valore` looks never written
    Coda,         ///< extra: `Valore` characters more behind the reply
    Rumore,       ///< noise: `Valore` characters of noise before the reply
    Doppia,       ///< twice: the reply comes twice
    Ordine,       ///< order: the reply carries the number of another command
};

/// A misbehaviour, for the frames that match: those of a command, from the `Dal`-th of them on, as
/// often as `Quanti` says.
struct Guasto {
    TipoGuasto Tipo = TipoGuasto::Scarta;
    std::int32_t Valore = 0;
    int Comando = 0;  ///< code, 0: any
    int Dal = 1;
    int Quanti = 0;  ///< 0: for good
};

/// The fault of a text: KIND[:VALUE][:COMMAND[:FIRST[:COUNT]]], see `AiutoGuasti`. Raises
/// `std::invalid_argument` with a text for people.
Guasto LeggiGuasto(std::string_view testo);

/// The lines of the program's help about faults.
const char* AiutoGuasti();

/// What became of a reply.
struct EsitoGuasti {
    std::string Byte;  ///< empty: no reply
    std::int32_t Ritardo = 0;
    bool Colpito = false;  ///< at least one fault took hold
};

/// The faults in force, in the order in which they were added; several may hit one reply.
class Guasti {
 public:
    void Aggiungi(const Guasto& guasto) { guasti_.push_back({guasto}); }
    /// The instrument is well again, also if it had fallen silent.
    void Togli();

    EsitoGuasti Applica(const Richiesta& richiesta, std::string risposta);

 private:
    struct InForza {
        Guasto Che;
        int Visti = 0;  // matching frames so far
    };
    static bool Riguarda(const Guasto& guasto, const Richiesta& richiesta);

    std::vector<InForza> guasti_;
    bool muto_ = false;
};

}  // namespace lapvane::strumento
