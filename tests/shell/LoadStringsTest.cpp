#include "shell/LoadStrings.h"

#include "shell/Protetto.h"
#include "shell/TabelleNomi.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

using prova::PlatformProva;

const std::string& DelNumero(int n) {
    return Testo(static_cast<Voce>(n));
}

void Tabella(PlatformProva& macchina, const std::string& testo) {
    prova::Scrivi(macchina.Cartella / "LANGUAGES.DAT", testo);
    CaricaTesti();
    CalcolaBaseTesti();
}

NumeroErrore ErroreDi(PlatformProva& macchina, const std::string& testo) {
    try {
        Tabella(macchina, testo);
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.File(), macchina.Cartella / "LANGUAGES.DAT");
        return errore.Numero();
    }
    ADD_FAILURE() << "no error for " << testo;
    return NumeroErrore::Overflow;
}

TEST(LoadStrings, ReadsByPositionAndSwitchesByTheBase) {
    PlatformProva macchina;
    Tabella(macchina,
            "1\r\nanything=\"4\"\r\nA=\"uno\"\r\nB=due=2\r\nC=\"one\"\r\nD=\"\"two\"\"\r\n");
    EXPECT_EQ(DelNumero(1), "one");
    EXPECT_EQ(DelNumero(2), "\"two\"");  // one quote at each end goes, the others stay
    IndiceLingua = 0;
    CalcolaBaseTesti();
    EXPECT_EQ(DelNumero(1), "uno");
    EXPECT_EQ(DelNumero(2), "due=2");
    EXPECT_THROW(DelNumero(5), ErroreRuntime);
    EXPECT_THROW(DelNumero(-1), ErroreRuntime);
    Tabella(macchina, "1\r\nN=5\r\n=a\r\n=b\r\n=c\r\n=d\r\n=e\r\n");
    EXPECT_EQ(DelNumero(1) + DelNumero(3), "ce") << "half of five is two";
}

TEST(LoadStrings, BrokenFilesEndTheProgram) {
    PlatformProva macchina;
    EXPECT_THROW(CaricaTesti(), ErroreRuntime);  // missing: the lookup of its own report fails
    for (const std::string testo : {"", "0\r\nno count\r\n", "0\r\nN=1\r\nno value\r\n"}) {
        prova::Scrivi(macchina.Cartella / "LANGUAGES.DAT", testo);
        macchina.Mostrati.clear();
        macchina.Risposte = {Answer::Ok};
        EXPECT_THROW(CaricaTesti(), FineProgramma) << testo;
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, "Fatal Error: Language database file " +
                                                  (macchina.Cartella / "LANGUAGES.DAT").string() +
                                                  " is missing critical information.");
        EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
    }
    EXPECT_EQ(ErroreDi(macchina, "0\r\n"), NumeroErrore::InputPastEnd);
    EXPECT_EQ(ErroreDi(macchina, "0\r\nN=3\r\n=a\r\n"), NumeroErrore::InputPastEnd);
    EXPECT_EQ(ErroreDi(macchina, "x\r\nN=0\r\n"), NumeroErrore::TypeMismatch);
    EXPECT_EQ(ErroreDi(macchina, "0\r\nN=two\r\n"), NumeroErrore::TypeMismatch);
    EXPECT_EQ(ErroreDi(macchina, "0\r\nN=-4\r\n"), NumeroErrore::Subscript);
    EXPECT_EQ(ErroreDi(macchina, "0\r\nN=2000000000\r\n=a\r\n"), NumeroErrore::InputPastEnd);
}

TEST(LoadStrings, ChoiceIsWrittenOverTheFirstThreeBytesInTheCurrentFolder) {
    PlatformProva macchina;
    const std::string resto = "N=2\r\n=a\r\n=b\r\n";
    Tabella(macchina, "1\r\n" + resto);
    IndiceLingua = 0;
    SalvaLingua();
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "LANGUAGES.DAT"), "0\r\n" + resto);

    macchina.CartellaCorrente = macchina.Cartella / "altrove";
    std::filesystem::create_directory(macchina.CartellaCorrente);
    IndiceLingua = 1;
    SalvaLingua();
    EXPECT_EQ(prova::Leggi(macchina.CartellaCorrente / "LANGUAGES.DAT"), "1\r\n");
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "LANGUAGES.DAT"), "0\r\n" + resto);
}

TEST(TabelleNomi, ListsStandInTheOrderOfTheirIndices) {
    PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    CaricaTabelleNomi();
    EXPECT_EQ(ListaCanaliA, (std::vector<std::string>{"Not used", "Active low", "Active high"}));
    EXPECT_EQ(ListaCanaliB, ListaCanaliA);
    EXPECT_EQ(ListaUMPressione, (std::vector<std::string>{"bar", "psi"}));
    EXPECT_EQ(ListaUMTemperatura, (std::vector<std::string>{"\xB0 C", "\xB0 F"}));
    EXPECT_EQ(ListaUMVelocita.at(1), "mph");
}

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
