#include "analysis/frmAnalisiDatiSpeed.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTableWidget>
#include <algorithm>

#include "analysis/AnalisiProva.h"
#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

/// Its clock goes on by a step with each look at it.
class MacchinaLenta : public PlatformProva {
 public:
    std::int64_t GetTickCount() override { return Orologio += Scatto; }
    int Scatto = 0;
};

class FinestraAnalisi : public ::testing::Test {
 protected:
    FinestraAnalisi() {
        CaricaTestiVeri(1);
        LogProva log = QuattroGiri();
        for (std::size_t r = 9; r < 45; ++r) log.Righe[r].Allarme2 = true;
        log.Scrivi(macchina.Cartella / "run");
        Scrivi(macchina.Cartella / "tracks" / "Corto.trk", "0,0\r\n10,0\r\n10,10\r\n");
        Scrivi(macchina.Cartella / "tracks" / "Corto.sec", "300\r\n100\r\n200\r\n");
        AnalisiInCorso = true;
        finestra.NomeFileDati = macchina.Cartella / "run.csv";
    }

    void Mostra() {
        ASSERT_TRUE(finestra.Carica());
        finestra.resize(1366, 738);
        finestra.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&finestra));
    }
    template <class T>
    T* C(const std::string& nome, int c = 0) {
        return Controllo<T>(finestra, (c == 0 ? nome : nome + std::to_string(c)).c_str());
    }
    GrigliaGiri* Griglia() { return C<GrigliaGiri>("MSFlexGrid1"); }
    QToolButton* Chiave(const std::string& nome) { return C<QToolButton>("Toolbar1_" + nome); }
    int Giro() { return finestra.Analisi().Giri().GiroSelezionato(); }
    QModelIndex Cella(int riga, int colonna) {
        return Griglia()->model()->index(riga - 1, colonna);
    }
    std::string TestoCella(int riga, int colonna) {
        return DaQt(Cella(riga, colonna).data().toString());
    }
    void Clicca(int riga, int colonna) {
        Griglia()->scrollTo(Cella(riga, colonna));
        QTest::mouseClick(Griglia()->viewport(), Qt::LeftButton, {},
                          Griglia()->visualRect(Cella(riga, colonna)).center());
    }
    /// Does something in the dialog that `apri` opens.
    void InDialogo(QAbstractButton* apri, const char* nome,
                   const std::function<void(QDialog&)>& azione) {
        bool aperto = false;
        QTimer poi;
        poi.setSingleShot(true);
        QObject::connect(&poi, &QTimer::timeout, &finestra, [&] {
            auto* const dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialogo, nullptr);
            aperto = dialogo->objectName() == QLatin1String(nome);
            if (aperto) azione(*dialogo);
            if (dialogo != &finestra) dialogo->reject();
        });
        poi.start(0);
        apri->click();
        EXPECT_TRUE(aperto) << nome;
    }

    MacchinaLenta macchina;
    PrincipaleProva principale;
    frmAnalisiDatiSpeed finestra;
};

}  // namespace

