#include <QLabel>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QTest>

#include "platform/qt/TestoQt.h"
#include "project/dlgNoteProgetto.h"
#include "project/frmStampaDatiProgetto.h"
#include "shell/TabelleNomi.h"
#include "support/PlatformProva.h"
#include "support/WindowPdf.h"

using namespace lapvane;
using namespace lapvane::prova;

TEST(NoteProgetto, CancelChangesNothingAndOkCopiesWhatIsWritten) {
    PlatformProva macchina;
    CaricaTestiVeri(0);
    DatiProgetto.NomeProgetto = " ";  // an empty field after its file was read
    DatiProgetto.Veicolo = "Monza 3";
    {
        dlgNoteProgetto dialogo;
        dialogo.show();
        auto* const nome = dialogo.findChild<QLineEdit*>(QStringLiteral("txtNomeProgetto"));
        EXPECT_TRUE(nome->text().isEmpty());
        QTest::keyClicks(nome, QStringLiteral("scartato"));
        QTest::keyClick(&dialogo, Qt::Key_Escape);
    }
    EXPECT_EQ(DatiProgetto.NomeProgetto, " ");
    EXPECT_FALSE(ProgettoModificato);
    dlgNoteProgetto dialogo;
    dialogo.show();
    QTest::keyClicks(dialogo.findChild<QLineEdit*>(QStringLiteral("txtNomeProgetto")),
                     QStringLiteral(" Montecorvo "));
    auto* const note = dialogo.findChild<QPlainTextEdit*>(QStringLiteral("txtNoteProgetto"));
    note->setPlainText(QStringLiteral("prima\nseconda"));
    QTest::mouseClick(dialogo.findChild<QPushButton*>(QStringLiteral("OKButton")), Qt::LeftButton);
    EXPECT_EQ(DatiProgetto.NomeProgetto, " Montecorvo ") << "untrimmed";
    EXPECT_EQ(DatiProgetto.Veicolo, "Monza 3");
    EXPECT_EQ(DatiProgetto.NoteProgetto, "prima seconda") << "the file has a line a field";
    EXPECT_TRUE(ProgettoModificato);
}

TEST(StampaProgetto, PaperShowsTheFormAsItIsLaidOut) {
    PlatformProva macchina;
    CaricaTestiVeri(0);
    CaricaTabelleNomi();
    DatiProgetto.NomeProgetto = "Montecorvo";
    DatiProgetto.PaginaAbilitata2 = true;
    DatiProgetto.PaginaAbilitata10 = true;
    DatiProgetto.DiametroRuota = 1840;
    DatiProgetto.UMVel = 32767;  // no list has it
    DatiProgetto.UMTemp = 1;
    frmStampaDatiProgetto finestra;
    finestra.show();
    const auto testo = [&](const char* nome) {
        return DaQt(finestra.findChild<QLabel*>(QString::fromLatin1(nome))->text());
    };
    EXPECT_EQ(testo("lblValPagineAbilitate"), "2  10");
    EXPECT_EQ(testo("lblValUMVel"), "");
    EXPECT_EQ(testo("lblValUMTemp"), ListaUMTemperatura[1]);
    EXPECT_EQ(testo("lblValLinguaDisplay"), ListaLingue[0]);
    const auto file = macchina.Cartella / "foglio.pdf";
    finestra.ApriStampante = [&] { return std::make_unique<QtPrinter>(file); };
    finestra.findChild<QPushButton*>(QStringLiteral("cmdPrint"))->click();
    EXPECT_EQ(macchina.Puntatori, (std::vector<Pointer>{Pointer::Busy, Pointer::Normal}));
    const auto pagine = LeggiPdf(file);
    ASSERT_EQ(pagine.size(), 1u);
    const Parola* const diametro = pagine[0].Trova("1840");
    EXPECT_NE(pagine[0].Trova("Montecorvo"), nullptr);
    ASSERT_NE(diametro, nullptr);
    // A pixel of the form is 1/96 inch of paper, 2 cm from the corner.
    const QLabel* const etichetta =
        finestra.findChild<QLabel*>(QStringLiteral("lblValDiametroRuota"));
    EXPECT_NEAR(diametro->X, 2.0 + etichetta->x() * 2.54 / 96.0, 0.1);
}
