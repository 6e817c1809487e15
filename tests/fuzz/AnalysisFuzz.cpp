// A whole log as the analysis opens it: the input is the data file, its .txt, .tim and .ses and the
// circuit's two files, parted by the byte 1. Both kinds of analysis load any of them, hold finite
// numbers only, draw what is asked and leave; only a run-time error may end it.
#include <array>
#include <cmath>

#include "analysis/AnalisiDatiFoglio.h"
#include "analysis/AnalisiDatiSpeed.h"
#include "analysis/compare/LogAperto.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BareViews.h"
#include "tools/support/QuietGraph.h"

namespace {

using namespace lapvane;

void Use(AnalisiDati& log) {
    for (int c = 1; c <= kUltimoCanale; ++c) {
        for (const double value : log.Tabella().Colonna(c)) Must(std::isfinite(value));
    }
    log.chkGrafico_Click(3, true);
    log.chkGrafico_Click(4, true);
    log.optScala_Click(4);
    for (int lap : {1, 2, 3, log.NumGiri(), log.Giri().NumRigheTabella() - 1}) {
        if (lap < 1 || lap >= log.Giri().NumRigheTabella()) continue;
        log.MSFlexGrid1_Click(lap, 1);
    }
    log.cmdZoom_Click(0.5);
    log.cmdSposta_Click(1);
    log.cmdSposta_Click(-10);
    log.EventoZoom();
    log.EventoCursore(Grafico::Canali, 0);
    log.EventoCursore(Grafico::Canali, log.Giri().RigheGiro());
    log.EventoCursore(Grafico::Allarmi, 1);
    log.chkDistanza_Click(true);
    log.Separati_Click();
    log.Sovrapposti_Click();
    log.DimOriginali_Click();
    log.Circuito_Click();
    log.SSTab1_Click(1);
    log.cmdZoom_Click(2.0);
    log.SSTab1_Click(0);
    if (log.CiSonoGiri()) CalcolaStatistiche(log.Giri());
    log.RicompilaTabella();
    log.RefreshLanguage();
}

template <class Analysis>
void Open(const std::filesystem::path& csv) {
    BareAnalysisView view;
    QuietGraph graph, overview;
    Analysis log(view, graph, overview);
    AnalisiInCorso = true;
    try {
        if (log.Carica(csv)) Use(log);
    } catch (const ErroreRuntime&) {
        // Goes to the one door.
    }
    log.Form_Unload();
}

/// The same log beside the analysis: every lap that can be aligned is a way that grows from line to
/// line.
void Compare(const std::filesystem::path& csv) {
    Accepted([&csv] {
        const LogAperto log(csv);
        for (int i = 0; i < log.Allineati().NumGiri(); ++i) {
            const auto lap = log.Allineati().Allinea(i);
            if (!lap) continue;
            double before = 0.0;
            for (const double share : {0.0, 0.3, 0.7, 1.0}) {
                const double now = lap->TempoA(share * lap->Lunghezza);
                Must(now >= before && now <= lap->Durata);
                before = now;
            }
            Must(before == lap->Durata && std::isfinite(lap->Lunghezza));
            log.Valore(kPrimoCanale, lap->Inizio);
        }
    });
}

}  // namespace

void Fuzz(std::string_view rest) {
    static FuzzPlatform machine;
    static BareMainWindow window;
    static const FuzzFolder folder;
    machine.Folder = folder.Path;
    if (Testi.empty()) {
        Testi.assign(700, "text");
        MetaTesti = 350;
        CaricaTabelleNomi();
        std::filesystem::create_directory(folder.Path / "tracks");
    }
    for (const char* name :
         {"run.csv", "run.txt", "run.tim", "run.ses", "tracks/Fuzz.trk", "tracks/Fuzz.sec"}) {
        const std::size_t end = std::min(rest.find('\x01'), rest.size());
        folder.Write(name, rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    DatiSessione = {};
    Open<AnalisiDatiSpeed>(folder.Path / "run.csv");
    DatiSessione = {};
    Open<AnalisiDatiFoglio>(folder.Path / "run.csv");
    Compare(folder.Path / "run.csv");
}
