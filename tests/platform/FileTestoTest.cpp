#include "platform/FileTesto.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <chrono>

#include "platform/Cartelle.h"
#include "platform/Testo1252.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;

constexpr Lavoro kLavoro = Lavoro::LeggereFile;  // any

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
    const auto leggi = [](const fs::path& p) { return ErroreDi([&] { LeggiFile(p, kLavoro); }); };
    const auto scrivi = [](const fs::path& p) {
        return ErroreDi([&] { ScriviFile(p, "t", kLavoro); });
    };
    const auto elenca = [](const fs::path& p) { return ErroreDi([&] { ElencaFile(p); }); };
    const fs::path manca = macchina.Cartella / "manca";
    EXPECT_EQ(leggi(manca), NumeroErrore::FileNotFound);
    EXPECT_EQ(leggi(manca / "x"), NumeroErrore::PathNotFound);
    EXPECT_EQ(leggi(macchina.Cartella), NumeroErrore::PathAccess);
    EXPECT_EQ(scrivi(manca / "x"), NumeroErrore::PathNotFound);
    EXPECT_EQ(scrivi(macchina.Cartella), NumeroErrore::PathAccess);
    EXPECT_EQ(elenca(manca), NumeroErrore::PathNotFound);
#ifndef _WIN32
    const fs::path tubo = macchina.Cartella / "tubo", chiuso = macchina.Cartella / "chiuso";
    ASSERT_EQ(::mkfifo(tubo.c_str(), 0666), 0);
    EXPECT_EQ(leggi(tubo), NumeroErrore::PathAccess);
    fs::permissions(macchina.Cartella, fs::perms{0777});
    prova::Scrivi(chiuso, "mio");
    fs::permissions(chiuso, fs::perms{0444});
    fs::create_directory(manca);
    fs::permissions(manca, fs::perms{0});
    {
        const bool root = ::getuid() == 0;
        const prova::SenzaPrivilegi nessuno;
        EXPECT_EQ(scrivi(chiuso), NumeroErrore::PathAccess) << "its owner has locked it";
        EXPECT_EQ(elenca(manca), NumeroErrore::PathAccess);
        EXPECT_EQ(FileProprio(chiuso), !root) << "somebody else's";
    }
    EXPECT_TRUE(FileProprio(chiuso));
    EXPECT_FALSE(FileProprio(tubo));
    EXPECT_EQ(prova::Leggi(chiuso), "mio");
    fs::permissions(manca, fs::perms{0777});
#endif
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
    ScriviFile(macchina.Cartella / "progetto.pro", "t", kLavoro);
    EXPECT_FALSE(fs::exists(vecchio));
    for (const fs::path& voce : {fresco, altrui, cartella}) EXPECT_TRUE(fs::exists(voce)) << voce;
}

#ifndef _WIN32  // neither limits on file sizes nor modes there
TEST(FileTesto, WritingKeepsTheModeAndFollowsLinks) {
    PlatformProva macchina;
    const auto modo = [](const fs::path& file) {
        return static_cast<unsigned>(fs::status(file).permissions());
    };
    const fs::path file = macchina.Cartella / "vero.txt";
    const mode_t prima = ::umask(027);
    ScriviFile(file, "1", kLavoro);
    ::umask(prima);
    EXPECT_EQ(modo(file), 0640u);
    fs::permissions(file, fs::perms{0604});
    const fs::path legame = macchina.Cartella / "legame.txt";
    fs::create_symlink("vero.txt", legame);
    const std::string lungo(300000, 'x');
    ScriviFile(legame, lungo + "2", kLavoro);
    EXPECT_TRUE(fs::is_symlink(legame));
    EXPECT_EQ(LeggiFile(file, kLavoro), lungo + "2");
    EXPECT_EQ(LeggiFile(file, kLavoro, 3), "xxx");
    EXPECT_EQ(modo(file), 0604u);
}

std::size_t Voci(const fs::path& cartella) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(cartella), fs::directory_iterator()));
}

TEST(FileTesto, AFileOfSeveralNamesKeepsThem) {
    PlatformProva macchina;
    const fs::path file = macchina.Cartella / "vero.txt", altro = macchina.Cartella / "altro.txt";
    prova::Scrivi(file, "vecchio e lungo");
    fs::create_hard_link(file, altro);
    ScriviFile(file, "nuovo", kLavoro);
    EXPECT_EQ(prova::Leggi(altro), "nuovo");
    EXPECT_EQ(Voci(macchina.Cartella), 2u) << "a copy or a mark was left behind";
}

