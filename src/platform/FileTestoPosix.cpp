// Reading and writing whole files where the system is a POSIX one.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/PagineGrandi.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Fallisci(int errore, std::string_view cosa, const fs::path& percorso) {
    NumeroErrore numero = NumeroErrore::DeviceIo;
    switch (errore) {
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
    throw ErroreRuntime(numero, std::string(cosa), percorso);
}

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
    int Chiudi() {
        const int d = d_;
        d_ = -1;
        return ::close(d);
    }

 private:
    int d_;
};

constexpr std::size_t kPosti = 6;  // of a temporary name that the system fills
constexpr std::size_t kBoccone = std::size_t{128} << 10;

/// 0, or the error number.
int ScriviTutto(int d, std::string_view testo) {
    while (!testo.empty()) {
        const ssize_t scritti = ::write(d, testo.data(), testo.size());
        if (scritti < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        testo.remove_prefix(static_cast<std::size_t>(scritti));
    }
    return 0;
}

}  // namespace

std::string LeggiFile(const fs::path& percorso, std::string_view cosa, std::size_t massimo) {
    const Descrittore file(::open(percorso.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.Valore() < 0) Fallisci(errno, cosa, percorso);
    struct stat stato {};
    if (::fstat(file.Valore(), &stato) != 0) Fallisci(errno, cosa, percorso);
    if (S_ISDIR(stato.st_mode)) Fallisci(EISDIR, cosa, percorso);
    if (!S_ISREG(stato.st_mode)) Fallisci(EACCES, cosa, percorso);
    std::string testo;
    const std::size_t byte = std::min(static_cast<std::size_t>(stato.st_size), massimo);
    testo.reserve(byte);
    PagineGrandi(testo.data(), byte);
    // By way of a piece that stays in the cache: to make room for the whole text first would write
    // all of it twice.
    const std::size_t boccone = std::min(byte, kBoccone);
    const auto pezzo = std::make_unique_for_overwrite<char[]>(boccone);
    while (testo.size() < byte) {
        const ssize_t n =
            ::read(file.Valore(), pezzo.get(), std::min(boccone, byte - testo.size()));
        if (n < 0) {
            if (errno == EINTR) continue;
            Fallisci(errno, cosa, percorso);
        }
        if (n == 0) break;
        testo.append(pezzo.get(), static_cast<std::size_t>(n));
    }
    return testo;
}

void ScriviFile(const fs::path& percorso, std::string_view testo, std::string_view cosa) {
    // A link stays a link: what it points at is replaced.
    std::error_code ignorato;
    const fs::path vero =
        fs::is_symlink(percorso, ignorato) ? fs::weakly_canonical(percorso, ignorato) : percorso;
    if (fs::is_directory(vero, ignorato)) Fallisci(EISDIR, cosa, percorso);
    struct stat vecchio {};
    const bool cera = ::stat(vero.c_str(), &vecchio) == 0;
    // A file that forbids writing is not replaced behind its owner's back.
    if (cera && ::access(vero.c_str(), W_OK) != 0) Fallisci(errno, cosa, percorso);

    std::string nome = (vero.parent_path() / kTemporaneo).native() + std::string(kPosti, 'X');
    Descrittore file(::mkostemp(nome.data(), O_CLOEXEC));
    if (file.Valore() < 0) Fallisci(errno, cosa, percorso);
    const mode_t maschera = ::umask(0);
    ::umask(maschera);
    static_cast<void>(::fchmod(file.Valore(), cera ? vecchio.st_mode & 07777u : 0666u & ~maschera));
    int errore = ScriviTutto(file.Valore(), testo);
    if (errore == 0 && ::fsync(file.Valore()) != 0) errore = errno;
    if (file.Chiudi() != 0 && errore == 0) errore = errno;
    if (errore == 0 && ::rename(nome.c_str(), vero.c_str()) != 0) errore = errno;
    if (errore != 0) {
        ::unlink(nome.c_str());
        Fallisci(errore, cosa, percorso);
    }
    TogliAbbandonati(vero.parent_path());
}

}  // namespace lapvane
