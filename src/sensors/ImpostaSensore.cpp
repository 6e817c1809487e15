#include "sensors/ImpostaSensore.h"

#include <filesystem>
#include <optional>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "sensors/FileSensore.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEstensione = ".sns";

/// Whether the file of a name would lie in the library and be listed there: no other folder, no
/// hidden file, no character that the program's text lacks.
bool NomeAmmesso(const std::string& utf8) {
#ifdef _WIN32
    constexpr std::string_view kAltrove = "/\\:";
#else
    constexpr std::string_view kAltrove = "/";
#endif
    return utf8.find_first_of(kAltrove) == std::string::npos && utf8.front() != '.' &&
           Utf8Da1252(Utf8In1252(utf8)) == utf8;
}

/// The file of the folder that has that name without regard to case; the one of the very name comes
/// first.
std::optional<fs::path> FileUguale(const fs::path& file) {
    std::optional<fs::path> trovato;
    for (const fs::path& altro : ElencaPercorsi(CartellaSensori())) {
        if (altro.filename() == file) return altro;
        if (!trovato && StessoNome(altro.filename(), file)) trovato = altro;
    }
    return trovato;
}

enum class Esito { Salvato, Annullato, Fallito };

Esito Scrivi(std::string_view tipo, const std::string& utf8, const TabellaPunti& tabella,
             const std::string& percorso, std::string& motivo) {
    const std::string nome = Utf8In1252(utf8);
    const fs::path file = PercorsoDaTesto(nome + std::string(kEstensione));
    try {
        const auto vecchio = FileUguale(file);
        if (vecchio &&
            platform().MsgBox(
                Testo(Voce::IlFileConSpazio) + percorso + " " + Testo(Voce::EsisteGia),
                Buttons::OkCancel, Icon::Question, Testo(Voce::SostituzioneFile)) != Answer::Ok) {
            return Esito::Annullato;
        }
        // The file that the question was about is the one that is replaced.
        const fs::path dove = vecchio.value_or(CartellaSensori() / file);
        ScriviSensore(dove, tipo, nome, tabella.AsseX(), tabella.AsseY());
        return Esito::Salvato;
    } catch (const ErroreRuntime& errore) {
        motivo = Motivo(errore);
        return Esito::Fallito;
    }
}

}  // namespace

std::size_t TipoDelCanale(int canale) {
    const auto posto = static_cast<std::size_t>(canale);
    return static_cast<std::size_t>(kCanaliSensore.at(posto).Sensore - kTipiSensore.data());
}

std::vector<std::string> NomiSensori(std::string_view tipo) {
    std::vector<std::string> nomi;
    for (const CSensore& sensore : LibreriaSensori) {
        if (sensore.Tipo() == tipo) nomi.push_back(sensore.Nome());
    }
    return nomi;
}

const CSensore* CercaSensore(std::string_view nome) {
    for (const CSensore& sensore : LibreriaSensori) {
        if (sensore.Nome() == nome) return &sensore;
    }
    return nullptr;
}

bool SalvaSensore(std::string_view tipo, const std::string& nome, const TabellaPunti& tabella,
                  const std::string& titolo) {
    if (nome.empty()) {
        platform().MsgBox(Testo(Voce::InserireNomeSensore), Buttons::Ok, Icon::Critical, titolo);
        return false;
    }
    const std::string percorso =
        TestoDaPercorso(CartellaSensori() / "") + Utf8In1252(nome) + std::string(kEstensione);
    // Nothing is written of what could not be read again: no empty sensor, none outside the
    // library.
    const bool ammesso = NomeAmmesso(nome);
    if (!ammesso || tabella.NumPuntiTabella() <= 0) {
        const Voce rifiuto = ammesso ? Voce::MotivoSenzaPunti : Voce::MotivoNome;
        platform().MsgBox(Testo(rifiuto) + "\r\n\"" + Utf8In1252(nome) + "\"\r\n\r\n" +
                              Testo(Voce::SensoreNonSalvato),
                          Buttons::Ok, Icon::Critical, titolo);
        return false;
    }
    std::string motivo;
    const Esito esito = Scrivi(tipo, nome, tabella, percorso, motivo);
    if (esito == Esito::Fallito) {
        platform().MsgBox(Testo(Voce::IlFile) + " " + percorso + " " + Testo(Voce::NonTrovato) +
                              "\r\n\r\n" + motivo + "\r\n" + Testo(Voce::SensoreNonSalvato),
                          Buttons::Ok, Icon::Critical, titolo);
    }
    if (esito != Esito::Salvato) return false;
    SvuotaLibreriaSensori();
    CaricaLibreriaSensori();
    return true;
}

}  // namespace lapvane
