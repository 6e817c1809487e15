#include "platform/FileTesto.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileSistema.h"
#include "platform/PagineGrandi.h"
#include "platform/Testo1252.h"

namespace lapvane {

namespace fs = std::filesystem;

constexpr std::size_t kBoccone = std::size_t{128} << 10;

std::string sistema::Leggi(const fs::path& percorso, Lavoro cosa, std::size_t massimo) {
    const FileAperto file(percorso, cosa);
    std::string testo;
    const std::size_t byte = std::min(static_cast<std::size_t>(file.Byte()), massimo);
    testo.reserve(byte);
    PagineGrandi(testo.data(), byte);
    // By way of a piece that stays in the cache: to make room for the whole text first would write
    // all of it twice.
    const std::size_t boccone = std::min(byte, kBoccone);
    const auto pezzo = std::make_unique_for_overwrite<char[]>(boccone);
    while (testo.size() < byte) {
        const std::size_t n =
            file.Leggi(testo.size(), {pezzo.get(), std::min(boccone, byte - testo.size())});
        if (n == 0) break;
        testo.append(pezzo.get(), n);
    }
    return testo;
}

namespace {

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

constexpr std::string_view kPrimaRigaMarca = "Lapvane save 1";
constexpr std::size_t kMarcaMassima = std::size_t{1} << 16;
constexpr std::size_t kGrande = std::size_t{16} << 20;  // rewriting all of it would be felt

enum class Modo : char {
    Rinomina = 'R',  // the copy becomes the file
    Intero = 'W',    // the copy's bytes become the file's
    Inizio = 'S',    // the copy's bytes become the file's first ones
};

struct VoceMarca {
    Modo Come = Modo::Rinomina;
    fs::path File;
    fs::path Copia;
};

fs::path& Riserva() {
    static fs::path cartella;
    return cartella;
}

fs::path CartellaRiserva() {
    std::error_code ignorato;
    return Riserva().empty() ? fs::temp_directory_path(ignorato) : Riserva();
}

std::string Utf8(const fs::path& percorso) {
    const std::u8string utf8 = percorso.u8string();
    return {reinterpret_cast<const char*>(utf8.data()), utf8.size()};
}

fs::path DaUtf8(const std::string& utf8) {
    return std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size());
}

/// What a path leads to: a link stays a link when its file is written.
fs::path Vero(const fs::path& percorso) {
    std::error_code ignorato;
    return fs::is_symlink(percorso, ignorato) ? fs::weakly_canonical(percorso, ignorato) : percorso;
}

/// The name of a mark: a number made from the text, whatever its length.
fs::path NomeMarca(const fs::path& chiave) {
    constexpr std::uint64_t kBase = 14695981039346656037u;  // FNV-1a
    constexpr std::uint64_t kPrimo = 1099511628211u;
    std::uint64_t somma = kBase;
    for (const char c : Utf8(ChiavePercorso(chiave))) {
        somma = (somma ^ static_cast<unsigned char>(c)) * kPrimo;
    }
    constexpr std::string_view kCifre = "0123456789abcdef";
    std::string nome(kMarca);
    for (int bit = 60; bit >= 0; bit -= 4) nome += kCifre[(somma >> bit) & 0xF];
    return nome;
}

/// Where the mark of a file may lie: in its folder, or in the reserve. Files of one set have one.
std::array<fs::path, 2> Marche(const fs::path& vero) {
    const fs::path stelo = SenzaFine(vero.filename(), 3, {});
    std::error_code ignorato;
    return {vero.parent_path() / NomeMarca(stelo),
            CartellaRiserva() /
                NomeMarca(fs::absolute(vero, ignorato).lexically_normal().parent_path() / stelo)};
}

/// The marks that lie in a folder.
std::vector<fs::path> MarcheIn(const fs::path& cartella) {
    std::vector<fs::path> marche;
    for (LettoreCartella voci(cartella.empty() ? "." : cartella); !voci.Fine(); voci.Avanti()) {
        if (Utf8(voci.Voce().filename()).starts_with(kMarca)) marche.push_back(voci.Voce());
    }
    return marche;
}

/// Paths beside the mark go without their folder, so that a folder may be moved with its mark.
std::string TestoMarca(const fs::path& marca, const std::vector<VoceMarca>& voci) {
    std::string testo(kPrimaRigaMarca);
    testo += "\r\n";
    const auto riga = [&](const fs::path& percorso) {
        std::error_code ignorato;
        const bool accanto = percorso.parent_path() == marca.parent_path();
        testo += InUnaRiga(Utf8(accanto ? percorso.filename() : fs::absolute(percorso, ignorato)));
        testo += "\r\n";
    };
    for (const VoceMarca& voce : voci) {
        testo += static_cast<char>(voce.Come);
        testo += "\r\n";
        riga(voce.File);
        riga(voce.Copia);
    }
    return testo + "end\r\n";
}

/// Empty: no mark, or none that can be used.
std::vector<VoceMarca> LeggiMarca(const fs::path& marca) {
    std::string testo;
    try {
        if (!FileEsiste(marca)) return {};
        testo = sistema::Leggi(marca, Lavoro::LeggereFile, kMarcaMassima);
    } catch (const ErroreRuntime&) {
        return {};
    }
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRigaMarca) return {};
    const bool nellaRiserva = marca.parent_path() == CartellaRiserva();
    std::vector<VoceMarca> voci;
    while (!righe.Fine()) {
        const std::string_view modo = righe.Prossima();
        if (modo == "end") return voci;
        if (modo != "R" && modo != "W" && modo != "S") return {};
        VoceMarca voce;
        voce.Come = static_cast<Modo>(modo.front());
        voce.File = marca.parent_path() / DaUtf8(DaUnaRiga(righe.Prossima()));
        voce.Copia = marca.parent_path() / DaUtf8(DaUnaRiga(righe.Prossima()));
        // A mark that came along with a folder puts nothing but copies of this program's, and those
        // nowhere but into that folder.
        if (Utf8(voce.Copia.filename()).rfind(kTemporaneo, 0) != 0) return {};
        if (!nellaRiserva && voce.File.parent_path() != marca.parent_path()) return {};
        voci.push_back(std::move(voce));
    }
    return {};
}

