#include "device/RecordStrumento.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <set>

#include "device/SerialComm.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Strumento.h"
#include "project/DatiProgetto.h"
#include "sensors/Curve.h"
#include "shell/Editor.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/PlatformProva.h"
#include "support/SerialeProva.h"

namespace lapvane {
namespace {

using prova::PlatformProva;
using prova::PrincipaleProva;
using prova::SerialeProva;
using strumento::SerialeStrumento;
using strumento::Strumento;

/// Bytes of hexadecimal digits; blanks and bars separate, "*n" repeats the byte before n times.
std::string Hex(std::string_view testo) {
    const auto cifra = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
    std::string byte;
    for (std::size_t i = 0; i < testo.size();) {
        if (testo[i] == ' ' || testo[i] == '|') {
            ++i;
        } else if (testo[i] == '*') {
            int volte = 0;
            for (++i; i < testo.size() && testo[i] >= '0' && testo[i] <= '9'; ++i) {
                volte = volte * 10 + cifra(testo[i]);
            }
            byte.append(static_cast<std::size_t>(volte - 1), byte.back());
        } else {
            byte += static_cast<char>(cifra(testo[i]) * 16 + cifra(testo[i + 1]));
            i += 2;
        }
    }
    return byte;
}

/// An editor without a window.
class EditorProva : public Editor, public ControlliEditor {
 public:
    explicit EditorProva(std::string nome) : nome_(std::move(nome)) {}

    std::string_view Nome() const override { return nome_; }
    void AbilitaStrumento(bool) override {}
    ControlliEditor* Controlli() override { return this; }
    std::string Testo(std::string_view c) const override { return Testi.at(std::string(c)); }
    void Testo(std::string_view c, const std::string& t) override { Testi[std::string(c)] = t; }
    int Indice(std::string_view c) const override { return Indici.at(std::string(c)); }
    void Indice(std::string_view c, int i) override { Indici[std::string(c)] = i; }
    bool Spunta(std::string_view c) const override { return Spunte.at(std::string(c)); }
    void Spunta(std::string_view c, bool s) override { Spunte[std::string(c)] = s; }
    void Abilita(std::string_view c, bool a) override { Abilitati[std::string(c)] = a; }

    std::map<std::string, std::string> Testi;
    std::map<std::string, int> Indici;
    std::map<std::string, bool> Spunte;
    std::map<std::string, bool> Abilitati;

 private:
    std::string nome_;
};

void Imposta(std::initializer_list<bool RecordProgetto::*> flag, bool valore) {
    for (const auto membro : flag) DatiProgetto.*membro = valore;
}

using R = RecordProgetto;

/// A machine with a port; what is behind it is up to the test.
class Base : public ::testing::Test {
 protected:
    Base() {
        prova::CaricaTestiVeri(1);
        FaseComunicazione = 18;
    }
    ~Base() override { prova::AzzeraTutto(); }

    /// The one message box of a transfer that failed.
    void AttesoMessaggio(const std::string& testo, Icon icona = Icon::None) {
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, testo);
        EXPECT_EQ(macchina.Mostrati[0].Icona, icona);
        macchina.Mostrati.clear();
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
};

/// Against a port that notes the bytes.
class RecordStrumento : public Base {
 protected:
    RecordStrumento() {
        finestra.Seriale = &porta;
        porta.PortOpen(true);
    }

    /// The one frame of a send, which is acknowledged.
    std::string Inviato(void (*invia)(), const char* conferma) {
        porta.Scritti.clear();
        porta.Risponde = [this, conferma](const std::string&) { porta.Fra(20, Hex(conferma)); };
        ErroreComunicazione = true;
        invia();
        EXPECT_FALSE(ErroreComunicazione);
        EXPECT_EQ(FaseComunicazione, 18);
        EXPECT_EQ(finestra.Immagine(Pannello::TX), 3);  // has flashed
        EXPECT_EQ(porta.Scritti.size(), 1u);
        return porta.Scritti.empty() ? "" : porta.Scritti[0];
    }
    void Letto(void (*leggi)(), const char* richiesta, const char* risposta) {
        porta.Scritti.clear();
        porta.Risponde = [this, risposta](const std::string&) { porta.Fra(20, Hex(risposta)); };
        ErroreComunicazione = true;
        leggi();
        EXPECT_FALSE(ErroreComunicazione);
        EXPECT_EQ(FaseComunicazione, 18);
        EXPECT_EQ(finestra.Immagine(Pannello::RX), 3);
        EXPECT_EQ(porta.Scritti, std::vector<std::string>{Hex(richiesta)});
    }

