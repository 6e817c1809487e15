#include "platform/Testo1252.h"
#include "project/FileProgetto.h"
#include "project/FileRecenti.h"
#include "shell/Domande.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"
#include "tools/support/FreshState.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;
using prova::PrincipaleProva;

class Progetto : public ::testing::Test {
 protected:
    Progetto() {
        prova::CaricaTestiVeri(1);
        prova::Scrivi(macchina.Cartella / "RecentFiles.ini", "1\r\n");
        LeggiFileRecenti();
        cartella =
            macchina.Cartella / PercorsoDaTesto("Gare & Prove \xE8");  // blanks, "&" and an accent
        fs::create_directory(cartella);
    }
    void Apri(const fs::path& file) {
        macchina.FileScelti.push_back(file);
        mnuOpen_Click();
    }
    /// A project file of 101 empty texts and zeros, one line of it replaced.
    static std::string Progetto0(int posizione = -1, const std::string& riga = {}) {
        std::string testo = "ZEVProject\r\n";
        for (std::size_t i = 0; i < kNumCampiProgetto; ++i) {
            const bool e_testo =
                std::holds_alternative<std::string RecordProgetto::*>(kCampiProgetto[i].Campo);
            testo += static_cast<int>(i) == posizione ? riga : e_testo ? "k= " : "k=0";
            testo += "\r\n";
        }
        return testo;
    }
    std::string UltimoBox() const {
        return macchina.Mostrati.empty() ? "" : macchina.Mostrati.back().Testo;
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    fs::path cartella;
};

TEST_F(Progetto, NewSetsTheFewValuesThatAreNotZeroAndTheCommands) {
    DatiProgetto.Settore3 = 7;
    DatiProgetto.NomeProgetto = "vecchio";
    PercorsoProgetto = "/altrove/vecchio.pro";
    ProgettoModificato = true;
    finestra.Abilita(Comando::Save, true);
    mnuNew_Click();
    const std::string nuovo = TestoProgetto();
    DatiProgetto = {};
    DatiProgetto.MaxPagine = 9;
    DatiProgetto.NumAccRPM = DatiProgetto.ImpulsiRuota = DatiProgetto.DiametroRuota = 1;
    DatiProgetto.ChannSG = DatiProgetto.ChannSensoreLambda = 1;
    EXPECT_EQ(nuovo, TestoProgetto());
    EXPECT_EQ(finestra.Testo(Pannello::Progetto), Testo(Voce::ProgettoSenzaNome));
    EXPECT_EQ(PercorsoProgetto, "/altrove/vecchio.pro");  // a path left from before stays
    EXPECT_FALSE(ProgettoModificato);
    EXPECT_FALSE(finestra.Menu(Comando::Save));
    EXPECT_FALSE(finestra.Pulsante(Comando::ProgDev));
    EXPECT_TRUE(finestra.Menu(Comando::SaveAs) && finestra.Pulsante(Comando::ReadDev));
    EXPECT_TRUE(finestra.Pulsante(Comando::Alarm) && finestra.TitoloAcceso(Titolo::Configure));
}

TEST_F(Progetto, FileIsMagicAndAHundredAndOneLinesToTheByte) {
    mnuNew_Click();
    DatiProgetto.NomeProgetto = "Prova \xE8";
    DatiProgetto.PaginaAbilitata10 = true;
    DatiProgetto.mskTO = -5;
    DatiProgetto.chkIngresso = true;
    DatiProgetto.Settore1 = 100000;
    const fs::path file = cartella / "a.pro";
    macchina.FileScelti.push_back(file);
    mnuSaveAs_Click();
    const std::string testo = prova::Leggi(file);
    EXPECT_EQ(testo.find("ZEVProject\r\nID_NomeProgetto=Prova \xE8\r\n"
                         "ID_DataCreazione=24/11/2026 10:20:30\r\nID_DataUltimaModifica= \r\n"),
              0u);
    EXPECT_EQ(std::count(testo.begin(), testo.end(), '\n'), 102);
    EXPECT_NE(testo.find("\r\nID_MaxPagine=9\r\nID_Pagina1= \r\nID_Pagina8= \r\nID_Pagina9= \r\n"
                         "ID_Pagina10= \r\nID_PaginaAbilitata1=0\r\n"),
              std::string::npos);
    EXPECT_NE(testo.find("\r\nID_PaginaAbilitata10=1\r\nID_NumAccRPM=1\r\n"), std::string::npos);
    EXPECT_NE(testo.find("\r\nID_mskTO=-5\r\nID_chkPO=0\r\n"), std::string::npos);
    // The flag of the input never reaches the file.
    EXPECT_NE(testo.find("\r\nID_mskTB=0\r\nID_chkIngresso=0\r\nID_chkUscita=0\r\n"),
              std::string::npos);
    EXPECT_TRUE(testo.ends_with(
        "ID_ChannSG=1\r\nID_ChannCambio=0\r\nID_ChannPT=0\r\nID_ChannSensoreLambda=1\r\n"));
}

TEST_F(Progetto, RoundTripGivesBackEveryFieldButTheInputsFlag) {
    int n = 1;
    for (const auto& descrizione : kCampiProgetto) {
        std::visit(
            [&n](auto membro) {
                auto& valore = DatiProgetto.*membro;
                using Tipo = std::remove_reference_t<decltype(valore)>;
                if constexpr (std::is_same_v<Tipo, std::string>) {
                    valore = "testo = " + std::to_string(n++);
                } else if constexpr (std::is_same_v<Tipo, bool>) {
                    valore = n++ % 2 == 0;
                } else {
                    valore = static_cast<Tipo>(n++ % 3 == 0 ? -n : n);
                }
            },
            descrizione.Campo);
    }
    DatiProgetto.chkIngresso = true;
    const std::string prima = TestoProgetto();
    PercorsoProgetto = cartella / "giro.pro";
    SalvaProgetto();
    DatiProgetto = {};
    // The line of the input's flag says 0 and is not looked at: the field keeps what it had.
    DatiProgetto.chkIngresso = true;
    Apri(cartella / "giro.pro");
    EXPECT_EQ(TestoProgetto(), prima);
    EXPECT_TRUE(DatiProgetto.chkIngresso);
}

TEST_F(Progetto, KeysAreNeverReadAndPositionsAre) {
    const fs::path file = cartella / "chiavi.pro";
    prova::Scrivi(file, Progetto0(0, "  x =\"Nome \"con\" virgolette\"\r\nriga di una nota"));
    Apri(file);
    EXPECT_EQ(DatiProgetto.NomeProgetto, "Nome \"con\" virgolette");
    EXPECT_EQ(DatiProgetto.AutoreProgetto, " ");
    // A continuation line with "=" takes a position: everything behind it moves by one, so the
    // flag that follows the texts meets a text and the conversion stops there.
    DatiProgetto.Lingua = 1;
    prova::Scrivi(file, Progetto0(6, "k=nota\r\nx = y"));
    Apri(file);
    EXPECT_EQ(DatiProgetto.NoteProgetto, "nota");
    EXPECT_EQ(DatiProgetto.Lingua, 1) << "a value that is no number ends the conversion silently";
}

TEST_F(Progetto, OldFilesKeepTheDefaultsOfWhatTheyLack) {
    mnuNew_Click();
    DatiProgetto.chkAbilRecLap = true;
    DatiProgetto.Settore5 = 99;
    DatiProgetto.ChannCambio = 1;
    DatiProgetto.SensoreLambda = "x";
    std::string testo = Progetto0();
    std::size_t riga = 0;
    for (int i = 0; i <= 84; ++i) riga = testo.find('\n', riga) + 1;  // magic and positions 0 to 83
    const fs::path file = macchina.Cartella / "vecchio.pro";
    prova::Scrivi(file, testo.substr(0, riga));
    ValoriProgetto.fill("7");              // of a file that was read before
    Apri("vecchio.pro");                   // without a folder: the program's
    EXPECT_EQ(DatiProgetto.MaxPagine, 0);  // the file's own value
    EXPECT_FALSE(DatiProgetto.chkAbilRecLap);
    EXPECT_EQ(DatiProgetto.Settore5, 0);
    EXPECT_EQ(DatiProgetto.SensoreLambda, "");
    EXPECT_EQ(DatiProgetto.ChannSG, 1);
    EXPECT_EQ(DatiProgetto.ChannCambio, 0);
    EXPECT_EQ(DatiProgetto.ChannSensoreLambda, 1);
}

TEST_F(Progetto, NumbersAndFlagsInAnyFormAndWhatDoesNotFitStopsTheConversion) {
    const fs::path file = cartella / "numeri.pro";
    const auto legge = [&](const char* campo, const std::string& valore) {
        DatiProgetto = {};
        DatiProgetto.Lingua = 11;
        DatiProgetto.UMVel = 5;  // behind Lingua
        DatiProgetto.mskPO = 5;  // behind mskTO and chkPO
        prova::Scrivi(file, Progetto0(static_cast<int>(PosizioneCampo(campo)), "k=" + valore));
        Apri(file);
    };
    for (const auto& [valore, atteso] :
         std::map<std::string, std::optional<std::int16_t>>{{"-7", -7},
                                                            {" +3 ", 3},
                                                            {"2.5", 2},
                                                            {"15E-1", 2},
                                                            {"32768", {}},
                                                            {"", {}},
                                                            {"2x", {}}}) {
        legge("Lingua", valore);
        EXPECT_EQ(DatiProgetto.Lingua, atteso.value_or(11)) << valore;
        EXPECT_EQ(DatiProgetto.UMVel, atteso ? 0 : 5) << valore;
    }
    for (const auto& [valore, atteso] : std::map<std::string, std::optional<std::int32_t>>{
             {"2147483647.4", 2147483647}, {"2147483647.5", {}}, {"-2.5e0", -2}}) {
        legge("mskTO", valore);
        EXPECT_EQ(DatiProgetto.mskTO, atteso.value_or(0)) << valore;
        EXPECT_EQ(DatiProgetto.mskPO, atteso ? 0 : 5) << valore;
    }
    for (const auto& [valore, atteso] : std::map<std::string, std::optional<bool>>{{"0.0", false},
                                                                                   {"0.4", true},
                                                                                   {"true ", true},
                                                                                   {"fALSE", false},
                                                                                   {"yes", {}},
                                                                                   {"", {}}}) {
        legge("chkPO", valore);
        EXPECT_EQ(DatiProgetto.chkPO, atteso.value_or(false)) << valore;
        EXPECT_EQ(DatiProgetto.mskPO, atteso ? 0 : 5) << valore;
    }
}

TEST_F(Progetto, OpenEnablesTheCommandsAndFillsThePanels) {
    const fs::path file = cartella / "b.pro";
    prova::Scrivi(file, Progetto0(0, "k=Barcellona & co"));
    ProgettoModificato = true;
    Apri(file);
    for (const Comando c : {Comando::Save, Comando::SaveAs, Comando::ReadDev, Comando::ProgDev}) {
        EXPECT_TRUE(finestra.Menu(c));
        EXPECT_TRUE(finestra.Pulsante(c));
    }
    EXPECT_EQ(finestra.Testo(Pannello::Progetto), "Barcellona & co");
    EXPECT_EQ(finestra.Testo(Pannello::Percorso),
              TestoDaPercorso(macchina.Cartella / PercorsoDaTesto("Gare & Prove \xE8") / "b.pro"));
    EXPECT_FALSE(ProgettoModificato);
    EXPECT_EQ(finestra.Recenti, std::vector<fs::path>{file});
    EXPECT_TRUE(FileRecenteScelto.empty());
    EXPECT_EQ(macchina.RichiesteFile.back().Filter, "Project File (*.pro)|*.pro");
}

TEST_F(Progetto, RefusedFilesAreReportedAndTriedAgainWithoutADialog) {
    mnuNew_Click();
    DatiProgetto.NomeProgetto = "mio";
    DatiProgetto.Settore1 = 5;
    struct Caso {
        std::string Nome;
        std::string Contenuto;
        std::string Atteso;
    };
    const std::string dove = (macchina.Cartella / "").string();
    const std::vector<Caso> casi = {
        {"manca.pro", "",
         Testo(Voce::IlFile) + " " + dove + "manca.pro " + Testo(Voce::NonTrovato)},
        {"vuoto.pro", "",
         "Fatal Error: Language database file " + dove +
             "vuoto.pro is missing critical information."},
        {"altro.pro", "ZEVproject\r\nk=v\r\n", Testo(Voce::NonEUnProgetto)},
    };
    for (const Caso& caso : casi) {
        const fs::path file = macchina.Cartella / caso.Nome;
        if (caso.Nome != "manca.pro") prova::Scrivi(file, caso.Contenuto);
        macchina.Risposte = {Answer::Ok, Answer::Ok};
        Apri(file);
        EXPECT_EQ(UltimoBox(), caso.Atteso);
        EXPECT_EQ(macchina.Mostrati.back().Icona, Icon::Critical);
        EXPECT_EQ(DatiProgetto.NomeProgetto, "mio");
        EXPECT_EQ(DatiProgetto.Settore1, 0);  // cleared before anything else
        EXPECT_FALSE(finestra.Menu(Comando::Save));
        EXPECT_EQ(FileRecenteScelto, file);
        mnuOpen_Click();  // the failed path again, without asking
        EXPECT_EQ(UltimoBox(), caso.Atteso);
        FileRecenteScelto.clear();
    }
    macchina.FileScelti.push_back(std::nullopt);
    DatiProgetto.Settore1 = 5;
    mnuOpen_Click();
    EXPECT_EQ(DatiProgetto.Settore1, 0) << "a cancelled Open clears them too";
}

TEST_F(Progetto, SaveTouchesTheLastChangeAndSaveAsTheCreation) {
    mnuNew_Click();
    macchina.FileScelti.push_back(cartella / "c.pro");
    mnuSaveAs_Click();
    EXPECT_EQ(DatiProgetto.DataCreazione, macchina.Adesso);
    EXPECT_EQ(DatiProgetto.DataUltimaModifica, "");
    EXPECT_TRUE(finestra.Menu(Comando::Save));
    EXPECT_TRUE(finestra.Pulsante(Comando::ProgDev));
    EXPECT_EQ(finestra.Testo(Pannello::Progetto), "No Project Name");
    macchina.Adesso = "25/11/2026 08:00:00";
    mnuSave_Click();
    EXPECT_EQ(DatiProgetto.DataCreazione, "24/11/2026 10:20:30");
    EXPECT_EQ(DatiProgetto.DataUltimaModifica, macchina.Adesso);
    EXPECT_TRUE(finestra.Recenti.empty()) << "only an Open enters the recent list";
    DatiProgetto = {};
    Apri(cartella / "c.pro");
    EXPECT_EQ(DatiProgetto.NomeProgetto, " ") << "an empty name comes back as one blank";
}

TEST_F(Progetto, OverwriteIsAskedOnlyInTheProgramsOwnFolder) {
    mnuNew_Click();
    const fs::path mio = macchina.Cartella / "Mio.pro";
    prova::Scrivi(mio, "vecchio");
    macchina.FileScelti.push_back(macchina.Cartella / "mio.PRO");
    macchina.Risposte = {Answer::Cancel};
    mnuSaveAs_Click();
    EXPECT_EQ(UltimoBox(), (macchina.Cartella / "mio.PRO").string() + " " + Testo(Voce::EsisteGia));
    EXPECT_EQ(macchina.Mostrati.back().Titolo, Testo(Voce::SostituzioneFile));
    EXPECT_EQ(prova::Leggi(mio), "vecchio");
    EXPECT_EQ(DatiProgetto.DataCreazione, "");
    macchina.FileScelti.push_back(mio);
    macchina.Risposte = {Answer::Ok};
    mnuSaveAs_Click();
    EXPECT_EQ(prova::Leggi(mio).substr(0, 10), "ZEVProject");
    prova::Scrivi(cartella / "mio.pro", "vecchio");
    macchina.FileScelti.push_back(cartella / "mio.pro");
    mnuSaveAs_Click();  // no question elsewhere
    EXPECT_EQ(prova::Leggi(cartella / "mio.pro").substr(0, 10), "ZEVProject");
    macchina.FileScelti.push_back(std::nullopt);
    mnuSaveAs_Click();
    EXPECT_EQ(PercorsoProgetto, cartella / "mio.pro");
#ifndef _WIN32
    // A folder that can't be listed may still hold the very file.
    fs::permissions(macchina.Cartella, fs::perms{0311});
    {
        const prova::SenzaPrivilegi nessuno;
        macchina.Risposte = {Answer::Cancel};
        EXPECT_FALSE(ConfermaSostituzione(mio));
        EXPECT_TRUE(ConfermaSostituzione(macchina.Cartella / "altro.pro"));
    }
    fs::permissions(macchina.Cartella, fs::perms{0700});
#endif
}

TEST_F(Progetto, StopQuestionInAllItsForms) {
    EXPECT_TRUE(ConfermaChiusura());  // nothing changed, nothing asked
    mnuNew_Click();
    ProgettoModificato = true;
    macchina.Risposte = {Answer::Cancel};
    EXPECT_FALSE(ConfermaChiusura());
    EXPECT_EQ(UltimoBox(), Testo(Voce::IlProgettoSenzaNome) + Testo(Voce::EStatoModificato) +
                               "\r\n" + Testo(Voce::SalvareLeModifiche));
    EXPECT_EQ(macchina.Mostrati.back().Pulsanti, Buttons::YesNoCancel);

    DatiProgetto.NomeProgetto = "Monza";
    PercorsoProgetto = cartella / "d.pro";
    macchina.Risposte = {Answer::No};
    EXPECT_TRUE(ConfermaChiusura());
    EXPECT_EQ(UltimoBox(), Testo(Voce::IlProgetto) + "Monza " + Testo(Voce::EStatoModificato) +
                               "\r\n" + Testo(Voce::SalvareLeModifiche));
    EXPECT_FALSE(fs::exists(PercorsoProgetto));
    macchina.Risposte = {Answer::Yes};
    EXPECT_TRUE(ConfermaChiusura());
    EXPECT_TRUE(fs::exists(PercorsoProgetto));
    EXPECT_EQ(DatiProgetto.DataUltimaModifica, "");

    ProgettoModificato = true;
    PercorsoProgetto.clear();
    macchina.Risposte = {Answer::Yes};
    macchina.FileScelti.push_back(std::nullopt);  // a cancelled Save As still ends the program
    EXPECT_TRUE(ConfermaChiusura());
}

TEST_F(Progetto, WriteErrorsGoToTheDoorWithTheFile) {
    mnuNew_Click();
    PercorsoProgetto = macchina.Cartella / "manca" / "x.pro";
    try {
        mnuSave_Click();
        FAIL();
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.Numero(), NumeroErrore::PathNotFound);
        EXPECT_EQ(errore.File(), PercorsoProgetto);
    }
    EXPECT_TRUE(ProgettoModificato) << "it is not saved";
    PercorsoProgetto = cartella / "prima.pro";
    macchina.FileScelti.push_back(macchina.Cartella / "manca" / "y.pro");
    EXPECT_THROW(mnuSaveAs_Click(), ErroreRuntime);
    EXPECT_EQ(PercorsoProgetto, cartella / "prima.pro");
}

