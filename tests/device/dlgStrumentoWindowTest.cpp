// The window of a run through the instrument, with the simulated one behind the port.
#include "device/dlgStrumento.h"

#include <QClipboard>
#include <QTableWidget>

#include "device/ProgrammaStrumento.h"
#include "device/SerialComm.h"
#include "project/FileProgetto.h"
#include "sensors/CSensore.h"
#include "support/StrumentoProva.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

using prova::Controllo;
using prova::WindowPlatform;

class StrumentoFinestra : public prova::ConStrumento<WindowPlatform> {
 protected:
    StrumentoFinestra() {
        std::filesystem::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
        CaricaLibreriaSensori();
        EXPECT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
        macchina.BoxLiberi = true;
    }
    QString Etichetta(const char* nome) { return Controllo<QLabel>(*dialogo, nome)->text(); }
    /// Plays a run; `guarda` sees the window that it leaves open. How often one was left open.
    int Esegui(void (*corsa)(VistaStrumento&), const std::function<void()>& guarda = {}) {
        macchina.Mostrati.clear();
        macchina.Risposte = {Answer::Ok};
        dialogo = std::make_unique<dlgStrumento>();
        bottone = Controllo<QPushButton>(*dialogo, "CancelButton");
        int viste = 0;
        QTimer guardia;
        QObject::connect(&guardia, &QTimer::timeout, [&] {
            const bool finita = !Etichetta("Label3").isEmpty() || macchina.Mostrati.size() > 1;
            if (!dialogo->isVisible() || !finita) return;
            ++viste;
            if (guarda) guarda();
            dialogo->close();
        });
        guardia.start(1);
        dialogo->Esegui(corsa);
        macchina.DuranteEventi = nullptr;
        EXPECT_FALSE(dialogo->isVisible());
        EXPECT_EQ(FaseComunicazione, 0);
        EXPECT_FALSE(collegamento().Abbandonato) << "every wait would give up from now on";
        EXPECT_EQ(finestra.Testo(Pannello::Progresso), "");
        EXPECT_TRUE(porta.PortOpen());
        return viste;
    }

    std::unique_ptr<dlgStrumento> dialogo;
    QPushButton* bottone = nullptr;
};

TEST_F(StrumentoFinestra, RunsBothWaysAndStaysUntilClosed) {
    for (const bool lettura : {false, true}) {
        IndiceLingua = lettura ? 1 : 0;
        CalcolaBaseTesti();
        QSize prima;
        macchina.DuranteEventi = [&] {
            if (!prima.isEmpty() || !dialogo->isVisible()) return;
            prima = dialogo->size();
            EXPECT_EQ(dialogo->cursor().shape(), Qt::WaitCursor);
            EXPECT_EQ(dialogo->windowModality(), Qt::ApplicationModal);
            EXPECT_EQ(bottone->text().remove(u'&'), InQt(Testo(Voce::Annulla)));
            // An impatient hand does not stop the run.
            QTest::keyClick(dialogo.get(), Qt::Key_Return);
            EXPECT_EQ(bottone->focusPolicy(), Qt::NoFocus);
            QTest::keyClick(dialogo.get(), Qt::Key_Space);
        };
        const auto guarda = [&] {
            const QString titolo =
                InQt(Testo(lettura ? Voce::LetturaStrumento : Voce::ProgrammazioneStrumento));
            EXPECT_EQ(dialogo->windowTitle(), titolo);
            EXPECT_EQ(Etichetta("Label2"), titolo);
            EXPECT_EQ(Etichetta("Label3"), titolo + QStringLiteral(" OK"));
            const QString passi = Etichetta("Label1");
            EXPECT_TRUE(passi.endsWith(InQt("\n" + Testo(Voce::PassoAllarmi) + " ...   OK\n")));
            EXPECT_EQ(passi.count(u'\n'), 12);
            EXPECT_EQ(passi.count(u'\r'), 0);
            // Twelve steps fit into the window that opened with none.
            EXPECT_EQ(dialogo->size(), prima);
            const auto* etichetta = Controllo<QLabel>(*dialogo, "Label1");
            EXPECT_LE(etichetta->sizeHint().width(), etichetta->width());
            EXPECT_LE(etichetta->sizeHint().height(), etichetta->height());
            EXPECT_NE(dialogo->cursor().shape(), Qt::WaitCursor);
            EXPECT_EQ(Controllo<QPushButton>(*dialogo, "cmdConfronta")->isVisible(), !lettura);
            EXPECT_EQ(bottone->text().remove(u'&'), QStringLiteral("OK"));
            QTest::keyClick(dialogo.get(), Qt::Key_Return);
            EXPECT_FALSE(dialogo->isVisible());
        };
        EXPECT_EQ(Esegui(lettura ? mnuReadDevice_Click : mnuProgramDevice_Click, guarda), 1);
    }
}