    SerialeProva porta{macchina};
};

TEST_F(RecordStrumento, SetupGoesOutOfTheProject) {
    DatiProgetto.Lingua = 1;
    DatiProgetto.UMVel = 1;
    DatiProgetto.UMPress = 1;
    Imposta({&R::PaginaAbilitata2, &R::PaginaAbilitata3, &R::PaginaAbilitata4, &R::PaginaAbilitata5,
             &R::PaginaAbilitata6, &R::PaginaAbilitata7, &R::PaginaAbilitata8, &R::PaginaAbilitata9,
             &R::chkAbilRecLap},
            true);
    DatiProgetto.mskStopRecSecondi = 300;
    DatiProgetto.mskAbilRecVel = 80;
    EXPECT_EQ(Inviato(InviaDatiSetup1, "52 12 36 34 2A"),
              Hex("48 12 | 01 01 00 01 | 00 FF | 01 2C | 00 50 | 00*16 | 44 39"));
    DatiProgetto.TempoMsgGiro = 5;
    DatiProgetto.TempoVisGiro = 10;
    DatiProgetto.Settore1 = 1000;
    DatiProgetto.Settore2 = 900;
    DatiProgetto.Settore3 = 800;
    DatiProgetto.Settore5 = 32000;
    EXPECT_EQ(Inviato(InviaDatiSetup2, "52 1C 36 45 2A"),
              Hex("48 1C | 05 0A | 03 E8 03 84 03 20 00 00 7D 00 | 00*10 | 38 35"));

    DatiProgetto = {};
    DatiProgetto.UMTemp = 1;
    Imposta(
        {&R::PaginaAbilitata1, &R::PaginaAbilitata3, &R::PaginaAbilitata9, &R::PaginaAbilitata10},
        true);
    DatiProgetto.mskStopRecSecondi = -1;
    DatiProgetto.mskAbilRecVel = 32768;
    EXPECT_EQ(Inviato(InviaDatiSetup1, "52 12 36 34 2A"),
              Hex("48 12 | 00 00 01 00 | 00 82 | 00 FF | 80 00 | 00*16 | 35 43"));
    DatiProgetto.TempoMsgGiro = -1;
    DatiProgetto.TempoVisGiro = 256;
    DatiProgetto.Settore1 = 32768;
    DatiProgetto.Settore2 = -2;
    DatiProgetto.Settore3 = 70000;
    DatiProgetto.Settore4 = 65535;
    DatiProgetto.Settore5 = 1;
    EXPECT_EQ(Inviato(InviaDatiSetup2, "52 1C 36 45 2A"),
              Hex("48 1C | FF 00 | 80 00 FF FE 11 70 FF FF 00 01 | 00*10 | 36 30"));
}

TEST_F(RecordStrumento, SensorAssignmentGoesOutOfTheProject) {
    DatiProgetto.NumAccRPM = 2;
    DatiProgetto.ImpulsiRuota = 4;
    DatiProgetto.DiametroRuota = 590;
    DatiProgetto.LAPO = 1;
    DatiProgetto.LAAL = 2;
    Imposta({&R::AbilTO, &R::AbilPB, &R::AbilLB, &R::AbilSG, &R::AbilPT}, true);
    DatiProgetto.ChannCambio = 1;
    DatiProgetto.ChannSensoreLambda = 2;
    DatiProgetto.ChannPT = 3;
    EXPECT_EQ(Inviato(InviaDatiSensori, "52 16 36 38 2A"),
              Hex("48 16 | 02 04 | 02 4E | 01 02 | 01 00 01 00 01 00 01 00 | 02 01 03 04 | 01 |"
                  "00*15 | 43 36"));

    DatiProgetto = {};
    DatiProgetto.NumAccRPM = -1;
    DatiProgetto.ImpulsiRuota = 300;
    DatiProgetto.DiametroRuota = -32768;
    Imposta({&R::AbilTO, &R::AbilPO, &R::AbilLB, &R::AbilCambio}, true);
    DatiProgetto.ChannCambio = -1;
    DatiProgetto.ChannSG = 1;
    DatiProgetto.ChannSensoreLambda = 32767;
    EXPECT_EQ(Inviato(InviaDatiSensori, "52 16 36 38 2A"),
              Hex("48 16 | FF 2C | 80 00 | 00 00 | 01 01 00 00 01 01 00 00 | 00 02 00 01 | 00 |"
                  "00*15 | 31 30"));
}

TEST_F(RecordStrumento, AlarmsGoOutOfTheProject) {
    Imposta({&R::chkTO, &R::chkPO, &R::chkTA, &R::chkLB, &R::chkTB}, true);
    DatiProgetto.mskTO = 1250;
    DatiProgetto.mskPO = 1200;
    DatiProgetto.mskPB = 2500;  // switched off
    DatiProgetto.mskTA = 1020;
    DatiProgetto.mskLB = 50;
    DatiProgetto.mskTB = 120;
    DatiProgetto.Led0 = 9500;
    DatiProgetto.Led1 = 10000;
    DatiProgetto.Led2 = 10500;
    DatiProgetto.Led3 = 11000;
    DatiProgetto.Led4 = 11500;
    Imposta({&R::LedGiallo, &R::LedVerde, &R::LedBlu, &R::chkIngresso, &R::chkUscita}, true);
    DatiProgetto.TipoLedGiallo = "1";
    DatiProgetto.TipoLedVerde = "2";
    DatiProgetto.TipoLedBlu = "3";
    DatiProgetto.TipoIngresso = 1;
    DatiProgetto.TipoUscita = 3;
    EXPECT_EQ(Inviato(InviaDatiAllarmi, "52 14 36 36 2A"),
              Hex("48 14 | 04 E2 | 04 B0 | 00 00 | 03 FC | 00 32 | 00 78 | 25 1C | 27 10 | 29 04 |"
                  "2A F8 | 2C EC | 01 00 00 03 00 00 | 00*20 | 38 32"));

    DatiProgetto = {};
    DatiProgetto.mskTO = 1250;
    Imposta({&R::chkPO, &R::chkPB, &R::chkTA, &R::chkLB, &R::LedGiallo}, true);
    DatiProgetto.mskPO = 32768;
    DatiProgetto.mskPB = 70000;
    DatiProgetto.mskTA = -1;
    DatiProgetto.Led0 = -1;
    DatiProgetto.Led1 = 32767;
    DatiProgetto.TipoUscita = 5;  // switched off
    EXPECT_EQ(Inviato(InviaDatiAllarmi, "52 14 36 36 2A"),
              Hex("48 14 | 00 00 | 80 00 | 11 70 | FF FF | 00 00 | 00 00 | FF FF | 7F FF | 00*6 |"
                  "00 00 00 00 00 00 | 00*20 | 44 37"));
}

TEST_F(RecordStrumento, OpenEditorsSendWhatTheyShow) {
    DatiProgetto.Lingua = 9;
    DatiProgetto.mskAbilRecVel = 999;
    EditorProva setup("frmConfigurazione");
    ImpostaFormAttiva(&setup);
    setup.Indici = {
        {"cboLingua", 1}, {"cboUMVelocita", -1}, {"cboUMTemperatura", 0}, {"cboUMPressione", 1}};
    for (char c = '0'; c <= '9'; ++c) setup.Spunte[std::string("PagineAbilitateTemp") + c] = false;
    setup.Spunte["PagineAbilitateTemp0"] = true;  // page 1
    setup.Spunte["PagineAbilitateTemp1"] = true;
    setup.Spunte["PagineAbilitateTemp8"] = true;
    setup.Spunte["PagineAbilitateTemp9"] = true;
    setup.Spunte["chkAbilRecLAP"] = true;
    setup.Testi = {{"txtStopRecSecondi", "12.5"},  {"txtAbilRecVel", ""},
                   {"txtTempoMsgGiro", "3.5"},     {"txtTempoVisGiro", "2.5"},
                   {"txtSettoreCrono0", "1205.5"}, {"txtSettoreCrono1", " 65535 "},
                   {"txtSettoreCrono2", "-1"},     {"txtSettoreCrono3", ""},
                   {"txtSettoreCrono4", "100,5"}};
    EXPECT_EQ(Inviato(InviaDatiSetup1, "52 12 36 34 2A"),
              Hex("48 12 | 01 FF 00 01 | 00 81 | 01 0C | 00 00 | 00*16 | 45 39"));
    EXPECT_EQ(Inviato(InviaDatiSetup2, "52 1C 36 45 2A"),
              Hex("48 1C | 04 02 | 04 B6 FF FF FF FF 00 00 00 64 | 00*10 | 38 34"));

    EditorProva sensori("frmSensori");
    ImpostaFormAttiva(&sensori);
    sensori.Testi = {{"txtNumAccRPM", "2"}, {"txtImpulsiRuota", "4"}, {"txtDiametroRuota", "590"}};
    sensori.Indici = {{"cboLAPO", 1},
                      {"cboLAAL", 2},
                      {"cboChannCambio", 1},
                      {"cboChannSG", 0},
                      {"cboChannSensoreLambda", -1},
                      {"cboChannPT", 1}};
    sensori.Spunte = {{"chkAbilTO", true}, {"chkAbilPO", false},
                      {"chkAbilPB", true}, {"chkAbilTA", false},
                      {"chkAbilLB", true}, {"chkAbilCambio", false},
                      {"chkAbilSG", true}, {"chkAbilSensoreLambda", false},
                      {"chkAbilPT", true}};
    EXPECT_EQ(Inviato(InviaDatiSensori, "52 16 36 38 2A"),
              Hex("48 16 | 02 04 | 02 4E | 01 02 | 01 00 01 00 01 00 01 00 | 02 01 00 02 | 01 |"
                  "00*15 | 43 31"));

    EditorProva allarmi("frmAllarmi");
    ImpostaFormAttiva(&allarmi);
    allarmi.Spunte = {{"chkTO", true},        {"chkPO", true},     {"chkPB", true},
                      {"chkTA", false},       {"chkLB", true},     {"chkTB", true},
                      {"chkLedGiallo", true}, {"chkUscita", true}, {"chkIngresso", true}};
    allarmi.Testi = {{"txtTO", "120.25"}, {"txtPO", "2.5"},       {"txtPB", "32.768"},
                     {"txtTA", "99.0"},   {"txtLB", "12.35"},     {"txtTB", "abc"},
                     {"txtLed0", "9500"}, {"txtLed1", "10000.5"}, {"txtLed2", ""},
                     {"txtLed3", "0"},    {"txtLed4", "32767"}};
    allarmi.Indici = {{"cboLedGiallo", 0}, {"cboUscita", 6}, {"cboIngresso", 0}};
    EXPECT_EQ(Inviato(InviaDatiAllarmi, "52 14 36 36 2A"),
              Hex("48 14 | 04 B2 | 09 C4 | 80 00 | 00 00 | 00 7C | 00 00 | 25 1C | 27 10 | 00 00 |"
                  "00 00 | 7F FF | 01 00 00 07 00 00 | 00*20 | 44 39"));
    // Nothing chosen, and switched off with something chosen.
    allarmi.Indici["cboLedGiallo"] = -1;
    allarmi.Spunte["chkUscita"] = false;
    const std::string senza = Inviato(InviaDatiAllarmi, "52 14 36 36 2A");
    EXPECT_EQ(senza.substr(24, 6), Hex("00*6"));
    EXPECT_EQ(DatiProgetto.mskAbilRecVel, 999);
}

TEST_F(RecordStrumento, EveryFlagHasItsOwnPlace) {
    struct Posto {
        bool R::*Membro;
        const char* Controllo;
        std::size_t Byte;  // from 1
        char Valore;
    };
    const auto prova = [this](void (*invia)(), const char* conferma, EditorProva& editor,
                              const std::vector<Posto>& posti) {
        for (const Posto& posto : posti) editor.Spunte[posto.Controllo] = false;
        DatiProgetto = {};
        ImpostaFormAttiva(nullptr);
        const std::string spento = Inviato(invia, conferma);
        ImpostaFormAttiva(&editor);
        const std::string editorSpento = Inviato(invia, conferma);
        const auto solo = [](std::string frame, const Posto& posto) {
            frame[posto.Byte - 1] = posto.Valore;
            return frame.substr(0, frame.size() - 2);  // the checksum has its own tests
        };
        for (const Posto& posto : posti) {
            SCOPED_TRACE(posto.Controllo);
            ImpostaFormAttiva(nullptr);
            DatiProgetto.*posto.Membro = true;
            EXPECT_TRUE(Inviato(invia, conferma).starts_with(solo(spento, posto)));
            DatiProgetto.*posto.Membro = false;
            ImpostaFormAttiva(&editor);
            editor.Spunte[posto.Controllo] = true;
            EXPECT_TRUE(Inviato(invia, conferma).starts_with(solo(editorSpento, posto)));
            editor.Spunte[posto.Controllo] = false;
        }
    };
    EditorProva setup("frmConfigurazione");
    for (const char* lista : {"cboLingua", "cboUMVelocita", "cboUMTemperatura", "cboUMPressione"}) {
        setup.Indici[lista] = 0;
    }
    setup.Testi = {{"txtStopRecSecondi", ""}, {"txtAbilRecVel", ""}};
    prova(InviaDatiSetup1, "52 12 36 34 2A", setup,
          {{&R::PaginaAbilitata2, "PagineAbilitateTemp1", 8, '\x01'},
           {&R::PaginaAbilitata3, "PagineAbilitateTemp2", 8, '\x02'},
           {&R::PaginaAbilitata4, "PagineAbilitateTemp3", 8, '\x04'},
           {&R::PaginaAbilitata5, "PagineAbilitateTemp4", 8, '\x08'},
           {&R::PaginaAbilitata6, "PagineAbilitateTemp5", 8, '\x10'},
           {&R::PaginaAbilitata7, "PagineAbilitateTemp6", 8, '\x20'},
           {&R::PaginaAbilitata8, "PagineAbilitateTemp7", 8, '\x40'},
           {&R::PaginaAbilitata9, "PagineAbilitateTemp8", 8, '\x80'},
           {&R::chkAbilRecLap, "chkAbilRecLAP", 9, '\x01'}});
    EditorProva sensori("frmSensori");
    sensori.Testi = {{"txtNumAccRPM", ""}, {"txtImpulsiRuota", ""}, {"txtDiametroRuota", ""}};
    for (const char* lista : {"cboLAPO", "cboLAAL", "cboChannCambio", "cboChannSG",
                              "cboChannSensoreLambda", "cboChannPT"}) {
        sensori.Indici[lista] = 0;
    }
    prova(InviaDatiSensori, "52 16 36 38 2A", sensori,
          {{&R::AbilTO, "chkAbilTO", 9, '\x01'},
           {&R::AbilPO, "chkAbilPO", 10, '\x01'},
           {&R::AbilPB, "chkAbilPB", 11, '\x01'},
           {&R::AbilTA, "chkAbilTA", 12, '\x01'},
           {&R::AbilLB, "chkAbilLB", 13, '\x01'},
           {&R::AbilCambio, "chkAbilCambio", 14, '\x01'},
           {&R::AbilSG, "chkAbilSG", 15, '\x01'},
           {&R::AbilSensoreLambda, "chkAbilSensoreLambda", 16, '\x01'},
           {&R::AbilPT, "chkAbilPT", 21, '\x01'}});
}

TEST_F(RecordStrumento, RepliesFillTheProject) {
    Imposta({&R::PaginaAbilitata1, &R::PaginaAbilitata2, &R::PaginaAbilitata10}, true);
    // The first two characters are not looked at.
    Letto(LeggiDatiSetup1, "48 13 35 42", "58 58 | 02 01 00 03 | 80 82 | 05 FF | FF FE | 41*18");
    EXPECT_EQ(DatiProgetto.Lingua, 2);
    EXPECT_EQ(DatiProgetto.UMVel, 1);
    EXPECT_EQ(DatiProgetto.UMTemp, 0);
    EXPECT_EQ(DatiProgetto.UMPress, 3);
    for (const auto& [membro, atteso] :
         std::vector<std::pair<bool R::*, bool>>{{&R::PaginaAbilitata1, true},
                                                 {&R::PaginaAbilitata2, false},
                                                 {&R::PaginaAbilitata3, true},
                                                 {&R::PaginaAbilitata4, false},
                                                 {&R::PaginaAbilitata8, false},
                                                 {&R::PaginaAbilitata9, true},
                                                 {&R::PaginaAbilitata10, true},
                                                 {&R::chkAbilRecLap, true}}) {
        EXPECT_EQ(DatiProgetto.*membro, atteso);
    }
    EXPECT_EQ(DatiProgetto.mskStopRecSecondi, 255);
    EXPECT_EQ(DatiProgetto.mskAbilRecVel, -2);

    Letto(LeggiDatiSetup2, "48 1D 36 35", "52 1D | 05 FF | 80 00 FF FF 03 E8 00 00 7F FF | 41*2");
    EXPECT_EQ(DatiProgetto.TempoMsgGiro, 5);
    EXPECT_EQ(DatiProgetto.TempoVisGiro, 255);
    EXPECT_EQ(DatiProgetto.Settore1, -32768);
    EXPECT_EQ(DatiProgetto.Settore2, -1);
    EXPECT_EQ(DatiProgetto.Settore3, 1000);
    EXPECT_EQ(DatiProgetto.Settore4, 0);
    EXPECT_EQ(DatiProgetto.Settore5, 32767);

    Imposta({&R::AbilPO, &R::AbilPT}, true);
    Letto(LeggiDatiSensori, "48 17 35 46",
          "52 17 | 02 63 | FF FE | 02 01 | 02 00 FF 00 00 01 00 01 | 00 01 FF 02 | 00");
    EXPECT_EQ(DatiProgetto.NumAccRPM, 2);
    EXPECT_EQ(DatiProgetto.ImpulsiRuota, 99);
    EXPECT_EQ(DatiProgetto.DiametroRuota, -2);
    EXPECT_EQ(DatiProgetto.LAPO, 2);
    EXPECT_EQ(DatiProgetto.LAAL, 1);
    for (const auto& [membro, atteso] :
         std::vector<std::pair<bool R::*, bool>>{{&R::AbilTO, true},
                                                 {&R::AbilPO, false},
                                                 {&R::AbilPB, true},
                                                 {&R::AbilTA, false},
                                                 {&R::AbilLB, false},
                                                 {&R::AbilCambio, true},
                                                 {&R::AbilSG, false},
                                                 {&R::AbilSensoreLambda, true},
                                                 {&R::AbilPT, false}}) {
        EXPECT_EQ(DatiProgetto.*membro, atteso);
    }
    EXPECT_EQ(DatiProgetto.ChannCambio, -1);
    EXPECT_EQ(DatiProgetto.ChannSG, 0);
    EXPECT_EQ(DatiProgetto.ChannSensoreLambda, 254);
    EXPECT_EQ(DatiProgetto.ChannPT, 1);

    Imposta({&R::chkPO, &R::chkPB, &R::chkIngresso, &R::chkUscita, &R::LedVerde}, true);
    DatiProgetto.TipoLedVerde = "7";
    Letto(LeggiDatiAllarmi, "48 15 35 44",
          "52 15 | 00 01 | 80 00 | 00 00 | 03 FC | FF FF | 00 78 | 25 1C | 80 00 | 00 00 | 00 01 |"
          "7F FF | FF 41 41 00 02 | 41*2");
    EXPECT_EQ(DatiProgetto.mskTO, 1);
    EXPECT_TRUE(DatiProgetto.chkTO);
    EXPECT_EQ(DatiProgetto.mskPO, -32768);
    EXPECT_FALSE(DatiProgetto.chkPO);
    EXPECT_EQ(DatiProgetto.mskPB, 0);
    EXPECT_FALSE(DatiProgetto.chkPB);
    EXPECT_EQ(DatiProgetto.mskTA, 1020);
    EXPECT_TRUE(DatiProgetto.chkTA);
    EXPECT_EQ(DatiProgetto.mskLB, -1);
    EXPECT_FALSE(DatiProgetto.chkLB);
    EXPECT_EQ(DatiProgetto.mskTB, 120);
    EXPECT_EQ(DatiProgetto.Led0, 9500);
    EXPECT_EQ(DatiProgetto.Led1, -32768);
    EXPECT_EQ(DatiProgetto.Led3, 1);
    EXPECT_EQ(DatiProgetto.Led4, 32767);
    EXPECT_EQ(DatiProgetto.TipoLedGiallo, "255");
    EXPECT_TRUE(DatiProgetto.LedGiallo);
    EXPECT_EQ(DatiProgetto.TipoUscita, 0);
    EXPECT_FALSE(DatiProgetto.chkUscita);
    EXPECT_EQ(DatiProgetto.TipoIngresso, 2);
    EXPECT_FALSE(DatiProgetto.chkIngresso);
    EXPECT_TRUE(DatiProgetto.LedVerde);
    EXPECT_EQ(DatiProgetto.TipoLedVerde, "7");
}

TEST_F(RecordStrumento, RepliesFillTheOpenEditorAndNotTheProject) {
    EditorProva setup("frmConfigurazione");
    ImpostaFormAttiva(&setup);
    Letto(LeggiDatiSetup1, "48 13 35 42", "52 13 | 01 00 01 00 | 00 81 | 00 1E | FF FE | 00*18");
    Letto(LeggiDatiSetup2, "48 1D 36 35", "52 1D | 05 FF | 80 00 00 02 03 E8 00 00 7F FF | 00*2");
    using Testi = std::map<std::string, std::string>;
    using Indici = std::map<std::string, int>;
    using Spunte = std::map<std::string, bool>;
    EXPECT_EQ(setup.Indici, (Indici{{"cboLingua", 1},
                                    {"cboUMVelocita", 0},
                                    {"cboUMTemperatura", 1},
                                    {"cboUMPressione", 0}}));
    EXPECT_EQ(setup.Spunte, (Spunte{{"PagineAbilitateTemp1", true},
                                    {"PagineAbilitateTemp2", false},
                                    {"PagineAbilitateTemp3", false},
                                    {"PagineAbilitateTemp4", false},
                                    {"PagineAbilitateTemp5", false},
                                    {"PagineAbilitateTemp6", false},
                                    {"PagineAbilitateTemp7", false},
                                    {"PagineAbilitateTemp8", true},
                                    {"chkAbilRecLAP", false}}));
    EXPECT_EQ(setup.Testi, (Testi{{"txtStopRecSecondi", "30"},
                                  {"txtAbilRecVel", "-2"},
                                  {"txtTempoMsgGiro", "5"},
                                  {"txtTempoVisGiro", "255"},
                                  {"txtSettoreCrono0", "-32768"},
                                  {"txtSettoreCrono1", "2"},
                                  {"txtSettoreCrono2", "1000"},
                                  {"txtSettoreCrono3", "0"},
                                  {"txtSettoreCrono4", "32767"}}));

    EditorProva sensori("frmSensori");
    ImpostaFormAttiva(&sensori);
    Letto(LeggiDatiSensori, "48 17 35 46",
          "52 17 | 02 63 | 02 4E | 02 01 | 01 00 02 00 00 01 00 01 | 00 01 02 02 | 01");
    EXPECT_EQ(
        sensori.Testi,
        (Testi{{"txtNumAccRPM", "2"}, {"txtImpulsiRuota", "99"}, {"txtDiametroRuota", "590"}}));
    EXPECT_EQ(sensori.Indici, (Indici{{"cboLAPO", 2},
                                      {"cboLAAL", 1},
                                      {"cboChannCambio", -1},
                                      {"cboChannSG", 0},
                                      {"cboChannSensoreLambda", 1},
                                      {"cboChannPT", 1}}));
    EXPECT_EQ(sensori.Spunte, (Spunte{{"chkAbilTO", true},
                                      {"chkAbilPO", false},
                                      {"chkAbilPB", true},
                                      {"chkAbilTA", false},
                                      {"chkAbilLB", false},
                                      {"chkAbilCambio", true},
                                      {"chkAbilSG", false},
                                      {"chkAbilSensoreLambda", true},
                                      {"chkAbilPT", true}}));

    EditorProva allarmi("frmAllarmi");
    ImpostaFormAttiva(&allarmi);
    allarmi.Testi["txtPB"] = "2.500";
    allarmi.Indici["cboUscita"] = 4;
    Letto(LeggiDatiAllarmi, "48 15 35 44",
          "52 15 | 04 E2 | 00 01 | 80 00 | 03 FD | 00 32 | 7F FF | 25 1C | 80 00 | 00 00 | 00 01 |"
          "7F FF | 01 41 41 00 01 | 41*2");
    EXPECT_EQ(allarmi.Testi, (Testi{{"txtTO", "125.0"},
                                    {"txtPO", "0.001"},
                                    {"txtPB", "2.500"},  // as it was
                                    {"txtTA", "102.1"},
                                    {"txtLB", "5.0"},
                                    {"txtTB", "3276.7"},
                                    {"txtLed0", "9500"},
                                    {"txtLed1", "-32768"},
                                    {"txtLed2", "0"},
                                    {"txtLed3", "1"},
                                    {"txtLed4", "32767"}}));
    EXPECT_EQ(allarmi.Spunte, (Spunte{{"chkTO", true},
                                      {"chkPO", true},
                                      {"chkPB", false},
                                      {"chkTA", true},
                                      {"chkLB", true},
                                      {"chkTB", true},
                                      {"chkLedGiallo", true},
                                      {"chkUscita", false},
                                      {"chkIngresso", true}}));
    EXPECT_EQ(allarmi.Abilitati, (Spunte{{"txtTO", true},
                                         {"txtPO", true},
                                         {"txtPB", false},
                                         {"txtTA", true},
                                         {"txtLB", true},
                                         {"txtTB", true},
                                         {"cboLedGiallo", true},
                                         {"cboUscita", false},
                                         {"cboIngresso", true}}));
    EXPECT_EQ(allarmi.Indici, (Indici{{"cboLedGiallo", 0}, {"cboUscita", 4}, {"cboIngresso", 0}}));
    EXPECT_EQ(DatiProgetto.Lingua, 0);
    EXPECT_EQ(DatiProgetto.NumAccRPM, 0);
    EXPECT_EQ(DatiProgetto.mskTO, 0);
}

TEST_F(RecordStrumento, CurvesTravelAsWordsInBothDirections) {
    for (std::size_t i = 0; i < 20; ++i) CurvaX[i] = static_cast<double>(i) * 16.0;
    CurvaX[20] = 555.0;
    CurvaY = {2.5, 3.5, 1001.4999999999999, -1.0, 40000.0, 32768.0, 70000.0, 0.5, 1.5, -2.5};
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(3); }, "52 18 36 41 2A"),
              Hex("48 18 | 03 | 00 14 | 00 01 | 00 00 | 00 00 | 00 00 | 00 28 | 00 02 |"
                  "00 00 00 10 00 20 00 30 00 40 00 50 00 60 00 70 00 80 00 90"
                  "00 A0 00 B0 00 C0 00 D0 00 E0 00 F0 01 00 01 10 01 20 01 30 | 00 00 |"
                  "00 02 00 04 03 EA FF FF 9C 40 80 00 11 70 00 00 00 02 FF FE 00*20 | 35 33"));
    CurvaX.fill(0.0);
    CurvaY.fill(0.0);
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(8); }, "52 18 36 41 2A"),
              Hex("48 18 08 | 00 14 00 01 00*6 00 28 00 02 | 00*82 | 41 37"));

    CurvaX[20] = 1.5;
    CurvaY[20] = 2.5;
    Letto([] { LeggiCurvaSensore(4); }, "48 19 04 36 35",
          "52 19 | 41*14 | 00 01 FF FF 80 00 7F FF 00*30 04 00 | 41*2 |"
          "9C 40 00 05 00*34 FF FE | 41");
    EXPECT_EQ(CurvaX[0], 1.0);
    EXPECT_EQ(CurvaX[1], -1.0);
    EXPECT_EQ(CurvaX[2], -32768.0);
    EXPECT_EQ(CurvaX[3], 32767.0);
    EXPECT_EQ(CurvaX[18], 0.0);
    EXPECT_EQ(CurvaX[19], 1024.0);
    EXPECT_EQ(CurvaX[20], 1.5);
    EXPECT_EQ(CurvaY[0], -25536.0);
    EXPECT_EQ(CurvaY[1], 5.0);
    EXPECT_EQ(CurvaY[18], 0.0);
    EXPECT_EQ(CurvaY[19], -2.0);
    EXPECT_EQ(CurvaY[20], 2.5);
}

