// The rule of the number boxes in a real editor, under real keys and clicks.
#include "widgets/CasellaNumerica.h"

#include "sensors/EditorWindowProva.h"
#include "sensors/frmAllarmi.h"

namespace lapvane {
namespace {

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
