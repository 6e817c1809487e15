#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

#include "platform/qt/ConversioniQt.h"
#include "reports/ReportProva.h"
#include "reports/dlgReportGiri.h"
#include "reports/dlgSetGraph.h"
#include "reports/dlgStatistiche.h"
#include "reports/dlgStatisticheMisure.h"
#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"
#include "widgets/Tabella.h"

namespace lapvane::prova {
namespace {

class ReportWindow : public DialogoDiReport {
 protected:
    static Tabella* Griglia(const QDialog& dialogo) {
        return Controllo<Tabella>(dialogo, "MSFlexGrid1");
    }
    static std::vector<std::string> Colonna(const Tabella& griglia, int colonna) {
        std::vector<std::string> testi;
        for (int r = 0; r < griglia.rowCount(); ++r) {
            testi.push_back(DaQt(griglia.item(r, colonna)->text()));
        }
        return testi;
    }
    static std::string Copiato(Tabella* griglia) {
        QTest::keyClick(griglia, Qt::Key_C, Qt::ControlModifier);
        return DaQt(QGuiApplication::clipboard()->text());
    }
};

using Testi = std::vector<std::string>;

TEST_F(ReportWindow, SessionStatisticsShowTheFiguresAndEscCloses) {
    dlgStatistiche dialogo({12, "00:15:00.00", "01:15.00", "150.5", 7, "01:10.00", "160.25", 1,
                            "01:30.00", "120.0", 1});
    dialogo.show();
    Tabella* const griglia = Griglia(dialogo);
    EXPECT_EQ(Colonna(*griglia, 0)[7], "Worst lap");
    EXPECT_EQ(Colonna(*griglia, 1), (Testi{"12", "00:15:00.00", "01:15.00", "150.5", "7",
                                           "01:10.00", "160.25", "1", "01:30.00", "120.0"}));
    for (const int largo : {dialogo.width(), 700}) {
        dialogo.resize(largo, dialogo.height());
        EXPECT_NEAR(griglia->columnWidth(0), griglia->width() * 3.0 / 5.0, 1.0);
    }
    // All ten rows show, and nothing of a text is cut off.
    EXPECT_GE(griglia->viewport()->height(), griglia->rowHeight(0) * 10);
    EXPECT_GE(griglia->minimumWidth() * 3 / 5,
              griglia->fontMetrics().horizontalAdvance(griglia->item(3, 0)->text()) + 8);
    auto* const esclusi = Controllo<QLabel>(dialogo, "lblGiriEsclusi");
    EXPECT_EQ(DaQt(esclusi->text()), Testo(Voce::GiriSenzaTempo) + " 1");
    EXPECT_GE(esclusi->height(), esclusi->heightForWidth(esclusi->width()));
    griglia->item(1, 0)->setSelected(true);
    griglia->item(2, 1)->setSelected(true);
    EXPECT_EQ(Copiato(griglia), "Total time\t\n\t01:15.00");
    QTest::keyClick(griglia, Qt::Key_Escape);
    EXPECT_FALSE(dialogo.isVisible());
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
    EXPECT_EQ(Colonna(*griglia, 0), (Testi{"Motore [RPM]", "", "", ""})) << "channels 3 to 6";
    EXPECT_EQ(Colonna(*griglia, 1), (Testi{"1,5", "-0,01", "0", "10000000000000000"}));
    EXPECT_EQ(Colonna(*griglia, 2), (Testi{"12345,68", "0,01", "100", "0"}));
    EXPECT_EQ(Colonna(*griglia, 3), (Testi{"100", "-3,25", "0", "0"}));
    EXPECT_TRUE(griglia->horizontalHeader()->isVisible());
    EXPECT_EQ(Copiato(griglia).substr(0, 53),
              "Channel\tMinimum\tMaximum\tAverage\nMotore [RPM]\t1,5\t1234");
    analisi.Campi = 40;  // more columns than an analysis holds
    EXPECT_EQ(Griglia(dlgStatisticheMisure(analisi))->rowCount(), 18);
    const auto larga = Griglia(dlgStatisticheMisure(analisi))->LarghezzaPerTesti();
    analisi.Misure[3][1] = "0";
    EXPECT_LT(Griglia(dlgStatisticheMisure(analisi))->LarghezzaPerTesti(), larga);
}

TEST_F(ReportWindow, LapsSortByNumberAndByTheTextOfTheirTimeAndPrintInTheOrderOfTheLog) {
    for (int i = 1; i <= 11; ++i) {
        analisi.Giri.push_back({"2", "01:00." + std::to_string(60 - i), std::to_string(100 - i)});
    }
    analisi.Giri[1] = {"2", "", ""};  // unfinished
    analisi.Giri[4][1] = "00:59.99";  // the fastest
    analisi.Giri[7][1] = "01:00.59";  // as slow as the first
    dlgReportGiri dialogo(analisi);
    dialogo.show();
    Tabella* const griglia = Griglia(dialogo);
    EXPECT_EQ(Copiato(griglia).substr(0, 46),
              "Session\tLap\tTime\tSpeed (Km/h)\n2\t1\t01:00.59\t99\n");
    const Testi inOrdine = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"};
    Controllo<QPushButton>(dialogo, "cmdTempi")->click();
    EXPECT_EQ(Colonna(*griglia, 1),
              (Testi{"2", "5", "11", "10", "9", "7", "6", "4", "3", "1", "8"}));
    auto* const cmdStampa = Controllo<QPushButton>(dialogo, "cmdStampa");
    const auto file = macchina.Cartella / "gara.pdf";
    dialogo.ApriStampante = [&] { return std::unique_ptr<QtPrinter>(); };
    cmdStampa->click();
    EXPECT_FALSE(std::filesystem::exists(file)) << "cancelled";
    dialogo.ApriStampante = [&] { return std::make_unique<QtPrinter>(file); };
    cmdStampa->click();
    const auto pagine = LeggiPdf(file);
    ASSERT_EQ(pagine.size(), 1u);
    EXPECT_TRUE(pagine[0].Ha("01:00.59", 4.5, 7.0));
    EXPECT_TRUE(pagine[0].Ha("01:00.57", 4.5, 8.0));
    EXPECT_EQ(pagine[0].Trova("01:00.49"), nullptr) << "the last lap of a page";
    Controllo<QPushButton>(dialogo, "cmdGiri")->click();
    EXPECT_EQ(Colonna(*griglia, 1), inOrdine) << "10 behind 9";
    // A file that cannot be written goes through the one door, named.
    dialogo.ApriStampante = [&] {
        return std::make_unique<QtPrinter>(macchina.Cartella / "manca" / "x.pdf");
    };
    macchina.Risposte = {Answer::Ok};
    cmdStampa->click();
    EXPECT_NE(macchina.Mostrati.at(0).Testo.find("x.pdf"), std::string::npos);
}

constexpr double kTerzo = 1.0 / 3.0;

class SetGraph : public DialogoDiReport {
 protected:
    SetGraph() { valori = {5, "Benzina", "[bar]", Rgb(192, 64, 0), 3, 2, kTerzo, 12.5, true}; }