TEST_F(RecordStrumento, WhatIsNoNumberIsShownAndNotSent) {
    const auto rifiutato = [this](void (*invia)(), const std::string& valore) {
        SCOPED_TRACE(valore);
        macchina.Risposte = {Answer::Ok};
        ErroreComunicazione = false;
        invia();
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_TRUE(porta.Scritti.empty());
        EXPECT_EQ(FaseComunicazione, 18);
        AttesoMessaggio(Testo(262) + "\r\n\"" + valore + "\"", Icon::Warning);
    };
    DatiProgetto.LedGiallo = true;
    DatiProgetto.TipoLedGiallo = "giallo";
    rifiutato(InviaDatiAllarmi, "giallo");

    EditorProva sensori("frmSensori");
    ImpostaFormAttiva(&sensori);
    sensori.Testi = {{"txtNumAccRPM", "12x"}};
    rifiutato(InviaDatiSensori, "12x");
    sensori.Testi = {{"txtNumAccRPM", "3000000000"}};
    rifiutato(InviaDatiSensori, "3000000000");

    EditorProva allarmi("frmAllarmi");
    ImpostaFormAttiva(&allarmi);
    allarmi.Spunte = {{"chkTO", true}};
    allarmi.Testi = {{"txtTO", "1E9"}};
    rifiutato(InviaDatiAllarmi, "1E9");
    allarmi.Testi = {{"txtTO", "1E999"}};
    rifiutato(InviaDatiAllarmi, "1E999");

    ImpostaFormAttiva(nullptr);
    CurvaY[19] = 3e9;
    rifiutato([] { InviaCurvaSensore(1); }, "3000000000");
    CurvaY[19] = std::numeric_limits<double>::quiet_NaN();
    rifiutato([] { InviaCurvaSensore(1); }, "");
}

