#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

#include "sensors/Curve.h"
#include "sensors/EditorWindowProva.h"
#include "sensors/FileSensore.h"
#include "sensors/frmImpostaSensore.h"
#include "support/Cartelle.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;

class ImpostaSensore : public prova::EditorWindowProva<frmImpostaSensore> {
 protected:
    ImpostaSensore() {
        fs::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
        CaricaLibreriaSensori();
    }
    static std::string N(const char* nome, int i) { return nome + std::to_string(i); }
    void Opzione(const std::string& nome) {
        QTest::mouseClick(C<QRadioButton>(nome), Qt::LeftButton, {}, QPoint(8, 8));
    }
    /// Chooses an entry of a list by keys.
    void Scegli(const std::string& nome, int indice) {
        auto* lista = C<QComboBox>(nome);
        lista->setFocus();
        while (lista->currentIndex() < indice) QTest::keyClick(lista, Qt::Key_Down);
        while (lista->currentIndex() > indice) QTest::keyClick(lista, Qt::Key_Up);
    }
    bool Spuntata(int i) { return C<QCheckBox>(N("Check1", i))->isChecked(); }
    int Spuntate() {
        int n = 0;
        for (int i = 0; i < 20; ++i) n += Spuntata(i);
        return n;
    }
    V Voci(const std::string& nome) {
        V voci;
        auto* lista = C<QComboBox>(nome);
        for (int i = 0; i < lista->count(); ++i) voci.push_back(DaQt(lista->itemText(i)));
        return voci;
    }
    std::string TestoDi(const std::string& nome) { return DaQt(C<QComboBox>(nome)->currentText()); }
    std::string Scritta(const std::string& nome) { return DaQt(C<QLabel>(nome)->text()); }
    std::string Titolo() { return DaQt(finestra->windowTitle()); }
    bool Acceso(const std::string& nome) { return C<QWidget>(nome)->isEnabled(); }
    /// Ticks the next row and types its point, by keys alone.
    void Punto(int i, const std::string& x, const std::string& y) {
        C<QCheckBox>(N("Check1", i))->setFocus();
        Tasto(Qt::Key_Space);
        Tasto(Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), InQt(x));
        Tasto(Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), InQt(y));
        Tasto(Qt::Key_Tab);
    }
};

TEST_F(ImpostaSensore, EachTypeHasItsSensorsAndCaptions) {
    Apri();
    EXPECT_EQ(FormAttiva, finestra.get());
    EXPECT_EQ(Titolo(), lapvane::Testo(Voce::TitoloLibreriaSensori));
    EXPECT_EQ(C<QComboBox>("cboTipiSensore")->currentIndex(), 0);
    EXPECT_EQ(Voci("cboTipiSensore").size(), 9u);
    EXPECT_FALSE(Acceso("cmdLeggiSensoreStrumento"));
    EXPECT_EQ(C<GraficoWidget>("GraficoSensore")->LeggiIntervallo().XMax, 1.0);
    struct Caso {
        const char *Opzione, *X, *Y;
        V Sensori;
    };
    const std::vector<Caso> casi = {
        {"optSensoreLambda", "mV", "A/F", {"Lambda 0-5 V"}},
        {"optSensoreG", "mV", "G", {"Accelerometro 3 g"}},
        {"optAltro", "Bit", "Y ( )", {"Cambio 6 marce"}},
        {"optLivelloBenzina", "Bit", "Y", {"Serbatoio 45 litri", "Serbatoio 60 litri"}},
        {"optPressioneTurbo", "mV", "Y (bar)", {"Turbo -1 +3 bar", "Turbo 0-4 bar assoluta"}},
        {"optPressione",
         "Bit",
         "Y (bar)",
         {"Pressione 0-10 bar", "Pressione 0-7 bar", "Pressione 150 psi"}},
        {"optTemperaturaAcqua",
         "Bit",
         "Y (\xB0"
         "C)",
         {"NTC acqua M10", "NTC acqua M14"}},
        {"optTemperaturaOlio",
         "Bit",
         "Y (\xB0"
         "C)",
         {"NTC olio M10", "NTC olio M12 rapida"}}};
    for (const Caso& caso : casi) {
        Scrivi("txtNomeNuovo", "x");
        Opzione(caso.Opzione);
        EXPECT_EQ(Voci("cboListaSensori"), caso.Sensori);
        EXPECT_EQ(TestoDi("cboListaSensori"), "");
        EXPECT_EQ(Scritta("lblX"), caso.X);
        EXPECT_EQ(Scritta("lblY"), caso.Y);
        EXPECT_EQ(Testo("txtNomeNuovo"), "");
        EXPECT_EQ(C<QPushButton>("cmdCalibrazione")->isVisible(),
                  std::string(caso.Opzione) == "optLivelloBenzina");
    }
    const std::array<const char*, 9> opzioni = {
        "optTemperaturaOlio",  "optPressione",      "optPressione",
        "optTemperaturaAcqua", "optLivelloBenzina", "optAltro",
        "optSensoreLambda",    "optPressioneTurbo", "optSensoreG"};
    for (const int i : {1, 2, 3, 4, 5, 6, 7, 8, 0}) {
        Scegli("cboTipiSensore", i);
        EXPECT_TRUE(C<QRadioButton>(opzioni[static_cast<std::size_t>(i)])->isChecked()) << i;
        EXPECT_TRUE(Acceso("cmdLeggiSensoreStrumento")) << "whether or not it is there";
    }
    // Between the two pressures the list stays and the table goes.
    Scegli("cboTipiSensore", 1);
    Scegli("cboListaSensori", 1);
    EXPECT_EQ(Spuntate(), 20);
    Scegli("cboTipiSensore", 2);
    EXPECT_EQ(Spuntate(), 0);
    EXPECT_EQ(TestoDi("cboListaSensori"), "Pressione 0-7 bar");
    QTest::keyClicks(C<QComboBox>("cboTipiSensore"), QStringLiteral("x"));
    EXPECT_EQ(TestoDi("cboTipiSensore"), "");
    EXPECT_EQ(C<QComboBox>("cboTipiSensore")->currentIndex(), -1);
    EXPECT_FALSE(Acceso("cmdLeggiSensoreStrumento"));
    Tasto(Qt::Key_Escape);
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(FormAttiva, nullptr);
}

