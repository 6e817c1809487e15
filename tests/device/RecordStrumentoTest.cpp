// The records' frames and replies, byte by byte, against a port that notes them.
#include "device/RecordStrumento.h"

#include "device/RecordStrumentoProva.h"

namespace lapvane::record {
namespace {

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

TEST_F(RecordStrumento, RecordsGoOutOfTheProject) {
    Progetto(
        "Lingua=1|UMVel=1|UMPress=1|PaginaAbilitata2=1|PaginaAbilitata3=1|PaginaAbilitata4=1|"
        "PaginaAbilitata5=1|PaginaAbilitata6=1|PaginaAbilitata7=1|PaginaAbilitata8=1|"
        "PaginaAbilitata9=1|chkAbilRecLap=1|mskStopRecSecondi=300|mskAbilRecVel=80|TempoMsgGiro=5|"
        "TempoVisGiro=10|Settore1=1000|Settore2=900|Settore3=800|Settore5=32000");
    EXPECT_EQ(Inviato(InviaDatiSetup1, kConferma18),
              Hex("48 12 | 01 01 00 01 | 00 FF | 01 2C | 00 50 | 00*16 | 44 39"));
    EXPECT_EQ(Inviato(InviaDatiSetup2, kConferma28),
              Hex("48 1C | 05 0A | 03 E8 03 84 03 20 00 00 7D 00 | 00*10 | 38 35"));
    Progetto(
        "UMTemp=1|PaginaAbilitata1=1|PaginaAbilitata3=1|PaginaAbilitata9=1|PaginaAbilitata10=1|"
        "mskStopRecSecondi=-1|mskAbilRecVel=32768|TempoMsgGiro=-1|TempoVisGiro=256|Settore1=32768|"
        "Settore2=-2|Settore3=70000|Settore4=65535|Settore5=1");
    EXPECT_EQ(Inviato(InviaDatiSetup1, kConferma18),
              Hex("48 12 | 00 00 01 00 | 00 82 | 00 FF | 80 00 | 00*16 | 35 43"));
    EXPECT_EQ(Inviato(InviaDatiSetup2, kConferma28),
              Hex("48 1C | FF 00 | 80 00 FF FE 11 70 FF FF 00 01 | 00*10 | 36 30"));

    Progetto(
        "NumAccRPM=2|ImpulsiRuota=4|DiametroRuota=590|LAPO=1|LAAL=2|AbilTO=1|AbilPB=1|AbilLB=1|"
        "AbilSG=1|AbilPT=1|ChannCambio=1|ChannSG=0|ChannSensoreLambda=2|ChannPT=3");
    EXPECT_EQ(Inviato(InviaDatiSensori, kConferma22),
              Hex("48 16 | 02 04 | 02 4E | 01 02 | 01 00 01 00 01 00 01 00 | 02 01 03 04 | 01 |"
                  "00*15 | 43 36"));
    Progetto(
        "NumAccRPM=-1|ImpulsiRuota=300|DiametroRuota=-32768|AbilTO=1|AbilPO=1|AbilLB=1|"
        "AbilCambio=1|ChannCambio=-1|ChannSG=1|ChannSensoreLambda=32767");
    EXPECT_EQ(Inviato(InviaDatiSensori, kConferma22),
              Hex("48 16 | FF 2C | 80 00 | 00 00 | 01 01 00 00 01 01 00 00 | 00 02 00 01 | 00 |"
                  "00*15 | 31 30"));

    // The fuel pressure and nothing else is switched off; green, blue and the input do not travel.
    Progetto(
        "chkTO=1|mskTO=1250|chkPO=1|mskPO=1200|chkPB=0|mskPB=2500|chkTA=1|mskTA=1020|chkLB=1|"
        "mskLB=50|chkTB=1|mskTB=120|Led0=9500|Led1=10000|Led2=10500|Led3=11000|Led4=11500|"
        "LedGiallo=1|TipoLedGiallo=1|LedVerde=1|TipoLedVerde=2|LedBlu=1|TipoLedBlu=3|"
        "chkIngresso=1|TipoIngresso=1|chkUscita=1|TipoUscita=3");
    EXPECT_EQ(Inviato(InviaDatiAllarmi, kConferma20),
              Hex("48 14 | 04 E2 | 04 B0 | 00 00 | 03 FC | 00 32 | 00 78 | 25 1C | 27 10 | 29 04 |"
                  "2A F8 | 2C EC | 01 00 00 03 00 00 | 00*20 | 38 32"));
    Progetto(
        "chkTO=0|mskTO=1250|chkPO=1|mskPO=32768|chkPB=1|mskPB=70000|chkTA=1|mskTA=-1|chkLB=1|"
        "mskLB=0|Led0=-1|Led1=32767|LedGiallo=1|TipoLedGiallo=|chkUscita=0|TipoUscita=5");
    EXPECT_EQ(Inviato(InviaDatiAllarmi, kConferma20),
              Hex("48 14 | 00 00 | 80 00 | 11 70 | FF FF | 00 00 | 00 00 | FF FF | 7F FF | 00*6 |"
                  "00 00 00 00 00 00 | 00*20 | 44 37"));
}

constexpr const char* kSetupVuoto =
    "cboLingua=0|cboUMVelocita=0|cboUMTemperatura=0|cboUMPressione=0|PagineAbilitateTemp0=0|"
    "PagineAbilitateTemp1=0|PagineAbilitateTemp2=0|PagineAbilitateTemp3=0|PagineAbilitateTemp4=0|"
    "PagineAbilitateTemp5=0|PagineAbilitateTemp6=0|PagineAbilitateTemp7=0|PagineAbilitateTemp8=0|"
    "PagineAbilitateTemp9=0|chkAbilRecLAP=0|txtStopRecSecondi=|txtAbilRecVel=";
constexpr const char* kSensoriVuoti =
    "txtNumAccRPM=|txtImpulsiRuota=|txtDiametroRuota=|cboLAPO=0|cboLAAL=0|chkAbilTO=0|chkAbilPO=0|"
    "chkAbilPB=0|chkAbilTA=0|chkAbilLB=0|chkAbilCambio=0|chkAbilSG=0|chkAbilSensoreLambda=0|"
    "chkAbilPT=0|cboChannCambio=0|cboChannSG=0|cboChannSensoreLambda=0|cboChannPT=0";

TEST_F(RecordStrumento, OpenEditorsSendWhatTheyShow) {
    Progetto("Lingua=9|mskAbilRecVel=999|NumAccRPM=9|chkTO=1|mskTO=9");
    EditorProva setup("frmConfigurazione", kSetupVuoto);
    ImpostaFormAttiva(&setup);
    // Pages 1 and 10 are on as well, and do not travel.
    setup.Imposta(
        "cboLingua=1|cboUMVelocita=-1|cboUMPressione=1|PagineAbilitateTemp0=1|"
        "PagineAbilitateTemp1=1|PagineAbilitateTemp8=1|PagineAbilitateTemp9=1|chkAbilRecLAP=1|"
        "txtStopRecSecondi=12.5|txtTempoMsgGiro=3.5|txtTempoVisGiro=2.5|txtSettoreCrono0=1205.5|"
        "txtSettoreCrono1= 65535 |txtSettoreCrono2=-1|txtSettoreCrono3=|txtSettoreCrono4=100,5");
    EXPECT_EQ(Inviato(InviaDatiSetup1, kConferma18),
              Hex("48 12 | 01 FF 00 01 | 00 81 | 01 0C | 00 00 | 00*16 | 45 39"));
    EXPECT_EQ(Inviato(InviaDatiSetup2, kConferma28),
              Hex("48 1C | 04 02 | 04 B6 FF FF FF FF 00 00 00 64 | 00*10 | 38 34"));

    EditorProva sensori("frmSensori", kSensoriVuoti);
    ImpostaFormAttiva(&sensori);
    sensori.Imposta(
        "txtNumAccRPM=2|txtImpulsiRuota=4|txtDiametroRuota=590|cboLAPO=1|cboLAAL=2|chkAbilTO=1|"
        "chkAbilPB=1|chkAbilLB=1|chkAbilSG=1|chkAbilPT=1|cboChannCambio=1|"
        "cboChannSensoreLambda=-1|cboChannPT=1");
    EXPECT_EQ(Inviato(InviaDatiSensori, kConferma22),
              Hex("48 16 | 02 04 | 02 4E | 01 02 | 01 00 01 00 01 00 01 00 | 02 01 00 02 | 01 |"
                  "00*15 | 43 31"));

    EditorProva allarmi("frmAllarmi",
                        "chkTO=1|chkPO=1|chkPB=1|chkTA=0|chkLB=1|chkTB=1|txtTO=120.25|txtPO=2.5|"
                        "txtPB=32.768|txtTA=99.0|txtLB=12.35|txtTB=abc|txtLed0=9500|"
                        "txtLed1=10000.5|txtLed2=|txtLed3=0|txtLed4=32767|chkLedGiallo=1|"
                        "cboLedGiallo=0|chkUscita=1|cboUscita=6|chkIngresso=1|cboIngresso=0");
    ImpostaFormAttiva(&allarmi);
    EXPECT_EQ(Inviato(InviaDatiAllarmi, kConferma20),
              Hex("48 14 | 04 B2 | 09 C4 | 80 00 | 00 00 | 00 7C | 00 00 | 25 1C | 27 10 | 00 00 |"
                  "00 00 | 7F FF | 01 00 00 07 00 00 | 00*20 | 44 39"));
    // Nothing chosen, and switched off with something chosen.
    allarmi.Imposta("cboLedGiallo=-1|chkUscita=0");
    EXPECT_EQ(Inviato(InviaDatiAllarmi, kConferma20).substr(24, 6), Hex("00*6"));
    NelProgetto("Lingua=9|mskAbilRecVel=999|NumAccRPM=9|chkTO=1|mskTO=9");
}

TEST_F(RecordStrumento, EveryFlagHasItsOwnPlace) {
    struct Posto {
        const char* Membro;
        const char* Controllo;
        std::size_t Byte;  // from 1
        char Valore;
    };
    const auto prova = [this](void (*invia)(), const char* conferma, EditorProva& editor,
                              const std::vector<Posto>& posti) {
        for (const Posto& posto : posti) {
            SCOPED_TRACE(posto.Controllo);
            const auto soloQuello = [&](const std::string& spento) {
                std::string acceso = spento;
                acceso[posto.Byte - 1] = posto.Valore;
                // The checksum has its own tests.
                return acceso.substr(0, acceso.size() - 2);
            };
            ImpostaFormAttiva(nullptr);
            Progetto("");
            const std::string spento = Inviato(invia, conferma);
            ImpostaCampo(posto.Membro, "1");
            EXPECT_TRUE(Inviato(invia, conferma).starts_with(soloQuello(spento)));
            ImpostaFormAttiva(&editor);
            const std::string editorSpento = Inviato(invia, conferma);
            editor.Spunta(posto.Controllo, true);
            EXPECT_TRUE(Inviato(invia, conferma).starts_with(soloQuello(editorSpento)));
            editor.Spunta(posto.Controllo, false);
        }
    };
    EditorProva setup("frmConfigurazione", kSetupVuoto);
    prova(InviaDatiSetup1, kConferma18, setup,
          {{"PaginaAbilitata2", "PagineAbilitateTemp1", 8, '\x01'},
           {"PaginaAbilitata3", "PagineAbilitateTemp2", 8, '\x02'},
           {"PaginaAbilitata4", "PagineAbilitateTemp3", 8, '\x04'},
           {"PaginaAbilitata5", "PagineAbilitateTemp4", 8, '\x08'},
           {"PaginaAbilitata6", "PagineAbilitateTemp5", 8, '\x10'},
           {"PaginaAbilitata7", "PagineAbilitateTemp6", 8, '\x20'},
           {"PaginaAbilitata8", "PagineAbilitateTemp7", 8, '\x40'},
           {"PaginaAbilitata9", "PagineAbilitateTemp8", 8, '\x80'},
           {"chkAbilRecLap", "chkAbilRecLAP", 9, '\x01'}});
    EditorProva sensori("frmSensori", kSensoriVuoti);
    prova(InviaDatiSensori, kConferma22, sensori,
          {{"AbilTO", "chkAbilTO", 9, '\x01'},
           {"AbilPO", "chkAbilPO", 10, '\x01'},
           {"AbilPB", "chkAbilPB", 11, '\x01'},
           {"AbilTA", "chkAbilTA", 12, '\x01'},
           {"AbilLB", "chkAbilLB", 13, '\x01'},
           {"AbilCambio", "chkAbilCambio", 14, '\x01'},
           {"AbilSG", "chkAbilSG", 15, '\x01'},
           {"AbilSensoreLambda", "chkAbilSensoreLambda", 16, '\x01'},
           {"AbilPT", "chkAbilPT", 21, '\x01'}});
}

TEST_F(RecordStrumento, RepliesFillTheProject) {
    Progetto(
        "PaginaAbilitata1=1|PaginaAbilitata2=1|PaginaAbilitata10=1|AbilPO=1|AbilPT=1|chkPO=1|"
        "chkPB=1|chkIngresso=1|chkUscita=1|LedVerde=1|TipoLedVerde=7");
    // The first two characters are not looked at.
    Letto(LeggiDatiSetup1, kChiedi19, "58 58 | 02 01 00 03 | 80 82 | 05 FF | FF FE | 41*18");
    NelProgetto(
        "Lingua=2|UMVel=1|UMTemp=0|UMPress=3|PaginaAbilitata1=1|PaginaAbilitata2=0|"
        "PaginaAbilitata3=1|PaginaAbilitata4=0|PaginaAbilitata8=0|PaginaAbilitata9=1|"
        "PaginaAbilitata10=1|chkAbilRecLap=1|mskStopRecSecondi=255|mskAbilRecVel=-2");
    Letto(LeggiDatiSetup2, kChiedi29, "52 1D | 05 FF | 80 00 FF FF 03 E8 00 00 7F FF | 41*2");
    NelProgetto(
        "TempoMsgGiro=5|TempoVisGiro=255|Settore1=-32768|Settore2=-1|Settore3=1000|Settore4=0|"
        "Settore5=32767");
    Letto(LeggiDatiSensori, kChiedi23,
          "52 17 | 02 63 | FF FE | 02 01 | 02 00 FF 00 00 01 00 01 | 00 01 FF 02 | 00");
    NelProgetto(
        "NumAccRPM=2|ImpulsiRuota=99|DiametroRuota=-2|LAPO=2|LAAL=1|AbilTO=1|AbilPO=0|AbilPB=1|"
        "AbilTA=0|AbilLB=0|AbilCambio=1|AbilSG=0|AbilSensoreLambda=1|AbilPT=0|ChannCambio=-1|"
        "ChannSG=0|ChannSensoreLambda=254|ChannPT=1");
    Letto(LeggiDatiAllarmi, kChiedi21,
          "52 15 | 00 01 | 80 00 | 00 00 | 03 FC | FF FF | 00 78 | 25 1C | 80 00 | 00 00 | 00 01 |"
          "7F FF | FF 41 41 00 02 | 41*2");
    NelProgetto(
        "mskTO=1|chkTO=1|mskPO=-32768|chkPO=0|mskPB=0|chkPB=0|mskTA=1020|chkTA=1|mskLB=-1|chkLB=0|"
        "mskTB=120|chkTB=1|Led0=9500|Led1=-32768|Led2=0|Led3=1|Led4=32767|TipoLedGiallo=255|"
        "LedGiallo=1|TipoUscita=0|chkUscita=0|TipoIngresso=2|chkIngresso=0|LedVerde=1|"
        "TipoLedVerde=7");
}

TEST_F(RecordStrumento, RepliesFillTheOpenEditorAndNotTheProject) {
    EditorProva setup("frmConfigurazione");
    ImpostaFormAttiva(&setup);
    Letto(LeggiDatiSetup1, kChiedi19, "52 13 | 01 00 01 00 | 00 81 | 00 1E | FF FE | 00*18");
    Letto(LeggiDatiSetup2, kChiedi29, "52 1D | 05 FF | 80 00 00 02 03 E8 00 00 7F FF | 00*2");
    EXPECT_EQ(setup.Stato(),
              "PagineAbilitateTemp1=1|PagineAbilitateTemp2=0|PagineAbilitateTemp3=0|"
              "PagineAbilitateTemp4=0|PagineAbilitateTemp5=0|PagineAbilitateTemp6=0|"
              "PagineAbilitateTemp7=0|PagineAbilitateTemp8=1|cboLingua=1|cboUMPressione=0|"
              "cboUMTemperatura=1|cboUMVelocita=0|chkAbilRecLAP=0|txtAbilRecVel=-2|"
              "txtSettoreCrono0=-32768|txtSettoreCrono1=2|txtSettoreCrono2=1000|"
              "txtSettoreCrono3=0|txtSettoreCrono4=32767|txtStopRecSecondi=30|txtTempoMsgGiro=5|"
              "txtTempoVisGiro=255");

    EditorProva sensori("frmSensori");
    ImpostaFormAttiva(&sensori);
    Letto(LeggiDatiSensori, kChiedi23,
          "52 17 | 02 63 | 02 4E | 02 01 | 01 00 02 00 00 01 00 01 | 00 01 02 02 | 01");
    EXPECT_EQ(sensori.Stato(),
              "cboChannCambio=-1|cboChannPT=1|cboChannSG=0|cboChannSensoreLambda=1|cboLAAL=1|"
              "cboLAPO=2|chkAbilCambio=1|chkAbilLB=0|chkAbilPB=1|chkAbilPO=0|chkAbilPT=1|"
              "chkAbilSG=0|chkAbilSensoreLambda=1|chkAbilTA=0|chkAbilTO=1|txtDiametroRuota=590|"
              "txtImpulsiRuota=99|txtNumAccRPM=2");

    // What is switched off keeps its text and its choice.
    EditorProva allarmi("frmAllarmi", "txtPB=2.500|cboUscita=4");
    ImpostaFormAttiva(&allarmi);
    Letto(LeggiDatiAllarmi, kChiedi21,
          "52 15 | 04 E2 | 00 01 | 80 00 | 03 FD | 00 32 | 7F FF | 25 1C | 80 00 | 00 00 | 00 01 |"
          "7F FF | 01 41 41 00 01 | 41*2");
    EXPECT_EQ(allarmi.Stato(),
              "cboIngresso=0|cboIngresso!=1|cboLedGiallo=0|cboLedGiallo!=1|cboUscita=4|"
              "cboUscita!=0|chkIngresso=1|chkLB=1|chkLedGiallo=1|chkPB=0|chkPO=1|chkTA=1|chkTB=1|"
              "chkTO=1|chkUscita=0|txtLB=5.0|txtLB!=1|txtLed0=9500|txtLed1=-32768|txtLed2=0|"
              "txtLed3=1|txtLed4=32767|txtPB=2.500|txtPB!=0|txtPO=0.001|txtPO!=1|txtTA=102.1|"
              "txtTA!=1|txtTB=3276.7|txtTB!=1|txtTO=125.0|txtTO!=1");
    NelProgetto("Lingua=0|mskStopRecSecondi=0|Settore2=0|NumAccRPM=0|AbilTO=0|mskTO=0|Led0=0");
}

TEST_F(RecordStrumento, CurvesTravelAsWordsInBothDirections) {
    for (std::size_t i = 0; i < 20; ++i) CurvaX[i] = static_cast<double>(i) * 16.0;
    CurvaX[20] = 555.0;
    CurvaY = {2.5, 3.5, 1001.4999999999999, -1.0, 40000.0, 32768.0, 70000.0, 0.5, 1.5, -2.5};
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(3); }, kConferma24),
              Hex("48 18 | 03 | 00 14 | 00 01 | 00 00 | 00 00 | 00 00 | 00 28 | 00 02 |"
                  "00 00 00 10 00 20 00 30 00 40 00 50 00 60 00 70 00 80 00 90"
                  "00 A0 00 B0 00 C0 00 D0 00 E0 00 F0 01 00 01 10 01 20 01 30 | 00 00 |"
                  "00 02 00 04 03 EA FF FF 9C 40 80 00 11 70 00 00 00 02 FF FE 00*20 | 35 33"));
    CurvaX.fill(0.0);
    CurvaY.fill(0.0);
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(8); }, kConferma24),
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
    const auto rifiutato = [this](void (*invia)(), Voce campo, const std::string& valore) {
        SCOPED_TRACE(valore);
        macchina.Risposte = {Answer::Ok};
        ErroreComunicazione = false;
        invia();
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_TRUE(porta.Scritti.empty());
        EXPECT_EQ(FaseComunicazione, 18);
        AttesoMessaggio(
            Testo(Voce::ValoreNonInviabile) + "\r\n" + Testo(campo) + ": \"" + valore + "\"",
            Icon::Warning);
    };
    DatiProgetto.LedGiallo = true;
    DatiProgetto.TipoLedGiallo = "giallo";
    rifiutato(InviaDatiAllarmi, Voce::LedGiallo, "giallo");

    EditorProva sensori("frmSensori");
    ImpostaFormAttiva(&sensori);
    sensori.Imposta("txtNumAccRPM=12x");
    rifiutato(InviaDatiSensori, Voce::AccensioniPerGiro, "12x");
    sensori.Imposta("txtNumAccRPM=3000000000");
    rifiutato(InviaDatiSensori, Voce::AccensioniPerGiro, "3000000000");

    EditorProva allarmi("frmAllarmi");
    ImpostaFormAttiva(&allarmi);
    allarmi.Imposta("chkTO=1|txtTO=1E9");
    rifiutato(InviaDatiAllarmi, Voce::SogliaTemperaturaOlio, "1E9");
    allarmi.Imposta("txtTO=1E999");
    rifiutato(InviaDatiAllarmi, Voce::SogliaTemperaturaOlio, "1E999");

    ImpostaFormAttiva(nullptr);
    CurvaY[19] = 3e9;
    rifiutato([] { InviaCurvaSensore(1); }, Voce::TipoPressioneOlio, "3000000000");
    CurvaY[19] = std::numeric_limits<double>::quiet_NaN();
    rifiutato([] { InviaCurvaSensore(1); }, Voce::TipoPressioneOlio, "");
}

