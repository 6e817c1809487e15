#include <QComboBox>
#include <QRadioButton>

#include "sensors/Curve.h"
#include "sensors/EditorWindowProva.h"
#include "sensors/FileSensore.h"
#include "sensors/frmImpostaSensore.h"

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
    std::string Titolo() { return DaQt(finestra->windowTitle()); }
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
    EXPECT_EQ(Titolo(), Dice(Voce::TitoloLibreriaSensori));
    EXPECT_EQ(C<QComboBox>("cboTipiSensore")->currentIndex(), 0);
    EXPECT_EQ(Voci("cboTipiSensore").size(), 9u);
    EXPECT_FALSE(Acceso("cmdLeggiSensoreStrumento"));
    EXPECT_FALSE(Acceso("cmdCalibrazione"));
    for (auto tipo = kTipiSensore.rbegin(); tipo != kTipiSensore.rend(); ++tipo) {
        Scrivi("txtNomeNuovo", "x");
        Opzione("opt" + std::string(tipo->Tipo));
        EXPECT_EQ(Voci("cboListaSensori"), NomiSensori(tipo->Tipo));
        EXPECT_EQ(TestoDi("cboListaSensori"), "");
        EXPECT_EQ(Scritta("lblX"), tipo->EtichettaX);
        EXPECT_EQ(Scritta("lblY"), tipo->EtichettaY);
        EXPECT_EQ(DaQt(C<QLineEdit>("txtY0")->accessibleName()),
                  std::string(tipo->EtichettaY) + " 1");
        EXPECT_EQ(Testo("txtNomeNuovo"), "");
        EXPECT_EQ(C<QPushButton>("cmdCalibrazione")->isVisible(), tipo->Tipo == "LivelloBenzina");
    }
    SchermoIntero();
    for (const int i : {1, 2, 3, 4, 5, 6, 7, 8, 0}) {
        Scegli("cboTipiSensore", i);
        const auto canale = static_cast<std::size_t>(i);
        EXPECT_TRUE(
            C<QRadioButton>("opt" + std::string(kCanaliSensore[canale].Sensore->Tipo))->isChecked())
            << i;
        EXPECT_TRUE(Acceso("cmdLeggiSensoreStrumento")) << "whether or not it is there";
    }
    // Between the two pressures the list stays and the table goes.
    Scegli("cboTipiSensore", 1);
    Scegli("cboListaSensori", 1);
    EXPECT_EQ(Spuntate(), 20);
    Scegli("cboTipiSensore", 2);
    EXPECT_EQ(Spuntate(), 0);
    EXPECT_EQ(TestoDi("cboListaSensori"), "Pressione 0-7 bar");
    Scegli("cboListaSensori", 2);
    Opzione("optAltro");
    EXPECT_EQ(Spuntate(), 0);
    EXPECT_EQ(Titolo(), Dice(Voce::TitoloLibreriaSensori));
    QTest::keyClicks(C<QComboBox>("cboTipiSensore"), QStringLiteral("x"));
    EXPECT_EQ(TestoDi("cboTipiSensore"), "");
    EXPECT_EQ(C<QComboBox>("cboTipiSensore")->currentIndex(), -1);
    EXPECT_FALSE(Acceso("cmdLeggiSensoreStrumento"));
    finestra->AbilitaStrumento(true);
    EXPECT_TRUE(Acceso("cmdCalibrazione") && Acceso("cmdLeggiSensoreStrumento"));
    Tasto(Qt::Key_Escape);
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_EQ(FormAttiva, nullptr);
}

