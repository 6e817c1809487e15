#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScopeGuard>
#include <QScreen>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "analysis/compare/frmConfronto.h"
#include "analysis/frmAnalisiDati.h"
#include "analysis/frmAnalisiDatiSpeed.h"
#include "device/SerialComm.h"
#include "device/dlgDiagnostica.h"
#include "device/dlgStrumento.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/Soccorso.h"
#include "logs/frmDownload.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "project/FileRecenti.h"
#include "project/dlgNoteProgetto.h"
#include "sensors/CSensore.h"
#include "sensors/frmAllarmi.h"
#include "sensors/frmConfigurazione.h"
#include "sensors/frmImpostaSensore.h"
#include "sensors/frmSensori.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "shell/dlgLanguages.h"
#include "shell/frmInizio.h"
#include "shell/frmSplash.h"
#include "widgets/PannelloStato.h"
#include "widgets/TastoInvio.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Vesti.h"

namespace lapvane {

namespace {

constexpr int kPollMs = 200;

/// As long as it lives the current folder is that of a file, unless it was so before.
class CartellaPer {
 public:
    explicit CartellaPer(const std::filesystem::path& file)
        : prima_(platform().CurDir()), sua_(file.parent_path()) {
        if (sua_ != prima_) platform().ChDir(sua_);
    }
    CartellaPer(const CartellaPer&) = delete;
    CartellaPer& operator=(const CartellaPer&) = delete;
    ~CartellaPer() {
        if (sua_ != prima_) platform().ChDir(prima_);
    }

 private:
    std::filesystem::path prima_;
    std::filesystem::path sua_;
};

}  // namespace

frmMain::frmMain(std::unique_ptr<SerialControl> seriale, QWidget* parent)
    : QMainWindow(parent), seriale_(std::move(seriale)) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Lapvane"));
    setWindowIcon(Icona("lapvane"));
    ImpostaPrincipale(this);
    CostruisciMenu();
    CostruisciBarra();
    CostruisciStato();
    CreaInizio();
    setAcceptDrops(true);
    // Else the first button of the bar would have it, and an Enter too many behind a dialog would
    // be New. A button gets it by Tab alone.
    centralWidget()->setFocus();
    resize(1180, 720);
    tmrComm_.setSingleShot(true);
    tmrComm_.setTimerType(Qt::PreciseTimer);
    connect(&tmrComm_, &QTimer::timeout, this, [this] { Protetto([this] { Sorveglia(); }); });
    new TastoInvio(this);
}

frmMain::~frmMain() {
    ImpostaPrincipale(nullptr);
}

int frmMain::Avvia() {
    QApplication::setApplicationName(QStringLiteral("Lapvane"));
    QApplication::setWindowIcon(Icona("lapvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    Vesti();
    IndossaAspetto(CaricaAspetto());
    std::unique_ptr<frmMain> finestra;
    auto* splash = new frmSplash;
    splash->setAttribute(Qt::WA_DeleteOnClose);
    splash->NelFrattempo = [&finestra] {
        finestra = std::make_unique<frmMain>(MachineSerialControl());
        finestra->Prepara();
    };
    splash->AlTermine = [&finestra] {
        finestra->Carica();
        finestra->show();
        Protetto(OffriSoccorso);
        finestra->AvviaSorveglianza();
    };
    splash->show();
    return QApplication::exec();
}

void frmMain::Prepara() {
    for (QWidget* parte : findChildren<QWidget*>()) parte->ensurePolished();
    for (const auto* pulsante : findChildren<QAbstractButton*>()) {
        for (const QIcon::Mode modo : {QIcon::Normal, QIcon::Disabled}) {
            pulsante->icon().pixmap(pulsante->iconSize(), devicePixelRatio(), modo);
        }
    }
    QPixmap foglio(800, 80);
    QPainter penna(&foglio);
    for (const Scrittura scrittura :
         {Scrittura::Piccola, Scrittura::Corpo, Scrittura::Forte, Scrittura::Titolo}) {
        penna.setFont(Carattere(*this, scrittura));
        penna.drawText(0, 60, QStringLiteral("abcdefghilmnopqrstuvz ABCDEFGILMNOPRSTUV+(,)"));
    }
}

void frmMain::Carica() {
    ImpostaSoccorso(MettiDaParte);
    ImpostaRiserva(platform().AppPath());
    AnalisiCaricata = false;
    StrumentoPresentePrec = false;
    AnalisiInCorso = false;
    AnalisiSpeed = true;
    // Sizes for screens of 600 and of 768 rows, from twips at 15 a pixel.
    if (const QScreen* schermo = screen()) {
        const int righe = schermo->geometry().height();
        if (righe == 600) resize(800, 512);
        if (righe == 768) resize(1024, 680);
    }
    LeggiFileRecenti();
    CaricaTesti();
    CalcolaBaseTesti();
    platform().Language(IndiceLingua);
    CaricaTabelleNomi();
    CaricaLibreriaSensori();
    aspetto_ = CaricaAspetto();
    MostraAspetto();
    logRecenti_ = CaricaLogRecenti();
    MostraLogRecenti();
    ProgettoModificato = false;
    for (const Comando comando : {Comando::Save, Comando::SaveAs, Comando::ReadDev,
                                  Comando::ProgDev, Comando::SaveData, Comando::DownData}) {
        Abilita(comando, false);
    }
    caricata_ = true;
    qApp->installEventFilter(this);
    AggiornaTesti();
}

bool frmMain::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowActivate) Protetto([this] { AggiornaTesti(); });
    return QMainWindow::event(evento);
}