class Recenti : public Progetto {
 protected:
    fs::path Nuovo(const std::string& nome) {
        const fs::path file = cartella / nome;
        prova::Scrivi(file, Progetto0());
        return file;
    }
    std::string Ini() { return prova::Leggi(macchina.Cartella / "RecentFiles.ini"); }
    static std::string Utf8(const fs::path& percorso) {
        const std::u8string utf8 = percorso.u8string();
        return {reinterpret_cast<const char*>(utf8.data()), utf8.size()};
    }
    static std::string In1252(const std::vector<fs::path>& percorsi) {
        std::string testo;
        for (const fs::path& p : percorsi) {
            testo += TestoDaPercorso(p) + "\r\n";
        }
        return testo;
    }
};

TEST_F(Recenti, MostRecentFirstWithoutGapsOrDoubles) {
    const fs::path a = Nuovo("a.pro"), b = Nuovo("b.pro"), c = Nuovo("c.pro"), d = Nuovo("d.pro"),
                   e = Nuovo("e.pro");
    for (const fs::path& file : {a, b, c, d}) Apri(file);
    EXPECT_EQ(finestra.Recenti, (std::vector<fs::path>{d, c, b, a}));
    Apri(d);  // already on top
    EXPECT_EQ(Ini(), "1\r\n" + In1252({d, c, b, a}));
    Apri(b);
    EXPECT_EQ(Ini(), "1\r\n" + In1252({b, d, c, a}));
    Apri(e);
    EXPECT_EQ(finestra.Recenti, (std::vector<fs::path>{e, b, d, c}));
    mnuRecentFiles_Click(2);
    EXPECT_EQ(PercorsoProgetto, d);
    EXPECT_EQ(finestra.Recenti, (std::vector<fs::path>{d, e, b, c}));
    EXPECT_TRUE(FileRecenteScelto.empty());
}

