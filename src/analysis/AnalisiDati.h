#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "analysis/CalcoloFigure.h"
#include "analysis/Cursore.h"
#include "analysis/ElencoGiri.h"
#include "analysis/MappaTracciato.h"
#include "analysis/PartiAnalisi.h"
#include "analysis/Quadro.h"
#include "analysis/Scorrimento.h"
#include "analysis/SessioneLog.h"
#include "reports/AnalisiPubblica.h"
#include "shell/Voci.h"

namespace lapvane {

/// One open analysis: the events of its window, and what each of them does to the parts. It speaks
/// to the graphs and to its window through interfaces only. How the log is held, and what sets the
/// two analyses apart, is the matter of the derived ones (`FormaDati`).
class AnalisiDati : public AnalisiPubblica, protected FormaDati {
 public:
    AnalisiDati(VistaAnalisi& vista, GraphControl& ntGraph1, GraphControl& ntGraphAll);
    AnalisiDati(const AnalisiDati&) = delete;
    AnalisiDati& operator=(const AnalisiDati&) = delete;

    // --- load and life -----------------------------------------------------------------------
    /// Reads a log and draws its first lap. False if the analysis closed itself because a side file
    /// is missing.
    bool Carica(const std::filesystem::path& nomeFileDati);
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
    /// Shows the settings of a channel through `mostra`, which changes the values it is given.
    void cmdSetGraph_Click(int c, const std::function<void(ImpostazioniCanale&)>& mostra);
    /// The window becomes `fattore` times as wide or, if `fuori`, its width is divided by it; its
    /// left edge stays. The buttons have 0.9 and 0.5.
    void cmdZoom_Click(double fattore, bool fuori = false);
    /// Moves the window by steps of `PassoSposta`: 1, 10, -1 or -10.
    void cmdSposta_Click(int passi);
    /// Starts the automatic scroll or stops it; runs until it is stopped by a second click, the end
    /// of the lap or the unload of the window.
    void cmdScorri_Click(Verso verso);
    void SSTab1_Click(int scheda);
    /// Point `indice` of the last element is under the cursor of a graph.
    void EventoCursore(Grafico grafico, std::int32_t indice);
    /// A zoom rectangle was drawn on the graph.
    void EventoZoom();
    /// A click on a cell of the lap table; column 1 selects the lap.
    void MSFlexGrid1_Click(int riga, int colonna);

    // --- tool bar ----------------------------------------------------------------------------
    void Sovrapposti_Click();
    void Separati_Click();
    void SetZoom_Click();
    void DimOriginali_Click();
    void Circuito_Click();
    /// Behind the session dialog: the lap table anew.
    void RicompilaTabella();
    /// Whether the session has complete laps; if not, a message says so.
    bool CiSonoGiri() const;
    void SalvaDatiSessione() const { sessione_.SalvaDatiSessione(parti_.Canali); }
    /// The selected lap and its time, if it has one.
    std::string NomeGiro() const { return elencoGiri_.NomeGiro(); }

    // --- what is asked of it -----------------------------------------------------------------
    int NumCampi() const override { return parti_.Canali.NumCampi(); }
    int NumGiri() const override { return parti_.Giri.NumGiri(); }
    std::string GetMinVal(int c) const override;
    std::string GetMaxVal(int c) const override;
    std::string GetMediaVal(int c) const override;
    std::string GetNomeMisura(int c) const override;
    std::string GetTempoGiro(int giro) const override { return parti_.Giri.GetTempoGiro(giro); }
    std::string GetSessioneTempo(int giro) const override;
    std::string GetVelocitaGiro(int giro) const override;
    void SetMinVal(int c, double valore) { parti_.Canali.SetMinVal(c, valore); }
    void SetMaxVal(int c, double valore) { parti_.Canali.SetMaxVal(c, valore); }

    // --- its parts, to look at ---------------------------------------------------------------
    std::int32_t NumRighe() const { return numRighe_; }
    std::string NumRigheTesto() const;
    const ElencoCanali& Canali() const { return parti_.Canali; }
    const FinestraX& Finestra() const { return parti_.Finestra; }
    const GiriLog& Giri() const { return parti_.Giri; }
    bool TracciatoVisibile() const { return mappa_.TracciatoVisibile(); }
    bool ScorrimentoAttivo() const;
    const TabellaDati& Tabella() const override = 0;

 protected:
    // --- steps of the load that both analyses share -------------------------------------------
    virtual bool CaricaLog() = 0;
    void IniziaCaricamento();
    void LeggiTempi();
    void MostraCanali();
    void ImpostaCanali();
    void ConcludiCaricamento();
    /// Columns and rows that the log turned out to have.
    void ImpostaNumCampi(int campi) { parti_.Canali.NumCampi(campi); }
    void ImpostaNumRighe(std::int32_t righe) { numRighe_ = righe; }
    /// Whether the window counts as loaded.
    void ImpostaFileLatiTrovati(bool trovati) { fileLatiTrovati_ = trovati; }
    /// Panels 2 and 3 of the status bar: a file of the log, and that it is being read.
    static void MostraLettura(Voce testo);
    /// Percentage of a file that is being read, in the status bar.
    static void MostraAvanzamento(const std::string& percento);
    /// The same where the window shows it, if it takes long; false: it is to stop.
    bool Prosegue(int percento) const { return parti_.Vista.Lettura(percento); }
    /// What a load that was stopped leaves: nothing. False, for the load to return.
    bool Interrotto();
    const std::filesystem::path& NomeFileDati() const { return nomeFileDati_; }

 private:
    void SelezionaScala(int c);
    void CalcolaScale();
    void CambiaAsse();
    void Ridisegna();
    void AggiornaZoomIn();
    void ApplicaZoom(bool ridisegna);
    void VistaSovrapposti();
    void VistaSeparati();
    void CompilaTabellaGiri();
    void SelezionaGiro(int giro);
    void SelezionaPrimoGiro();
    void MostraControlli(bool visibile);
    void MostraNomiSchede();

    PartiAnalisi parti_;
    QuadroCanali NTGraph1_;
    QuadroAllarmi NTGraphAll_;
    MappaTracciato mappa_;
    Cursore cursore_;
    Scorrimento scorriCanali_;
    Scorrimento scorriAllarmi_;
    ElencoGiri elencoGiri_;
    SessioneLog sessione_;
    StatoBarra barra_;
    std::filesystem::path nomeFileDati_;  ///< the CSV
    std::int32_t numRighe_ = 0;
    bool fileLatiTrovati_ = false;
    bool zoomAttivo_ = false;  ///< the mouse draws zoom rectangles
    int scheda_ = 0;           ///< tab of SSTab1 that is shown: 0 graphs, 1 alarms
    int ultimaScheda_ = 0;     ///< the tab at the last click on a tab
    bool giroScelto_ = false;  ///< a lap was selected, by the load or a click
};

}  // namespace lapvane
