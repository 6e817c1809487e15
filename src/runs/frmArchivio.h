#pragma once

#include <QTimer>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "runs/Archivio.h"
#include "runs/ScelteArchivio.h"
#include "widgets/Dialogo.h"

class QComboBox;
class QFrame;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QSplitter;
class QTabWidget;
class QToolBar;
class QToolButton;

namespace lapvane {

class BarraTasti;
class StrisciaAvviso;

class DisegnoModello;
class Scheda;
class DisegnoTempi;
class DisegnoUscite;
class QtPrinter;
class TabellaDifferenze;

/// The runs of a folder: the logs in it and below, to be found, sorted and read about. It changes
/// no record of the system and no file but the notes of a session, the index and its own choices.
class frmArchivio : public Dialogo {
    Q_OBJECT
 public:
    explicit frmArchivio(QWidget* parent = nullptr);
    ~frmArchivio() override;

    /// Opens the analysis of a log, and comes back when it is closed.
    std::function<void(const std::filesystem::path&)> QuandoAnalisi;
    /// Lays logs beside one another, likewise.
    std::function<void(const std::vector<std::filesystem::path>&)> QuandoConfronto;

    /// Takes that folder; the one of the last time is taken by itself.
    void Apri(const std::filesystem::path& cartella);
    const Archivio& Dati() const { return archivio_; }

    void done(int esito) override;

 protected:
    void showEvent(QShowEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

 private:
    // frmArchivioForma.cpp: how it is laid out.
    void AggiornaTesti(Mnemonica& lettere) override;
    void Disponi();
    BarraTasti* CreaBarra();
    QWidget* CreaAvviso();
    QWidget* CreaElenco();
    QWidget* CreaLato();
    QWidget* CreaTempi();
    QWidget* CreaNote();
    QWidget* CreaStato();
    void DisponiStretta();
    void RiempiGruppi();

    // frmArchivio.cpp: what its controls do, and the work between two events.
    void Collega();
    void CollegaTasti();
    void VaiAllaRicerca();
    void SalvaNoteTasto() { SalvaLeNote(); }
    void ScegliCartella();
    void Rileggi();
    void FermaORiprendi();
    void Lavora();
    bool LavoraLog();
    void Rinnova();
    /// Changes rows, and keeps what is chosen and what is in sight.
    void Tenendo(const std::function<void()>& cambia);
    void Cerca();
    void Ordina(int colonna);
    std::vector<std::filesystem::path> Scelte() const;
    const Uscita* Corrente() const;
    void CambiaScelta();
    void Fuori(const std::function<void()>& azione);
    void ApriAnalisi();
    void Confronta();
    void MenuRighe(const QPoint& dove);

    // frmArchivioLato.cpp: what is told of the chosen run; its notes.
    void AggiornaLato();
    void AggiornaTempi();
    void MostraNote();
    void NoteToccate();
    bool SalvaLeNote();
    bool ScriviNote(const std::filesystem::path& csv, const QString& testo);
    void RiprovaNote();

    // frmArchivioImpostazioni.cpp: its settings against those of another.
    void RiempiContro();
    void AggiornaImpostazioni();
    QWidget* CreaImpostazioni();
    const Uscita* UscitaPrima(const Uscita& uscita) const;
    QString NomeUscita(const Uscita& uscita) const;

    // frmArchivioVista.cpp: what it says of itself.
    void AggiornaConto();
    void AggiornaInvito();
    void AggiornaAvviso();
    void AggiornaStato();
    void AggiornaTitolo();
    void Annuncia(const QString& frase);

    // frmArchivioUscita.cpp: what leaves it.
    void CopiaRighe();
    void MostraFile();
    void SalvaCsv();
    void Stampa();
    void DisegnaPagine(QtPrinter& stampante) const;
    QString DettoDellaPagina() const;

    Archivio archivio_;
    ScelteArchivio scelte_;
    QTimer tmrLavoro_;
    QTimer tmrRinnova_;   ///< what was read meanwhile comes into the list
    QTimer tmrLato_;      ///< the settings of the chosen run, once the keys rest
    QTimer tmrAnnuncio_;  ///< what was done stands in the status line for a while
    QString annuncio_;
    bool fermato_ = false;
    bool tenendo_ = false;                        ///< rows change under what is chosen
    bool logNuovi_ = false;                       ///< read since the rows were sorted
    std::set<std::filesystem::path> logProvati_;  ///< read or not, once a look at the folder

    std::filesystem::path noteDi_;  ///< the run that the notes on show belong to; empty: none
    QString noteSalvate_;           ///< as its file has them
    struct Pendente {
        QString Testo;
        QString Perche;
    };
    std::map<std::filesystem::path, Pendente> pendenti_;  ///< notes that no disk took
    std::filesystem::path controDi_;                      ///< the run before the chosen one
    bool stretta_ = false;
    bool disposta_ = false;     ///< its parts have got their widths
    QString letteraConfronta_;  ///< "Compare" with its Alt letter, and so on
    QString letteraFerma_;
    QString letteraRiprendi_;

    BarraTasti* barra_ = nullptr;
    QLineEdit* txtCerca_ = nullptr;
    QLabel* lblConto_ = nullptr;
    QLabel* lblGruppi_ = nullptr;
    QAction* etichettaGruppi_ = nullptr;  ///< its place in the bar
    QComboBox* cboGruppi_ = nullptr;
    QPushButton* cmdConfronta_ = nullptr;
    QPushButton* cmdAnalisi_ = nullptr;
    StrisciaAvviso* avviso_ = nullptr;
    QPushButton* cmdRiprova_ = nullptr;
    QSplitter* divisore_ = nullptr;
    DisegnoModello* modello_ = nullptr;
    DisegnoUscite* lista_ = nullptr;
    QPushButton* cmdScegli_ = nullptr;
    QPushButton* cmdTogli_ = nullptr;
    QWidget* lato_ = nullptr;
    QSplitter* colonna_ = nullptr;
    QTabWidget* schede_ = nullptr;
    Scheda* schedaTempi_ = nullptr;
    DisegnoTempi* tempi_ = nullptr;
    QLabel* lblGuaio_ = nullptr;
    Scheda* schedaNote_ = nullptr;
    QPlainTextEdit* txtNote_ = nullptr;
    QLabel* lblCambiate_ = nullptr;
    QPushButton* cmdAnnulla_ = nullptr;
    QPushButton* cmdSalva_ = nullptr;
    Scheda* schedaImpostazioni_ = nullptr;
    QLabel* lblContro_ = nullptr;
    QComboBox* cboContro_ = nullptr;
    TabellaDifferenze* impostazioni_ = nullptr;
    QLabel* lblImpostazioni_ = nullptr;
    QLabel* lblStato_ = nullptr;
    QProgressBar* progresso_ = nullptr;
    QLabel* lblLettura_ = nullptr;
    QPushButton* cmdFerma_ = nullptr;
    QLabel* lblAiuto_ = nullptr;
};

}  // namespace lapvane
