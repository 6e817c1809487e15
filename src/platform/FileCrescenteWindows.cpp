// Files that grow, on Windows.

#include <windows.h>

#include "platform/FileCrescente.h"
#include "platform/FileSistema.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

HANDLE Maniglia(std::intptr_t valore) {
    return reinterpret_cast<HANDLE>(valore);
}

/// Who writes shares the file with readers alone: a second writer is refused.
HANDLE Apri(const fs::path& percorso, DWORD come) {
    return ::CreateFileW(sistema::Nativo(percorso).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                         come, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool Taglia(HANDLE file, std::uint64_t lungo) {
    LARGE_INTEGER posto{};
    posto.QuadPart = static_cast<LONGLONG>(lungo);
    return ::SetFilePointerEx(file, posto, nullptr, FILE_BEGIN) && ::SetEndOfFile(file);
}

}  // namespace

void FileCrescente::Crea(const fs::path& percorso, Lavoro cosa) {
    Chiudi();
    const HANDLE file = lapvane::Apri(percorso, CREATE_NEW);
    if (file == INVALID_HANDLE_VALUE) sistema::Fallisci(::GetLastError(), cosa, percorso);
    maniglia_ = reinterpret_cast<std::intptr_t>(file);
    lungo_ = 0;
    percorso_ = percorso;
    cosa_ = cosa;
}

void FileCrescente::Apri(const fs::path& percorso, std::uint64_t da, Lavoro cosa) {
    Chiudi();
    const HANDLE file = lapvane::Apri(percorso, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) sistema::Fallisci(::GetLastError(), cosa, percorso);
    if (!Taglia(file, da)) {
        const DWORD errore = ::GetLastError();
        ::CloseHandle(file);
        sistema::Fallisci(errore, cosa, percorso);
    }
    maniglia_ = reinterpret_cast<std::intptr_t>(file);
    lungo_ = da;
    percorso_ = percorso;
    cosa_ = cosa;
}

void FileCrescente::Aggiungi(std::string_view testo) {
    DWORD scritti = 0;
    const auto tutto = static_cast<DWORD>(testo.size());
    const bool fatto = ::WriteFile(Maniglia(maniglia_), testo.data(), tutto, &scritti, nullptr);
    if (!fatto || scritti != tutto) {
        const DWORD errore = fatto ? ERROR_DISK_FULL : ::GetLastError();
        Taglia(Maniglia(maniglia_), lungo_);
        sistema::Fallisci(errore, cosa_, percorso_);
    }
    lungo_ += tutto;
}

void FileCrescente::Fissa() {
    if (!::FlushFileBuffers(Maniglia(maniglia_))) {
        sistema::Fallisci(::GetLastError(), cosa_, percorso_);
    }
}

void FileCrescente::Chiudi() noexcept {
    if (Aperto()) ::CloseHandle(Maniglia(maniglia_));
    maniglia_ = kNessuna;
}

bool FileCrescente::InUso(const fs::path& percorso) {
    const HANDLE file = lapvane::Apri(percorso, OPEN_EXISTING);
    if (file != INVALID_HANDLE_VALUE) {
        ::CloseHandle(file);
        return false;
    }
    return ::GetLastError() == ERROR_SHARING_VIOLATION;
}

}  // namespace lapvane
