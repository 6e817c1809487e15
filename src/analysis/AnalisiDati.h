#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/FileTim.h"
#include "analysis/Giri.h"
#include "analysis/TabellaDati.h"
#include "analysis/VistaAnalisi.h"
#include "platform/GraphControl.h"

namespace lapvane {

/// One value a column; entry 0 is unused.
template <class T>
using PerCanale = std::array<T, kNumCanali>;

constexpr int kRiquadriMassimi = 3;       ///< separate panes of a graph
constexpr int kUltimoNomeInTabella = 16;  ///< last channel that the table of texts has a name for

/// Line colours of the eight alarms in the overview.
constexpr std::array<Colore, kNumAllarmi> kColoriAllarmi = {
    Rgb(192, 0, 0),   Rgb(128, 0, 0), Rgb(192, 0, 192), Rgb(128, 0, 128),
    Rgb(0, 128, 128), Rgb(0, 128, 0), Rgb(0, 0, 255),   Rgb(0, 0, 128)};

/// Direction of the automatic scroll.
enum class Verso { SX, DX };

/// The state of one open analysis and all its arithmetic. It speaks to the graph and to its window
/// through interfaces only. What sets the two analysis windows apart stands in the hooks at the
/// end; everything else they share.
class AnalisiDati {
 public:
    AnalisiDati(VistaAnalisi& vista, GraphControl& ntGraph1, GraphControl& ntGraphAll);
    virtual ~AnalisiDati() = default;
    AnalisiDati(const AnalisiDati&) = delete;
    AnalisiDati& operator=(const AnalisiDati&) = delete;

    // --- what the load fills -----------------------------------------------------------------
    std::filesystem::path NomeFileDati;      ///< the CSV; set by the shell before the load
    std::filesystem::path NomeFileSessione;  ///< the same with "ses" for its last three characters
    int NumCampi = 0;                        ///< columns of the CSV; 1 is the time, 2 the distance
    std::int32_t NumRighe = 0;
    std::string NumRigheTesto;
    bool FileLatiTrovati = false;  ///< the window counts as loaded

    // --- channels, index 1 to 20 -------------------------------------------------------------
    PerCanale<std::string> NomeCampo;          ///< caption of lblNomeCampo
    PerCanale<std::string> UnitaCampo;         ///< caption of lblUM, with its brackets
    PerCanale<Colore> ColoreCanale{};          ///< back colour of shpColor
    PerCanale<std::int16_t> FiltroCanale{};    ///< rows between plotted points
    PerCanale<std::int16_t> SpessoreCanale{};  ///< line width
    PerCanale<double> MaxCanale{};             ///< of the selected lap, as the next four
    PerCanale<double> MinCanale{};
    PerCanale<double> MediaCanale{};
    PerCanale<double> FattoreScala{};  ///< stretches a channel to the highest maximum of all
    /// Element that draws the column, on NTGraph1 and on NTGraphAll.
    std::array<std::array<std::int16_t, 2>, kNumCanali> ElementoCanale{};
    PerCanale<bool> chkGrafico{};    ///< the channel is drawn
    std::int16_t CanaleScala = 0;    ///< channel whose optScala is chosen; 0: none
    std::int16_t FiltroDialogo = 1;  ///< exchange with the graph settings, as the next three
    std::int16_t SpessoreDialogo = 1;
    double MinDialogo = 0.0;
    double MaxDialogo = 0.0;

    // --- view --------------------------------------------------------------------------------
    bool chkTempo = true;  ///< the two boxes of the x axis; both may be clear
    bool chkDistanza = false;
    bool AsseDistanza = false;
    bool Separati = false;
    bool ZoomAttivo = false;  ///< the mouse draws zoom rectangles
    bool TracciatoVisibile = false;
    int Scheda = 0;        ///< tab of SSTab1 that is shown: 0 graphs, 1 alarms
    int UltimaScheda = 0;  ///< the tab at the last click on a tab
    std::int16_t NumCanaliAttivi = 0;
    std::int16_t NumElementi = 0;   ///< panes of the separate view so far
    std::int16_t UltimoCanale = 0;  ///< last channel drawn; 0: none
    double XMin = 0.0;              ///< seconds or metres
    double XMax = 0.0;
    double YMin = 0.0;
    double YMax = 0.0;
    std::int32_t RigaDa = 0;  ///< first and last row of the drawing
    std::int32_t RigaA = 0;
    std::int16_t Decimazione = 1;    ///< rows between plotted points at this zoom
    double PassoSposta = 0.0;        ///< step of the shift buttons, in units of the x axis
    double PassoScorri = 0.0;        ///< step of one round of the automatic scroll
    bool ScorrimentoAttivo = false;  ///< the automatic scroll runs
    std::int32_t IndiceCursore = 0;  ///< point index of the window's left edge

