#include <QAction>
#include <QDialogButtonBox>
#include <QFrame>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/Soccorso.h"
#include "platform/Testo1252.h"
#include "platform/qt/ConversioniQt.h"
#include "project/FileProgetto.h"
#include "project/FileRecenti.h"
#include "project/dlgNoteProgetto.h"
#include "sensors/CSensore.h"
#include "shell/MainWindowProva.h"
#include "shell/TabelleNomi.h"
#include "shell/dlgLanguages.h"
#include "shell/frmSplash.h"
#include "widgets/Mnemonica.h"
#include "widgets/PannelloStato.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::Controllo;
using prova::SerialeProva;
using prova::WindowPlatform;

class Finestra : public prova::FinestraPrincipale {};

TEST_F(Finestra, StartsWithoutAProjectAndALinkAndEachEntryHasItsLetter) {
    Apri();
    std::string spenti;
    for (const DescrizioneComando& comando : kComandi) {
        if (comando.Chiave.empty()) continue;
        const QToolButton* pulsante = Pulsante(std::string(comando.Chiave).c_str());
        EXPECT_FALSE(pulsante->icon().pixmap(30, 30).isNull()) << comando.Chiave;
        if (!pulsante->isEnabled()) spenti += std::string(comando.Chiave) + " ";
    }
    EXPECT_EQ(spenti, "Save SaveAs Setup Sensor Alarm ProgDev ReadDev DownData SaveData ");
    EXPECT_FALSE(VoceMenu("mnuSave")->isEnabled() || VoceMenu("mnuDownloadData")->isEnabled());
    EXPECT_FALSE(Controllo<QMenu>(*finestra, "mnuConfigure")->menuAction()->isEnabled());
    // A letter opens one entry, and what the bar has no room for stands in a tip.
    for (const DescrizioneTitolo& titolo : kTitoli) {
        QString lettere;
        for (QAction* voce : finestra->findChild<QMenu*>(InQt(titolo.NomeMenu))->actions()) {
            const qsizetype segno = voce->text().indexOf(QLatin1Char('&'));
            if (segno >= 0 && voce->isVisible()) lettere += voce->text()[segno + 1].toUpper();
        }
        for (const QChar lettera : lettere) EXPECT_EQ(lettere.count(lettera), 1) << titolo.NomeMenu;
    }
    finestra->TestoPannello(lapvane::Pannello::Collegamento, "NO COMMUNICATION");
    QCoreApplication::processEvents();
    const auto* collegamento = Controllo<PannelloStato>(*finestra, "sbStatusBar_4");
    EXPECT_EQ(collegamento->toolTip(), QStringLiteral("NO COMMUNICATION"));
    EXPECT_GT(collegamento->sizeHint().width(),
              collegamento->fontMetrics().horizontalAdvance(QStringLiteral("NO COMMUNICATION")));
}

