#include "logs/Soccorso.h"

#include <chrono>

#include "logs/BufferLog.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "project/FileProgetto.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"
#include "tools/support/FreshState.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;
using prova::PrincipaleProva;

void Diverso(std::string& valore, int n) {
    valore = "a=b\r\n%0A \"\xE8\" " + std::to_string(n);
}
void Diverso(auto& valore, int n) {
    valore = static_cast<std::remove_reference_t<decltype(valore)>>(n % 2 == 0 ? -n : n);
}

class Soccorso : public ::testing::Test {
 protected:
    Soccorso() {
        prova::CaricaTestiVeri(1);
        ValoriInizialiProgetto();
    }
    /// A project and a log of which nothing is saved.
    void Lavora() {
        int n = 1;
        for (const DescrizioneCampo& campo : kCampiProgetto) {
            std::visit([&](auto m) { Diverso(DatiProgetto.*m, n++); }, campo.Campo);
        }
        DatiProgetto.NomeProgetto = "Valdoro";
        PercorsoProgetto = macchina.Cartella / "\u0141\u00F3d\u017A" / "a.pro";
        ProgettoModificato = true;
        for (int b = 0; b < 6; ++b)
            BlocchiLog.push_back(std::string(128, static_cast<char>(b * 13)));
        BlocchiLog[1].replace(0, 5, "\r\nend");
        NumBlocchi = 6;
        NumeroGiri = 2;
        TabellaGiri[1] = "01:20.00, 1";
        TabellaGiri[2] = "01:19.50, 1";
        logInMemoria().Parziale = true;
        logInMemoria().DaSalvare = true;
    }
    /// A fresh process.
    void Riparti() {
        DatiProgetto = {};
        AzzeraBufferLog();
        AzzeraStatoShell();
        finestra.AbilitaMenu(Comando::SaveData, false);
        macchina.Mostrati.clear();
    }
    std::vector<std::string> Rimasti() const {
        std::vector<std::string> nomi;
        for (const std::string& nome : ElencaFile(macchina.Cartella)) {
            if (nome.find(".rescue") != std::string::npos) nomi.push_back(nome);
        }
        return nomi;
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
};

TEST_F(Soccorso, WhatWasPutAsideComesBackToTheLastField) {
    Lavora();
    const RecordProgetto progetto = DatiProgetto;
    const auto blocchi = BlocchiLog;
    const EsitoSoccorso esito = MettiDaParte();
    EXPECT_TRUE(esito.Serviva);
    EXPECT_EQ(esito.File, macchina.Cartella / "Lapvane 2026-11-24 10-20-30.rescue");
    Riparti();
    macchina.Risposte = {Answer::Cancel};
    OffriSoccorso();
    EXPECT_EQ(Rimasti().size(), 1u) << "asked again at the next start";
    EXPECT_EQ(DatiProgetto.NomeProgetto, "");
    macchina.Risposte = {Answer::Yes};
    OffriSoccorso();
    const std::string domanda = macchina.Mostrati.back().Testo;
    for (const std::string& parte :
         {TestoDaPercorso(esito.File), std::string("Valdoro"), std::string(" 6\r\n")}) {
        EXPECT_NE(domanda.find(parte), std::string::npos) << domanda;
    }
    for (const DescrizioneCampo& campo : kCampiProgetto) {
        std::visit([&](auto m) { EXPECT_EQ(DatiProgetto.*m, progetto.*m) << campo.Nome; },
                   campo.Campo);
    }
    EXPECT_EQ(PercorsoProgetto, macchina.Cartella / "\u0141\u00F3d\u017A" / "a.pro");
    EXPECT_TRUE(ProgettoModificato);
    EXPECT_EQ(BlocchiLog, blocchi);
    EXPECT_EQ(NumBlocchi, 6);
    EXPECT_EQ(NumeroGiri, 2);
    EXPECT_EQ(TabellaGiri[2], "01:19.50, 1");
    EXPECT_TRUE(logInMemoria().Parziale);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData));
    EXPECT_TRUE(finestra.Menu(Comando::Save));
    // Another failure before anything was saved: one file holds it all.
    EXPECT_TRUE(MettiDaParte().Serviva);
    EXPECT_EQ(Rimasti(), std::vector<std::string>{"Lapvane 2026-11-24 10-20-30 2.rescue"});
    Riparti();
    macchina.Risposte = {Answer::Yes};
    OffriSoccorso();
    ProgettoModificato = false;
    ConcludiSoccorso();
    EXPECT_EQ(Rimasti().size(), 1u) << "the log is not saved";
    logInMemoria().DaSalvare = false;
    ConcludiSoccorso();
    EXPECT_TRUE(Rimasti().empty());
    EXPECT_FALSE(MettiDaParte().Serviva);
}

