#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/ErroreRuntime.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

using prova::PlatformProva;

std::string BoxDi(PlatformProva& macchina, const std::function<void()>& azione) {
    macchina.Risposte = {Answer::Ok};
    Protetto(azione);
    return macchina.Mostrati.empty() ? "" : macchina.Mostrati.back().Testo;
}

TEST(PortaErrori, TellsNumberWorkFileAndLineInTheLanguageOfNow) {
    PlatformProva macchina;
    const auto errore = [] {
        throw ErroreRuntime(NumeroErrore::DiskFull, Lavoro::SalvareProgetto, "/a/b.pro", 7);
    };
    // Before there is a table the box speaks English.
    IndiceLingua = 0;
    EXPECT_EQ(BoxDi(macchina, errore),
              "Run-time error 61: Disk full (saving the project)\r\n/a/b.pro : 7\r\n\r\n"
              "The program will now close. The files on disk are intact.");
    EXPECT_EQ(macchina.Mostrati.back().Icona, Icon::Critical);
    prova::CaricaTestiVeri(0);
    EXPECT_EQ(BoxDi(macchina, errore),
              Testo(Voce::ErroreEsecuzione) +
                  " 61: Disco pieno (salvataggio del progetto)\r\n/a/b.pro : 7\r\n\r\n" +
                  Testo(Voce::ProgrammaChiude));
    EXPECT_EQ(BoxDi(macchina, [] { throw std::runtime_error("x"); }),
              Testo(Voce::ErroreEsecuzione) + " x\r\n\r\n" + Testo(Voce::ProgrammaChiude));
}

}  // namespace
}  // namespace lapvane