TEST_F(Finestra, NewEnablesByMouseAndCaptionsFollowTheLanguage) {
    Apri(0);
    EXPECT_EQ(Pulsante("New")->toolTip().toStdString(), Utf8Da1252(Testo(Voce::NuovoProgetto)));
    QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
    EXPECT_TRUE(Pulsante("Setup")->isEnabled());
    EXPECT_TRUE(Controllo<QMenu>(*finestra, "mnuConfigure")->menuAction()->isEnabled());
    EXPECT_TRUE(VoceMenu("mnuNote")->isEnabled());
    EXPECT_EQ(Pannello(1), Utf8Da1252(Testo(Voce::ProgettoSenzaNome)));
    const QString italiano = Pulsante("Analize")->toolTip();
    ListaCanaliA = {"Non usato"};

    QTimer::singleShot(0, [] {
        auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialogo, nullptr);
        EXPECT_TRUE(Controllo<QRadioButton>(*dialogo, "optItaliano")->isChecked());
        QTest::mouseClick(Controllo<QRadioButton>(*dialogo, "optInglese"), Qt::LeftButton, {},
                          QPoint(8, 8));
        QTest::mouseClick(Controllo<QPushButton>(*dialogo, "CancelButton"), Qt::LeftButton);
    });
    QTest::mouseClick(Pulsante("Language"), Qt::LeftButton);
    // A cancelled choice still switches the run; only what is saved stays.
    EXPECT_EQ(IndiceLingua, 1);
    EXPECT_NE(Pulsante("Analize")->toolTip(), italiano);
    EXPECT_EQ(macchina.Lingua, 1);
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "LANGUAGES.DAT")[0], '1');
    EXPECT_EQ(ListaCanaliA.at(0), "Not used");

    IndiceLingua = 0;
    QTimer::singleShot(0, [] {
        auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialogo, nullptr);
        QTest::keyClick(dialogo, Qt::Key_Return);
    });
    QTest::mouseClick(Pulsante("Language"), Qt::LeftButton);
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "LANGUAGES.DAT").substr(0, 3), "0\r\n");
    // Where it can't be kept the choice holds for the run.
    macchina.CartellaCorrente = macchina.Cartella / "altrove";
    fs::create_directories(macchina.CartellaCorrente / "LANGUAGES.DAT");
    macchina.Risposte = {Answer::Ok};
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    QTest::mouseClick(Pulsante("Language"), Qt::LeftButton);
    EXPECT_NE(macchina.Mostrati.back().Testo.find(Testo(Voce::LinguaNonSalvata)),
              std::string::npos);
    macchina.CartellaCorrente = macchina.Cartella;
}

TEST_F(Finestra, PrintAndAnEnterTooManyDoNothing) {
    Apri();
    // Nor does an Enter too many behind a dialog.
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::mouseClick(Pulsante("Print"), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(Pannello(3), "");
    EXPECT_FALSE(Pulsante("SaveAs")->isEnabled()) << "it was New";
    EXPECT_FALSE(Pulsante("Print")->hasFocus()) << "the next Enter would press it";
    // By Tab a button gets it, and both Enters press it.
    Pulsante("New")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(Pulsante("New"), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_TRUE(Pulsante("SaveAs")->isEnabled());
}

TEST_F(Finestra, EachCommandOpensItsOwnWindow) {
    for (const char* cartella : {"sensors", "pages"}) {
        fs::copy(prova::CartellaDati() / cartella, macchina.Cartella / cartella);
    }
    Apri();
    EXPECT_GT(LibreriaSensori.size(), 10u);
    QAction* const confrontaStrumento = VoceMenu("mnuCompareDevice");
    EXPECT_FALSE(confrontaStrumento->isEnabled());
    mnuNew_Click();
    std::string aperta;
    bool pollFermo = false;
    QTimer guardia;
    QObject::connect(&guardia, &QTimer::timeout, [&] {
        if (QWidget* dialogo = QApplication::activeModalWidget()) {
            aperta = dialogo->objectName().toStdString();
            pollFermo = AnalisiInCorso;
            dialogo->close();
        }
    });
    guardia.start(0);
    for (const auto& [chiave, nome] : {std::pair{"Setup", "frmConfigurazione"},
                                       {"Sensor", "frmSensori"},
                                       {"Alarm", "frmAllarmi"},
                                       {"CustSensors", "frmImpostaSensore"}}) {
        aperta.clear();
        QTest::mouseClick(Pulsante(chiave), Qt::LeftButton);
        EXPECT_EQ(aperta, nome) << chiave;
    }
    for (const auto& [voce, nome] :
         {std::pair{"mnuConfronto", "frmConfronto"}, {"mnuArchivio", "frmArchivio"}}) {
        pollFermo = false;
        VoceMenu(voce)->trigger();
        EXPECT_EQ(aperta, nome);
        EXPECT_TRUE(pollFermo);
        EXPECT_FALSE(AnalisiInCorso);
    }
    for (const auto& [comando, domanda] : {std::pair{Comando::ProgDev, Voce::StrumentoSovrascritto},
                                           {Comando::ReadDev, Voce::DatiSostituiti}}) {
        finestra->Abilita(comando, true);
        macchina.Risposte = {Answer::Cancel};
        VoceMenu(comando == Comando::ProgDev ? "mnuProgramDevice" : "mnuReadDevice")->trigger();
        EXPECT_NE(macchina.Mostrati.back().Testo.find(Testo(domanda)), std::string::npos);
    }
    guardia.stop();
    macchina.Risposte = {Answer::Ok};
    confrontaStrumento->trigger();
    EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::ErroreDiComunicazione));
}

