#include "sensors/frmSensori.h"

#include <QGroupBox>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QWheelEvent>
#include <set>

#include "instrument/Guasti.h"
#include "sensors/CSensore.h"
#include "sensors/EditorWindowProva.h"
#include "shell/TabelleNomi.h"
#include "support/Cartelle.h"

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
    bool Acceso(const char* nome) { return C<QWidget>(nome)->isEnabled(); }
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
    EXPECT_EQ(FormAttiva, finestra.get());
    EXPECT_EQ(Schede()->tabText(1).remove(QLatin1Char('&')), QStringLiteral("Optional"));
    EXPECT_FALSE(Acceso("cmdInviaDati"));
    EXPECT_FALSE(Acceso("cmdLeggiDati"));
    EXPECT_EQ(C<QComboBox>("cboPressione0")->count(), 3);
    EXPECT_EQ(C<QComboBox>("cboPressione0")->currentIndex(), 1);
    EXPECT_EQ(C<QComboBox>("cboLAPO")->count(), 3);
    EXPECT_TRUE(Acceso("cboTCampPO"));
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

    EXPECT_EQ(Rifiuto("OKButton"), lapvane::Testo(Voce::IncompletoPressioneBenzina) + kSenzaNome);
    EXPECT_EQ(Schede()->currentIndex(), 0) << "where the missing name is";
    EXPECT_TRUE(C<QComboBox>("cboPressione1")->hasFocus());
    // What is typed stays as it is typed, though entries begin with it.
    Digita("cboPressione1", "Press");
    Digita("cboTCampPO", "2");
    EXPECT_EQ(Rifiuto("OKButton"), lapvane::Testo(Voce::IncompletoMarcia) + kSenzaNome);
    EXPECT_EQ(Schede()->currentIndex(), 1);
    QTest::keyClick(C<QComboBox>("cboAltro0"), Qt::Key_Down);
    EXPECT_EQ(Lista("cboAltro0"), "Cambio 6 marce");
    Schede()->setCurrentIndex(0);
    Scrivi("txtDiametroRuota", "560,5");
    Clic("CancelButton");
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(FormAttiva, nullptr);
    EXPECT_EQ(DatiProgetto.PressioneBenzina, "");
    EXPECT_TRUE(DatiProgetto.AbilPO);
    EXPECT_FALSE(ProgettoModificato);

    Apri();
    Spunta("chkAbilPB");
    Digita("cboPressione1", "Press");
    Digita("cboTCampPO", "2");
    QTest::keyClick(C<QComboBox>("cboLAAL"), Qt::Key_End);
    Scrivi("txtDiametroRuota", "560,5");
    Tasto(Qt::Key_Return);
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_TRUE(ProgettoModificato);
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
    const std::string conflitto =
        lapvane::Testo(Voce::StessoIngresso) + "\r\nG sensor, Lambda sensor: AN 2";
    EXPECT_EQ(Rifiuto("cmdInviaDati"), conflitto);
    EXPECT_EQ(porta.RichiesteDi(22), 0u);
    EXPECT_FALSE(DatiProgetto.AbilSG);
    EXPECT_EQ(Rifiuto("OKButton"), conflitto);
    EXPECT_TRUE(C<QComboBox>("cboChannSensoreLambda")->hasFocus());
    EXPECT_TRUE(DatiProgetto.AbilSG);
    EXPECT_EQ(DatiProgetto.SensoreLambda, "Lambda 0-5 V");
    EXPECT_EQ(DatiProgetto.ChannSG, 1);
    EXPECT_FALSE(ProgettoModificato);
    Spunta("chkAbilPT");
    C<QComboBox>("cboChannSG")->setCurrentIndex(0);
    Clic("OKButton");
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(DatiProgetto.ChannSG, 0);
    EXPECT_TRUE(ProgettoModificato);
}

