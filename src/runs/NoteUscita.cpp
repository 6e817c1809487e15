#include "runs/NoteUscita.h"

#include <algorithm>
#include <array>

#include "analysis/ElencoCanali.h"
#include "analysis/LettoreDati.h"
#include "platform/FileTesto.h"
#include "reports/FileSessione.h"
#include "runs/LetturaUscita.h"

namespace lapvane {

namespace {

constexpr std::string_view kCrLf = "\r\n";

/// The keys of the lines up to the notes; nobody reads them.
constexpr std::array<std::string_view, kRigaNote> kChiavi = {
    "Sessione=",       "DataSessione=",    "OraSessione=", "Circuito=",
    "LunghTracciato=", "VeicoloSessione=", "Piloti=",      "NoteSessione="};

std::string Valore(std::string_view note) {
    if (note.empty()) return " ";
    std::string valore;
    for (std::size_t i = 0; i < note.size(); ++i) {
        if (note.substr(i, 2) == kCrLf) ++i;
        valore += note[i] == '\r' || note[i] == '\n' ? ' ' : note[i];
    }
    return valore;
}

/// What ends the line that a text begins with, and what ends the others if nothing does.
std::string_view FineRiga(std::string_view testo) {
    const std::size_t dove = testo.find_first_of("\r\n");
    if (dove == std::string_view::npos) return kCrLf;
    return testo.substr(dove, testo.substr(dove, 2) == kCrLf ? 2 : 1);
}

/// The .ses file of a log that has none, as the first OK of its analysis would make it.
std::string SessioneNuova(const std::filesystem::path& csv, std::string_view note) {
    const std::string inizio = LeggiFile(csv, Lavoro::LeggereLog, kTitoloMassimo * kNumCanali);
    std::vector<std::string> titoli;
    const LettoreDati lettore(inizio);
    std::string_view resto = lettore.Titolo();
    for (bool ancora = true; ancora && titoli.size() < kUltimoCanale;) {
        const std::size_t fine = resto.find(';');
        titoli.emplace_back(resto.substr(0, std::min(fine, kTitoloMassimo)));
        ancora = fine != std::string_view::npos;
        if (ancora) resto.remove_prefix(fine + 1);
    }
    ElencoCanali canali;
    canali.NumCampi(static_cast<int>(titoli.size()));
    canali.Nomina([&titoli](int c) { return titoli[static_cast<std::size_t>(c - 1)]; });
    RecordSessione sessione;
    sessione.NoteSessione = note;
    return ScriviSessione(sessione, canali.PerSessione());
}

}  // namespace

std::string ConNote(std::string_view ses, std::string_view note) {
    std::string nuovo;
    const std::string_view fineRiga = FineRiga(ses);
    int riga = 1;
    std::string_view resto = ses;
    for (; riga < kRigaNote && !resto.empty(); ++riga) {
        const std::size_t lunga = resto.find_first_of("\r\n");
        const std::size_t oltre =
            lunga == std::string_view::npos ? resto.size() : lunga + FineRiga(resto).size();
        nuovo += resto.substr(0, oltre);
        if (lunga == std::string_view::npos) nuovo += fineRiga;
        resto.remove_prefix(oltre);
    }
    for (; riga < kRigaNote; ++riga) {
        nuovo += kChiavi[static_cast<std::size_t>(riga - 1)];
        nuovo.append(" ").append(fineRiga);
    }
    const bool manca = resto.empty();
    const std::string_view vecchia = resto.substr(0, resto.find_first_of("\r\n"));
    const std::size_t uguale = vecchia.find('=');
    nuovo += uguale == std::string_view::npos ? kChiavi.back() : vecchia.substr(0, uguale + 1);
    nuovo += Valore(note);
    nuovo += manca ? fineRiga : resto.substr(vecchia.size());
    return nuovo;
}

void SalvaNote(const std::filesystem::path& csv, std::string_view note) {
    const std::filesystem::path file = FileSessione(csv);
    if (!FileEsiste(file)) {
        ScriviFile(file, SessioneNuova(csv, note), Lavoro::ScrivereSessione);
        return;
    }
    const std::string nuovo = ConNote(LeggiFile(file, Lavoro::LeggereSessione), note);
    ScriviFile(file, nuovo, Lavoro::ScrivereSessione);
}

}  // namespace lapvane
