#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>

#include "platform/qt/ConversioniQt.h"
#include "project/FileProgetto.h"
#include "shell/MainWindowProva.h"
#include "shell/Manuale.h"
#include "widgets/CartaAzione.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::Controllo;

/// What the main window has beside the commands of the system.
class FinestraAggiunte : public prova::FinestraPrincipale {};

TEST_F(FinestraAggiunte, DroppedFilesOpenAndTheLogsThatWereAnalysedComeBack) {
    fs::copy(prova::CartellaBin() / "sample", macchina.Cartella);
    const fs::path log = macchina.Cartella / "Esempio.csv";
    const fs::path progetto = macchina.Cartella / "mio.PRO";
    Apri();
    mnuNew_Click();
    PercorsoProgetto = progetto;
    SalvaProgetto();
    PercorsoProgetto.clear();
    QString aperte;
    QTimer guardia;
    QObject::connect(&guardia, &QTimer::timeout, [&] {
        QWidget* const aperta = QApplication::activeModalWidget();
        if (aperta == nullptr) return;
        aperte += aperta->objectName();
        aperta->close();
    });
    guardia.start(10);
    const auto lascia = [&](const std::vector<fs::path>& file) {
        QMimeData dati;
        QList<QUrl> indirizzi;
        for (const fs::path& uno : file) indirizzi << QUrl::fromLocalFile(PercorsoInQt(uno));
        dati.setUrls(indirizzi);
        QDragEnterEvent entra({9, 9}, Qt::CopyAction, &dati, Qt::LeftButton, {});
        entra.ignore();
        QApplication::sendEvent(finestra.get(), &entra);
        if (!entra.isAccepted()) return false;
        QDropEvent cade({9, 9}, Qt::CopyAction, &dati, Qt::LeftButton, {});
        QApplication::sendEvent(finestra.get(), &cade);
        QTest::qWait(50);
        return true;
    };
    EXPECT_FALSE(lascia({progetto, log}) || lascia({macchina.Cartella / "RecentFiles.ini"}));
    EXPECT_TRUE(lascia({progetto}));
    EXPECT_EQ(PercorsoProgetto, progetto);
    EXPECT_TRUE(lascia({log, macchina.Cartella / "Esempio.tim"}));
    EXPECT_TRUE(lascia({log, log}));
    QAction* const voce = VoceMenu("mnuRecentLogs0");
    EXPECT_EQ(voce->text(), QStringLiteral("&1  Esempio.csv"));
    EXPECT_EQ(voce->toolTip(), PercorsoInQt(log));
    EXPECT_FALSE(VoceMenu("mnuRecentLogs1")->isVisible()) << "only what was analysed";
    macchina.CartellaCorrente = macchina.Cartella / "sensors";
    voce->trigger();
    EXPECT_EQ(macchina.CartellaCorrente, macchina.Cartella / "sensors") << "as it was";
    EXPECT_EQ(aperte, QStringLiteral("frmAnalisiDatiSpeedfrmConfrontofrmAnalisiDatiSpeed"));
    fs::remove(log);
    macchina.Risposte = {Answer::Ok};
    voce->trigger();
    EXPECT_NE(macchina.Mostrati.back().Testo.find(Testo(Voce::LogTolto)), std::string::npos);
    EXPECT_FALSE(voce->isVisible());
    EXPECT_TRUE(CaricaLogRecenti().empty());
}

TEST_F(FinestraAggiunte, TheLookIsChosenInAnyWindowAndKept) {
    Apri();
    const auto tema = [this] {
        QCoreApplication::processEvents();
        return ColoriDi(*finestra).Window;
    };
    VoceMenu("mnuTemaScuro")->trigger();
    EXPECT_EQ(tema(), ColoriDi(Tema::Scuro).Window);
    QDialog altra(finestra.get());
    altra.show();
    QTest::keyClick(&altra, Qt::Key_F11);
    EXPECT_EQ(tema(), ColoriDi(Tema::Box).Window);
    EXPECT_TRUE(VoceMenu("mnuModoBox")->isChecked());
    EXPECT_EQ(CaricaAspetto(), (Aspetto{TemaScelto::Scuro, true}));
    QTest::keyClick(&altra, Qt::Key_F11);
    EXPECT_EQ(tema(), ColoriDi(Tema::Scuro).Window);
    VoceMenu("mnuTemaDesktop")->trigger();
    EXPECT_EQ(tema(), ColoriDi(Tema::Chiaro).Window);
    EXPECT_EQ(CaricaAspetto(), Aspetto{});
    EXPECT_EQ(LeggiAspetto("lapvane-look 2\ntheme=dark\n"), Aspetto{});
}