TEST_F(Sensori, NumberBoxesAreNotLeftByWayOfTheTabs) {
    Apri();
    auto* linguette = Schede()->tabBar();
    auto* casella = C<QLineEdit>("txtDiametroRuota");
    const auto rifiutata = [&](const char* come, const char* testo, auto&& uscita) {
        Scrivi("txtDiametroRuota", testo);
        macchina.Risposte = {Answer::Ok};
        uscita();
        QCoreApplication::processEvents();
        EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::NumeroNonValido) + kDiametro}) << come;
        EXPECT_EQ(Schede()->currentIndex(), 0) << come;
        EXPECT_TRUE(casella->hasFocus()) << come;
        EXPECT_EQ(casella->text(), QString()) << come;
    };
    const auto clic = [&] {
        QTest::mouseClick(linguette, Qt::LeftButton, {}, linguette->tabRect(1).center());
    };
    rifiutata("click", "abc", clic);
    rifiutata("emptied", "", clic);
    rifiutata("Ctrl+Tab", "40000", [&] { Tasto(Qt::Key_Tab, Qt::ControlModifier); });
    rifiutata("letter of a tab", "1.2.3", [&] { Tasto(Qt::Key_O, Qt::AltModifier); });
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
    Scrivi("txtDiametroRuota", "");
    C<QPushButton>("CancelButton")->setFocus();
    EXPECT_EQ(Testo("txtDiametroRuota"), "1") << "Cancel asks for no check";
    Scrivi("txtDiametroRuota", "abc");
    C<QPushButton>("CancelButton")->setFocus();
    Schede()->setCurrentIndex(1);
    const R prima = DatiProgetto;
    EXPECT_EQ(Rifiuto("OKButton"), lapvane::Testo(Voce::NumeroNonValido) + kDiametro);
    EXPECT_TRUE(casella->hasFocus());
    EXPECT_EQ(DatiProgetto.DiametroRuota, prima.DiametroRuota);
    EXPECT_EQ(Mostrati(), V{});
}