TEST_F(RecordStrumento, AnyOtherFormGetsAndGivesNoRecord) {
    EditorProva altra("frmImpostaSensore");
    ImpostaFormAttiva(&altra);
    DatiProgetto.Lingua = 1;
    DatiProgetto.TempoMsgGiro = 5;
    // The setup's frames go out without their fields.
    EXPECT_EQ(Inviato(InviaDatiSetup1, "52 12 36 34 2A"), Hex("48 12 | 00*16 | 35 41"));
    EXPECT_EQ(Inviato(InviaDatiSetup2, "52 1C 36 45 2A"), Hex("48 1C"));
    porta.Scritti.clear();
    for (const auto invia : {InviaDatiSensori, InviaDatiAllarmi}) {
        macchina.Risposte = {Answer::Ok};
        ErroreComunicazione = false;
        invia();
        EXPECT_TRUE(ErroreComunicazione);
        AttesoMessaggio(Testo(242));
    }
    EXPECT_TRUE(porta.Scritti.empty());

    Letto(LeggiDatiSetup1, "48 13 35 42", "52 13 | 02*28");
    Letto(LeggiDatiSetup2, "48 1D 36 35", "52 1D | 02*14");
    Letto(LeggiDatiSensori, "48 17 35 46", "52 17 | 02*19");
    Letto(LeggiDatiAllarmi, "48 15 35 44", "52 15 | 02*29");
    EXPECT_EQ(DatiProgetto.Lingua, 1);
    EXPECT_EQ(DatiProgetto.TempoMsgGiro, 5);
    EXPECT_EQ(DatiProgetto.NumAccRPM, 0);
    EXPECT_EQ(DatiProgetto.mskTO, 0);
    EXPECT_TRUE(altra.Testi.empty() && altra.Indici.empty() && altra.Spunte.empty());
    // A curve does not ask which form is open.
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(0); }, "52 18 36 41 2A").size(), 101u);
}

