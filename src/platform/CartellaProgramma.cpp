#include "platform/CartellaProgramma.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kMemoria = ".lapvane.installed";
constexpr std::string_view kPrimaRiga = "Lapvane installed 1";
constexpr Lavoro kCosa = Lavoro::RiempireCartella;
constexpr std::string_view kLingue = "LANGUAGES.DAT";
constexpr std::string_view kRecenti = "RecentFiles.ini";
// Without these the program does not start.
constexpr std::array<std::string_view, 2> kNecessari = {kLingue, kRecenti};
constexpr std::array<std::string_view, 3> kFile = {kLingue, kRecenti, "Esempio.pro"};
constexpr std::array<std::string_view, 4> kCartelle = {"sensors", "tracks", "pages", "sample"};
constexpr std::string_view kPorte = "ports";
constexpr std::string_view kPerTutti = "for-all-users";

/// What was put there, by name: a number made from the bytes.
using Memoria = std::map<std::string, std::string>;

std::string Nome(const fs::path& percorso) {
    const std::u8string utf8 = percorso.generic_u8string();
    return {reinterpret_cast<const char*>(utf8.data()), utf8.size()};
}

fs::path Percorso(const std::string& nome) {
    return std::u8string(reinterpret_cast<const char8_t*>(nome.data()), nome.size());
}

/// The first line, with its end.
std::string_view Lingua(std::string_view testo) {
    return testo.substr(0, std::min(testo.find('\n'), testo.size() - 1) + 1);
}

/// What counts of a file: of the texts not the line that holds the choice of language.
std::string_view Corpo(const std::string& nome, std::string_view testo) {
    if (nome == kLingue && !testo.empty()) testo.remove_prefix(Lingua(testo).size());
    return testo;
}

std::string Impronta(const std::string& nome, std::string_view testo) {
    constexpr std::uint64_t kPrimo = 1099511628211u;  // FNV-1a
    std::uint64_t somma = 14695981039346656037u;
    for (const char c : Corpo(nome, testo)) {
        somma = (somma ^ static_cast<unsigned char>(c)) * kPrimo;
    }
    return std::to_string(somma);
}

/// All that lies in the folders and below them; behind each folder those within it. Links count as
/// files. False: one of them can't be looked at.
bool Percorri(std::vector<fs::path>& file, std::vector<fs::path>& cartelle) {
    bool tutte = true;
    for (std::size_t i = 0; i < cartelle.size(); ++i) {
        LettoreCartella voci(cartelle[i]);
        for (; !voci.Fine(); voci.Avanti()) {
            (voci.Cartella() && !voci.Legame() ? cartelle : file).push_back(voci.Voce());
        }
        tutte = tutte && voci.Errore() == 0;
    }
    return tutte;
}

std::vector<std::string> FileInstallati(const fs::path& installata) {
    std::vector<std::string> nomi;
    for (const std::string_view file : kFile) {
        if (FileEsiste(installata / file)) nomi.emplace_back(file);
    }
    for (const std::string_view cartella : kCartelle) {
        std::vector<fs::path> file, cartelle = {installata / cartella};
        Percorri(file, cartelle);
        for (const fs::path& uno : file) {
            if (Misura(uno)) nomi.push_back(Nome(uno.lexically_relative(installata)));
        }
    }
    return nomi;
}

Memoria LeggiMemoria(const fs::path& file) {
    Memoria memoria;
    if (!FileEsiste(file)) return memoria;
    const std::string testo = LeggiFile(file, kCosa);
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRiga) return memoria;
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        const std::size_t spazio = riga.find(' ');
        if (spazio == std::string_view::npos) continue;
        memoria[std::string(riga.substr(spazio + 1))] = riga.substr(0, spazio);
    }
    return memoria;
}

std::string TestoMemoria(const Memoria& memoria) {
    std::string testo(kPrimaRiga);
    testo += "\r\n";
    for (const auto& [nome, impronta] : memoria) testo += impronta + " " + nome + "\r\n";
    return testo;
}

