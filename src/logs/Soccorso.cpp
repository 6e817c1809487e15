#include "logs/Soccorso.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <system_error>
#include <vector>

#include "logs/BufferLog.h"
#include "logs/DiarioScarico.h"
#include "platform/Cartelle.h"
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
bool ripresoConLog = false;  // that file holds a log as well

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

/// Something that is offered at the start: what was put aside, or a download.
struct Trovato {
    fs::path File;
    std::chrono::sys_time<std::chrono::microseconds> Scritto;
};

bool DaScarico(const fs::path& file) {
    return file.extension() == kFineScarico;
}

std::vector<Trovato> Cerca() {
    std::vector<Trovato> trovati;
    for (const fs::path& luogo : Luoghi()) {
        for (LettoreCartella voci(luogo); !voci.Fine(); voci.Avanti()) {
            const fs::path& file = voci.Voce();
            if (file.extension() != kFineSoccorso || !FileProprio(file)) continue;
            if (const auto misura = Misura(file)) trovati.push_back({file, misura->Scritto});
        }
    }
    for (const ScaricoTenuto& tenuto : ScarichiTenuti(CartellaScarichi())) {
        if (!DaScarico(tenuto.File) || FileCrescente::InUso(tenuto.File)) continue;
        trovati.push_back({tenuto.File, tenuto.Scritto});
    }
    std::stable_sort(trovati.begin(), trovati.end(),
                     [](const Trovato& a, const Trovato& b) { return a.Scritto > b.Scritto; });
    return trovati;
}

/// One of them, read.
struct Offerta {
    bool Progetto = false;
    bool Log = false;
    std::string Domanda;
    std::function<void()> Riprendi;
};

std::string Domanda(Voce trovato, const fs::path& file, const std::string& cosa) {
    return Testo(trovato) + "\r\n" + TestoDaPercorso(file) + "\r\n" + cosa + "\r\n\r\n" +
           Testo(Voce::SoccorsoDomanda);
}

/// Empty: it holds nothing that could be taken back.
std::optional<Offerta> OffertaScarico(const fs::path& file) {
    const auto letto = ApriScarico(file);
    if (!letto) return std::nullopt;
    const auto scarico = std::make_shared<ScaricoSuDisco>(*letto);
    return Offerta{false, true,
                   Domanda(Voce::ScaricoTrovato, file, "\r\n" + FraseArrivato(*scarico)),
                   [scarico, file] {
                       MettiInMemoria(*scarico);
                       logInMemoria().File = file;
                       logInMemoria().TuttoSuDisco = true;
                       principale().AbilitaMenu(Comando::SaveData, true);
                   }};
}

std::optional<Offerta> OffertaSoccorso(const fs::path& file) {
    std::string testo;
    try {
        testo = LeggiFile(file, Lavoro::LeggereFile, kByteMassimi);
    } catch (const ErroreRuntime&) {
        return std::nullopt;
    }
    const auto contenuto = GuardaSoccorso(testo);
    if (!contenuto) return std::nullopt;
    const bool conLog = contenuto->Blocchi > 0;
    std::string cosa;
    if (contenuto->Progetto) {
        cosa += "\r\n" + Testo(Voce::SoccorsoProgetto) + " " + contenuto->NomeProgetto;
    }
    if (conLog) cosa += "\r\n" + Testo(Voce::SoccorsoLog) + " " + TestoNumero(contenuto->Blocchi);
    return Offerta{contenuto->Progetto, conLog, Domanda(Voce::SoccorsoTrovato, file, cosa),
                   [testo = std::move(testo), file, conLog] {
                       RiprendiSoccorso(testo);
                       fileRipreso = file;
                       ripresoConLog = conLog;
                   }};
}

/// It stays, under an ending that is not offered.
void Rifiuta(const fs::path& file) {
    if (DaScarico(file)) {
        ConFineScarico(file, kFineSalvato);
        return;
    }
    fs::path rifiutato = file;
    Sposta(file, rifiutato.replace_extension(kFineRifiutato));
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
    const StatoLog& stato = logInMemoria();
    // A download that stands on the disk is offered from there.
    const bool suDisco = stato.DaSalvare && stato.TuttoSuDisco;
    const bool log = stato.DaSalvare && !suDisco && !BlocchiLog.empty();
    if (!ProgettoModificato && suDisco) return {true, stato.File};
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
        // All that was taken back and is not saved stands in the new file as well, and so does what
        // a download has left on the disk before that took no more.
        if (!fileRipreso.empty()) Elimina(fileRipreso);
        fileRipreso.clear();
        if (log) ScaricoConcluso();
        return {true, file};
    }
    return {true, {}};
}

void OffriSoccorso() {
    bool progetto = false;  // taken back already
    bool log = false;
    for (const Trovato& trovato : Cerca()) {
        const auto offerta =
            DaScarico(trovato.File) ? OffertaScarico(trovato.File) : OffertaSoccorso(trovato.File);
        // What would take the place of something that was just taken back waits for another start.
        if (!offerta || (progetto && offerta->Progetto) || (log && offerta->Log)) continue;
        const Answer risposta = platform().MsgBox(offerta->Domanda, Buttons::YesNoCancel,
                                                  Icon::Question, platform().ExeName());
        if (risposta == Answer::Yes) {
            offerta->Riprendi();
            progetto = progetto || offerta->Progetto;
            log = log || offerta->Log;
        }
        if (risposta == Answer::No) Rifiuta(trovato.File);
    }
}

void ConcludiSoccorso() {
    if (!ProgettoModificato) FineSoccorso();
}

void LasciaSoccorso(bool nonSalvato) {
    if (nonSalvato) fileRipreso.clear();
}

void FineSoccorso() {
    if (fileRipreso.empty() || (ripresoConLog && logInMemoria().DaSalvare)) return;
    Elimina(fileRipreso);
    fileRipreso.clear();
}

}  // namespace lapvane
