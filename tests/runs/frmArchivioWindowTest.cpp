#include "runs/frmArchivio.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTest>

#include "logs/Impostazioni.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "runs/DisegnoModello.h"
#include "runs/DisegnoTempi.h"
#include "runs/DisegnoUscite.h"
#include "runs/ScelteArchivio.h"
#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"

namespace lapvane::prova {
namespace {

namespace fs = std::filesystem;

/// Each look at the clock is a millisecond, so that work ends in pieces however fast the machine
/// is.
class OrologioCheCorre : public WindowPlatform {
 public:
    std::int64_t GetTickCount() override { return ++Orologio; }
};

class FinestraArchivio : public ::testing::Test {
 protected:
    FinestraArchivio() { CaricaTestiVeri(1); }

    /// A run whose log has only its first line.
    void Metti(const std::string& nome, const std::string& sessione,
               const std::string& note) const {
        const fs::path stelo = Cartella() / nome;
        fs::create_directories(stelo.parent_path());
        Scrivi(ConFine(stelo, ".csv"), "Time [s];Engine [RPM];Speed [Km/h]\r\n");
        Scrivi(ConFine(stelo, ".txt"), "x\r\n");
        Scrivi(ConFine(stelo, ".tim"), "1.4\r\n01:21.93, 1\r\n01:20.07, 1\r\n01:40.53, 1\r\n");
        Scrivi(ConFine(stelo, ".ses"), sessione + "Valdoro\r\nl=3480\r\nv= \r\np=Rossi\r\nNote=" +
                                           note + "\r\nc;1;2;3;4;5\r\n");
    }
    void MettiTre() const {
        Metti("a", "s=Free\r\nd=1/5/2026\r\no=10:00\r\nc=", "first");
        Metti("b", "s=Test\r\nd=2/5/2026\r\no=10:00\r\nc=", "second");
        Metti("sub/c", "s=Free\r\nd=3/5/2026\r\no=10:00\r\nc=", "third");
    }
    fs::path Cartella() const { return macchina.Cartella / "runs"; }
    fs::path File(const char* nome) const { return (Cartella() / nome).make_preferred(); }

    void Mostra(frmArchivio& finestra) {
        finestra.Apri(Cartella());
        finestra.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&finestra));
        Finisci(finestra);
    }
    static void Finisci(frmArchivio& finestra) {
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return finestra.Dati().InCorso() == Archivio::Fase::Ferma; }));
        QTest::qWait(20);
    }
    static DisegnoModello& Modello(frmArchivio& finestra) {
        return *finestra.findChild<DisegnoModello*>();
    }
    void Clicca(frmArchivio& finestra, const char* nome, Qt::KeyboardModifiers tasti = {}) {
        auto* lista = Controllo<DisegnoUscite>(finestra, "uscite");
        const int riga = Modello(finestra).RigaDi(File(nome));
        ASSERT_GE(riga, 0) << nome;
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, tasti, lista->Cella(riga, 0).center());
    }
    static QLineEdit* Ricerca(frmArchivio& finestra) {
        return Controllo<QLineEdit>(finestra, "txtCerca");
    }
    static QPlainTextEdit* Note(frmArchivio& finestra) {
        return Controllo<QPlainTextEdit>(finestra, "txtNote");
    }
    static QString Scritto(frmArchivio& finestra, const char* etichetta) {
        return Controllo<QLabel>(finestra, etichetta)->text();
    }

    OrologioCheCorre macchina;
};