TEST_F(Finestra, WhatWasTakenBackIsOfferedUntilItIsSaved) {
    Apri();
    const auto soccorsi = [&] {
        int numero = 0;
        for (const auto& voce : fs::directory_iterator(macchina.Cartella)) {
            numero += voce.path().extension() == kFineSoccorso ? 1 : 0;
        }
        return numero;
    };
    for (const bool salva : {true, false}) {
        mnuNew_Click();
        PercorsoProgetto = macchina.Cartella / "mio.pro";
        SalvaProgetto();
        ProgettoModificato = true;
        MettiDaParte();
        macchina.Risposte = {Answer::Yes};
        OffriSoccorso();
        ASSERT_EQ(soccorsi(), 1);
        if (salva) {
            QTest::mouseClick(Pulsante("Save"), Qt::LeftButton);
        } else {
            macchina.Risposte = {Answer::No};  // to save it
            QTest::mouseClick(Pulsante("Exit"), Qt::LeftButton);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !finestra->isVisible(); }));
        }
        EXPECT_EQ(soccorsi(), 0) << salva;
    }
}

TEST_F(Finestra, RecentEntriesShowAmpersandsAndOpenWithoutADialog) {
    Apri();
    mnuNew_Click();
    const fs::path file = macchina.Cartella / "Tizio & Caio \u00E8.pro";
    PercorsoProgetto = file;
    DatiProgetto.NomeProgetto = "Tizio & Caio";
    SalvaProgetto();
    EXPECT_TRUE(Pannello(3).starts_with("Saved at "));
    macchina.FileScelti.push_back(file);
    QTest::mouseClick(Pulsante("Open"), Qt::LeftButton);
    EXPECT_EQ(Pannello(1), "Tizio & Caio");
    EXPECT_EQ(Pannello(2), file.string());
    QAction* voce = VoceMenu("mnuRecentFiles0");
    EXPECT_TRUE(voce->isVisible());
    EXPECT_TRUE(voce->text().contains(QStringLiteral("Tizio && Caio")));
    // However long a path is, the menu stays on the screen and shows both ends.
    fs::path lungo = macchina.Cartella;
    for (int i = 0; i < 12; ++i) lungo /= "una cartella lunga come poche";
    finestra->MostraFileRecente(1, lungo / "fine & lungo.pro");
    const QString mostrato = VoceMenu("mnuRecentFiles1")->text();
    EXPECT_LT(mostrato.size(), 150);  // of 380, whatever the font
    EXPECT_TRUE(mostrato.endsWith(QStringLiteral("fine && lungo.pro")));
    EXPECT_TRUE(mostrato.startsWith(QStringLiteral("&2  /")));
    EXPECT_LT(Controllo<QMenu>(*finestra, "mnuProjectFile")->sizeHint().width(), 800);
    DatiProgetto.NomeProgetto = "altro";
    voce->trigger();
    EXPECT_EQ(DatiProgetto.NomeProgetto, "Tizio & Caio");
}