/// Puts one copy where it belongs. Done again after a kill it does no harm.
sistema::Codice Avanti(const VoceMarca& voce) {
    if (!sistema::CE(voce.Copia)) return 0;  // it is there already
    if (voce.Come == Modo::Rinomina) {
        const sistema::Codice errore = sistema::Rinomina(voce.Copia, voce.File);
        return errore != 0 && sistema::CE(voce.Copia) ? errore : 0;
    }
    try {
        const std::string testo =
            sistema::Leggi(voce.Copia, Lavoro::LeggereFile, static_cast<std::size_t>(-1));
        return sistema::SulPosto(voce.File, testo, voce.Come == Modo::Intero);
    } catch (const ErroreRuntime&) {
        return sistema::CE(voce.Copia) ? static_cast<sistema::Codice>(-1) : 0;
    }
}

/// Everything is where it belongs: the mark goes, then what it names.
void TogliMarca(const fs::path& marca, const std::vector<VoceMarca>& voci) {
    for (const VoceMarca& voce : voci) sistema::Fissa(voce.File.parent_path());
    sistema::Togli(marca);
    sistema::Fissa(marca.parent_path());
    for (const VoceMarca& voce : voci) sistema::Togli(voce.Copia);
}

/// False: not now; the mark stays.
bool Completa(const fs::path& marca, const std::vector<VoceMarca>& voci) {
    for (const VoceMarca& voce : voci) {
        if (Avanti(voce) != 0) return false;
    }
    TogliMarca(marca, voci);
    return true;
}

