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

TEST(PortaErrori, SaysWhatBecameOfTheWorkThatIsNotSaved) {
    PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    static EsitoSoccorso esito;
    static bool fallisce;
    ImpostaSoccorso([] {
        if (fallisce) throw std::runtime_error("y");
        return esito;
    });
    const auto detto = [&](bool serviva, const char* file, bool fallito) {
        esito = {serviva, file};
        fallisce = fallito;
        const std::string box = BoxDi(macchina, [] { throw std::runtime_error("x"); });
        EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
        macchina.Puntatori = {Pointer::Busy};
        const std::string inizio = Testo(Voce::ErroreEsecuzione) + " x\r\n\r\n";
        EXPECT_TRUE(box.starts_with(inizio) && box.ends_with(Testo(Voce::ProgrammaChiude))) << box;
        return box.substr(inizio.size(),
                          box.size() - inizio.size() - Testo(Voce::ProgrammaChiude).size());
    };
    EXPECT_EQ(detto(false, "", false), "");
    EXPECT_EQ(detto(true, "/a.rescue", false),
              Testo(Voce::SoccorsoScritto) + "\r\n/a.rescue\r\n\r\n");
    EXPECT_EQ(detto(true, "", false), Testo(Voce::SoccorsoFallito) + "\r\n\r\n");
    EXPECT_EQ(detto(false, "", true), Testo(Voce::SoccorsoFallito) + "\r\n\r\n");
    ImpostaSoccorso(nullptr);
}

}  // namespace
}  // namespace lapvane
