#include "analysis/frmAnalisiDatiSpeed.h"

#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "analysis/AnalisiProva.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "support/WindowPdf.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

/// Start (5 rows), laps of 40, 30 and 50 rows, one lap without rows, End.
LogProva QuattroGiri() {
    LogProva log;
    log.Tratto(1, 5);
    for (int giro = 2; giro <= 4; ++giro) {
        log.Tratto(giro,
                   giro == 2   ? 40
                   : giro == 3 ? 30
                               : 50,
                   [giro](int r) { return 1000.0 * giro + r; });
    }
    log.Tim =
        "1.4\r\n01:02.30, 1\r\n01:01.90, 1\r\n01:03.10, 1\r\n01:02.00, 1\r\n01:02.10, 1\r\n\r\n";
    return log;
}

class FinestraAnalisi : public ::testing::Test {
 protected:
    FinestraAnalisi() {
        CaricaTestiVeri(1);
        QuattroGiri().Scrivi(macchina.Cartella / "run");
        AnalisiInCorso = true;
        finestra.NomeFileDati = macchina.Cartella / "run.csv";
    }
    ~FinestraAnalisi() override { DatiSessione = {}; }

    void Mostra() {
        ASSERT_TRUE(finestra.Carica());
        finestra.resize(1366, 738);
        finestra.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&finestra));
    }
    template <class T>
    T* Controllo(const char* nome, int c = 0) {
        T* const trovato = finestra.findChild<T*>(
            c == 0 ? QString::fromLatin1(nome) : QString::fromLatin1(nome) + QString::number(c));
        EXPECT_NE(trovato, nullptr) << nome << c;
        return trovato;
    }
    GrigliaGiri* Griglia() { return Controllo<GrigliaGiri>("MSFlexGrid1"); }
    /// Clicks a cell by table row and column.
    void Clicca(int riga, int colonna) {
        const QModelIndex cella = Griglia()->model()->index(riga - 1, colonna);
        Griglia()->scrollTo(cella);
        QTest::mouseClick(Griglia()->viewport(), Qt::LeftButton, {},
                          Griglia()->visualRect(cella).center());
    }
    std::string Cella(int riga, int colonna) {
        return DaQt(Griglia()->model()->index(riga - 1, colonna).data().toString());
    }

    PlatformProva macchina;
    PrincipaleProva principale;
    frmAnalisiDatiSpeed finestra;
};

}  // namespace

TEST_F(FinestraAnalisi, ShowsTheChannelsOfTheLogAndItsLaps) {
    Mostra();
    EXPECT_EQ(DaQt(finestra.windowTitle()), "run.csv");
    for (int c = 3; c <= 20; ++c) {
        EXPECT_EQ(Controllo<QCheckBox>("chkGrafico", c)->isVisible(), c <= 16) << c;
        EXPECT_EQ(Controllo<QLabel>("lblNomeCampo", c)->isVisible(), c <= 16) << c;
        EXPECT_FALSE(Controllo<QRadioButton>("optScala", c)->isEnabled()) << c;
    }
    EXPECT_EQ(DaQt(Controllo<QLabel>("lblNomeCampo", 4)->text()), Testo(Voce::CanaleVelocita));
    EXPECT_EQ(DaQt(Controllo<QLabel>("lblUM", 4)->text()), "[Km/h]");
    EXPECT_EQ(DaQt(Controllo<QLabel>("lblUM", 8)->text()), "[\xB0 C]");
    EXPECT_EQ(Griglia()->model()->rowCount(), 7) << "Start, five laps, End";
    EXPECT_EQ(Cella(1, 0), "Start");
    EXPECT_EQ(Cella(3, 1), "01:01.90");
    EXPECT_EQ(Cella(7, 0), "End");
    EXPECT_EQ(DaQt(Griglia()->model()->headerData(1, Qt::Horizontal).toString()),
              Testo(Voce::ColonnaTempoGiro));
    EXPECT_FALSE(Griglia()->isColumnHidden(1));
    EXPECT_TRUE(Griglia()->isColumnHidden(2)) << "no sectors, no column";
    EXPECT_EQ(Griglia()->currentIndex(), Griglia()->model()->index(0, 1));
    // Nothing is cut off: the list is as wide as its longest row.
    const auto* lista = Controllo<QFrame>("fraMisure");
    EXPECT_GE(lista->width(), lista->minimumSizeHint().width());
    EXPECT_LE(finestra.minimumSizeHint().width(), 1366);
    EXPECT_LE(finestra.minimumSizeHint().height(), 700);
}

