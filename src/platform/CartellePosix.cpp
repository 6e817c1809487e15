// Folders and what lies in them where the system is a POSIX one.

#include <sys/stat.h>

#include "platform/Cartelle.h"

namespace lapvane {

namespace fs = std::filesystem;

Genere GenereDi(const fs::path& percorso) {
    std::error_code ignorato;
    const fs::file_status stato = fs::status(percorso, ignorato);
    if (!fs::exists(stato)) return Genere::Niente;
    return fs::is_directory(stato) ? Genere::Cartella : Genere::File;
}

std::optional<MisuraFile> Misura(const fs::path& file) {
    struct stat stato {};
    if (::stat(file.c_str(), &stato) != 0 || !S_ISREG(stato.st_mode)) return std::nullopt;
    const auto scritto = std::chrono::seconds(stato.st_mtim.tv_sec) +
                         std::chrono::microseconds(stato.st_mtim.tv_nsec / 1000);
    return MisuraFile{stato.st_size, std::chrono::sys_time<std::chrono::microseconds>(scritto)};
}

fs::path::string_type ChiavePercorso(const fs::path& percorso) {
    return percorso.native();
}

bool StessoFile(const fs::path& a, const fs::path& b) {
    std::error_code ignorato;
    return a == b || fs::equivalent(a, b, ignorato);
}

fs::path NomeVero(const fs::path& cartella) {
    std::error_code errore;
    fs::path vero = fs::canonical(cartella, errore);
    return errore ? cartella : vero;
}

bool CreaCartelle(const fs::path& cartella) {
    std::error_code ignorato;
    fs::create_directories(cartella, ignorato);
    return GenereDi(cartella) == Genere::Cartella;
}

bool Elimina(const fs::path& percorso) {
    std::error_code errore;
    fs::remove(percorso, errore);
    return !errore;
}

bool Sposta(const fs::path& da, const fs::path& a) {
    std::error_code errore;
    fs::rename(da, a, errore);
    return !errore;
}

struct LettoreCartella::Stato {
    fs::directory_iterator Qui;
    std::error_code Errore;
};

LettoreCartella::LettoreCartella(const fs::path& cartella) : stato_(std::make_unique<Stato>()) {
    stato_->Qui = fs::directory_iterator(cartella, stato_->Errore);
}

bool LettoreCartella::Fine() const {
    return !stato_ || stato_->Errore || stato_->Qui == fs::directory_iterator();
}

void LettoreCartella::Avanti() {
    stato_->Qui.increment(stato_->Errore);
}

int LettoreCartella::Errore() const {
    return stato_ ? stato_->Errore.value() : 0;
}

const fs::path& LettoreCartella::Voce() const {
    return stato_->Qui->path();
}

bool LettoreCartella::Cartella() const {
    std::error_code ignorato;
    return stato_->Qui->is_directory(ignorato);
}

bool LettoreCartella::Legame() const {
    std::error_code ignorato;
    return stato_->Qui->is_symlink(ignorato);
}

LettoreCartella::LettoreCartella() = default;
LettoreCartella::~LettoreCartella() = default;
LettoreCartella::LettoreCartella(LettoreCartella&&) noexcept = default;
LettoreCartella& LettoreCartella::operator=(LettoreCartella&&) noexcept = default;

}  // namespace lapvane