TEST_F(FinestraAggiunte, StartPageOffersTheCommandsInTheOrderOfUseAndTheTitleTellsWhatIsUnsaved) {
    Apri();
    const auto carta = [this](const char* nome) { return Controllo<CartaAzione>(*finestra, nome); };
    const auto prima = [](const QWidget* una, const QWidget* altra) {
        return una->mapToGlobal(QPoint()).y() < altra->mapToGlobal(QPoint()).y();
    };
    const auto disponi = [] { QCoreApplication::processEvents(); };
    EXPECT_EQ(finestra->windowTitle(), QStringLiteral("Lapvane"));
    EXPECT_TRUE(carta("card_mnuSetup")->isHidden() || !carta("card_mnuSetup")->isVisible());
    EXPECT_TRUE(prima(carta("card_mnuNew"), carta("card_mnuViewDevice")));
    EXPECT_FALSE(carta("card_mnuDownloadData")->isEnabled());
    EXPECT_FALSE(carta("card_mnuReadDevice")->isEnabled());

    // An instrument that answers: its commands come first, and it can be read into a new project.
    StrumentoPresente = true;
    finestra->AbilitaMenu(Comando::DownData, true);
    finestra->AvviaSorveglianza();
    macchina.BoxLiberi = true;
    QTest::mouseClick(carta("card_mnuNew"), Qt::LeftButton);
    StrumentoPresente = true;
    disponi();
    EXPECT_TRUE(carta("card_mnuDownloadData")->isEnabled());
    EXPECT_TRUE(prima(carta("card_mnuSetup"), carta("card_mnuDownloadData")));
    EXPECT_EQ(finestra->windowTitle(),
              InQt(Testo(Voce::ProgettoSenzaNome)) + QStringLiteral("[*] - Lapvane"));
    EXPECT_FALSE(finestra->isWindowModified());

    // What changed the project shows behind the command that changed it.
    ProgettoModificato = true;
    DatiProgetto.NomeProgetto = "Monza";
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    QTest::mouseClick(carta("card_mnuSetup"), Qt::LeftButton);
    EXPECT_EQ(finestra->windowTitle(), QStringLiteral("Monza[*] - Lapvane"));
    EXPECT_TRUE(finestra->isWindowModified());
    ProgettoModificato = false;
}

TEST_F(FinestraAggiunte, EachWindowHasItsPlaceInTheManualAndAMissingPageIsTold) {
    Apri();
    // The heading that a window leads to stands in the chapter of both languages.
    const fs::path manuale = prova::CartellaDati().parent_path() / "docs" / "manual";
    for (const char* nome :
         {"frmMain",        "dlgLanguages",         "dlgNoteProgetto",   "frmConfigurazione",
          "frmSensori",     "frmAllarmi",           "frmImpostaSensore", "dlgCalibrazione",
          "dlgStrumento",   "dlgDiagnostica",       "dlgDifferenze",     "frmDownload",
          "frmAnalisiDati", "frmAnalisiDatiSpeed",  "dlgSetGraph",       "dlgDatiSessione",
          "dlgStatistiche", "dlgStatisticheMisure", "dlgReportGiri",     "frmConfronto",
          "dlgCsvConfronto"}) {
        const PostoManuale posto = PostoDi(nome);
        ASSERT_FALSE(posto.Capitolo.empty()) << nome;
        for (const char* lingua : {"it", "en"}) {
            const std::string capitolo =
                prova::Leggi(manuale / lingua / (std::string(posto.Capitolo) + ".md"));
            EXPECT_NE(capitolo.find("{#" + std::string(posto.Titolo) + "}"), std::string::npos)
                << nome << " " << lingua;
        }
    }
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    QTest::keyClick(finestra.get(), Qt::Key_F1);
    EXPECT_EQ(macchina.Mostrati.back().Testo.rfind(Testo(Voce::ManualeManca), 0), 0u);
    EXPECT_TRUE(macchina.Aperti.empty());
    const fs::path pagine = macchina.InstallPath() / "manual" / "en";
    for (const char* nome : {"index", "03-main", "04-setup", "12-keyboard"}) {
        prova::Scrivi(pagine / (std::string(nome) + ".html"), "");
    }
    Pulsante("New")->click();
    QTimer::singleShot(0, [] {
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_F1);
        QApplication::activeModalWidget()->close();
    });
    Pulsante("Setup")->click();
    VoceMenu("mnuManuale")->trigger();
    Controllo<QPushButton>(*finestra, "cmdTasti")->click();
    const std::string davanti = pagine.generic_string() + "/";
    EXPECT_EQ(macchina.Aperti,
              (std::vector<std::string>{davanti + "04-setup.html#setup", davanti + "index.html#",
                                        davanti + "12-keyboard.html#keyboard"}));
    macchina.ApreFuori = false;
    VoceMenu("mnuManuale")->trigger();
    EXPECT_EQ(macchina.Mostrati.back().Testo.rfind(Testo(Voce::ManualeChiuso), 0), 0u);
}

}  // namespace
}  // namespace lapvane
