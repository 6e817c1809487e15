#include "platform/qt/QtPrinter.h"

#include <QFileInfo>

#include "platform/qt/ConversioniQt.h"
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
    EXPECT_NEAR(stampante.Rettangolo(2.54, 0, 5.08, 0).right(), 3 * 96, 1e-6);
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
    EXPECT_TRUE(pagine[0].Ha("Velocit\u00e0", 1.5, 2.0));
    EXPECT_TRUE(pagine[0].Ha("E\u20ac\u00b0", 9.0, 27.3));
    EXPECT_TRUE(pagine[1].Ha("123.456", 16.0, 26.5));
    // The same on Letter, which is lower: all of it, smaller and in the middle.
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QtPrinter americana(File());
    americana.Sheet(21.0, 29.7);
    americana.Text(9.0, 28.5, 19.0, "E\x80\xB0");
    americana.EndDoc();
    QLocale::setDefault(QLocale::c());
    const PaginaPdf lettera = LeggiPdf(File()).at(0);
    EXPECT_NEAR(lettera.Altezza, 27.94, 0.02);
    const double scala = 27.94 / 29.7;
    EXPECT_TRUE(lettera.Ha("E\u20ac\u00b0", 21.59 / 2 - 1.5 * scala, 28.5 * scala));
}

TEST_F(QtPrinterTest, ALongTextIsCondensedAndThenCutAtItsEdge) {
    QtPrinter stampante(File(), QPageLayout::Landscape);
    std::string note;
    for (int i = 0; i < 80; ++i) note += "parola ";
    stampante.Text(1.5, 3.5, 18.85, note);
    stampante.Text(1.5, 6.5, 18.85, "corta");
    stampante.Line(1.0, 8.0, 20.0, 8.0);
    stampante.EndDoc();
    const auto pagine = LeggiPdf(File());
    ASSERT_EQ(pagine.size(), 1u);
    EXPECT_NEAR(pagine[0].Larghezza, 29.7, 0.02);
    EXPECT_TRUE(Scuro(FotoPdf(File()), 15.0, 8.0)) << "the line";
    double destra = 0.0;
    for (const Parola& parola : pagine[0].Parole) {
        if (parola.Y < 4.0) destra = std::max(destra, parola.Destra);
    }
    EXPECT_LE(destra, 18.9);
    EXPECT_GT(destra, 17.0);
    const auto& parole = pagine[0].Parole;
    EXPECT_TRUE(parole[parole.size() - 2].Testo.endsWith(QChar(0x2026)));
    const auto larga = [&](double posto, double punti) {
        QtPrinter altra(File());
        altra.FontSize(punti);
        altra.Text(1.5, 4.5, 1.5 + posto, "Velocita");
        altra.EndDoc();
        const Parola parola = LeggiPdf(File())[0].Parole[0];
        EXPECT_EQ(parola.Testo, QStringLiteral("Velocita"));
        return parola.Destra - 1.5;
    };
    const double intera = larga(9.0, 20.0);
    EXPECT_NEAR(larga(0.9 * intera, 20.0), 0.9 * intera, 0.05);
    EXPECT_NEAR(larga(9.0, 10.0), 0.5 * intera, 0.1);
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

TEST_F(QtPrinterTest, WithoutAPrinterItAsksForAFile) {
    const QPrinterInfo nessuna;
    macchina.FileScelti = {std::nullopt};
    EXPECT_EQ(ScegliStampante("Report", "/dati/gara.pdf", QPageLayout::Portrait, nessuna), nullptr);
    EXPECT_EQ(macchina.RichiesteFile[0].RequiredExtension, ".pdf");
    EXPECT_EQ(macchina.RichiesteFile[0].Folder / macchina.RichiesteFile[0].Name, "/dati/gara.pdf");
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
    EXPECT_NE(Leggi(File()).find(std::string("\0R\0e\0p\0o", 8)), std::string::npos) << "title";
}

}  // namespace
}  // namespace lapvane::prova
