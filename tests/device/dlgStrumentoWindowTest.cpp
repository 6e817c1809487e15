// The two long commands of the main window by mouse, with the simulated instrument behind the port.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QToolButton>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Strumento.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "sensors/CSensore.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/frmMain.h"
#include "support/Cartelle.h"
#include "support/WindowPlatform.h"
#include "widgets/PannelloStato.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::Controllo;
using prova::WindowPlatform;
using strumento::LeggiGuasto;
using strumento::SerialeStrumento;
using strumento::Strumento;

QDialog* Aperta() {
    auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    return dialogo != nullptr && dialogo->objectName() == QLatin1String("dlgStrumento") ? dialogo
                                                                                        : nullptr;
}
QString Etichetta(const char* nome) {
    return Controllo<QLabel>(*Aperta(), nome)->text();
}

class StrumentoFinestra : public ::testing::Test {
 protected:
    StrumentoFinestra() {
        fs::copy_file(prova::CartellaBin() / "LANGUAGES.DAT", macchina.Cartella / "LANGUAGES.DAT");
        fs::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
        prova::Scrivi(macchina.Cartella / "RecentFiles.ini", "1\r\n");
        auto unica = std::make_unique<SerialeStrumento>(
            apparecchio, [this] { return macchina.Orologio; },
            [this](int ms) { macchina.Orologio += ms; });
        porta = unica.get();
        finestra = std::make_unique<frmMain>(std::move(unica));
        finestra->Carica();
        EXPECT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
        finestra->Abilita(Comando::ProgDev, true);
        finestra->Abilita(Comando::ReadDev, true);
        finestra->show();
        macchina.BoxLiberi = true;
        guardia.start(5);
    }
    void Lingua(int lingua) {
        IndiceLingua = lingua;
        CalcolaBaseTesti();
    }
    void Clic(const char* chiave) {
        macchina.Mostrati.clear();
        macchina.Risposte = {Answer::Ok};
        QTest::mouseClick(
            Controllo<QToolButton>(*finestra, (std::string("Toolbar1_") + chiave).c_str()),
            Qt::LeftButton);
    }
    QString Pannello3() { return Controllo<PannelloStato>(*finestra, "sbStatusBar_3")->Testo(); }

    WindowPlatform macchina;
    Strumento apparecchio;
    SerialeStrumento* porta = nullptr;
    std::unique_ptr<frmMain> finestra;
    QTimer guardia;
};

TEST_F(StrumentoFinestra, RunsInBothLanguagesAndStaysUntilClosed) {
    for (const int lingua : {0, 1}) {
        for (const bool lettura : {false, true}) {
            Lingua(lingua);
            QSize prima;
            bool clessidra = false;
            macchina.DuranteEventi = [&] {
                if (!prima.isEmpty() || Aperta() == nullptr) return;
                prima = Aperta()->size();
                clessidra = Aperta()->cursor().shape() == Qt::WaitCursor;
                // An impatient hand does not stop the run.
                QTest::keyClick(Aperta(), Qt::Key_Return);
                QTest::keyClick(Aperta(), Qt::Key_Space);
            };
            int viste = 0;
            QObject::connect(&guardia, &QTimer::timeout, &guardia, [&] {
                if (Aperta() == nullptr || Etichetta("Label3").isEmpty()) return;
                ++viste;
                const QString titolo =
                    InQt(Testo(lettura ? Voce::LetturaStrumento : Voce::ProgrammazioneStrumento));
                EXPECT_EQ(Aperta()->windowTitle(), titolo);
                EXPECT_EQ(Etichetta("Label2"), titolo);
                EXPECT_EQ(Etichetta("Label3"), titolo + QStringLiteral(" OK"));
                const QString passi = Etichetta("Label1");
                EXPECT_TRUE(passi.startsWith(InQt(
                    Testo(lettura ? Voce::LetturaImpostazioni : Voce::ProgrammazioneImpostazioni) +
                    " ...   OK\n")));
                EXPECT_TRUE(passi.endsWith(InQt(Testo(Voce::PassoAllarmi) + " ...   OK\n")));
                EXPECT_EQ(passi.count(QLatin1Char('\n')), 12);
                // Twelve steps fit into the window that opened with none.
                EXPECT_EQ(Aperta()->size(), prima);
                auto* etichetta = Controllo<QLabel>(*Aperta(), "Label1");
                EXPECT_LE(etichetta->sizeHint().width(), etichetta->width());
                EXPECT_LE(etichetta->sizeHint().height(), etichetta->height());
                EXPECT_NE(Aperta()->cursor().shape(), Qt::WaitCursor);
                EXPECT_EQ(FaseComunicazione, 0);
                QTest::keyClick(Aperta(), Qt::Key_Return);
            });
            Clic(lettura ? "ReadDev" : "ProgDev");
            guardia.disconnect();
            macchina.DuranteEventi = nullptr;
            EXPECT_EQ(viste, 1);
            EXPECT_TRUE(clessidra);
            EXPECT_EQ(Aperta(), nullptr);
            EXPECT_TRUE(porta->PortOpen());
        }
    }
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "NTC olio M10");
}