TEST_F(RecordStrumento, AnEditorThatClosesDuringItsReadLeavesNoTrace) {
    for (const int chiusura : {1, 30}) {  // while the reply is awaited, while the lamp flashes
        EditorProva allarmi("frmAllarmi");
        ImpostaFormAttiva(&allarmi);
        int eventi = 0;
        macchina.DuranteEventi = [&] {
            if (++eventi == chiusura) ImpostaFormAttiva(nullptr);
        };
        Letto(LeggiDatiAllarmi, "48 15 35 44", "52 15 | 02*29");
        EXPECT_GE(eventi, chiusura);
        EXPECT_TRUE(allarmi.Testi.empty());
        EXPECT_EQ(DatiProgetto.mskTO, 0);
        EXPECT_EQ(DatiProgetto.Led0, 0);
    }
}

/// Against the simulated instrument.
class ConLoStrumento : public Base {
 protected:
    ConLoStrumento() {
        finestra.Seriale = &porta;
        FaseComunicazione = 0;
        EXPECT_TRUE(LinkPronto());
        FaseComunicazione = 19;
    }
    void Guasto(const std::string& testo) {
        apparecchio.Difetti.Togli();
        apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto(testo));
    }
    /// How long a transfer took, in ms.
    std::int64_t Durata(const std::function<void()>& transfer) {
        const std::int64_t inizio = macchina.Orologio;
        transfer();
        EXPECT_EQ(FaseComunicazione, 19);
        return macchina.Orologio - inizio;
    }
    void Fallisce(const std::function<void()>& transfer, std::int64_t attesa,
                  std::size_t tentativi = 1) {
        macchina.Risposte = {Answer::Ok};
        macchina.Puntatori.clear();
        ErroreComunicazione = false;
        const std::size_t prima = porta.Richieste().size();
        const std::int64_t durata = Durata(transfer);
        EXPECT_GE(durata, attesa);
        EXPECT_LE(durata, attesa + 50);
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_EQ(porta.Richieste().size(), prima + tentativi);
        EXPECT_EQ(macchina.Puntatori, std::vector<Pointer>{Pointer::Normal});
        AttesoMessaggio(Testo(242));
    }
    void Riesce(const std::function<void()>& transfer) {
        ErroreComunicazione = true;
        EXPECT_GE(Durata(transfer), 500);
        EXPECT_FALSE(ErroreComunicazione);
    }

    Strumento apparecchio;
    SerialeStrumento porta{apparecchio, [this] { return macchina.GetTickCount(); },
                           [this](int ms) { macchina.Sleep(ms); }};
};

