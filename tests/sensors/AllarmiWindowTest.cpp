#include "sensors/Allarmi.h"

#include <QGroupBox>
#include <QLabel>

#include "sensors/EditorWindowProva.h"
#include "sensors/frmAllarmi.h"
#include "widgets/CasellaNumerica.h"

namespace lapvane {
namespace {

using R = RecordProgetto;
using strumento::Record;

class Allarmi : public prova::EditorWindowProva<frmAllarmi> {
 protected:
    void OK() { Clic("OKButton"); }
};

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
    const R prima = r;
    Apri();
    EXPECT_EQ(FormAttiva, finestra.get());
    EXPECT_EQ(DaQt(C<QLabel>("lblTemp0")->text()), "\xB0 F");
    EXPECT_EQ(DaQt(C<QLabel>("lblPress1")->text()), "bar");
    EXPECT_EQ(Testo("txtTO"), "120.5") << "no conversion between units";
    EXPECT_EQ(Testo("txtPO"), "2.500");
    EXPECT_FALSE(C<QLineEdit>("txtPO")->isEnabled());
    EXPECT_EQ(C<QComboBox>("cboUscita")->currentIndex(), -1);
    EXPECT_EQ(C<QComboBox>("cboUscita")->count(), 7);
    EXPECT_FALSE(C<QPushButton>("cmdInviaDati")->isEnabled());
    EXPECT_FALSE(C<QPushButton>("cmdLeggiDati")->isEnabled());

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
    EXPECT_FALSE(ProgettoModificato);

    OK();
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(FormAttiva, nullptr);
    EXPECT_TRUE(ProgettoModificato);
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

TEST_F(Allarmi, DamagedProjectsOpenAndAreKeptUntilOK) {
    R& r = DatiProgetto;
    r.UMTemp = 7;
    r.UMPress = -1;
    r.LedGiallo = r.chkIngresso = r.chkUscita = r.chkPB = true;
    r.TipoLedGiallo = "non so";
    r.TipoIngresso = 9;
    r.TipoUscita = -4;
    r.mskPB = std::numeric_limits<std::int32_t>::min();
    Apri();
    EXPECT_EQ(DaQt(C<QLabel>("lblTemp1")->text()), "");
    EXPECT_EQ(DaQt(C<QLabel>("lblPress0")->text()), "");
    for (const char* lista : {"cboLedGiallo", "cboIngresso", "cboUscita"}) {
        EXPECT_EQ(C<QComboBox>(lista)->currentIndex(), -1) << lista;
    }
    Tasto(Qt::Key_Escape);
    EXPECT_EQ(r.TipoLedGiallo, "non so");
    Apri();
    OK();
    EXPECT_EQ(r.TipoLedGiallo, "0");
    EXPECT_EQ(r.TipoIngresso, 0);
    EXPECT_EQ(r.TipoUscita, 0);
    EXPECT_EQ(r.mskPB, std::numeric_limits<std::int32_t>::min());
}

TEST_F(Allarmi, ExchangesWhatItShowsAndLeavesTheProject) {
    Collega();
    Apri();
    Clic("chkPO");
    Scrivi("txtPO", "4,2");
    Clic("chkLedGiallo");
    C<QComboBox>("cboLedGiallo")->setCurrentIndex(0);
    Scrivi("txtLed4", "11000");
    macchina.Risposte = {Answer::Cancel};
    Clic("cmdInviaDati");
    EXPECT_EQ(porta.RichiesteDi(20), 0u);
    EXPECT_EQ(macchina.Mostrati[0].Titolo, lapvane::Testo(Voce::PassoAllarmi));
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::StrumentoSovrascritto) + "\r\n" +
                            lapvane::Testo(Voce::Continuare)});

    macchina.Risposte = {Answer::Ok, Answer::Ok};
    principale.Storia.clear();
    std::int16_t fase = 0;
    macchina.DuranteEventi = [&] { fase = FaseComunicazione; };
    Clic("cmdInviaDati");
    macchina.DuranteEventi = nullptr;
    EXPECT_EQ(fase, 20);
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(principale.Storia, (V{"3:" + lapvane::Testo(Voce::ProgrammazioneAllarmi), "3:"}));
    EXPECT_EQ(macchina.Mostrati.back().Titolo, "lapvane");
    EXPECT_EQ(Mostrati().back(), lapvane::Testo(Voce::AllarmiTrasmessi));
    const std::string& dati = apparecchio.Dati.Dati(Record::Allarmi);
    EXPECT_EQ(dati.substr(0, 6), std::string("\0\0\x10\x68\0\0", 6)) << "4200 behind 0";
    EXPECT_EQ(dati.substr(20, 3), "\x2A\xF8\x01") << "11000 and the lamp's type";
    EXPECT_EQ(DatiProgetto.mskPO, 0);
    EXPECT_FALSE(ProgettoModificato);

    Clic("chkPO");
    Clic("chkTB");
    Scrivi("txtLed4", "1");
    macchina.Risposte = {Answer::Ok};
    Clic("cmdLeggiDati");
    EXPECT_EQ(macchina.Mostrati[0].Titolo, lapvane::Testo(Voce::DomandaLeggiAllarmi));
    EXPECT_EQ(Mostrati(),
              V{lapvane::Testo(Voce::DatiSostituiti) + "\r\n" + lapvane::Testo(Voce::Continuare)});
    EXPECT_TRUE(C<QCheckBox>("chkPO")->isChecked());
    EXPECT_TRUE(C<QLineEdit>("txtPO")->isEnabled());
    EXPECT_EQ(Testo("txtPO"), "4.200");
    EXPECT_FALSE(C<QCheckBox>("chkTB")->isChecked());
    EXPECT_FALSE(C<QLineEdit>("txtTB")->isEnabled());
    EXPECT_EQ(Testo("txtLed4"), "11000");
    EXPECT_EQ(DatiProgetto.mskPO, 0);
    OK();
    EXPECT_EQ(DatiProgetto.mskPO, 4200);
    EXPECT_TRUE(ProgettoModificato);
}

TEST_F(Allarmi, ClosedInsideAnExchangeItSaysNothingAndFreesThePort) {
    Collega();
    for (const char* pulsante : {"cmdInviaDati", "cmdLeggiDati"}) {
        Apri();
        macchina.Risposte = {Answer::Ok};
        macchina.DuranteEventi = [&] {
            if (FaseComunicazione == 0) return;
            // Nothing but Cancel can be had now.
            EXPECT_FALSE(C<QPushButton>("cmdInviaDati")->isEnabled());
            EXPECT_FALSE(C<QPushButton>("OKButton")->isEnabled());
            if (finestra->isVisible())
                QTest::mouseClick(C<QPushButton>("CancelButton"), Qt::LeftButton);
        };
        Clic(pulsante);
        macchina.DuranteEventi = nullptr;
        EXPECT_FALSE(finestra->isVisible());
        EXPECT_EQ(Mostrati().size(), 1u) << "the question alone";
        EXPECT_EQ(FaseComunicazione, 0);
        EXPECT_FALSE(collegamento().Abbandonato);
        EXPECT_EQ(FormAttiva, nullptr);
        EXPECT_EQ(principale.Testo(Pannello::Progresso), "");
        EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    }
    Collega();
}

TEST_F(Allarmi, FitsTheScreenInBothLanguagesAndTabFollowsTheEye) {
    EntraNelloSchermo();
    C<QCheckBox>("chkTO")->setFocus();
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
