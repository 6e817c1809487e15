#pragma once

#include <QAction>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "shell/Aspetto.h"
#include "shell/LoadStrings.h"
#include "shell/LogRecenti.h"
#include "shell/Principale.h"

namespace lapvane {

class PannelloStato;
class frmAnalisi;
class frmInizio;
struct StatoInizio;
class dlgNoteProgetto;

/// Puts a look on the program.
void IndossaAspetto(const Aspetto& aspetto);

/// The one main window: menu, tool bar, status bar, serial control and poll timer. It routes every
/// command to what carries it out.
class frmMain final : public QMainWindow, public Principale {
    Q_OBJECT
 public:
    /// `seriale` is the port of the link; the window owns it.
    explicit frmMain(std::unique_ptr<SerialControl> seriale, QWidget* parent = nullptr);
    ~frmMain() override;

    /// The program from its start to its end: the splash, after its wait the main window. Returns
    /// what the process ends with. The application and the machine are there.
    static int Avvia();

    /// Does what the first painting needs and is the same whatever `Carica` finds: pictures,
    /// letters.
    void Prepara();
    /// The load of the window: flags, size, recent list, texts, names, sensor library, commands.
    void Carica();
    /// Starts the poll of the instrument, every 200 ms.
    void AvviaSorveglianza();
    /// Runs a command as its menu entry does.
    void Esegui(Comando comando);

    void AbilitaMenu(Comando comando, bool acceso) override;
    void AbilitaPulsante(Comando comando, bool acceso) override;
    void AbilitaTitolo(Titolo titolo, bool acceso) override;
    void Salvato() override;
    void TestoPannello(Pannello pannello, const std::string& testo) override;
    void ImmaginePannello(Pannello pannello, int immagine) override;
    void AbilitaPannello(Pannello pannello, bool acceso) override;
    void NascondiFileRecenti() override;
    void MostraFileRecente(int indice, const std::filesystem::path& percorso) override;
    SerialControl& SerialComm() override { return *seriale_; }
    bool RinunciaAttesa(int pazienza) override;
    void QuandoLibero(const void* chi, std::function<void()> azione) override;
    void SenzaSorveglianza(const std::function<void()>& azione) override;

 protected:
    bool event(QEvent* evento) override;
    bool eventFilter(QObject* oggetto, QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;
    void dragEnterEvent(QDragEnterEvent* evento) override;
    void dropEvent(QDropEvent* evento) override;

 private:
    /// Something that was asked for and has to wait: for the poll, a command also for the one that
    /// runs. `Chi` asked for it.
    struct Attesa {
        const void* Chi;
        bool Comando;
        std::function<void()> Azione;
    };

    void CostruisciMenu();
    void CostruisciBarra();
    void CostruisciStato();
    void AggiornaTesti();
    void Sorveglia();
    bool Libero(bool comando) const;
    void Accoda(Attesa attesa);
    void RiprendiPresto();
    void RiprendiAttese();
    void Chiedi(Comando comando, std::function<bool()> acceso);
    void Comandato(const void* chi, std::function<void()> azione);
    void Corri(const std::function<void()>& comando);
    void Rifiuta(Comando comando);
    void Analizza();
    /// `sopra`: the window that it comes to stand over; null: this one.
    void ApriAnalisi(const std::filesystem::path& file, QWidget* sopra = nullptr);
    static QString TestoRecente(const QMenu& menu, int indice, const QString& nome);
    void CreaConfronto();
    void CreaConfrontoStrumento();
    void Confronta(const std::vector<std::filesystem::path>& log, QWidget* sopra = nullptr);
    void CreaArchivio();
    void MostraArchivio();
    void CreaLogRecenti();
    void MostraLogRecenti();
    void ApriLogRecente(const std::filesystem::path& file);
    void Ricorda(const std::filesystem::path& log);
    void CreaAspetto();
    void ScegliAspetto(const Aspetto& scelto);
    void MostraAspetto();
    void CreaInizio();
    void CreaCarte();
    void AggiornaInizio();
    void RileggiRecenti();
    void LeggiInNuovo();
    void ApriEsempio();
    void MostraAiuto();
    bool MostraTasto(QObject* oggetto, QEvent* evento);
    void ScaricaDati();
    void CambiaLingua();
    void MostraInformazioni();
    void MostraNote();
    void Apri(const std::function<void()>& comando);
    enum class Note { Restano, Chiuse, Tenute };
    Note LasciaNote(Voce domanda);

    std::unique_ptr<SerialControl> seriale_;
    std::map<Comando, QAction*> voci_;
    std::map<Comando, QToolButton*> pulsanti_;
    std::map<Titolo, QMenu*> menu_;
    std::array<QAction*, 4> recenti_{};
    QAction* separatoreRecenti_ = nullptr;
    QAction* mnuConfronto_ = nullptr;
    QAction* mnuArchivio_ = nullptr;
    QAction* mnuCompareDevice_ = nullptr;
    QAction* separatoreLog_ = nullptr;
    std::array<QAction*, kLogRecenti> voceLog_{};
    ElencoLog logRecenti_;
    QAction* mnuManuale_ = nullptr;
    QMenu* mnuAspetto_ = nullptr;
    std::map<TemaScelto, QAction*> voceTema_;
    QAction* mnuModoBox_ = nullptr;
    Aspetto aspetto_;
    frmInizio* inizio_ = nullptr;
    std::unique_ptr<StatoInizio> statoInizio_;  // what the page shows of the recent files
    QToolBar* barra_ = nullptr;
    std::array<PannelloStato*, 8> pannelli_{};
    std::array<int, 8> immagini_{};  ///< of the panels, by number
    QTimer tmrComm_;
    frmAnalisi* analisi_ = nullptr;
    QPointer<dlgNoteProgetto> note_;

    std::deque<Attesa> inAttesa_;
    std::optional<std::int64_t> attesoDa_;  // since when somebody waits for the poll to end
    bool pollAttivo_ = false;
    bool comandoInCorso_ = false;
    bool caricata_ = false;
};

}  // namespace lapvane