TEST_F(FinestraAnalisi, ShowsTheChannelsOfTheLogAndItsLaps) {
    Mostra();
    EXPECT_EQ(DaQt(finestra.windowTitle()), "run.csv");
    EXPECT_EQ(C<QTabWidget>("SSTab1")->currentIndex(), 0);
    for (int c = 3; c <= 20; ++c) {
        EXPECT_EQ(C<QCheckBox>("chkGrafico", c)->isVisible(), c <= 16) << c;
        EXPECT_EQ(C<QPushButton>("cmdSetGraph", c)->isVisible(), c <= 16) << c;
    }
    EXPECT_EQ(DaQt(C<QLabel>("lblNomeCampo", 4)->text()), Testo(Voce::CanaleVelocita));
    EXPECT_EQ(DaQt(C<QLabel>("lblUM", 8)->text()), "[\xB0 C]");
    const QImage campione = C<CampioneColore>("shpColor", 3)->grab().toImage();
    EXPECT_EQ(campione.pixelColor(campione.rect().center()), QColor(192, 0, 0));
    EXPECT_EQ(Griglia()->model()->rowCount(), 6) << "Start, four laps, End";
    EXPECT_EQ(TestoCella(1, 0), "Start");
    EXPECT_EQ(TestoCella(3, 1), "01:01.90");
    EXPECT_EQ(TestoCella(6, 0), "End");
    EXPECT_TRUE(Griglia()->isColumnHidden(2)) << "no sectors, no column";
    EXPECT_EQ(Griglia()->currentIndex(), Cella(1, 1));
    IndiceLingua = 0;
    QEvent attiva(QEvent::WindowActivate);
    QApplication::sendEvent(&finestra, &attiva);
    EXPECT_EQ(DaQt(C<QRadioButton>("optScala", 3)->toolTip()), Testo(Voce::ScalaDisegno));
    EXPECT_EQ(DaQt(C<QLabel>("lblPiloti")->text()), Testo(Voce::Piloti));
    EXPECT_EQ(DaQt(C<QLabel>("lblNomeAllarme", 7)->text()), Testo(Dopo(Voce::AllarmePompaOlio, 7)));
    EXPECT_EQ(DaQt(Chiave("Stampa")->toolTip()), Testo(Voce::StampaGrafico));
}

TEST_F(FinestraAnalisi, TickingDrawsMarksTheRowAndChoosesTheScale) {
    Mostra();
    Clicca(2, 1);
    auto* const grafico = C<GraficoWidget>("NTGraph1");
    // While nothing is ticked the graph says what to do.
    const auto conInvito = [&] {
        const QImage prima = grafico->Fotografa(1.0);
        grafico->Invito({});
        return grafico->Fotografa(1.0) != prima;
    };
    EXPECT_TRUE(conInvito());
    auto* const spunta = C<QCheckBox>("chkGrafico", 3);
    auto* const valore = C<QLineEdit>("txtValore", 3);
    auto* const impostazioni = C<QPushButton>("cmdSetGraph", 3);
    const QColor sistema = impostazioni->palette().color(QPalette::Active, QPalette::Button);
    spunta->setFocus();
    for (const bool disegnato : {false, true, false, true}) {
        SCOPED_TRACE(disegnato);
        const QColor giallo(255, 255, 0);
        EXPECT_EQ(spunta->isChecked(), disegnato);
        EXPECT_EQ(grafico->ElementoCorrente(), disegnato ? 2 : 1);
        EXPECT_EQ(C<QRadioButton>("optScala", 3)->isEnabled(), disegnato);
        EXPECT_EQ(impostazioni->isEnabled(), disegnato);
        EXPECT_EQ(valore->palette().color(QPalette::Base), disegnato ? giallo : QColor(Qt::white));
        EXPECT_EQ(valore->font().bold(), disegnato);
        EXPECT_EQ(impostazioni->palette().color(QPalette::Active, QPalette::Button),
                  disegnato ? giallo : sistema);
        QTest::keyClick(spunta, Qt::Key_Space);
    }
    EXPECT_TRUE(conInvito());
    QTest::keyClick(spunta, Qt::Key_Space);
    EXPECT_FALSE(conInvito());
    EXPECT_TRUE(C<QRadioButton>("optScala", 3)->isChecked());
    // A click on the channel's name ticks it as well.
    auto* const nome = C<QLabel>("lblNomeCampo", 5);
    QTest::mouseClick(nome, Qt::RightButton);
    EXPECT_FALSE(C<QCheckBox>("chkGrafico", 5)->isChecked());
    QTest::mouseClick(nome, Qt::LeftButton);
    EXPECT_EQ(grafico->ElementoCorrente(), 3);
    EXPECT_TRUE(C<QRadioButton>("optScala", 5)->isChecked());
    C<QRadioButton>("optScala", 3)->click();
    EXPECT_EQ(finestra.Analisi().Canali().CanaleScala(), 3);
    InDialogo(C<QPushButton>("cmdSetGraph", 5), "dlgSetGraph", [](QDialog& dialogo) {
        Controllo<QLineEdit>(dialogo, "txtNomeCampo")->setText(QStringLiteral("Benzina"));
        Controllo<QPushButton>(dialogo, "OKButton")->click();
    });
    EXPECT_EQ(DaQt(nome->text()), "Benzina");
    EXPECT_EQ(C<QCheckBox>("chkGrafico", 5)->accessibleName(), nome->text());
    C<QCheckBox>("chkDistanza")->click();
    EXPECT_FALSE(C<QCheckBox>("chkTempo")->isChecked());
    EXPECT_EQ(grafico->LeggiIntervallo().XMax, 390.0);
}

