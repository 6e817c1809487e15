#include "platform/qt/ConversioniQt.h"
#include "reports/ReportProva.h"
#include "reports/dlgSetGraph.h"
#include "support/WindowPlatform.h"

namespace lapvane::prova {
namespace {

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
