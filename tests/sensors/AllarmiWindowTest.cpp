#include "sensors/Allarmi.h"

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
        if (caso.Campo == &R::mskPO) {
            EXPECT_EQ(Scritta("lblAvvisi"), "Oil pressure: allowed values -32.768 ... 9.999");
        } else if (caso.Campo == &R::mskPB) {
            EXPECT_EQ(Scritta("lblAvvisi"), "") << "put in order";
        }
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

/// The rule of the number boxes, under real keys and clicks.
class CaselleNumeriche : public prova::EditorWindowProva<frmAllarmi> {
 protected:
    CaselleNumeriche() {
        DatiProgetto.chkTO = DatiProgetto.chkPO = DatiProgetto.chkUscita = true;
        StrumentoPresente = true;
        Apri();
    }
    /// A wrong text in `txtTO`, then the way out; the box is refused once and the user is back in
    /// it.
    template <class G>
    void Rifiutato(const char* come, const char* testo, G&& uscita) {
        Scrivi("txtTO", testo);
        macchina.Risposte = {Answer::Ok};
        uscita();
        QCoreApplication::processEvents();
        ASSERT_EQ(macchina.Mostrati.size(), 1u) << come << " " << testo;
        EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Warning);
        EXPECT_EQ(macchina.Mostrati[0].Titolo, "Alarm and signal settings");
        EXPECT_EQ(Mostrati(),
                  V{Dice(Voce::NumeroNonValido) + "\r\n" + Dice(Voce::SogliaTemperaturaOlio)});
        EXPECT_EQ(Testo("txtTO"), "") << come;
        EXPECT_TRUE(C<QLineEdit>("txtTO")->hasFocus()) << come;
        EXPECT_TRUE(finestra->isVisible()) << come;
        EXPECT_TRUE(C<QCheckBox>("chkTO")->isChecked()) << "answered by the refusal";
        for (const auto* pulsante : finestra->findChildren<QAbstractButton*>()) {
            EXPECT_FALSE(pulsante->isDown()) << come << DaQt(pulsante->objectName());
        }
    }
};

TEST_F(CaselleNumeriche, RefuseWhateverWayTheyAreLeft) {
    // A box that a refusal blanked is refused again: an empty text is no number.
    for (const char* testo : {"abc", "", "40000", "-32769", "1.2.3", "12 bar", "1e9"}) {
        Rifiutato("Tab", testo, [&] { Tasto(Qt::Key_Tab); });
    }
    Rifiutato("Backtab", "x", [&] { Tasto(Qt::Key_Backtab, Qt::ShiftModifier); });
    Rifiutato("Enter", "x", [&] { Tasto(Qt::Key_Return); });
    for (const char* chi : {"OKButton", "cmdInviaDati", "cmdLeggiDati", "chkTO"}) {
        Rifiutato(chi, "x", [&] { Clic(chi); });
    }
    for (const char* chi : {"txtPO", "cboUscita"}) {
        Rifiutato(chi, "x", [&] { QTest::mouseClick(C<QWidget>(chi), Qt::LeftButton); });
    }
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Rifiutato("letter of a label", "x", [&] { Tasto(Qt::Key_3, Qt::AltModifier); });
    Rifiutato("letter of a check box", "x", [&] { Tasto(Qt::Key_O, Qt::AltModifier); });
    Rifiutato("Enter before the message", "x", [&] {
        QTest::keyClick(C<QWidget>("txtTO"), Qt::Key_Tab);
        QTest::keyClick(C<QWidget>("txtTO"), Qt::Key_Return);
    });
    Rifiutato("focus elsewhere, twice", "x", [&] {
        C<QWidget>("txtLed2")->setFocus();
        C<QWidget>("txtLed3")->setFocus();
    });
    EXPECT_TRUE(C<QCheckBox>("chkTO")->isChecked());
    EXPECT_FALSE(ProgettoModificato);
    for (const bool enter : {false, true}) {
        Scrivi("txtTO", "12,5");
        macchina.Risposte = {Answer::Cancel};
        // Pressed by its letter a button does not take the focus.
        enter ? C<QPushButton>("cmdInviaDati")->click() : Clic("cmdInviaDati");
        EXPECT_EQ(Testo("txtTO"), "12.5") << enter;
        C<QLineEdit>("txtTO")->undo();
        EXPECT_EQ(Testo("txtTO"), "12,5") << "what was typed comes back";
        EXPECT_EQ(Mostrati().size(), 1u) << "the question";
    }
}

TEST_F(CaselleNumeriche, CancelAlwaysGetsOut) {
    for (const int come : {0, 1, 2, 3, 4}) {
        Apri();
        Scrivi("txtTO", "abc");
        if (come == 0) Clic("CancelButton");
        if (come == 1) Tasto(Qt::Key_C, Qt::AltModifier);
        if (come == 2) Tasto(Qt::Key_Escape);
        if (come == 3) QTest::keyClick(C<QWidget>("txtTO"), Qt::Key_Tab);  // message to come
        if (come >= 3) finestra->close();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !finestra->isVisible(); }, 2000)) << come;
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_FALSE(ProgettoModificato);
}

TEST_F(CaselleNumeriche, NeitherAPopupNorAnotherWindowIsAWayOut) {
    Scrivi("txtTO", "abc");
    auto* casella = C<QLineEdit>("txtTO");
    // As the focus sees its menu, or a list that unfolds over it.
    for (const Qt::FocusReason motivo : {Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        QFocusEvent fuori(QEvent::FocusOut, motivo), dentro(QEvent::FocusIn, motivo);
        QApplication::sendEvent(casella, &fuori);
        QCoreApplication::processEvents();
        QApplication::sendEvent(casella, &dentro);
    }
    QPushButton altra;
    altra.show();
    for (int i = 0; i < 3; ++i) {
        Attiva(altra);
        QCoreApplication::processEvents();
        Attiva(*finestra);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_EQ(Testo("txtTO"), "abc") << "the text was taken away under the menu";
    EXPECT_TRUE(casella->hasFocus());
    // The click that waits with the message is one of this window alone.
    int clic = 0;
    QObject::connect(&altra, &QPushButton::clicked, [&] { ++clic; });
    Rifiutato("Tab", "abc", [&] {
        QTest::keyClick(casella, Qt::Key_Tab);
        QTest::mouseClick(&altra, Qt::LeftButton);
    });
    EXPECT_EQ(clic, 1);
}

}  // namespace
}  // namespace lapvane