/// Where the bytes of a file lie now, behind the saves that were cut.
fs::path DaLeggere(const fs::path& percorso) {
    const fs::path vero = Vero(percorso);
    for (const fs::path& marca : Marche(vero)) {
        const auto voci = LeggiMarca(marca);
        if (voci.empty() || Completa(marca, voci)) continue;
        // The medium takes nothing now: what was to be written is read where it lies, and no file
        // of a set is older than the others.
        for (const VoceMarca& voce : voci) {
            if (voce.Come != Modo::Inizio &&
                StessoPercorso(voce.File.filename(), vero.filename()) && sistema::CE(voce.Copia)) {
                return voce.Copia;
            }
        }
    }
    return percorso;
}

/// A file on its way to be written, with what puts the old one back.
struct Passo : VoceMarca {
    bool Cera = false;
    bool Fatto = false;
    std::string Vecchio;  // the bytes that the new ones replace
};

class Salvataggio {
 public:
    explicit Salvataggio(Lavoro cosa) : cosa_(cosa) {}
    Salvataggio(const Salvataggio&) = delete;
    Salvataggio& operator=(const Salvataggio&) = delete;
    ~Salvataggio() {
        for (const Passo& passo : passi_) {
            if (!marcato_ && !passo.Copia.empty()) sistema::Togli(passo.Copia);
        }
    }

    /// Writes the copy of a file's new text.
    void Prepara(const fs::path& percorso, std::string_view testo, bool intero) {
        Passo passo;
        passo.File = Vero(percorso);
        passo.Cera = sistema::CE(passo.File);
        if (passo.Cera) {
            // A file that forbids writing is not replaced behind its owner's back.
            const sistema::Codice errore = sistema::Permesso(passo.File);
            if (errore != 0) sistema::Fallisci(errore, cosa_, percorso);
            if (sistema::HaAltriNomi(passo.File)) passo.Come = Modo::Intero;
            if (!intero) passo.Come = Modo::Inizio;
        }
        const fs::path cartella = passo.File.parent_path();
        sistema::Codice errore = sistema::Provvisorio(cartella, passo.File, testo, passo.Copia);
        if (errore != 0 && passo.Cera && sistema::Negato(errore)) {
            if (passo.Come == Modo::Rinomina) passo.Come = Modo::Intero;
            errore = sistema::Provvisorio(CartellaRiserva(), passo.File, testo, passo.Copia);
        }
        if (errore != 0) {
            sistema::Fallisci(errore, cosa_, percorso);
        }
        passi_.push_back(std::move(passo));
    }

    /// One file alone that can be renamed needs no mark.
    bool SenzaMarca() {
        Passo& passo = passi_.front();
        if (passi_.size() != 1 || passo.Come != Modo::Rinomina) return false;
        const sistema::Codice errore = sistema::Rinomina(passo.Copia, passo.File);
        if (errore != 0 && passo.Cera && sistema::Negato(errore)) {
            // A folder in which only owners may take their files away.
            passo.Come = Modo::Intero;
            return false;
        }
        if (errore != 0) sistema::Fallisci(errore, cosa_, passo.File);
        passo.Copia.clear();
        return true;
    }

    void Esegui() {
        for (Passo& passo : passi_) TieniVecchio(passo);
        const std::vector<VoceMarca> voci(passi_.begin(), passi_.end());
        const fs::path marca = ScriviMarca(voci);
        marcato_ = true;
        for (Passo& passo : passi_) {
            const sistema::Codice errore = Avanti(passo);
            passo.Fatto = true;
            if (errore == 0) continue;
            // What can't be put back now is completed by the next opening.
            if (Indietro()) {
                TogliMarca(marca, voci);
                marcato_ = false;
            }
            sistema::Fallisci(errore, cosa_, passo.File);
        }
        TogliMarca(marca, voci);
    }

    void Riordina() const {
        for (const Passo& passo : passi_) {
            if (&passo == &passi_.front() ||
                passo.File.parent_path() != passi_.front().File.parent_path()) {
                TogliAbbandonati(passo.File.parent_path());
            }
        }
    }

