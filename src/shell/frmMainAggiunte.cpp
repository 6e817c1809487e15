// What the main window has beside the commands of the system: laps compared, recent logs, files
// that are dropped on it.
#include "shell/frmMain.h"

#include <QActionGroup>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "analysis/compare/frmConfronto.h"
#include "device/dlgStrumento.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "project/FileRecenti.h"
#include "runs/frmArchivio.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "widgets/Mnemonica.h"
#include "widgets/PannelloStato.h"
#include "widgets/RigaAvvisi.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Tavolozza.h"
#include "widgets/style/Vesti.h"

namespace lapvane {

namespace {

/// The files of a drag that the main window opens.
struct FileLasciati {
    std::vector<std::filesystem::path> Progetti;
    std::vector<std::filesystem::path> Log;

    explicit FileLasciati(const QMimeData& dati) {
        for (const QUrl& uno : dati.urls()) {
            const auto file = PercorsoDaQt(uno.toLocalFile());
            if (!FileEsiste(file)) continue;
            const std::string fine = file.extension().string();
            if (UgualiSenzaMaiuscole(fine, ".pro")) Progetti.push_back(file);
            if (UgualiSenzaMaiuscole(fine, ".csv")) Log.push_back(file);
        }
    }
};

/// As long as it lives the poll rests, as it does during an analysis.
class PollFermo {
 public:
    PollFermo() { AnalisiInCorso = true; }
    PollFermo(const PollFermo&) = delete;
    PollFermo& operator=(const PollFermo&) = delete;
    ~PollFermo() { AnalisiInCorso = prima_; }