TEST_F(FinestraAnalisi, LapsAreChosenByTheirTimesOrByEnterAndMarkedReadably) {
    Mostra();
    Clicca(4, 0);
    EXPECT_EQ(Giro(), 1);
    QTest::keyClick(Griglia(), Qt::Key_Up);
    EXPECT_EQ(Giro(), 1) << "the arrows only move";
    QTest::keyClick(Griglia(), Qt::Key_Return);
    EXPECT_EQ(Giro(), 3);
    EXPECT_TRUE(finestra.isVisible()) << "Enter is no button of the window";
    Clicca(4, 1);
    EXPECT_EQ(Giro(), 4);
    Clicca(3, 1);
    EXPECT_EQ(DaQt(C<QTabWidget>("SSTab1")->tabText(0)),
              Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 3");
    const auto colore = [&](int riga, int colonna, int ruolo) {
        return Cella(riga, colonna).data(ruolo).value<QColor>();
    };
    EXPECT_EQ(colore(3, 2, Qt::BackgroundRole), QColor(0, 0, 255));
    EXPECT_EQ(colore(3, 2, Qt::ForegroundRole), QColor(Qt::white));
    EXPECT_FALSE(Cella(2, 2).data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(Cella(4, 2).data(Qt::BackgroundRole).isValid()) << "the lap before";
    // On the screen: the label of the selected lap is blue between bars, the best time green with
    // black letters.
    Griglia()->clearFocus();
    const QImage foto = Griglia()->viewport()->grab().toImage();
    const auto pixel = [&](int riga, int colonna, int y) {
        const QRect cella = Griglia()->visualRect(Cella(riga, colonna));
        return foto.pixelColor(cella.left() + 5, cella.top() + (y < 0 ? cella.height() / 2 : y));
    };
    const QColor blu(0, 0, 255);
    EXPECT_EQ(pixel(3, 0, -1), blu);
    EXPECT_EQ(pixel(3, 1, -1), QColor(0, 255, 0));
    EXPECT_EQ(pixel(3, 1, 0), blu);
    EXPECT_EQ(pixel(4, 1, -1), QColor(255, 0, 0));
    EXPECT_NE(pixel(4, 1, 0), blu);
    for (const int colonna : {1, 0}) {
        const QPointF dove = Griglia()->visualRect(Cella(2, colonna)).center();
        QMouseEvent muove(QEvent::MouseMove, dove, dove, Qt::NoButton, {}, {});
        QApplication::sendEvent(Griglia()->viewport(), &muove);
        EXPECT_EQ(Griglia()->viewport()->cursor().shape() == Qt::PointingHandCursor, colonna == 1);
    }
    const auto prese = [&](int riga, int colonna, const std::function<void()>& azione) {
        return Ridipinto(*Griglia()->viewport(), azione)
            .contains(Griglia()->visualRect(Cella(riga, colonna)).center());
    };
    EXPECT_TRUE(prese(3, 0, [&] { Griglia()->Modello().SegnaGiro(4); })) << "the old mark stays";
    EXPECT_TRUE(prese(2, 1, [&] { Griglia()->Cella(2, 1, "01:09.99"); }));
    // A lap without rows hides the graph, and nothing moves.
    const int prima = Griglia()->x();
    for (const int riga : {5, 2}) {
        Clicca(riga, 1);
        QCoreApplication::processEvents();
        EXPECT_EQ(C<QTabWidget>("SSTab1")->isVisible(), riga == 2);
        EXPECT_EQ(C<QFrame>("fraMisure")->isVisible(), riga == 2);
        EXPECT_EQ(C<QPushButton>("cmdZoomIn10")->isVisible(), riga == 2);
        EXPECT_EQ(Griglia()->x(), prima);
    }
}

TEST_F(FinestraAnalisi, EscapeClosesAndPutsTheStatusBarBack) {
    DatiProgetto.NomeProgetto = "Montecorvo";
    QTimer::singleShot(0, &finestra, [&] { QTest::keyClick(&finestra, Qt::Key_Escape); });
    finestra.Apri();
    EXPECT_FALSE(AnalisiInCorso);
    EXPECT_EQ(principale.Testo(Pannello::Progetto), "Montecorvo");
    std::filesystem::remove(macchina.Cartella / "run.txt");
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    frmAnalisiDatiSpeed altra;
    altra.NomeFileDati = finestra.NomeFileDati;
    QTimer::singleShot(0, &altra, [&] { ADD_FAILURE() << "shown without its side file"; });
    altra.Apri();
}

TEST_F(FinestraAnalisi, ALoadThatTakesLongShowsABarAndEscapeStopsIt) {
    LogProva().Tratto(1, 3000).Scrivi(macchina.Cartella / "run");
    macchina.Scatto = 100;
    int passi = 0;
    macchina.DuranteEventi = [&] {
        auto* const barra = QApplication::activeModalWidget();
        ASSERT_NE(barra, nullptr);
        if (++passi < 5) return;
        EXPECT_EQ(Controllo<QProgressBar>(*barra, "ProgressBar1")->value(), 40)
            << "from 33 on; nothing is shown before 0.4 s";
        QTest::keyClick(barra, Qt::Key_Escape);
    };
    EXPECT_FALSE(finestra.Carica());
    EXPECT_EQ(passi, 5);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FinestraAnalisi, ButtonsMoveTheWindowAndTheReadouts) {
    Mostra();
    Clicca(2, 1);
    C<QCheckBox>("chkGrafico", 3)->click();
    auto* const grafico = C<GraficoWidget>("NTGraph1");
    auto* const panoramica = C<GraficoWidget>("NTGraphAll");
    const auto premi = [&](const char* nome) {
        C<QPushButton>(nome)->click();
        return grafico->LeggiIntervallo();
    };
    EXPECT_DOUBLE_EQ(premi("cmdZoomIn50").XMax, 1.95);
    EXPECT_EQ(premi("cmdZoomOut10").XMax, 1.95 / 0.9) << "divides, to the last bit";
    premi("cmdZoomIn10");
    premi("cmdZoomOut50");
    EXPECT_DOUBLE_EQ(premi("cmdZoomIn50").XMax, 1.95);
    EXPECT_LT(premi("cmdScorriSX").XMin, 0.0);
    Chiave("DimOriginali")->click();
    premi("cmdZoomIn50");
    EXPECT_DOUBLE_EQ(premi("cmdSpostaDX1").XMin, 0.0195);
    EXPECT_NEAR(premi("cmdSpostaSX10").XMin, -0.1755, 1e-9);
    premi("cmdSpostaDX10");
    EXPECT_NEAR(premi("cmdSpostaDX10").XMin, 0.2145, 1e-9);
    EXPECT_EQ(DaQt(C<QLineEdit>("txtValore", 3)->text()), "2002");
    EXPECT_TRUE(C<QPushButton>("cmdSpostaSX1")->autoRepeat());
    EXPECT_NEAR(premi("cmdSpostaSX1").XMin, 0.195, 1e-9);
    C<QTabWidget>("SSTab1")->setCurrentIndex(1);
    EXPECT_NEAR(panoramica->LeggiIntervallo().XMin, 0.195, 1e-9);
    EXPECT_EQ(panoramica->ElementoCorrente(), 9) << "eight alarms";
    // Each alarm has its name at the left end of its band.
    const QImage nominata = panoramica->Fotografa(1.0);
    panoramica->Livelli({});
    const QImage muta = panoramica->Fotografa(1.0);
    const QRectF banda = panoramica->AreaDisegno();
    for (int k = 0; k < 8; ++k) {
        const auto y = static_cast<int>(banda.bottom() - (2 * k + 1.5) * banda.height() / 18.0);
        const QRect nome(static_cast<int>(banda.left()) + 4, y - 4, 80, 8);
        EXPECT_NE(nominata.copy(nome), muta.copy(nome)) << k;
    }
    // Alarm 2 is on from the third row of the lap on.
    auto* const lampada = C<LampadaAllarme>("shpAlarm", 1);
    for (const int indice : {0, 5}) {
        panoramica->EventoCursore(0.0, 0.0, indice);
        EXPECT_EQ(
            lampada->grab().toImage().pixelColor(lampada->rect().center()) == QColor(255, 0, 0),
            indice == 5);
    }
    EXPECT_FALSE(Ridipinto(*lampada, [&] { panoramica->EventoCursore(0.0, 0.0, 0); }).isEmpty());
    EXPECT_LT(lampada->y(), C<LampadaAllarme>("shpAlarm0")->y()) << "as its band";
    panoramica->EventoCursore(0.0, 0.0, 5);
    const QString altrove = C<QLineEdit>("txtValore", 3)->text();
    C<QTabWidget>("SSTab1")->setCurrentIndex(0);
    EXPECT_NE(C<QLineEdit>("txtValore", 3)->text(), altrove) << "under its own cursor";
    premi("cmdZoomIn50");
    premi("cmdZoomIn50");
    EXPECT_FALSE(C<QPushButton>("cmdZoomIn50")->isEnabled()) << "the right edge is below 1";
    Chiave("Separati")->click();
    EXPECT_FALSE(Chiave("SetZoom")->isEnabled());
    EXPECT_FALSE(Chiave("Sovrapposti")->isChecked());
    Chiave("DimOriginali")->click();
    EXPECT_DOUBLE_EQ(grafico->LeggiIntervallo().XMax, 3.9);
    Chiave("Sovrapposti")->click();
    // A zoom rectangle draws the finer points at once.
    Chiave("SetZoom")->click();
    const QRect area = grafico->AreaDisegno().toRect();
    QTest::mousePress(grafico, Qt::LeftButton, {}, area.topLeft() + QPoint(area.width() / 2, 5));
    QTest::mouseMove(grafico, area.bottomRight() - QPoint(2, 5));
    QTest::mouseRelease(grafico, Qt::LeftButton, {}, area.bottomRight() - QPoint(2, 5));
    EXPECT_NEAR(finestra.Analisi().Finestra().XMin(), 1.95, 0.1);
    Chiave("SetZoom")->click();
    Chiave("DimOriginali")->click();

    // The window closes in the middle of a scroll.
    premi("cmdZoomIn50");
    int giri = 0;
    macchina.DuranteEventi = [&] {
        const QColor verde(0, 255, 0);
        EXPECT_EQ(C<QPushButton>("cmdScorriDX")->palette().color(QPalette::Button), verde);
        EXPECT_NE(C<QPushButton>("cmdScorriSX")->palette().color(QPalette::Button), verde);
        EXPECT_FALSE(C<QPushButton>("cmdScorriSX")->isEnabled());
        if (++giri == 6) finestra.close();
        ASSERT_LT(giri, 10);
    };
    premi("cmdScorriDX");
    EXPECT_FALSE(finestra.isVisible());
    EXPECT_FALSE(AnalisiInCorso);
}

TEST_F(FinestraAnalisi, PrintedGraphSaysWhichLapAndNamesEachAlarmAtItsLine) {
    Mostra();
    Clicca(3, 1);
    C<QCheckBox>("chkGrafico", 3)->click();
    auto* const grafico = C<GraficoWidget>("NTGraph1");
    QTest::mouseClick(grafico, Qt::LeftButton, {}, grafico->AreaDisegno().center().toPoint());
    const auto stampa = [&](const char* nome) {
        macchina.FileScelti = {macchina.Cartella / nome};
        Chiave("Stampa")->click();
        EXPECT_EQ(macchina.RichiesteFile.back().Name, "run.pdf");
        return LeggiPdf(macchina.Cartella / nome).at(0);
    };
    const PaginaPdf canali = stampa("canali.pdf");
    EXPECT_GT(canali.Larghezza, canali.Altezza);
    EXPECT_NE(canali.Trova("run.csv"), nullptr);
    EXPECT_NE(canali.Trova("01:01.90"), nullptr);
    EXPECT_EQ(canali.Trova("Alternator"), nullptr);
    const auto accanto = [&](const char* prima, const char* dopo) {
        const Parola *a = canali.Trova(prima), *b = canali.Trova(dopo);
        return a != nullptr && b != nullptr && std::abs(a->Y - b->Y) < 0.05 && a->Destra < b->X;
    };
    EXPECT_TRUE(accanto("Session:", "Date:") && accanto("Circuit:", "Car:"));
    EXPECT_LT(canali.Trova("Session:")->Y, canali.Trova("Circuit:")->Y);
    const Parola* const valore = canali.Trova(DaQt(C<QLineEdit>("txtValore", 3)->text()));
    ASSERT_TRUE(valore != nullptr && canali.Trova("cursor") != nullptr);
    EXPECT_GT(valore->Y, canali.Trova("cursor")->Y);
    const Parola* const legenda = canali.Trova("Channels");
    ASSERT_NE(legenda, nullptr);
    for (const Parola& parola : canali.Parole) {
        EXPECT_TRUE(parola.Y == legenda->Y || parola.Y < legenda->Y - 0.5) << "covered";
    }
    C<QTabWidget>("SSTab1")->setCurrentIndex(1);
    const PaginaPdf allarmi = stampa("allarmi.pdf");
    // Each name once at its line, and once in the legend; the highest line is the last alarm's.
    const auto altezza = [&](const char* testo) {
        const auto& parole = allarmi.Parole;
        const auto trovata = std::find_if(parole.begin(), parole.end(), [&](const Parola& p) {
            return p.Testo == QLatin1String(testo) && p.X < 4.0 && p.Y < 18.5;
        });
        return trovata == parole.end() ? 0.0 : trovata->Y;
    };
    const double livello = altezza("level");
    const double alternatore = altezza("Alternator");
    const double pompa = altezza("pump");
    EXPECT_GT(livello, 5.0);
    EXPECT_NEAR(pompa - livello, 7.0 * (pompa - alternatore), 0.1) << "as far apart as the lines";
    EXPECT_GT(pompa, 14.5) << "the lowest line of 18";
}

TEST_F(FinestraAnalisi, ToolBarOpensItsDialogs) {
    Mostra();
    InDialogo(Chiave("Statistiche"), "dlgStatistiche", [](QDialog&) {});
    InDialogo(Chiave("StatisticheMisure"), "dlgStatisticheMisure", [](QDialog&) {});
    InDialogo(Chiave("ReportGiri"), "dlgReportGiri", [&](QDialog& dialogo) {
        macchina.FileScelti = {std::nullopt};
        Controllo<QPushButton>(dialogo, "cmdStampa")->click();
        EXPECT_EQ(macchina.RichiesteFile.back().Name, "run.pdf");
    });
    auto* const disegno = C<DisegnoTracciato>("Picture1");
    macchina.Risposte = {Answer::Ok};
    Chiave("Circuito")->click();
    EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::TracciatoNonTrovato));
    EXPECT_FALSE(Chiave("Circuito")->isChecked());
    DatiSessione.Circuito = "Corto";
    DatiSessione.Piloti = "Rossi";
    InDialogo(Chiave("DatiSessione"), "dlgDatiSessione",
              [](QDialog& dialogo) { Controllo<QPushButton>(dialogo, "OKButton")->click(); });
    EXPECT_NE(Leggi(macchina.Cartella / "run.ses").find("Circuito=Corto"), std::string::npos);
    EXPECT_FALSE(Griglia()->isColumnHidden(3));
    EXPECT_TRUE(Griglia()->isColumnHidden(4));
    EXPECT_EQ(TestoCella(2, 2), "00:01.00") << "100 m at 10 m a row";
    Chiave("Circuito")->click();
    EXPECT_TRUE(Chiave("Circuito")->isChecked());
    EXPECT_TRUE(C<QLabel>("txtCircuito")->isVisible());
    EXPECT_EQ(DaQt(C<QLabel>("txtPiloti")->text()), "Rossi");
    EXPECT_EQ(disegno->Punti().size(), 3u);
    Clicca(2, 1);
    C<QCheckBox>("chkGrafico", 3)->click();
    finestra.Analisi().EventoCursore(Grafico::Canali, 1000);
    EXPECT_EQ(disegno->PuntoMarcato(), 0) << "a point that the outline lacks";
    Chiave("Circuito")->click();
    EXPECT_FALSE(C<QLabel>("txtCircuito")->isVisible());
    EXPECT_FALSE(Griglia()->horizontalScrollBar()->isVisible()) << "as wide as it needs";
    // In a narrow window units go and sectors are scrolled to; laps and times stay over them.
    EXPECT_TRUE(C<QLabel>("lblUM", 4)->isVisible());
    finestra.resize(1, 1);
    Griglia()->setFixedWidth(Griglia()->LarghezzaPer(1));
    QCoreApplication::processEvents();
    EXPECT_LE(finestra.width(), 1010) << "fits a screen of 1024 in its frame";
    EXPECT_LE(finestra.height(), 560);
    EXPECT_FALSE(C<QLabel>("lblUM", 4)->isVisible());
    EXPECT_EQ(C<QLineEdit>("txtValore", 4)->toolTip(), C<QLabel>("lblUM", 4)->text());
    auto& barra = *Griglia()->horizontalScrollBar();
    barra.setValue(barra.maximum());
    ASSERT_GT(barra.value(), 0);
    EXPECT_EQ(Griglia()->visualRect(Cella(3, 1)).left(), Griglia()->columnWidth(0));
    Clicca(3, 1);
    EXPECT_EQ(Giro(), 3);
    EXPECT_EQ(barra.value(), barra.maximum()) << "the table stands still";
    const QPoint giro = Griglia()->visualRect(Cella(3, 0)).topLeft();
    EXPECT_EQ(Griglia()->viewport()->grab().toImage().pixelColor(giro + QPoint(5, 5)),
              QColor(0, 0, 255));
}