TEST_F(Sensori, ProgramsWhatItShowsAndReadsItBack) {
    Collega();
    Apri();
    Spunta("chkAbilTO");
    Digita("cboTemperaturaOlio0", "NTC olio M10");
    Scrivi("txtNumAccRPM", "3");
    macchina.Risposte = {Answer::Cancel};
    Clic("cmdInviaDati");
    EXPECT_EQ(macchina.Mostrati.at(0).Titolo, lapvane::Testo(Voce::DomandaProgrammaSensori));
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::StrumentoSovrascritto) + "\r\n" +
                            lapvane::Testo(Voce::Continuare)});
    EXPECT_EQ(porta.RichiesteDi(22), 0u);

    const std::size_t prima = porta.Richieste().size();
    principale.Storia.clear();
    std::set<std::int16_t> fasi;
    bool passati = false;
    bool freccia = false;
    macchina.DuranteEventi = [&] {
        fasi.insert(FaseComunicazione);
        freccia = freccia || macchina.Puntatori.back() != Pointer::Busy;
        // On a small screen the window covers the status bar.
        EXPECT_EQ(DaQt(C<QLabel>("lblProgresso")->text()), principale.Testo(Pannello::Progresso));
        passati = passati || Acceso("OKButton") || Acceso("cmdLeggiDati") || Acceso("cboSG");
    };
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    Clic("cmdInviaDati");
    EXPECT_EQ(fasi, std::set<std::int16_t>{22});
    EXPECT_FALSE(passati);
    EXPECT_FALSE(freccia) << "the hourglass from the first record to the last";
    V stati{"3:" + lapvane::Testo(Voce::ProgrammazioneSensori)};
    for (const Voce n :
         {Voce::InvioCurvaTemperaturaOlio, Voce::InvioCurvaPressioneOlio,
          Voce::InvioCurvaPressioneBenzina, Voce::InvioCurvaTemperaturaAcqua,
          Voce::InvioCurvaLivelloBenzina, Voce::InvioCurvaMarcia, Voce::InvioCurvaLambda,
          Voce::InvioCurvaPressioneTurbo, Voce::InvioCurvaSensoreG}) {
        stati.push_back("3:" + lapvane::Testo(n));
    }
    stati.push_back("3:");
    const auto passi = [&] {
        V soli;
        for (const std::string& riga : principale.Storia) {
            if (riga.starts_with("3:")) soli.push_back(riga);
        }
        return soli;
    };
    EXPECT_EQ(passi(), stati);
    EXPECT_EQ(macchina.Mostrati.back().Titolo, "lapvane");
    EXPECT_EQ(Mostrati().back(), lapvane::Testo(Voce::SensoriTrasmessi));
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_TRUE(Acceso("OKButton"));
    EXPECT_TRUE(Acceso("cmdLeggiDati"));
    EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    ASSERT_EQ(porta.Richieste().size() - prima, 10u);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(porta.Richieste()[prima + 1 + i].substr(0, 3),
                  (std::string{'H', 24, static_cast<char>(i)}));
    }
    EXPECT_EQ(apparecchio.Dati.Dati(Record::Sensori)[0], 3);
    // The acceleration is off, and its curve goes out with the turbo's box: a curve that is not
    // flat.
    const std::string& g = apparecchio.Dati.Curva(8);
    EXPECT_NE(g.substr(g.size() - 40, 2), g.substr(g.size() - 2, 2));
    EXPECT_EQ(DatiProgetto.NumAccRPM, 1);
    EXPECT_FALSE(DatiProgetto.AbilTO);
    finestra->close();

    // From a new project: everything comes from the instrument, and nothing is stored before OK.
    ValoriInizialiProgetto();
    Apri();
    principale.Storia.clear();
    fasi.clear();
    passati = false;
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    Clic("cmdLeggiDati");
    macchina.DuranteEventi = nullptr;
    EXPECT_EQ(fasi, std::set<std::int16_t>{23});
    EXPECT_FALSE(passati);
    EXPECT_EQ(macchina.Mostrati.at(0).Titolo, lapvane::Testo(Voce::DomandaLeggiSensori));
    EXPECT_EQ(macchina.Mostrati.at(1).Titolo, "Sensor settings");
    EXPECT_EQ(Mostrati(),
              (V{lapvane::Testo(Voce::DatiSostituiti) + "\r\n" + lapvane::Testo(Voce::Continuare),
                 lapvane::Testo(Voce::SensoriLetti)}));
    stati = {"3:" + lapvane::Testo(Voce::LetturaIngressiSensori)};
    for (const Voce n :
         {Voce::LetturaCurvaTemperaturaOlio, Voce::LetturaCurvaPressioneOlio,
          Voce::LetturaCurvaPressioneBenzina, Voce::LetturaCurvaTemperaturaAcqua,
          Voce::LetturaCurvaLivelloBenzina, Voce::LetturaCurvaMarcia, Voce::LetturaCurvaLambda,
          Voce::LetturaCurvaPressioneTurbo, Voce::LetturaCurvaSensoreG}) {
        stati.push_back("3:" + lapvane::Testo(n));
    }
    stati.push_back("3:");
    EXPECT_EQ(passi(), stati);
    EXPECT_EQ(Testo("txtNumAccRPM"), "3");
    EXPECT_TRUE(Acceso("cboTemperaturaOlio0"));
    EXPECT_FALSE(Acceso("cboTCampTO")) << "reading ticks as a click does";
    EXPECT_EQ(Lista("cboTemperaturaOlio0"), "NTC olio M10");
    EXPECT_EQ(Lista("cboPressione0"), "Pressione 0-7 bar");
    EXPECT_EQ(Lista("cboPressioneTurbo"), "Turbo -1 +3 bar");
    EXPECT_EQ(Lista("cboSG"), "Accelerometro 3 g");
    EXPECT_EQ(Lista("cboSensoreLambda"), "");
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "");
    EXPECT_FALSE(ProgettoModificato);
    Clic("OKButton");
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "NTC olio M10");
    EXPECT_EQ(DatiProgetto.NumAccRPM, 3);
    EXPECT_TRUE(DatiProgetto.AbilPT);

    // A curve that no file holds any more takes its name away, and OK then refuses.
    std::erase_if(LibreriaSensori, [](const CSensore& s) { return s.Tipo() == "TemperaturaOlio"; });
    Apri();
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    Clic("cmdLeggiDati");
    Mostrati();
    EXPECT_EQ(Lista("cboTemperaturaOlio0"), "");
    EXPECT_EQ(Rifiuto("OKButton"), lapvane::Testo(Voce::IncompletoTemperaturaOlio) + kSenzaNome);
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "NTC olio M10");
}