    void Mostra() {
        dialogo_ = std::make_unique<dlgSetGraph>(valori);
        dialogo_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialogo_.get()));
    }
    QLineEdit* Casella(const char* nome) { return Controllo<QLineEdit>(*dialogo_, nome); }
    QComboBox* Spessori() { return Controllo<QComboBox>(*dialogo_, "cboWidth"); }
    void Scrivi(const char* nome, const char* testo) {
        Casella(nome)->setText(QString::fromUtf8(testo));
    }
    std::string Mostrato(const char* nome) { return DaQt(Casella(nome)->text()); }
    void OK() { Controllo<QPushButton>(*dialogo_, "OKButton")->click(); }
    Colore ColoreMostrato() {
        auto* const pulsante = Controllo<QPushButton>(*dialogo_, "cmdColor");
        const QImage foto = pulsante->grab().toImage();
        return DaQColor(foto.pixelColor(foto.width() / 2, foto.height() / 2));
    }

    ImpostazioniCanale valori;
    std::unique_ptr<dlgSetGraph> dialogo_;
};

TEST_F(SetGraph, ShowsTheChannelAndAnUntouchedOkChangesNothing) {
    macchina.Separatore = ',';
    Mostra();
    EXPECT_EQ(DaQt(dialogo_->windowTitle()), "Benzina [bar]");
    EXPECT_EQ(Mostrato("txtNomeCampo"), "Benzina");
    EXPECT_EQ(Mostrato("txtFiltro"), "3");
    EXPECT_EQ(Mostrato("txtMinVal"), "0,333333333333333");
    EXPECT_EQ(Mostrato("txtMaxVal"), "12,5");
    EXPECT_EQ(Spessori()->count(), 6);
    EXPECT_EQ(Spessori()->currentIndex(), 1);
    QTest::keyClick(Casella("txtUM"), Qt::Key_Return);
    EXPECT_EQ(dialogo_->result(), QDialog::Accepted);
    EXPECT_EQ(valori.MinDialogo, kTerzo) << "to the last bit";
}

