#include "platform/CartellaProgramma.h"

#include "platform/FileTesto.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

#ifndef _WIN32
namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::Leggi;
using prova::PlatformProva;
using prova::Scrivi;

class CartellaPropria : public ::testing::Test {
 protected:
    CartellaPropria() {
        fs::permissions(macchina.Cartella, fs::perms{0777});
        Consegna("1");
    }
    ~CartellaPropria() override { fs::permissions(installata, fs::perms{0777}); }
    /// What a version of the program brings along.
    void Consegna(const std::string& versione) {
        fs::create_directories(installata);
        fs::permissions(installata, fs::perms{0777});
        Scrivi(installata / "LANGUAGES.DAT", "0\r\nN=2\r\nk=\"" + versione + "\"\r\n");
        Scrivi(installata / "RecentFiles.ini", "1\r\n");
        Scrivi(installata / "Esempio.pro", "progetto " + versione);
        Scrivi(installata / "sensors" / "A.sns", "A " + versione);
        Scrivi(installata / "sensors" / "B.sns", "B " + versione);
        Scrivi(installata / "sample" / "Esempio.csv", "log");
        Scrivi(installata / "lapvane", "non e' un dato");
        fs::permissions(installata, fs::perms{0555});
    }
    fs::path Avvia() {
        const prova::SenzaPrivilegi nessuno;
        return CartellaDelProgramma(installata, personale);
    }

    PlatformProva macchina;
    fs::path installata = macchina.Cartella / "programma";
    fs::path personale = macchina.Cartella / "casa" / "Lapvane";
};

TEST_F(CartellaPropria, BesideAWritableFolderNothingChanges) {
    fs::permissions(installata, fs::perms{0777});
    EXPECT_EQ(Avvia(), installata);
    EXPECT_FALSE(fs::exists(personale));
    EXPECT_EQ(std::distance(fs::directory_iterator(installata), fs::directory_iterator()), 6);
    // Installed for all, it is not written to even by who could.
    Scrivi(installata / "for-all-users", "");
    EXPECT_EQ(CartellaDaLeggere(installata, personale), installata);
    EXPECT_EQ(Avvia(), personale);
    EXPECT_EQ(CartellaDaLeggere(installata, personale), personale);
    fs::remove(installata / "for-all-users");
    EXPECT_EQ(CartellaDaLeggere(installata, personale), installata);
}

TEST_F(CartellaPropria, TheFirstStartFillsThePersonsOwn) {
    EXPECT_EQ(Avvia(), personale);
    EXPECT_EQ(Leggi(personale / "sensors" / "A.sns"), "A 1");
    EXPECT_TRUE(fs::is_directory(personale / "ports"));
    EXPECT_FALSE(fs::exists(personale / "lapvane"));
    // No room for one's own: the program runs where it lies.
    personale = installata / "casa";
    EXPECT_EQ(Avvia(), installata);
}

TEST_F(CartellaPropria, ANewVersionTouchesNothingThatThePersonChanged) {
    Avvia();
    Scrivi(personale / "sensors" / "A.sns", "mio");
    Scrivi(personale / "RecentFiles.ini", "1\r\n/a.pro\r\n");
    Scrivi(personale / "LANGUAGES.DAT", "1\r\nN=2\r\nk=\"1\"\r\n");  // English was chosen
    Scrivi(personale / "sensors" / "C.sns", "mio C");
    fs::remove(personale / "Esempio.pro");
    Consegna("2");
    Scrivi(installata / "sensors" / "C.sns", "C 2");
    Scrivi(installata / "sensors" / "D.sns", "D 2");
    fs::remove(installata / "sample" / "Esempio.csv");
    for (int avvio = 0; avvio < 2; ++avvio) {
        EXPECT_EQ(Avvia(), personale);
        EXPECT_EQ(Leggi(personale / "sensors" / "A.sns"), "mio");
        EXPECT_EQ(Leggi(personale / "sensors" / "B.sns"), "B 2");
        EXPECT_EQ(Leggi(personale / "sensors" / "C.sns"), "mio C");
        EXPECT_EQ(Leggi(personale / "sensors" / "D.sns"), "D 2");
        EXPECT_EQ(Leggi(personale / "RecentFiles.ini"), "1\r\n/a.pro\r\n");
        EXPECT_EQ(Leggi(personale / "LANGUAGES.DAT"), "1\r\nN=2\r\nk=\"2\"\r\n");
        EXPECT_FALSE(fs::exists(personale / "Esempio.pro"));
        EXPECT_EQ(Leggi(personale / "sample" / "Esempio.csv"), "log");
    }
    // Texts of one's own stay, and what nothing starts without comes again.
    Scrivi(personale / "LANGUAGES.DAT", "1\r\nN=2\r\nk=\"mio\"\r\n");
    fs::remove(personale / "RecentFiles.ini");
    Avvia();
    EXPECT_EQ(Leggi(personale / "LANGUAGES.DAT"), "1\r\nN=2\r\nk=\"mio\"\r\n");
    EXPECT_EQ(Leggi(personale / "RecentFiles.ini"), "1\r\n");
    // What was put there is known again where its list has gone.
    fs::remove(personale / ".lapvane.installed");
    Avvia();
    Consegna("3");
    Avvia();
    EXPECT_EQ(Leggi(personale / "sensors" / "B.sns"), "B 3");
    EXPECT_EQ(Leggi(personale / "sensors" / "A.sns"), "mio");
}

TEST_F(CartellaPropria, WhatGoesWithTheProgramIsNotWhatThePersonMade) {
    Avvia();
    for (const char* mio : {"Look.lapvane", ".lapvane-1-1", "downloads/run.download"}) {
        Scrivi(personale / mio, "1");
    }
    Scrivi(personale / "sensors" / "A.sns", "mio");
    EXPECT_EQ(SgomberaCartella(personale), 2u);
    EXPECT_EQ(Leggi(personale / "sensors" / "A.sns"), "mio");
    EXPECT_EQ(Leggi(personale / "downloads" / "run.download"), "1");
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(personale), {}), 4);
    // A folder that is none of the program's is not touched.
    EXPECT_EQ(SgomberaCartella(personale), 0u);
    EXPECT_TRUE(fs::exists(personale / "sensors" / "A.sns"));
    // Nothing of the person's: no rest.
    fs::remove_all(personale);
    Avvia();
    EXPECT_EQ(SgomberaCartella(personale), 0u);
    EXPECT_FALSE(fs::exists(personale));
}

}  // namespace
}  // namespace lapvane
#endif
