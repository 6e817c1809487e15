#include "analysis/AnalisiDatiSpeed.h"

#include <cmath>
#include <new>
#include <utility>

#include "analysis/Schema.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kVersione16Campi = "1.4";
constexpr int kCampiLaterali = 10;
constexpr std::int32_t kRigheSenzaProgresso = 1000;

int Percento(std::int32_t riga, std::int32_t totale) {
    return ConvertiInt16(static_cast<double>(riga) / static_cast<double>(totale) * 100.0);
}

}  // namespace

bool AnalisiDatiSpeed::Carica() {
    Ripara(NomeFileDati);
    Cartella = NomeFileDati.parent_path();
    NomeCsv = NomeFileDati.filename();
    if (!CercaFileLaterale()) return false;
    NumSettori = 1;
    LeggiTempi();
    const PuntatoreOccupato occupato;
    IniziaCaricamento();
    LeggiDati();
    MostraCanali();
    ImpostaCanali(NTGraph1);
    ConcludiCaricamento();
    return true;
}

bool AnalisiDatiSpeed::CercaFileLaterale() {
    // The stem ends before the last point; a name without a point has an empty stem.
    const fs::path::string_type nome = NomeCsv.native();
    const std::size_t punto = nome.rfind('.');
    const fs::path stelo = nome.substr(0, punto == fs::path::string_type::npos ? 0 : punto);
    FileLatiTrovati = true;
    for (const char* estensione : {".txt", ".alm"}) {
        NomeLaterale = stelo;
        NomeLaterale += estensione;
        // Kept: the side file is looked for in the current folder, where the file dialog has left
        // the program, and read from the folder of the log.
        if (FileEsiste(platform().CurDir() / NomeLaterale)) return true;
        FileMancante(TestoDaPercorso(NomeLaterale));
    }
    FileLatiTrovati = false;
    ChiudiAnalisi();
    return false;
}

void AnalisiDatiSpeed::PrimaRigaTempi(std::string_view riga) {
    NumCampi = riga == kVersione16Campi ? 16 : 15;
    NumCampiTxt = kCampiLaterali;
    ScriviSchema();
}

void AnalisiDatiSpeed::ScriviSchema() const {
    try {
        ScriviFile(Cartella / "schema.ini",
                   TestoSchema(TestoDaPercorso(NomeCsv), NumCampi, TestoDaPercorso(NomeLaterale),
                               NumCampiTxt),
                   "writing schema.ini");
    } catch (const ErroreRuntime&) {
        // A log on a medium that cannot be written to is read all the same.
    }
}

void AnalisiDatiSpeed::LeggiTitoli(std::string_view titolo) {
    // Kept: the last title is all that is left of the line, whatever further titles it holds.
    for (int c = 1; c <= UltimoCanaleFile(); ++c) {
        const std::size_t fine =
            c == NumCampi ? titolo.size() : std::min(titolo.find(';'), titolo.size());
        titoli_[static_cast<std::size_t>(c)] = titolo.substr(0, std::min(fine, kTitoloMassimo));
        titolo.remove_prefix(std::min(fine + 1, titolo.size()));
    }
}

void AnalisiDatiSpeed::LeggiDati() {
    const std::string csv = LeggiLog(NomeFileDati);
    LettoreDati lettore(csv);
    LeggiTitoli(lettore.Titolo());
    try {
        // Without the file of lap times the columns are unknown, and no column is read.
        tabella_.Alloca(NumCampi, NumCampiTxt == 0 ? 0 : NumCampiTxt + 1, lettore.NumeroRecord());
    } catch (const std::bad_alloc&) {
        tabella_.Alloca(0, 0, 0);
    }
    LeggiPiano(lettore, Piano::Dati);
    principale().TestoPannello(Pannello::Percorso, Testo(Voce::LetturaFileAllarmi));
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::CaricamentoDati));
    const std::string laterale = LeggiLog(Cartella / NomeLaterale);
    LettoreDati lettoreLaterale(laterale);
    LeggiPiano(lettoreLaterale, Piano::Laterale);
    NumRighe = tabella_.NumeroRighe();
    NumRigheTesto = TestoNumero(NumRighe);
}

void AnalisiDatiSpeed::LeggiPiano(LettoreDati& lettore, Piano piano) {
    const auto colonne = tabella_.Destinazioni(piano);
    const std::int32_t righe = tabella_.NumeroRighe();
    int mostrato = -1;
    for (std::int32_t riga = 0; riga < righe && lettore.LeggiRiga(colonne, riga);) {
        ++riga;
        if (riga <= kRigheSenzaProgresso) continue;
        const int percento = Percento(riga, righe);
        if (percento == mostrato) continue;
        mostrato = percento;
        MostraAvanzamento(TestoNumero(percento));
    }
}

std::string AnalisiDatiSpeed::TitoloColonna(int c) const {
    return titoli_[static_cast<std::size_t>(c)];
}

}  // namespace lapvane