TEST(FileTesto, AFileThatMayBeWrittenIsInAFolderThatMayNot) {
    // One takes no files at all; in the other only owners may take theirs away.
    for (const unsigned modo : {0555u, 01777u}) {
        PlatformProva macchina;
        const fs::path cartella = macchina.Cartella / "chiusa";
        const fs::path file = cartella / "progetto.pro";
        prova::Scrivi(file, "vecchio e lungo");
        fs::permissions(file, fs::perms{0666});
        fs::permissions(macchina.Cartella, fs::perms{0777});
        fs::permissions(cartella, fs::perms{modo});
        {
            const prova::SenzaPrivilegi nessuno;
            EXPECT_EQ(CartellaScrivibile(cartella), modo != 0555);
            ScriviFile(file, "nuovo", kLavoro);
            if (modo == 0555) {
                EXPECT_EQ(ErroreDi([&] { ScriviFile(cartella / "altro.pro", "n", kLavoro); }),
                          NumeroErrore::PathAccess);
            }
        }
        EXPECT_EQ(prova::Leggi(file), "nuovo");
        EXPECT_EQ(Voci(cartella), 1u);
        EXPECT_EQ(Voci(macchina.Cartella), 1u) << "a copy or a mark was left behind";
        fs::permissions(cartella, fs::perms{0777});
    }
}

TEST(FileTesto, AnInPlaceWriteThatWasCutIsReadFromItsCopy) {
    PlatformProva macchina;
    const fs::path cartella = macchina.Cartella / "a";
    const fs::path file = cartella / "progetto.pro";
    prova::Scrivi(file, "nuchio");  // cut behind its second byte
    const std::string voce = "W\r\nprogetto.pro\r\n.lapvane-Copia1\r\nend\r\n";
    prova::Scrivi(cartella / ".lapvane-Copia1", "nuovo");
    // The mark of a name less its last three characters: FNV-1a of "progetto.".
    const fs::path marca = cartella / ".lapvane+33f30f77e488aab9";
    prova::Scrivi(marca, "Lapvane save 1\r\n" + voce);
    EXPECT_EQ(LeggiFile(file, kLavoro), "nuovo");
    EXPECT_EQ(prova::Leggi(file), "nuovo");
    EXPECT_EQ(Voci(cartella), 1u);
    // A mark that leads out of its folder, or is itself cut, is nobody's.
    for (const std::string& falsa :
         {std::string("Lapvane save 1\r\nW\r\n") + (macchina.Cartella / "b.txt").string() +
              "\r\n.lapvane-Copia1\r\nend\r\n",
          std::string("Lapvane save 1\r\nW\r\nprogetto.pro\r\nx\r\nend\r\n"),
          "Lapvane save 1\r\n" + voce.substr(0, voce.size() - 5), "Lapvane save 2\r\n" + voce}) {
        prova::Scrivi(macchina.Cartella / "b.txt", "altrui");
        prova::Scrivi(cartella / ".lapvane-Copia1", "falso");
        prova::Scrivi(cartella / "x", "falso");
        prova::Scrivi(marca, falsa);
        EXPECT_EQ(LeggiFile(file, kLavoro), "nuovo") << falsa;
        EXPECT_EQ(prova::Leggi(macchina.Cartella / "b.txt"), "altrui");
    }
}

TEST(FileTesto, ASetIsOfOneAgeWhereverItIsCut) {
    const std::vector<std::string> nomi = {"run.txt", "run.tim", "run.csv"};
    for (const std::size_t rinominati : {0, 1, 3}) {
        for (const int come : {0, 1, 2}) {
            PlatformProva macchina;
            const fs::path& cartella = macchina.Cartella;
            std::string marca = "Lapvane save 1\r\n";
            for (std::size_t i = 0; i < nomi.size(); ++i) {
                const std::string copia = ".lapvane-Nuovo" + std::to_string(i);
                marca += "R\r\n" + nomi[i] + "\r\n" + copia + "\r\n";
                prova::Scrivi(cartella / (i < rinominati ? nomi[i] : copia), "nuovo " + nomi[i]);
                if (i >= rinominati) {
                    fs::last_write_time(cartella / copia,
                                        fs::file_time_type::clock::now() - std::chrono::hours(9));
                    prova::Scrivi(cartella / nomi[i], "vecchio");
                }
            }
            prova::Scrivi(cartella / ".lapvane+bfee071f6f5897ec", marca + "end\r\n");
            // A save of something else in the folder takes nothing away from the set.
            ScriviFile(cartella / "altro.pro", "x", kLavoro);
            if (come == 0) Ripara(cartella / "run.tim");
            if (come == 1) RiparaCartella(cartella);
            if (come == 2) {
                EXPECT_EQ(LeggiFile(cartella / "run.csv", kLavoro), "nuovo run.csv");
            }
            for (const std::string& nome : nomi) {
                EXPECT_EQ(prova::Leggi(cartella / nome), "nuovo " + nome) << rinominati << come;
            }
            EXPECT_EQ(Voci(cartella), 4u);
        }
    }
}

TEST(FileTesto, WhereNothingCanBeMendedTheCopiesAreRead) {
    PlatformProva macchina;
    const fs::path cartella = macchina.Cartella / "chiavetta";
    prova::Scrivi(cartella / "run.txt", "nuovo");  // renamed before the kill
    prova::Scrivi(cartella / "run.csv", "vecchio");
    prova::Scrivi(cartella / ".lapvane-c", "nuovo");
    prova::Scrivi(cartella / ".lapvane+bfee071f6f5897ec",
                  "Lapvane save 1\r\nR\r\nrun.txt\r\n.lapvane-t\r\nR\r\nrun.csv\r\n.lapvane-c"
                  "\r\nend\r\n");
    fs::permissions(cartella, fs::perms{0555});
    {
        const prova::SenzaPrivilegi nessuno;
        EXPECT_EQ(LeggiFile(cartella / "run.csv", kLavoro), "nuovo");
        EXPECT_EQ(LeggiFile(cartella / "run.txt", kLavoro), "nuovo");
    }
    fs::permissions(cartella, fs::perms{0777});
    EXPECT_EQ(prova::Leggi(cartella / "run.csv"), "vecchio");
}

