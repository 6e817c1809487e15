// Reading and writing whole files on Windows.

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileSistema.h"
#include "platform/FileTesto.h"

namespace lapvane::sistema {

namespace fs = std::filesystem;

namespace {

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
        const HANDLE h = Lascia();
        if (h != INVALID_HANDLE_VALUE) ::CloseHandle(h);
    }
    HANDLE Lascia() { return std::exchange(h_, INVALID_HANDLE_VALUE); }

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

// Whoever has the file open already may go on.
constexpr DWORD kTutti = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Longer ones, and folders that have no room for a name of the oldest kind, want another form.
constexpr std::size_t kLungo = 240;

DWORD Attributi(const fs::path& percorso) {
    return ::GetFileAttributesW(Nativo(percorso).c_str());
}

/// A name in the same folder that nothing has yet, opened for writing.
HANDLE ApriProvvisorio(const fs::path& cartella, fs::path& nome) {
    for (DWORD n = ::GetTickCount();; ++n) {
        nome = cartella / (std::string(kTemporaneo) + std::to_string(::GetCurrentProcessId()) +
                           "-" + std::to_string(n));
        const HANDLE file = ::CreateFileW(Nativo(nome).c_str(), GENERIC_WRITE, 0, nullptr,
                                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_FILE_EXISTS) return file;
    }
}

}  // namespace

std::wstring Nativo(const fs::path& percorso) {
    const std::wstring& nome = percorso.native();
    const DWORD posti = ::GetFullPathNameW(nome.c_str(), 0, nullptr, nullptr);
    if (posti < kLungo || nome.starts_with(L"\\\\?\\")) return nome;
    std::wstring intero(posti, L'\0');
    intero.resize(::GetFullPathNameW(nome.c_str(), posti, intero.data(), nullptr));
    if (intero.starts_with(L"\\\\")) return L"\\\\?\\UNC" + intero.substr(1);
    return L"\\\\?\\" + intero;
}

