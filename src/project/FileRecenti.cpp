#include "project/FileRecenti.h"

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/FileProgetto.h"
#include "shell/FrasiErrore.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

std::array<std::string, 5> ListaRecenti;
int NumRecenti = 0;

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
    NumRecenti = 0;
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
        if (NumRecenti >= kVociMenu) {
            throw ErroreRuntime(NumeroErrore::Subscript, kLettura, File(), righe.Numero());
        }
        ListaRecenti[static_cast<std::size_t>(NumRecenti)] = riga;
        principale().MostraFileRecente(NumRecenti, PercorsoDaRiga(riga));
        ++NumRecenti;
    }
}

/// Puts `FileRecenteScelto` on top and returns the text of the file.
std::string Componi() {
    const std::string scelto = RigaDaPercorso(FileRecenteScelto);
    // The places above the one that falls free move down into it, so that opening what is on the
    // list already loses nothing.
    std::size_t libera = kVociMenu - 1;
    for (std::size_t i = kVociMenu; i-- > 0;) {
        if (ListaRecenti[i] != scelto) continue;
        ListaRecenti[i].clear();
        libera = i;
    }
    for (std::size_t i = libera; i > 0; --i) ListaRecenti[i] = ListaRecenti[i - 1];
    ListaRecenti[0] = scelto;
    std::string testo = AnalisiSpeed ? "1\r\n" : "0\r\n";
    for (int i = 0; i <= NumRecenti; ++i) {
        const std::string& voce = ListaRecenti[static_cast<std::size_t>(i)];
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
    ApriRecente(ListaRecenti.at(static_cast<std::size_t>(indice)));
}

void ApriRecente(const std::string& riga) {
    FileRecenteScelto = PercorsoDaRiga(riga);
    mnuOpen_Click();
    FileRecenteScelto.clear();
}

}  // namespace lapvane