TEST_F(Sensori, AnExchangeThatStopsSaysWhy) {
    Collega();
    struct Caso {
        const char* Pulsante;
        int Comando;
        Voce Chiusa;
    };
    for (const auto& [pulsante, comando, chiusa] :
         {Caso{"cmdInviaDati", 24, Voce::ProgrammazioneInterrotta},
          Caso{"cmdLeggiDati", 25, Voce::LetturaInterrotta}}) {
        // Closed: at the block of the inputs, between the curves, at the last one. The third curve
        // of a reading is one that is waited for in vain.
        for (const std::size_t curve : {0u, 3u, 9u}) {
            Apri();
            if (comando == 25 && curve == 3) {
                apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("silent:25:3"));
            }
            const std::size_t prima = porta.RichiesteDi(comando);
            macchina.Risposte = {Answer::Ok, Answer::Ok};
            macchina.DuranteEventi = [&, comando = comando] {
                if (FaseComunicazione == 0 || porta.RichiesteDi(comando) - prima < curve) return;
                if (!finestra->isVisible()) return;
                finestra->close();
                EXPECT_EQ(FaseComunicazione, 0) << "at once";
                const std::size_t richieste = porta.Richieste().size();
                tmrComm_Timer();  // but no poll inside the wait that has not returned yet
                EXPECT_EQ(porta.Richieste().size(), richieste);
            };
            Clic(pulsante);
            macchina.DuranteEventi = nullptr;
            apparecchio.Difetti.Togli();
            EXPECT_EQ(porta.RichiesteDi(comando) - prima, curve) << pulsante;
            ASSERT_EQ(macchina.Mostrati.size(), 2u) << pulsante << curve;
            EXPECT_EQ(macchina.Mostrati[1].Icona, Icon::Information);
            EXPECT_EQ(macchina.Mostrati[1].Titolo, "lapvane");
            EXPECT_EQ(Mostrati()[1], lapvane::Testo(chiusa));
            EXPECT_EQ(FaseComunicazione, 0);
            EXPECT_FALSE(collegamento().Abbandonato);
            EXPECT_EQ(FormAttiva, nullptr);
            EXPECT_EQ(principale.Testo(Pannello::Progresso), "");
            EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
        }
        // The third curve is not answered; then the cable is out.
        Apri();
        apparecchio.Difetti.Aggiungi(
            strumento::LeggiGuasto("silent:" + std::to_string(comando) + ":3"));
        const std::size_t prima = porta.RichiesteDi(comando);
        const std::string terza = Lista("cboPressione1");
        macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
        Clic(pulsante);
        EXPECT_EQ(porta.RichiesteDi(comando) - prima, 3u);
        EXPECT_EQ(macchina.Mostrati.back().Titolo, "lapvane");
        EXPECT_EQ(
            Mostrati(),
            (V{lapvane::Testo(comando == 24 ? Voce::StrumentoSovrascritto : Voce::DatiSostituiti) +
                   "\r\n" + lapvane::Testo(Voce::Continuare),
               lapvane::Testo(Voce::StrumentoNonRisponde),
               lapvane::Testo(Voce::ErroreDiComunicazione)}));
        EXPECT_TRUE(finestra->isVisible());
        EXPECT_TRUE(Acceso("OKButton"));
        EXPECT_EQ(Lista("cboPressione1"), terza);
        apparecchio.Difetti.Togli();
        porta.Sparisci();
        macchina.Risposte = {Answer::Ok, Answer::Ok};
        Clic(pulsante);
        EXPECT_EQ(Mostrati().back(), lapvane::Testo(Voce::ErroreDiComunicazione));
        EXPECT_EQ(FaseComunicazione, 0);
        porta.Riappari();
        finestra->close();
        Collega();
    }
}

TEST_F(Sensori, TheWindowGivesThePollThePortBackHoweverItCloses) {
    for (const Qt::Key tasto : {Qt::Key_Escape, Qt::Key_Return}) {
        DatiProgetto.AbilPT = DatiProgetto.AbilPO = false;
        Apri();
        FaseComunicazione = 37;  // as the live view leaves it
        Tasto(tasto);
        EXPECT_FALSE(finestra->isVisible());
        EXPECT_EQ(FaseComunicazione, 0);
    }
}

TEST_F(Sensori, WhatIsAskedForDuringAPollComesBehindItAndOnce) {
    Collega();
    Apri();
    principale.PollAttivo = true;
    Clic("cmdLeggiDati");
    Clic("OKButton");
    Clic("cmdLeggiDati");
    EXPECT_TRUE(macchina.Mostrati.empty()) << "a handler ran inside the wait";
    EXPECT_TRUE(finestra->isVisible());
    macchina.Risposte = {Answer::Cancel};
    principale.FinePoll();
    EXPECT_EQ(Mostrati().size(), 1u) << "the second click asked for the same";
    EXPECT_FALSE(finestra->isVisible()) << "OK was lost";
}