TEST_F(ConLoStrumento, WritesFailOnSilenceAndOnAnyOtherAcknowledgement) {
    for (const auto& [comando, invia] :
         std::vector<std::pair<const char*, void (*)()>>{{"18", InviaDatiSetup1},
                                                         {"28", InviaDatiSetup2},
                                                         {"22", InviaDatiSensori},
                                                         {"24", [] { InviaCurvaSensore(2); }},
                                                         {"20", InviaDatiAllarmi}}) {
        SCOPED_TRACE(comando);
        for (const char* guasto : {"drop:", "corrupt:3:", "cut:4:", "extra:1:"}) {
            SCOPED_TRACE(guasto);
            Guasto(std::string(guasto) + comando);
            Fallisce(invia, 10000);
            apparecchio.Difetti.Togli();
            Riesce(invia);
        }
        Guasto(std::string("delay:9900:") + comando);
        Riesce(invia);
    }
    porta.Sparisci();
    Fallisce(InviaDatiSensori, 0, 0);  // the port is closed
}

TEST_F(ConLoStrumento, ReadsFailOnSilenceAndShortRepliesAndKeepTheirTarget) {
    DatiProgetto.Lingua = 7;
    DatiProgetto.Settore1 = 8;
    DatiProgetto.NumAccRPM = 9;
    DatiProgetto.mskTO = 10;
    CurvaX.fill(11.0);
    CurvaY.fill(12.0);
    const auto intatto = [] {
        EXPECT_EQ(DatiProgetto.Lingua, 7);
        EXPECT_EQ(DatiProgetto.Settore1, 8);
        EXPECT_EQ(DatiProgetto.NumAccRPM, 9);
        EXPECT_EQ(DatiProgetto.mskTO, 10);
        EXPECT_EQ(CurvaX[0], 11.0);
        EXPECT_EQ(CurvaY[19], 12.0);
    };
    struct Lettura {
        std::string Comando;
        int Corta;  // one character short
        void (*Leggi)();
    };
    const std::vector<Lettura> letture = {{"19", 29, LeggiDatiSetup1},
                                          {"29", 15, LeggiDatiSetup2},
                                          {"23", 20, LeggiDatiSensori},
                                          {"25", 98, [] { LeggiCurvaSensore(2); }},
                                          {"21", 30, LeggiDatiAllarmi}};
    for (const Lettura& lettura : letture) {
        SCOPED_TRACE(lettura.Comando);
        for (const std::string& guasto :
             {"drop:" + lettura.Comando,
              "cut:" + std::to_string(lettura.Corta) + ":" + lettura.Comando,
              "delay:5100:" + lettura.Comando}) {
            SCOPED_TRACE(guasto);
            Guasto(guasto);
            Fallisce(lettura.Leggi, 5000);
            intatto();
            macchina.Sleep(1000);  // what is late arrives, and is in nobody's way
        }
    }
    // A long reply counts, and its tail does not reach the next exchange.
    apparecchio.Difetti.Togli();
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("extra:7:*"));
    for (const Lettura& lettura : letture) Riesce(lettura.Leggi);
    EXPECT_EQ(DatiProgetto.Lingua, 0);
    EXPECT_EQ(DatiProgetto.Settore1, 1000);
    EXPECT_EQ(DatiProgetto.NumAccRPM, 1);
    EXPECT_EQ(DatiProgetto.mskTO, 1250);
    EXPECT_NE(CurvaX[1], 11.0);
}