    // --- laps --------------------------------------------------------------------------------
    /// Lap index 0 to 999 by column: 1 the lap time, 2 to `NumSettori` the sector times.
    std::vector<PerCanale<std::string>> TempiGiro;
    std::vector<std::string> TempiSessione;
    int NumRigheTabella = 0;  ///< one past the last line index of the .tim file
    int NumGiri = 0;          ///< complete laps; may be negative
    int NumSettori = 1;
    PerCanale<double> DistanzeSettori{};  ///< sector lengths in metres, entry 0 first
    RigheGiri RigheDeiGiri;               ///< `InizioGiro` and `FineGiro`
    int GiroSelezionato = 0;              ///< table row, that is lap index
    std::int32_t RigheGiro = 0;           ///< last minus first row of the selected lap
    int GiroMigliore = 0;                 ///< lap numbers of the fastest and the slowest lap
    int GiroPeggiore = 0;

    // --- figures of the session, set by `CalcolaStatistiche` -----------------------------------
    std::string TempoTotale;  ///< hh:mm:ss.cc
    std::string TempoMedio;   ///< mm:ss.cc; empty if no lap has a time
    std::string VelocitaMedia;
    std::string TempoMigliore;
    std::string TempoPeggiore;
    std::string VelocitaMigliore;
    std::string VelocitaPeggiore;
    int GiriEsclusi = 0;  ///< laps whose line is no time: neither in the total nor in the means

    // --- load and life -----------------------------------------------------------------------
    /// Reads the log of `NomeFileDati` and draws its first lap. False if the analysis closed itself
    /// because a side file is missing.
    virtual bool Carica() = 0;
    /// All texts of the window that follow the language.
    void RefreshLanguage();
    /// Puts the status bar back and unloads the window.
    void ChiudiAnalisi();
    /// What the window runs when it unloads, for whatever reason.
    void Form_Unload();

    // --- events of the window ----------------------------------------------------------------
    void chkGrafico_Click(int c, bool spuntato);
    void optScala_Click(int c);
    void chkTempo_Click(bool spuntato);
    void chkDistanza_Click(bool spuntato);
    /// Shows the settings of a channel through `mostra`, which works on the exchange fields.
    void cmdSetGraph_Click(int c, const std::function<void()>& mostra);
    /// The window becomes `fattore` times as wide or, if `fuori`, its width is divided by it; its
    /// left edge stays. The buttons have 0.9 and 0.5.
    void cmdZoom_Click(double fattore, bool fuori = false);
    /// Moves the window by steps of `PassoSposta`: 1, 10, -1 or -10.
    void cmdSposta_Click(int passi);
    /// Starts the automatic scroll or stops it; runs until it is stopped by a second click, the end
    /// of the lap or the unload of the window.
    void cmdScorri_Click(Verso verso);
    void SSTab1_Click(int scheda);
    /// Point `indice` of the last element is under the cursor of one of the two graphs.
    void EventoCursore(std::int32_t indice);
    void EventoCursoreAllarmi(std::int32_t indice);
    /// A zoom rectangle was drawn on the graph.
    void EventoZoom();
    // The tool bar.
    void Sovrapposti_Click();
    void Separati_Click();
    void SetZoom_Click();
    void DimOriginali_Click();
    void Circuito_Click();
    /// Behind the session dialog: the lap table anew.
    void RicompilaTabella();
    /// Whether the session has complete laps; if not, a message says so.
    bool CiSonoGiri() const;
    /// A click on a cell of the lap table; column 1 selects the lap.
    void MSFlexGrid1_Click(int riga, int colonna);

    // --- scales and drawing ------------------------------------------------------------------
    void CalcolaScale(GraphControl& grafico);
    void CalcolaPassoSposta();
    void DisegnaCanali(GraphControl& grafico);
    void DisegnaAllarmi(GraphControl& grafico);
    void Ridisegna();
    /// "name unit" of a channel.
    std::string TitoloCanale(int c) const;

    // --- what the dialogs ask; a channel is 0 to 20, a lap index 0 to 999, else error 9 ---------
    void SetMinVal(int c, double valore);
    void SetMaxVal(int c, double valore);
    std::string GetMinVal(int c) const;
    std::string GetMaxVal(int c) const;
    std::string GetMediaVal(int c) const;
    std::string GetNomeMisura(int c) const;
    /// The selected lap and its time, if it has one.
    std::string NomeGiro() const;
    std::string GetTempoGiro(int giro) const;
    std::string GetSessioneTempo(int giro) const;
    /// km/h, "#.0##"; empty for a lap without a time.
    std::string GetVelocitaGiro(int giro) const;
    void RinominaCanale(int c, const std::string& nome, const std::string& unita);
    void ColoraCanale(int c, Colore colore);
    /// The figures of the session; it must have laps.
    void CalcolaStatistiche();

