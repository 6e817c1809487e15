#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "instrument/Memoria.h"

namespace lapvane::strumento {

enum class Azione {
    Saluto,
    Identita,
    Analogici,
    BloccoLog,
    BloccoGiri,
    Vivo,
    ScriviRecord,
    LeggiRecord,
    ScriviCurva,
    LeggiCurva,
};

/// A command of the link. Lengths are those of whole frames in characters; the data of a request
/// are what stands between the command byte and the two digits of the checksum.
struct Comando {
    int Codice = 0;
    std::size_t Richiesta = 0;
    std::size_t Risposta = 0;
    Azione Cosa = Azione::Saluto;
    Record Quale = Record::Numero;  ///< of `ScriviRecord` and `LeggiRecord`
    const char* Nome = "";          ///< for the program's messages
};

/// The command of a code, or nullptr.
const Comando* CercaComando(int codice);

/// A request whose checksum is right.
struct Richiesta {
    const Comando* Tipo = nullptr;
    std::string Frame;

    std::string_view Dati() const { return std::string_view(Frame).substr(2, Frame.size() - 4); }
    /// The address of `BloccoLog` and `BloccoGiri`.
    std::uint32_t Indirizzo() const;
};

/// Finds frames in what comes over the line. A frame begins with "H" and the code of a command and
/// has that command's length; everything else is rubbish. A frame with a wrong checksum is rubbish
/// as well: the search goes on behind its first character.
class LettoreFrame {
 public:
    /// A frame that is not complete when the line has been quiet for so many ms will never be.
    static constexpr std::int64_t kQuiete = 150;

    /// The requests that are complete at `ms` with these bytes (none: time has passed).
    std::vector<Richiesta> Ricevi(std::string_view byte, std::int64_t ms);

    /// Whether the beginning of a frame waits for the rest.
    bool InAttesa() const { return !attesa_.empty(); }
    /// Frames of the right length whose checksum was wrong, and characters thrown away.
    int Errati() const { return errati_; }
    std::size_t Scartati() const { return scartati_; }

 private:
    void Scarta(std::size_t quanti);
    void Estrai(bool quiete, std::vector<Richiesta>& trovate);

    std::string attesa_;
    std::int64_t ultimo_ = 0;
    int errati_ = 0;
    std::size_t scartati_ = 0;
};

}  // namespace lapvane::strumento