void frmMain::AvviaSorveglianza() {
    tmrComm_.start(kPollMs);
}

void frmMain::Sorveglia() {
    const std::int64_t inizio = platform().GetTickCount();
    // The timer may fire inside an exchange that keeps the poll off.
    if (!pollAttivo_) SenzaSorveglianza([] { tmrComm_Timer(); });
    AggiornaInizio();
    // From start to start; a poll that took longer, or that somebody waited for, has its rest.
    const std::int64_t durata = platform().GetTickCount() - inizio;
    tmrComm_.start(durata < kPollMs && !attesoDa_ ? static_cast<int>(kPollMs - durata) : kPollMs);
}

void frmMain::SenzaSorveglianza(const std::function<void()>& azione) {
    pollAttivo_ = true;
    attesoDa_.reset();
    try {
        azione();
    } catch (...) {
        pollAttivo_ = false;
        throw;
    }
    pollAttivo_ = false;
    RiprendiPresto();
}

/// A dialog or a box that closes: the routine behind it cannot go on before a poll that has begun
/// inside it has ended, and none begins before the routine has gone on.
bool frmMain::eventFilter(QObject* oggetto, QEvent* evento) {
    if (evento->type() == QEvent::Hide && qobject_cast<QDialog*>(oggetto) != nullptr) {
        if (pollAttivo_) {
            if (!attesoDa_) attesoDa_ = platform().GetTickCount();
        } else if (tmrComm_.isActive()) {
            tmrComm_.start(kPollMs);
        }
    }
    if (evento->type() == QEvent::KeyPress) {
        const auto* tasto = static_cast<QKeyEvent*>(evento);
        if (tasto->key() == Qt::Key_F1) {
            MostraAiuto();
            return true;
        }
        // The shortcut of the entry reaches no further than the main window.
        if (tasto->key() == Qt::Key_F11 && tasto->modifiers() == Qt::NoModifier) {
            if (!tasto->isAutoRepeat()) mnuModoBox_->trigger();
            return true;
        }
    }
    if (evento->type() == QEvent::ToolTip && MostraTasto(oggetto, evento)) return true;
    return QMainWindow::eventFilter(oggetto, evento);
}

bool frmMain::Libero(bool comando) const {
    return !pollAttivo_ && !(comando && comandoInCorso_);
}

void frmMain::Accoda(Attesa attesa) {
    if (pollAttivo_ && !attesoDa_) attesoDa_ = platform().GetTickCount();
    // The second click of an impatient hand asks for the same thing.
    for (const Attesa& altra : inAttesa_) {
        if (attesa.Chi != nullptr && altra.Chi == attesa.Chi) return;
    }
    inAttesa_.push_back(std::move(attesa));
}

void frmMain::RiprendiPresto() {
    if (!inAttesa_.empty()) QTimer::singleShot(0, this, [this] { RiprendiAttese(); });
}