TEST_F(Recenti, VanishedPathIsReportedAndTheListStays) {
    const fs::path a = Nuovo("a.pro");
    Apri(a);
    Apri(Nuovo("b.pro"));
    fs::remove(a);
    macchina.Risposte = {Answer::Ok};
    mnuRecentFiles_Click(1);
    EXPECT_NE(UltimoBox().find("a.pro " + Testo(Voce::NonTrovato)), std::string::npos);
    EXPECT_EQ(finestra.Recenti.size(), 2u);
    EXPECT_TRUE(FileRecenteScelto.empty()) << "an entry of the list clears the failed path";
}

TEST_F(Recenti, PathsThatThePageLacksComeBack) {
    const fs::path lodz = cartella / "\u0141\u00F3d\u017A" / "\u041F\u0440\u043E.pro";
    prova::Scrivi(lodz, Progetto0());
    const fs::path a = Nuovo("a.pro");
    Apri(lodz);
    Apri(a);
    EXPECT_EQ(Ini(), "1\r\n" + In1252({a}) + "\xEF\xBB\xBF" + Utf8(lodz) + "\r\n");
    EXPECT_EQ(finestra.Recenti, (std::vector<fs::path>{a, lodz}));
    mnuRecentFiles_Click(1);
    EXPECT_EQ(PercorsoProgetto, lodz);
    EXPECT_EQ(finestra.Recenti, (std::vector<fs::path>{lodz, a}));
}