TEST_F(FinestraArchivio, NotesAreSavedOnLeavingAndNeverLost) {
    MettiTre();
    frmArchivio finestra;
    Mostra(finestra);
    Clicca(finestra, "b.csv");
    ASSERT_EQ(Note(finestra)->toPlainText(), "second");
    const std::string prima = Leggi(File("b.ses"));
    Note(finestra)->setPlainText("più\nala");
    Clicca(finestra, "a.csv");
    std::string dopo = prima;
    dopo.replace(dopo.find("second"), 6, "pi\xF9 ala");
    EXPECT_EQ(Leggi(File("b.ses")), dopo) << "its line 8 alone";
    Clicca(finestra, "b.csv");
    EXPECT_EQ(Note(finestra)->toPlainText(), QString::fromUtf8("più ala"));

    // A disk that takes nothing: the text waits, and the window does not close without a word.
    fs::remove(File("b.ses"));
    fs::create_directory(File("b.ses"));
    Note(finestra)->setPlainText("kept");
    Clicca(finestra, "a.csv");
    EXPECT_TRUE(Controllo<QWidget>(finestra, "avviso")->isVisible());
    EXPECT_TRUE(Scritto(finestra, "lblAvviso").startsWith("The notes of b.csv are not saved."));
    Clicca(finestra, "b.csv");
    EXPECT_EQ(Note(finestra)->toPlainText(), "kept");
    macchina.Risposte = {Answer::Cancel};
    finestra.close();
    EXPECT_TRUE(finestra.isVisible());
    EXPECT_NE(macchina.Mostrati.back().Testo.find("b.csv"), std::string::npos);
    fs::remove(File("b.ses"));
    QTest::mouseClick(Controllo<QPushButton>(finestra, "cmdRiprova"), Qt::LeftButton);
    Finisci(finestra);
    EXPECT_NE(Leggi(File("b.ses")).find("NoteSessione=kept\r\n"), std::string::npos);
    EXPECT_FALSE(Controllo<QWidget>(finestra, "avviso")->isVisible());
    Note(finestra)->setPlainText("and at the end");
    finestra.close();
    EXPECT_FALSE(finestra.isVisible());
    EXPECT_NE(Leggi(File("b.ses")).find("=and at the end\r\n"), std::string::npos);
}

