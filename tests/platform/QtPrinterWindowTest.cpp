#include "platform/qt/QtPrinter.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "platform/ErroreRuntime.h"
#include "platform/qt/ConversioniQt.h"
#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "reports/DisegnoGrafico.h"
#include "reports/StampaReport.h"
#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"
#include "widgets/Stampante.h"

namespace lapvane::prova {
namespace {

class QtPrinterTest : public ::testing::Test {
 protected:
    QtPrinterTest() { CaricaTestiVeri(0); }
    ~QtPrinterTest() override { AzzeraTutto(); }

    std::filesystem::path File() const { return macchina.Cartella / "prova.pdf"; }

    WindowPlatform macchina;
};

TEST_F(QtPrinterTest, TextsStandWhereTheyArePutAndKeepTheirLetters) {
    QtPrinter stampante(File());
    EXPECT_EQ(stampante.Pagina(), QSizeF(21.0, 29.7));
    stampante.FontSize(10.0);
    stampante.Text(1.5, 2.0, 19.0, "Velocit\xE0");
    stampante.Text(9.0, 27.3, 19.0, "E\x80\xB0");
    stampante.NewPage();
    stampante.FontSize(9.0);
    stampante.Text(16.0, 26.5, 18.85, "123.456");
    stampante.NewPage();
    EXPECT_FALSE(QFileInfo::exists(PercorsoInQt(File()))) << "nothing before the end";
    stampante.EndDoc();
    const auto pagine = LeggiPdf(File());
    ASSERT_EQ(pagine.size(), 2u) << "a page on which nothing is drawn is none";
    EXPECT_NEAR(pagine[0].Larghezza, 21.0, 0.02);
    EXPECT_NEAR(pagine[0].Altezza, 29.7, 0.02);
    ASSERT_EQ(pagine[0].Parole.size(), 2u);
    EXPECT_TRUE(pagine[0].Ha("Velocit\u00e0", 1.5, 2.0));
    EXPECT_TRUE(pagine[0].Ha("E\u20ac\u00b0", 9.0, 27.3));
    ASSERT_EQ(pagine[1].Parole.size(), 1u);
    EXPECT_TRUE(pagine[1].Ha("123.456", 16.0, 26.5));
    // Letters travel with the file.
    QProcess caratteri;
    caratteri.start(QStringLiteral("pdffonts"), {PercorsoInQt(File())});
    ASSERT_TRUE(caratteri.waitForFinished());
    const QStringList righe =
        QString::fromUtf8(caratteri.readAllStandardOutput()).trimmed().split(QLatin1Char('\n'));
    ASSERT_GE(righe.size(), 3);
    for (qsizetype i = 2; i < righe.size(); ++i) {
        EXPECT_TRUE(righe[i].contains(QLatin1String(" yes "))) << righe[i].toStdString();
    }
}

TEST_F(QtPrinterTest, ALongTextEndsInsideItsEdge) {
    QtPrinter stampante(File());
    std::string note;
    for (int i = 0; i < 80; ++i) note += "parola ";
    stampante.Text(1.5, 3.5, 18.85, note);
    stampante.Text(1.5, 4.5, 18.85, "corta");
    stampante.EndDoc();
    const auto pagine = LeggiPdf(File());
    ASSERT_EQ(pagine.size(), 1u);
    double destra = 0.0;
    for (const Parola& parola : pagine[0].Parole) {
        destra = std::max(destra, parola.Destra);
        EXPECT_LT(parola.Y, 4.6) << "one line";
    }
    EXPECT_LE(destra, 18.9);
    EXPECT_GT(destra, 17.0);
    EXPECT_TRUE(pagine[0].Parole[pagine[0].Parole.size() - 2].Testo.endsWith(QChar(0x2026)));
}

TEST_F(QtPrinterTest, NothingDrawnLeavesNoFileAndAFailureLeavesTheOldOne) {
    {
        QtPrinter stampante(File());
        stampante.NewPage();
        stampante.EndDoc();
    }
    EXPECT_FALSE(std::filesystem::exists(File()));
    Scrivi(File(), "vecchio");
    {
        QtPrinter stampante(File());
        stampante.Line(1, 1, 2, 2);
    }
    EXPECT_EQ(Leggi(File()), "vecchio") << "never ended";
    const auto inCartellaChiusa = macchina.Cartella / "manca" / "x.pdf";
    QtPrinter stampante(inCartellaChiusa);
    stampante.Line(1, 1, 2, 2);
    try {
        stampante.EndDoc();
        FAIL() << "no error";
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.Numero(), NumeroErrore::PrinterError);
        EXPECT_EQ(errore.File(), inCartellaChiusa);
    }
    EXPECT_THROW(QtPrinter{QPrinterInfo()}, ErroreRuntime);
}

TEST_F(QtPrinterTest, TheReportStandsOnPaperToHalfAMillimetre) {
    DatiSessione = {"Prove libere",     "24/11/2026", "10:20", "Imola", "4909", "",
                    "Rossi\r\nBianchi", "asciutto"};
    DatiProgetto.Veicolo = "Monoposto";
    std::vector<RigaReport> giri;
    struct Caso {
        int Giri;
        std::vector<int> RighePagina;
    };
    for (const Caso& caso : std::vector<Caso>{
             {0, {}}, {1, {0}}, {79, {78}}, {80, {79}}, {81, {79, 0}}, {161, {79, 79, 0}}}) {
        giri.clear();
        for (int i = 1; i <= caso.Giri; ++i) {
            const std::string n = std::to_string(i);
            giri.push_back({"1", "g" + n, "01:" + n, n + ".5"});
        }
        std::filesystem::remove(File());
        QtPrinter stampante(File());
        StampaReport(stampante, giri);
        if (caso.RighePagina.empty()) {
            EXPECT_FALSE(std::filesystem::exists(File()));
            continue;
        }
        const auto pagine = LeggiPdf(File());
        ASSERT_EQ(pagine.size(), caso.RighePagina.size()) << caso.Giri;
        for (std::size_t p = 0; p < pagine.size(); ++p) {
            const PaginaPdf& pagina = pagine[p];
            // "Velocità (Km/h)" is two words; session lines: 3+2+2+2+2+3+2.
            EXPECT_EQ(pagina.Parole.size(),
                      16u + 10u + 4u * static_cast<unsigned>(caso.RighePagina[p]))
                << caso.Giri << " laps, page " << p;
            EXPECT_TRUE(pagina.Ha("Sessione:", 1.5, 1.5));
            EXPECT_TRUE(pagina.Ha("Vettura:", 9.0, 2.5));
            EXPECT_TRUE(pagina.Ha("Note:", 1.5, 3.5));
            EXPECT_TRUE(pagina.Ha("Sessione", 1.5, 6.0));
            EXPECT_TRUE(pagina.Ha("Velocit\u00e0", 16.0, 6.0));
            for (int k = 1; k <= caso.RighePagina[p]; ++k) {
                const std::string n = std::to_string(80 * static_cast<int>(p) + k);
                const double y = 6.5 + 0.5 * (k <= 40 ? k : k - 40);
                EXPECT_TRUE(pagina.Ha("g" + n, k <= 40 ? 3.0 : 12.0, y)) << n;
                EXPECT_TRUE(pagina.Ha("01:" + n, k <= 40 ? 4.5 : 13.5, y)) << n;
                EXPECT_TRUE(pagina.Ha(n + ".5", k <= 40 ? 7.0 : 16.0, y)) << n;
            }
        }
    }
}

TEST_F(QtPrinterTest, TheGraphStandsBetweenItsLinesAndItsLegend) {
    DatiSessione = {"Prove",
                    "24/11/2026",
                    "10:20",
                    "Imola",
                    "4909",
                    "",
                    "Rossi\r\nBianchi",
                    std::string(400, 'n')};
    QtPrinter stampante(File(), QPageLayout::Landscape);
    QRectF area;
    StampaControllo(stampante, TestiGraficoAllarmi(), [&](QPainter& penna, const QRectF& dove) {
        area = dove;
        QFont carattere = penna.font();
        carattere.setPixelSize(12);
        penna.setFont(carattere);
        penna.setPen(QPen(Qt::red, 5));
        penna.drawText(dove.topLeft() + QPointF(0, 12), QStringLiteral("GRAFICO"));
        penna.translate(300, 300);
    });
    const auto pagine = LeggiPdf(File());
    ASSERT_EQ(pagine.size(), 1u);
    EXPECT_NEAR(pagine[0].Larghezza, 29.7, 0.02);
    EXPECT_TRUE(pagine[0].Ha("Sessione:", 1.5, 1.35));
    const Parola* grafico = pagine[0].Trova("GRAFICO");
    const Parola* legenda = pagine[0].Trova("Pompa");
    ASSERT_NE(grafico, nullptr);
    ASSERT_NE(legenda, nullptr) << "what the graph does to the painter does not last";
    EXPECT_NEAR(grafico->X, 1.0, 0.05);
    EXPECT_GT(grafico->Y, 4.2);
    EXPECT_GT(legenda->Y, area.bottom() * 2.54 / 96.0);
    for (const Parola& parola : pagine[0].Parole) {
        EXPECT_LE(parola.Destra, 28.75) << parola.Testo.toStdString();
        EXPECT_LT(parola.Y, 20.0);
    }
}

TEST_F(QtPrinterTest, WithoutAPrinterItAsksForAFile) {
    const QPrinterInfo nessuna;
    macchina.FileScelti = {std::nullopt};
    EXPECT_EQ(ScegliStampante("Report", "/dati/gara.pdf", QPageLayout::Portrait, nessuna), nullptr);
    ASSERT_EQ(macchina.RichiesteFile.size(), 1u);
    const FileRequest& chiesto = macchina.RichiesteFile[0];
    EXPECT_EQ(chiesto.Filter, "PDF (*.pdf)|*.pdf");
    EXPECT_EQ(chiesto.RequiredExtension, ".pdf");
    EXPECT_EQ(chiesto.Title, "Report");
    EXPECT_EQ(chiesto.Folder, "/dati");
    EXPECT_EQ(chiesto.Name, "gara.pdf");
    EXPECT_TRUE(macchina.Mostrati.empty()) << "a cancel is silent";

    Scrivi(File(), "vecchio");
    macchina.FileScelti = {File(), File()};
    macchina.Risposte = {Answer::Cancel, Answer::Ok};
    EXPECT_EQ(ScegliStampante("Report", "x.pdf", QPageLayout::Portrait, nessuna), nullptr);
    EXPECT_EQ(Leggi(File()), "vecchio");
    auto stampante = ScegliStampante("Report", "x.pdf", QPageLayout::Portrait, nessuna);
    ASSERT_NE(stampante, nullptr);
    stampante->Line(1, 1, 2, 2);
    stampante->EndDoc();
    EXPECT_EQ(Leggi(File()).substr(0, 4), "%PDF");
}

}  // namespace
}  // namespace lapvane::prova