TEST_F(ImpostaSensore, ASensorIsTypedSavedAndLoadedByKeys) {
    Apri();
    Opzione("optPressione");
    Clic("cmdNuovoSensore");
    EXPECT_EQ(Titolo(), "Sensor: new");
    const auto fondo = [&] { return C<QLineEdit>("txtX0")->palette().color(QPalette::Base); };
    EXPECT_EQ(fondo(), finestra->palette().color(QPalette::Window));
    Punto(0, "52", "0");
    EXPECT_NE(fondo(), finestra->palette().color(QPalette::Window));
    Punto(1, "243", "1,5");
    Punto(2, "500", "3.25");
    EXPECT_EQ(Testo("txtY0"), "0.000");
    EXPECT_EQ(Testo("txtY1"), "1.500");
    C<QLineEdit>("txtY1")->undo();
    EXPECT_EQ(Testo("txtY1"), "1,5") << "what was typed comes back";
    C<QLineEdit>("txtY1")->redo();
    EXPECT_TRUE(C<QCheckBox>("Check13")->hasFocus()) << "the next row is the next stop";
    Clic("Check10");
    EXPECT_TRUE(Spuntata(0));
    // What can't be saved is told, and stays.
    for (const char* nome : {"", "no/name"}) {
        macchina.Risposte = {Answer::Ok};
        Scrivi("txtNomeNuovo", nome);
        Clic("cmdSalvaSensore");
        EXPECT_EQ(Mostrati().size(), 1u) << nome;
        EXPECT_EQ(Spuntate(), 3);
    }
    Scrivi("txtNomeNuovo", "Mio");
    C<QPushButton>("cmdSalvaSensore")->setFocus();
    Tasto(Qt::Key_Return);
    EXPECT_EQ(Spuntate(), 0) << "saved, and to be chosen from the list to be seen";
    EXPECT_EQ(Testo("txtNomeNuovo"), "");
    EXPECT_EQ(Titolo(), Dice(Voce::TitoloLibreriaSensori));
    EXPECT_TRUE(Scritta("lblAvvisi").starts_with("Saved at "));
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
    auto* grafico = C<GraficoWidget>("GraficoSensore");
    // Where the picture is red.
    QImage foto;
    const auto rosso = [&](int x, int y) {
        const QColor c = foto.pixelColor(x, y);
        return c.red() > 150 && c.green() < 90 && c.blue() < 90;
    };
    const auto preso = [&] {
        foto = grafico->Fotografa(1.0);
        QRect campo;
        for (int y = 0; y < foto.height(); ++y) {
            for (int x = 0; x < foto.width(); ++x) {
                if (rosso(x, y)) campo |= QRect(x, y, 1, 1);
            }
        }
        return campo;
    };
    Punto(0, "0", "0");
    Punto(1, "100", "10");
    Scrivi("txtX1", "200");
    EXPECT_EQ(grafico->LeggiIntervallo().XMax, 200.0) << "with each key";
    Scrivi("txtY1", "40");
    Tasto(Qt::Key_Return);  // draws
    EXPECT_EQ(grafico->LeggiIntervallo().YMax, 40.0);
    const QRect campo = preso();
    ASSERT_FALSE(campo.isEmpty());
    EXPECT_TRUE(grafico->AreaDisegno().toAlignedRect().adjusted(4, 4, -4, -4).contains(campo));
    // The mark of the first point, three pixels round its middle.
    const int x0 = campo.left() + 3, y0 = campo.bottom() - 3;
    for (const QPoint& d : {QPoint(-2, 0), QPoint(2, 0), QPoint(0, -2), QPoint(0, 2)}) {
        EXPECT_TRUE(rosso(x0 + d.x(), y0 + d.y())) << d.x() << " " << d.y();
    }
    Punto(2, "400", "0");
    const QRect tetto = preso();
    EXPECT_FALSE(rosso(tetto.center().x(), tetto.bottom() - 3)) << "a way back to the curve before";
    Clic("Check12");
    Clic("Check11");
    EXPECT_EQ(grafico->LeggiIntervallo().XMax, 0.0) << "a tick draws as well";
    EXPECT_LT(preso().height(), 9) << "one point alone";
}

TEST_F(ImpostaSensore, PointsAreDraggedWhereTheTableLetsThem) {
    Apri();
    Opzione("optPressione");
    for (const auto& [x, y] : {std::pair{"100", "1"}, {"200", "2"}, {"300", "3"}, {"300", "3"}})
        Punto(Spuntate(), x, y);
    auto* grafico = C<GraficoWidget>("GraficoSensore");
    const auto trascina = [&](const QPointF& da, const QPointF& a) {
        const QPoint primo = grafico->PixelDi(da.x(), da.y())->toPoint();
        const QPoint ultimo = grafico->PixelDi(a.x(), a.y())->toPoint();
        QTest::mousePress(grafico, Qt::LeftButton, {}, primo);
        QTest::mouseMove(grafico, ultimo);
        const double massimo = grafico->LeggiIntervallo().XMax;
        QTest::mouseRelease(grafico, Qt::LeftButton, {}, ultimo);
        return massimo;
    };
    trascina({200, 2}, {900, 2.5});
    EXPECT_EQ(Testo("txtX1"), "300") << "not past its neighbour";
    EXPECT_NEAR(std::stod(Testo("txtY1")), 2.5, 0.05);
    EXPECT_EQ(Testo("txtY1").size(), 5u) << "the decimals of the sensor";
    C<QLineEdit>("txtX1")->undo();
    EXPECT_EQ(Testo("txtX1"), "200");
    EXPECT_EQ(trascina({300, 3}, {250, 1}), 300.0) << "the axes stay under the hand";
    EXPECT_EQ(Testo("txtX3"), Testo("txtX2")) << "the tail moves as one";
    EXPECT_LT(grafico->LeggiIntervallo().XMax, 260.0);
    // A box that would be refused keeps the point where it is.
    Scrivi("txtX0", "abc");
    macchina.Risposte = {Answer::Ok};
    const std::string prima = Testo("txtY1");
    trascina({200, std::stod(prima)}, {210, 1});
    EXPECT_EQ(Testo("txtY1"), prima);
    EXPECT_EQ(Mostrati().size(), 1u);
}

