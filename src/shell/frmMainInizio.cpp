// What the main window has for who does not know yet what comes next: the start page, its title
// with the project's name, the manual, keys in tool tips.
#include <QApplication>
#include <QFileInfo>
#include <QHelpEvent>
#include <QLocale>
#include <QToolTip>

#include "analysis/compare/DisegnoNumeri.h"
#include "logs/BufferLog.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "project/FileRecenti.h"
#include "runs/CamminoCartelle.h"
#include "runs/LetturaUscita.h"
#include "shell/LoadStrings.h"
#include "shell/Manuale.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "shell/frmInizio.h"
#include "shell/frmMain.h"
#include "widgets/PannelloStato.h"
#include "widgets/style/Icone.h"

namespace lapvane {

namespace {

/// A recent file by its name; where it was last written, or that it is not there.
RecenteInizio Recente(const std::filesystem::path& file) {
    RecenteInizio recente{PercorsoInQt(file.stem()), PercorsoInQt(file), {}};
    const QFileInfo info(recente.Riga);
    recente.Data = info.exists()
                       ? QLocale().toString(info.lastModified().date(), QLocale::ShortFormat)
                       : InQt(Testo(Voce::NonQui));
    return recente;
}

/// A log by its circuit and session, with its laps.
RecenteInizio LogRecente(const std::filesystem::path& file) {
    RecenteInizio recente = Recente(file);
    Uscita uscita;
    if (!FileEsiste(file) || !LeggiAccanto(file, StatiDi(file), uscita)) return recente;
    QStringList nome;
    for (const std::string& parte : {uscita.Circuito, uscita.Sessione}) {
        if (!parte.empty()) nome << InQt(parte);
    }
    if (!nome.isEmpty()) recente.Nome = nome.join(QStringLiteral(", "));
    if (uscita.Migliore > 0) {
        recente.Riga +=
            QStringLiteral(" \u00B7 ") +
            InQt(Testo(Voce::GiriMigliore)).arg(uscita.Giri()).arg(TempoGiro(uscita.Migliore));
    }
    return recente;
}

/// The folder of the sample in that of the program.
std::filesystem::path Esempio(const char* nome) {
    return platform().AppPath() / nome;
}

}  // namespace

void frmMain::CreaInizio() {
    inizio_ = new frmInizio(this);
    statoInizio_ = std::make_unique<StatoInizio>();
    CreaCarte();
    inizio_->ApriProgetto = [this](int i) { recenti_.at(static_cast<std::size_t>(i))->trigger(); };
    inizio_->ApriLog = [this](int i) { voceLog_.at(static_cast<std::size_t>(i))->trigger(); };
    inizio_->SalvaLog = [this] { voci_[Comando::SaveData]->trigger(); };
    inizio_->Manuale = [this] { mnuManuale_->trigger(); };
    inizio_->Tasti = [] { Protetto([] { ApriManuale(kPostoTasti); }); };
    setCentralWidget(inizio_);
}

void frmMain::CreaCarte() {
    using Parte = frmInizio::Parte;
    frmInizio& pagina = *inizio_;
    pagina.Aggiungi(Parte::Configurazione, voci_[Comando::Setup], Voce::InizioImposta);
    pagina.Aggiungi(Parte::Configurazione, voci_[Comando::Sensor], Voce::InizioSensori);
    pagina.Aggiungi(Parte::Configurazione, voci_[Comando::Alarm], Voce::InizioAllarmi);
    pagina.Aggiungi(Parte::Configurazione, voci_[Comando::CustSensors], Voce::InizioLibreria);
    pagina.Aggiungi(Parte::Strumento, voci_[Comando::DownData], Voce::InizioScarica);
    pagina.Aggiungi(Parte::Strumento, voci_[Comando::ViewDev], Voce::InizioLive);
    pagina.Aggiungi(Parte::Strumento, voci_[Comando::ReadDev], Voce::InizioLeggi);
    pagina.SenzaProgetto(voci_[Comando::ReadDev], Voce::InizioLeggiNuovo,
                         [this] { Protetto([this] { LeggiInNuovo(); }); });
    pagina.Aggiungi(Parte::Strumento, voci_[Comando::ProgDev], Voce::InizioProgramma, true);
    pagina.Aggiungi(Parte::Progetto, voci_[Comando::New], Voce::InizioNuovo);
    pagina.Aggiungi(Parte::Progetto, voci_[Comando::Open], Voce::InizioApri);
    pagina.Aggiungi(Parte::Analisi, voci_[Comando::Analize], Voce::InizioAnalizza);
    pagina.Aggiungi(Parte::Analisi, mnuConfronto_, Voce::InizioConfronto);
    pagina.Aggiungi(Parte::Analisi, mnuArchivio_, Voce::InizioUscite);
    pagina.Aggiungi(Parte::Analisi, "card_Esempio", Voce::UscitaEsempio, Voce::InizioEsempio,
                    Icona("Circuito"), [this] { Protetto([this] { ApriEsempio(); }); });
}

/// The files of both lists may have come or gone while somebody was elsewhere.
void frmMain::RileggiRecenti() {
    statoInizio_->Progetti.clear();
    for (int i = 0; i < static_cast<int>(recenti_.size()); ++i) {
        const std::string& riga = recenti().Righe[static_cast<std::size_t>(i)];
        if (!recenti_[static_cast<std::size_t>(i)]->isVisible() || riga.empty()) continue;
        statoInizio_->Progetti.push_back(Recente(PercorsoDaRiga(riga)));
    }
    statoInizio_->Log.clear();
    for (const std::filesystem::path& log : logRecenti_) {
        statoInizio_->Log.push_back(LogRecente(log));
    }
    AggiornaInizio();
}

/// Title and start page, as the project and the instrument are at this moment.
void frmMain::AggiornaInizio() {
    if (!caricata_) return;
    StatoInizio stato = *statoInizio_;
    stato.Strumento = StrumentoPresente;
    if (StrumentoPresente) {
        stato.Identita = pannelli_[static_cast<std::size_t>(Pannello::Identita)]->Testo();
        stato.Porta = pannelli_[static_cast<std::size_t>(Pannello::Collegamento)]->Testo();
    }
    stato.Progetto = voci_[Comando::SaveAs]->isEnabled();
    if (stato.Progetto) {
        stato.NomeProgetto = InQt(DatiProgetto.NomeProgetto);
        if (!progettoAperto().SenzaFile) stato.Percorso = PercorsoInQt(PercorsoProgetto);
        if (stato.NomeProgetto.trimmed().isEmpty()) {
            stato.NomeProgetto = stato.Percorso.isEmpty() ? InQt(Testo(Voce::ProgettoSenzaNome))
                                                          : PercorsoInQt(PercorsoProgetto.stem());
        }
    }
    stato.LogDaSalvare = logInMemoria().DaSalvare && voci_[Comando::SaveData]->isEnabled();
    // The index runs ahead of the texts while a language is being chosen.
    stato.Lingua = BaseTesti;
    inizio_->Mostra(stato);
    const QString titolo = stato.Progetto
                               ? stato.NomeProgetto.simplified() + QStringLiteral("[*] - Lapvane")
                               : QStringLiteral("Lapvane");
    if (titolo != windowTitle()) setWindowTitle(titolo);
    const bool modificato = stato.Progetto && ProgettoModificato;
    if (modificato != isWindowModified()) setWindowModified(modificato);
}

/// Without a project there is nowhere to read the instrument into: one is made.
void frmMain::LeggiInNuovo() {
    Comandato(voci_[Comando::ReadDev], [this] {
        Esegui(Comando::New);
        if (voci_[Comando::ReadDev]->isEnabled()) Esegui(Comando::ReadDev);
    });
}

/// The sample project is opened, and the sample log in the analysis.
void frmMain::ApriEsempio() {
    Comandato(nullptr, [this] {
        const std::filesystem::path progetto = Esempio("Esempio.pro");
        const std::filesystem::path log = Esempio("sample") / "Esempio.csv";
        for (const std::filesystem::path& file : {progetto, log}) {
            if (FileEsiste(file)) continue;
            platform().MsgBox(Testo(Voce::EsempioManca) + "\r\n" + TestoDaPercorso(file),
                              Buttons::Ok, Icon::Information, platform().ExeName());
            return;
        }
        if (!ProgettoModificato) Apri([&] { ApriRecente(RigaDaPercorso(progetto)); });
        ApriAnalisi(log);
    });
}

/// The manual at the window that one is in; a box or a file dialog belongs to the one below.
void frmMain::MostraAiuto() {
    PostoManuale posto;
    const QWidget* w = QApplication::activeModalWidget();
    if (w == nullptr) w = QApplication::activeWindow();
    for (; w != nullptr; w = w->parentWidget()) {
        if (!w->isWindow()) continue;
        posto = PostoDi(DaQt(w->objectName()));
        if (!posto.Capitolo.empty()) break;
    }
    Protetto([&] { ApriManuale(posto); });
}

/// Behind a button's tool tip, which is its command's caption, stands the command's key.
bool frmMain::MostraTasto(QObject* oggetto, QEvent* evento) {
    auto* pulsante = qobject_cast<QToolButton*>(oggetto);
    if (pulsante == nullptr || pulsante->toolTip().isEmpty()) return false;
    QKeySequence tasti = pulsante->shortcut();
    for (const auto& [comando, suo] : pulsanti_) {
        if (suo == pulsante) tasti = voci_[comando]->shortcut();
    }
    const QString testo = tasti.toString(QKeySequence::NativeText);
    if (testo.isEmpty() || pulsante->toolTip().contains(testo)) return false;
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(),
                       pulsante->toolTip() + QStringLiteral("  ") + testo, pulsante);
    return true;
}

}  // namespace lapvane