void Fallisci(Codice codice, Lavoro cosa, const fs::path& percorso) {
    NumeroErrore numero = NumeroErrore::DeviceIo;
    switch (codice) {
        case ERROR_FILE_NOT_FOUND:
            numero = NumeroErrore::FileNotFound;
            break;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_NOT_READY:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NET_NAME:
            numero = NumeroErrore::PathNotFound;
            break;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_DIRECTORY:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_NETWORK_ACCESS_DENIED:
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
    throw ErroreRuntime(numero, cosa, percorso);
}

bool Negato(Codice codice) {
    return codice == ERROR_ACCESS_DENIED || codice == ERROR_WRITE_PROTECT;
}

Codice Permesso(const fs::path& file) {
    const DWORD attributi = Attributi(file);
    if (attributi == INVALID_FILE_ATTRIBUTES) return 0;
    if ((attributi & FILE_ATTRIBUTE_DIRECTORY) != 0) return ERROR_DIRECTORY;
    return (attributi & FILE_ATTRIBUTE_READONLY) != 0 ? ERROR_ACCESS_DENIED : 0;
}

bool CE(const fs::path& percorso) {
    return Attributi(percorso) != INVALID_FILE_ATTRIBUTES;
}

std::uintmax_t Grandezza(const fs::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA dati{};
    if (!::GetFileAttributesExW(Nativo(file).c_str(), GetFileExInfoStandard, &dati)) return 0;
    return (std::uintmax_t{dati.nFileSizeHigh} << 32) | dati.nFileSizeLow;
}

bool HaAltriNomi(const fs::path& file) {
    const Maniglia m(::CreateFileW(Nativo(file).c_str(), 0, kTutti, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION dati{};
    return m.Valida() && ::GetFileInformationByHandle(m.Valore(), &dati) && dati.nNumberOfLinks > 1;
}

void Togli(const fs::path& file) {
    ::DeleteFileW(Nativo(file).c_str());
}

Codice Provvisorio(const fs::path& cartella, const fs::path&, std::string_view testo,
                   fs::path& nome) {
    Maniglia file(ApriProvvisorio(cartella, nome));
    if (!file.Valida()) return ::GetLastError();
    const DWORD errore = ScriviTutto(file.Valore(), testo);
    file.Chiudi();
    if (errore != 0) ::DeleteFileW(Nativo(nome).c_str());
    return errore;
}

// Another program that looks at every new file (a virus scanner, an indexer) may hold it for a
// moment: a refused rename is tried again.
Codice Rinomina(const fs::path& da, const fs::path& a) {
    constexpr int kProve = 10;
    constexpr DWORD kPausaMs = 20;
    for (int prova = 1;; ++prova) {
        if (::MoveFileExW(Nativo(da).c_str(), Nativo(a).c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            return 0;
        }
        const DWORD errore = ::GetLastError();
        const bool passera = errore == ERROR_SHARING_VIOLATION || errore == ERROR_ACCESS_DENIED;
        if (!passera || prova == kProve) return errore;
        ::Sleep(kPausaMs);
    }
}

Codice SulPosto(const fs::path& file, std::string_view testo, bool intero) {
    const Maniglia m(::CreateFileW(Nativo(file).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!m.Valida()) return ::GetLastError();
    LARGE_INTEGER vecchia{};
    if (!::GetFileSizeEx(m.Valore(), &vecchia)) return ::GetLastError();
    LARGE_INTEGER nuova{};
    nuova.QuadPart = static_cast<LONGLONG>(testo.size());
    const LARGE_INTEGER inizio{};
    if (nuova.QuadPart > vecchia.QuadPart) {
        if (!::SetFilePointerEx(m.Valore(), nuova, nullptr, FILE_BEGIN) ||
            !::SetEndOfFile(m.Valore()) ||
            !::SetFilePointerEx(m.Valore(), inizio, nullptr, FILE_BEGIN)) {
            return ::GetLastError();
        }
    }
    if (const DWORD errore = ScriviTutto(m.Valore(), testo); errore != 0) return errore;
    if (intero && nuova.QuadPart < vecchia.QuadPart &&
        (!::SetEndOfFile(m.Valore()) || !::FlushFileBuffers(m.Valore()))) {
        return ::GetLastError();
    }
    return 0;
}

void Fissa(const fs::path&) {}  // renames are written through

FileAperto::FileAperto(const fs::path& percorso, Lavoro cosa) : percorso_(percorso), cosa_(cosa) {
    if (GenereDi(percorso) == Genere::Cartella) Fallisci(ERROR_DIRECTORY, cosa, percorso);
    Maniglia file(::CreateFileW(Nativo(percorso).c_str(), GENERIC_READ, kTutti, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.Valida()) Fallisci(::GetLastError(), cosa, percorso);
    // The name of a device ("CON", "COM3") opens like a file and never ends.
    if (::GetFileType(file.Valore()) != FILE_TYPE_DISK) {
        Fallisci(ERROR_ACCESS_DENIED, cosa, percorso);
    }
    LARGE_INTEGER grandezza{};
    if (!::GetFileSizeEx(file.Valore(), &grandezza)) Fallisci(::GetLastError(), cosa, percorso);
    byte_ = static_cast<std::uint64_t>(grandezza.QuadPart);
    file_ = reinterpret_cast<std::intptr_t>(file.Lascia());
}

FileAperto::~FileAperto() {
    Maniglia(reinterpret_cast<HANDLE>(file_)).Chiudi();
}

std::size_t FileAperto::Leggi(std::uint64_t da, std::span<char> dove) const {
    std::size_t letti = 0;
    while (letti < dove.size()) {
        OVERLAPPED posto{};
        posto.Offset = static_cast<DWORD>(da + letti);
        posto.OffsetHigh = static_cast<DWORD>((da + letti) >> 32);
        DWORD n = 0;
        const auto boccone = static_cast<DWORD>(std::min(dove.size() - letti, kBoccone));
        if (!::ReadFile(reinterpret_cast<HANDLE>(file_), dove.data() + letti, boccone, &n,
                        &posto) &&
            ::GetLastError() != ERROR_HANDLE_EOF) {
            Fallisci(::GetLastError(), cosa_, percorso_);
        }
        if (n == 0) break;
        letti += n;
    }
    return letti;
}

}  // namespace lapvane::sistema

namespace lapvane {

bool FileProprio(const std::filesystem::path& percorso) {
    // The folders of a person are that person's there.
    return GenereDi(percorso) == Genere::File;
}

}  // namespace lapvane