TEST_F(RecordStrumento, AnyOtherFormGetsAndGivesNoRecord) {
    EditorProva altra("frmImpostaSensore");
    ImpostaFormAttiva(&altra);
    DatiProgetto.Lingua = 1;
    DatiProgetto.TempoMsgGiro = 5;
    // The setup's frames go out without their fields.
    EXPECT_EQ(Inviato(InviaDatiSetup1, kConferma18), Hex("48 12 | 00*16 | 35 41"));
    EXPECT_EQ(Inviato(InviaDatiSetup2, kConferma28), Hex("48 1C"));
    porta.Scritti.clear();
    for (const auto invia : {InviaDatiSensori, InviaDatiAllarmi}) {
        macchina.Risposte = {Answer::Ok};
        ErroreComunicazione = false;
        invia();
        EXPECT_TRUE(ErroreComunicazione);
        AttesoMessaggio(Testo(Voce::StrumentoNonRisponde));
    }
    EXPECT_TRUE(porta.Scritti.empty());

    Letto(LeggiDatiSetup1, kChiedi19, "52 13 | 02*28");
    Letto(LeggiDatiSetup2, kChiedi29, "52 1D | 02*14");
    Letto(LeggiDatiSensori, kChiedi23, "52 17 | 02*19");
    Letto(LeggiDatiAllarmi, kChiedi21, "52 15 | 02*29");
    EXPECT_EQ(DatiProgetto.Lingua, 1);
    EXPECT_EQ(DatiProgetto.TempoMsgGiro, 5);
    EXPECT_EQ(DatiProgetto.NumAccRPM, 0);
    EXPECT_EQ(DatiProgetto.mskTO, 0);
    EXPECT_EQ(altra.Stato(), "");
    // A curve does not ask which form is open.
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(0); }, kConferma24).size(), 101u);
}

TEST_F(RecordStrumento, AnEditorThatClosesDuringItsReadLeavesNoTrace) {
    for (const int chiusura : {1, 30}) {  // while the reply is awaited, while the lamp flashes
        EditorProva allarmi("frmAllarmi");
        ImpostaFormAttiva(&allarmi);
        int eventi = 0;
        macchina.DuranteEventi = [&] {
            if (++eventi == chiusura) ImpostaFormAttiva(nullptr);
        };
        Letto(LeggiDatiAllarmi, kChiedi21, "52 15 | 02*29");
        EXPECT_GE(eventi, chiusura);
        EXPECT_EQ(allarmi.Stato(), "");
        EXPECT_EQ(DatiProgetto.mskTO, 0);
        EXPECT_EQ(DatiProgetto.Led0, 0);
    }
}

}  // namespace
}  // namespace lapvane::record