 private:
    bool prima_ = AnalisiInCorso;
};

}  // namespace

/// An entry of our own behind the commands of the system, which have their places and their keys.
void frmMain::CreaConfronto() {
    mnuConfronto_ = new QAction(Icona("Confronto"), {}, this);
    mnuConfronto_->setObjectName(QStringLiteral("mnuConfronto"));
    mnuConfronto_->setShortcut(QKeySequence(QStringLiteral("Ctrl+G")));
    mnuConfronto_->setMenuRole(QAction::NoRole);
    connect(mnuConfronto_, &QAction::triggered, this,
            [this] { Protetto([this] { Comandato(mnuConfronto_, [this] { Confronta({}); }); }); });
    menu_[Titolo::Analysis]->addAction(mnuConfronto_);
}

void IndossaAspetto(const Aspetto& aspetto) {
    std::optional<Tema> aMano;
    if (aspetto.Tema == TemaScelto::Chiaro) aMano = Tema::Chiaro;
    if (aspetto.Tema == TemaScelto::Scuro) aMano = Tema::Scuro;
    ImpostaTema(aMano);
    ImpostaModoBox(aspetto.ModoBox);
}

/// The last heading: what the program looks like.
void frmMain::CreaAspetto() {
    mnuAspetto_ = menuBar()->addMenu(QString());
    mnuAspetto_->setObjectName(QStringLiteral("mnuAspetto"));
    const auto voce = [this](const char* nome, std::function<Aspetto(bool)> scelto) {
        auto* azione = mnuAspetto_->addAction(QString());
        azione->setObjectName(QLatin1String(nome));
        azione->setMenuRole(QAction::NoRole);
        azione->setCheckable(true);
        connect(azione, &QAction::triggered, this, [this, scelto = std::move(scelto)](bool acceso) {
            Protetto([&] { ScegliAspetto(scelto(acceso)); });
        });
        return azione;
    };
    auto* temi = new QActionGroup(mnuAspetto_);
    for (const auto& [tema, nome] : {std::pair{TemaScelto::Chiaro, "mnuTemaChiaro"},
                                     {TemaScelto::Scuro, "mnuTemaScuro"},
                                     {TemaScelto::Desktop, "mnuTemaDesktop"}}) {
        voceTema_[tema] = voce(nome, [this, quale = tema](bool) {
            return Aspetto{quale, aspetto_.ModoBox};
        });
        temi->addAction(voceTema_[tema]);
    }
    mnuAspetto_->addSeparator();
    mnuModoBox_ = voce("mnuModoBox", [this](bool acceso) {
        return Aspetto{aspetto_.Tema, acceso};
    });
    mnuModoBox_->setShortcut(QKeySequence(Qt::Key_F11));
    MostraAspetto();
}

void frmMain::ScegliAspetto(const Aspetto& scelto) {
    aspetto_ = scelto;
    SalvaAspetto(aspetto_);
    MostraAspetto();
    IndossaAspetto(aspetto_);
}

void frmMain::MostraAspetto() {
    voceTema_[aspetto_.Tema]->setChecked(true);
    mnuModoBox_->setChecked(aspetto_.ModoBox);
}

/// Behind the read, and possible whenever that is.
void frmMain::CreaConfrontoStrumento() {
    mnuCompareDevice_ = new QAction(Icona("ConfrontaStrumento"), {}, this);
    mnuCompareDevice_->setObjectName(QStringLiteral("mnuCompareDevice"));
    mnuCompareDevice_->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+K")));
    mnuCompareDevice_->setMenuRole(QAction::NoRole);
    const QAction* const lettura = voci_[Comando::ReadDev];
    mnuCompareDevice_->setEnabled(lettura->isEnabled());
    connect(lettura, &QAction::enabledChanged, mnuCompareDevice_, &QAction::setEnabled);
    connect(mnuCompareDevice_, &QAction::triggered, this, [this] {
        Protetto(
            [this] { Comandato(mnuCompareDevice_, [this] { dlgStrumento(this).Confronta(); }); });
    });
    menu_[Titolo::Device]->insertAction(voci_[Comando::ViewDev], mnuCompareDevice_);
}

/// Behind it the runs of a folder.
void frmMain::CreaArchivio() {
    mnuArchivio_ = new QAction(Icona("Archivio"), {}, this);
    mnuArchivio_->setObjectName(QStringLiteral("mnuArchivio"));
    mnuArchivio_->setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
    mnuArchivio_->setMenuRole(QAction::NoRole);
    connect(mnuArchivio_, &QAction::triggered, this, [this] {
        Protetto([this] { Comandato(mnuArchivio_, [this] { MostraArchivio(); }); });
    });
    menu_[Titolo::Analysis]->addAction(mnuArchivio_);
}

/// Said for four seconds, unless something else is said there meanwhile.
void frmMain::Salvato() {
    constexpr int kPoi = 4000;  // ms
    const QString detto = TestoSalvato();
    const auto* pannello = pannelli_[static_cast<std::size_t>(Pannello::Progresso)];
    TestoPannello(Pannello::Progresso, DaQt(detto));
    QTimer::singleShot(kPoi, this, [this, pannello, detto] {
        if (pannello->Testo() == detto) TestoPannello(Pannello::Progresso, "");
    });
}

/// The logs of the last analyses, behind all that.
void frmMain::CreaLogRecenti() {
    QMenu* const menu = menu_[Titolo::Analysis];
    separatoreLog_ = menu->addSeparator();
    for (std::size_t i = 0; i < voceLog_.size(); ++i) {
        QAction* const voce = menu->addAction(QString());
        voce->setObjectName(QStringLiteral("mnuRecentLogs%1").arg(i));
        voce->setMenuRole(QAction::NoRole);
        connect(voce, &QAction::triggered, this, [this, voce, i] {
            Protetto([&] {
                // The list may have another order when its turn comes.
                Comandato(voce, [this, scelto = logRecenti_.at(i)] { ApriLogRecente(scelto); });
            });
        });
        voceLog_[i] = voce;
    }
    // Only these entries have more to tell than their caption.
    connect(menu, &QMenu::hovered, menu, [menu](const QAction* voce) {
        menu->setToolTipsVisible(voce->objectName().startsWith(QLatin1String("mnuRecentLogs")));
    });
    MostraLogRecenti();
}

void frmMain::MostraLogRecenti() {
    separatoreLog_->setVisible(!logRecenti_.empty());
    for (std::size_t i = 0; i < voceLog_.size(); ++i) {
        QAction* const voce = voceLog_[i];
        voce->setVisible(i < logRecenti_.size());
        if (!voce->isVisible()) continue;
        voce->setText(TestoRecente(*menu_[Titolo::Analysis], static_cast<int>(i),
                                   PercorsoInQt(logRecenti_[i].filename())));
        voce->setToolTip(PercorsoInQt(logRecenti_[i]));
    }
}

/// The caption of a recent file behind its number, counted from 0. A long name keeps its two ends,
/// and the menu on the screen.
QString frmMain::TestoRecente(const QMenu& menu, int indice, const QString& nome) {
    constexpr int kCaratteri = 70;
    const QFontMetrics metrica(menu.font());
    const QString corto =
        metrica.elidedText(nome, Qt::ElideMiddle, kCaratteri * metrica.averageCharWidth());
    return QStringLiteral("&%1  ").arg(indice + 1) + Mnemonica::Senza(corto);
}

void frmMain::Ricorda(const std::filesystem::path& log) {
    MettiInCima(logRecenti_, log);
    SalvaLogRecenti(logRecenti_);
    MostraLogRecenti();
}

void frmMain::ApriLogRecente(const std::filesystem::path& file) {
    if (FileEsiste(file)) return ApriAnalisi(file);
    platform().MsgBox(Testo(Voce::IlFile) + " " + TestoDaPercorso(file) + " " +
                          Testo(Voce::NonTrovato) + "\r\n" + Testo(Voce::LogTolto),
                      Buttons::Ok, Icon::Information, platform().ExeName());
    std::erase(logRecenti_, file);
    SalvaLogRecenti(logRecenti_);
    MostraLogRecenti();
}

/// The poll rests while laps are compared, as it does for an analysis.
void frmMain::Confronta(const std::vector<std::filesystem::path>& log, QWidget* sopra) {
    const PollFermo fermo;
    frmConfronto finestra(sopra != nullptr ? sopra : this);
    for (const std::filesystem::path& file : log) finestra.Apri(file);
    finestra.exec();
}

/// The poll rests here too, also behind an analysis, whose end lets it go on.
void frmMain::MostraArchivio() {
    const PollFermo fermo;
    frmArchivio finestra(this);
    finestra.QuandoAnalisi = [this, &finestra](const std::filesystem::path& file) {
        ApriAnalisi(file, &finestra);
        AnalisiInCorso = true;
    };
    finestra.QuandoConfronto = [this, &finestra](const std::vector<std::filesystem::path>& log) {
        Confronta(log, &finestra);
    };
    finestra.exec();
}

/// Files that can be opened together: one project, or logs; what lies beside a log comes along.
void frmMain::dragEnterEvent(QDragEnterEvent* evento) {
    const FileLasciati file(*evento->mimeData());
    if (file.Progetti.size() <= 1 && file.Progetti.empty() != file.Log.empty()) {
        evento->acceptProposedAction();
    }
}

/// What was dropped opens once whoever drags has got the mouse back.
void frmMain::dropEvent(QDropEvent* evento) {
    evento->acceptProposedAction();
    QTimer::singleShot(0, this, [this, file = FileLasciati(*evento->mimeData())] {
        Protetto([&] {
            Comandato(nullptr, [this, file] {
                activateWindow();
                if (!file.Progetti.empty()) {
                    Apri([&] { ApriRecente(RigaDaPercorso(file.Progetti.front())); });
                } else if (file.Log.size() == 1) {
                    ApriAnalisi(file.Log.front());
                } else {
                    Confronta(file.Log);
                }
            });
        });
    });
}

}  // namespace lapvane