TEST_F(StrumentoFinestra, ClosedInTheMiddleStopsAndCanBeStartedAgain) {
    Lingua(1);
    int passi = 0;
    macchina.DuranteEventi = [&] {
        if (Aperta() == nullptr || Etichetta("Label1").count(QLatin1Char('\n')) < 4) return;
        ++passi;
        QTest::keyClick(Aperta(), Qt::Key_Escape);
        EXPECT_TRUE(collegamento().Abbandonato) << "the waits go on";
    };
    Clic("ProgDev");
    macchina.DuranteEventi = nullptr;
    EXPECT_EQ(passi, 1);
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_EQ(macchina.Mostrati[1].Testo, Testo(Voce::ProgrammazioneInterrotta));
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_FALSE(collegamento().Abbandonato);
    EXPECT_EQ(Pannello3(), QString());
    EXPECT_TRUE(porta->PortOpen());

    QObject::connect(&guardia, &QTimer::timeout, &guardia, [&] {
        if (Aperta() != nullptr && !Etichetta("Label3").isEmpty()) Aperta()->close();
    });
    Clic("ProgDev");
    EXPECT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_EQ(porta->RichiesteDi(20), 1u);
}

TEST_F(StrumentoFinestra, CheckThatFailsKeepsTheLinkAsLongAsItsWindow) {
    Lingua(1);
    DatiProgetto.TCampTA.clear();
    int viste = 0;
    QObject::connect(&guardia, &QTimer::timeout, &guardia, [&] {
        if (Aperta() == nullptr || macchina.Mostrati.size() < 2) return;
        ++viste;
        EXPECT_EQ(FaseComunicazione, 18);
        EXPECT_EQ(Etichetta("Label3"), QString());
        EXPECT_EQ(Pannello3(), InQt(Testo(Voce::ProgrammazioneImpostazioni)));
        EXPECT_NE(Aperta()->cursor().shape(), Qt::WaitCursor);
        QTest::mouseClick(Controllo<QPushButton>(*Aperta(), "CancelButton"), Qt::LeftButton);
    });
    Clic("ProgDev");
    EXPECT_EQ(viste, 1);
    EXPECT_EQ(macchina.Mostrati.back().Testo,
              Testo(Voce::IncompletoTemperaturaAcqua) + "\r\n" + Testo(Voce::MancaFrequenza));
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(Pannello3(), QString());
}

TEST_F(StrumentoFinestra, NoPollRunsWhileTheLinkIsOpenedAnewAndAClickEndsTheAttempt) {
    Lingua(1);
    finestra->AvviaSorveglianza();
    ASSERT_TRUE(QTest::qWaitFor([] { return StrumentoPresente; }, 5000));
    apparecchio.Difetti.Aggiungi(LeggiGuasto("silent:22:1"));
    auto* nuovo = Controllo<QToolButton>(*finestra, "Toolbar1_New");
    std::size_t identita = 0;
    std::int64_t clic = 0;
    bool dentro = false;
    macchina.DuranteEventi = [&] {
        // Three boxes: the question, the failure, the end of the run; then the handshake.
        if (macchina.Mostrati.size() < 3 || Aperta() != nullptr || !porta->PortOpen()) return;
        QThread::msleep(1);
        if (clic != 0) return;
        if (identita == 0) identita = porta->RichiesteDi(2);
        // Well beyond a period of the timer.
        static int giri = 0;
        if (++giri < 300) return;
        EXPECT_EQ(porta->RichiesteDi(2), identita) << "the poll asked inside the handshake";
        clic = macchina.Orologio;
        QTest::mouseClick(nuovo, Qt::LeftButton);
        dentro = DatiProgetto.NomeProgetto.empty();
    };
    Clic("ProgDev");
    const std::int64_t fine = macchina.Orologio;
    macchina.DuranteEventi = nullptr;
    ASSERT_EQ(macchina.Mostrati.size(), 3u);
    EXPECT_EQ(macchina.Mostrati[2].Testo, Testo(Voce::ErroreDiComunicazione));
    EXPECT_NE(clic, 0);
    EXPECT_FALSE(dentro);
    EXPECT_LT(fine - clic, 300);
    EXPECT_FALSE(porta->PortOpen());
    EXPECT_TRUE(QTest::qWaitFor([] { return DatiProgetto.NomeProgetto.empty(); }, 5000))
        << "the click was lost";
    apparecchio.Difetti.Togli();
    EXPECT_TRUE(QTest::qWaitFor([&] { return porta->PortOpen(); }, 5000)) << "the poll is dead";
}

}  // namespace
}  // namespace lapvane