 private:
    void TieniVecchio(Passo& passo) {
        if (!passo.Cera) return;
        const std::size_t massimo = passo.Come != Modo::Inizio
                                        ? static_cast<std::size_t>(-1)
                                        : static_cast<std::size_t>(sistema::Grandezza(passo.Copia));
        passo.Vecchio = sistema::Leggi(passo.File, cosa_, massimo);
    }

    fs::path ScriviMarca(const std::vector<VoceMarca>& voci) const {
        sistema::Codice errore = 0;
        for (const fs::path& marca : Marche(passi_.front().File)) {
            const bool accanto = std::all_of(voci.begin(), voci.end(), [&](const VoceMarca& voce) {
                return voce.File.parent_path() == marca.parent_path();
            });
            if (!accanto && marca.parent_path() != CartellaRiserva()) continue;
            fs::path provvisoria;
            errore =
                sistema::Provvisorio(marca.parent_path(), {}, TestoMarca(marca, voci), provvisoria);
            if (errore == 0) errore = sistema::Rinomina(provvisoria, marca);
            if (errore == 0) {
                sistema::Fissa(marca.parent_path());
                return marca;
            }
            if (!provvisoria.empty()) sistema::Togli(provvisoria);
            if (!sistema::Negato(errore)) break;
        }
        sistema::Fallisci(errore, cosa_, passi_.front().File);
    }

    /// Whether an in-place write has not even begun: another program holds the file.
    bool ComePrima(const Passo& passo) const {
        const std::size_t massimo =
            passo.Come == Modo::Intero ? static_cast<std::size_t>(-1) : passo.Vecchio.size();
        try {
            return sistema::Leggi(passo.File, cosa_, massimo) == passo.Vecchio;
        } catch (const ErroreRuntime&) {
            return false;
        }
    }

    /// Puts back every file that was touched; what was not stays with its copy. False: not all.
    bool Indietro() {
        for (auto passo = passi_.rbegin(); passo != passi_.rend(); ++passo) {
            if (!passo->Fatto) continue;
            if (passo->Come == Modo::Rinomina) {
                if (sistema::CE(passo->Copia)) continue;  // it never got there
                fs::path vecchia;
                if (passo->Cera && sistema::Provvisorio(passo->File.parent_path(), passo->File,
                                                        passo->Vecchio, vecchia) != 0) {
                    return false;
                }
                if (sistema::Rinomina(passo->File, passo->Copia) != 0 ||
                    (passo->Cera && sistema::Rinomina(vecchia, passo->File) != 0)) {
                    return false;
                }
            } else if (!ComePrima(*passo) && sistema::SulPosto(passo->File, passo->Vecchio,
                                                               passo->Come == Modo::Intero) != 0) {
                return false;
            }
        }
        return true;
    }

    Lavoro cosa_;
    std::vector<Passo> passi_;
    bool marcato_ = false;
};

}  // namespace

void ImpostaRiserva(const fs::path& cartella) {
    Riserva() = cartella;
}

void Ripara(const fs::path& percorso) {
    for (const fs::path& marca : Marche(Vero(percorso))) {
        if (const auto voci = LeggiMarca(marca); !voci.empty()) Completa(marca, voci);
    }
}

void RiparaCartella(const fs::path& cartella) {
    for (const fs::path& marca : MarcheIn(cartella)) {
        if (const auto fatte = LeggiMarca(marca); !fatte.empty()) Completa(marca, fatte);
    }
}

std::string LeggiFile(const fs::path& percorso, Lavoro cosa, std::size_t massimo) {
    return sistema::Leggi(DaLeggere(percorso), cosa, massimo);
}

LetturaCartella::LetturaCartella(const fs::path& cartella)
    : conMarche_(!MarcheIn(cartella).empty() || !MarcheIn(CartellaRiserva()).empty()) {}