TEST_F(Soccorso, TheNewestIsOfferedFirstAndADeclinedOneNotAgain) {
    for (const char* nome : {"Valdoro", "Imola"}) {
        Lavora();
        logInMemoria().DaSalvare = false;
        progettoAperto().SenzaFile = true;
        DatiProgetto.NomeProgetto = nome;
        const auto file = MettiDaParte().File;
        if (nome[0] == 'I') {
            fs::last_write_time(file, fs::last_write_time(file) + std::chrono::hours(1));
        }
        Riparti();
    }
    macchina.Risposte = {Answer::No, Answer::Yes};
    OffriSoccorso();
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_NE(macchina.Mostrati[0].Testo.find("Imola"), std::string::npos);
    EXPECT_EQ(DatiProgetto.NomeProgetto, "Valdoro");
    EXPECT_EQ(Rimasti(), (std::vector<std::string>{"Lapvane 2026-11-24 10-20-30 2.rescued",
                                                   "Lapvane 2026-11-24 10-20-30.rescue"}));
    // It has no file of its own: nothing is written over.
    EXPECT_TRUE(progettoAperto().SenzaFile);
    EXPECT_FALSE(finestra.Menu(Comando::Save) || finestra.Menu(Comando::ProgDev));
    EXPECT_TRUE(finestra.Menu(Comando::SaveAs) && finestra.Menu(Comando::ReadDev));
    EXPECT_EQ(finestra.Testo(Pannello::Percorso), "");
    EXPECT_FALSE(finestra.Menu(Comando::SaveData));
    LasciaSoccorso(true);  // something unsaved is replaced: what was put aside stays
    FineSoccorso();
    EXPECT_EQ(Rimasti().size(), 2u);
}

TEST_F(Soccorso, CutOrForeignFilesAreNoOffer) {
    Lavora();
    const std::string intero = ScriviSoccorso(true, true);
    ASSERT_TRUE(GuardaSoccorso(intero).has_value());
    for (std::size_t n = 0; n < intero.size(); n += n < 200 ? 1 : 37) {
        EXPECT_FALSE(GuardaSoccorso(intero.substr(0, n)).has_value()) << n;
    }
    EXPECT_FALSE(GuardaSoccorso(intero + "x").has_value());
    EXPECT_FALSE(GuardaSoccorso(intero.substr(0, intero.size() - 1) + "x").has_value());
    EXPECT_FALSE(GuardaSoccorso("Lapvane rescue 2" + intero.substr(16)).has_value());
    EXPECT_FALSE(GuardaSoccorso("Lapvane rescue 1\r\nrecords=99999999\r\n\r\nend").has_value());
    EXPECT_FALSE(GuardaSoccorso("Lapvane rescue 1\r\nrecords=0\r\n\r\nend").has_value());
}

#ifndef _WIN32
TEST_F(Soccorso, TheFirstPlaceThatTakesItGetsIt) {
    Lavora();
    macchina.Documenti = macchina.Cartella / "documenti";
    fs::create_directory(macchina.Documenti);
    fs::permissions(macchina.Documenti, fs::perms{0777});
    fs::permissions(macchina.Cartella, fs::perms{0555});
    {
        const prova::SenzaPrivilegi nessuno;
        EXPECT_EQ(MettiDaParte().File.parent_path(), macchina.Documenti);
    }
    if (::geteuid() == 0) {
        OffriSoccorso();  // nobody's: no box
    }
    fs::permissions(macchina.Cartella, fs::perms{0777});
    const prova::SpazioFinito niente(100);
    const EsitoSoccorso esito = MettiDaParte();
    EXPECT_TRUE(esito.Serviva);
    EXPECT_TRUE(esito.File.empty());
}
#endif

}  // namespace
}  // namespace lapvane