TEST(FileTesto, ASetThatCantBeWrittenLeavesTheOldOne) {
    PlatformProva macchina;
    const fs::path txt = macchina.Cartella / "run.txt", tim = macchina.Cartella / "run.tim",
                   csv = macchina.Cartella / "run.csv";
    for (const fs::path& file : {txt, csv}) prova::Scrivi(file, "vecchio");
    const auto scrivi = [&](const fs::path& ultimo, std::size_t byte) {
        return ErroreDi([&] {
            const prova::SpazioFinito poco(4096);
            const std::string grande(byte, 'n');
            const std::vector<FileNuovo> insieme = {
                {txt, "nuovo"}, {tim, "nuovo"}, {ultimo, grande}};
            ScriviInsieme(insieme, Lavoro::ConvertireLog);
        });
    };
    EXPECT_EQ(scrivi(csv, 100000), NumeroErrore::DiskFull);
    // Two are renamed when the third turns out to have a name that the medium does not take.
    EXPECT_EQ(scrivi(macchina.Cartella / std::string(300, 'x'), 1), NumeroErrore::PathAccess);
    EXPECT_EQ(prova::Leggi(txt), "vecchio");
    EXPECT_EQ(prova::Leggi(csv), "vecchio");
    EXPECT_FALSE(fs::exists(tim));
    EXPECT_EQ(Voci(macchina.Cartella), 2u) << "a copy or a mark was left behind";
}

TEST(FileTesto, OfAHugeFileOnlyTheStartIsWrittenAnew) {
    PlatformProva macchina;
    const fs::path file = macchina.Cartella / "run.ses";
    prova::Scrivi(file, "0123456789");
    fs::resize_file(file, std::uintmax_t{1} << 40);
    RiscriviInizio(file, "abc", kLavoro);  // a terabyte: to read it all would never end
    EXPECT_EQ(LeggiFile(file, kLavoro, 10), "abc3456789");
    EXPECT_EQ(fs::file_size(file), std::uintmax_t{1} << 40);
    const fs::path piccolo = macchina.Cartella / "b.ses";
    for (const char* testo : {"12345", "ab"}) RiscriviInizio(piccolo, testo, kLavoro);
    EXPECT_EQ(prova::Leggi(piccolo), "ab345");
    EXPECT_EQ(Voci(macchina.Cartella), 2u);
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
    EXPECT_TRUE(UgualiSenzaMaiuscole("\x9A\x9C\x9E\xFF", "\x8A\x8C\x8E\x9F"));
    EXPECT_FALSE(UgualiSenzaMaiuscole("a\xF7", "a\xD7"));  // the two signs are no letters
    EXPECT_TRUE(StessoNome("/a/B.pro", "/A/b.PRO"));
    // Letters that the program can't write are as the system takes them.
    EXPECT_EQ(StessoNome(u8"/a/\u0141.pro", u8"/a/\u0142.pro"), StessoPercorso("a", "A"));
    constexpr std::array<std::string_view, 2> kFini = {".sns", ".txt"};
    EXPECT_EQ(NomeLibero(macchina.Cartella, "5/6:7", kFini), "5-6-7");
    prova::Scrivi(macchina.Cartella / "ALFA 2.TXT", "x");
    EXPECT_EQ(NomeLibero(macchina.Cartella, "alfa", kFini), "alfa 3");
    EXPECT_EQ(SenzaFine("/a/run.csv", 3, "txt"), "/a/run.txt");
    EXPECT_EQ(SenzaFine("ab", 3, "txt"), "txt");
}

TEST(FileTesto, LinesEndWithAnyLineEnd) {
    LettoreRighe righe("a\r\nb\rc\n\nd\r\n\r\ne");
    std::vector<std::string> lette;
    while (!righe.Fine()) lette.emplace_back(righe.Prossima());
    EXPECT_EQ(lette, (std::vector<std::string>{"a", "b", "c", "", "d", "", "e"}));
    EXPECT_EQ(righe.Numero(), 7);
    EXPECT_EQ(righe.Prossima(), "");
    EXPECT_EQ(InUnaRiga("5 %\r\n%0A"), "5 %25%0D%0A%250A");
    EXPECT_EQ(DaUnaRiga(InUnaRiga("5 %\r\n%0A")), "5 %\r\n%0A");
    EXPECT_EQ(DaUnaRiga("100 %"), "100 %");
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
    for (const fs::path percorso : {"/a/Perch\u00E9.pro", "/a/\u0141\u00F3d\u017A.pro"}) {
        EXPECT_EQ(PercorsoDaRiga(RigaDaPercorso(percorso)), percorso);
    }
}

}  // namespace
}  // namespace lapvane
