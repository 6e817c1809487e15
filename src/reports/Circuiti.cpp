#include "reports/Circuiti.h"

#include <algorithm>
#include <cmath>
#include <system_error>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kCartella = "tracks";
constexpr std::size_t kByteMassimi = 1 << 20;  // of a file that a person can look through
constexpr std::size_t kConPunto = 4;           // an extension and its point
constexpr std::int64_t kRigheMassime = 32767;  // of an outline, that are counted
constexpr double kLunghezzaMassima = 2147483647.0;

/// The entry of a folder whose name equals `nome` without regard to case, the first in the order
/// of their bytes; empty if there is none. A name that the program's text lacks counts as what it
/// becomes there, if it is the only one.
template <class Prova>
fs::path VoceSenzaMaiuscole(const fs::path& cartella, std::string_view nome, Prova adatta) {
    fs::path trovata, convertita;
    int convertite = 0;
    for (LettoreCartella voci(cartella); !voci.Fine(); voci.Avanti()) {
        const fs::path& voce = voci.Voce();
        if (UgualiSenzaMaiuscole(TestoDaPercorso(voce.filename()), nome) && adatta(voce)) {
            if (!InTesto(voce.filename())) {
                convertita = voce;
                ++convertite;
            } else if (trovata.empty() || voce < trovata) {
                trovata = voce;
            }
        }
    }
    return trovata.empty() && convertite == 1 ? convertita : trovata;
}

bool EUnaCartella(const fs::path& percorso) {
    return GenereDi(percorso) == Genere::Cartella;
}

/// The text of a side file of a circuit; empty optional if it cannot be had.
std::optional<std::string> TestoDelCircuito(const std::string& nome, std::string_view estensione,
                                            Lavoro cosa) {
    const fs::path percorso = FileCircuito(nome, estensione);
    if (percorso.empty() || !FileEsiste(percorso)) return std::nullopt;
    try {
        return LeggiFile(percorso, cosa, kByteMassimi);
    } catch (const ErroreRuntime&) {
        return std::nullopt;
    }
}

}  // namespace

fs::path CartellaCircuiti() {
    const fs::path programma = platform().AppPath();
    fs::path solita = programma / kCartella;
    if (EUnaCartella(solita)) return solita;
    const fs::path altra = VoceSenzaMaiuscole(programma, kCartella, EUnaCartella);
    return altra.empty() ? solita : altra;
}

void CaricaListaCircuiti() {
    for (const std::string& file : ElencaFile(CartellaCircuiti())) {
        // Kept: the name ends in "trk", with or without a point before it, and loses four
        // characters.
        if (file.size() > kConPunto &&
            UgualiSenzaMaiuscole(std::string_view(file).substr(file.size() - 3), "trk")) {
            ListaCircuiti.push_back(file.substr(0, file.size() - kConPunto));
        }
    }
}

fs::path FileCircuito(const std::string& nome, std::string_view estensione) {
    if (nome.empty() || nome.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos) {
        return {};
    }
    const fs::path cartella = CartellaCircuiti();
    if (nome.find('?') != std::string::npos) {
        // Perhaps a name that the program's text lacks: the outline tells how it is written.
        const fs::path tracciato = VoceSenzaMaiuscole(cartella, nome + ".trk", FileEsiste);
        if (!tracciato.empty() && !InTesto(tracciato)) {
            fs::path suo = tracciato;
            return suo.replace_extension(estensione);
        }
        if (tracciato.empty()) return {};
    }
    const std::string file = nome + '.' + std::string(estensione);
    fs::path solito = cartella / PercorsoDaTesto(file);
    if (FileEsiste(solito)) return solito;
    const fs::path altro = VoceSenzaMaiuscole(cartella, file, FileEsiste);
    return altro.empty() ? solito : altro;
}

std::int32_t MetriInteri(std::string_view testo) {
    const double metri = CampoNumerico(testo.data(), testo.data() + testo.size());
    return std::fabs(metri) < kLunghezzaMassima ? ConvertiInt32(metri) : 0;
}

std::vector<PuntoTracciato> LeggiTracciato(std::string_view testo, int* righe) {
    std::vector<PuntoTracciato> punti;
    LettoreRighe lettore(testo);
    while (!lettore.Fine()) {
        std::string_view riga = lettore.Prossima();
        if (punti.size() == kPuntiMassimi) continue;
        if (!riga.empty() && riga.front() == '"') riga.remove_prefix(1);
        if (!riga.empty() && riga.back() == '"') riga.remove_suffix(1);
        PuntoTracciato punto;
        const std::size_t virgola = riga.find(',');
        if (virgola != std::string_view::npos) {
            const std::string_view dopo = riga.substr(virgola + 1);
            punto.X = MetriInteri(riga.substr(0, virgola));
            punto.Y = MetriInteri(dopo.substr(0, dopo.find(',')));
        }
        punti.push_back(punto);
    }
    if (righe != nullptr) {
        *righe = static_cast<int>(std::min<std::int64_t>(lettore.Numero(), kRigheMassime));
    }
    return punti;
}

std::optional<std::vector<PuntoTracciato>> LeggiFileTracciato(const std::string& nome, int* righe) {
    const auto testo = TestoDelCircuito(nome, "trk", Lavoro::LeggereTracciato);
    if (!testo) return std::nullopt;
    return LeggiTracciato(*testo, righe);
}

FileSettori LeggiTestoSettori(std::string_view testo, std::size_t massimo) {
    FileSettori file;
    LettoreRighe righe(testo);
    const auto prossima = [&] {
        const std::string_view riga = righe.Prossima();
        return CampoNumerico(riga.data(), riga.data() + riga.size());
    };
    if (!righe.Fine()) file.Lunghezza = prossima();
    while (!righe.Fine() && file.Settori.size() < massimo) file.Settori.push_back(prossima());
    return file;
}

std::optional<FileSettori> LeggiFileSettori(const std::string& nome, std::size_t massimo) {
    const auto testo = TestoDelCircuito(nome, "sec", Lavoro::LeggereSettori);
    if (!testo) return std::nullopt;
    return LeggiTestoSettori(*testo, massimo);
}

std::string ScriviTestoSettori(const std::string& lunghezza,
                               std::span<const std::int32_t> settori) {
    std::string testo = lunghezza + "\r\n";
    for (const std::int32_t settore : settori) {
        if (settore == 0) break;
        testo += TestoNumero(settore) + "\r\n";
    }
    return testo;
}

}  // namespace lapvane
