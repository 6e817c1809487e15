#include "platform/FileTesto.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/ErroreRuntime.h"
#include "platform/Testo1252.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;

template <class F>
NumeroErrore ErroreDi(F azione) {
    try {
        azione();
    } catch (const ErroreRuntime& errore) {
        EXPECT_FALSE(errore.File().empty());
        return errore.Numero();
    }
    ADD_FAILURE() << "no error";
    return NumeroErrore::Overflow;
}

TEST(FileTesto, FailuresTellWhatIsWrong) {
    PlatformProva macchina;
    const auto leggi = [](const fs::path& p) { return ErroreDi([&] { LeggiFile(p, "x"); }); };
    EXPECT_EQ(leggi(macchina.Cartella / "manca"), NumeroErrore::FileNotFound);
    EXPECT_EQ(leggi(macchina.Cartella / "manca" / "x"), NumeroErrore::PathNotFound);
    EXPECT_EQ(leggi(macchina.Cartella), NumeroErrore::PathAccess);
    EXPECT_EQ(ErroreDi([&] { ScriviFile(macchina.Cartella / "manca" / "x", "t", "x"); }),
              NumeroErrore::PathNotFound);
    EXPECT_EQ(ErroreDi([&] { ScriviFile(macchina.Cartella, "t", "x"); }), NumeroErrore::PathAccess);
    EXPECT_EQ(ErroreDi([&] { ElencaFile(macchina.Cartella / "manca"); }),
              NumeroErrore::PathNotFound);
}

TEST(FileTesto, WhatABrokenSaveLeftGoesAnHourLater) {
    PlatformProva macchina;
    const fs::path vecchio = macchina.Cartella / ".lapvane-Abc123";
    const fs::path fresco = macchina.Cartella / ".lapvane-Xyz789";  // perhaps still written to
    const fs::path altrui = macchina.Cartella / "x.lapvane-Abc123";
    const fs::path cartella = macchina.Cartella / ".lapvane-cartella";
    for (const fs::path& file : {vecchio, fresco, altrui}) prova::Scrivi(file, "x");
    fs::create_directory(cartella);
    const auto ora = fs::file_time_type::clock::now();
    for (const fs::path& voce : {vecchio, altrui, cartella}) {
        std::error_code ignorato;  // Windows dates no folder
        fs::last_write_time(voce, ora - std::chrono::minutes(61), ignorato);
    }
    fs::last_write_time(fresco, ora - std::chrono::minutes(59));
    ScriviFile(macchina.Cartella / "progetto.pro", "t", "x");
    EXPECT_FALSE(fs::exists(vecchio));
    for (const fs::path& voce : {fresco, altrui, cartella}) EXPECT_TRUE(fs::exists(voce)) << voce;
}

#ifndef _WIN32  // neither limits on file sizes nor modes there
TEST(FileTesto, AFullDiskLeavesTheOldFileWhole) {
    PlatformProva macchina;
    const fs::path file = macchina.Cartella / "progetto.pro";
    prova::Scrivi(file, "vecchio");
    const auto scrivi = [&] {
        const prova::SpazioFinito poco(4096);
        ScriviFile(file, std::string(100000, 'n'), "saving the project");
    };
    EXPECT_EQ(ErroreDi(scrivi), NumeroErrore::DiskFull);
    EXPECT_EQ(prova::Leggi(file), "vecchio");
    EXPECT_EQ(ElencaFile(macchina.Cartella), std::vector<std::string>{"progetto.pro"});
    EXPECT_EQ(std::distance(fs::directory_iterator(macchina.Cartella), fs::directory_iterator()), 1)
        << "a temporary file was left behind";
}

TEST(FileTesto, WritingKeepsTheModeAndFollowsLinks) {
    PlatformProva macchina;
    const fs::path file = macchina.Cartella / "vero.txt";
    prova::Scrivi(file, "1");
    fs::permissions(file, fs::perms{0640});
    const fs::path legame = macchina.Cartella / "legame.txt";
    fs::create_symlink("vero.txt", legame);
    ScriviFile(legame, "2", "x");
    EXPECT_TRUE(fs::is_symlink(legame));
    EXPECT_EQ(prova::Leggi(file), "2");
    EXPECT_EQ(static_cast<unsigned>(fs::status(file).permissions()), 0640u);
}
#endif

TEST(FileTesto, ListingIsSortedWithoutCaseAndHidesDotFiles) {
    PlatformProva macchina;
    for (const char* nome : {"beta.sns", "Alfa.sns", ".nascosto", "GAMMA.sns", "alfa2.sns"}) {
        prova::Scrivi(macchina.Cartella / nome, "x");
    }
    fs::create_directory(macchina.Cartella / "cartella");
    EXPECT_EQ(ElencaFile(macchina.Cartella),
              (std::vector<std::string>{"Alfa.sns", "alfa2.sns", "beta.sns", "GAMMA.sns"}));
    EXPECT_TRUE(UgualiSenzaMaiuscole("Citt\xE0.PRO", "citt\xC0.pro"));
    EXPECT_FALSE(UgualiSenzaMaiuscole("a\xF7", "a\xD7"));  // the two signs are no letters
}

TEST(FileTesto, LinesEndWithAnyLineEnd) {
    LettoreRighe righe("a\r\nb\rc\nd\r\n\r\ne");
    std::vector<std::string> lette;
    while (!righe.Fine()) lette.emplace_back(righe.Prossima());
    EXPECT_EQ(lette, (std::vector<std::string>{"a", "b", "c", "d", "", "e"}));
    EXPECT_EQ(righe.Numero(), 6);
    EXPECT_EQ(righe.Prossima(), "");
}

TEST(Testo1252, EveryByteComesBack) {
    std::string tutti;
    for (int c = 1; c < 256; ++c) tutti += static_cast<char>(c);
    EXPECT_EQ(Utf8In1252(Utf8Da1252(tutti)), tutti);
    EXPECT_EQ(Utf8Da1252("\x80 Velocit\xE0 \xB0"), "\u20AC Velocit\u00E0 \u00B0");
    EXPECT_EQ(Utf8In1252("\u65E5\U0001F3CE x \xC3"), "?? x ?");
    // Cut in the middle, and what is there would be a letter.
    EXPECT_EQ(Utf8In1252("\xE3\xA9"), "?");
    EXPECT_EQ(Utf8In1252("\xE3\xA9z\xC3z"), "?z?z");
    EXPECT_EQ(PercorsoDaTesto("/a/Perch\xE9 & gi\xF9.pro").string(),
              "/a/Perch\u00E9 & gi\u00F9.pro");
}

}  // namespace
}  // namespace lapvane
