#include "shell/FileTesto.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

#include "platform/ErroreRuntime.h"
#include "platform/Testo1252.h"

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

constexpr std::string_view kTemporaneo = ".lapvane-";

/// Removes the temporary files that saves which were broken off have left in a folder: those that
/// nobody has written to for an hour. A save never takes that long, so none is pulled away from
/// another program that saves in the same folder.
void TogliAbbandonati(const fs::path& cartella) {
    constexpr auto kAbbandonato = std::chrono::hours(1);
    std::error_code errore;
    fs::directory_iterator voci(cartella.empty() ? fs::path(".") : cartella, errore);
    while (!errore && voci != fs::directory_iterator()) {
        const fs::path voce = voci->path();
        voci.increment(errore);
        if (TestoDaPercorso(voce.filename()).rfind(kTemporaneo, 0) != 0) continue;
        std::error_code ignorato;
        const auto scritto = fs::last_write_time(voce, ignorato);
        if (!ignorato && fs::is_regular_file(fs::symlink_status(voce, ignorato)) &&
            fs::file_time_type::clock::now() - scritto > kAbbandonato) {
            fs::remove(voce, ignorato);
        }
    }
}

char Maiuscola1252(char c) {
    const auto b = static_cast<unsigned char>(c);
    if ((b >= 'a' && b <= 'z') || (b >= 0xE0 && b <= 0xFE && b != 0xF7)) {
        return static_cast<char>(b - 0x20);
    }
    if (b == 0x9A || b == 0x9C || b == 0x9E) return static_cast<char>(b - 0x10);
    if (b == 0xFF) return static_cast<char>(0x9F);
    return c;
}

bool MenoSenzaMaiuscole(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return static_cast<unsigned char>(Maiuscola1252(x)) <
               static_cast<unsigned char>(Maiuscola1252(y));
    });
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
    testo.resize(std::min(static_cast<std::size_t>(stato.st_size), massimo));
    std::size_t letti = 0;
    while (letti < testo.size()) {
        const ssize_t n = ::read(file.Valore(), testo.data() + letti, testo.size() - letti);
        if (n < 0) {
            if (errno == EINTR) continue;
            Fallisci(errno, cosa, percorso);
        }
        if (n == 0) break;
        letti += static_cast<std::size_t>(n);
    }
    testo.resize(letti);
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

    std::string nome = (vero.parent_path() / (std::string(kTemporaneo) + "XXXXXX")).native();
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

void RiscriviInizio(const fs::path& percorso, std::string_view testo, std::string_view cosa) {
    Descrittore file(::open(percorso.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    if (file.Valore() < 0) Fallisci(errno, cosa, percorso);
    int errore = ScriviTutto(file.Valore(), testo);
    if (errore == 0 && ::fsync(file.Valore()) != 0) errore = errno;
    if (file.Chiudi() != 0 && errore == 0) errore = errno;
    if (errore != 0) Fallisci(errore, cosa, percorso);
}

bool FileEsiste(const fs::path& percorso) {
    std::error_code errore;
    const fs::file_status stato = fs::status(percorso, errore);
    return fs::exists(stato) && !fs::is_directory(stato);
}

std::vector<std::string> ElencaFile(const fs::path& cartella) {
    std::vector<std::string> nomi;
    std::error_code errore;
    fs::directory_iterator voci(cartella, errore);
    if (errore) {
        throw ErroreRuntime(errore == std::errc::permission_denied ? NumeroErrore::PathAccess
                                                                   : NumeroErrore::PathNotFound,
                            "listing a folder", cartella);
    }
    for (const auto& voce : voci) {
        std::error_code ignorato;
        if (voce.is_directory(ignorato)) continue;
        std::string nome = TestoDaPercorso(voce.path().filename());
        if (!nome.empty() && nome[0] != '.') nomi.push_back(std::move(nome));
    }
    std::sort(nomi.begin(), nomi.end(), [](const std::string& a, const std::string& b) {
        if (MenoSenzaMaiuscole(a, b)) return true;
        return !MenoSenzaMaiuscole(b, a) && a < b;
    });
    return nomi;
}

bool UgualiSenzaMaiuscole(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return Maiuscola1252(x) == Maiuscola1252(y);
           });
}

std::string_view LettoreRighe::Prossima() {
    if (resto_.empty()) return {};
    ++numero_;
    const std::size_t fine = resto_.find_first_of("\r\n");
    if (fine == std::string_view::npos) return std::exchange(resto_, {});
    const std::string_view riga = resto_.substr(0, fine);
    const bool coppia =
        resto_[fine] == '\r' && fine + 1 < resto_.size() && resto_[fine + 1] == '\n';
    resto_.remove_prefix(fine + (coppia ? 2 : 1));
    return riga;
}

}  // namespace lapvane