    // --- laps --------------------------------------------------------------------------------
    void LeggiTempi();
    void LeggiSettori();
    void CompilaTabellaGiri();
    void CalcolaSettoriGiro(int giro);
    void EvidenziaTempi();
    void MostraControlli(bool visibile);
    /// Smallest lap index whose last row is above 2; 1000 if there is none.
    int PrimoGiroValido() const;
    /// First and last row of a lap; 0 outside the index.
    std::int32_t InizioGiro(int giro) const;
    std::int32_t FineGiro(int giro) const;

    // --- session -----------------------------------------------------------------------------
    /// Reads the .ses file beside the log. What a file that is cut short lacks keeps its default.
    void LeggiDatiSessione();
    /// Writes it over the beginning of the old one.
    void SalvaDatiSessione() const;

    virtual const TabellaDati& Tabella() const = 0;

 protected:
    // --- steps of the load that both windows share -------------------------------------------
    void IniziaCaricamento();
    void MostraCanali();
    void ImpostaCanali(GraphControl& grafico);
    void ConcludiCaricamento();
    /// Message of a missing file: text 328, the name, text 329.
    static void FileMancante(const std::string& nome);
    /// Last channel column that the log fills, 20 at most.
    int UltimoCanaleFile() const;

    /// Percentage of a file that is being read, in the status bar.
    static void MostraAvanzamento(const std::string& percento);

    VistaAnalisi& vista_;
    GraphControl& NTGraph1;
    GraphControl& NTGraphAll;  ///< the overview of the alarms

 private:
    // --- hooks: what the two windows do each in their own way ---------------------------------
    /// Heading of a column of the data file.
    virtual std::string TitoloColonna(int c) const = 0;
    /// The first line of the .tim file.
    virtual void PrimaRigaTempi(std::string_view riga) = 0;
    /// Figures of the cells of a lap.
    virtual double Massimo(std::span<const double> celle) const = 0;
    virtual double Minimo(std::span<const double> celle) const = 0;
    /// Column that is drawn over; 0 where the window draws nothing with the axis of now.
    virtual int ColonnaX() const = 0;
    /// Whether the button that moves the window one step forward reads the graph's range first.
    virtual bool LeggePrimaDiSpostare() const = 0;
    /// Plane whose time column says where the automatic scroll of the overview ends.
    virtual Piano PianoDelTempo(bool panoramica) const = 0;

    std::string NomeDaTabella(int c) const;
    void CalcolaRighe();
    void DisegnaCanale(GraphControl& grafico, int c);
    void DisegnaColonna(GraphControl& grafico, Piano piano, int c, double scala, int passo);
    void SelezionaScala(int c);
    void RinnovaScala();
    void CambiaAsse(bool distanza);
    double PassoFinestra(double prima) const;
    void CalcolaPassoScorri();
    void CalcolaDecimazione();
    void LeggiFinestra(bool conY);
    void AggiornaZoomIn();
    bool FineScorrimento(Verso verso, bool panoramica) const;
    void PassoDiScorrimento(Verso verso, bool panoramica);
    void FermaScorrimento(bool panoramica);
    void ScriviValori(std::int32_t indice);
    void MuoviMarcatore(std::int32_t indice);
    void PreparaPanoramica();
    void ApplicaZoom(bool ridisegna);
    static void TroppiRiquadri();
    std::string TestoAsseX() const;
    void SelezionaPrimoGiro();
    void ColoraGiroSelezionato();
    void VistaSovrapposti();
    void VistaSeparati();
    void SvuotaTabella(int riga);
    bool CaricaMappa();
    std::string EtichettaGiro(int giro) const;
    void MostraNomiSchede();
    void ColoraRiga(int riga, Colore sfondo, Colore caratteri);

    StatoBarra barra_;
    int NumPuntiTracciato = 0;    ///< lines of the outline; the map shows the first 201
    PerCanale<bool> nomeDato_{};  ///< the channel has a name that a person gave it
    bool giroScelto_ = false;  ///< `GiroSelezionato` was chosen by a click, the load's or another
    bool scaricata_ = false;   ///< the window is gone; a loop that still runs touches nothing
};

/// If the graph has no cursor, adds the blue one that keeps to the points of the last element.
void ConfiguraCursore(GraphControl& grafico);

/// Shows the busy pointer for the length of a scope.
class PuntatoreOccupato {
 public:
    PuntatoreOccupato() { platform().MousePointer(Pointer::Busy); }
    ~PuntatoreOccupato() { platform().MousePointer(Pointer::Normal); }
    PuntatoreOccupato(const PuntatoreOccupato&) = delete;
    PuntatoreOccupato& operator=(const PuntatoreOccupato&) = delete;
};

}  // namespace lapvane
