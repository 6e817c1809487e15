#include "analysis/AnalisiDatiSpeed.h"

#include <algorithm>
#include <new>
#include <utility>

#include "analysis/FileMancante.h"
#include "analysis/Schema.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/PuntatoreOccupato.h"
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

int Percento(double riga, double totale) {
    return ConvertiInt16(riga / totale * 100.0);
}

}  // namespace

bool AnalisiDatiSpeed::CaricaLog() {
    Cartella_ = NomeFileDati().parent_path();
    NomeCsv_ = NomeFileDati().filename();
    if (!CercaFileLaterale()) return false;
    LeggiTempi();
    const PuntatoreOccupato occupato;
    IniziaCaricamento();
    if (!LeggiDati()) {
        tabella_.Alloca(0, 0, 0);
        return Interrotto();
    }
    MostraCanali();
    ImpostaCanali();
    ConcludiCaricamento();
    return true;
}

bool AnalisiDatiSpeed::CercaFileLaterale() {
    // The stem ends before the last point; a name without a point has an empty stem.
    const fs::path::string_type nome = NomeCsv_.native();
    const std::size_t punto = nome.rfind('.');
    const fs::path stelo = nome.substr(0, punto == fs::path::string_type::npos ? 0 : punto);
    ImpostaFileLatiTrovati(true);
    for (const char* estensione : {".txt", ".alm"}) {
        NomeLaterale_ = stelo;
        NomeLaterale_ += estensione;
        // Kept: the side file is looked for in the current folder, where the file dialog has left
        // the program, and read from the folder of the log.
        if (FileEsiste(platform().CurDir() / NomeLaterale_)) return true;
        FileMancante(TestoDaPercorso(NomeLaterale_));
    }
    ImpostaFileLatiTrovati(false);
    ChiudiAnalisi();
    return false;
}

void AnalisiDatiSpeed::PrimaRigaTempi(std::string_view riga) {
    ImpostaNumCampi(riga == kVersione16Campi ? 16 : 15);
    NumCampiTxt_ = kCampiLaterali;
    ScriviSchema(Cartella_, NomeCsv_, NumCampi(), NomeLaterale_, NumCampiTxt_);
}

void AnalisiDatiSpeed::LeggiTitoli(std::string_view titolo) {
    // Kept: the last title is all that is left of the line, whatever further titles it holds.
    for (int c = 1; c <= Canali().Ultimo(); ++c) {
        const std::size_t fine =
            c == NumCampi() ? titolo.size() : std::min(titolo.find(';'), titolo.size());
        titoli_[c] = titolo.substr(0, std::min(fine, kTitoloMassimo));
        titolo.remove_prefix(std::min(fine + 1, titolo.size()));
    }
}

/// False if it was stopped.
bool AnalisiDatiSpeed::LeggiDati() {
    try {
        LettoreDati lettore = ApriLog(NomeFileDati());
        LeggiTitoli(lettore.Titolo());
        // Without the file of lap times the columns are unknown, and no column is read.
        tabella_.Alloca(NumCampi(), NumCampiTxt_ == 0 ? 0 : NumCampiTxt_ + 1,
                        lettore.NumeroRecord());
        if (!LeggiPiano(lettore, Piano::Dati)) return false;
    } catch (const std::bad_alloc&) {
        tabella_.Alloca(0, 0, 0);
    } catch (const ErroreRuntime&) {
        // A medium that is gone half-way: a log without rows, as if it never had been there.
        LeggiTitoli({});
        tabella_.Alloca(0, 0, 0);
    }
    MostraLettura(Voce::LetturaFileAllarmi);
    try {
        LettoreDati laterale = ApriLog(Cartella_ / NomeLaterale_, Conto::Niente);
        if (!LeggiPiano(laterale, Piano::Laterale)) return false;
    } catch (const std::bad_alloc&) {
        tabella_.Alloca(0, 0, 0);
    } catch (const ErroreRuntime&) {
        tabella_.AzzeraLaterale();
    }
    ImpostaNumRighe(tabella_.NumeroRighe());
    return true;
}

bool AnalisiDatiSpeed::LeggiPiano(LettoreDati& lettore, Piano piano) {
    const std::int32_t righe = tabella_.NumeroRighe();
    std::int32_t riga = 0;
    for (std::int32_t meta = std::min(righe, kRigheSenzaProgresso + 1);;) {
        riga = tabella_.Leggi(lettore, piano, riga, meta);
        if (riga < meta || riga <= kRigheSenzaProgresso) return true;
        const int percento = Percento(riga, righe);
        MostraAvanzamento(TestoNumero(percento));
        if (!Prosegue(percento)) return false;
        if (riga == righe) return true;
        // Up to the row at which the text changes.
        meta = std::max(riga + 1, static_cast<std::int32_t>((percento + 0.5) / 100.0 * righe));
        while (meta < righe && Percento(meta, righe) == percento) ++meta;
        if (Percento(meta, righe) == percento) {
            tabella_.Leggi(lettore, piano, riga, righe);
            return true;
        }
    }
}

std::string AnalisiDatiSpeed::TitoloColonna(int c) const {
    return titoli_[c];
}

}  // namespace lapvane
