#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "platform/qt/TestoQt.h"
#include "reports/ReportProva.h"
#include "reports/dlgReportGiri.h"
#include "reports/dlgStatistiche.h"
#include "reports/dlgStatisticheMisure.h"
#include "shell/LoadStrings.h"
#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"
#include "widgets/Stampante.h"
#include "widgets/Tabella.h"

namespace lapvane::prova {
namespace {

class ReportWindow : public DialogoDiReport {
 protected:
    static Tabella* Griglia(const QDialog& dialogo) {
        return Controllo<Tabella>(dialogo, "MSFlexGrid1");
    }
    static std::string Cella(const Tabella& griglia, int riga, int colonna) {
        return DaQt(griglia.item(riga, colonna)->text());
    }
    static std::vector<std::string> Colonna(const Tabella& griglia, int colonna) {
        std::vector<std::string> testi;
        for (int r = 0; r < griglia.rowCount(); ++r) testi.push_back(Cella(griglia, r, colonna));
        return testi;
    }
    static std::string Copiato(Tabella* griglia) {
        QTest::keyClick(griglia, Qt::Key_C, Qt::ControlModifier);
        return DaQt(QGuiApplication::clipboard()->text());
    }
};

using Testi = std::vector<std::string>;

TEST_F(ReportWindow, SessionStatisticsShowTheFiguresAndEscCloses) {
    FigureSessione figure;
    figure.NumGiri = 12;
    figure.TempoTotale = "00:15:00.00";
    figure.TempoMedio = "01:15.00";
    figure.VelocitaMedia = "150.5";
    figure.GiroMigliore = 7;
    figure.TempoMigliore = "01:10.00";
    figure.VelocitaMigliore = "160.25";
    figure.GiroPeggiore = 1;
    figure.TempoPeggiore = "01:30.00";
    figure.VelocitaPeggiore = "120.0";
    dlgStatistiche dialogo(figure);
    dialogo.show();
    Tabella* const griglia = Griglia(dialogo);
    EXPECT_EQ(DaQt(dialogo.windowTitle()), "Session statistics");
    EXPECT_EQ(Colonna(*griglia, 0),
              (Testi{"Completed laps", "Total time", "Average lap time", "Average speed [Km/h]",
                     "Best lap", "Lap time", "Lap speed [Km/h]", "Worst lap", "Lap time",
                     "Lap speed [Km/h]"}));
    EXPECT_EQ(Colonna(*griglia, 1), (Testi{"12", "00:15:00.00", "01:15.00", "150.5", "7",
                                           "01:10.00", "160.25", "1", "01:30.00", "120.0"}));
    EXPECT_EQ(griglia->columnCount(), 2);
    EXPECT_NEAR(griglia->columnWidth(0), griglia->width() * 3.0 / 5.0, 1.0);
    EXPECT_GE(griglia->columnWidth(1), griglia->width() * 1.88 / 5.0 - 3.0);
    // All ten rows show, and nothing of a text is cut off.
    EXPECT_GE(griglia->viewport()->height(), griglia->rowHeight(0) * 10);
    for (int r = 0; r < 10; ++r) {
        EXPECT_GE(griglia->columnWidth(0),
                  griglia->fontMetrics().horizontalAdvance(griglia->item(r, 0)->text()) + 8);
    }
    griglia->item(1, 0)->setSelected(true);
    griglia->item(2, 1)->setSelected(true);
    EXPECT_EQ(Copiato(griglia), "Total time\t\n\t01:15.00");
    QTest::keyClick(griglia, Qt::Key_Escape);
    EXPECT_FALSE(dialogo.isVisible());
}

TEST_F(ReportWindow, SessionStatisticsOfNoLapsAreEmpty) {
    FigureSessione figure;
    figure.GiriEsclusi = 3;
    dlgStatistiche esclusi(figure);
    esclusi.show();
    auto* const riga = Controllo<QLabel>(esclusi, "lblGiriEsclusi");
    EXPECT_EQ(DaQt(riga->text()), Testo(Voce::GiriSenzaTempo) + " 3");
    EXPECT_GT(riga->y(), Griglia(esclusi)->geometry().bottom());
    EXPECT_GE(riga->height(), riga->heightForWidth(riga->width()));
    EXPECT_GE(Griglia(esclusi)->viewport()->height(), Griglia(esclusi)->rowHeight(0) * 10);
    const dlgStatistiche dialogo(FigureSessione{});
    EXPECT_EQ(dialogo.findChild<QLabel*>(QStringLiteral("lblGiriEsclusi")), nullptr);
    EXPECT_EQ(Colonna(*Griglia(dialogo), 1), (Testi{"0", "", "", "", "0", "", "", "0", "", ""}));
}

TEST_F(ReportWindow, ChannelStatisticsTakeTwoDecimalsAtMost) {
    macchina.Separatore = ',';
    analisi.Campi = 6;
    analisi.Misure = {{"Motore [RPM]", "1,5", "12345,678", "100"},
                      {"", "-0,005", "0,01", "-3,25"},
                      {"", "0", "99,995", "0,004"},
                      {"", "1E+16", "0", "0"}};
    dlgStatisticheMisure dialogo(analisi);
    dialogo.show();
    Tabella* const griglia = Griglia(dialogo);
    EXPECT_EQ(griglia->rowCount(), 4) << "channels 3 to 6, the heading apart";
    EXPECT_EQ(dialogo.height(), 448);
    EXPECT_EQ(Cella(*griglia, 0, 0), "Motore [RPM]");
    EXPECT_EQ(Colonna(*griglia, 1), (Testi{"1,5", "-0,01", "0", "10000000000000000"}));
    EXPECT_EQ(Colonna(*griglia, 2), (Testi{"12345,68", "0,01", "100", "0"}));
    EXPECT_EQ(Colonna(*griglia, 3), (Testi{"100", "-3,25", "0", "0"}));
    for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(griglia->columnWidth(c), griglia->width() * (c == 0 ? 8.0 : 3.0) / 19.0, 1.0);
    }
    EXPECT_EQ(Copiato(griglia).substr(0, 53),
              "Channel\tMinimum\tMaximum\tAverage\nMotore [RPM]\t1,5\t1234");
    // A log with more columns than an analysis holds.
    analisi.Campi = 40;
    EXPECT_EQ(Griglia(dlgStatisticheMisure(analisi))->rowCount(), 18);
    analisi.Campi = 0;
    EXPECT_EQ(Griglia(dlgStatisticheMisure(analisi))->rowCount(), 0);
}

TEST_F(ReportWindow, LapsSortByNumberAndByTheTextOfTheirTime) {
    for (int i = 1; i <= 11; ++i) {
        analisi.Giri.push_back({"2", "01:00." + std::to_string(60 - i), std::to_string(100 - i)});
    }
    analisi.Giri[1] = {"2", "", ""};  // unfinished
    analisi.Giri[4][1] = "00:59.99";  // the fastest
    analisi.Giri[7][1] = "01:00.59";  // as slow as the first
    dlgReportGiri dialogo(analisi);
    dialogo.show();
    Tabella* const griglia = Griglia(dialogo);
    EXPECT_EQ(DaQt(dialogo.windowTitle()), "Lap report");
    QStringList titoli;
    for (int c = 0; c < 4; ++c) titoli << griglia->horizontalHeaderItem(c)->text();
    EXPECT_EQ(DaQt(titoli.join(QLatin1Char('|'))), "Session|Lap|Time|Speed (Km/h)");
    const Testi inOrdine = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"};
    EXPECT_EQ(Colonna(*griglia, 1), inOrdine);
    EXPECT_EQ(Cella(*griglia, 0, 0), "2");
    EXPECT_EQ(Cella(*griglia, 0, 2), "01:00.59");
    EXPECT_EQ(Cella(*griglia, 0, 3), "99");
    EXPECT_EQ(Cella(*griglia, 1, 3), "");
    Controllo<QPushButton>(dialogo, "cmdTempi")->click();
    EXPECT_EQ(Colonna(*griglia, 1),
              (Testi{"2", "5", "11", "10", "9", "7", "6", "4", "3", "1", "8"}));
    Controllo<QPushButton>(dialogo, "cmdGiri")->click();
    EXPECT_EQ(Colonna(*griglia, 1), inOrdine) << "10 behind 9";
    QTest::keyClick(&dialogo, Qt::Key_Escape);
    EXPECT_FALSE(dialogo.isVisible());
}

TEST_F(ReportWindow, PrintsInTheOrderOfTheLogWhateverTheSort) {
    for (const char* tempo : {"01:03.00", "01:02.00", "01:01.00", "01:00.00"}) {
        analisi.Giri.push_back({"1", tempo, ""});
    }
    dlgReportGiri dialogo(analisi);
    auto* const cmdStampa = Controllo<QPushButton>(dialogo, "cmdStampa");
    const auto file = macchina.Cartella / "gara.pdf";
    dialogo.ApriStampante = [&] { return std::unique_ptr<QtPrinter>(); };
    cmdStampa->click();
    EXPECT_FALSE(std::filesystem::exists(file)) << "cancelled";
    dialogo.ApriStampante = [&] { return std::make_unique<QtPrinter>(file); };
    Controllo<QPushButton>(dialogo, "cmdTempi")->click();
    cmdStampa->click();
    const auto pagine = LeggiPdf(file);
    ASSERT_EQ(pagine.size(), 1u);
    EXPECT_TRUE(pagine[0].Ha("01:03.00", 4.5, 7.0));
    EXPECT_TRUE(pagine[0].Ha("01:01.00", 4.5, 8.0));
    EXPECT_EQ(pagine[0].Trova("01:00.00"), nullptr) << "the last lap of a page";
    EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    // A file that cannot be written goes through the one door, named.
    dialogo.ApriStampante = [&] {
        return std::make_unique<QtPrinter>(macchina.Cartella / "manca" / "x.pdf");
    };
    macchina.Risposte = {Answer::Ok};
    cmdStampa->click();
    ASSERT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_NE(macchina.Mostrati[0].Testo.find("482: Printer error (printing a document)"),
              std::string::npos);
    EXPECT_NE(macchina.Mostrati[0].Testo.find("x.pdf"), std::string::npos);
}

}  // namespace
}  // namespace lapvane::prova
