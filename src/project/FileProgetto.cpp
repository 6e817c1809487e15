#include "project/FileProgetto.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "project/FileRecenti.h"
#include "shell/Domande.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

namespace fs = std::filesystem;

ValoriFile ValoriProgetto;

StatoProgetto& progettoAperto() {
    static StatoProgetto stato;
    return stato;
}

bool ProgettoPresente() {
    return progettoAperto().SenzaFile || !PercorsoProgetto.empty();
}

namespace {

constexpr std::string_view kMagia = "ZEVProject";
// Kept: the input's flag has a key but never reaches the file and never comes back from it.
constexpr std::size_t kPosizioneIngresso = 80;
constexpr std::size_t kMassimoProgetto = std::size_t{16} << 20;
constexpr std::string_view kFiltro = "Project File (*.pro)|*.pro";

std::string ValoreInTesto(const CampoProgetto& campo, const RecordProgetto& record) {
    return std::visit(
        [&record](auto membro) -> std::string {
            const auto& valore = record.*membro;
            using Tipo = std::remove_cvref_t<decltype(valore)>;
            if constexpr (std::is_same_v<Tipo, std::string>) {
                return valore.empty() ? " " : valore;
            } else if constexpr (std::is_same_v<Tipo, bool>) {
                return valore ? "1" : "0";
            } else {
                return TestoNumero(std::int64_t{valore});
            }
        },
        campo);
}

/// A flag of a file: any number, 0 alone is false, or one of the two words in any case.
std::optional<bool> LeggiFlag(std::string_view testo) {
    if (const auto numero = LeggiNumero(testo)) return *numero != 0.0;
    if (UgualiSenzaMaiuscole(Rifila(testo), "true")) return true;
    if (UgualiSenzaMaiuscole(Rifila(testo), "false")) return false;
    return std::nullopt;
}

/// False if the value is no number of the field's type; a fraction is rounded, ties to even.
bool Applica(const CampoProgetto& campo, const std::string& testo, RecordProgetto& record) {
    return std::visit(
        [&](auto membro) {
            auto& valore = record.*membro;
            using Tipo = std::remove_reference_t<decltype(valore)>;
            if constexpr (std::is_same_v<Tipo, std::string>) {
                valore = testo;
                return true;
            } else {
                std::optional<Tipo> numero;
                if constexpr (std::is_same_v<Tipo, bool>) {
                    numero = LeggiFlag(testo);
                } else if constexpr (std::is_same_v<Tipo, std::int16_t>) {
                    numero = LeggiInt16(testo);
                } else {
                    numero = LeggiInt32(testo);
                }
                if (numero) valore = *numero;
                return numero.has_value();
            }
        },
        campo);
}

}  // namespace

std::string TestoProgetto(const RecordProgetto& record) {
    std::string testo(kMagia);
    testo += "\r\n";
    for (std::size_t i = 0; i < kCampiProgetto.size(); ++i) {
        testo += "ID_";
        testo += kCampiProgetto[i].Nome;
        testo += '=';
        testo += i == kPosizioneIngresso ? "0" : ValoreInTesto(kCampiProgetto[i].Campo, record);
        testo += "\r\n";
    }
    return testo;
}

std::string TestoProgetto() {
    return TestoProgetto(DatiProgetto);
}

void SalvaProgetto() {
    // Until it is written it is not saved: the door puts it aside if the write fails.
    ProgettoModificato = true;
    ScriviFile(PercorsoProgetto, TestoProgetto(), Lavoro::SalvareProgetto);
    principale().Abilita(Comando::Save, true);
    principale().TestoPannello(Pannello::Progetto, DatiProgetto.NomeProgetto.empty()
                                                       ? "No Project Name"
                                                       : DatiProgetto.NomeProgetto);
    principale().TestoPannello(Pannello::Percorso, TestoDaPercorso(PercorsoProgetto));
    ProgettoModificato = false;
    progettoAperto().SenzaFile = false;
    principale().Salvato();
}