TEST_F(ImpostaSensore, ASensorIsTypedSavedAndLoadedByKeys) {
    Apri();
    Opzione("optPressione");
    Clic("cmdNuovoSensore");
    EXPECT_EQ(Titolo(), "Sensor: new");
    Punto(0, "52", "0");
    Punto(1, "243", "1,5");
    Punto(2, "500", "3.25");
    EXPECT_EQ(Testo("txtY0"), "0.000");
    EXPECT_EQ(Testo("txtY1"), "1.500");
    EXPECT_TRUE(C<QCheckBox>("Check13")->hasFocus()) << "the next row is the next stop";
    Clic("Check10");
    EXPECT_TRUE(Spuntata(0));
    Clic("cmdDisegnaCurva");
    const IntervalloGrafico curva = C<GraficoWidget>("GraficoSensore")->LeggiIntervallo();
    EXPECT_EQ(curva.XMax, 500.0);
    EXPECT_EQ(curva.YMax, 3.25);
    EXPECT_EQ(curva.XMin, 0.0);
    macchina.Risposte = {Answer::Ok};
    Clic("cmdSalvaSensore");
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::InserireNomeSensore)});
    macchina.Risposte = {Answer::Ok};
    Scrivi("txtNomeNuovo", "no/name");
    Clic("cmdSalvaSensore");
    EXPECT_EQ(Mostrati().size(), 1u);
    EXPECT_EQ(Spuntate(), 3);
    EXPECT_EQ(Testo("txtNomeNuovo"), "no/name");
    Scrivi("txtNomeNuovo", "Mio");
    C<QPushButton>("cmdSalvaSensore")->setFocus();
    Tasto(Qt::Key_Return);
    EXPECT_EQ(Spuntate(), 0) << "saved, and to be chosen from the list to be seen";
    EXPECT_EQ(Testo("txtNomeNuovo"), "");
    EXPECT_EQ(Titolo(), lapvane::Testo(Voce::TitoloLibreriaSensori));
    EXPECT_EQ(Mostrati(), V{});
    ASSERT_EQ(Voci("cboListaSensori").front(), "Mio");
    Scegli("cboListaSensori", 0);
    EXPECT_EQ(Spuntate(), 20);
    EXPECT_EQ(Titolo(), "Sensor: Mio");
    EXPECT_EQ(Testo("txtNomeNuovo"), "Mio");
    EXPECT_EQ(Testo("txtX19"), "500");
    EXPECT_EQ(Testo("txtY19"), "3.250");

    // A letter in the list begins a new sensor, and the name stays.
    QTest::keyClicks(C<QComboBox>("cboListaSensori"), QStringLiteral("M"));
    EXPECT_EQ(TestoDi("cboListaSensori"), "");
    EXPECT_EQ(Titolo(), "Sensor: new");
    EXPECT_EQ(Spuntate(), 0);
    EXPECT_EQ(Testo("txtNomeNuovo"), "Mio");
    Punto(0, "1", "1");
    macchina.Risposte = {Answer::Cancel};
    Clic("cmdSalvaSensore");
    EXPECT_EQ(Mostrati().size(), 1u);
    EXPECT_EQ(Spuntate(), 1) << "nothing is lost when the question is declined";

    Opzione("optAltro");
    Punto(0, "1", "1,5");
    EXPECT_EQ(Testo("txtY0"), "1.5");
}