TEST_F(ImpostaSensore, WrongNumbersAndFallingValuesAreRefused) {
    Apri();
    Opzione("optPressione");
    Punto(0, "100", "1");
    Punto(1, "100", "2");
    C<QCheckBox>("Check12")->setFocus();
    Tasto(Qt::Key_Space);
    const V crescente = {"Il valore di bit deve essere crescente"};
    const auto errata = [&](const char* testo) {
        macchina.Risposte = {Answer::Ok};
        Scrivi("txtX2", testo);
        Tasto(Qt::Key_Tab);
        EXPECT_EQ(Mostrati(), V{Dice(Voce::NumeroNonValido) + "\r\nBit 3"}) << testo;
        EXPECT_TRUE(C<QLineEdit>("txtX2")->hasFocus());
    };
    errata("32768");
    errata("");
    macchina.Risposte = {Answer::Ok};
    QTest::keyClicks(C<QLineEdit>("txtX2"), QStringLiteral("90"));
    Tasto(Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(Mostrati(), crescente);
    EXPECT_EQ(Testo("txtX2"), "");
    EXPECT_FALSE(Spuntata(2));
    EXPECT_TRUE(Acceso("txtX2"));
    EXPECT_FALSE(Acceso("Check13"));
    // The focus is not in a box that would not let go; that one is looked at again.
    EXPECT_TRUE(C<QCheckBox>("Check12")->hasFocus());
    Tasto(Qt::Key_Backtab);
    EXPECT_EQ(Mostrati(), V{});
    errata("abc");
    Scrivi("txtX2", "110");
    macchina.Risposte = {Answer::Ok};
    Scrivi("txtY2", "abc");
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(Mostrati(), V{Dice(Voce::NumeroNonValido) + "\r\nY (bar) 3"});
    Scrivi("txtY2", "3");

    // A row in the middle keeps its tick. The click that left the box does nothing more; nor does
    // a button that leaves the focus there, nor the row's own tick.
    Scrivi("txtNomeNuovo", "Cala");
    for (const int come : {0, 1, 2}) {
        if (!Spuntata(2)) Clic("Check12");
        const std::string riga = come == 2 ? "2" : "1";
        Scrivi("txtX" + riga, "90");
        macchina.Risposte = {Answer::Ok};
        if (come == 0) Clic("cmdSalvaSensore");
        if (come == 1) C<QPushButton>("cmdSalvaSensore")->click();
        if (come == 2) Clic("Check12");
        QCoreApplication::processEvents();
        EXPECT_EQ(Mostrati(), crescente) << come;
        EXPECT_EQ(Testo("txtX" + riga), "") << come;
        EXPECT_EQ(Spuntata(2), come != 2);
        EXPECT_EQ(CercaSensore("Cala"), nullptr) << come;
        EXPECT_FALSE(C<QPushButton>("cmdSalvaSensore")->isDown());
        if (come != 2) Scrivi("txtX1", "105");
    }
    Opzione("optLivelloBenzina");
    Punto(0, "900", "1");
    Punto(1, "100", "2");
    EXPECT_EQ(Spuntate(), 2) << "a fuel level may fall";
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
    EXPECT_TRUE(Acceso("cmdLeggiSensoreStrumento") && Acceso("cmdCalibrazione"));
    Scegli("cboTipiSensore", 1);
    macchina.DuranteEventi = [&] {
        EXPECT_EQ(FaseComunicazione, 25);
        EXPECT_FALSE(Acceso("cmdSalvaSensore"));
    };
    principale.Storia.clear();
    Clic("cmdLeggiSensoreStrumento");
    macchina.DuranteEventi = nullptr;
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(principale.Storia, (V{"3:" + Dice(Voce::LetturaCurvaSensore), "3:"}));
    EXPECT_EQ(Spuntate(), 20);
    EXPECT_EQ(Testo("txtX19"), "1023");
    EXPECT_EQ(std::stod(Testo("txtY19")), CurvaY[19]);
    EXPECT_EQ(porta.Richieste().back().substr(0, 3), "H\x19\x01");
    // A read that fails shows what the arrays hold.
    Guasta("drop:25");
    macchina.Risposte = {Answer::Ok};
    Clic("cmdLeggiSensoreStrumento");
    EXPECT_EQ(Mostrati(), V{Dice(Voce::StrumentoNonRisponde)});
    EXPECT_EQ(Spuntate(), 20);
    EXPECT_TRUE(C<QPushButton>("cmdLeggiSensoreStrumento")->hasFocus());
    // A window that closes says nothing, and nobody waits on.
    int giri = 0;
    macchina.DuranteEventi = [&] {
        if (FaseComunicazione == 25 && ++giri == 3) finestra->close();
    };
    Clic("cmdLeggiSensoreStrumento");
    macchina.DuranteEventi = nullptr;
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_LT(giri, 10) << "the waits gave up";
    EXPECT_EQ(Mostrati(), V{});
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_FALSE(collegamento().Abbandonato);
}

}  // namespace
}  // namespace lapvane
