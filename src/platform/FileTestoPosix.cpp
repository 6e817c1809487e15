// Reading and writing whole files where the system is a POSIX one.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/ErroreRuntime.h"
#include "platform/FileSistema.h"
#include "platform/FileTesto.h"

namespace lapvane::sistema {

namespace fs = std::filesystem;

namespace {

/// A file descriptor that closes itself.
class Descrittore {
 public:
    explicit Descrittore(int d) : d_(d) {}
    ~Descrittore() {
        if (d_ >= 0) ::close(d_);
    }
    Descrittore(const Descrittore&) = delete;
    Descrittore& operator=(const Descrittore&) = delete;
    int Valore() const { return d_; }
    int Chiudi() { return ::close(Lascia()); }
    int Lascia() { return std::exchange(d_, -1); }

 private:
    int d_;
};

constexpr std::size_t kPosti = 6;  // of a temporary name that the system fills

Codice Ultimo() {
    return static_cast<Codice>(errno);
}

/// 0, or the error number. What was written is on the disk when it returns.
Codice ScriviTutto(int d, std::string_view testo) {
    while (!testo.empty()) {
        const ssize_t scritti = ::write(d, testo.data(), testo.size());
        if (scritti < 0) {
            if (errno == EINTR) continue;
            return Ultimo();
        }
        testo.remove_prefix(static_cast<std::size_t>(scritti));
    }
    return ::fsync(d) == 0 ? 0 : Ultimo();
}

}  // namespace

void Fallisci(Codice codice, Lavoro cosa, const fs::path& percorso) {
    NumeroErrore numero = NumeroErrore::DeviceIo;
    switch (static_cast<int>(codice)) {
        case ENOENT: {
            std::error_code ignorato;
            const fs::path cartella = percorso.parent_path();
            numero = cartella.empty() || fs::is_directory(cartella, ignorato)
                         ? NumeroErrore::FileNotFound
                         : NumeroErrore::PathNotFound;
            break;
        }
        case ENOTDIR:
            numero = NumeroErrore::PathNotFound;
            break;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ETXTBSY:
        case ENAMETOOLONG:
            numero = NumeroErrore::PathAccess;
            break;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            numero = NumeroErrore::DiskFull;
            break;
        default:
            break;
    }
    throw ErroreRuntime(numero, cosa, percorso);
}

bool Negato(Codice codice) {
    const int numero = static_cast<int>(codice);
    return numero == EACCES || numero == EPERM || numero == EROFS;
}

Codice Permesso(const fs::path& file) {
    std::error_code ignorato;
    if (fs::is_directory(file, ignorato)) return EISDIR;
    return ::access(file.c_str(), W_OK) == 0 ? 0 : Ultimo();
}

bool CE(const fs::path& percorso) {
    std::error_code ignorato;
    return fs::exists(fs::symlink_status(percorso, ignorato));
}

std::uintmax_t Grandezza(const fs::path& file) {
    std::error_code errore;
    const std::uintmax_t byte = fs::file_size(file, errore);
    return errore ? 0 : byte;
}

bool HaAltriNomi(const fs::path& file) {
    std::error_code errore;
    return fs::hard_link_count(file, errore) > 1 && !errore;
}

void Togli(const fs::path& file) {
    std::error_code ignorato;
    fs::remove(file, ignorato);
}

Codice Provvisorio(const fs::path& cartella, const fs::path& modello, std::string_view testo,
                   fs::path& nome) {
    std::string scelto = (cartella / kTemporaneo).native() + std::string(kPosti, 'X');
    Descrittore file(::mkostemp(scelto.data(), O_CLOEXEC));
    if (file.Valore() < 0) return Ultimo();
    struct stat vecchio {};
    const bool cera = ::stat(modello.c_str(), &vecchio) == 0;
    const mode_t maschera = ::umask(0);
    ::umask(maschera);
    static_cast<void>(::fchmod(file.Valore(), cera ? vecchio.st_mode & 07777u : 0666u & ~maschera));
    Codice errore = ScriviTutto(file.Valore(), testo);
    if (file.Chiudi() != 0 && errore == 0) errore = Ultimo();
    if (errore != 0) ::unlink(scelto.c_str());
    nome = scelto;
    return errore;
}

Codice Rinomina(const fs::path& da, const fs::path& a) {
    return ::rename(da.c_str(), a.c_str()) == 0 ? 0 : Ultimo();
}

Codice SulPosto(const fs::path& file, std::string_view testo, bool intero) {
    Descrittore d(::open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    if (d.Valore() < 0) return Ultimo();
    struct stat stato {};
    if (::fstat(d.Valore(), &stato) != 0) return Ultimo();
    const auto lunghezza = static_cast<off_t>(testo.size());
    if (lunghezza > stato.st_size) {
        const int stretto = ::posix_fallocate(d.Valore(), 0, lunghezza);
        if (stretto != 0 && stretto != EINVAL && stretto != EOPNOTSUPP) {
            static_cast<void>(::ftruncate(d.Valore(), stato.st_size) == 0);
            return static_cast<Codice>(stretto);
        }
    }
    if (const Codice errore = ScriviTutto(d.Valore(), testo); errore != 0) return errore;
    if (intero && lunghezza < stato.st_size &&
        (::ftruncate(d.Valore(), lunghezza) != 0 || ::fsync(d.Valore()) != 0)) {
        return Ultimo();
    }
    return d.Chiudi() == 0 ? 0 : Ultimo();
}

void Fissa(const fs::path& cartella) {
    const Descrittore d(
        ::open(cartella.empty() ? "." : cartella.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
    if (d.Valore() >= 0) static_cast<void>(::fsync(d.Valore()));
}

FileAperto::FileAperto(const fs::path& percorso, Lavoro cosa) : percorso_(percorso), cosa_(cosa) {
    Descrittore file(::open(percorso.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.Valore() < 0) Fallisci(Ultimo(), cosa, percorso);
    struct stat stato {};
    if (::fstat(file.Valore(), &stato) != 0) Fallisci(Ultimo(), cosa, percorso);
    if (S_ISDIR(stato.st_mode)) Fallisci(EISDIR, cosa, percorso);
    if (!S_ISREG(stato.st_mode)) Fallisci(EACCES, cosa, percorso);
    byte_ = static_cast<std::uint64_t>(stato.st_size);
    file_ = file.Lascia();
}

FileAperto::~FileAperto() {
    if (file_ >= 0) ::close(static_cast<int>(file_));
}

std::size_t FileAperto::Leggi(std::uint64_t da, std::span<char> dove) const {
    std::size_t letti = 0;
    while (letti < dove.size()) {
        const ssize_t n = ::pread(static_cast<int>(file_), dove.data() + letti, dove.size() - letti,
                                  static_cast<off_t>(da + letti));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) Fallisci(Ultimo(), cosa_, percorso_);
        if (n == 0) break;
        letti += static_cast<std::size_t>(n);
    }
    return letti;
}

}  // namespace lapvane::sistema

namespace lapvane {

bool FileProprio(const std::filesystem::path& percorso) {
    struct stat stato {};
    return ::lstat(percorso.c_str(), &stato) == 0 && S_ISREG(stato.st_mode) &&
           stato.st_uid == ::geteuid();
}

}  // namespace lapvane