TEST_F(FinestraAnalisi, RightButtonTakesThingsOutAndTheWheelZooms) {
    Mostra();
    Clicca(3, 1);
    C<QCheckBox>("chkGrafico", 3)->click();
    auto* const grafico = C<GraficoWidget>("NTGraph1");
    const auto scegli = [&](QWidget* su, int voce, const char* file = "") {
        if (*file != 0) macchina.FileScelti = {macchina.Cartella / file};
        qsizetype voci = 0;
        QTimer::singleShot(0, su, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr) return;
            voci = menu->actions().size();
            menu->setActiveAction(menu->actions().at(voce));
            QTest::keyClick(menu, Qt::Key_Return);
        });
        QContextMenuEvent evento(QContextMenuEvent::Mouse, {20, 20},
                                 su->mapToGlobal(QPoint(20, 20)));
        QApplication::sendEvent(su, &evento);
        QCoreApplication::processEvents();
        return voci;
    };
    EXPECT_EQ(scegli(grafico, 0), 4);
    EXPECT_GT(QGuiApplication::clipboard()->image().width(), grafico->width());
    scegli(grafico, 1, "foto");
    EXPECT_EQ(Leggi(macchina.Cartella / "foto.png").substr(1, 3), "PNG");
    scegli(grafico, 1, "foto.PDF");
    EXPECT_NE(LeggiPdf(macchina.Cartella / "foto.PDF").at(0).Trova("01:01.90"), nullptr);
    macchina.Risposte = {Answer::Cancel};
    scegli(grafico, 1, "foto.png");
    EXPECT_EQ(macchina.Mostrati.back().Titolo, Testo(Voce::SostituzioneFile));
    for (const auto& [voce, detto] :
         {std::pair{1, Voce::UscitaNonSalvata}, {2, Voce::StampaGrafico}}) {
        macchina.Risposte = {Answer::Ok};
        scegli(grafico, voce, "manca/foto.pdf");
        EXPECT_NE(macchina.Mostrati.back().Testo.find(Testo(detto)), std::string::npos) << voce;
    }
    scegli(grafico, 3, "ritto.pdf");
    const PaginaPdf ritta = LeggiPdf(macchina.Cartella / "ritto.pdf").at(0);
    EXPECT_LT(ritta.Larghezza, ritta.Altezza);
    macchina.Separatore = ',';
    EXPECT_EQ(scegli(Griglia()->viewport(), 1), 3);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(QStringLiteral("\t01:01.90\n")));
    scegli(Griglia()->viewport(), 2, "t.csv");
    EXPECT_EQ(macchina.RichiesteFile.back().Name, "run-lap-table.csv");
    EXPECT_NE(Leggi(macchina.Cartella / "t.csv").find(";01:01,90\r\n"), std::string::npos);
    InDialogo(Chiave("Statistiche"), "dlgStatistiche", [&](QDialog& dialogo) {
        scegli(Controllo<QTableWidget>(dialogo, "MSFlexGrid1")->viewport(), 1, "s.csv");
        EXPECT_EQ(macchina.RichiesteFile.back().Name, "run-statistics.csv");
        EXPECT_NE(Leggi(macchina.Cartella / "s.csv").find(";01:01,90\r\n"), std::string::npos);
    });
    const auto gira = [&](int giro) {
        QWheelEvent evento({20, 20}, {20, 20}, {}, {0, giro}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(grafico, &evento);
        return grafico->LeggiIntervallo().XMax;
    };
    const double intero = grafico->LeggiIntervallo().XMax;
    EXPECT_EQ(gira(60), intero) << "half a notch";
    EXPECT_DOUBLE_EQ(gira(60), intero * 0.9);
    EXPECT_DOUBLE_EQ(gira(-120), intero);
    Chiave("SetZoom")->click();
    EXPECT_EQ(scegli(grafico, 0), 0) << "the right button drops the rectangle";
    EXPECT_DOUBLE_EQ(gira(120), intero) << "as the buttons";
}