/// Runs the first of those that need not wait any longer; the next one has its own turn, so that
/// what this one leaves for its end comes before it.
void frmMain::RiprendiAttese() {
    const auto prima = std::find_if(inAttesa_.begin(), inAttesa_.end(),
                                    [this](const Attesa& a) { return Libero(a.Comando); });
    if (prima == inAttesa_.end()) return;
    const auto azione = std::move(prima->Azione);
    inAttesa_.erase(prima);
    Protetto(azione);
    RiprendiPresto();
}

void frmMain::QuandoLibero(const void* chi, std::function<void()> azione) {
    if (Libero(false)) {
        azione();
    } else {
        Accoda({chi, false, std::move(azione)});
    }
}

bool frmMain::RinunciaAttesa(int pazienza) {
    return pollAttivo_ && attesoDa_ && platform().GetTickCount() - *attesoDa_ >= pazienza;
}

void frmMain::Chiedi(Comando comando, std::function<bool()> acceso) {
    Protetto([&] {
        Comandato(voci_[comando], [this, comando, acceso = std::move(acceso)] {
            // What was asked for while something else ran may be off behind it.
            if (acceso()) {
                Esegui(comando);
            } else {
                Rifiuta(comando);
            }
        });
    });
}

/// A command that lets events run does not start another one inside itself: the other one comes
/// behind its end.
void frmMain::Comandato(const void* chi, std::function<void()> azione) {
    const bool altre =
        std::any_of(inAttesa_.begin(), inAttesa_.end(), [](const Attesa& a) { return a.Comando; });
    if (Libero(true) && !altre) {
        Corri(azione);
    } else {
        Accoda({chi, true, [this, azione = std::move(azione)] { Corri(azione); }});
    }
}

void frmMain::Corri(const std::function<void()>& comando) {
    comandoInCorso_ = true;
    struct Fine {
        frmMain& Finestra;
        ~Fine() {
            Finestra.comandoInCorso_ = false;
            Finestra.RileggiRecenti();
            Finestra.RiprendiPresto();
        }
    } const fine{*this};
    comando();
}

/// What was asked for while something else ran, and is off behind it.
void frmMain::Rifiuta(Comando comando) {
    std::string nome = DaQt(voci_[comando]->text().remove(QLatin1Char('&')));
    if (comando == Comando::DownData) nome += "\r\n" + Testo(Voce::StrumentoMuto);
    platform().MsgBox(Testo(Voce::ComandoImpossibile) + " " + nome, Buttons::Ok, Icon::Information,
                      platform().ExeName());
}

void frmMain::Esegui(Comando comando) {
    switch (comando) {
        case Comando::New:
            return Apri(mnuNew_Click);
        case Comando::Open:
            return Apri(mnuOpen_Click);
        case Comando::Save:
            mnuSave_Click();
            return ConcludiSoccorso();
        case Comando::SaveAs:
            mnuSaveAs_Click();
            return ConcludiSoccorso();
        case Comando::Exit:
            // Behind the end of this command, as a click on the close box would come.
            QTimer::singleShot(0, this, [this] { close(); });
            break;
        case Comando::Setup:
            frmConfigurazione(this).exec();
            break;
        case Comando::Sensor:
            frmSensori(this).exec();
            break;
        case Comando::CustSensors:
            frmImpostaSensore(this).exec();
            break;
        case Comando::Alarm:
            frmAllarmi(this).exec();
            break;
        case Comando::ProgDev:
            dlgStrumento(this).Esegui(mnuProgramDevice_Click);
            break;
        case Comando::ReadDev:
            dlgStrumento(this).Esegui(mnuReadDevice_Click);
            break;
        case Comando::DownData:
            return ScaricaDati();
        case Comando::SaveData:
            mnuSaveData_Click();
            return ConcludiSoccorso();
        case Comando::Analize:
            return Analizza();
        case Comando::Language:
            return CambiaLingua();
        case Comando::Info:
            return MostraInformazioni();
        case Comando::Print:
            break;  // Kept: nothing enables it
        case Comando::Note:
            return MostraNote();
        case Comando::ViewDev:
            dlgDiagnostica(this).exec();
            break;
    }
}

void frmMain::MostraNote() {
    if (note_ == nullptr || !note_->isVisible()) {
        note_ = new dlgNoteProgetto(this);
        note_->setAttribute(Qt::WA_DeleteOnClose);
        note_->show();
    }
    note_->raise();
    note_->activateWindow();
}