bool LeggiValoriProgetto(std::string_view righe, ValoriFile& valori) {
    for (std::string& valore : valori) valore.clear();
    std::size_t posizione = 0;
    LettoreRighe lettore(righe);
    while (!lettore.Fine()) {
        std::string_view riga = lettore.Prossima();
        const std::size_t uguale = riga.find('=');
        if (uguale == std::string_view::npos) continue;
        riga.remove_prefix(uguale + 1);
        if (!riga.empty() && riga.front() == '"') riga.remove_prefix(1);
        if (!riga.empty() && riga.back() == '"') riga.remove_suffix(1);
        if (posizione == valori.size()) return false;
        valori[posizione++] = riga;
    }
    return true;
}

bool LeggiValoriProgetto(std::string_view righe) {
    return LeggiValoriProgetto(righe, ValoriProgetto);
}

std::optional<std::string_view> RigheProgetto(std::string_view testo) {
    LettoreRighe righe(testo);
    const std::string_view prima = righe.Prossima();
    if (prima != kMagia) return std::nullopt;
    const auto letti = static_cast<std::size_t>(prima.data() - testo.data()) + prima.size();
    return testo.substr(std::min(testo.size(), letti));
}

bool LeggiProgetto(const fs::path& scelto) {
    const fs::path percorso = scelto.has_parent_path() ? scelto : platform().AppPath() / scelto;
    const auto rifiuta = [](const std::string& testo) {
        platform().MsgBox(testo, Buttons::Ok, Icon::Critical, platform().ExeName());
        return false;
    };
    if (!FileEsiste(percorso)) {
        return rifiuta(Testo(Voce::IlFile) + " " + TestoDaPercorso(percorso) + " " +
                       Testo(Voce::NonTrovato));
    }
    std::string contenuto;
    try {
        // The reading ends at the 202nd value at the latest: no more of a huge file is of use.
        contenuto = LeggiFile(percorso, Lavoro::AprireProgetto, kMassimoProgetto);
    } catch (const ErroreRuntime&) {
        return rifiuta(Testo(Voce::IlFile) + " " + TestoDaPercorso(percorso) + " " +
                       Testo(Voce::NonTrovato));
    }
    if (contenuto.empty()) {
        // Kept: the wording of the language file.
        return rifiuta(Testo(Voce::TabellaTestiGuasta) + " " + TestoDaPercorso(percorso) + " " +
                       Testo(Voce::TabellaTestiMancante));
    }
    const auto righe = RigheProgetto(contenuto);
    if (!righe) return rifiuta(Testo(Voce::NonEUnProgetto));
    LeggiValoriProgetto(*righe);
    ApplicaValoriProgetto();
    return true;
}

bool ApplicaValoriProgetto(const ValoriFile& valori, RecordProgetto& record) {
    for (std::size_t i = 0; i < kCampiProgetto.size(); ++i) {
        if (i == kPosizioneIngresso) continue;
        if (!Applica(kCampiProgetto[i].Campo, valori[i], record)) return false;
    }
    return true;
}

void ApplicaValoriProgetto() {
    ApplicaValoriProgetto(ValoriProgetto, DatiProgetto);
}

void mnuNew_Click() {
    ValoriInizialiProgetto();
    principale().TestoPannello(Pannello::Progetto, Testo(Voce::ProgettoSenzaNome));
    principale().TestoPannello(Pannello::Percorso, "");
    ProgettoModificato = false;
    progettoAperto().SenzaFile = true;
    // Kept: `PercorsoProgetto` stays what it was, and Save is off until the next Save As.
    principale().Abilita(Comando::Save, false);
    principale().Abilita(Comando::SaveAs, true);
    principale().Abilita(Comando::ReadDev, true);
    principale().Abilita(Comando::ProgDev, false);
}