TEST_F(Finestra, DialogThatClosesInsideAScanIsNotHeldAndCommandsBehindItAllCome) {
    Apri();
    porta->Porte = {{1, true}, {2, true}, {3, true}, {4, true}};  // nobody answers
    macchina.FileScelti = {std::nullopt};
    ProgettoModificato = false;
    int giri = 0;
    std::int64_t chiusa = 0;
    bool solo = true;
    macchina.DuranteEventi = [&] {
        auto* dialogo = qobject_cast<dlgLanguages*>(QApplication::activeModalWidget());
        if (dialogo == nullptr || ++giri != 5) return;
        dialogo->reject();
        chiusa = macchina.Orologio;
        if (solo) return;
        // The routine behind the dialog still runs, and the poll: all of this comes behind both.
        QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
        QTest::mouseClick(Pulsante("Open"), Qt::LeftButton);
        QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
        QTest::mouseClick(Pulsante("Open"), Qt::LeftButton);
        ProgettoModificato = true;  // for the question of the close box; New takes it back
        finestra->close();
        EXPECT_FALSE(Pulsante("SaveAs")->isEnabled()) << "New ran inside the wait";
        EXPECT_TRUE(macchina.RichiesteFile.empty());
    };
    finestra->AvviaSorveglianza();
    QTest::mouseClick(Pulsante("Language"), Qt::LeftButton);
    ASSERT_GT(chiusa, 0);
    EXPECT_LE(macchina.Orologio - chiusa, 10) << "the routine behind the dialog waited";
    giri = 0;
    chiusa = 0;
    solo = false;
    QTest::mouseClick(Pulsante("Language"), Qt::LeftButton);
    ASSERT_GT(chiusa, 0);
    Pulsante("New")->click();
    EXPECT_FALSE(Pulsante("SaveAs")->isEnabled()) << "it has overtaken those that wait";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !finestra->isVisible(); }, 5000));
    EXPECT_TRUE(Pulsante("SaveAs")->isEnabled()) << "New was lost";
    EXPECT_EQ(macchina.RichiesteFile.size(), 1u) << "Open was lost, or the second click counted";
    EXPECT_TRUE(macchina.Mostrati.empty()) << "New came behind the close box";
}

TEST_F(Finestra, RecentEntryAskedForDuringAPollOpensWhatItShowed) {
    Apri();
    porta->Porte = {{1, true}, {2, true}, {3, true}};  // nobody answers
    mnuNew_Click();
    for (const char* nome : {"c", "b", "a"}) {
        PercorsoProgetto = macchina.Cartella / (std::string(nome) + ".pro");
        DatiProgetto.NomeProgetto = nome;
        SalvaProgetto();
        FileRecenteScelto = PercorsoProgetto;
        mnuOpen_Click();
    }
    bool chiesto = false;
    macchina.DuranteEventi = [&] {
        if (std::exchange(chiesto, true)) return;
        VoceMenu("mnuRecentFiles2")->trigger();  // c, which moves the others down
        VoceMenu("mnuRecentFiles1")->trigger();  // b
        EXPECT_EQ(Pannello(1), "a") << "it ran inside the wait";
    };
    const std::int64_t inizio = macchina.Orologio;
    finestra->AvviaSorveglianza();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Pannello(1) == "b"; })) << Pannello(1);
    EXPECT_LT(macchina.Orologio - inizio, 2000) << "it waited for the whole scan";
}

TEST_F(Finestra, CommandThatIsOffBehindThePollIsRefusedInWords) {
    Apri();
    porta->PortOpen(true);
    porta->Risponde = [&](const std::string& frame) {
        porta->Fra(1, frame == Frame(1) ? Conferma(1) : "R\x02LVX-4 1.08\x7F");
    };
    finestra->AvviaSorveglianza();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Pulsante("DownData")->isEnabled(); }, 5000));
    porta->Risponde = [&](const std::string&) {
        QTest::mouseClick(Pulsante("DownData"), Qt::LeftButton);
        porta->PortOpen(false);
        porta->Porte.clear();
    };
    macchina.Risposte = {Answer::Ok};
    ASSERT_TRUE(QTest::qWaitFor([&] { return !macchina.Mostrati.empty(); }, 5000));
    EXPECT_NE(macchina.Mostrati[0].Testo.find(Testo(Voce::ScaricaDati)), std::string::npos);
    EXPECT_NE(macchina.Mostrati[0].Testo.find(Testo(Voce::StrumentoMuto)), std::string::npos);
}