TEST_F(Recenti, AListThatCantBeWrittenIsToldAndShown) {
    const fs::path a = Nuovo("a.pro"), b = Nuovo("b.pro");
    Apri(a);
    fs::remove(macchina.Cartella / "RecentFiles.ini");
    fs::create_directory(macchina.Cartella / "RecentFiles.ini");  // whoever asks
    macchina.Risposte = {Answer::Ok};
    Apri(b);
    EXPECT_EQ(UltimoBox(),
              Testo(Voce::NonScritto) + "\r\n" + (macchina.Cartella / "RecentFiles.ini").string() +
                  "\r\n" + Testo(Voce::MotivoNegato) + "\r\n\r\n" + Testo(Voce::RecentiNonSalvati));
    EXPECT_EQ(PercorsoProgetto, b);
    EXPECT_EQ(finestra.Recenti, (std::vector<fs::path>{b, a}));
    EXPECT_TRUE(FileRecenteScelto.empty());
}

TEST_F(Recenti, BrokenFilesEndTheProgram) {
    prova::Scrivi(macchina.Cartella / "RecentFiles.ini",
                  "0\r\n/a\r\n1\r\n/b\r\n/c\r\n/d\r\n/e\r\n");
    try {
        LeggiFileRecenti();
        FAIL();
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.Numero(), NumeroErrore::Subscript);
        EXPECT_EQ(errore.Riga(), 7);
    }
    EXPECT_TRUE(AnalisiSpeed);  // a line "1" counts wherever it stands
    fs::remove(macchina.Cartella / "RecentFiles.ini");
    EXPECT_THROW(LeggiFileRecenti(), ErroreRuntime);
}

}  // namespace
}  // namespace lapvane