std::string LetturaCartella::LeggiFile(const fs::path& percorso, Lavoro cosa,
                                       std::size_t massimo) const {
    // A link's file lies elsewhere, and so does its mark.
    std::error_code ignorato;
    if (conMarche_ || fs::is_symlink(percorso, ignorato)) {
        return lapvane::LeggiFile(percorso, cosa, massimo);
    }
    return sistema::Leggi(percorso, cosa, massimo);
}

FileAPezzi::FileAPezzi(const fs::path& percorso, Lavoro cosa)
    : file_(std::make_unique<sistema::FileAperto>(DaLeggere(percorso), cosa)) {}

FileAPezzi::FileAPezzi(FileAPezzi&&) noexcept = default;
FileAPezzi::~FileAPezzi() = default;

std::uint64_t FileAPezzi::Byte() const {
    return file_->Byte();
}

std::size_t FileAPezzi::Leggi(std::uint64_t da, std::span<char> dove) const {
    return file_->Leggi(da, dove);
}

void ScriviFile(const fs::path& percorso, std::string_view testo, Lavoro cosa) {
    Ripara(percorso);
    Salvataggio salvataggio(cosa);
    salvataggio.Prepara(percorso, testo, true);
    if (!salvataggio.SenzaMarca()) salvataggio.Esegui();
    salvataggio.Riordina();
}

void ScriviInsieme(std::span<const FileNuovo> insieme, Lavoro cosa) {
    if (insieme.empty()) return;
    Ripara(insieme.front().Percorso);
    Salvataggio salvataggio(cosa);
    for (const FileNuovo& file : insieme) salvataggio.Prepara(file.Percorso, file.Testo, true);
    salvataggio.Esegui();
    salvataggio.Riordina();
}

void RiscriviInizio(const fs::path& percorso, std::string_view testo, Lavoro cosa) {
    Ripara(percorso);
    if (FileEsiste(percorso)) {
        const std::uintmax_t byte = sistema::Grandezza(percorso);
        if (byte > kGrande && byte > testo.size()) {
            Salvataggio salvataggio(cosa);
            salvataggio.Prepara(percorso, testo, false);
            salvataggio.Esegui();
            salvataggio.Riordina();
            return;
        }
        std::string intero(testo);
        const std::string vecchio = LeggiFile(percorso, cosa);
        if (vecchio.size() > intero.size()) intero.append(vecchio, intero.size());
        ScriviFile(percorso, intero, cosa);
        return;
    }
    ScriviFile(percorso, testo, cosa);
}

bool CartellaScrivibile(const fs::path& cartella) {
    fs::path nome;
    const sistema::Codice errore = sistema::Provvisorio(cartella, {}, {}, nome);
    if (errore != 0) return !sistema::Negato(errore);
    sistema::Togli(nome);
    return true;
}

void TogliAbbandonati(const fs::path& cartella) {
    constexpr auto kAbbandonato = std::chrono::hours(1);
    const auto adesso = std::chrono::system_clock::now();
    std::vector<fs::path> vecchi, nominati;
    for (LettoreCartella voci(cartella.empty() ? "." : cartella); !voci.Fine(); voci.Avanti()) {
        const std::string nome = Utf8(voci.Voce().filename());
        if (nome.starts_with(kMarca)) {
            for (const VoceMarca& v : LeggiMarca(voci.Voce())) {
                nominati.push_back(v.Copia.filename());
            }
        } else if (nome.starts_with(kTemporaneo) && !voci.Legame()) {
            const auto misura = Misura(voci.Voce());
            if (misura && adesso - misura->Scritto > kAbbandonato) vecchi.push_back(voci.Voce());
        }
    }
    for (const fs::path& vecchio : vecchi) {
        if (std::find(nominati.begin(), nominati.end(), vecchio.filename()) == nominati.end()) {
            sistema::Togli(vecchio);
        }
    }
}