TEST_F(SetGraph, OkHandsEveryValueOver) {
    Mostra();
    Scrivi("txtNomeCampo", "Pressione à");
    Scrivi("txtUM", "[psi]");
    Scrivi("txtFiltro", " 2,5 ");  // half to even
    Scrivi("txtMinVal", "-1,25 bar");
    Scrivi("txtMaxVal", "abc");
    Spessori()->setCurrentIndex(5);
    macchina.ColoriScelti = {std::nullopt, Rgb(1, 2, 3)};
    auto* const colore = Controllo<QPushButton>(*dialogo_, "cmdColor");
    colore->click();
    EXPECT_EQ(ColoreMostrato(), Rgb(192, 64, 0)) << "cancelled";
    colore->click();
    EXPECT_EQ(ColoreMostrato(), Rgb(1, 2, 3));
    EXPECT_EQ(valori.ColoreCanale, Rgb(192, 64, 0)) << "only OK takes it over";
    OK();
    EXPECT_FALSE(dialogo_->isVisible());
    EXPECT_EQ(valori.NomeCampo, "Pressione \xE0");
    EXPECT_EQ(valori.UnitaCampo, "[psi]");
    EXPECT_EQ(valori.ColoreCanale, Rgb(1, 2, 3));
    EXPECT_EQ(valori.FiltroDialogo, 2);
    EXPECT_EQ(valori.SpessoreDialogo, 6);
    EXPECT_EQ(valori.MinDialogo, -1.25);
    EXPECT_EQ(valori.MaxDialogo, 0.0) << "letters give 0";
}

TEST_F(SetGraph, AWrongFilterKeepsTheDialogOpenAndWritesNothing) {
    valori.Separati = false;
    valori.SpessoreDialogo = 9;  // from a file
    Mostra();
    EXPECT_FALSE(Controllo<QGroupBox>(*dialogo_, "fraScalaDisegno")->isVisible());
    EXPECT_EQ(DaQt(Spessori()->currentText()), "9");
    Scrivi("txtNomeCampo", "Altro");
    for (const char* errato : {"", "abc", "0.5", "-1", "32768", "5x"}) {
        Scrivi("txtFiltro", errato);
        macchina.Risposte = {Answer::Ok};
        OK();
        EXPECT_TRUE(dialogo_->isVisible()) << errato;
        ASSERT_TRUE(macchina.Risposte.empty()) << errato;
        EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::NumeroNonValido) + "\r\n" +
                                                      Testo(Voce::FiltroUnPuntoOgni) +
                                                      " (1 ... 32767)");
        EXPECT_EQ(dialogo_->focusWidget(), Casella("txtFiltro"));
    }
    IndiceLingua = 0;
    QEvent attiva(QEvent::WindowActivate);
    QCoreApplication::sendEvent(dialogo_.get(), &attiva);
    EXPECT_EQ(DaQt(Controllo<QLabel>(*dialogo_, "lblFiltro")->text().remove(QLatin1Char('&'))),
              "Filtro: un punto ogni");
    EXPECT_EQ(Mostrato("txtFiltro"), "5x") << "what was typed stays";
    QTest::keyClick(Casella("txtFiltro"), Qt::Key_Escape);
    EXPECT_FALSE(dialogo_->isVisible());
    EXPECT_EQ(valori.NomeCampo, "Benzina");
    EXPECT_EQ(valori.SpessoreDialogo, 9);
}

}  // namespace
}  // namespace lapvane::prova