void mnuOpen_Click() {
    // Kept: these fields are cleared before anything else, even if the Open is then cancelled. They
    // are the ones that project files of older versions lack.
    for (std::size_t i = PosizioneCampo("chkAbilRecLap"); i < kCampiProgetto.size(); ++i) {
        AzzeraCampo(kCampiProgetto[i]);
    }
    if (FileRecenteScelto.empty()) {
        const auto scelto = platform().AskOpen(
            {Testo(Voce::ApriProgetto), platform().AppPath(), std::string(kFiltro), {}, {}});
        if (!scelto) return;
        FileRecenteScelto = *scelto;
    }
    // Kept: after a failure the path stays chosen, and the next Open tries it again without asking.
    if (!LeggiProgetto(FileRecenteScelto)) return;
    AbilitaModificaProgetto();
    PercorsoProgetto = FileRecenteScelto;
    principale().TestoPannello(Pannello::Progetto, DatiProgetto.NomeProgetto);
    principale().TestoPannello(Pannello::Percorso, TestoDaPercorso(PercorsoProgetto));
    ProgettoModificato = false;
    progettoAperto().SenzaFile = false;
    for (const Comando c : {Comando::Save, Comando::SaveAs, Comando::ReadDev, Comando::ProgDev}) {
        principale().Abilita(c, true);
    }
    AggiornaFileRecenti();
    FileRecenteScelto.clear();
}

void mnuSave_Click() {
    DatiProgetto.DataUltimaModifica = platform().Now();
    SalvaProgetto();
    principale().Abilita(Comando::ProgDev, true);
}

void mnuSaveAs_Click() {
    // A name to start from, so that the extension is there without being forced on anybody. A
    // project without a file gets one that nothing has: no question protects what is there.
    const fs::path cartella = PercorsoProgetto.parent_path();
    fs::path nome = PercorsoProgetto.filename();
    if (PercorsoProgetto.empty() || progettoAperto().SenzaFile) {
        constexpr std::array<std::string_view, 1> kFine = {".pro"};
        nome = PercorsoDaTesto(NomeLibero(cartella.empty() ? platform().CurDir() : cartella,
                                          Testo(Voce::NuovoProgetto), kFine) +
                               ".pro");
    }
    const auto scelto = platform().AskSave(
        {Testo(Voce::SalvaProgettoConNome), cartella, std::string(kFiltro), nome, {}});
    if (!scelto) return;
    if (!ConfermaSostituzione(*scelto)) return;
    const fs::path prima = std::exchange(PercorsoProgetto, *scelto);
    // Kept: Save As touches the date of creation and Save that of the last change.
    DatiProgetto.DataCreazione = platform().Now();
    try {
        SalvaProgetto();
    } catch (const ErroreRuntime&) {
        PercorsoProgetto = prima;  // what is put aside goes with the file that it came from
        throw;
    }
    principale().Abilita(Comando::ProgDev, true);
}

bool ConfermaChiusura() {
    if (!ProgettoModificato) return true;
    const bool conNome = !DatiProgetto.NomeProgetto.empty();
    const std::string inizio =
        conNome ? Testo(Voce::IlProgetto) + DatiProgetto.NomeProgetto + " " +
                      Testo(Voce::EStatoModificato)
                : Testo(Voce::IlProgettoSenzaNome) + Testo(Voce::EStatoModificato);
    const Answer risposta =
        platform().MsgBox(inizio + "\r\n" + Testo(Voce::SalvareLeModifiche), Buttons::YesNoCancel,
                          Icon::Question, platform().ExeName());
    if (risposta == Answer::Cancel) return false;
    if (risposta == Answer::Yes) {
        // Kept: a Save As that is cancelled here does not stop the program from ending, and the
        // date of the last change is not refreshed.
        if (conNome && !PercorsoProgetto.empty()) {
            SalvaProgetto();
        } else {
            mnuSaveAs_Click();
        }
    }
    return true;
}

}  // namespace lapvane
