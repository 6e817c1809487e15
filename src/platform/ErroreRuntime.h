#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>

#include "platform/TabelleErrore.h"

namespace lapvane {

/// The words of an error number ("Subscript out of range", ...).
const Parole& ParoleDi(NumeroErrore numero);
/// The words of what the program was doing.
const Parole& ParoleDi(Lavoro lavoro);

/// A run-time error that nobody is meant to catch: it goes up to the one door, which shows it and
/// ends the program. `Cosa` says what the program was doing, `File` and `Riga` where (both may be
/// empty or 0), `what()` the number's words in English.
class ErroreRuntime : public std::runtime_error {
 public:
    explicit ErroreRuntime(NumeroErrore numero, Lavoro cosa, std::filesystem::path file = {},
                           std::int64_t riga = 0);

    NumeroErrore Numero() const { return numero_; }
    Lavoro Cosa() const { return cosa_; }
    const std::filesystem::path& File() const { return file_; }
    std::int64_t Riga() const { return riga_; }

 private:
    NumeroErrore numero_;
    Lavoro cosa_;
    std::filesystem::path file_;
    std::int64_t riga_;
};

/// Raised by the serial control; the link layer turns it into its own messages.
class ErroreControllo : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// What `Platform::End` raises where the process itself must live on (tests). It passes every
/// routine on its way out and is caught only where an event or a test began.
struct FineProgramma {
    int Codice = 0;
};

}  // namespace lapvane
