#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lapvane {

/// How far a download is, for who waits for it.
struct AndamentoScarico {
    std::int32_t Letti = 0;    ///< bytes of the memory that have come
    std::int32_t Totale = 0;   ///< bytes that are recorded
    std::optional<int> Resta;  ///< seconds; empty: not known
    int Scartate = 0;          ///< pages dropped by their checksum
    int Ripetuti = 0;          ///< questions that were asked again
};

/// What a download window writes: how much of how much, how long still (empty while it is not
/// known), what the line has spoiled.
std::string FraseQuanto(const AndamentoScarico& andamento);
std::string FraseResta(const AndamentoScarico& andamento);
std::string FraseDisturbi(const AndamentoScarico& andamento);

/// The pace of the pages on the line.
class PassoScarico {
 public:
    /// A page has come; `ms` of any clock.
    void Pagina(std::int64_t ms);
    /// What comes next is not measured against what came before.
    void Interrompi() { ultima_.reset(); }
    /// Seconds for so many bytes; empty until enough pages have come.
    std::optional<int> Secondi(std::int32_t byte) const;

 private:
    std::optional<std::int64_t> ultima_;
    double msPagina_ = 0.0;
    int misurate_ = 0;
};

}  // namespace lapvane
