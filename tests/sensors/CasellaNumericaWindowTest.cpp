// The rule of the number boxes in a real editor, under real keys and clicks.
#include "widgets/CasellaNumerica.h"

#include <QContextMenuEvent>
#include <QTimer>

#include "sensors/EditorWindowProva.h"
#include "sensors/frmAllarmi.h"

namespace lapvane {
namespace {

class CaselleNumeriche : public prova::EditorWindowProva<frmAllarmi> {
 protected:
    CaselleNumeriche() {
        DatiProgetto.chkTO = DatiProgetto.chkPO = true;
        DatiProgetto.chkUscita = true;
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
        EXPECT_EQ(macchina.Mostrati[0].Testo, lapvane::Testo(Voce::NumeroNonValido) + "\r\n" +
                                                  lapvane::Testo(Voce::SogliaTemperaturaOlio));
        EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Warning);
        EXPECT_EQ(macchina.Mostrati[0].Titolo, "Alarm and signal settings");
        macchina.Mostrati.clear();
        EXPECT_EQ(Testo("txtTO"), "") << come;
        EXPECT_TRUE(C<QLineEdit>("txtTO")->hasFocus()) << come;
        EXPECT_TRUE(finestra->isVisible()) << come;
        for (const auto* pulsante : finestra->findChildren<QAbstractButton*>()) {
            EXPECT_FALSE(pulsante->isDown()) << come << DaQt(pulsante->objectName());
        }
    }
};

TEST_F(CaselleNumeriche, RefuseWhateverWayTheyAreLeft) {
    StrumentoPresente = true;
    finestra->AbilitaStrumento(true);
    // A box that a refusal blanked is refused again: an empty text is no number.
    for (const char* testo : {"abc", "", "40000", "-32769", "1.2.3", "12 bar", "--1", "1e9"}) {
        Rifiutato("Tab", testo, [&] { Tasto(Qt::Key_Tab); });
    }
    Rifiutato("Backtab", "x", [&] { Tasto(Qt::Key_Backtab, Qt::ShiftModifier); });
    Rifiutato("Enter", "x", [&] { Tasto(Qt::Key_Return); });
    Rifiutato("another box", "x",
              [&] { QTest::mouseClick(C<QLineEdit>("txtPO"), Qt::LeftButton); });
    Rifiutato("OK", "x", [&] { Clic("OKButton"); });
    Rifiutato("send", "x", [&] { Clic("cmdInviaDati"); });
    Rifiutato("read", "x", [&] { Clic("cmdLeggiDati"); });
    Rifiutato("its check box", "x", [&] { Clic("chkTO"); });
    EXPECT_TRUE(C<QCheckBox>("chkTO")->isChecked()) << "the click was answered by the refusal";
    Rifiutato("a list", "x", [&] {
        auto* lista = C<QComboBox>("cboUscita");
        QTest::mouseClick(lista, Qt::LeftButton, {}, lista->rect().center());
    });
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Rifiutato("letter of a label", "x", [&] { Tasto(Qt::Key_3, Qt::AltModifier); });
    Rifiutato("letter of a check box", "x", [&] { Tasto(Qt::Key_O, Qt::AltModifier); });
    EXPECT_TRUE(C<QCheckBox>("chkTO")->isChecked());
    Rifiutato("setFocus", "x", [&] { C<QLineEdit>("txtLed2")->setFocus(); });
    QTest::qWait(150);  // a letter presses its button for 100 ms
    EXPECT_TRUE(C<QCheckBox>("chkTO")->isChecked());
    EXPECT_FALSE(ProgettoModificato);

    Scrivi("txtTO", "12,5");
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(Testo("txtTO"), "12.5");
    EXPECT_FALSE(C<QLineEdit>("txtTO")->hasFocus());
    EXPECT_EQ(Mostrati(), V{});
}

TEST_F(CaselleNumeriche, CancelAlwaysGetsOut) {
    Scrivi("txtLed0", "abc");
    Clic("CancelButton");
    EXPECT_FALSE(finestra->isVisible());
    for (const bool lettera : {false, true}) {
        Apri();
        Scrivi("txtTO", "abc");
        if (lettera) {
            Tasto(Qt::Key_C, Qt::AltModifier);
        } else {
            Tasto(Qt::Key_Escape);
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return !finestra->isVisible(); }, 2000)) << lettera;
    }
    Apri();
    Scrivi("txtTO", "abc");
    finestra->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_EQ(DatiProgetto.mskTO, 0);
    EXPECT_FALSE(ProgettoModificato);

    // By way of Cancel and back a wrong text gets past its check; OK meets it all the same.
    Apri();
    Scrivi("txtTO", "abc");
    C<QPushButton>("CancelButton")->setFocus();
    C<QPushButton>("OKButton")->setFocus();
    macchina.Risposte = {Answer::Ok};
    Clic("OKButton");
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::NumeroNonValido) + "\r\n" +
                            lapvane::Testo(Voce::SogliaTemperaturaOlio)});
    EXPECT_TRUE(finestra->isVisible());
    EXPECT_TRUE(C<QLineEdit>("txtTO")->hasFocus());
}

TEST_F(CaselleNumeriche, APopupOfTheBoxIsNoWayOut) {
    Scrivi("txtTO", "abc");
    auto* casella = C<QLineEdit>("txtTO");
    QTimer::singleShot(50, [] {
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    });
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, casella->rect().center(),
                           casella->mapToGlobal(casella->rect().center()));
    QApplication::sendEvent(casella, &menu);
    QTest::qWait(100);
    // The same as the focus sees it, for a list that unfolds over it.
    QFocusEvent fuori(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(casella, &fuori);
    QCoreApplication::processEvents();
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_EQ(Testo("txtTO"), "abc") << "the text was taken away under the menu";
    QFocusEvent dentro(QEvent::FocusIn, Qt::PopupFocusReason);
    QApplication::sendEvent(casella, &dentro);
    Rifiutato("Tab", "abc", [&] { Tasto(Qt::Key_Tab); });
}

TEST_F(CaselleNumeriche, AnotherWindowIsNoWayOut) {
    Scrivi("txtTO", "abc");
    QWidget altra;
    altra.show();
    for (int i = 0; i < 3; ++i) {
        Attiva(altra);
        QCoreApplication::processEvents();
        Attiva(*finestra);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_EQ(Testo("txtTO"), "abc");
    EXPECT_TRUE(C<QLineEdit>("txtTO")->hasFocus());
    Rifiutato("Tab", "abc", [&] { Tasto(Qt::Key_Tab); });
}

}  // namespace
}  // namespace lapvane