TEST_F(FinestraArchivio, TheKeysOfTheSearchReachTheRuns) {
    MettiTre();
    frmArchivio finestra;
    fs::path aperto;
    finestra.QuandoAnalisi = [&](const fs::path& file) {
        aperto = file;
        Metti("a", "s=Free 2\r\nd=1/5/2026\r\no=10:00\r\nc=", "other");
    };
    std::vector<fs::path> confrontati;
    finestra.QuandoConfronto = [&](const std::vector<fs::path>& file) { confrontati = file; };
    Mostra(finestra);
    EXPECT_TRUE(Ricerca(finestra)->hasFocus());
    Clicca(finestra, "b.csv");
    Ricerca(finestra)->setFocus();
    QTest::keyClicks(Ricerca(finestra), "valdoro");
    EXPECT_EQ(Scritto(finestra, "lblConto"), "3 runs");
    EXPECT_EQ(Note(finestra)->toPlainText(), "second") << "what still shows stays chosen";
    QTest::keyClicks(Ricerca(finestra), " FREE");
    EXPECT_EQ(Scritto(finestra, "lblConto"), "2 of 3 runs");
    EXPECT_EQ(Note(finestra)->toPlainText(), "third") << "the first that is left";
    QTest::keyClick(Ricerca(finestra), Qt::Key_Down);
    QTest::keyClick(Ricerca(finestra), Qt::Key_Return);
    EXPECT_EQ(aperto, File("a.csv"));
    EXPECT_EQ(Note(finestra)->toPlainText(), "other") << "what the analysis has written";

    QTest::keyClick(Ricerca(finestra), Qt::Key_Escape);
    EXPECT_TRUE(finestra.isVisible());
    EXPECT_EQ(Scritto(finestra, "lblConto"), "3 runs");
    Clicca(finestra, "sub/c.csv");
    Clicca(finestra, "b.csv", Qt::ControlModifier);
    EXPECT_EQ(Controllo<QPushButton>(finestra, "cmdConfronta")->text().remove('&'),
              "Compare 2 runs");
    QTest::keyClick(&finestra, Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(confrontati, (std::vector{File("sub/c.csv"), File("b.csv")}));
    QTest::keyClicks(Controllo<DisegnoUscite>(finestra, "uscite"), "ra");
    EXPECT_EQ(Ricerca(finestra)->text(), "ra") << "letters are for the search";
    QTest::keyClick(Ricerca(finestra), Qt::Key_Escape);
    QTest::keyClick(Ricerca(finestra), Qt::Key_Escape);
    EXPECT_FALSE(finestra.isVisible());
}

TEST_F(FinestraArchivio, SettingsAreLaidAgainstTheRunBeforeOfTheSameCar) {
    MettiTre();
    RecordProgetto progetto;
    for (const auto& [nome, auto_, diametro] :
         {std::tuple{"a.csv", "F4", 560}, {"b.csv", "GT", 570}, {"sub/c.csv", "F4", 565}}) {
        progetto.Veicolo = auto_;
        progetto.DiametroRuota = static_cast<std::int16_t>(diametro);
        Scrivi(FileImpostazioni(File(nome)), TestoImpostazioni(progetto));
    }
    frmArchivio finestra;
    Mostra(finestra);
    const auto tabella = [&] {
        QTest::qWait(20);
        return Controllo<QTableWidget>(finestra, "impostazioni");
    };
    auto* contro = Controllo<QComboBox>(finestra, "cboContro");
    Clicca(finestra, "sub/c.csv");
    ASSERT_EQ(tabella()->rowCount(), 1);
    EXPECT_EQ(tabella()->item(0, 2)->text(), "560");
    EXPECT_EQ(tabella()->item(0, 3)->text(), "565");
    EXPECT_EQ(contro->currentText(), "The one before: 1 May 2026, 10:00");
    Clicca(finestra, "b.csv", Qt::ControlModifier);
    ASSERT_EQ(tabella()->rowCount(), 2) << "the car too";
    EXPECT_EQ(tabella()->item(0, 2)->text(), "565") << "of the other chosen run";
    Clicca(finestra, "a.csv");
    EXPECT_EQ(tabella()->item(0, 2)->text(), "565") << "a later one, as there is none before";
    fs::remove(FileImpostazioni(File("a.csv")));
    QTest::keyClick(&finestra, Qt::Key_F5);
    Finisci(finestra);
    EXPECT_TRUE(tabella()->isHidden());
    EXPECT_TRUE(Scritto(finestra, "lblImpostazioni").startsWith("There is no copy"));
}

TEST_F(FinestraArchivio, ReadingStopsAndGoesOnAndAFolderThatVanishesIsTold) {
    for (int i = 0; i < 60; ++i) Metti("r" + std::to_string(i), "s=Test\r\n\r\n\r\nc=", "");
    frmArchivio finestra;
    auto* ferma = Controllo<QPushButton>(finestra, "cmdFerma");
    macchina.CartelleScelte = {Cartella()};
    EXPECT_FALSE(ferma->isVisible());
    finestra.show();
    QTest::mouseClick(Controllo<QPushButton>(finestra, "cmdScegli"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return finestra.Dati().Lette() > 0; }));
    QTest::mouseClick(ferma, Qt::LeftButton);
    const QString fin = Scritto(finestra, "lblLettura");
    EXPECT_TRUE(fin.startsWith("Stopped at ") && fin.endsWith(" of 60")) << fin.toStdString();
    QTest::qWait(30);
    EXPECT_EQ(Scritto(finestra, "lblLettura"), fin);
    QTest::mouseClick(ferma, Qt::LeftButton);
    Finisci(finestra);
    EXPECT_FALSE(ferma->isVisible());
    EXPECT_EQ(Scritto(finestra, "lblConto"), "60 runs");

    fs::rename(Cartella(), macchina.Cartella / "elsewhere");
    QTest::keyClick(&finestra, Qt::Key_F5);
    Finisci(finestra);
    EXPECT_EQ(Scritto(finestra, "lblConto"), "60 runs");
    EXPECT_TRUE(Scritto(finestra, "lblAvviso").endsWith("the list is that of the last reading."));
    EXPECT_TRUE(Scritto(finestra, "lblAiuto").startsWith("60 rows need attention"));
    finestra.close();
    EXPECT_EQ(CaricaScelteArchivio().Cartella, Cartella());
}