TEST_F(ImpostaSensore, TheCurveFollowsEachBoxWithItsPointsMarkedInsideTheFrame) {
    Apri();
    Opzione("optAltro");
    Punto(0, "0", "0");
    Punto(1, "100", "10");
    auto* grafico = static_cast<GraficoWidget*>(C<QWidget>("GraficoSensore"));
    Scrivi("txtX1", "200");
    EXPECT_EQ(grafico->LeggiIntervallo().XMax, 100.0);
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(grafico->LeggiIntervallo().XMax, 200.0);
    Scrivi("txtY1", "40");
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(grafico->LeggiIntervallo().YMax, 40.0);

    const QImage foto = grafico->Fotografa(1.0);
    const QRect area = grafico->AreaDisegno().toAlignedRect();
    const auto rosso = [&](int x, int y) {
        const QColor c = foto.pixelColor(x, y);
        return c.red() > 150 && c.green() < 90 && c.blue() < 90;
    };
    QRect preso;
    for (int y = 0; y < foto.height(); ++y) {
        for (int x = 0; x < foto.width(); ++x) {
            if (rosso(x, y)) preso |= QRect(x, y, 1, 1);
        }
    }
    ASSERT_FALSE(preso.isEmpty());
    EXPECT_TRUE(area.adjusted(4, 4, -4, -4).contains(preso));
    // The mark of the first point, three pixels round its middle.
    const int x0 = preso.left() + 3, y0 = preso.bottom() - 3;
    for (const QPoint& d : {QPoint(-2, 0), QPoint(2, 0), QPoint(0, -2), QPoint(0, 2)}) {
        EXPECT_TRUE(rosso(x0 + d.x(), y0 + d.y())) << d.x() << " " << d.y();
    }
}

TEST_F(ImpostaSensore, WrongNumbersAndFallingValuesAreRefused) {
    Apri();
    Opzione("optPressione");
    Punto(0, "100", "1");
    Punto(1, "100", "2");
    C<QCheckBox>("Check12")->setFocus();
    Tasto(Qt::Key_Space);
    for (const char* testo : {"abc", "32768", ""}) {
        macchina.Risposte = {Answer::Ok};
        Scrivi("txtX2", testo);
        Tasto(Qt::Key_Tab);
        EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::NumeroNonValido) + "\r\nBit 3"}) << testo;
        EXPECT_TRUE(C<QLineEdit>("txtX2")->hasFocus());
    }
    const V crescente = {"Il valore di bit deve essere crescente"};
    macchina.Risposte = {Answer::Ok};
    QTest::keyClicks(C<QLineEdit>("txtX2"), QStringLiteral("90"));
    Tasto(Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(Mostrati(), crescente);
    EXPECT_EQ(Testo("txtX2"), "");
    EXPECT_FALSE(Spuntata(2));
    EXPECT_TRUE(Acceso("txtX2"));
    EXPECT_FALSE(Acceso("Check13"));
    // The focus is not in a box that would not let go.
    EXPECT_TRUE(C<QCheckBox>("Check12")->hasFocus());
    Tasto(Qt::Key_Backtab);
    EXPECT_EQ(Mostrati(), V{});
    Scrivi("txtY2", "3");

    // A row in the middle keeps its tick. The click that left the box does nothing more.
    Scrivi("txtNomeNuovo", "Cala");
    for (const bool clic : {true, false}) {
        Scrivi("txtX2", "110");
        if (!Spuntata(2)) Clic("Check12");
        Scrivi("txtX1", "90");
        macchina.Risposte = {Answer::Ok};
        if (clic) {
            Clic("cmdSalvaSensore");
        } else {
            Tasto(Qt::Key_S, Qt::AltModifier);
            QTest::qWait(150);
        }
        EXPECT_EQ(Mostrati(), crescente) << clic;
        EXPECT_EQ(Testo("txtX1"), "") << clic;
        EXPECT_TRUE(Spuntata(1)) << clic;
        EXPECT_EQ(CercaSensore("Cala"), nullptr) << clic;
        EXPECT_FALSE(C<QPushButton>("cmdSalvaSensore")->isDown());
        EXPECT_EQ(Testo("txtNomeNuovo"), "Cala");
        Scrivi("txtX1", "105");
    }
    // Its own tick, clicked, does not come back either.
    Scrivi("txtX2", "50");
    macchina.Risposte = {Answer::Ok};
    Clic("Check12");
    QCoreApplication::processEvents();
    EXPECT_EQ(Mostrati(), crescente);
    EXPECT_FALSE(Spuntata(2));

    Opzione("optLivelloBenzina");
    Punto(0, "900", "1");
    Punto(1, "100", "2");
    EXPECT_EQ(Spuntate(), 2);
    // Cancel is a way out of everything.
    Opzione("optPressione");
    Punto(0, "900", "1");
    C<QCheckBox>("Check11")->setFocus();
    Tasto(Qt::Key_Space);
    for (const char* testo : {"1", "abc"}) {
        Scrivi("txtX1", testo);
        Clic("CancelButton");
        EXPECT_FALSE(finestra->isVisible());
        QCoreApplication::processEvents();
        finestra->show();
        Attiva(*finestra);
    }
    EXPECT_EQ(Mostrati(), V{});
}

