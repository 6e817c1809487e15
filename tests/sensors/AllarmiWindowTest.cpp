#include "sensors/Allarmi.h"

#include <QLabel>

#include "sensors/EditorWindowProva.h"
#include "sensors/frmAllarmi.h"
#include "shell/TabelleNomi.h"

namespace lapvane {
namespace {

using R = RecordProgetto;
using Allarmi = prova::EditorWindowProva<frmAllarmi>;

TEST_F(Allarmi, StoresWhatItShowsAndNothingBefore) {
    R& r = DatiProgetto;
    r.UMTemp = 1;
    r.mskPO = 2500;
    r.chkTO = true;
    r.mskTO = 1205;
    r.LedVerde = true;
    r.TipoLedVerde = "limitatore";
    r.LedGiallo = true;
    r.TipoLedGiallo = "1";
    r.TipoUscita = 3;  // behind a flag that is off
    r.chkIngresso = true;
    r.TipoIngresso = 9;  // one that the list does not have
    const R prima = r;
    Apri();
    for (const char* n : {"0", "1"}) {
        EXPECT_EQ(DaQt(C<QLabel>(std::string("lblTemp") + n)->text()), "\xB0 F");
        EXPECT_EQ(DaQt(C<QLabel>(std::string("lblPress") + n)->text()), "bar");
    }
    EXPECT_EQ(Testo("txtTO"), "120.5") << "no conversion between units";
    EXPECT_EQ(Testo("txtPO"), "2.500");
    EXPECT_FALSE(C<QLineEdit>("txtPO")->isEnabled());
    EXPECT_EQ(C<QComboBox>("cboUscita")->currentIndex(), -1);
    EXPECT_EQ(C<QComboBox>("cboIngresso")->currentIndex(), -1);
    EXPECT_EQ(C<QComboBox>("cboLedGiallo")->currentIndex(), 0);
    EXPECT_EQ(C<QComboBox>("cboUscita")->count(), 7);

    for (const char* chi :
         {"chkPO", "chkPB", "chkTA", "chkLB", "chkTB", "chkUscita", "chkLedBlu"}) {
        Clic(chi);
    }
    struct Caso {
        const char *Casella, *Scritto, *Mostrato;
        std::int32_t R::*Campo;
        std::int32_t Valore;
    };
    const Caso casi[] = {
        {"txtTO", "12,5", "12.5", &R::mskTO, 125},    {"txtPO", "15", "9.999", &R::mskPO, 9999},
        {"txtPB", "2", "2.000", &R::mskPB, 2000},     {"txtTA", "-5", "-5.0", &R::mskTA, -50},
        {"txtLB", "10000", "9999", &R::mskLB, 99990}, {"txtTB", "11.25", "11.25", &R::mskTB, 112}};
    for (const Caso& caso : casi) {
        Scrivi(caso.Casella, caso.Scritto);
        Tasto(Qt::Key_Tab);
        EXPECT_EQ(Testo(caso.Casella), caso.Mostrato);
    }
    for (int i = 0; i < 5; ++i) Scrivi("txtLed" + std::to_string(i), std::to_string(9000 - i));
    C<QComboBox>("cboUscita")->setFocus();
    QTest::keyClick(C<QComboBox>("cboUscita"), Qt::Key_End);
    C<QComboBox>("cboLedBlu")->setFocus();
    QTest::keyClicks(C<QComboBox>("cboLedBlu"), QStringLiteral("pit"));
    Clic("chkLedVerde");
    Clic("chkLedGiallo");
    EXPECT_EQ(C<QComboBox>("cboLedGiallo")->currentIndex(), -1);
    EXPECT_EQ(DatiProgetto.mskTO, prima.mskTO);

    Clic("OKButton");
    EXPECT_FALSE(finestra->isVisible());
    for (const Caso& caso : casi) EXPECT_EQ(r.*caso.Campo, caso.Valore) << caso.Casella;
    for (const SogliaAllarme& soglia : kSoglie) EXPECT_TRUE(r.*soglia.Attiva) << soglia.Spunta;
    EXPECT_EQ((std::array{r.Led0, r.Led1, r.Led2, r.Led3, r.Led4}),
              (std::array<std::int16_t, 5>{9000, 8999, 8998, 8997, 8996}));
    EXPECT_FALSE(r.LedVerde);
    EXPECT_EQ(r.TipoLedVerde, "limitatore") << "unticking keeps the free text";
    EXPECT_FALSE(r.LedGiallo);
    EXPECT_EQ(r.TipoLedGiallo, "0") << "and clears a choice";
    EXPECT_TRUE(r.LedBlu);
    EXPECT_EQ(r.TipoLedBlu, "pit");
    EXPECT_TRUE(r.chkUscita);
    EXPECT_EQ(r.TipoUscita, 7);
    EXPECT_EQ(r.TipoIngresso, 0);

    // Enter stores as well, and tidies the box that it was pressed in.
    Apri();
    Scrivi("txtPO", "50");
    Tasto(Qt::Key_Return);
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(r.mskPO, 9999);
}

// By way of Cancel a wrong number is not looked at; the buttons meet it all the same.
TEST_F(Allarmi, WrongNumbersAreNeitherStoredNorSent) {
    DatiProgetto.chkTO = true;
    Collega();
    Apri();
    for (const auto& [casella, nome] :
         {std::pair{"txtTO", Voce::SogliaTemperaturaOlio}, {"txtLed1", Voce::Led2}}) {
        for (const char* pulsante : {"OKButton", "cmdInviaDati"}) {
            Scrivi(casella, "abc");
            C<QPushButton>("CancelButton")->setFocus();
            C<QPushButton>("OKButton")->setFocus();
            macchina.Risposte = {Answer::Ok};
            Clic(pulsante);
            EXPECT_EQ(Mostrati(), V{Dice(Voce::NumeroNonValido) + "\r\n" + Dice(nome)});
            EXPECT_TRUE(C<QLineEdit>(casella)->hasFocus()) << pulsante;
        }
        Scrivi(casella, "1");
    }
    EXPECT_EQ(porta.RichiesteDi(20), 0u);
    // One that is off may hold anything.
    Scrivi("txtTO", "5 C");
    C<QPushButton>("CancelButton")->setFocus();
    Clic("chkTO");
    Clic("OKButton");
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(DatiProgetto.mskTO, 50);
}

TEST_F(Allarmi, TabFollowsTheEyeFromTheFirstAlarmOn) {
    Apri();
    V giro;
    for (int i = 0; i < 6; ++i) {
        giro.push_back(DaQt(QApplication::focusWidget()->objectName()));
        if (i == 0) Tasto(Qt::Key_Space);
        Tasto(Qt::Key_Tab);
    }
    EXPECT_EQ(giro, (V{"chkTO", "txtTO", "chkPO", "chkPB", "chkTA", "chkLB"}));
}

}  // namespace
}  // namespace lapvane
