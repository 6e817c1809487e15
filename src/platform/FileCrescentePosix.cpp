// Files that grow, where the system is a POSIX one.

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/FileCrescente.h"
#include "platform/FileSistema.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

/// False: somebody has it. Where the medium knows no locks nobody can tell.
bool Riserva(int d, int come) {
    return ::flock(d, come | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace

void FileCrescente::Crea(const fs::path& percorso, Lavoro cosa) {
    Chiudi();
    const int d = ::open(percorso.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (d < 0) sistema::Fallisci(static_cast<sistema::Codice>(errno), cosa, percorso);
    Riserva(d, LOCK_EX);
    // Its name is on the disk as well, and that of a folder that was made for it.
    sistema::Fissa(percorso.parent_path());
    sistema::Fissa(percorso.parent_path().parent_path());
    maniglia_ = d;
    lungo_ = 0;
    percorso_ = percorso;
    cosa_ = cosa;
}

void FileCrescente::Apri(const fs::path& percorso, std::uint64_t da, Lavoro cosa) {
    Chiudi();
    const int d = ::open(percorso.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (d < 0) sistema::Fallisci(static_cast<sistema::Codice>(errno), cosa, percorso);
    int errore = Riserva(d, LOCK_EX) ? 0 : EACCES;
    const auto lungo = static_cast<off_t>(da);
    if (errore == 0 && (::ftruncate(d, lungo) != 0 || ::lseek(d, lungo, SEEK_SET) != lungo)) {
        errore = errno;
    }
    if (errore != 0) {
        ::close(d);
        sistema::Fallisci(static_cast<sistema::Codice>(errore), cosa, percorso);
    }
    maniglia_ = d;
    lungo_ = da;
    percorso_ = percorso;
    cosa_ = cosa;
}

void FileCrescente::Aggiungi(std::string_view testo) {
    const int d = static_cast<int>(maniglia_);
    const std::size_t tutto = testo.size();
    while (!testo.empty()) {
        const ssize_t scritti = ::write(d, testo.data(), testo.size());
        if (scritti < 0 && errno == EINTR) continue;
        if (scritti < 0) {
            const int errore = errno;
            const auto lungo = static_cast<off_t>(lungo_);
            static_cast<void>(::ftruncate(d, lungo) == 0 && ::lseek(d, lungo, SEEK_SET) == lungo);
            sistema::Fallisci(static_cast<sistema::Codice>(errore), cosa_, percorso_);
        }
        testo.remove_prefix(static_cast<std::size_t>(scritti));
    }
    lungo_ += tutto;
}

void FileCrescente::Fissa() {
    if (::fsync(static_cast<int>(maniglia_)) != 0) {
        sistema::Fallisci(static_cast<sistema::Codice>(errno), cosa_, percorso_);
    }
}

void FileCrescente::Chiudi() noexcept {
    if (Aperto()) ::close(static_cast<int>(maniglia_));
    maniglia_ = kNessuna;
}

bool FileCrescente::InUso(const fs::path& percorso) {
    const int d = ::open(percorso.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (d < 0) return false;
    const bool libero = Riserva(d, LOCK_SH);
    ::close(d);
    return !libero;
}

}  // namespace lapvane