TEST_F(StrumentoFinestra, ClosedInTheMiddleStopsAndFailedCloses) {
    macchina.DuranteEventi = [&] {
        if (!dialogo->isVisible() || Etichetta("Label1").count(u'\n') < 4) return;
        QTest::keyClick(dialogo.get(), Qt::Key_Escape);
        EXPECT_TRUE(collegamento().Abbandonato) << "the waits go on";
    };
    EXPECT_EQ(Esegui(mnuProgramDevice_Click), 0) << "it opened again";
    EXPECT_EQ(Detto(1), std::vector<std::string>{Testo(Voce::ProgrammazioneInterrotta)});
    Guasta("drop:22:1");
    EXPECT_EQ(Esegui(mnuProgramDevice_Click), 0);
    EXPECT_EQ(Detto(2), std::vector<std::string>{Testo(Voce::ErroreDiComunicazione)});
}

TEST_F(StrumentoFinestra, CheckThatFailsKeepsTheLinkAsLongAsItsWindow) {
    DatiProgetto.TCampTA.clear();
    EXPECT_EQ(Esegui(mnuProgramDevice_Click,
                     [&] {
                         EXPECT_EQ(FaseComunicazione, 18);
                         EXPECT_NE(finestra.Testo(Pannello::Progresso), "");
                         EXPECT_NE(dialogo->cursor().shape(), Qt::WaitCursor);
                         QTest::mouseClick(bottone, Qt::LeftButton);
                     }),
              1);
}

TEST_F(StrumentoFinestra, BehindAProgramOneClickCompares) {
    for (const bool uguali : {true, false}) {
        bool visto = false;
        QTimer guardia;
        QObject::connect(&guardia, &QTimer::timeout, [&] {
            QWidget* esito = QApplication::activeModalWidget();
            if (esito == nullptr || esito->objectName() != QLatin1String("dlgDifferenze")) return;
            visto = true;
            const auto* tabella = Controllo<QTableWidget>(*esito, "tabDifferenze");
            const QString detto = Controllo<QLabel>(*esito, "lblEsito")->text();
            EXPECT_EQ(tabella->isVisible(), !uguali);
            EXPECT_EQ(detto, InQt(uguali ? Testo(Voce::NessunaDifferenza)
                                         : Testo(Voce::NumeroDifferenze) + " 1"));
            if (!uguali) {
                EXPECT_EQ(tabella->item(0, 2)->text(), QStringLiteral("560"));
                QTest::mouseClick(Controllo<QPushButton>(*esito, "cmdCopia"), Qt::LeftButton);
                EXPECT_TRUE(QGuiApplication::clipboard()->text().endsWith(
                    QStringLiteral("\t560\t570\tmm")));
            }
            QTest::keyClick(esito, Qt::Key_Escape);
        });
        Esegui(mnuProgramDevice_Click, [&] {
            guardia.start(1);
            if (!uguali) {
                // Wheel diameter: the payload begins behind the command byte.
                std::string byte = apparecchio.Dati.Dati(strumento::Record::Sensori);
                byte[3] = '\x3A';
                apparecchio.Dati.Programma(strumento::Record::Sensori, byte);
            }
            QTest::mouseClick(Controllo<QPushButton>(*dialogo, "cmdConfronta"), Qt::LeftButton);
        });
        EXPECT_TRUE(visto);
    }
}

}  // namespace
}  // namespace lapvane