TEST_F(FinestraAnalisi, TickingDrawsAndChoosesTheScale) {
    Mostra();
    Clicca(2, 1);
    auto* const grafico = Controllo<GraficoWidget>("NTGraph1");
    EXPECT_EQ(grafico->ElementoCorrente(), 1) << "no curve yet";
    auto* const spunta = Controllo<QCheckBox>("chkGrafico", 3);
    spunta->setFocus();
    QTest::keyClick(spunta, Qt::Key_Space);
    EXPECT_TRUE(spunta->isChecked());
    EXPECT_EQ(grafico->ElementoCorrente(), 2);
    EXPECT_TRUE(Controllo<QRadioButton>("optScala", 3)->isEnabled());
    EXPECT_TRUE(Controllo<QRadioButton>("optScala", 3)->isChecked());
    // A click on the channel's name ticks it as well.
    QTest::mouseClick(Controllo<QLabel>("lblNomeCampo", 5), Qt::LeftButton);
    EXPECT_TRUE(Controllo<QCheckBox>("chkGrafico", 5)->isChecked());
    EXPECT_EQ(grafico->ElementoCorrente(), 3);
    EXPECT_TRUE(Controllo<QRadioButton>("optScala", 5)->isChecked());
    Controllo<QRadioButton>("optScala", 3)->click();
    EXPECT_EQ(finestra.Analisi().Canali().CanaleScala(), 3);
    QTest::keyClick(spunta, Qt::Key_Space);
    EXPECT_EQ(grafico->ElementoCorrente(), 2);
    EXPECT_TRUE(Controllo<QRadioButton>("optScala", 5)->isChecked());
    EXPECT_FALSE(Controllo<QRadioButton>("optScala", 3)->isEnabled());
}

