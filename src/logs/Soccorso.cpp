#include "logs/Soccorso.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

#include "logs/BufferLog.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrimaRiga = "Lapvane rescue 1";
constexpr std::string_view kUltimaRiga = "end";
constexpr std::size_t kByteMassimi = std::size_t{8} << 20;  // the memory of an instrument has 2

fs::path fileRipreso;

/// The places in their order; those that there are.
std::vector<fs::path> Luoghi() {
    std::vector<fs::path> luoghi = {platform().AppPath()};
    if (const fs::path documenti = platform().Documents(); !documenti.empty()) {
        luoghi.push_back(documenti);
    }
    std::error_code errore;
    if (const fs::path temporanea = fs::temp_directory_path(errore); !errore) {
        luoghi.push_back(temporanea);
    }
    return luoghi;
}

std::string Valore(const CampoProgetto& campo) {
    return std::visit(
        [](auto membro) -> std::string {
            const auto& valore = DatiProgetto.*membro;
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(valore)>, std::string>) {
                return InUnaRiga(valore);
            } else {
                return TestoNumero(std::int64_t{valore});
            }
        },
        campo);
}

void Imposta(const CampoProgetto& campo, std::string_view testo) {
    std::visit(
        [testo](auto membro) {
            auto& valore = DatiProgetto.*membro;
            using Tipo = std::remove_reference_t<decltype(valore)>;
            if constexpr (std::is_same_v<Tipo, std::string>) {
                valore = DaUnaRiga(testo);
            } else if (const auto numero = LeggiInt32(testo)) {
                valore = static_cast<Tipo>(*numero);
            }
        },
        campo);
}

/// The parts of such a file.
struct Parti {
    std::vector<std::pair<std::string_view, std::string_view>> Valori;  ///< before the records
    std::vector<std::string_view> Giri;
    std::string_view Blocchi;

    std::string_view Di(std::string_view nome) const {
        for (const auto& [chiave, valore] : Valori) {
            if (chiave == nome) return valore;
        }
        return {};
    }
    std::int32_t Numero(std::string_view nome) const { return LeggiInt32(Di(nome)).value_or(0); }
};

std::optional<Parti> Dividi(std::string_view testo) {
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRiga) return std::nullopt;
    Parti parti;
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        const std::size_t uguale = riga.find('=');
        if (uguale == std::string_view::npos) return std::nullopt;
        const std::string_view chiave = riga.substr(0, uguale);
        const std::string_view valore = riga.substr(uguale + 1);
        if (chiave == "lap") {
            parti.Giri.push_back(valore);
            continue;
        }
        if (chiave != "records") {
            parti.Valori.emplace_back(chiave, valore);
            continue;
        }
        const auto numero = LeggiInt32(valore);
        const auto inizio =
            static_cast<std::size_t>(valore.data() + valore.size() - testo.data()) + 2;
        if (!numero || *numero < 0 || static_cast<std::size_t>(*numero) > kBlocchiMassimi ||
            inizio > testo.size()) {
            return std::nullopt;
        }
        const std::size_t byte = static_cast<std::size_t>(*numero) * kByteBlocco;
        // Cut short or grown: not what was written.
        if (testo.substr(inizio).size() != byte + 2 + kUltimaRiga.size() ||
            testo.substr(inizio + byte + 2) != kUltimaRiga) {
            return std::nullopt;
        }
        parti.Blocchi = testo.substr(inizio, byte);
        return parti;
    }
    return std::nullopt;
}

void RiprendiProgetto(const Parti& parti) {
    for (const DescrizioneCampo& campo : kCampiProgetto) {
        AzzeraCampo(campo);
        Imposta(campo.Campo, parti.Di("field." + std::string(campo.Nome)));
    }
    PercorsoProgetto = PercorsoDaRiga(DaUnaRiga(parti.Di("path")));
    progettoAperto().SenzaFile = parti.Numero("untitled") != 0;
    ProgettoModificato = true;
    AbilitaModificaProgetto();
    const bool conFile = !PercorsoProgetto.empty() && !progettoAperto().SenzaFile;
    principale().Abilita(Comando::Save, conFile);
    principale().Abilita(Comando::SaveAs, true);
    principale().Abilita(Comando::ReadDev, true);
    principale().Abilita(Comando::ProgDev, conFile);
    principale().TestoPannello(Pannello::Progetto, DatiProgetto.NomeProgetto.empty()
                                                       ? Testo(Voce::ProgettoSenzaNome)
                                                       : DatiProgetto.NomeProgetto);
    principale().TestoPannello(Pannello::Percorso,
                               conFile ? TestoDaPercorso(PercorsoProgetto) : std::string());
}