/// Closes the notes, which belong to the project that is open, and asks first whether what was
/// typed is to be kept: it is the project's then.
frmMain::Note frmMain::LasciaNote(Voce domanda) {
    if (note_ == nullptr || !note_->isVisible()) return Note::Chiuse;
    if (note_->Cambiate()) {
        const Answer risposta = platform().MsgBox(Testo(domanda), Buttons::YesNoCancel,
                                                  Icon::Question, platform().ExeName());
        if (risposta == Answer::Cancel) {
            MostraNote();
            return Note::Restano;
        }
        if (risposta == Answer::Yes) {
            note_->OKButton_Click();
            return Note::Tenute;
        }
    }
    note_->close();
    return Note::Chiuse;
}

/// A command that puts another project in the place of this one. Notes that are to be kept are
/// saved with their project, or the command does not come about.
void frmMain::Apri(const std::function<void()>& comando) {
    const Note note = LasciaNote(Voce::TenereNoteSalvare);
    if (note == Note::Restano) return;
    if (note == Note::Tenute) {
        if (voci_[Comando::Save]->isEnabled()) {
            mnuSave_Click();
        } else {
            mnuSaveAs_Click();
        }
        if (ProgettoModificato) return;
    }
    LasciaSoccorso(ProgettoModificato);
    comando();
}

void frmMain::ScaricaDati() {
    LasciaSoccorso(logInMemoria().DaSalvare);
    AzzeraBufferLog();
    {
        frmDownload finestra(this);
        finestra.exec();
    }
    mnuSaveData_Click();
    ConcludiSoccorso();
}

void frmMain::Analizza() {
    RiparaCartella(platform().AppPath());
    const auto scelto = platform().AskOpen(
        {Testo(Voce::AnalizzaDati), platform().AppPath(), "Analysis File (*.csv)|*.csv", {}, {}});
    if (scelto) ApriAnalisi(*scelto);
}

void frmMain::ApriAnalisi(const std::filesystem::path& file, QWidget* sopra) {
    QWidget* const sotto = sopra != nullptr ? sopra : this;
    // As a file dialog leaves it: the analysis looks for the files beside the log there.
    const CartellaPer cartella(file);
    AnalisiInCorso = true;
    platform().DoEvents();
    // The log needs the memory.
    inizio_->Tieni(false);
    const auto poi = qScopeGuard([this] { inizio_->Tieni(true); });
    std::unique_ptr<frmAnalisi> finestra;
    if (AnalisiSpeed) {
        finestra = std::make_unique<frmAnalisiDatiSpeed>(sotto);
    } else {
        finestra = std::make_unique<frmAnalisiDati>(sotto);
    }
    analisi_ = finestra.get();
    finestra->NomeFileDati = file;
    finestra->QuandoCaricato = [this, &file] { Ricorda(file); };
    finestra->Apri();
    analisi_ = nullptr;
}

void frmMain::CambiaLingua() {
    {
        dlgLanguages finestra(this);
        finestra.exec();
    }
    CalcolaBaseTesti();
    platform().Language(IndiceLingua);
    if (AnalisiCaricata && analisi_ != nullptr) analisi_->RefreshLanguage();
    CaricaTabelleNomi();
    AggiornaTesti();
}

void frmMain::MostraInformazioni() {
    auto* finestra = new frmSplash(this);
    finestra->setAttribute(Qt::WA_DeleteOnClose);
    finestra->ModoInformazioni = true;
    finestra->show();
    finestra->activateWindow();
}

void frmMain::closeEvent(QCloseEvent* evento) {
    evento->ignore();
    if (!Libero(true)) {
        Accoda({voci_[Comando::Exit], true, [this] { close(); }});
        return;
    }
    Protetto([this, evento] {
        bool chiude = false;
        Corri(
            [&] { chiude = LasciaNote(Voce::TenereNote) != Note::Restano && ConfermaChiusura(); });
        if (!chiude) return;
        inAttesa_.clear();
        tmrComm_.stop();
        try {
            ScriviFileRecenti();
        } catch (const ErroreRuntime& errore) {
            SegnalaScrittura(errore, Voce::RecentiNonSalvati);
        }
        FineSoccorso();
        SvuotaLibreriaSensori();
        ChiudiPorta();
        evento->accept();
        EndProgram(0);
    });
}

}  // namespace lapvane