TEST_F(ImpostaSensore, ReadsACurveFromTheInstrument) {
    Collega();
    Apri();
    EXPECT_TRUE(Acceso("cmdLeggiSensoreStrumento"));
    Scegli("cboTipiSensore", 1);
    CurvaX.fill(0);
    CurvaY.fill(0);
    std::int16_t fase = 0;
    macchina.DuranteEventi = [&] {
        fase = FaseComunicazione;
        EXPECT_FALSE(Acceso("cmdSalvaSensore"));
    };
    principale.Storia.clear();
    Clic("cmdLeggiSensoreStrumento");
    macchina.DuranteEventi = nullptr;
    EXPECT_EQ(fase, 25);
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(principale.Storia, (V{"3:" + lapvane::Testo(Voce::LetturaCurvaSensore), "3:"}));
    EXPECT_EQ(Spuntate(), 20);
    EXPECT_EQ(CurvaX[19], 1023.0);
    EXPECT_EQ(Testo("txtX19"), "1023");
    const std::string alto = Testo("txtY19");
    EXPECT_EQ(alto.size() - alto.find('.'), 4u) << alto;
    const double bar = CurvaY[19];
    EXPECT_EQ(std::stod(alto), bar);
    EXPECT_EQ(porta.Richieste().back().substr(0, 3), "H\x19\x01");

    // The option clicked afterwards gives the factor, the list still the channel.
    Opzione("optAltro");
    Clic("cmdLeggiSensoreStrumento");
    EXPECT_EQ(porta.Richieste().back().substr(0, 3), "H\x19\x01");
    EXPECT_EQ(std::stod(Testo("txtY19")), bar * 1000);

    // A read that fails shows what the arrays hold.
    Opzione("optPressione");
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("drop:25"));
    macchina.Risposte = {Answer::Ok};
    Clic("cmdLeggiSensoreStrumento");
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::StrumentoNonRisponde)});
    EXPECT_EQ(Spuntate(), 20);
    EXPECT_EQ(std::stod(Testo("txtY19")), bar);
    EXPECT_TRUE(C<QPushButton>("cmdLeggiSensoreStrumento")->hasFocus());

    // The port that vanishes is no reason to wait, and a window that closes says nothing.
    porta.SparisciAlFrame = porta.Richieste().size() + 1;
    macchina.Risposte = {Answer::Ok};
    Clic("cmdLeggiSensoreStrumento");
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::StrumentoNonRisponde)});
    porta.Riappari();
    porta.SparisciAlFrame = 0;
    int giri = 0;
    macchina.DuranteEventi = [&] {
        if (FaseComunicazione == 25 && porta.RichiesteDi(25) > 0 && ++giri == 3) finestra->close();
    };
    Clic("cmdLeggiSensoreStrumento");
    macchina.DuranteEventi = nullptr;
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_LT(giri, 10) << "the waits gave up";
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_FALSE(collegamento().Abbandonato);
    EXPECT_EQ(FormAttiva, nullptr);
}

TEST_F(ImpostaSensore, FitsItsScreenAndItsWords) {
    for (const int lingua : {0, 1}) {
        IndiceLingua = lingua;
        Apri();
        Opzione("optLivelloBenzina");
        EXPECT_LE(finestra->width(), 1340);
        EXPECT_LE(finestra->height(), 700);
        for (const auto* pulsante : finestra->findChildren<QAbstractButton*>()) {
            if (!pulsante->isVisible()) continue;
            EXPECT_LE(pulsante->sizeHint().width(), pulsante->width())
                << DaQt(pulsante->objectName());
        }
        for (const auto* etichetta : finestra->findChildren<QLabel*>()) {
            EXPECT_LE(etichetta->sizeHint().width(), etichetta->width())
                << DaQt(etichetta->objectName());
        }
        for (int i = 0; i < 19; ++i) {
            EXPECT_GT(C<QWidget>(N("txtX", i + 1))->y(),
                      C<QWidget>(N("txtX", i))->geometry().bottom());
        }
    }
}

}  // namespace
}  // namespace lapvane
