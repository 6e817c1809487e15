#include "logs/frmDownload.h"

#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/Impostazioni.h"
#include "support/StrumentoProva.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

using prova::Controllo;

class DownloadFinestra : public prova::ConStrumento<prova::WindowPlatform> {
 protected:
    DownloadFinestra() {
        for (int b = 0; b < 8; ++b) apparecchio.Dati.AggiungiBlocco(std::string(128, '\1'));
        EXPECT_TRUE(LinkPronto());
    }
    /// Shows the window until the download is over; `durante` runs in its waits.
    void Scarica(const std::function<void()>& durante) {
        const int prima = macchina.ChiamateEventi;
        macchina.DuranteEventi = [&] {
            EXPECT_EQ(FaseComunicazione, 38) << "the poll runs into it";
            durante();
        };
        dialogo.show();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return macchina.ChiamateEventi > prima && FaseComunicazione == 0; }, 60000));
        macchina.DuranteEventi = nullptr;
        EXPECT_FALSE(collegamento().Abbandonato) << "every wait would give up from now on";
        EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    }

    frmDownload dialogo;
    QPushButton* ok = Controllo<QPushButton>(dialogo, "OKButton");
    QProgressBar* barra = Controllo<QProgressBar>(dialogo, "ProgressBar1");
    QLabel* percento = Controllo<QLabel>(dialogo, "lblPerc");
    QLabel* stato = Controllo<QLabel>(dialogo, "lblStatoDownload");
};

TEST_F(DownloadFinestra, ShowsHowFarItIsAndWaitsForOK) {
    EXPECT_EQ(dialogo.windowTitle(), InQt(Testo(Voce::ScaricaDati)));
    EXPECT_EQ(percento->text(), QStringLiteral("0 %"));
    std::vector<int> visti;
    Scarica([&] {
        EXPECT_FALSE(ok->isEnabled());
        EXPECT_NE(dialogo.focusWidget(), Controllo<QCheckBox>(dialogo, "chkImpostazioni"))
            << "a Space too many switches the copy off";
        EXPECT_EQ(stato->text(), InQt(Testo(Voce::ScaricamentoInCorso)));
        EXPECT_EQ(percento->text(), QStringLiteral("%1 %").arg(std::max(barra->value(), 0)));
        if (visti.empty() || visti.back() != barra->value()) visti.push_back(barra->value());
    });
    EXPECT_GE(visti.size(), 4u);
    EXPECT_EQ(barra->value(), 100);
    EXPECT_EQ(percento->text(), QStringLiteral("100 %"));
    EXPECT_EQ(stato->text(), InQt(Testo(Voce::ScaricamentoCompletato)));
    EXPECT_EQ(NumBlocchi, 8);
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(dialogo.focusWidget(), ok);
    const std::size_t frame = porta.Richieste().size();
    dialogo.hide();
    dialogo.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(porta.Richieste().size(), frame) << "it downloads once";
    FaseComunicazione = 38;
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_FALSE(dialogo.isVisible());
    EXPECT_EQ(FaseComunicazione, 0);
}

TEST_F(DownloadFinestra, TheCopyOfTheSettingsIsChosenHere) {
    auto* copia = Controllo<QCheckBox>(dialogo, "chkImpostazioni");
    EXPECT_TRUE(copia->isChecked());
    QTest::keyClick(copia, Qt::Key_Space);
    EXPECT_FALSE(CopiaScelta());
    EXPECT_FALSE(Controllo<QCheckBox>(frmDownload(), "chkImpostazioni")->isChecked());
    // What can't be kept is not shown as if it were.
    std::filesystem::remove(macchina.Cartella / "Download.lapvane");
    std::filesystem::create_directory(macchina.Cartella / "Download.lapvane");
    macchina.Risposte = {Answer::Ok};
    macchina.AlBox = [&] { macchina.Orologio += 700; };
    QTest::keyClick(copia, Qt::Key_Space);
    EXPECT_FALSE(copia->isChecked());
    EXPECT_TRUE(macchina.Mostrati.back().Testo.ends_with(Testo(Voce::SceltaNonSalvata)));
    EXPECT_EQ(collegamento().Sospeso, 700) << "the download underneath runs out of its time";
}

TEST_F(DownloadFinestra, ClosingItGivesUpTheWaitAndThePortOnlyBehindIt) {
    Guasta("silent:14:5");
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    std::int64_t chiusa = 0;
    Scarica([&] {
        if (porta.RichiesteDi(14) < 5 || chiusa != 0) return;
        chiusa = macchina.Orologio;
        QTest::keyClick(&dialogo, Qt::Key_Escape);
        EXPECT_TRUE(collegamento().Abbandonato);
    });
    EXPECT_LT(macchina.Orologio - chiusa, 100);
    EXPECT_EQ(NumBlocchi, 4);
    EXPECT_EQ(macchina.Mostrati.front().Testo,
              Testo(Voce::ScaricoFermare) + " " + Testo(Voce::ScaricoPoi));
    macchina.Mostrati.erase(macchina.Mostrati.begin());
    EXPECT_EQ(Detto(), std::vector<std::string>{Testo(Voce::ScaricoManca) + "\r\n\r\n" +
                                                Testo(Voce::ScaricoFine) + " 512 / 1024"});
}

TEST_F(DownloadFinestra, APersonWhoTakesTimeToGoOnLosesNothingAndSeesHowFarItIs) {
    porta.Ritardo = 60;
    Guasta("badsum:1");
    prova::Scrivi(macchina.Cartella / "downloads", "no folder");
    macchina.Risposte = {Answer::Cancel, Answer::Ok};
    macchina.AlBox = [&] { macchina.Orologio += 60000; };
    for (int b = 0; b < 40; ++b) apparecchio.Dati.AggiungiBlocco(std::string(128, '\1'));
    const auto scritto = [&](const char* nome) {
        return DaQt(Controllo<QLabel>(dialogo, nome)->text());
    };
    bool chiesto = false;
    Scarica([&] {
        if (chiesto || porta.RichiesteDi(14) != 30) return;
        chiesto = true;
        EXPECT_EQ(scritto("lblQuanto"), "4 / 6 kB");
        EXPECT_TRUE(scritto("lblResta").starts_with(Testo(Voce::ScaricoResta)));
        dialogo.close();
    });
    EXPECT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_TRUE(dialogo.isVisible());
    EXPECT_EQ(NumBlocchi, 46);
    EXPECT_EQ(scritto("lblResta"), "");
    EXPECT_EQ(scritto("lblDisturbi"), "Pages dropped: 1    Retries: 0");
    EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::ScaricoFermare)) << "nothing to go on from";
    const auto* avviso = Controllo<QLabel>(dialogo, "lblAvviso");
    EXPECT_TRUE(avviso->isVisible());
    EXPECT_GE(avviso->height(), avviso->heightForWidth(avviso->width())) << "it is cut";
    dialogo.close();
    EXPECT_FALSE(dialogo.isVisible()) << "at its end nobody asks";
}

}  // namespace
}  // namespace lapvane
