#pragma once

#include <QTimer>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "analysis/compare/Confronto.h"
#include "analysis/compare/ScelteConfronto.h"
#include "widgets/Dialogo.h"

class QButtonGroup;
class QComboBox;
class QProgressBar;
class QSplitter;
class QTabWidget;
class QToolBar;
class QToolButton;

namespace lapvane {

class BarraTasti;
class StrisciaAvviso;

class DisegnoElenco;
class DisegnoIstogramma;
class DisegnoMappa;
class DisegnoParti;
class DisegnoQuadri;
class Scheda;
class DisegnoValori;
class DisegnoXY;
class QtPrinter;

/// Laps of one or more logs beside one another: where the time goes. It reads files and writes none
/// but those that a person asks for, and its own choices when it closes; no record of the system
/// changes.
class frmConfronto : public Dialogo {
    Q_OBJECT
 public:
    explicit frmConfronto(QWidget* parent = nullptr);
    ~frmConfronto() override;

    /// Opens a log beside those that are open. What hinders it is told in the window. With a row of
    /// the lap table that lap is laid against the best one, whatever was chosen the last time.
    void Apri(const std::filesystem::path& file, std::optional<int> indiceGiro = std::nullopt);
    const Confronto& Dati() const { return confronto_; }
    /// Puts the texts on in the language of now.
    void RefreshLanguage() { Testi(); }

    void done(int esito) override;

 protected:
    void dragEnterEvent(QDragEnterEvent* evento) override;
    void dropEvent(QDropEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    // frmConfrontoForma.cpp: how it is laid out.
    void AggiornaTesti(Mnemonica& lettere) override;
    void Disponi();
    BarraTasti* CreaBarra();
    QWidget* CreaRisposta();
    QWidget* CreaSinistra();
    QWidget* CreaCentro();
    QWidget* CreaSchedaXY();
    QWidget* CreaSchedaIstogramma();
    QWidget* CreaDestra();
    QWidget* CreaStato();
    void DisponiStretta();
    void FaiPosto(bool due);

    // frmConfronto.cpp: what its controls do.
    void Collega();
    void CollegaElenchi();
    void CollegaGrafico();
    void CollegaScelte();
    void RiempiParti();
    void RiempiCanali();
    void RiempiCanale(QComboBox* lista, const std::string& scelto, bool conDistacco);

    void cmdApri_Click();
    void cmdTogli_Click();
    void SpuntaGiro(int riga, bool accesa);
    void MettiRiferimento(int riga);
    void SpuntaQuadro(int riga, bool accesa);
    void MenuGiri(int riga, const QPoint& dove);
    void AllineaAncora();

    // frmConfrontoVista.cpp: what it shows.
    void Aggiorna();
    void AggiornaElenchi();
    void AggiornaQuadri();
    void AggiornaRisposta();
    void AggiornaAvviso();
    void AggiornaTabelle();
    void AggiornaNotaParti();
    void AggiornaCursore();
    void AggiornaAnello();
    void AggiornaMappa();
    void AggiornaXY();
    void AggiornaIstogramma();
    void AggiornaTitolo();
    void AggiornaStato();
    void Dici(const QString& grave) { guaio_ = grave; }
    QString NomeGiro(GiroScelto giro, bool conLog) const;
    QString NomeLog(int log) const;
    QString NomeParte(int parte) const;
    QString Perche(PercheNo esito) const;
    std::vector<std::string> ChiaviQuadri() const;
    QString TrattoInVista() const;

    // frmConfrontoUscita.cpp: what leaves it.
    void CopiaImmagine();
    void CopiaTabelle();
    void SalvaImmagine();
    void SalvaCsv();
    void Stampa();
    QImage Immagine() const;
    void DipingiFoglio(QPainter& penna, const QRectF& foglio) const;
    double DipingiGiri(QPainter& penna, const QRectF& foglio) const;
    void Scrivi(const std::filesystem::path& file, const std::function<void()>& scrivi);
    void DisegnaPagina(QtPrinter& stampante) const;
    std::filesystem::path NomeProposto(const char* fine) const;

    // Choices from one time to the next.
    void Ricorda();

    struct RigaGiri {
        int Log = 0;
        int Giro = -1;  ///< -1: the head of the log
    };

    Confronto confronto_;
    ScelteConfronto scelte_;
    std::vector<std::string> quadri_;  ///< keys of the ticked panes, in the order of the list
    std::vector<RigaGiri> righe_;      ///< of the list of laps
    QString guaio_;                    ///< what could not be done, until the next thing is done
    QTimer tmrAllinea_;
    TabellaParti tabella_;               ///< of the chosen laps, as it is shown
    std::pair<int, int> notaDi_{-1, 0};  ///< log and aligned laps that the card's hint was made of
    bool fermato_ = false;
    bool stretta_ = false;
    bool due_ = false;    ///< there is a second cursor
    QList<int> altezze_;  ///< values and map before it came

    BarraTasti* barra_ = nullptr;
    QLabel* lblAsse_ = nullptr;
    QLabel* lblParti_ = nullptr;
    QPushButton* optDistanza_ = nullptr;
    QPushButton* optTempo_ = nullptr;
    QComboBox* cboParti_ = nullptr;
    QLabel* lblRisposta_ = nullptr;
    std::array<QPushButton*, 3> cmdParte_{};
    QLabel* lblIdeale_ = nullptr;
    StrisciaAvviso* avviso_ = nullptr;
    QSplitter* divisore_ = nullptr;
    QTabWidget* sinistra_ = nullptr;
    QWidget* elenchi_ = nullptr;
    Scheda* schedaGiri_ = nullptr;
    Scheda* schedaQuadri_ = nullptr;
    DisegnoElenco* lstGiri_ = nullptr;
    DisegnoElenco* lstQuadri_ = nullptr;
    QPushButton* cmdApri_ = nullptr;
    QTabWidget* schede_ = nullptr;
    DisegnoQuadri* grafico_ = nullptr;
    DisegnoXY* xy_ = nullptr;
    DisegnoIstogramma* istogramma_ = nullptr;
    QComboBox* cboX_ = nullptr;
    QComboBox* cboY_ = nullptr;
    QPushButton* optPunti_ = nullptr;
    QPushButton* optLinea_ = nullptr;
    QComboBox* cboCanale_ = nullptr;
    QComboBox* cboFasce_ = nullptr;
    QLabel* lblX_ = nullptr;
    QLabel* lblY_ = nullptr;
    QLabel* lblCanale_ = nullptr;
    QLabel* lblFasce_ = nullptr;
    QLabel* lblTrattoXY_ = nullptr;
    QLabel* lblTrattoFasce_ = nullptr;
    Scheda* schedaParti_ = nullptr;
    DisegnoParti* parti_ = nullptr;
    QSplitter* destra_ = nullptr;
    Scheda* schedaValori_ = nullptr;
    DisegnoValori* valori_ = nullptr;
    Scheda* schedaMappa_ = nullptr;
    DisegnoMappa* mappa_ = nullptr;
    QComboBox* cboMappa_ = nullptr;
    QLabel* lblStato_ = nullptr;
    QLabel* lblAiuto_ = nullptr;
    QProgressBar* progresso_ = nullptr;
    QPushButton* cmdFerma_ = nullptr;
};

}  // namespace lapvane