TEST_F(ConLoStrumento, AWholeProjectComesBackAsFarAsItTravels) {
    const std::set<std::string_view> viaggiano = {"Lingua",
                                                  "UMVel",
                                                  "UMTemp",
                                                  "UMPress",
                                                  "PaginaAbilitata2",
                                                  "PaginaAbilitata3",
                                                  "PaginaAbilitata4",
                                                  "PaginaAbilitata5",
                                                  "PaginaAbilitata6",
                                                  "PaginaAbilitata7",
                                                  "PaginaAbilitata8",
                                                  "PaginaAbilitata9",
                                                  "chkAbilRecLap",
                                                  "mskAbilRecVel",
                                                  "mskStopRecSecondi",
                                                  "TempoMsgGiro",
                                                  "TempoVisGiro",
                                                  "Settore1",
                                                  "Settore2",
                                                  "Settore3",
                                                  "Settore4",
                                                  "Settore5",
                                                  "NumAccRPM",
                                                  "ImpulsiRuota",
                                                  "DiametroRuota",
                                                  "LAPO",
                                                  "LAAL",
                                                  "AbilTO",
                                                  "AbilPO",
                                                  "AbilPB",
                                                  "AbilTA",
                                                  "AbilLB",
                                                  "AbilCambio",
                                                  "AbilSG",
                                                  "AbilSensoreLambda",
                                                  "AbilPT",
                                                  "ChannCambio",
                                                  "ChannSG",
                                                  "ChannSensoreLambda",
                                                  "ChannPT",
                                                  "chkTO",
                                                  "mskTO",
                                                  "chkPO",
                                                  "mskPO",
                                                  "chkPB",
                                                  "mskPB",
                                                  "chkTA",
                                                  "mskTA",
                                                  "chkLB",
                                                  "mskLB",
                                                  "chkTB",
                                                  "mskTB",
                                                  "Led0",
                                                  "Led1",
                                                  "Led2",
                                                  "Led3",
                                                  "Led4",
                                                  "LedGiallo",
                                                  "TipoLedGiallo",
                                                  "chkUscita",
                                                  "TipoUscita"};
    // The input's type comes from the instrument, its flag goes off.
    const std::set<std::string_view> asimmetrici = {"TipoIngresso", "chkIngresso"};
    // Every field another value, the same for each call with the same seed.
    const auto riempi = [](int seme) {
        int numero = seme;
        for (const DescrizioneCampo& campo : kCampiProgetto) {
            ++numero;
            std::visit(
                [&](auto membro) {
                    auto& dove = DatiProgetto.*membro;
                    using T = std::remove_reference_t<decltype(dove)>;
                    if constexpr (std::is_same_v<T, std::string>) {
                        dove = std::to_string(numero);
                    } else if constexpr (std::is_same_v<T, bool>) {
                        dove = (seme % 2 == 0) != (numero % 3 == 0);
                    } else {
                        dove = static_cast<T>(numero);
                    }
                },
                campo.Campo);
        }
    };
    const auto testo = [](const RecordProgetto& record, const DescrizioneCampo& campo) {
        return std::visit(
            [&record](auto membro) {
                if constexpr (std::is_same_v<decltype(membro), std::string R::*>) {
                    return record.*membro;
                } else {
                    return std::to_string(record.*membro);
                }
            },
            campo.Campo);
    };
    for (const int seme : {20, 101}) {
        riempi(seme);
        // A threshold, a lamp, an output that is off has no value on the instrument.
        for (const auto& [flag, valore] :
             std::vector<std::pair<bool R::*, std::int32_t R::*>>{{&R::chkTO, &R::mskTO},
                                                                  {&R::chkPO, &R::mskPO},
                                                                  {&R::chkPB, &R::mskPB},
                                                                  {&R::chkTA, &R::mskTA},
                                                                  {&R::chkLB, &R::mskLB},
                                                                  {&R::chkTB, &R::mskTB}}) {
            if (!(DatiProgetto.*flag)) DatiProgetto.*valore = 0;
        }
        if (!DatiProgetto.LedGiallo) DatiProgetto.TipoLedGiallo = "0";
        if (!DatiProgetto.chkUscita) DatiProgetto.TipoUscita = 0;
        const RecordProgetto partito = DatiProgetto;
        for (const auto invia :
             {InviaDatiSetup1, InviaDatiSetup2, InviaDatiSensori, InviaDatiAllarmi}) {
            Riesce(invia);
        }
        riempi(seme + 31);
        const RecordProgetto prima = DatiProgetto;
        for (const auto leggi :
             {LeggiDatiSetup1, LeggiDatiSetup2, LeggiDatiSensori, LeggiDatiAllarmi}) {
            Riesce(leggi);
        }
        for (const DescrizioneCampo& campo : kCampiProgetto) {
            if (asimmetrici.contains(campo.Nome)) continue;
            EXPECT_EQ(testo(DatiProgetto, campo),
                      testo(viaggiano.contains(campo.Nome) ? partito : prima, campo))
                << campo.Nome;
        }
        EXPECT_EQ(DatiProgetto.TipoIngresso, 0);
        EXPECT_FALSE(DatiProgetto.chkIngresso);
    }
    EXPECT_EQ(viaggiano.size(), 61u);
}

TEST_F(ConLoStrumento, CurvesOfAllChannelsComeBackEachAsItWas) {
    for (std::int16_t canale = 0; canale < 9; ++canale) {
        for (std::size_t i = 0; i < 20; ++i) {
            CurvaX[i] = static_cast<double>(i) * 50.0 + canale;
            CurvaY[i] = -1000.0 * canale + static_cast<double>(i);
        }
        Riesce([canale] { InviaCurvaSensore(canale); });
    }
    for (std::int16_t canale = 0; canale < 9; ++canale) {
        CurvaX.fill(0.0);
        CurvaY.fill(0.0);
        Riesce([canale] { LeggiCurvaSensore(canale); });
        for (std::size_t i = 0; i < 20; ++i) {
            EXPECT_EQ(CurvaX[i], static_cast<double>(i) * 50.0 + canale);
            EXPECT_EQ(CurvaY[i], -1000.0 * canale + static_cast<double>(i));
        }
        EXPECT_EQ(CurvaX[20], 0.0);
    }
    // A channel that the instrument does not have.
    Fallisce([] { InviaCurvaSensore(9); }, 10000);
    Fallisce([] { LeggiCurvaSensore(9); }, 5000);
}

}  // namespace
}  // namespace lapvane