void RiprendiLog(const Parti& parti) {
    AzzeraBufferLog();
    for (std::size_t i = 0; i < parti.Blocchi.size(); i += kByteBlocco) {
        BlocchiLog.emplace_back(parti.Blocchi.substr(i, kByteBlocco));
    }
    NumBlocchi = static_cast<std::int32_t>(BlocchiLog.size());
    NumeroGiri =
        static_cast<std::int16_t>(std::clamp(parti.Numero("laps"), 0, std::int32_t{INT16_MAX}));
    for (std::size_t i = 0; i < parti.Giri.size() && i + 1 < TabellaGiri.size(); ++i) {
        TabellaGiri[i + 1] = DaUnaRiga(parti.Giri[i]);
    }
    logInMemoria().Parziale = parti.Numero("partial") != 0;
    logInMemoria().DaSalvare = true;
    principale().AbilitaMenu(Comando::SaveData, true);
}

struct Trovato {
    fs::path File;
    fs::file_time_type Scritto;
};

std::vector<Trovato> Cerca() {
    std::vector<Trovato> trovati;
    for (const fs::path& luogo : Luoghi()) {
        std::error_code errore;
        fs::directory_iterator voci(luogo, errore);
        for (; !errore && voci != fs::directory_iterator(); voci.increment(errore)) {
            const fs::path file = voci->path();
            std::error_code ignorato;
            const auto scritto = fs::last_write_time(file, ignorato);
            if (file.extension() == kFineSoccorso && !ignorato && FileProprio(file)) {
                trovati.push_back({file, scritto});
            }
        }
    }
    std::sort(trovati.begin(), trovati.end(),
              [](const Trovato& a, const Trovato& b) { return a.Scritto > b.Scritto; });
    return trovati;
}

/// The question about one file; empty: it holds nothing that could be taken back.
std::optional<Answer> Chiedi(const fs::path& file, std::string_view testo) {
    const auto contenuto = GuardaSoccorso(testo);
    if (!contenuto) return std::nullopt;
    std::string cosa;
    if (contenuto->Progetto) {
        cosa += "\r\n" + Testo(Voce::SoccorsoProgetto) + " " + contenuto->NomeProgetto;
    }
    if (contenuto->Blocchi > 0) {
        cosa += "\r\n" + Testo(Voce::SoccorsoLog) + " " + TestoNumero(contenuto->Blocchi);
    }
    return platform().MsgBox(Testo(Voce::SoccorsoTrovato) + "\r\n" + TestoDaPercorso(file) +
                                 "\r\n" + cosa + "\r\n\r\n" + Testo(Voce::SoccorsoDomanda),
                             Buttons::YesNoCancel, Icon::Question, platform().ExeName());
}

}  // namespace

std::string ScriviSoccorso(bool progetto, bool log) {
    std::string testo(kPrimaRiga);
    const auto riga = [&testo](std::string_view chiave, const std::string& valore) {
        testo.append("\r\n").append(chiave).append("=").append(valore);
    };
    riga("written", platform().Now());
    if (progetto) {
        riga("project", "1");
        riga("path", InUnaRiga(RigaDaPercorso(PercorsoProgetto)));
        riga("untitled", progettoAperto().SenzaFile ? "1" : "0");
        for (const DescrizioneCampo& campo : kCampiProgetto) {
            riga("field." + std::string(campo.Nome), Valore(campo.Campo));
        }
    }
    const std::size_t blocchi = log ? BlocchiLog.size() : 0;
    if (log) {
        riga("partial", logInMemoria().Parziale ? "1" : "0");
        riga("laps", TestoNumero(int{NumeroGiri}));
        for (int giro = 1; giro <= NumeroGiri && giro < kGiriTabella; ++giro) {
            riga("lap", InUnaRiga(TabellaGiri[static_cast<std::size_t>(giro)]));
        }
    }
    riga("records", TestoNumero(static_cast<std::int64_t>(blocchi)));
    testo += "\r\n";
    testo.reserve(testo.size() + blocchi * kByteBlocco + 8);
    for (std::size_t b = 0; b < blocchi; ++b) testo += BlocchiLog[b];
    testo += "\r\n";
    return testo.append(kUltimaRiga);
}

