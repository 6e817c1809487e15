#pragma once

#include <QButtonGroup>
#include <QFrame>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "analysis/AnalisiDati.h"
#include "analysis/UltimaVista.h"
#include "analysis/dlgLettura.h"
#include "platform/Colore.h"
#include "platform/qt/QtPrinter.h"
#include "reports/DisegnoTracciato.h"
#include "reports/StampaGrafico.h"
#include "widgets/BarraNavigazione.h"
#include "widgets/Dialogo.h"
#include "widgets/Didascalia.h"
#include "widgets/GraficoWidget.h"
#include "widgets/GrigliaGiri.h"
#include "widgets/LegendaAllarmi.h"
#include "widgets/RigaCanale.h"

namespace lapvane {

/// What the two analysis windows are: channels and track map on the left, graph and alarm overview
/// in the middle, laps on the right, the commands on top. Which analysis stands behind it is the
/// choice of the derived window.
class frmAnalisi : public Dialogo, private VistaAnalisi {
    Q_OBJECT
 public:
    /// The log to open; set before `Apri`.
    std::filesystem::path NomeFileDati;
    /// Runs once, behind a log that was loaded and has come to be seen.
    std::function<void()> QuandoCaricato;

    /// Loads the log, then shows the window modally until it is closed. A log whose side file is
    /// missing is reported and never shown.
    void Apri();
    /// Only the load; false if the window closed itself.
    bool Carica();
    /// All texts in the language of now.
    void RefreshLanguage() { Testi(); }

    AnalisiDati& Analisi() { return *analisi_; }

    void done(int esito) override;
    void reject() override;

 protected:
    using Fabbrica =
        std::function<std::unique_ptr<AnalisiDati>(VistaAnalisi&, GraphControl&, GraphControl&)>;
    /// Makes the analysis that stands behind a window.
    template <class A>
    static std::unique_ptr<AnalisiDati> Crea(VistaAnalisi& vista, GraphControl& grafico,
                                             GraphControl& panoramica) {
        return std::make_unique<A>(vista, grafico, panoramica);
    }
    frmAnalisi(const char* nome, const Fabbrica& fabbrica, QWidget* parent);

    void resizeEvent(QResizeEvent* evento) override;
    bool event(QEvent* evento) override;

 private:
    void DiCaricato();

    // What the analysis asks of its window.
    void MostraCanale(int c, bool visibile) override;
    void NomeCampo(int c, const std::string& nome) override;
    void UnitaCampo(int c, const std::string& unita) override;
    void ColoreCanale(int c, Colore colore) override;
    void SegnaCanale(int c, bool spuntato) override;
    void Valore(int c, const std::string& testo) override;
    void SelezionaScala(int c) override;
    void SelezionaScheda(int scheda) override;
    void TestoScheda(int scheda, const std::string& testo) override;
    void SpuntaAssi(bool tempo, bool distanza) override;
    void MostraControlli(bool visibile) override;
    void AbilitaZoomIn(bool acceso) override;
    void Scorri(const StatoScorri& sinistra, const StatoScorri& destra) override;
    void Lampada(int k, bool accesa) override;
    void Barra(const StatoBarra& stato) override;
    void Rinfresca() override;
    void MostraMappa(bool visibile) override;
    void Mappa(std::vector<PuntoTracciato> punti, const std::string& circuito,
               const std::string& piloti) override;
    void MarcatoreMappa(int punto) override;
    void MostraGriglia(bool visibile) override;
    void RigheGriglia(int righe) override;
    void LarghezzaColonna(int colonna, int twip) override;
    void Cella(int riga, int colonna, const std::string& testo) override;
    void SfondoCella(int riga, int colonna, Colore colore) override;
    void CaratteriCella(int riga, int colonna, Colore colore) override;
    void CellaCorrente(int riga, int colonna) override;
    void SegnaGiro(int riga) override;
    bool Lettura(int percento) override;
    void Scarica() override;

    // frmAnalisi.cpp: how it is laid out.
    void AggiornaTesti(Mnemonica& lettere) override;
    void Disponi();
    QWidget* CreaMisure();
    QWidget* CreaSchede();
    QWidget* CreaGiri();
    QWidget* CreaMappa();
    int LarghezzaMisure() const;
    void AdattaMisure();
    void AdattaMappa();
    void AdattaGiri();
    void AggiornaInvito();
    void Collega();
    RigaCanale* Riga(int c);

    // frmAnalisiBarra.cpp: the tool bar and the dialogs that it opens.
    QToolBar* CreaBarra();
    void Esegui(const std::string& chiave);
    void NomiBarra();
    void AggiornaDidascalia();
    void Impostazioni(int c);
    void MostraStatistiche();
    void MostraStatisticheMisure();
    void MostraReport();
    void MostraTracciato();
    void MostraSessione();
    void StampaGrafico(QPageLayout::Orientation verso = QPageLayout::Landscape);

    // frmAnalisiMenu.cpp: what opens under the right mouse button, and what leaves the window.
    void MenuGiri(const QPoint& dove);
    void MenuGrafico(const QPoint& dove);
    void ConfrontaColMigliore(int riga);
    UltimaVista Vista() const;
    void RiprendiVista();
    void SalvaImmagine();
    QImage Immagine() const;
    void DisegnaPagina(QtPrinter& stampante);
    std::vector<ValoreStampato> ValoriAlCursore() const;
    const GraficoWidget& GraficoInVista() const;
    std::string TitoloGrafico() const;

    QSplitter* divisore_ = nullptr;
    QSplitter* sinistra_ = nullptr;  ///< channels above, track map below
    QScrollArea* misure_ = nullptr;
    QFrame* fraMisure_ = nullptr;
    QTabWidget* SSTab1_ = nullptr;
    QToolBar* Toolbar1_ = nullptr;
    Didascalia* didascalia_ = nullptr;
    std::map<std::string, QToolButton*> chiavi_;
    GraficoWidget* NTGraph1_ = nullptr;
    GraficoWidget* NTGraphAll_ = nullptr;
    LegendaAllarmi* fraLegendaAllarmi_ = nullptr;
    BarraNavigazione* navigazione_ = nullptr;
    GrigliaGiri* MSFlexGrid1_ = nullptr;
    QFrame* mappa_ = nullptr;
    DisegnoTracciato* Picture1_ = nullptr;
    QLabel* lblCircuito_ = nullptr;
    QLabel* txtCircuito_ = nullptr;
    QLabel* lblPiloti_ = nullptr;
    QLabel* txtPiloti_ = nullptr;
    QButtonGroup* optScala_ = nullptr;
    PerCanale<RigaCanale*> righe_;
    std::unique_ptr<AnalisiDati> analisi_;
    std::unique_ptr<dlgLettura> lettura_;  ///< while a load takes long
    std::int64_t inizioLettura_ = 0;       ///< of the clock, ms
    bool scaricata_ = false;
};

}  // namespace lapvane
