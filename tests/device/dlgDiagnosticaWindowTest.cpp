#include "device/dlgDiagnostica.h"

#include "device/SerialComm.h"
#include "shell/TabelleNomi.h"
#include "support/StrumentoProva.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

using prova::Controllo;

class VistaDalVivo : public prova::ConStrumento<prova::WindowPlatform> {
 protected:
    bool Vivi() const { return giri->isEnabled() && lampada->isEnabled(); }
    /// Shows the window; `passo` runs in its waits until the window has closed.
    void Gira(const std::function<void()>& passo) {
        macchina.DuranteEventi = [&] {
            if (dialogo.isVisible()) passo();
            if (macchina.Orologio > 600000) dialogo.close();  // a step that never comes
        };
        dialogo.show();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return !dialogo.isVisible() && !collegamento().Abbandonato; }, 60000));
        macchina.DuranteEventi = nullptr;
        dialogo.close();
    }
    std::string Barra() const { return finestra.Testo(Pannello::Collegamento); }

    dlgDiagnostica dialogo;
    QLabel* giri = Controllo<QLabel>(dialogo, "txtValoreCampo0");
    QLabel* ingresso = Controllo<QLabel>(dialogo, "txtValoreAnalogico7");
    LampadaAllarme* lampada = Controllo<LampadaAllarme>(dialogo, "shpAllarme2");
    QLabel* riga = Controllo<QLabel>(dialogo, "lblFermi");
};

TEST_F(VistaDalVivo, EveryValueHasItsNameAndItsUnit) {
    IndiceLingua = 0;
    CalcolaBaseTesti();
    DatiProgetto.UMVel = 0;
    DatiProgetto.UMTemp = 1;
    DatiProgetto.UMPress = 2;  // no list has it
    dlgDiagnostica italiana;
    const auto testo = [&](const char* nome) { return Controllo<QLabel>(italiana, nome)->text(); };
    EXPECT_EQ(testo("lblUM2"), InQt(ListaUMVelocita[0]));
    EXPECT_EQ(testo("lblUM4"), InQt(ListaUMTemperatura[1]));
    EXPECT_EQ(testo("lblNomeCampo4"), InQt(Testo(Voce::TemperaturaAcqua)));
    EXPECT_EQ(testo("lblNomeAllarme2"), InQt(Testo(Voce::AllarmePompaOlio)));
    for (const char* numero : {"2", "9"}) {
        const std::string n(numero);
        EXPECT_EQ(Controllo<QLabel>(italiana, ("txtValoreCampo" + n).c_str())->accessibleName(),
                  testo(("lblNomeCampo" + n).c_str()));
        EXPECT_EQ(Controllo<QWidget>(italiana, ("shpAllarme" + n).c_str())->accessibleName(),
                  testo(("lblNomeAllarme" + n).c_str()));
    }
    QStringList ingressi;
    for (const QLabel* label : Controllo<QGroupBox>(italiana, "fraIngressiAnalogici")
                                   ->findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
        if (label->objectName().isEmpty()) ingressi += label->text();
    }
    EXPECT_EQ(ingressi.join(u' '), QStringLiteral("1 2 3 4 5 6 7 8"));
    EXPECT_EQ(italiana.windowTitle(), InQt(Testo(Voce::ValoriInTempoReale)));
    EXPECT_TRUE(italiana.isModal());
}

TEST_F(VistaDalVivo, ValuesThatAreNotReadAreGreyAndComeBackByThemselves) {
    apparecchio.Dati.AggiungiBlocco(std::string(128, '\x40'));
    const auto riquadro = [&](const char* valore) {
        return Controllo<QWidget>(dialogo, valore)->parentWidget()->grab().toImage();
    };
    for (auto* eta : dialogo.findChildren<QTimer*>()) eta->setInterval(eta->interval() / 4);
    int fase = 0;
    QString ultimo;
    macchina.AlBox = [&] {
        EXPECT_EQ(riga->isVisible(), fase != 2);
        EXPECT_TRUE(Controllo<QLabel>(dialogo, "lblFermiIngressiAnalogici")->isVisible());
        EXPECT_EQ(Vivi(), fase == 2) << "the message covers values that look alive";
        EXPECT_FALSE(ingresso->isEnabled());
        Guasta("");
        ++fase;
    };
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
    Guasta("silent:37");
    Gira([&] {
        EXPECT_EQ(giri->isEnabled(), lampada->isEnabled());
        const bool tutti = Vivi() && ingresso->isEnabled() && !riga->isVisible();
        if ((fase == 4 || porta.RichiesteDi(37) == 1) && Vivi()) {
            // Long before the reply is given up.
            const auto grigi = [&] { return !Vivi() && !ingresso->isEnabled(); };
            if (!QTest::qWaitFor(grigi, 5000)) dialogo.close();
            EXPECT_TRUE(grigi());
            EXPECT_EQ(Barra(), fase == 0 ? "COM 1" : "NO COMMUNICATION");
            EXPECT_EQ(giri->text(), ultimo) << "grey, and still there to be read";
        } else if (fase == 1 && tutti) {
            EXPECT_EQ(Barra(), "COM 1");
            EXPECT_EQ(giri->text(), QStringLiteral("16448"));
            EXPECT_NE(ingresso->text(), QString());
            // The oil pressure is in alarm, and its tile says so.
            EXPECT_TRUE(Controllo<LampadaAllarme>(dialogo, "shpAllarme8")->Accesa());
            EXPECT_NE(Controllo<QLabel>(dialogo, "lblDaQuanto8")->text(), QString());
            EXPECT_EQ(riquadro("txtValoreCampo5").pixelColor(50, 0), QColor(Qt::red));
            EXPECT_NE(riquadro("txtValoreCampo6").pixelColor(50, 0), QColor(Qt::red));
            Guasta("drop:9");
            fase = 2;
        } else if (fase == 3 && tutti) {
            ultimo = giri->text();
            Guasta("silent");
            fase = 4;
        } else if (fase == 5 && tutti) {
            EXPECT_EQ(Barra(), "COM 1");
            Guasta("silent");
            fase = 6;
        } else if (fase == 6) {
            dialogo.close();
            EXPECT_TRUE(collegamento().Abbandonato) << "the person waits for the instrument";
        }
    });
    EXPECT_EQ(fase, 6);
    EXPECT_EQ(Detto(), std::vector<std::string>(3, Testo(Voce::StrumentoNonRisponde)));
}

}  // namespace
}  // namespace lapvane
