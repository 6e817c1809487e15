#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "platform/ErroreRuntime.h"
#include "shell/FrasiErrore.h"
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
        throw ErroreRuntime(NumeroErrore::DiskFull, "saving the project", "/a/b.pro", 7);
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

TEST(PortaErrori, EveryPhraseThatTheCodeRaisesHasAnItalianForm) {
    PlatformProva macchina;
    prova::CaricaTestiVeri(0);
    // What an error is raised with, and every text that says what the program is doing, whatever
    // the verb.
    const std::regex frase(
        R"re(ErroreRuntime\(\s*(?:NumeroErrore::)?\w+,\s*"([^"]+)"|"([a-z]+ing [^"]*)")re");
    std::set<std::string> trovate;
    for (const auto& voce :
         std::filesystem::recursive_directory_iterator(std::string(LAPVANE_SOURCE_DIR) + "/src")) {
        if (!voce.is_regular_file() || voce.path().stem() == "FrasiErrore") continue;
        const std::string codice = prova::Leggi(voce.path());
        for (std::sregex_iterator i(codice.begin(), codice.end(), frase), fine; i != fine; ++i) {
            trovate.insert((*i)[1].matched ? (*i)[1] : (*i)[2]);
        }
    }
    EXPECT_GT(trovate.size(), 15u);
    EXPECT_TRUE(trovate.contains("number to text")) << "raised with";
    EXPECT_TRUE(trovate.contains("reading the sectors")) << "handed to the reader of a file";
    for (const std::string& inglese : trovate) EXPECT_NE(FraseErrore(inglese), inglese);
    for (const NumeroErrore numero :
         {NumeroErrore::Subscript, NumeroErrore::FileNotFound, NumeroErrore::DiskFull,
          NumeroErrore::PathAccess, NumeroErrore::PrinterError}) {
        EXPECT_NE(FraseErrore(TestoErrore(numero)), TestoErrore(numero));
    }
}

}  // namespace
}  // namespace lapvane