TEST_F(Finestra, AnotherProjectComesWithTheNotesOpenOnceTheyHaveAsked) {
    Apri();
    const fs::path mio = macchina.Cartella / "mio.pro", altro = macchina.Cartella / "altro.pro";
    const auto salva = [](const fs::path& file, const char* nome) {
        PercorsoProgetto = file;
        DatiProgetto.NomeProgetto = nome;
        SalvaProgetto();
    };
    mnuNew_Click();
    salva(altro, "altro");
    salva(mio, "mio");
    const auto note = [&]() -> dlgNoteProgetto* {
        for (auto* aperte : finestra->findChildren<dlgNoteProgetto*>()) {
            if (aperte->isVisible()) return aperte;
        }
        return nullptr;
    };
    const auto scrivi = [&](const char* autore) {
        QTest::mouseClick(Pulsante("Note"), Qt::LeftButton);
        Controllo<QLineEdit>(*note(), "txtAutoreProgetto")->setText(QString::fromLatin1(autore));
    };
    // Nothing typed: nothing to ask.
    QTest::mouseClick(Pulsante("Note"), Qt::LeftButton);
    macchina.FileScelti = {mio};
    QTest::mouseClick(Pulsante("Open"), Qt::LeftButton);
    EXPECT_EQ(Pannello(1), "mio");
    EXPECT_EQ(note(), nullptr);
    EXPECT_TRUE(macchina.Mostrati.empty());
    // Cancel goes on with the notes.
    scrivi("Rossi");
    macchina.Risposte = {Answer::Cancel};
    QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
    EXPECT_EQ(macchina.Mostrati.at(0).Testo, Testo(lapvane::Voce::TenereNoteSalvare));
    EXPECT_EQ(Pannello(1), "mio");
    EXPECT_NE(note(), nullptr);
    // Yes: they are in the file, and the other project is open.
    macchina.Risposte = {Answer::Yes};
    macchina.FileScelti = {altro};
    QTest::mouseClick(Pulsante("Open"), Qt::LeftButton);
    EXPECT_EQ(Pannello(1), "altro");
    EXPECT_NE(prova::Leggi(mio).find("Rossi"), std::string::npos);
    EXPECT_EQ(DatiProgetto.AutoreProgetto.find("Rossi"), std::string::npos);
    // No, by way of the recent list: they go with their project.
    QTest::mouseClick(Pulsante("Note"), Qt::LeftButton);
    Controllo<QPlainTextEdit>(*note(), "txtNoteProgetto")->setPlainText(QStringLiteral("Bianchi"));
    macchina.Risposte = {Answer::No};
    VoceMenu("mnuRecentFiles1")->trigger();
    EXPECT_EQ(Pannello(1), "mio");
    EXPECT_TRUE(macchina.Risposte.empty()) << "it was not asked";
    EXPECT_EQ(prova::Leggi(altro).find("Bianchi"), std::string::npos);
    // A project that was never saved needs a name; without one nothing happens, nothing is lost.
    QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
    scrivi("Verdi");
    macchina.Risposte = {Answer::Yes};
    macchina.FileScelti = {std::nullopt};
    QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
    EXPECT_EQ(DatiProgetto.AutoreProgetto, "Verdi");
    EXPECT_TRUE(ProgettoModificato);
    // The end of the program asks as well.
    scrivi("Neri");
    macchina.Risposte = {Answer::Yes, Answer::Cancel};
    finestra->close();
    EXPECT_TRUE(finestra->isVisible());
    EXPECT_EQ(DatiProgetto.AutoreProgetto, "Neri");
}

