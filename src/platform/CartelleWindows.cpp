// Folders and what lies in them, on Windows.

#include <windows.h>

#include <string>
#include <string_view>

#include "platform/Cartelle.h"
#include "platform/FileSistema.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

using sistema::Nativo;

/// A file or folder that is only looked at; closes itself.
class Sguardo {
 public:
    explicit Sguardo(const fs::path& percorso)
        : h_(::CreateFileW(Nativo(percorso).c_str(), 0,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}
    ~Sguardo() {
        if (h_ != INVALID_HANDLE_VALUE) ::CloseHandle(h_);
    }
    Sguardo(const Sguardo&) = delete;
    Sguardo& operator=(const Sguardo&) = delete;
    HANDLE Valore() const { return h_; }
    bool Dati(BY_HANDLE_FILE_INFORMATION& dati) const {
        return h_ != INVALID_HANDLE_VALUE && ::GetFileInformationByHandle(h_, &dati);
    }

 private:
    HANDLE h_;
};

/// What the system keeps of a file or folder, links followed.
bool Guarda(const fs::path& percorso, WIN32_FILE_ATTRIBUTE_DATA& dati) {
    if (!::GetFileAttributesExW(Nativo(percorso).c_str(), GetFileExInfoStandard, &dati)) {
        return false;
    }
    if ((dati.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return true;
    // They are those of a link; a handle is of what it leads to.
    BY_HANDLE_FILE_INFORMATION vere{};
    if (!Sguardo(percorso).Dati(vere)) return false;
    dati.dwFileAttributes = vere.dwFileAttributes;
    dati.ftLastWriteTime = vere.ftLastWriteTime;
    dati.nFileSizeHigh = vere.nFileSizeHigh;
    dati.nFileSizeLow = vere.nFileSizeLow;
    return true;
}

std::uint64_t Doppio(DWORD alto, DWORD basso) {
    return (std::uint64_t{alto} << 32) | basso;
}

}  // namespace

Genere GenereDi(const fs::path& percorso) {
    WIN32_FILE_ATTRIBUTE_DATA dati{};
    if (!Guarda(percorso, dati)) return Genere::Niente;
    return (dati.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Genere::Cartella
                                                                   : Genere::File;
}

std::optional<MisuraFile> Misura(const fs::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA dati{};
    if (!Guarda(file, dati) || (dati.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::nullopt;
    }
    // Tenths of a microsecond since 1601.
    constexpr std::int64_t kEpoca = 11644473600000000;
    const std::uint64_t tempo =
        Doppio(dati.ftLastWriteTime.dwHighDateTime, dati.ftLastWriteTime.dwLowDateTime);
    const std::chrono::microseconds scritto(static_cast<std::int64_t>(tempo / 10) - kEpoca);
    return MisuraFile{static_cast<std::int64_t>(Doppio(dati.nFileSizeHigh, dati.nFileSizeLow)),
                      std::chrono::sys_time<std::chrono::microseconds>(scritto)};
}

fs::path::string_type ChiavePercorso(const fs::path& percorso) {
    std::wstring grande = fs::path(percorso).make_preferred().native();
    const int lungo = static_cast<int>(grande.size());
    if (lungo > 0) {
        ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, grande.c_str(), lungo,
                        grande.data(), lungo, nullptr, nullptr, 0);
    }
    return grande;
}

bool StessoFile(const fs::path& a, const fs::path& b) {
    if (StessoPercorso(a, b)) return true;
    BY_HANDLE_FILE_INFORMATION uno{}, altro{};
    return Sguardo(a).Dati(uno) && Sguardo(b).Dati(altro) &&
           uno.dwVolumeSerialNumber == altro.dwVolumeSerialNumber &&
           uno.nFileIndexHigh == altro.nFileIndexHigh && uno.nFileIndexLow == altro.nFileIndexLow;
}

fs::path NomeVero(const fs::path& cartella) {
    const Sguardo sguardo(cartella);
    constexpr DWORD kPosti = 32768;  // no path is longer
    std::wstring nome(kPosti, L'\0');
    const DWORD lungo = ::GetFinalPathNameByHandleW(sguardo.Valore(), nome.data(), kPosti, 0);
    if (lungo == 0 || lungo >= kPosti) return cartella;
    nome.resize(lungo);
    return nome;
}

bool CreaCartelle(const fs::path& cartella) {
    if (GenereDi(cartella) == Genere::Cartella) return true;
    const fs::path sopra = cartella.parent_path();
    if (sopra == cartella || (!sopra.empty() && !CreaCartelle(sopra))) return false;
    return ::CreateDirectoryW(Nativo(cartella).c_str(), nullptr) ||
           GenereDi(cartella) == Genere::Cartella;
}

bool Elimina(const fs::path& percorso) {
    const std::wstring nome = Nativo(percorso);
    const DWORD attributi = ::GetFileAttributesW(nome.c_str());
    if (attributi == INVALID_FILE_ATTRIBUTES) return true;
    return (attributi & FILE_ATTRIBUTE_DIRECTORY) != 0 ? ::RemoveDirectoryW(nome.c_str())
                                                       : ::DeleteFileW(nome.c_str());
}

bool Sposta(const fs::path& da, const fs::path& a) {
    return sistema::Rinomina(da, a) == 0;
}

struct LettoreCartella::Stato {
    ~Stato() {
        if (Ricerca != INVALID_HANDLE_VALUE) ::FindClose(Ricerca);
    }
    void Prendi(bool trovata) {
        // Not the two that every folder has.
        const auto punti = [this] {
            const std::wstring_view nome = Dati.cFileName;
            return nome == L"." || nome == L"..";
        };
        while (trovata && punti()) trovata = ::FindNextFileW(Ricerca, &Dati);
        Fine = !trovata;
        if (trovata) {
            Voce = Dove / Dati.cFileName;
            return;
        }
        // The root of an empty drive has not even the two.
        const DWORD perche = ::GetLastError();
        if (perche != ERROR_NO_MORE_FILES && perche != ERROR_FILE_NOT_FOUND) {
            Errore = static_cast<int>(perche);
        }
    }

    fs::path Dove, Voce;
    WIN32_FIND_DATAW Dati{};
    HANDLE Ricerca = INVALID_HANDLE_VALUE;
    bool Fine = false;
    int Errore = 0;
};

LettoreCartella::LettoreCartella(const fs::path& cartella) : stato_(std::make_unique<Stato>()) {
    stato_->Dove = cartella;
    stato_->Ricerca = ::FindFirstFileExW(Nativo(cartella / L"*").c_str(), FindExInfoBasic,
                                         &stato_->Dati, FindExSearchNameMatch, nullptr, 0);
    stato_->Prendi(stato_->Ricerca != INVALID_HANDLE_VALUE);
}

bool LettoreCartella::Fine() const {
    return !stato_ || stato_->Fine;
}

void LettoreCartella::Avanti() {
    stato_->Prendi(::FindNextFileW(stato_->Ricerca, &stato_->Dati));
}

int LettoreCartella::Errore() const {
    return stato_ ? stato_->Errore : 0;
}

const fs::path& LettoreCartella::Voce() const {
    return stato_->Voce;
}

bool LettoreCartella::Cartella() const {
    if (Legame()) return GenereDi(Voce()) == Genere::Cartella;
    return (stato_->Dati.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// A file that is kept elsewhere and fetched when it is read is none, though it is marked alike.
bool LettoreCartella::Legame() const {
    return (stato_->Dati.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (stato_->Dati.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
            stato_->Dati.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

LettoreCartella::LettoreCartella() = default;
LettoreCartella::~LettoreCartella() = default;
LettoreCartella::LettoreCartella(LettoreCartella&&) noexcept = default;
LettoreCartella& LettoreCartella::operator=(LettoreCartella&&) noexcept = default;

}  // namespace lapvane
