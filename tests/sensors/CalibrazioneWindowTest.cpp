#include <QRadioButton>

#include "device/Diagnostica.h"
#include "sensors/Curve.h"
#include "sensors/EditorWindowProva.h"
#include "sensors/dlgCalibrazione.h"
#include "sensors/frmImpostaSensore.h"

namespace lapvane {
namespace {

class FinestraCalibrazione : public prova::EditorWindowProva<frmImpostaSensore> {
 protected:
    FinestraCalibrazione() {
        ValoriAnalogici.fill(0);
        Collega();
        Apri();
        QTest::mouseClick(C<QRadioButton>("optLivelloBenzina"), Qt::LeftButton, {}, QPoint(8, 8));
    }
    /// Opens the dialog and runs what a person does in it; whatever that leaves open is closed.
    void Calibra(const std::function<void()>& mano) {
        bool fatto = false;
        QTimer::singleShot(0, [&] {
            dialogo = qobject_cast<dlgCalibrazione*>(QApplication::activeModalWidget());
            ASSERT_NE(dialogo, nullptr);
            dialogo->activateWindow();
            fatto = QTest::qWaitFor([&] { return QApplication::activeWindow() == dialogo; });
            if (fatto) mano();
            if (dialogo != nullptr) dialogo->close();
        });
        Clic("cmdCalibrazione");
        dialogo = nullptr;
        EXPECT_TRUE(fatto);
    }
    template <class W>
    W* D(const char* nome) {
        return prova::Controllo<W>(*dialogo, nome);
    }
    /// One step by keys: the litres over those that are marked, and Enter.
    void Misura(double litri, bool scende, const char* scritti) {
        apparecchio.Benzina = strumento::Serbatoio{litri, scende};
        if (*scritti != '\0') {
            QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(scritti));
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    std::string Fase() { return DaQt(D<QLabel>("lblDescrizioneFase")->text()); }
    static std::string Coda() {
        return "\n\n" + Dice(Voce::PremereOK) + "\n\n" + Dice(Voce::PremereAnnulla);
    }
    std::string Riga(int i) {
        const std::string n = std::to_string(i);
        return (C<QCheckBox>("Check1" + n)->isChecked() ? "" : "-") + Testo("txtX" + n) + "/" +
               Testo("txtY" + n);
    }
    QPointer<dlgCalibrazione> dialogo;
};

TEST_F(FinestraCalibrazione, MeasuresATankByKeys) {
    Clic("cmdNuovoSensore");
    Clic("Check10");  // goes when the calibration begins
    Calibra([&] {
        EXPECT_EQ(FormAttiva, dialogo.data());
        EXPECT_EQ(Riga(0), "-/");
        EXPECT_EQ(Fase(),
                  Dice(Voce::SvuotareIlSerbatoio) + Dice(Voce::AttendereIlLivello) + Coda());
        EXPECT_FALSE(D<QLineEdit>("txtLitri")->isVisible());
        EXPECT_FALSE(D<QLabel>("Label1")->isVisible());
        const QSize misura = dialogo->size();
        Misura(0, false, "");
        EXPECT_EQ(Fase(),
                  Dice(Voce::ImmettereCarburante) + "\n" + Dice(Voce::ScrivereILitri) + Coda());
        EXPECT_TRUE(D<QLineEdit>("txtLitri")->hasFocus());
        EXPECT_EQ(D<QLineEdit>("txtLitri")->selectedText(), QStringLiteral("0.0"));
        Misura(10, false, "10");
        Misura(25.5, false, "25,5");
        EXPECT_EQ(dialogo->StatoCalibrazione(), 1);
        EXPECT_EQ(DaQt(D<QLabel>("lblValore")->text()),
                  Dice(Voce::UltimaMisura) + " 448 bit = 25.5 l");
        EXPECT_EQ(dialogo->size(), misura);
        EXPECT_EQ(Riga(2), "448/25.5") << "the table behind it follows";
        EXPECT_EQ(Riga(3), "-/");
        QTest::mouseClick(D<QPushButton>("cmdFineProcedura"), Qt::LeftButton);
        EXPECT_EQ(dialogo->StatoCalibrazione(), 2);
    });
    EXPECT_EQ((V{Riga(0), Riga(1), Riga(2), Riga(3), Riga(19)}),
              (V{"40/0.0", "200/10.0", "448/25.5", "1024/25.5", "1024/25.5"}));
    EXPECT_EQ(FormAttiva, nullptr) << "the editor is not known to the poll any more";
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(Mostrati(), V{});

    Calibra([&] {
        for (int i = 0; i < 19; ++i) Misura(i, false, "1");
        EXPECT_FALSE(D<QPushButton>("OKButton")->isEnabled());
        dialogo->AbilitaStrumento(false);
        dialogo->AbilitaStrumento(true);
        EXPECT_FALSE(D<QPushButton>("OKButton")->isEnabled());
        EXPECT_TRUE(D<QPushButton>("cmdFineProcedura")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(Riga(18), "328/1.0");
    EXPECT_EQ(Riga(19), "1024/1.0");
}

TEST_F(FinestraCalibrazione, CancelClearsAndTheCloseBoxLeavesThePoints) {
    for (const bool esc : {false, true}) {
        CurvaX.fill(7);
        Calibra([&] {
            Misura(10, false, "");
            if (esc) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            } else {
                QTest::mouseClick(D<QPushButton>("CancelButton"), Qt::LeftButton);
            }
            EXPECT_EQ(dialogo->StatoCalibrazione(), 3);
        });
        EXPECT_EQ(Riga(0), "-/");
        EXPECT_EQ(CurvaX[0], 0.0);
    }
    Calibra([&] {
        Misura(10, false, "");
        dialogo->close();
        EXPECT_EQ(dialogo->StatoCalibrazione(), 1);
    });
    EXPECT_EQ(Riga(0), "200/0.0");
    EXPECT_EQ(Riga(1), "-/");
}

TEST_F(FinestraCalibrazione, ALinkThatBreaksTellsItEachTimeAndTheWindowCloses) {
    Calibra([&] {
        // Without a port nothing is asked, and no point is entered: the step is the first one
        // still.
        porta.Sparisci();
        const std::string prima = Fase();
        Misura(10, false, "");
        EXPECT_EQ(Riga(0), "-/");
        EXPECT_EQ(Fase(), Dice(Voce::LetturaFallita) + "\n\n" + prima);
        EXPECT_FALSE(D<QLineEdit>("txtLitri")->isVisible());
        EXPECT_EQ(Mostrati(), V{});
        porta.Riappari();
        Misura(10, false, "");
        EXPECT_EQ(Riga(0), "200/0.0");
        const std::string poi = Fase();
        Guasta("drop:9");
        for (int i = 0; i < 2; ++i) {
            macchina.Risposte = {Answer::Ok};
            Misura(30, false, "30");
            EXPECT_EQ(Mostrati(), V{Dice(Voce::StrumentoNonRisponde)});
            EXPECT_EQ(Riga(1), "-/");
            EXPECT_EQ(Fase(), Dice(Voce::LetturaFallita) + "\n\n" + poi);
            EXPECT_EQ(D<QLineEdit>("txtLitri")->selectedText(), QStringLiteral("30"));
        }
        // Cancel in the middle of a read that nobody answers.
        int giri = 0;
        macchina.DuranteEventi = [&] {
            if (FaseComunicazione != 9) return;
            EXPECT_FALSE(D<QPushButton>("cmdFineProcedura")->isEnabled());
            if (++giri == 3) QTest::mouseClick(D<QPushButton>("CancelButton"), Qt::LeftButton);
        };
        Misura(40, false, "40");
        macchina.DuranteEventi = nullptr;
        EXPECT_EQ(giri, 3) << "the wait gave up";
        EXPECT_FALSE(dialogo->isVisible());
    });
    EXPECT_EQ(Mostrati(), V{}) << "nobody is told what they turned away from";
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_FALSE(collegamento().Abbandonato);
    EXPECT_EQ(Riga(0), "-/");
}

}  // namespace
}  // namespace lapvane
