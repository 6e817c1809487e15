#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "instrument/Guasti.h"
#include "instrument/Memoria.h"
#include "instrument/Protocollo.h"
#include "instrument/Vivo.h"

namespace lapvane::strumento {

constexpr std::size_t kCaratteriIdentita = 10;
constexpr const char* kIdentitaNormale = "LVX-4 1.08";

/// What the instrument did with a request.
struct Risposta {
    std::int64_t Quando = 0;  ///< ms at which the first character leaves
    std::string Byte;         ///< empty: no reply
    const Comando* Tipo = nullptr;
    bool Guasta = false;  ///< a fault took hold
};

/// A tank that stands still and is filled by hand, in place of that of the session.
struct Serbatoio {
    double Litri = 0.0;
    bool Scende = false;  ///< the raw value falls as the tank fills
};

/// The text LITRES[:falling]. Raises `std::invalid_argument` with a text for people.
Serbatoio LeggiSerbatoio(std::string_view testo);

/// The simulated instrument: bytes of the link in, replies out. Time comes from outside, in ms of
/// any clock that does not go back.
class Strumento {
 public:
    /// The identity is cut or filled with blanks to its ten characters.
    explicit Strumento(std::string identita = kIdentitaNormale);

    /// One entry for each complete request, in order; a reply never overtakes the one before. No
    /// bytes: only time has passed.
    std::vector<Risposta> Ricevi(std::string_view byte, std::int64_t ms);

    const LettoreFrame& Lettore() const { return lettore_; }

    Memoria Dati;
    Guasti Difetti;
    /// Raw analogue readings that stand still, in place of those of the session.
    std::optional<std::array<std::int16_t, 8>> AnalogiciFissi;
    std::optional<Serbatoio> Benzina;

 private:
    ValoriVivi Vivi(std::int64_t ms) const;
    std::array<std::int16_t, 8> Analogici(std::int64_t ms) const;
    std::string Rispondi(const Richiesta& richiesta, std::int64_t ms);

    std::string identita_;
    LettoreFrame lettore_;
    std::optional<std::int64_t> inizio_;  // first moment heard of: the replay starts there
    std::int64_t ultima_ = 0;
};

}  // namespace lapvane::strumento
