// How the main window is laid out: menu, tool bar, status bar, their words and states.
#include "shell/frmMain.h"

#include <QMenuBar>
#include <QStatusBar>
#include <QToolButton>
#include <utility>

#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "project/FileRecenti.h"
#include "shell/LoadStrings.h"
#include "shell/Manuale.h"
#include "shell/Protetto.h"
#include "widgets/Mnemonica.h"
#include "widgets/PannelloStato.h"
#include "widgets/style/Icone.h"

namespace lapvane {

namespace {

QKeySequence Scorciatoia(Comando comando) {
    switch (comando) {
        case Comando::New:
            return QKeySequence::New;
        case Comando::Open:
            return QKeySequence::Open;
        case Comando::Save:
            return QKeySequence::Save;
        case Comando::SaveAs:
            return QKeySequence(QStringLiteral("Ctrl+Shift+S"));
        case Comando::Print:
            return QKeySequence::Print;
        case Comando::Note:
            return QKeySequence(QStringLiteral("Ctrl+T"));
        case Comando::Exit:
            return QKeySequence(QStringLiteral("Ctrl+Q"));
        case Comando::Setup:
            return QKeySequence(QStringLiteral("Ctrl+1"));
        case Comando::Sensor:
            return QKeySequence(QStringLiteral("Ctrl+2"));
        case Comando::CustSensors:
            return QKeySequence(QStringLiteral("Ctrl+3"));
        case Comando::Alarm:
            return QKeySequence(QStringLiteral("Ctrl+4"));
        case Comando::ProgDev:
            return QKeySequence(QStringLiteral("Ctrl+Shift+P"));
        case Comando::ReadDev:
            return QKeySequence(QStringLiteral("Ctrl+Shift+R"));
        case Comando::ViewDev:
            return QKeySequence(QStringLiteral("Ctrl+M"));
        case Comando::DownData:
            return QKeySequence(QStringLiteral("Ctrl+D"));
        case Comando::SaveData:
            return QKeySequence(QStringLiteral("Ctrl+E"));
        case Comando::Analize:
            return QKeySequence(QStringLiteral("Ctrl+L"));
        case Comando::Language:
            return QKeySequence(QStringLiteral("Ctrl+Shift+L"));
        case Comando::Info:
            return QKeySequence(QStringLiteral("Ctrl+I"));
    }
    return {};
}

}  // namespace

void frmMain::CostruisciMenu() {
    for (const DescrizioneTitolo& titolo : kTitoli) {
        QMenu* menu = menuBar()->addMenu(QString());
        menu->setObjectName(InQt(titolo.NomeMenu));
        menu->menuAction()->setEnabled(titolo.Acceso);
        menu_[titolo.Codice] = menu;
    }
    for (const DescrizioneComando& comando : kComandi) {
        QAction* voce = new QAction(this);
        voce->setObjectName(InQt(comando.NomeMenu));
        voce->setShortcut(Scorciatoia(comando.Codice));
        voce->setEnabled(comando.MenuAcceso);
        // No action may leave the window menu for a place that the system has for it.
        voce->setMenuRole(QAction::NoRole);
        connect(voce, &QAction::triggered, this, [this, voce, codice = comando.Codice] {
            Chiedi(codice, [voce] { return voce->isEnabled(); });
        });
        voci_[comando.Codice] = voce;
        if (comando.Codice == Comando::Exit) {
            QMenu* progetto = menu_[Titolo::ProjectFile];
            separatoreRecenti_ = progetto->addSeparator();
            for (std::size_t i = 0; i < recenti_.size(); ++i) {
                recenti_[i] = progetto->addAction(QString());
                recenti_[i]->setObjectName(QStringLiteral("mnuRecentFiles%1").arg(i));
                connect(recenti_[i], &QAction::triggered, this, [this, i] {
                    Protetto([this, i] {
                        // The list may have another order when its turn comes.
                        Comandato(recenti_[i], [this, scelto = recenti().Righe[i]] {
                            Apri([&scelto] { ApriRecente(scelto); });
                        });
                    });
                });
            }
            progetto->addSeparator();
        }
        if (comando.Sotto == Titolo::Nessuno) {
            menuBar()->addAction(voce);
        } else {
            if (comando.Codice == Comando::Print || comando.Codice == Comando::Analize) {
                menu_[comando.Sotto]->addSeparator();
            }
            // Entries that stand in the menu bar itself show words alone.
            voce->setIcon(Icona(comando.Chiave));
            menu_[comando.Sotto]->addAction(voce);
        }
    }
    CreaConfronto();
    CreaArchivio();
    CreaConfrontoStrumento();
    CreaLogRecenti();
    mnuManuale_ = menuBar()->addAction(QString());
    mnuManuale_->setObjectName(QStringLiteral("mnuManuale"));
    mnuManuale_->setMenuRole(QAction::NoRole);
    connect(mnuManuale_, &QAction::triggered, this, [] { Protetto([] { ApriManuale({}); }); });
    CreaAspetto();
    NascondiFileRecenti();
}

void frmMain::CostruisciBarra() {
    barra_ = addToolBar(QStringLiteral("Toolbar1"));
    barra_->setObjectName(QStringLiteral("Toolbar1"));
    barra_->setMovable(false);
    barra_->setContextMenuPolicy(Qt::PreventContextMenu);
    Titolo gruppo = Titolo::ProjectFile;
    for (const DescrizioneComando& comando : kComandi) {
        if (comando.Chiave.empty()) continue;
        if (comando.Sotto != gruppo) {
            gruppo = comando.Sotto;
            barra_->addSeparator();
        }
        QToolButton* pulsante = new QToolButton(barra_);
        pulsante->setObjectName(QStringLiteral("Toolbar1_") + InQt(comando.Chiave));
        pulsante->setIcon(Icona(comando.Chiave));
        pulsante->setAutoRaise(true);
        pulsante->setEnabled(comando.PulsanteAcceso);
        pulsante->setFocusPolicy(Qt::TabFocus);
        connect(pulsante, &QToolButton::clicked, this, [this, pulsante, codice = comando.Codice] {
            // Kept: the button "Print" is known and does nothing.
            if (codice == Comando::Print) return;
            Chiedi(codice, [pulsante] { return pulsante->isEnabled(); });
        });
        barra_->addWidget(pulsante);
        pulsanti_[comando.Codice] = pulsante;
    }
}

void frmMain::CostruisciStato() {
    QStatusBar* stato = statusBar();
    stato->setObjectName(QStringLiteral("sbStatusBar"));
    stato->setSizeGripEnabled(true);
    for (std::size_t i = 1; i < pannelli_.size(); ++i) {
        pannelli_[i] = new PannelloStato(stato);
        pannelli_[i]->setObjectName(QStringLiteral("sbStatusBar_%1").arg(i));
        // The path takes what room is left.
        stato->addWidget(pannelli_[i], i == 2 ? 10 : 0);
    }
    TestoPannello(Pannello::RX, "RX");
    TestoPannello(Pannello::TX, "TX");
    ImmaginePannello(Pannello::RX, 3);
    ImmaginePannello(Pannello::TX, 3);
}

void frmMain::AggiornaTesti() {
    if (!caricata_) return;
    CalcolaBaseTesti();
    Mnemonica titoli;
    for (const DescrizioneTitolo& titolo : kTitoli) {
        menu_[titolo.Codice]->setTitle(titoli.Con(InQt(Testo(titolo.Testo))));
    }
    std::map<Titolo, Mnemonica> menu;
    for (const DescrizioneComando& comando : kComandi) {
        const QString testo = InQt(Testo(comando.Testo));
        Mnemonica& lettere = comando.Sotto == Titolo::Nessuno ? titoli : menu[comando.Sotto];
        voci_[comando.Codice]->setText(lettere.Con(testo));
        const auto pulsante = pulsanti_.find(comando.Codice);
        if (pulsante == pulsanti_.end()) continue;
        const QKeySequence tasti = voci_[comando.Codice]->shortcut();
        pulsante->second->setToolTip(testo);
        pulsante->second->setAccessibleName(testo);
        pulsante->second->setStatusTip(QString());
        if (!tasti.isEmpty()) pulsante->second->setAccessibleDescription(tasti.toString());
    }
    mnuConfronto_->setText(menu[Titolo::Analysis].Con(InQt(Testo(Voce::VoceConfronto))));
    mnuArchivio_->setText(menu[Titolo::Analysis].Con(InQt(Testo(Voce::VoceArchivio))));
    mnuCompareDevice_->setText(menu[Titolo::Device].Con(InQt(Testo(Voce::ConfrontaStrumento))));
    mnuManuale_->setText(titoli.Con(InQt(Testo(Voce::VoceManuale))));
    mnuAspetto_->setTitle(titoli.Con(InQt(Testo(Voce::VoceAspetto))));
    Mnemonica aspetto;
    for (const auto& [tema, voce] : {std::pair{TemaScelto::Chiaro, Voce::TemaChiaro},
                                     {TemaScelto::Scuro, Voce::TemaScuro},
                                     {TemaScelto::Desktop, Voce::TemaDesktop}}) {
        voceTema_[tema]->setText(aspetto.Con(InQt(Testo(voce))));
    }
    mnuModoBox_->setText(aspetto.Con(InQt(Testo(Voce::ModoBox))));
    RileggiRecenti();
}

void frmMain::AbilitaMenu(Comando comando, bool acceso) {
    voci_[comando]->setEnabled(acceso);
}

void frmMain::AbilitaPulsante(Comando comando, bool acceso) {
    const auto pulsante = pulsanti_.find(comando);
    if (pulsante != pulsanti_.end()) pulsante->second->setEnabled(acceso);
}

void frmMain::AbilitaTitolo(Titolo titolo, bool acceso) {
    menu_[titolo]->menuAction()->setEnabled(acceso);
}

void frmMain::TestoPannello(Pannello pannello, const std::string& testo) {
    pannelli_[static_cast<std::size_t>(pannello)]->ImpostaTesto(InQt(testo));
}

void frmMain::ImmaginePannello(Pannello pannello, int immagine) {
    // The poll says the same five times a second.
    int& mostrata = immagini_.at(static_cast<std::size_t>(pannello));
    if (mostrata == immagine) return;
    mostrata = immagine;
    pannelli_[static_cast<std::size_t>(pannello)]->ImpostaImmagine(
        Icona("link" + std::to_string(immagine)));
}

void frmMain::AbilitaPannello(Pannello pannello, bool acceso) {
    pannelli_[static_cast<std::size_t>(pannello)]->setEnabled(acceso);
}

void frmMain::NascondiFileRecenti() {
    for (QAction* voce : recenti_) voce->setVisible(false);
    separatoreRecenti_->setVisible(false);
}

void frmMain::MostraFileRecente(int indice, const std::filesystem::path& percorso) {
    QAction* voce = recenti_.at(static_cast<std::size_t>(indice));
    voce->setText(TestoRecente(*menu_[Titolo::ProjectFile], indice, PercorsoInQt(percorso)));
    voce->setVisible(true);
    separatoreRecenti_->setVisible(true);
}

}  // namespace lapvane
