#include "logs/Impostazioni.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <variant>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/Ricordi.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

// The line behind those of a project; the number is that of the format. It comes last, so that
// whoever sees it has the whole file.
constexpr std::string_view kChiave = "Lapvane settings=";
constexpr std::string_view kFormato = "1";
constexpr std::string_view kFineRiga = "\r\n";
constexpr std::size_t kByteMassimi = std::size_t{16} << 20;  // as of a project file

constexpr std::string_view kFileScelta = "Download.lapvane";
constexpr std::string_view kPrimaRigaScelta = "lapvane-download 1";
constexpr std::string_view kRigaScelta = "settings=";

/// Whether a text is a copy, whatever its format.
bool ECopia(std::string_view testo) {
    if (!RigheProgetto(testo) || !testo.ends_with(kFineRiga)) return false;
    const std::size_t riga = testo.rfind('\n', testo.size() - kFineRiga.size()) + 1;
    return testo.substr(riga).starts_with(kChiave);
}

/// The text of a copy; empty: the file is none, or can't be read.
std::string TestoCopia(const fs::path& file) {
    try {
        if (!FileEsiste(file)) return {};
        std::string testo = LeggiFile(file, Lavoro::LeggereImpostazioni, kByteMassimi);
        return ECopia(testo) ? testo : std::string();
    } catch (const ErroreRuntime&) {
        return {};
    }
}

/// A text without line breaks: a blank stands for each.
void InRiga(std::string& testo) {
    for (std::size_t i = 0; i < testo.size(); ++i) {
        if (testo[i] == '\r' && i + 1 < testo.size() && testo[i + 1] == '\n') testo.erase(i, 1);
        if (testo[i] == '\r' || testo[i] == '\n') testo[i] = ' ';
    }
}

/// Removes a copy; the message if that fails.
std::string Togli(const fs::path& csv) {
    if (TogliImpostazioni(csv)) return {};
    return Testo(Voce::ImpostazioniVecchie) + "\r\n" + TestoDaPercorso(FileImpostazioni(csv));
}

}  // namespace

fs::path FileImpostazioni(const fs::path& csv) {
    return SenzaFine(csv, 3, "set");
}

std::string TestoImpostazioni(const RecordProgetto& record) {
    RecordProgetto copia = record;
    for (const DescrizioneCampo& descrizione : kCampiProgetto) {
        if (const auto* testo = std::get_if<std::string RecordProgetto::*>(&descrizione.Campo)) {
            InRiga(copia.**testo);
        }
    }
    return TestoProgetto(copia).append(kChiave).append(kFormato).append(kFineRiga);
}

bool ImpostazioniDaTesto(std::string_view testo, RecordProgetto& record) {
    if (!ECopia(testo)) return false;
    ValoriFile valori;
    LeggiValoriProgetto(*RigheProgetto(testo), valori);
    // A line too many or too few would have shifted the values behind it.
    const auto fine = std::find(valori.begin() + kNumCampiProgetto, valori.end(), std::string());
    if (fine != valori.begin() + kNumCampiProgetto + 1) return false;
    if (valori[kNumCampiProgetto] != kFormato) return false;
    RecordProgetto letto;
    if (!ApplicaValoriProgetto(valori, letto)) return false;
    record = letto;
    return true;
}

bool LeggiImpostazioni(const fs::path& csv, RecordProgetto& record) {
    return ImpostazioniDaTesto(TestoCopia(FileImpostazioni(csv)), record);
}

bool CopiaScelta() {
    const std::string testo = LeggiRicordo(kFileScelta, Lavoro::LeggereImpostazioni);
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRigaScelta) return true;
    return righe.Prossima() != std::string(kRigaScelta) + "0";
}

void ScegliCopia(bool copia) {
    std::string testo(kPrimaRigaScelta);
    testo.append("\n").append(kRigaScelta).append(copia ? "1\n" : "0\n");
    ScriviFile(platform().AppPath() / kFileScelta, testo, Lavoro::ScegliereCopia);
}

void ScriviImpostazioni(const fs::path& csv) {
    ScriviFile(FileImpostazioni(csv), TestoImpostazioni(DatiProgetto),
               Lavoro::ScrivereImpostazioni);
}

bool TogliImpostazioni(const fs::path& csv) {
    const fs::path file = FileImpostazioni(csv);
    if (TestoCopia(file).empty()) return true;
    return Elimina(file);
}

std::string AggiornaImpostazioni(const fs::path& csv) {
    if (!CopiaScelta() || !ProgettoPresente()) return Togli(csv);
    const fs::path file = FileImpostazioni(csv);
    if (FileEsiste(file) && TestoCopia(file).empty()) {
        return Testo(Voce::ImpostazioniEstranee) + "\r\n" + TestoDaPercorso(file) + "\r\n\r\n" +
               Testo(Voce::ImpostazioniNonCopiate);
    }
    try {
        ScriviImpostazioni(csv);
        return {};
    } catch (const ErroreRuntime& errore) {
        const std::string resta = Togli(csv);
        return FraseScrittura(errore, Voce::ImpostazioniNonCopiate) +
               (resta.empty() ? resta : "\r\n\r\n" + resta);
    }
}

}  // namespace lapvane
