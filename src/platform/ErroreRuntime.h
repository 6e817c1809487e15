#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace lapvane {

/// The classic run-time error numbers that the program can raise.
enum class NumeroErrore : int {
    Overflow = 6,
    Subscript = 9,
    Division = 11,
    TypeMismatch = 13,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIo = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    PathAccess = 75,
    PathNotFound = 76,
    PrinterError = 482,
};

/// The classic English text of an error number ("Subscript out of range", ...).
const char* TestoErrore(NumeroErrore numero);

/// A run-time error that nobody is meant to catch: it goes up to the one door, which shows it and
/// ends the program. `Cosa` says what the program was doing, `File` and `Riga` where (both may be
/// empty or 0).
class ErroreRuntime : public std::runtime_error {
 public:
    explicit ErroreRuntime(NumeroErrore numero, const std::string& cosa = {},
                           std::filesystem::path file = {}, std::int64_t riga = 0);

    NumeroErrore Numero() const { return numero_; }
    const std::string& Cosa() const { return cosa_; }
    const std::filesystem::path& File() const { return file_; }
    std::int64_t Riga() const { return riga_; }

 private:
    NumeroErrore numero_;
    std::string cosa_;
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
