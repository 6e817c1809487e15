#include "device/dlgDiagnostica.h"

#include <gtest/gtest.h>

#include <QTest>

#include "device/SerialComm.h"
#include "instrument/Guasti.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Strumento.h"
#include "shell/LoadStrings.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

using prova::Controllo;

TEST(VistaDalVivo, ValuesThatAreNotReadAreGreyAndComeBackByThemselves) {
    prova::WindowPlatform macchina;
    prova::PrincipaleProva principale;
    strumento::Strumento apparecchio;
    strumento::SerialeStrumento porta{apparecchio, [&] { return macchina.Orologio; },
                                      [&](int ms) { macchina.Orologio += ms; }};
    principale.Seriale = &porta;
    prova::CaricaTestiVeri(0);
    dlgDiagnostica finestra;
    auto* giri = Controllo<QLabel>(finestra, "txtValoreCampo0");
    auto* ingresso = Controllo<QLabel>(finestra, "txtValoreAnalogico7");
    auto* lampada = Controllo<LampadaAllarme>(finestra, "shpAllarme2");
    auto* riga = Controllo<QLabel>(finestra, "lblFermi");
    const auto vivi = [&] {
        EXPECT_EQ(giri->isEnabled(), lampada->isEnabled());
        return giri->isEnabled() && ingresso->isEnabled() && !riga->isVisible() &&
               !giri->text().isEmpty();
    };
    const auto fermi = [&] {
        return !giri->isEnabled() && riga->isVisible() && riga->text().contains(u"grigio") &&
               principale.Testo(Pannello::Collegamento) == "NO COMMUNICATION";
    };
    int passo = 0;
    bool fermiPresto = false;
    QString ultimo;
    macchina.AlBox = [&] {
        EXPECT_TRUE(fermi()) << "the message covers values that look alive";
        EXPECT_EQ(giri->text(), ultimo) << "grey, and still there to be read";
        apparecchio.Difetti.Togli();
        passo = 3;
    };
    macchina.Risposte = {Answer::Ok};
    macchina.DuranteEventi = [&] {
        if (passo == 0 && vivi()) {
            EXPECT_EQ(principale.Testo(Pannello::Collegamento), "COM 1");
            ultimo = giri->text();
            apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("silent"));
            passo = 1;
        } else if (passo == 1) {
            QTest::qSleep(1100);  // long before the reply is given up
            passo = 2;
        } else if (passo == 2) {
            fermiPresto = fermiPresto || fermi();
        } else if (passo == 3 && vivi()) {
            EXPECT_EQ(principale.Testo(Pannello::Collegamento), "COM 1");
            passo = 4;
            finestra.close();
        }
    };
    finestra.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return passo == 4; }, 15000)) << passo;
    EXPECT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_TRUE(fermiPresto) << "grey only once the reply was given up";
}

}  // namespace
}  // namespace lapvane