void Aggiorna(const fs::path& installata, const fs::path& personale, const std::string& nome,
              Memoria& memoria) {
    const fs::path mio = personale / Percorso(nome);
    const auto ricordo = memoria.find(nome);
    const bool cE = FileEsiste(mio);
    const bool necessario =
        std::find(kNecessari.begin(), kNecessari.end(), nome) != kNecessari.end();
    if (!cE && ricordo != memoria.end() && !necessario) return;
    std::string nuovo = LeggiFile(installata / Percorso(nome), kCosa);
    const std::string impronta = Impronta(nome, nuovo);
    if (cE) {
        const std::string vecchio = LeggiFile(mio, kCosa);
        const std::string presente = Impronta(nome, vecchio);
        if (presente == impronta) {
            memoria[nome] = impronta;
            return;
        }
        if (ricordo == memoria.end() || ricordo->second != presente) return;
        if (nome == kLingue) {
            nuovo = std::string(Lingua(vecchio)).append(Corpo(nome, nuovo));
        }
    }
    CreaCartelle(mio.parent_path());
    ScriviFile(mio, nuovo, kCosa);
    memoria[nome] = impronta;
}

bool Riempi(const fs::path& installata, const fs::path& personale) {
    if (!CreaCartelle(personale / kPorte) || !CartellaScrivibile(personale)) return false;
    Memoria memoria;
    try {
        memoria = LeggiMemoria(personale / kMemoria);
    } catch (const ErroreRuntime&) {
        // Then everything that is there counts as the person's.
    }
    const Memoria prima = memoria;
    for (const std::string& nome : FileInstallati(installata)) {
        try {
            Aggiorna(installata, personale, nome, memoria);
        } catch (const std::exception&) {
            // The next start tries again.
        }
    }
    try {
        if (memoria != prima) ScriviFile(personale / kMemoria, TestoMemoria(memoria), kCosa);
    } catch (const ErroreRuntime&) {
        // What stands there already counts as the person's at the next start.
    }
    return std::all_of(kNecessari.begin(), kNecessari.end(), [&](std::string_view nome) {
        return FileEsiste(personale / nome) || !FileEsiste(installata / nome);
    });
}

/// Of the program and not of the person, whatever stands in it.
bool Ricordo(const fs::path& file, const fs::path& personale) {
    if (!StessoPercorso(file.parent_path(), personale)) return false;
    const std::string nome = Nome(file.filename());
    return nome == kMemoria || nome == kRecenti || file.extension() == ".lapvane" ||
           nome.starts_with(kTemporaneo);
}

bool DiTutti(const fs::path& installata) {
    return FileEsiste(installata / kPerTutti) || !CartellaScrivibile(installata);
}

}  // namespace

std::size_t SgomberaCartella(const fs::path& personale) {
    if (!FileEsiste(personale / kMemoria)) return 0;  // no folder of ours
    const Memoria memoria = LeggiMemoria(personale / kMemoria);
    std::vector<fs::path> file, cartelle = {personale};
    std::size_t restano = Percorri(file, cartelle) ? 0 : 1;
    for (const fs::path& percorso : file) {
        const std::string nome = Nome(percorso.lexically_relative(personale));
        const auto messo = memoria.find(nome);
        const bool nostro =
            Ricordo(percorso, personale) ||
            (messo != memoria.end() && Impronta(nome, LeggiFile(percorso, kCosa)) == messo->second);
        if (!nostro || !Elimina(percorso)) ++restano;
    }
    // Those within first; one that is not empty stays.
    for (auto cartella = cartelle.rbegin(); cartella != cartelle.rend(); ++cartella) {
        Elimina(*cartella);
    }
    return restano;
}

fs::path CartellaDelProgramma(const fs::path& installata, const fs::path& personale) {
    if (personale.empty() || !DiTutti(installata)) return installata;
    return Riempi(installata, personale) ? personale : installata;
}

fs::path CartellaDaLeggere(const fs::path& installata, const fs::path& personale) {
    const bool sua = FileEsiste(personale / kMemoria) && DiTutti(installata);
    return sua ? personale : installata;
}

}  // namespace lapvane