bool StessoPercorso(const fs::path& a, const fs::path& b) {
    return a == b || ChiavePercorso(a) == ChiavePercorso(b);
}

bool FileEsiste(const fs::path& percorso) {
    return GenereDi(percorso) == Genere::File;
}

std::vector<fs::path> ElencaPercorsi(const fs::path& cartella) {
    std::vector<std::pair<std::string, fs::path>> nomi;
    LettoreCartella voci(cartella);
    for (; !voci.Fine(); voci.Avanti()) {
        if (voci.Cartella()) continue;
        std::string nome = TestoDaPercorso(voci.Voce().filename());
        if (!nome.empty() && nome[0] != '.') nomi.emplace_back(std::move(nome), voci.Voce());
    }
    if (const int errore = voci.Errore(); errore != 0) {
        throw ErroreRuntime(sistema::Negato(static_cast<sistema::Codice>(errore))
                                ? NumeroErrore::PathAccess
                                : NumeroErrore::PathNotFound,
                            Lavoro::ElencareCartella, cartella);
    }
    std::sort(nomi.begin(), nomi.end(), [](const auto& a, const auto& b) {
        if (MenoSenzaMaiuscole(a.first, b.first)) return true;
        return !MenoSenzaMaiuscole(b.first, a.first) && a < b;
    });
    std::vector<fs::path> percorsi;
    percorsi.reserve(nomi.size());
    for (auto& [nome, percorso] : nomi) percorsi.push_back(std::move(percorso));
    return percorsi;
}

std::vector<std::string> ElencaFile(const fs::path& cartella) {
    std::vector<std::string> nomi;
    for (const fs::path& file : ElencaPercorsi(cartella)) {
        nomi.push_back(TestoDaPercorso(file.filename()));
    }
    return nomi;
}

bool StessoNome(const fs::path& a, const fs::path& b) {
    if (StessoPercorso(a, b)) return true;
    return InTesto(a) && InTesto(b) && UgualiSenzaMaiuscole(TestoDaPercorso(a), TestoDaPercorso(b));
}

std::string NomeLibero(const fs::path& cartella, std::string stelo,
                       std::span<const std::string_view> fini) {
    for (char& c : stelo) {
        if (std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos) c = '-';
    }
    std::vector<std::string> presenti;
    try {
        presenti = ElencaFile(cartella);
    } catch (const ErroreRuntime&) {
        // What can't be listed is asked for by name.
    }
    for (int n = 1;; ++n) {
        std::string nome = n == 1 ? stelo : stelo + " " + std::to_string(n);
        const bool preso = std::any_of(fini.begin(), fini.end(), [&](std::string_view fine) {
            const std::string file = nome + std::string(fine);
            return FileEsiste(cartella / PercorsoDaTesto(file)) ||
                   std::any_of(presenti.begin(), presenti.end(), [&](const std::string& altro) {
                       return UgualiSenzaMaiuscole(altro, file);
                   });
        });
        if (!preso) return nome;
    }
}

fs::path SenzaFine(const fs::path& percorso, std::size_t meno, std::string_view fine) {
    fs::path::string_type testo = percorso.native();
    testo.resize(testo.size() - std::min(meno, testo.size()));
    return testo + fs::path(fine).native();
}

std::string InUnaRiga(std::string_view testo) {
    std::string riga;
    for (const char c : testo) {
        if (c == '%' || c == '\r' || c == '\n') {
            riga += c == '%' ? "%25" : c == '\r' ? "%0D" : "%0A";
        } else {
            riga += c;
        }
    }
    return riga;
}

std::string DaUnaRiga(std::string_view riga) {
    std::string testo;
    for (std::size_t i = 0; i < riga.size(); ++i) {
        const std::string_view codice = riga.substr(i, 3);
        const char c = codice == "%25" ? '%' : codice == "%0D" ? '\r' : codice == "%0A" ? '\n' : 0;
        testo += c == 0 ? riga[i] : c;
        if (c != 0) i += 2;
    }
    return testo;
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