TEST_F(FinestraAnalisi, MarksBestWorstAndSelectedLapReadably) {
    Mostra();
    Clicca(3, 1);
    EXPECT_EQ(finestra.Analisi().Giri().GiroSelezionato(), 3);
    const auto colore = [&](int riga, int colonna, int ruolo) {
        return Griglia()->model()->index(riga - 1, colonna).data(ruolo).value<QColor>();
    };
    EXPECT_EQ(colore(3, 1, Qt::BackgroundRole), QColor(0, 255, 0));
    EXPECT_EQ(colore(4, 1, Qt::BackgroundRole), QColor(255, 0, 0));
    EXPECT_EQ(colore(3, 2, Qt::BackgroundRole), QColor(0, 0, 255));
    EXPECT_FALSE(Griglia()->model()->index(1, 2).data(Qt::BackgroundRole).isValid());
    EXPECT_TRUE(Griglia()->model()->index(2, 0).data(ModelloGiri::kRuoloGiro).toBool());
    EXPECT_FALSE(Griglia()->model()->index(0, 0).data(ModelloGiri::kRuoloGiro).toBool());
    EXPECT_EQ(DaQt(Controllo<QTabWidget>("SSTab1")->tabText(0)),
              Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 3");
    // On the screen: the label of the selected lap is blue, the best time green.
    const QImage foto = Griglia()->viewport()->grab().toImage();
    const auto angolo = [&](int riga, int colonna) {
        const QRect cella = Griglia()->visualRect(Griglia()->model()->index(riga - 1, colonna));
        return foto.pixelColor(cella.left() + 5, cella.center().y());
    };
    EXPECT_EQ(angolo(3, 0), QColor(0, 0, 255));
    EXPECT_EQ(angolo(3, 1), QColor(0, 255, 0));
    EXPECT_EQ(angolo(4, 1), QColor(255, 0, 0));
}

TEST_F(FinestraAnalisi, OnlyTheLapTimeSelectsWithTheMouseAndEnterWithTheKeyboard) {
    Mostra();
    Clicca(4, 0);
    EXPECT_EQ(finestra.Analisi().Giri().GiroSelezionato(), 1);
    EXPECT_EQ(Griglia()->currentIndex().row(), 3);
    QTest::keyClick(Griglia(), Qt::Key_Down);
    QTest::keyClick(Griglia(), Qt::Key_Up);
    EXPECT_EQ(finestra.Analisi().Giri().GiroSelezionato(), 1) << "the arrows only move";
    QTest::keyClick(Griglia(), Qt::Key_Return);
    EXPECT_EQ(finestra.Analisi().Giri().GiroSelezionato(), 4);
    EXPECT_EQ(finestra.Analisi().Giri().RigheGiro(), 49);
    EXPECT_TRUE(finestra.isVisible()) << "Enter is no button of the window";
}

TEST_F(FinestraAnalisi, LapWithoutRowsHidesTheGraphAndKeepsItsPlace) {
    Mostra();
    const int prima = Griglia()->x();
    Clicca(5, 1);
    EXPECT_TRUE(Controllo<QTabWidget>("SSTab1")->isHidden());
    EXPECT_TRUE(Controllo<QFrame>("fraMisure")->isHidden());
    QTest::qWait(20);
    EXPECT_EQ(Griglia()->x(), prima);
    Clicca(2, 1);
    EXPECT_TRUE(Controllo<QTabWidget>("SSTab1")->isVisible());
    EXPECT_TRUE(Controllo<QFrame>("fraMisure")->isVisible());
}

TEST_F(FinestraAnalisi, SectorColumnsFollowTheTrack) {
    Scrivi(macchina.Cartella / "tracks" / "Prova.sec", "300\r\n100\r\n200\r\n");
    std::string ses = "a=\r\nb=\r\nc=\r\nCircuito=Prova\r\ne=300\r\nf=\r\ng=\r\nh=\r\n";
    for (int c = 3; c <= 20; ++c) ses += "x;1;255;1;0;0\r\n";
    Scrivi(macchina.Cartella / "run.ses", ses);
    Mostra();
    EXPECT_FALSE(Griglia()->isColumnHidden(2));
    EXPECT_FALSE(Griglia()->isColumnHidden(3));
    EXPECT_TRUE(Griglia()->isColumnHidden(4));
    EXPECT_EQ(Cella(2, 2), "00:01.00") << "100 m at 10 m a row";
}

TEST_F(FinestraAnalisi, TabGoesFromTheChannelsToTheLaps) {
    Mostra();
    auto* const primo = Controllo<QCheckBox>("chkGrafico", 3);
    primo->setFocus();
    QTest::keyClick(primo, Qt::Key_Tab);
    EXPECT_EQ(finestra.focusWidget(), Controllo<QCheckBox>("chkGrafico", 4));
    for (int i = 0; i < 40 && finestra.focusWidget() != Griglia(); ++i) {
        QTest::keyClick(finestra.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(finestra.focusWidget(), Griglia());
}

TEST_F(FinestraAnalisi, LanguageFollowsAtTheNextActivation) {
    Mostra();
    IndiceLingua = 0;
    QEvent attiva(QEvent::WindowActivate);
    QApplication::sendEvent(&finestra, &attiva);
    EXPECT_EQ(DaQt(Controllo<QLabel>("lblNomeCampo", 3)->text()), Testo(Voce::CanaleGiriMotore));
    EXPECT_EQ(DaQt(Controllo<QRadioButton>("optScala", 3)->toolTip()), Testo(Voce::ScalaDisegno));
    EXPECT_EQ(DaQt(Controllo<QTabWidget>("SSTab1")->tabText(0)),
              Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 1");
}

TEST_F(FinestraAnalisi, EscapeClosesAndPutsTheStatusBarBack) {
    DatiProgetto.NomeProgetto = "Montecorvo";
    bool vista = false;
    QTimer::singleShot(0, &finestra, [&] {
        vista = finestra.isVisible() && finestra.isModal() && AnalisiCaricata;
        QTest::keyClick(&finestra, Qt::Key_Escape);
    });
    finestra.Apri();
    EXPECT_TRUE(vista);
    EXPECT_FALSE(finestra.isVisible());
    EXPECT_FALSE(AnalisiInCorso);
    EXPECT_FALSE(AnalisiCaricata);
    EXPECT_EQ(principale.Testo(Pannello::Progetto), "Montecorvo");
    EXPECT_EQ(principale.Testo(Pannello::Progresso), "");
    EXPECT_EQ(Controllo<GraficoWidget>("NTGraph1")->ElementoCorrente(), 1);
}

TEST_F(FinestraAnalisi, MissingSideFileNeverShowsTheWindow) {
    std::filesystem::remove(macchina.Cartella / "run.txt");
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    finestra.Apri();  // returns at once
    EXPECT_FALSE(finestra.isVisible());
    EXPECT_FALSE(AnalisiInCorso);
    EXPECT_FALSE(AnalisiCaricata);
}

TEST_F(FinestraAnalisi, TheInvariantOfTickedChannelsIsSeen) {
    Mostra();
    Clicca(2, 1);
    auto* const valore = Controllo<QLineEdit>("txtValore", 3);
    auto* const impostazioni = Controllo<QPushButton>("cmdSetGraph", 3);
    const auto fondo = [&] { return valore->palette().color(QPalette::Base); };
    const QColor sistema = impostazioni->palette().color(QPalette::Active, QPalette::Button);
    EXPECT_EQ(fondo(), QColor(Qt::white));
    EXPECT_FALSE(impostazioni->isEnabled());
    Controllo<QCheckBox>("chkGrafico", 3)->click();
    EXPECT_EQ(fondo(), QColor(255, 255, 0));
    EXPECT_TRUE(valore->font().bold());
    EXPECT_TRUE(impostazioni->isEnabled());
    EXPECT_EQ(impostazioni->palette().color(QPalette::Button), QColor(255, 255, 0));
    Controllo<QCheckBox>("chkGrafico", 3)->click();
    EXPECT_EQ(fondo(), QColor(Qt::white));
    EXPECT_FALSE(valore->font().bold());
    EXPECT_EQ(impostazioni->palette().color(QPalette::Active, QPalette::Button), sistema);
}

TEST_F(FinestraAnalisi, ButtonsMoveTheWindowAndTheReadouts) {
    Mostra();
    Clicca(2, 1);
    Controllo<QCheckBox>("chkGrafico", 3)->click();
    auto* const grafico = Controllo<GraficoWidget>("NTGraph1");
    auto* const panoramica = Controllo<GraficoWidget>("NTGraphAll");
    EXPECT_DOUBLE_EQ(grafico->LeggiIntervallo().XMax, 3.9);
    Controllo<QPushButton>("cmdZoomIn50")->click();
    EXPECT_DOUBLE_EQ(grafico->LeggiIntervallo().XMax, 1.95);
    // Out by a tenth divides, to the last bit.
    Controllo<QPushButton>("cmdZoomOut10")->click();
    EXPECT_EQ(grafico->LeggiIntervallo().XMax, 1.95 / 0.9);
    Controllo<QPushButton>("cmdZoomIn10")->click();
    Controllo<QPushButton>("cmdZoomOut50")->click();
    Controllo<QPushButton>("cmdZoomIn50")->click();
    EXPECT_DOUBLE_EQ(grafico->LeggiIntervallo().XMax, 1.95);
    Controllo<QPushButton>("cmdSpostaDX10")->click();
    EXPECT_DOUBLE_EQ(grafico->LeggiIntervallo().XMin, 0.195);
    EXPECT_EQ(DaQt(Controllo<QLineEdit>("txtValore", 3)->text()), "2002");
    Controllo<QTabWidget>("SSTab1")->setCurrentIndex(1);
    EXPECT_DOUBLE_EQ(panoramica->LeggiIntervallo().XMin, 0.195);
    EXPECT_EQ(panoramica->ElementoCorrente(), 9) << "eight alarms";
    Controllo<QTabWidget>("SSTab1")->setCurrentIndex(0);
    Controllo<QToolButton>("Toolbar1_Separati")->click();
    EXPECT_FALSE(Controllo<QToolButton>("Toolbar1_SetZoom")->isEnabled());
    EXPECT_FALSE(Controllo<QToolButton>("Toolbar1_Sovrapposti")->isChecked());
    Controllo<QToolButton>("Toolbar1_DimOriginali")->click();
    EXPECT_DOUBLE_EQ(grafico->LeggiIntervallo().XMax, 3.9);
    Controllo<QToolButton>("Toolbar1_Sovrapposti")->click();
    // A zoom rectangle draws the finer points at once.
    Controllo<QToolButton>("Toolbar1_SetZoom")->click();
    const QRect area = grafico->AreaDisegno().toRect();
    QTest::mousePress(grafico, Qt::LeftButton, {}, area.topLeft() + QPoint(area.width() / 2, 5));
    QTest::mouseMove(grafico, area.bottomRight() - QPoint(2, 5));
    QTest::mouseRelease(grafico, Qt::LeftButton, {}, area.bottomRight() - QPoint(2, 5));
    EXPECT_NEAR(finestra.Analisi().Finestra().XMin(), 1.95, 0.1);
    EXPECT_GT(finestra.Analisi().Finestra().RigaDa(), 20);
}

TEST_F(FinestraAnalisi, LapTableKeepsItsWidthHoweverOftenTheWindowIsResized) {
    Mostra();
    const int larga = Griglia()->width();
    const auto* grafico = Controllo<GraficoWidget>("NTGraph1");
    for (const QSize& misura : {QSize(1200, 700), QSize(1366, 738), QSize(1280, 720),
                                QSize(1366, 700), QSize(1900, 1000), QSize(1366, 738)}) {
        finestra.resize(misura);
        QTest::qWait(1);
        EXPECT_EQ(Griglia()->width(), larga) << misura.width();
    }
    EXPECT_LE(larga, Griglia()->columnWidth(0) + 160) << "a label, a time and the scroll bar";
    EXPECT_GT(grafico->width(), finestra.width() / 2);
}

TEST_F(FinestraAnalisi, PrintedGraphSaysWhichLapAndNamesEachAlarmAtItsLine) {
    Mostra();
    Clicca(3, 1);
    Controllo<QCheckBox>("chkGrafico", 3)->click();
    const auto stampa = [&](const char* nome) {
        macchina.FileScelti = {macchina.Cartella / nome};
        Controllo<QToolButton>("Toolbar1_Stampa")->click();
        return LeggiPdf(macchina.Cartella / nome).at(0);
    };
    const auto quante = [](const PaginaPdf& pagina, const QString& testo) {
        return std::count_if(pagina.Parole.begin(), pagina.Parole.end(),
                             [&](const Parola& p) { return p.Testo == testo; });
    };
    const PaginaPdf canali = stampa("canali.pdf");
    for (const char* parola : {"run.csv", "01:01.90"}) EXPECT_NE(canali.Trova(parola), nullptr);
    EXPECT_EQ(quante(canali, InQt(Testo(Voce::Giro))), 1) << "the lap";
    EXPECT_LT(canali.Trova("run.csv")->Y, canali.Trova("01:01.90")->Y + 0.01);
    EXPECT_EQ(canali.Trova("Alternator"), nullptr);

    Clicca(1, 1);
    Controllo<QTabWidget>("SSTab1")->setCurrentIndex(1);
    const PaginaPdf allarmi = stampa("allarmi.pdf");
    EXPECT_NE(allarmi.Trova("run.csv"), nullptr);
    EXPECT_EQ(allarmi.Trova("01:01.90"), nullptr) << "the stretch before the first mark";
    // Each name once at its line and once in the legend; the highest line is the last alarm's.
    EXPECT_EQ(quante(allarmi, QStringLiteral("Alternator")), 1);
    const auto altezza = [&](const QString& testo, const QString& dopo) {
        for (std::size_t i = 0; i + 1 < allarmi.Parole.size(); ++i) {
            const Parola& p = allarmi.Parole[i];
            if (p.Testo == testo && allarmi.Parole[i + 1].Testo == dopo && p.X < 4.0 &&
                p.Y < 18.5) {
                return p.Y;
            }
        }
        ADD_FAILURE() << testo.toStdString();
        return 0.0;
    };
    const double pompa = altezza(QStringLiteral("Oil"), QStringLiteral("pump"));
    const double livello = altezza(QStringLiteral("Fuel"), QStringLiteral("level"));
    const double alternatore = allarmi.Trova("Alternator")->Y;
    EXPECT_LT(livello, alternatore);
    EXPECT_LT(alternatore, pompa);
    EXPECT_NEAR(pompa - livello, 7.0 * (pompa - alternatore), 0.1) << "as far apart as the lines";
}

TEST_F(FinestraAnalisi, ClosesInTheMiddleOfAScroll) {
    Mostra();
    Clicca(4, 1);
    Controllo<QCheckBox>("chkGrafico", 3)->click();
    Controllo<QPushButton>("cmdZoomIn50")->click();
    int giri = 0;
    macchina.DuranteEventi = [&] {
        if (++giri == 6) finestra.close();
        ASSERT_LT(giri, 10);
    };
    Controllo<QPushButton>("cmdScorriDX")->click();
    EXPECT_FALSE(finestra.isVisible());
    EXPECT_FALSE(finestra.Analisi().ScorrimentoAttivo());
    EXPECT_FALSE(AnalisiInCorso);
    EXPECT_EQ(principale.Testo(Pannello::Percorso), "") << "the status bar is the project's again";
    EXPECT_TRUE(std::filesystem::exists(macchina.Cartella / "run.ses"));
}

TEST_F(FinestraAnalisi, CommandsWithoutLapsAndWithoutATrack) {
    prova::Scrivi(macchina.Cartella / "run.tim", "1.4\r\n\r\n");
    Mostra();
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok, Answer::Ok};
    for (const char* chiave : {"Statistiche", "StatisticheMisure", "ReportGiri"}) {
        Controllo<QToolButton>((std::string("Toolbar1_") + chiave).c_str())->click();
        EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::NessunGiroCompleto)) << chiave;
    }
    auto* const circuito = Controllo<QToolButton>("Toolbar1_Circuito");
    circuito->click();
    EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::TracciatoNonTrovato));
    EXPECT_FALSE(circuito->isChecked());
    std::filesystem::create_directory(macchina.Cartella / "Tracks");
    prova::Scrivi(macchina.Cartella / "Tracks" / "Corto.trk", "0,0\r\n10,0\r\n10,10\r\n");
    DatiSessione.Circuito = "Corto";
    circuito->click();
    EXPECT_TRUE(circuito->isChecked());
    EXPECT_TRUE(Controllo<QLabel>("txtCircuito")->isVisible());
    EXPECT_EQ(Controllo<DisegnoTracciato>("Picture1")->Punti().size(), 3u);
    finestra.Analisi().EventoCursore(Grafico::Canali, 0);
    EXPECT_EQ(Controllo<DisegnoTracciato>("Picture1")->PuntoMarcato(), 0);
    circuito->click();
    EXPECT_FALSE(Controllo<QLabel>("txtCircuito")->isVisible());
}