TEST_F(Finestra, OpensTheAnalysisThatTheRecentListChoosesAndCommandsInsideItComeBehindIt) {
    fs::copy(prova::CartellaBin() / "sample", macchina.Cartella / "sample");
    for (const bool veloce : {true, false}) {
        prova::Scrivi(macchina.Cartella / "RecentFiles.ini", veloce ? "1\r\n" : "0\r\n");
        macchina.Lingua = -1;
        std::string tabella = prova::Leggi(macchina.Cartella / "LANGUAGES.DAT");
        tabella[0] = veloce ? '0' : '1';
        prova::Scrivi(macchina.Cartella / "LANGUAGES.DAT", tabella);
        Apri(veloce ? 0 : 1);
        EXPECT_EQ(macchina.Lingua, veloce ? 0 : 1);
        macchina.FileScelti = {macchina.Cartella / "sample" / "Esempio.csv"};
        std::string aperta;
        QTimer guardia;
        QObject::connect(&guardia, &QTimer::timeout, [&] {
            auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialogo == nullptr) return;
            aperta = dialogo->metaObject()->className();
            dialogo->close();
        });
        guardia.start(10);
        // Asked for inside the command, before its window stands in front of the main one.
        bool chiesto = false;
        macchina.DuranteEventi = [&] {
            if (!AnalisiInCorso || std::exchange(chiesto, true)) return;
            if (veloce) {
                QTest::mouseClick(Pulsante("New"), Qt::LeftButton);
            } else {
                finestra->close();
            }
            EXPECT_FALSE(Pulsante("SaveAs")->isEnabled());
            EXPECT_TRUE(finestra->isVisible());
        };
        QTest::mouseClick(Pulsante("Analize"), Qt::LeftButton);
        EXPECT_TRUE(chiesto);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return veloce ? Pulsante("SaveAs")->isEnabled() : !finestra->isVisible();
        })) << "what was asked for inside the command was lost";
        EXPECT_EQ(aperta, veloce ? "lapvane::frmAnalisiDatiSpeed" : "lapvane::frmAnalisiDati");
    }
}

TEST_F(Finestra, ClosingInsideAScanStopsInOrderBehindIt) {
    Apri();
    porta->Porte = {{1, true}};
    FileRecenteScelto.clear();
    recenti() = {{"/a", "/b", "/c", "/d", ""}, 4};
    ProgettoModificato = true;
    DatiProgetto.NomeProgetto = "x";
    macchina.Risposte = {Answer::Cancel, Answer::No};
    int giri = 0;
    bool chiusa = false;
    macchina.DuranteEventi = [&] {
        if (++giri == 3) chiusa = finestra->close();
    };
    finestra->AvviaSorveglianza();
    EXPECT_TRUE(QTest::qWaitFor([&] { return macchina.Risposte.size() == 1; }, 10000));
    EXPECT_FALSE(chiusa);
    EXPECT_TRUE(finestra->isVisible()) << "Cancel goes on";
    EXPECT_EQ(macchina.Risposte.size(), 1u);
    macchina.DuranteEventi = nullptr;
    ASSERT_TRUE(porta->Porte.contains(1));
    porta->PortOpen(true);
    finestra->close();
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_FALSE(porta->PortOpen());
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "RecentFiles.ini"), "1\r\n/a\r\n/b\r\n/c\r\n");
}

TEST_F(Finestra, PollRestsBetweenItsRoundsAndWhereSomethingKeepsItOff) {
    Apri();
    porta->PortOpen(true);
    porta->Risponde = [&](const std::string& frame) {
        porta->Fra(1, frame == Frame(1) ? Conferma(1) : "R\x02LVX-4 1.08\x7F");
    };
    finestra->AvviaSorveglianza();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Pannello(7) == "LVX-4 1.08"; }, 20000));
    const std::size_t prima = porta->Scritti.size();
    const auto chiesto = [&] { return porta->Scritti.size() > prima; };
    finestra->SenzaSorveglianza([&] { EXPECT_FALSE(QTest::qWaitFor(chiesto, 300)); });
    EXPECT_TRUE(QTest::qWaitFor(chiesto, 20000)) << "it went on";
    QTest::qWait(50);
    EXPECT_LT(porta->Scritti.size(), prima + 5) << "without a pause";
}

