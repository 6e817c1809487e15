#include "sensors/frmSensori.h"

#include <QGroupBox>
#include <QTabBar>
#include <QTabWidget>
#include <QWheelEvent>

#include "sensors/CSensore.h"
#include "sensors/EditorWindowProva.h"
#include "shell/TabelleNomi.h"

namespace lapvane {
namespace {

using R = RecordProgetto;
using strumento::Record;

const std::string kDiametro = "\r\nCar speed: Wheel diameter [1 - 9999 mm]";
const std::string kSenzaNome = "\r\nThe name of the sensor is missing.";

class Sensori : public prova::EditorWindowProva<frmSensori> {
 protected:
    Sensori() {
        std::filesystem::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
        CaricaTabelleNomi();
        CaricaLibreriaSensori();
        R& r = DatiProgetto;
        r.AbilPT = true;
        r.PressioneTurbo = "Turbo -1 +3 bar";
        r.TCampPT = "10 Hz";
        r.AbilPO = true;
        r.PressioneOlio = "Pressione 0-7 bar";
        r.SensoreG = "Accelerometro 3 g";
    }
    QTabWidget* Schede() { return C<QTabWidget>("SSTab1"); }
    std::string Lista(const char* nome) { return DaQt(C<QComboBox>(nome)->currentText()); }
    void Spunta(const char* nome) {
        for (int i = 0; i < 2; ++i) {
            if (Schede()->widget(i)->isAncestorOf(C<QCheckBox>(nome))) Schede()->setCurrentIndex(i);
        }
        Clic(nome);
    }
    void Digita(const char* lista, const char* testo) {
        auto* campo = C<QComboBox>(lista)->lineEdit();
        campo->setFocus();
        campo->selectAll();
        QTest::keyClicks(campo, QString::fromLatin1(testo));
        Tasto(Qt::Key_Tab);
    }
    /// Presses a button that is answered by one warning.
    std::string Rifiuto(const char* pulsante) {
        macchina.Risposte = {Answer::Ok};
        Clic(pulsante);
        if (macchina.Mostrati.size() != 1) return "not one message";
        const prova::Box box = macchina.Mostrati[0];
        macchina.Mostrati.clear();
        EXPECT_EQ(box.Icona, Icon::Warning);
        EXPECT_EQ(box.Titolo, "Sensor settings");
        EXPECT_TRUE(finestra->isVisible());
        return box.Testo;
    }
};

TEST_F(Sensori, StoresAtOKWhatWasChosenAndTyped) {
    Apri();
    EXPECT_EQ(Schede()->tabText(1).remove(QLatin1Char('&')), QStringLiteral("Optional"));
    EXPECT_EQ(C<QComboBox>("cboPressione0")->count(), 3);
    EXPECT_EQ(C<QComboBox>("cboPressione0")->currentIndex(), 1);
    EXPECT_FALSE(Acceso("cboPressione1"));
    // Ticked after opening: the rate stays as it was.
    Spunta("chkAbilPB");
    EXPECT_TRUE(Acceso("cboPressione1"));
    EXPECT_FALSE(Acceso("cboTCampPB"));
    Spunta("chkAbilPO");
    EXPECT_FALSE(Acceso("cboPressione0"));
    EXPECT_TRUE(Acceso("cboTCampPO"));
    Spunta("chkAbilCambio");
    EXPECT_TRUE(Acceso("cboAltro0"));
    EXPECT_TRUE(Acceso("cboChannCambio"));

    EXPECT_EQ(Rifiuto("OKButton"), Dice(Voce::IncompletoPressioneBenzina) + kSenzaNome);
    EXPECT_EQ(Schede()->currentIndex(), 0) << "where the missing name is";
    EXPECT_TRUE(C<QComboBox>("cboPressione1")->hasFocus());
    // What is typed stays as it is typed, though entries begin with it.
    Digita("cboPressione1", "Press");
    Digita("cboTCampPO", "2");
    EXPECT_EQ(Rifiuto("OKButton"), Dice(Voce::IncompletoMarcia) + kSenzaNome);
    EXPECT_EQ(Schede()->currentIndex(), 1);
    QTest::keyClick(C<QComboBox>("cboAltro0"), Qt::Key_Down);
    EXPECT_EQ(Lista("cboAltro0"), "Cambio 6 marce");
    Schede()->setCurrentIndex(0);
    QTest::keyClick(C<QComboBox>("cboLAAL"), Qt::Key_End);
    Scrivi("txtDiametroRuota", "560,5");
    EXPECT_EQ(DatiProgetto.PressioneBenzina, "") << "nothing before OK";
    FaseComunicazione = 37;  // as the live view leaves it
    Tasto(Qt::Key_Return);
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(DatiProgetto.PressioneBenzina, "Press");
    EXPECT_EQ(DatiProgetto.TCampPO, "2");
    EXPECT_EQ(DatiProgetto.LAAL, 2);
    EXPECT_EQ(DatiProgetto.DiametroRuota, 560);
    Apri();
    EXPECT_TRUE(Acceso("cboTCampPB")) << "opened again, the rate can be chosen";
    EXPECT_EQ(Lista("cboPressione1"), "Press");
}

TEST_F(Sensori, RefusedInputsLeaveTheRestStored) {
    Collega();
    Apri();
    Spunta("chkAbilSensoreLambda");
    Digita("cboSensoreLambda", "Lambda 0-5 V");
    Spunta("chkAbilSG");
    EXPECT_EQ(Scritta("lblAvvisi"), "On the same input AN 2: G sensor and Lambda sensor");
    const std::string conflitto = Dice(Voce::StessoIngresso) + "\r\nG sensor, Lambda sensor: AN 2";
    EXPECT_EQ(Rifiuto("cmdInviaDati"), conflitto);
    EXPECT_FALSE(DatiProgetto.AbilSG);
    EXPECT_EQ(Rifiuto("OKButton"), conflitto);
    EXPECT_TRUE(C<QComboBox>("cboChannSensoreLambda")->hasFocus());
    EXPECT_TRUE(DatiProgetto.AbilSG);
    EXPECT_EQ(DatiProgetto.SensoreLambda, "Lambda 0-5 V");
    EXPECT_EQ(DatiProgetto.ChannSG, 1);
    EXPECT_FALSE(ProgettoModificato);
    Spunta("chkAbilPT");
    C<QComboBox>("cboChannSG")->setCurrentIndex(0);
    Digita("cboSensoreLambda", " ");
    C<QComboBox>("cboSensoreLambda")->clearEditText();
    EXPECT_EQ(Rifiuto("cmdInviaDati"), Dice(Voce::IncompletoLambda) + kSenzaNome);
    EXPECT_EQ(porta.RichiesteDi(22), 0u);
    Spunta("chkAbilSensoreLambda");
    Clic("OKButton");
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(DatiProgetto.ChannSG, 0);
    EXPECT_TRUE(ProgettoModificato);
}

TEST_F(Sensori, NumberBoxesAreNotLeftByWayOfTheTabs) {
    Collega();
    Apri();
    auto* linguette = Schede()->tabBar();
    auto* casella = C<QLineEdit>("txtDiametroRuota");
    const auto rifiutata = [&](const char* come, const char* testo, auto&& uscita) {
        Scrivi("txtDiametroRuota", testo);
        macchina.Risposte = {Answer::Ok};
        uscita();
        QCoreApplication::processEvents();
        EXPECT_EQ(Mostrati(), V{Dice(Voce::NumeroNonValido) + kDiametro}) << come;
        EXPECT_EQ(Schede()->currentIndex(), 0) << come;
        EXPECT_TRUE(casella->hasFocus()) << come;
        EXPECT_EQ(casella->text(), QString()) << come;
    };
    rifiutata("click", "abc", [&] {
        QTest::mouseClick(linguette, Qt::LeftButton, {}, linguette->tabRect(1).center());
    });
    rifiutata("Ctrl+Tab", "40000", [&] { Tasto(Qt::Key_Tab, Qt::ControlModifier); });
    rifiutata("letter of a tab", "", [&] { Tasto(Qt::Key_O, Qt::AltModifier); });
    rifiutata("letter of a frame", "x", [&] { Tasto(Qt::Key_T, Qt::AltModifier); });
    Scrivi("txtDiametroRuota", "x");
    QWheelEvent rotella(QPointF(9, 9), linguette->mapToGlobal(QPointF(9, 9)), {}, {0, -120}, {}, {},
                        Qt::NoScrollPhase, false);
    QApplication::sendEvent(linguette, &rotella);
    EXPECT_EQ(Schede()->currentIndex(), 0);
    Scrivi("txtDiametroRuota", "600");
    Tasto(Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(Schede()->currentIndex(), 1);
    Tasto(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(Schede()->currentIndex(), 0);
    Scrivi("txtImpulsiRuota", "");
    C<QPushButton>("CancelButton")->setFocus();
    EXPECT_EQ(Testo("txtImpulsiRuota"), "1");
    // By way of Cancel a box is left as it is; the buttons meet it all the same. Empty is stored
    // as 0, and not sent.
    for (const auto& [testo, pulsante] :
         {std::pair{"abc", "OKButton"}, {"abc", "cmdInviaDati"}, {" ", "cmdInviaDati"}}) {
        Scrivi("txtDiametroRuota", testo);
        C<QPushButton>("CancelButton")->setFocus();
        Schede()->setCurrentIndex(1);
        EXPECT_EQ(Rifiuto(pulsante), Dice(Voce::NumeroNonValido) + kDiametro);
        EXPECT_TRUE(casella->hasFocus()) << testo << pulsante;
        EXPECT_EQ(DaQt(casella->selectedText()), testo);
    }
    C<QPushButton>("CancelButton")->setFocus();
    Clic("OKButton");
    EXPECT_EQ(DatiProgetto.DiametroRuota, 0);
    EXPECT_EQ(Mostrati(), V{});
}

// The record, then nine curves; from the instrument everything comes back under its name.
TEST_F(Sensori, ProgramsAndReadsTheCurvesOneByOne) {
    Collega();
    Apri();
    Spunta("chkAbilTO");
    Digita("cboTemperaturaOlio0", "NTC olio M10");
    const auto esegue = [&](const char* pulsante, Voce primo, Voce CanaleSensore::*stato) {
        V attesi{"3:" + Dice(primo)};
        for (const CanaleSensore& canale : kCanaliSensore) {
            attesi.push_back("3:" + Dice(canale.*stato));
        }
        attesi.push_back("3:");
        principale.Storia.clear();
        macchina.Risposte = {Answer::Ok, Answer::Ok};
        Clic(pulsante);
        std::erase_if(principale.Storia, [](const auto& riga) { return !riga.starts_with("3:"); });
        EXPECT_EQ(principale.Storia, attesi);
        Mostrati();
    };
    const std::size_t prima = porta.Richieste().size();
    esegue("cmdInviaDati", Voce::ProgrammazioneSensori, &CanaleSensore::TestoInvio);
    EXPECT_EQ(Comandi(prima), (std::vector<int>{22, 24, 24, 24, 24, 24, 24, 24, 24, 24}));
    // The acceleration is off, and its curve goes out with the turbo's box: a curve that is not
    // flat.
    const std::string& g = apparecchio.Dati.Curva(8);
    EXPECT_NE(g.substr(g.size() - 40, 2), g.substr(g.size() - 2, 2));
    ValoriInizialiProgetto();
    Apri();
    esegue("cmdLeggiDati", Voce::LetturaIngressiSensori, &CanaleSensore::TestoLettura);
    EXPECT_FALSE(Acceso("cboTCampTO")) << "reading ticks as a click does";
    EXPECT_EQ(Lista("cboTemperaturaOlio0"), "NTC olio M10");
    EXPECT_EQ(Lista("cboPressione0"), "Pressione 0-7 bar");
    EXPECT_EQ(Lista("cboPressioneTurbo"), "Turbo -1 +3 bar");
    EXPECT_EQ(Lista("cboSG"), "Accelerometro 3 g");
    EXPECT_EQ(Lista("cboSensoreLambda"), "");
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "") << "nothing before OK";

    // A curve that no file holds any more takes its name away, and OK then refuses.
    std::erase_if(LibreriaSensori, [](const CSensore& s) { return s.Tipo() == "TemperaturaOlio"; });
    esegue("cmdLeggiDati", Voce::LetturaIngressiSensori, &CanaleSensore::TestoLettura);
    EXPECT_EQ(Rifiuto("OKButton"), Dice(Voce::IncompletoTemperaturaOlio) + kSenzaNome);
}

TEST_F(Sensori, AnExchangeThatStopsBetweenTheCurvesSaysWhy) {
    for (const int comando : {24, 25}) {
        const char* pulsante = comando == 24 ? "cmdInviaDati" : "cmdLeggiDati";
        Collega();
        Apri();
        Guasta("silent:" + std::to_string(comando) + ":3");
        const std::size_t prima = porta.RichiesteDi(comando);
        C<QComboBox>("cboPressione1")->setEditText(QStringLiteral("its own"));
        macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
        Clic(pulsante);
        EXPECT_EQ(porta.RichiesteDi(comando) - prima, 3u);
        EXPECT_EQ(Mostrati().back(), Dice(Voce::ErroreDiComunicazione));
        EXPECT_TRUE(finestra->isVisible());
        EXPECT_EQ(Lista("cboPressione1"), "its own") << "named by a curve that never came";
        // Closed behind the third curve; that of a reading is waited for in vain.
        Guasta("silent:25:3");
        macchina.Risposte = {Answer::Ok, Answer::Ok};
        macchina.DuranteEventi = [&] {
            if (FaseComunicazione == 0 || porta.RichiesteDi(comando) - prima < 6) return;
            finestra->close();
            EXPECT_EQ(FaseComunicazione, 0) << "at once";
        };
        Clic(pulsante);
        macchina.DuranteEventi = nullptr;
        Guasta("");
        EXPECT_EQ(porta.RichiesteDi(comando) - prima, 6u) << pulsante;
        EXPECT_EQ(Mostrati().size(), 2u) << "that it broke off, and no error";
        EXPECT_FALSE(collegamento().Abbandonato);
    }
}

TEST_F(Sensori, DamagedProjectsOpenAndGoOutAsOKWouldStoreThem) {
    R& r = DatiProgetto;
    r.LAPO = 7;
    r.ChannPT = 9;
    r.ChannCambio = -1;
    r.PressioneTurbo = "di nessun file";
    Collega();
    Apri();
    EXPECT_EQ(C<QComboBox>("cboLAPO")->currentIndex(), -1);
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    Clic("cmdInviaDati");
    const std::string& dati = apparecchio.Dati.Dati(Record::Sensori);
    EXPECT_EQ(dati[4], 0) << "oil pump";
    EXPECT_EQ(dati[14], 1) << "gear on the first input";
    EXPECT_EQ(dati[17], 1) << "turbo likewise";
    Clic("OKButton");
    EXPECT_EQ(r.LAPO + r.ChannPT, 0);
    EXPECT_EQ(r.PressioneTurbo, "di nessun file");
}

TEST_F(Sensori, BothTabsFitTheScreenAndEachFrameHasItsLetterAndItsOrder) {
    for (const CanaleSensore& canale : kCanaliSensore) DatiProgetto.*canale.Abil = true;
    StrumentoPresente = true;
    for (const int lingua : {0, 1}) {
        prova::CaricaTestiVeri(lingua);
        Apri();
        for (int scheda = 0; scheda < 2; ++scheda) {
            Schede()->setCurrentIndex(scheda);
            QCoreApplication::processEvents();
            SchermoIntero();
            const QWidget* pagina = Schede()->widget(scheda);
            for (const QGroupBox* cornice : pagina->findChildren<QGroupBox*>()) {
                EXPECT_TRUE(cornice->title().contains(QLatin1Char('&'))) << DaQt(cornice->title());
                // Tab goes through a frame from the top, each row from the left.
                QPoint prima(-1, -1);
                for (QWidget* w = cornice->nextInFocusChain(); w != cornice;
                     w = w->nextInFocusChain()) {
                    if (!cornice->isAncestorOf(w) || w->objectName().isEmpty()) continue;
                    if ((w->focusPolicy() & Qt::TabFocus) == 0) continue;
                    const QPoint qui = w->mapTo(cornice, w->rect().center());
                    EXPECT_TRUE(qui.y() > prima.y() + 9 || qui.x() > prima.x())
                        << DaQt(w->objectName());
                    EXPECT_GE(qui.y(), prima.y() - 9) << DaQt(w->objectName());
                    prima = qui;
                }
            }
        }
    }
}

}  // namespace
}  // namespace lapvane