TEST_F(FinestraAnalisi, LastViewTicksWhatWasTickedAndNothingComesBackByItself) {
    Mostra();
    for (const int c : {3, 5, 8}) C<QCheckBox>("chkGrafico", c)->click();
    C<QRadioButton>("optScala", 5)->click();
    Chiave("Separati")->click();
    finestra.reject();
    // Another log, of which somebody has ticked something else.
    frmAnalisiDatiSpeed altra;
    altra.NomeFileDati = macchina.Cartella / "run.csv";
    ASSERT_TRUE(altra.Carica());
    altra.show();
    QApplication::setActiveWindow(&altra);
    const auto spunta = [&altra](int c) {
        return Controllo<QCheckBox>(altra, ("chkGrafico" + std::to_string(c)).c_str());
    };
    EXPECT_FALSE(spunta(3)->isChecked() || spunta(5)->isChecked());
    spunta(4)->click();
    QTest::keyClick(&altra, Qt::Key_U, Qt::ControlModifier);
    std::string scelti;
    for (int c = kPrimoCanale; c <= altra.Analisi().Canali().Ultimo(); ++c) {
        if (altra.Analisi().Canali()[c].chkGrafico) scelti += std::to_string(c) + " ";
    }
    EXPECT_EQ(scelti, "3 5 8 ");
    EXPECT_EQ(altra.Analisi().Canali().CanaleScala(), 5);
    EXPECT_TRUE(Controllo<QToolButton>(altra, "Toolbar1_Separati")->isChecked());
    altra.reject();
}

TEST_F(FinestraAnalisi, WithoutLapsThereAreNoStatistics) {
    Scrivi(macchina.Cartella / "run.tim", "1.4\r\n\r\n");
    Mostra();
    for (const char* chiave : {"Statistiche", "StatisticheMisure", "ReportGiri"}) {
        macchina.Risposte = {Answer::Ok};
        Chiave(chiave)->click();
        EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::NessunGiroCompleto)) << chiave;
    }
}