TEST_F(Finestra, DownloadForgetsTheLogBeforeAndOffersToSaveWhatCame) {
    Apri();
    porta->PortOpen(true);
    porta->Risponde = [&](const std::string& frame) {
        if (ByteIn(frame, 2) == 37) {
            std::string valori(36, '\0');
            valori.replace(31, 4, CodificaLong(2560));
            porta->Fra(1, valori);
        } else if (ByteIn(frame, 2) == 14) {
            porta->Fra(1, "R\x0E" + std::string(128, '\0'));
            auto* aperta = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (LongIn(frame, 3) == 512 && aperta != nullptr) aperta->reject();
        }
    };
    finestra->Abilita(Comando::DownData, true);
    macchina.FileScelti.push_back(std::nullopt);
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    TabellaGiri[7] = "01:02.03, 1";  // of the log before
    QTest::mouseClick(Pulsante("DownData"), Qt::LeftButton);
    EXPECT_EQ(TabellaGiri[7], "00:00.00");
    EXPECT_TRUE(macchina.RichiesteFile.back().Name.string().ends_with(" partial.csv"));
    EXPECT_EQ(macchina.RichiesteFile.back().Filter, "Data File (*.csv)|*.csv");
    EXPECT_TRUE(VoceMenu("mnuSaveData")->isEnabled());
    EXPECT_FALSE(Pulsante("SaveData")->isEnabled());
}

TEST_F(Finestra, RunTimeErrorEndsThroughTheDoorWithItsFile) {
    Apri();
    macchina.FileScelti.push_back(macchina.Cartella / "manca" / "x.pro");
    macchina.Risposte = {Answer::Ok};
    mnuNew_Click();
    QTest::mouseClick(Pulsante("SaveAs"), Qt::LeftButton);
    const fs::path soccorso = macchina.Cartella / "Lapvane 2026-11-24 10-20-30.rescue";
    const std::string testo = macchina.Mostrati.back().Testo;
    for (const std::string& parte : {std::string("76: Path"), soccorso.string()}) {
        EXPECT_NE(testo.find(parte), std::string::npos) << testo;
    }
    EXPECT_TRUE(fs::exists(soccorso));
}

TEST(Splash, WaitsThreeSecondsWhateverHappensToTheForm) {
    WindowPlatform macchina;
    int mostrata = 0;
    auto splash = std::make_unique<frmSplash>();
    splash->AlTermine = [&] { ++mostrata; };
    EXPECT_EQ(Controllo<QLabel>(*splash, "lblVersion")->text(), QStringLiteral("1.5.1"));
    const std::int64_t inizio = macchina.Orologio;
    splash->show();
    macchina.DuranteEventi = [&] {
        if (macchina.Orologio - inizio > 500 && splash->isVisible()) {
            QTest::keyClick(splash.get(), Qt::Key_Space);
            EXPECT_FALSE(splash->isVisible());
        }
        if (macchina.Orologio - inizio < 2900) {
            EXPECT_EQ(mostrata, 0);
        }
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return mostrata == 1; }, 10000));
    EXPECT_EQ(mostrata, 1);
    EXPECT_GE(macchina.Orologio - inizio, 3000);

    frmSplash informa;
    informa.ModoInformazioni = true;
    informa.AlTermine = [&] { ++mostrata; };
    informa.show();
    QTest::qWait(20);
    EXPECT_TRUE(informa.isVisible());
    EXPECT_EQ(mostrata, 1);
    QTest::keyClick(&informa, Qt::Key_A);
    EXPECT_FALSE(informa.isVisible());
}

TEST(MnemonicaDeiMenu, LettersAreUniqueAndAmpersandsKept) {
    Mnemonica lettere;
    EXPECT_EQ(lettere.Con(QStringLiteral("Salva")), QStringLiteral("&Salva"));
    EXPECT_EQ(lettere.Con(QStringLiteral("Salva con nome")), QStringLiteral("Salva &con nome"));
    EXPECT_EQ(lettere.Con(QStringLiteral("S & C")), QStringLiteral("S && C"));
    EXPECT_EQ(lettere.Con(QStringLiteral("Scs")), QStringLiteral("Scs"));
}

}  // namespace
}  // namespace lapvane
