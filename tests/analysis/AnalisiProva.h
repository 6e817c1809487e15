#pragma once

#include "analysis/AnalisiDatiSpeed.h"
#include "reports/DatiSessione.h"
#include "shell/NumeroTesto.h"
#include "support/PlatformProva.h"
#include "tools/support/BareViews.h"
#include "tools/support/QuietGraph.h"

namespace lapvane::prova {

/// A curve as it was handed to the graph, points not yet thinned out.
struct ElementoProva {
    Colore Tinta = 0;
    std::int16_t Spessore = 0;
    std::string Nome;
    std::vector<double> X;
    std::vector<double> Y;
    double Scala = 0.0;
    int Passo = 0;
    int Riquadro = 0;
};

/// A graph that writes down what it is told.
class GraficoProva : public QuietGraph {
 public:
    void EtichettaX(const std::string& testo) override { etichettaX = testo; }
    void EtichettaY(const std::string& testo) override { etichettaY = testo; }
    void ColoreAsse(Colore colore) override { coloreAsse = colore; }
    void PulisciGrafico() override {
        elementi.clear();
        ++pulizie;
    }
    void ColoreElemento(Colore colore) override { prossimo.Tinta = colore; }
    void SpessoreElemento(std::int16_t spessore) override { prossimo.Spessore = spessore; }
    void NomeElemento(const std::string& nome) override { prossimo.Nome = nome; }
    void ImpostaIntervallo(double xMin, double xMax, double yMin, double yMax,
                           int riquadro) override {
        intervallo = {xMin, xMax, yMin, yMax};
        prossimo.Riquadro = riquadro;
    }
    IntervalloGrafico LeggiIntervallo() const override { return intervallo; }
    void ScalaY(double fattore) override { scalaY = fattore; }
    void DisegnaArray(std::span<const double> x, std::span<const double> y, std::int16_t,
                      double scala, int passo, const MisureCanale&) override {
        prossimo.X.assign(x.begin(), x.end());
        prossimo.Y.assign(y.begin(), y.end());
        prossimo.Scala = scala;
        prossimo.Passo = passo;
        elementi.push_back(prossimo);
    }
    void ImpostaModoCursore(ModoCursore modo) override { aggancio = modo == ModoCursore::Aggancio; }
    void ColoreCursore(Colore colore) override { coloreCursore = colore; }
    std::int32_t IndiceDaX(double, double) const override { return indice; }
    void ImpostaModoMouse(ModoMouse modo) override { modoMouse = modo; }

    std::string etichettaX, etichettaY;
    Colore coloreAsse = 0, coloreCursore = 0;
    IntervalloGrafico intervallo;
    double scalaY = 1.0;
    std::vector<ElementoProva> elementi;
    int pulizie = 0;
    bool aggancio = false;
    std::int32_t indice = 0;  ///< what `IndiceDaX` answers
    ModoMouse modoMouse = ModoMouse::Cursore;

