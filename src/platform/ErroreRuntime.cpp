#include "platform/ErroreRuntime.h"

#include <utility>

namespace lapvane {

const char* TestoErrore(NumeroErrore numero) {
    switch (numero) {
        case NumeroErrore::Overflow:
            return "Overflow";
        case NumeroErrore::Subscript:
            return "Subscript out of range";
        case NumeroErrore::Division:
            return "Division by zero";
        case NumeroErrore::TypeMismatch:
            return "Type mismatch";
        case NumeroErrore::FileNotFound:
            return "File not found";
        case NumeroErrore::FileAlreadyOpen:
            return "File already open";
        case NumeroErrore::DeviceIo:
            return "Device I/O error";
        case NumeroErrore::DiskFull:
            return "Disk full";
        case NumeroErrore::InputPastEnd:
            return "Input past end of file";
        case NumeroErrore::PathAccess:
            return "Path/File access error";
        case NumeroErrore::PathNotFound:
            return "Path not found";
        case NumeroErrore::PrinterError:
            return "Printer error";
    }
    return "Application-defined or object-defined error";
}

ErroreRuntime::ErroreRuntime(NumeroErrore numero, const std::string& cosa,
                             std::filesystem::path file, std::int64_t riga)
    : std::runtime_error(TestoErrore(numero)),
      numero_(numero),
      cosa_(cosa),
      file_(std::move(file)),
      riga_(riga) {}

}  // namespace lapvane
