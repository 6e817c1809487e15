#include "project/FileRecenti.h"

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/FileProgetto.h"
#include "shell/FrasiErrore.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

ElencoRecenti& recenti() {
    static ElencoRecenti elenco;
    return elenco;
}

namespace {

constexpr int kVociMenu = 4;
constexpr Lavoro kLettura = Lavoro::LeggereRecenti;
constexpr Lavoro kScrittura = Lavoro::ScrivereRecenti;

// No system has longer paths: a line that is longer is none.
constexpr std::size_t kRigaMassima = 32767;
constexpr std::size_t kByteMassimi = std::size_t{16} << 20;

std::filesystem::path File() {
    return platform().AppPath() / "RecentFiles.ini";
}

void Leggi(const std::string& contenuto) {
    ElencoRecenti& elenco = recenti();
    elenco.Quante = 0;
    principale().NascondiFileRecenti();
    LettoreRighe righe(contenuto);
    while (!righe.Fine()) {
        const std::string_view intera = righe.Prossima();
        if (intera.size() > kRigaMassima) continue;
        const std::string riga(intera);
        if (riga == "0" || riga == "1") {
            AnalisiSpeed = riga == "1";
            continue;
        }
        if (elenco.Quante >= kVociMenu) {
            throw ErroreRuntime(NumeroErrore::Subscript, kLettura, File(), righe.Numero());
        }
        elenco.Righe[static_cast<std::size_t>(elenco.Quante)] = riga;
        principale().MostraFileRecente(elenco.Quante, PercorsoDaRiga(riga));
        ++elenco.Quante;
    }
}

/// Puts `FileRecenteScelto` on top and returns the text of the file.
std::string Componi() {
    ElencoRecenti& elenco = recenti();
    const std::string scelto = RigaDaPercorso(FileRecenteScelto);
    // The places above the one that falls free move down into it, so that opening what is on the
    // list already loses nothing.
    std::size_t libera = kVociMenu - 1;
    for (std::size_t i = kVociMenu; i-- > 0;) {
        if (!StessoPercorso(PercorsoDaRiga(elenco.Righe[i]), FileRecenteScelto)) continue;
        elenco.Righe[i].clear();
        libera = i;
    }
    for (std::size_t i = libera; i > 0; --i) elenco.Righe[i] = elenco.Righe[i - 1];
    elenco.Righe[0] = scelto;
    std::string testo = AnalisiSpeed ? "1\r\n" : "0\r\n";
    for (int i = 0; i <= elenco.Quante; ++i) {
        const std::string& voce = elenco.Righe[static_cast<std::size_t>(i)];
        if (!voce.empty()) testo += voce + "\r\n";
    }
    return testo;
}

}  // namespace

void LeggiFileRecenti() {
    Leggi(LeggiFile(File(), kLettura, kByteMassimi));
}

void ScriviFileRecenti() {
    ScriviFile(File(), Componi(), kScrittura);
}

void AggiornaFileRecenti() {
    const std::string testo = Componi();
    try {
        ScriviFile(File(), testo, kScrittura);
    } catch (const ErroreRuntime& errore) {
        SegnalaScrittura(errore, Voce::RecentiNonSalvati);
        Leggi(testo);
        return;
    }
    LeggiFileRecenti();
}

void mnuRecentFiles_Click(int indice) {
    ApriRecente(recenti().Righe.at(static_cast<std::size_t>(indice)));
}

void ApriRecente(const std::string& riga) {
    FileRecenteScelto = PercorsoDaRiga(riga);
    mnuOpen_Click();
    FileRecenteScelto.clear();
}

}  // namespace lapvane