TEST_F(FinestraArchivio, FoldedGroupsAndTheListOnPaper) {
    for (int i = 0; i < 60; ++i) {
        const std::string data = "d=" + std::to_string(1 + i / 40) + "/5/2026";
        Metti("r" + std::to_string(i), "s=Test\r\n" + data + "\r\no=10:00\r\nc=", "");
    }
    frmArchivio finestra;
    Mostra(finestra);
    auto* gruppi = Controllo<QComboBox>(finestra, "cboGruppi");
    gruppi->setCurrentIndex(gruppi->findText("day"));
    Q_EMIT gruppi->activated(gruppi->currentIndex());
    auto* lista = Controllo<DisegnoUscite>(finestra, "uscite");
    EXPECT_EQ(Modello(finestra).rowCount(), 62);
    QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, lista->Cella(1, 0).center());
    QTest::keyClick(lista, Qt::Key_Up);
    EXPECT_EQ(lista->currentIndex().row(), 1) << "the head is no place to stop at";
    QTest::keyClick(lista, Qt::Key_Left);
    EXPECT_EQ(Modello(finestra).rowCount(), 42);
    QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, lista->Cella(0, 0).center());
    EXPECT_EQ(Modello(finestra).rowCount(), 62);

    const fs::path pdf = macchina.Cartella / "list.pdf";
    macchina.FileScelti = {pdf};
    QTest::keyClick(&finestra, Qt::Key_P, Qt::ControlModifier);
    const auto pagine = LeggiPdf(pdf);
    ASSERT_EQ(pagine.size(), 2u);
    EXPECT_GT(pagine[0].Larghezza, pagine[0].Altezza);
    const auto volte = [](const PaginaPdf& pagina, const char* parola) {
        return std::count_if(pagina.Parole.begin(), pagina.Parole.end(),
                             [&](const Parola& p) { return p.Testo == QLatin1String(parola); });
    };
    EXPECT_EQ(volte(pagine[0], "Test") + volte(pagine[1], "Test"), 60);
    EXPECT_EQ(volte(pagine[1], "Best"), 1) << "each page has its heads";
}

TEST(ScalaTempi, SlowLapsDoNotPressTheOthersDown) {
    const struct {
        std::vector<std::int32_t> Tempi;
        std::int32_t Tetto;  ///< the slowest lap below the roof
        std::int32_t Oltre;  ///< the next one, above it; 0: there is none
    } casi[] = {
        {{6422, 6471, 6530, 8304}, 6530, 8304},  // a yellow flag
        {{6400, 6410, 6527}, 6527, 0},           // within 2 %
        {{6400, 6410, 6529}, 6410, 6529},        // 128 hundredths are 2 %
        {{6422}, 6422, 0},
        {{0, 6422, 0, 6500}, 6500, 0},  // laps without a time
    };
    for (const auto& caso : casi) {
        std::vector<TempoDisegnato> giri;
        for (const std::int32_t tempo : caso.Tempi) giri.push_back({1, tempo});
        const ScalaTempi scala = CalcolaScalaTempi(giri);
        EXPECT_GE(scala.Tetto, caso.Tetto);
        if (caso.Oltre > 0) {
            EXPECT_LT(scala.Tetto, caso.Oltre);
        }
        EXPECT_LT(scala.Pavimento, caso.Tempi[0] > 0 ? caso.Tempi[0] : caso.Tempi[1]);
        EXPECT_LE(scala.Tacche.size(), 8u);
        EXPECT_FALSE(scala.Tacche.empty());
    }
    EXPECT_TRUE(CalcolaScalaTempi({{1, 0}}).Tacche.empty());
}

}  // namespace
}  // namespace lapvane::prova
