// A whole log as the analysis opens it: the input is the data file, its .txt, .tim and .ses and the
// circuit's two files, parted by the byte 1. Both kinds of analysis load any of them, draw what is
// asked and leave; only a run-time error may end it.
#include <array>
#include <cstdlib>

#include "analysis/AnalisiDatiFoglio.h"
#include "analysis/AnalisiDatiSpeed.h"
#include "bench/VistaVuota.h"
#include "fuzz/FuzzPlatform.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"

namespace {

using namespace lapvane;

/// A graph that only looks at what it is told to draw.
class Graph : public GraphControl {
 public:
    void Titolo(const std::string&) override {}
    void EtichettaX(const std::string&) override {}
    void EtichettaY(const std::string&) override {}
    void ColoreAsse(Colore) override {}
    void ColoreSfondo(Colore) override {}
    void ColoreCornice(Colore) override {}
    void MostraGriglia(bool) override {}
    void MostraNumeriY(bool) override {}
    void PulisciGrafico() override { element_ = 1; }
    std::int16_t ElementoCorrente() const override { return element_; }
    void ColoreElemento(Colore) override {}
    void SpessoreElemento(std::int16_t) override {}
    void NomeElemento(const std::string&) override {}
    void ImpostaIntervallo(double xMin, double xMax, double yMin, double yMax, int) override {
        range_ = {xMin, xMax, yMin, yMax};
    }
    IntervalloGrafico LeggiIntervallo() const override { return range_; }
    void ScalaY(double) override {}
    void DisegnaArray(std::span<const double> x, std::span<const double> y, std::int16_t, double,
                      int, const MisureCanale&) override {
        if (!x.empty()) sum_ = x.front() + x.back();
        if (!y.empty()) sum_ = y.front() + y.back();
        points_ = static_cast<std::int32_t>(x.size());
        ++element_;
    }
    void AggiungiPunto(double, double) override {}
    int NumeroCursori() const override { return cursors_; }
    void AggiungiCursore() override { ++cursors_; }
    void ImpostaModoCursore(ModoCursore) override {}
    void ColoreCursore(Colore) override {}
    void CursoreVisibile(bool) override {}
    void CursoreX(double x) override { cursor_ = x; }
    double CursoreX() const override { return cursor_; }
    void CursoreY(double) override {}
    void CursoreAttivo(bool on) override { follows_ = on; }
    bool CursoreAttivo() const override { return follows_; }
    std::int32_t IndiceDaX(double, double) const override { return points_ > 0 ? points_ - 1 : 0; }
    void ImpostaModoMouse(ModoMouse) override {}

 private:
    IntervalloGrafico range_;
    std::int16_t element_ = 1;
    int cursors_ = 0;
    double cursor_ = 0.0;
    bool follows_ = true;
    std::int32_t points_ = 0;
    volatile double sum_ = 0.0;
};

void Use(AnalisiDati& log) {
    log.chkGrafico_Click(3, true);
    log.chkGrafico_Click(4, true);
    log.optScala_Click(4);
    for (int lap : {1, 2, 3, log.NumGiri, log.NumRigheTabella - 1}) {
        if (lap < 1 || lap >= log.NumRigheTabella) continue;
        log.MSFlexGrid1_Click(lap, 1);
        log.CalcolaSettoriGiro(lap);
    }
    log.cmdZoom_Click(0.5);
    log.cmdSposta_Click(1);
    log.cmdSposta_Click(-10);
    log.EventoZoom();
    log.EventoCursore(0);
    log.EventoCursore(log.RigheGiro);
    log.EventoCursoreAllarmi(1);
    log.chkDistanza_Click(true);
    log.Separati_Click();
    log.Sovrapposti_Click();
    log.DimOriginali_Click();
    log.Circuito_Click();
    log.SSTab1_Click(1);
    log.cmdZoom_Click(2.0);
    log.SSTab1_Click(0);
    if (log.CiSonoGiri()) log.CalcolaStatistiche();
    log.RicompilaTabella();
    log.RefreshLanguage();
}

template <class Analysis>
void Open(const std::filesystem::path& csv) {
    bench::VistaVuota view;
    Graph graph, overview;
    Analysis log(view, graph, overview);
    log.NomeFileDati = csv;
    AnalisiInCorso = true;
    try {
        if (log.Carica()) Use(log);
    } catch (const ErroreRuntime&) {
        // Goes to the one door.
    }
    log.Form_Unload();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static FuzzPlatform machine;
    static bench::PrincipaleVuota window;
    static const FuzzFolder folder;
    machine.Folder = folder.Path;
    if (Testi.empty()) {
        Testi.assign(700, "text");
        MetaTesti = 350;
        CaricaTabelleNomi();
        std::filesystem::create_directory(folder.Path / "tracks");
    }
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (const char* name : {"run.csv", "run.txt", "run.tim", "run.ses", "tracks/Fuzz.trk",
                             "tracks/Fuzz.sec"}) {
        const std::size_t end = std::min(rest.find('\x01'), rest.size());
        folder.Write(name, rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    DatiSessione = {};
    Open<AnalisiDatiSpeed>(folder.Path / "run.csv");
    DatiSessione = {};
    Open<AnalisiDatiFoglio>(folder.Path / "run.csv");
    return 0;
}