 private:
    ElementoProva prossimo;
};

/// A window that writes down what it is told.
class VistaProva : public BareAnalysisView {
 public:
    bool Lettura(int percento) override { return percento < fermaA; }
    void MostraCanale(int c, bool visibile) override { visibili[c] = visibile; }
    void NomeCampo(int c, const std::string& nome) override { nomi[c] = nome; }
    void UnitaCampo(int c, const std::string& unita) override { unita_[c] = unita; }
    void ColoreCanale(int c, Colore colore) override { colori[c] = colore; }
    void SegnaCanale(int c, bool spuntato) override { segnati[c] = spuntato; }
    void SelezionaScala(int c) override { scala = c; }
    void SelezionaScheda(int numero) override { scheda = numero; }
    void TestoScheda(int numero, const std::string& testo) override { schede[numero] = testo; }
    void Valore(int c, const std::string& testo) override { valori[c] = testo; }
    void SpuntaAssi(bool tempo, bool distanza) override { assi = {tempo, distanza}; }
    void MostraControlli(bool visibile) override { controlli = visibile; }
    void AbilitaZoomIn(bool acceso) override { zoomIn = acceso; }
    void Scorri(const StatoScorri& sx, const StatoScorri& dx) override {
        scorriSX = sx;
        scorriDX = dx;
    }
    void Lampada(int k, bool accesa) override { lampade[k] = accesa; }
    void Barra(const StatoBarra& stato) override { barra = stato; }
    void MostraMappa(bool visibile) override { mappa = visibile; }
    void Mappa(std::vector<PuntoTracciato> punti, const std::string& circuito,
               const std::string& piloti) override {
        puntiMappa = punti.size();
        testiMappa = circuito + "/" + piloti;
    }
    void MarcatoreMappa(int punto) override { marcatore = punto; }
    void MostraGriglia(bool visibile) override { griglia = visibile; }
    void RigheGriglia(int numero) override { righe = numero; }
    void Cella(int riga, int colonna, const std::string& testo) override {
        celle[{riga, colonna}] = testo;
    }
    void SfondoCella(int riga, int colonna, Colore colore) override {
        sfondi[{riga, colonna}] = colore;
    }
    void CaratteriCella(int riga, int colonna, Colore colore) override {
        caratteri[{riga, colonna}] = colore;
    }
    void CellaCorrente(int riga, int colonna) override { corrente = {riga, colonna}; }
    void Scarica() override { scaricata = true; }
    std::string Cella(int riga, int colonna) { return celle[{riga, colonna}]; }

    using Posto = std::pair<int, int>;
    std::map<int, bool> visibili, segnati, lampade;
    std::map<int, std::string> nomi, unita_, schede, valori;
    std::pair<bool, bool> assi{true, false};
    StatoScorri scorriSX, scorriDX;
    StatoBarra barra;
    bool zoomIn = true, mappa = false;
    int marcatore = -1;
    std::size_t puntiMappa = 0;
    std::string testiMappa;
    std::map<int, Colore> colori;
    std::map<Posto, std::string> celle;
    std::map<Posto, Colore> sfondi, caratteri;
    Posto corrente{};
    int scala = 0, scheda = -1, righe = 0;
    int fermaA = 1000;  ///< percentage at which a person stops the load
    bool controlli = true, griglia = true, scaricata = false;
};

/// One row of a log: cell of a column of the data file, and the lap number of the row.
struct RigaLog {
    std::map<int, std::string> Celle;
    int Giro = 1;
    bool Allarme2 = false;
};

/// A small log made by hand: time and distance count from the start of each stretch, 10 m a row,
/// channels are 0 unless a stretch says otherwise.
class LogProva {
 public:
    /// Adds rows of one lap; `valore(r)` is what the row r of the stretch holds in column 3.
    LogProva& Tratto(int giro, int righe, const std::function<double(int)>& valore = {}) {
        for (int r = 0; r < righe; ++r) {
            RigaLog riga;
            riga.Giro = giro;
            riga.Celle[1] = TestoNumero(r / 10.0);
            riga.Celle[2] = TestoNumero(r * 10);
            if (valore) riga.Celle[3] = TestoNumero(valore(r));
            Righe.push_back(riga);
        }
        return *this;
    }

    std::string Csv() const {
        std::string testo = Titoli + "\r\n";
        for (const RigaLog& riga : Righe) {
            for (int c = 1; c <= Colonne; ++c) {
                const auto cella = riga.Celle.find(c);
                testo += cella == riga.Celle.end() ? "0" : cella->second;
                testo += c == Colonne ? "\r\n" : ";";
            }
        }
        return testo;
    }
    std::string Laterale() const {
        std::string testo = "Time [sec];Distance [m];a;b;c;d;e;f;g;h;\r\n";
        for (const RigaLog& riga : Righe) {
            testo += riga.Celle.at(1) + ";" + riga.Celle.at(2) +
                     (riga.Allarme2 ? ";1;4;5;7;9;11;13;15;" : ";1;3;5;7;9;11;13;15;") +
                     TestoNumero(riga.Giro) + "\r\n";
        }
        return testo;
    }
    /// Writes data file, .txt and .tim of that stem.
    void Scrivi(const std::filesystem::path& stelo) const {
        prova::Scrivi(ConFine(stelo, ".csv"), Csv());
        prova::Scrivi(ConFine(stelo, ".txt"), Laterale());
        prova::Scrivi(ConFine(stelo, ".tim"), Tim);
    }

