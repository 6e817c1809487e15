// Reading and writing whole files on Windows.

#include <windows.h>

#include <algorithm>
#include <system_error>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Fallisci(DWORD errore, std::string_view cosa, const fs::path& percorso) {
    NumeroErrore numero = NumeroErrore::DeviceIo;
    switch (errore) {
        case ERROR_FILE_NOT_FOUND:
            numero = NumeroErrore::FileNotFound;
            break;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_NOT_READY:
        case ERROR_INVALID_DRIVE:
            numero = NumeroErrore::PathNotFound;
            break;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
        case ERROR_INVALID_NAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_DIRECTORY:
            numero = NumeroErrore::PathAccess;
            break;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case ERROR_FILE_TOO_LARGE:
            numero = NumeroErrore::DiskFull;
            break;
        default:
            break;
    }
    throw ErroreRuntime(numero, std::string(cosa), percorso);
}

/// A file handle that closes itself.
class Maniglia {
 public:
    explicit Maniglia(HANDLE h) : h_(h) {}
    ~Maniglia() { Chiudi(); }
    Maniglia(const Maniglia&) = delete;
    Maniglia& operator=(const Maniglia&) = delete;
    bool Valida() const { return h_ != INVALID_HANDLE_VALUE; }
    HANDLE Valore() const { return h_; }
    void Chiudi() {
        if (Valida()) ::CloseHandle(h_);
        h_ = INVALID_HANDLE_VALUE;
    }

 private:
    HANDLE h_;
};

// One call moves at most this many bytes: sizes of the interface are 32 bits wide.
constexpr std::size_t kBoccone = std::size_t{1} << 28;

/// 0, or the error number. What was written is on the disk when it returns.
DWORD ScriviTutto(HANDLE file, std::string_view testo) {
    while (!testo.empty()) {
        DWORD scritti = 0;
        const auto boccone = static_cast<DWORD>(std::min(testo.size(), kBoccone));
        if (!::WriteFile(file, testo.data(), boccone, &scritti, nullptr)) return ::GetLastError();
        testo.remove_prefix(scritti);
    }
    return ::FlushFileBuffers(file) ? 0 : ::GetLastError();
}

/// Renames over an existing file; 0 or the error number. Another program that looks at every new
/// file (a virus scanner, an indexer) may hold it for a moment: a refused rename is tried again.
DWORD Sostituisci(const fs::path& nuovo, const fs::path& vecchio) {
    constexpr int kProve = 10;
    constexpr DWORD kPausaMs = 20;
    for (int prova = 1;; ++prova) {
        if (::MoveFileExW(nuovo.c_str(), vecchio.c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            return 0;
        }
        const DWORD errore = ::GetLastError();
        const bool passera = errore == ERROR_SHARING_VIOLATION || errore == ERROR_ACCESS_DENIED;
        if (!passera || prova == kProve) return errore;
        ::Sleep(kPausaMs);
    }
}

/// A name in the same folder that nothing has yet, opened for writing.
HANDLE ApriProvvisorio(const fs::path& cartella, fs::path& nome) {
    for (DWORD n = ::GetTickCount();; ++n) {
        nome = cartella / (std::string(kTemporaneo) + std::to_string(::GetCurrentProcessId()) +
                           "-" + std::to_string(n));
        const HANDLE file = ::CreateFileW(nome.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_FILE_EXISTS) return file;
    }
}

}  // namespace

std::string LeggiFile(const fs::path& percorso, std::string_view cosa, std::size_t massimo) {
    std::error_code ignorato;
    if (fs::is_directory(percorso, ignorato)) Fallisci(ERROR_DIRECTORY, cosa, percorso);
    const Maniglia file(::CreateFileW(percorso.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.Valida()) Fallisci(::GetLastError(), cosa, percorso);
    // The name of a device ("CON", "COM3") opens like a file and never ends.
    if (::GetFileType(file.Valore()) != FILE_TYPE_DISK) {
        Fallisci(ERROR_ACCESS_DENIED, cosa, percorso);
    }
    LARGE_INTEGER grandezza{};
    if (!::GetFileSizeEx(file.Valore(), &grandezza)) Fallisci(::GetLastError(), cosa, percorso);
    std::string testo;
    testo.resize(std::min(static_cast<std::size_t>(grandezza.QuadPart), massimo));
    std::size_t letti = 0;
    while (letti < testo.size()) {
        DWORD n = 0;
        const auto boccone = static_cast<DWORD>(std::min(testo.size() - letti, kBoccone));
        if (!::ReadFile(file.Valore(), testo.data() + letti, boccone, &n, nullptr)) {
            Fallisci(::GetLastError(), cosa, percorso);
        }
        if (n == 0) break;
        letti += n;
    }
    testo.resize(letti);
    return testo;
}

void ScriviFile(const fs::path& percorso, std::string_view testo, std::string_view cosa) {
    // A link stays a link: what it points at is replaced.
    std::error_code ignorato;
    const fs::path vero =
        fs::is_symlink(percorso, ignorato) ? fs::weakly_canonical(percorso, ignorato) : percorso;
    if (fs::is_directory(vero, ignorato)) Fallisci(ERROR_DIRECTORY, cosa, percorso);
    // A file that forbids writing is not replaced behind its owner's back.
    const DWORD attributi = ::GetFileAttributesW(vero.c_str());
    if (attributi != INVALID_FILE_ATTRIBUTES && (attributi & FILE_ATTRIBUTE_READONLY) != 0) {
        Fallisci(ERROR_ACCESS_DENIED, cosa, percorso);
    }
    fs::path nome;
    Maniglia file(ApriProvvisorio(vero.parent_path(), nome));
    if (!file.Valida()) Fallisci(::GetLastError(), cosa, percorso);
    DWORD errore = ScriviTutto(file.Valore(), testo);
    file.Chiudi();
    if (errore == 0) errore = Sostituisci(nome, vero);
    if (errore != 0) {
        ::DeleteFileW(nome.c_str());
        Fallisci(errore, cosa, percorso);
    }
    TogliAbbandonati(vero.parent_path());
}

}  // namespace lapvane