TEST_F(Sensori, DamagedProjectsOpenAndGoOutAsOKWouldStoreThem) {
    R& r = DatiProgetto;
    r.LAPO = 7;
    r.LAAL = -2;
    r.ChannPT = 9;
    r.ChannCambio = -1;
    r.PressioneTurbo = "di nessun file";
    r.TCampVV = "molto spesso";
    r.DiametroRuota = -32768;
    Collega();
    Apri();
    for (const char* lista : {"cboLAPO", "cboLAAL", "cboChannPT", "cboChannCambio"}) {
        EXPECT_EQ(C<QComboBox>(lista)->currentIndex(), -1) << lista;
    }
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    Clic("cmdInviaDati");
    EXPECT_EQ(Mostrati().back(), lapvane::Testo(Voce::SensoriTrasmessi));
    const std::string& dati = apparecchio.Dati.Dati(Record::Sensori);
    EXPECT_EQ(dati.substr(4, 2), std::string(2, '\0')) << "oil pump and alternator";
    EXPECT_EQ(dati[14], 1) << "gear on the first input";
    EXPECT_EQ(dati[17], 1) << "turbo likewise";
    EXPECT_EQ(r.LAPO, 7);
    Clic("OKButton");
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(r.LAPO, 0);
    EXPECT_EQ(r.LAAL, 0);
    EXPECT_EQ(r.ChannPT, 0);
    EXPECT_EQ(r.PressioneTurbo, "di nessun file");
    EXPECT_EQ(r.TCampVV, "molto spesso");
    EXPECT_EQ(r.DiametroRuota, -32768);
}

TEST_F(Sensori, FitsTheScreenAndTabFollowsTheEye) {
    for (bool R::*abil : {&R::AbilTO, &R::AbilTA, &R::AbilPB, &R::AbilLB, &R::AbilCambio,
                          &R::AbilSG, &R::AbilSensoreLambda}) {
        DatiProgetto.*abil = true;
    }
    StrumentoPresente = true;
    for (const int lingua : {0, 1}) {
        prova::CaricaTestiVeri(lingua);
        Apri();
        for (int scheda = 0; scheda < 2; ++scheda) {
            Schede()->setCurrentIndex(scheda);
            QCoreApplication::processEvents();
            SchermoIntero();
            for (const QGroupBox* cornice : Schede()->widget(scheda)->findChildren<QGroupBox*>()) {
                EXPECT_TRUE(cornice->title().contains(QLatin1Char('&'))) << DaQt(cornice->title());
            }
        }
        // Down a column, then down the next; on the optional tab row by row.
        for (int scheda = 0; scheda < 2; ++scheda) {
            Schede()->setCurrentIndex(scheda);
            C<QWidget>(scheda == 0 ? "txtNumAccRPM" : "chkAbilSG")->setFocus();
            const QWidget* pagina = Schede()->widget(scheda);
            QPoint prima(-1, -1);
            int fermate = 0, colonne = 0;
            const QWidget* cornice = nullptr;
            while (pagina->isAncestorOf(QApplication::focusWidget()) && fermate < 40) {
                const QWidget* qui = QApplication::focusWidget();
                const QPoint dove = qui->mapTo(pagina, QPoint(0, qui->height() / 2));
                if (qui->parentWidget() == cornice) {
                    EXPECT_GT(dove.y() + dove.x(), prima.y() + prima.x());
                    EXPECT_GE(dove.y(), prima.y() - 4) << DaQt(qui->objectName());
                } else if (dove.y() < prima.y()) {
                    ++colonne;
                }
                cornice = qui->parentWidget();
                prima = dove;
                ++fermate;
                Tasto(Qt::Key_Tab);
            }
            EXPECT_EQ(fermate, scheda == 0 ? 22 : 16);
            EXPECT_EQ(colonne, scheda == 0 ? 1 : 2);
            EXPECT_EQ(DaQt(QApplication::focusWidget()->objectName()), "cmdInviaDati");
        }
    }
}

}  // namespace
}  // namespace lapvane