    int Colonne = 16;
    std::string Titoli =
        "Time [sec];Distance [m];Engine [RPM];Speed [Km/h];Fuel Press. [bar];Oil Press. [bar];"
        "Throttle [%];Water Temp [\xB0 C];G Sensor [G];Oil Temp. [\xB0 C];Battery [V];Gear [];"
        "Fuel Level [];Turbo Press. [bar];Lambda sensor [A/F];Lambda sensor[Lambda]";
    std::string Tim = "1.4\r\n\r\n";
    std::vector<RigaLog> Righe;
};

/// Start (5 rows, 0 to 4), laps of 40, 30 and 50 rows, one without, no End. Column 3 counts the
/// rows of its lap from 1000 times its number, 4 is negative throughout, 5 positive.
inline LogProva QuattroGiri() {
    LogProva log;
    log.Tratto(1, 5);
    for (const auto& [giro, righe] : {std::pair{2, 40}, {3, 30}, {4, 50}}) {
        log.Tratto(giro, righe, [g = giro](int r) { return 1000.0 * g + r; });
    }
    for (std::size_t r = 0; r < log.Righe.size(); ++r) {
        log.Righe[r].Celle[4] = TestoNumero(-5.0 - static_cast<double>(r % 7));
        log.Righe[r].Celle[5] = TestoNumero(2.0 + static_cast<double>(r % 3) / 2.0);
    }
    log.Tim = "1.4\r\n01:02.30, 1\r\n01:01.90, 1\r\n01:03.10, 2\r\n01:02.00, 2\r\n\r\n";
    return log;
}

/// A session file of that circuit with the given lines of channels 3 and 4.
inline std::string Sessione(const std::string& circuito, const std::string& canale3 = "x",
                            const std::string& canale4 = "x") {
    std::string ses =
        "Sessione= Prove libere \r\nDataSessione=12/5\r\nOra=10=30\r\nCircuito=" + circuito +
        "\r\nLungh=5793\r\nVeicolo=  Alfa 8 \r\nPiloti=Rossi\r\nNote=a;b\r\n" + canale3 + "\r\n" +
        canale4 + "\r\n";
    for (int c = 5; c <= 20; ++c) ses += "x;1;12;1;0;0\r\n";
    return ses;
}

/// An analysis with everything around it, on logs of a folder of its own.
class AnalisiProva : public ::testing::Test {
 protected:
    AnalisiProva() { CaricaTestiVeri(1); }

    std::filesystem::path Stelo() const { return macchina.Cartella / "run"; }
    /// Writes the log and opens it.
    bool Apri(const LogProva& log) {
        log.Scrivi(Stelo());
        return ApriCsv();
    }
    bool ApriCsv() {
        AnalisiInCorso = true;
        return analisi.Carica(ConFine(Stelo(), ".csv"));
    }

    /// The texts of both tabs with a lap's number.
    static std::map<int, std::string> Schede(const std::string& giro) {
        const std::string coda = " " + Testo(Voce::Giro) + " " + giro;
        return {{0, Testo(Voce::Grafici) + coda}, {1, Testo(Voce::Allarmi) + coda}};
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    VistaProva vista;
    GraficoProva grafico;
    GraficoProva panoramica;
    AnalisiDatiSpeed analisi{vista, grafico, panoramica};
};

}  // namespace lapvane::prova