std::optional<ContenutoSoccorso> GuardaSoccorso(std::string_view testo) {
    const auto parti = Dividi(testo);
    if (!parti) return std::nullopt;
    ContenutoSoccorso contenuto;
    contenuto.Progetto = parti->Numero("project") != 0;
    contenuto.Blocchi = static_cast<std::int32_t>(parti->Blocchi.size() / kByteBlocco);
    contenuto.NomeProgetto = DaUnaRiga(parti->Di("field.NomeProgetto"));
    if (contenuto.NomeProgetto.empty()) {
        contenuto.NomeProgetto = TestoDaPercorso(PercorsoDaRiga(DaUnaRiga(parti->Di("path"))));
    }
    if (contenuto.NomeProgetto.empty()) contenuto.NomeProgetto = Testo(Voce::ProgettoSenzaNome);
    if (!contenuto.Progetto && contenuto.Blocchi == 0) return std::nullopt;
    return contenuto;
}

void RiprendiSoccorso(std::string_view testo) {
    const auto parti = Dividi(testo);
    if (!parti) return;
    if (parti->Numero("project") != 0) RiprendiProgetto(*parti);
    if (!parti->Blocchi.empty()) RiprendiLog(*parti);
}

EsitoSoccorso MettiDaParte() {
    const bool log = logInMemoria().DaSalvare && !BlocchiLog.empty();
    if (!ProgettoModificato && !log) return {};
    const std::string testo = ScriviSoccorso(ProgettoModificato, log);
    for (const fs::path& luogo : Luoghi()) {
        constexpr std::array<std::string_view, 2> kFini = {kFineSoccorso, kFineRifiutato};
        const fs::path file =
            luogo / PercorsoDaTesto(NomeLibero(luogo, "Lapvane " + platform().Stamp(), kFini) +
                                    std::string(kFineSoccorso));
        try {
            ScriviFile(file, testo, Lavoro::SalvareProgetto);
        } catch (const ErroreRuntime&) {
            continue;
        }
        // All that was taken back and is not saved stands in the new file as well.
        std::error_code ignorato;
        if (!fileRipreso.empty()) fs::remove(fileRipreso, ignorato);
        fileRipreso.clear();
        return {true, file};
    }
    return {true, {}};
}

void OffriSoccorso() {
    for (const Trovato& trovato : Cerca()) {
        std::string testo;
        try {
            testo = LeggiFile(trovato.File, Lavoro::LeggereFile, kByteMassimi);
        } catch (const ErroreRuntime&) {
            continue;
        }
        const auto risposta = Chiedi(trovato.File, testo);
        if (risposta == Answer::Yes) {
            RiprendiSoccorso(testo);
            fileRipreso = trovato.File;
            return;
        }
        if (risposta == Answer::No) {
            fs::path rifiutato = trovato.File;
            std::error_code ignorato;
            fs::rename(trovato.File, rifiutato.replace_extension(kFineRifiutato), ignorato);
        }
    }
}

void ConcludiSoccorso() {
    if (!ProgettoModificato) FineSoccorso();
}

void LasciaSoccorso(bool nonSalvato) {
    if (nonSalvato) fileRipreso.clear();
}

void FineSoccorso() {
    if (fileRipreso.empty() || logInMemoria().DaSalvare) return;
    std::error_code ignorato;
    fs::remove(fileRipreso, ignorato);
    fileRipreso.clear();
}

}  // namespace lapvane
