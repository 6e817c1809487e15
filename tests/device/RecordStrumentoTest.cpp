// The records' frames and replies, byte by byte, against a port that notes them.
#include "device/RecordStrumento.h"

#include <limits>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "device/TabelleRecord.h"
#include "sensors/Curve.h"
#include "support/EditorProva.h"
#include "support/SerialeProva.h"

namespace lapvane {
namespace {

using prova::EditorProva;
using prova::PlatformProva;
using prova::PrincipaleProva;
using prova::SerialeProva;

/// Bytes of hexadecimal digits; blanks and bars separate, "00*16" are sixteen of them.
std::string Hex(std::string_view testo) {
    std::string byte;
    for (std::size_t i = 0; i < testo.size();) {
        if (testo[i] == ' ' || testo[i] == '|') {
            ++i;
        } else if (testo[i] == '*') {
            std::size_t cifre = 0;
            const int volte = std::stoi(std::string(testo.substr(i + 1)), &cifre);
            byte.append(static_cast<std::size_t>(volte - 1), byte.back());
            i += 1 + cifre;
        } else {
            byte += static_cast<char>(std::stoi(std::string(testo.substr(i, 2)), nullptr, 16));
            i += 2;
        }
    }
    return byte;
}

/// The project's fields that are neither empty nor 0.
std::string Progetto() {
    std::string testo;
    for (const DescrizioneCampo& campo : kCampiProgetto) {
        const std::string valore = std::visit(
            [](auto membro) {
                const auto& dove = DatiProgetto.*membro;
                if constexpr (std::is_same_v<decltype(dove), const std::string&>) {
                    return dove;
                } else {
                    return dove == 0 ? "" : std::to_string(dove);
                }
            },
            campo.Campo);
        if (!valore.empty()) testo += std::string(campo.Nome) + "=" + valore + "|";
    }
    return testo;
}

using namespace std::string_literals;

TEST(Codec, EncodersCutAndPad) {
    EXPECT_EQ(ByteInEsa(0x1AF), "AF");
    EXPECT_EQ(CodificaByte(std::int16_t{-1}), "\xFF");
    EXPECT_EQ(CodificaByte(300), "\x2C");
    EXPECT_EQ(CodificaByte(""), "\0"s);
    EXPECT_EQ(CodificaWord("1205.5"), "\x04\xB6");
    EXPECT_EQ(CodificaWord(70000), "\x11\x70");
    EXPECT_EQ(CodificaWord(-2), "\xFF\xFE");
    EXPECT_EQ(CodificaLong(0x1FFD00), "\x00\x1F\xFD\x00"s);
    EXPECT_EQ(CodificaLong(std::int16_t{-1}), "\x00\x00\xFF\xFF"s);  // the width of its own type
    EXPECT_EQ(CodificaLong(std::int32_t{-1}), "\xFF\xFF\xFF\xFF");
}

TEST(Codec, ChecksumIsTheLowByteOfTheSum) {
    EXPECT_EQ(CalcolaChecksum(std::string(2, '\xFF')), "FE");
    EXPECT_THROW(CalcolaChecksum(std::string(129, '\xFF')), ErroreRuntime);  // 32895
    EXPECT_EQ(Frame(14, CodificaLong(256)), "H\x0E\0\0\1\0"s + "57");
    EXPECT_EQ(Conferma(1), "R\x01"s + "53*");
    EXPECT_TRUE(BitAttivo(std::int16_t{-32768}, 15));
    EXPECT_FALSE(BitAttivo(2, 0));
}

class RecordStrumento : public ::testing::Test {
 protected:
    RecordStrumento() {
        prova::CaricaTestiVeri(1);
        FaseComunicazione = 18;
        finestra.Seriale = &porta;
        porta.PortOpen(true);
    }
    /// The one frame of an exchange that is answered so.
    std::string Scambio(void (*scambio)(), const std::string& risposta) {
        porta.Scritti.clear();
        porta.Risponde = [&](const std::string&) { porta.Fra(20, risposta); };
        ErroreComunicazione = true;
        const std::int64_t inizio = macchina.Orologio;
        scambio();
        EXPECT_FALSE(ErroreComunicazione);
        EXPECT_GE(macchina.Orologio - inizio, 500) << "the lamp has flashed";
        EXPECT_EQ(porta.Scritti.size(), 1u);
        return porta.Scritti.empty() ? "" : porta.Scritti[0];
    }
    std::string Inviato(void (*invia)(), int comando) { return Scambio(invia, Conferma(comando)); }
    /// A send that ends in this one box.
    void NonInviato(void (*invia)(), const std::string& testo, Icon icona) {
        macchina.Risposte = {Answer::Ok};
        macchina.Mostrati.clear();
        macchina.Puntatori.clear();
        ErroreComunicazione = false;
        invia();
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_EQ(macchina.Puntatori, std::vector<Pointer>{Pointer::Normal});
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, testo);
        EXPECT_EQ(macchina.Mostrati[0].Icona, icona);
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    SerialeProva porta{macchina};
};

TEST_F(RecordStrumento, FrameReplyProjectAndEditorHoldTheSameFields) {
    struct Viaggio {
        const char* Nome;
        void (*Leggi)();
        const char* Richiesta;
        std::size_t Risposta;  // characters
        void (*Invia)();
        const char* Frame;
        const char* Progetto;
        const char* Controlli;
    };
    for (const Viaggio& v :
         {Viaggio{"frmConfigurazione", LeggiDatiSetup1, "48 13 35 42", 30, InviaDatiSetup1,
                  "48 12 | 01 02 03 04 | 00 89 | 01 1E | FF FE | 00*16 | 30 39",
                  "Lingua=1|UMVel=2|UMTemp=3|UMPress=4|PaginaAbilitata2=1|PaginaAbilitata5=1|"
                  "PaginaAbilitata9=1|chkAbilRecLap=1|mskAbilRecVel=-2|mskStopRecSecondi=30|",
                  "PagineAbilitateTemp1=1|PagineAbilitateTemp2=0|PagineAbilitateTemp3=0|"
                  "PagineAbilitateTemp4=1|PagineAbilitateTemp5=0|PagineAbilitateTemp6=0|"
                  "PagineAbilitateTemp7=0|PagineAbilitateTemp8=1|cboLingua=1|cboUMPressione=4|"
                  "cboUMTemperatura=3|cboUMVelocita=2|chkAbilRecLAP=1|txtAbilRecVel=-2|"
                  "txtStopRecSecondi=30|"},
          {"frmConfigurazione", LeggiDatiSetup2, "48 1D 36 35", 16, InviaDatiSetup2,
           "48 1C | 05 FF | 03 E8 FF FF 03 20 00 01 7F FF | 00*10 | 46 33",
           "TempoMsgGiro=5|TempoVisGiro=255|Settore1=1000|Settore2=-1|Settore3=800|Settore4=1|"
           "Settore5=32767|",
           "txtSettoreCrono0=1000|txtSettoreCrono1=-1|txtSettoreCrono2=800|txtSettoreCrono3=1|"
           "txtSettoreCrono4=32767|txtTempoMsgGiro=5|txtTempoVisGiro=255|"},
          {"frmSensori", LeggiDatiSensori, "48 17 35 46", 21, InviaDatiSensori,
           "48 16 | 02 04 | 02 4E | 01 03 | 01 00 00 01 00 01 01 00 | 00 02 05 03 | 01 | 00*15 |"
           "43 37",
           "NumAccRPM=2|LAPO=1|LAAL=3|ImpulsiRuota=4|DiametroRuota=590|AbilTO=1|AbilTA=1|AbilPT=1|"
           "AbilSG=1|AbilCambio=1|ChannSG=1|ChannCambio=-1|ChannPT=2|ChannSensoreLambda=4|",
           "cboChannCambio=-1|cboChannPT=2|cboChannSG=1|cboChannSensoreLambda=4|cboLAAL=3|"
           "cboLAPO=1|chkAbilCambio=1|chkAbilLB=0|chkAbilPB=0|chkAbilPO=0|chkAbilPT=1|"
           "chkAbilSG=1|chkAbilSensoreLambda=0|chkAbilTA=1|chkAbilTO=1|txtDiametroRuota=590|"
           "txtImpulsiRuota=4|txtNumAccRPM=2|"},
          // The fuel pressure's threshold and the output are off.
          {"frmAllarmi", LeggiDatiAllarmi, "48 15 35 44", 31, InviaDatiAllarmi,
           "48 14 | 04 E2 | 04 B0 | 00 00 | 03 FD | 00 32 | 00 78 | 25 1C | 27 10 | 29 04 |"
           "2A F8 | 2C EC | 03 00 00 00 00 00 | 00*20 | 38 32",
           "Led0=9500|Led1=10000|Led2=10500|Led3=11000|Led4=11500|LedGiallo=1|TipoLedGiallo=3|"
           "chkTO=1|mskTO=1250|chkPO=1|mskPO=1200|chkTA=1|mskTA=1021|chkLB=1|mskLB=50|chkTB=1|"
           "mskTB=120|",
           "cboIngresso!=0|cboLedGiallo=2|cboLedGiallo!=1|cboUscita!=0|chkIngresso=0|chkLB=1|"
           "chkLedGiallo=1|chkPB=0|chkPO=1|chkTA=1|chkTB=1|chkTO=1|chkUscita=0|txtLB=5.0|"
           "txtLB!=1|txtLed0=9500|txtLed1=10000|txtLed2=10500|txtLed3=11000|txtLed4=11500|"
           "txtPB!=0|txtPO=1.200|txtPO!=1|txtTA=102.1|txtTA!=1|txtTB=12.0|txtTB!=1|txtTO=125.0|"
           "txtTO!=1|"}}) {
        SCOPED_TRACE(v.Richiesta);
        const std::string frame = Hex(v.Frame);
        // The first two characters of a reply are not looked at.
        std::string risposta = "XX" + frame.substr(2, v.Risposta - 2);
        risposta.resize(v.Risposta, 'A');
        DatiProgetto = {};
        EXPECT_EQ(Scambio(v.Leggi, risposta), Hex(v.Richiesta));
        EXPECT_EQ(Progetto(), v.Progetto);
        EXPECT_EQ(Inviato(v.Invia, frame[1]), frame);
        DatiProgetto = {};
        EditorProva editor(v.Nome);
        Scambio(v.Leggi, risposta);
        EXPECT_EQ(editor.Stato(), v.Controlli);
        EXPECT_EQ(Inviato(v.Invia, frame[1]), frame);
        EXPECT_EQ(Progetto(), "");
    }
}

TEST_F(RecordStrumento, WhatIsTooLargeOrBrokenTravelsAsTheBytesTakeIt) {
    DatiProgetto.mskStopRecSecondi = 300;
    DatiProgetto.mskAbilRecVel = 32768;
    EXPECT_EQ(Inviato(InviaDatiSetup1, 18).substr(8, 4), Hex("00 2C 80 00"));
    DatiProgetto.chkPO = true;
    DatiProgetto.mskPO = 70000;
    DatiProgetto.mskTA = 1020;  // off
    DatiProgetto.LedGiallo = true;
    DatiProgetto.TipoUscita = 5;  // off
    EXPECT_EQ(Inviato(InviaDatiAllarmi, 20).substr(2, 8), Hex("00 00 11 70 00 00 00 00"));
    EXPECT_EQ(Inviato(InviaDatiAllarmi, 20).substr(24, 6), Hex("00*6"));
    // Fractions go to the even neighbour, blanks are no harm, an empty box is 0.
    EditorProva allarmi(
        "frmAllarmi",
        {{"chkTO", "1"},       {"txtTO", "120.25"},   {"chkPO", "1"},        {"txtPO", "2.5"},
         {"chkPB", "1"},       {"txtPB", "32.768"},   {"chkTA", "0"},        {"txtTA", "99.0"},
         {"chkLB", "1"},       {"txtLB", "12.35"},    {"chkTB", "1"},        {"txtTB", "abc"},
         {"txtLed0", "3.5"},   {"txtLed1", "2.5"},    {"txtLed2", ""},       {"txtLed3", " 65535 "},
         {"txtLed4", "-1"},    {"chkUscita", "0"},    {"cboUscita", "6"},    {"chkIngresso", "1"},
         {"cboIngresso", "1"}, {"chkLedGiallo", "1"}, {"cboLedGiallo", "-1"}});
    EXPECT_EQ(Inviato(InviaDatiAllarmi, 20).substr(2, 28),
              Hex("04 B2 09 C4 80 00 00 00 00 7C 00 00 00 04 00 02 00 00 FF FF FF FF 00*6"));
}

TEST_F(RecordStrumento, RepliesKeepTheirSignAndWhatIsOffKeepsItsText) {
    const std::string risposta =
        Hex("52 15 | 00 01 | 80 00 | 00 00 | 00 00 | FF FF | 00 00 | 00*10 | FF 41 41 00 02 41 41");
    DatiProgetto.chkPO = DatiProgetto.chkPB = DatiProgetto.chkIngresso = DatiProgetto.LedVerde =
        true;
    Scambio(LeggiDatiAllarmi, risposta);
    // The input's type comes from the instrument, its flag goes off.
    EXPECT_EQ(Progetto(),
              "LedGiallo=1|LedVerde=1|TipoLedGiallo=255|chkTO=1|mskTO=1|mskPO=-32768|mskLB=-1|"
              "TipoIngresso=2|");
    EditorProva allarmi("frmAllarmi", {{"txtPO", "1.0"}, {"cboUscita", "4"}});
    Scambio(LeggiDatiAllarmi, risposta);
    EXPECT_EQ(allarmi.Testo("txtPO") + allarmi.Testo("txtPO!") + allarmi.Testo("chkPO"), "1.000");
    EXPECT_EQ(allarmi.Testo("cboUscita") + allarmi.Testo("cboUscita!"), "40");
    EXPECT_EQ(allarmi.Testo("cboIngresso") + allarmi.Testo("cboIngresso!"), "11");
}

TEST_F(RecordStrumento, CurvesTravelAsWordsInBothDirections) {
    for (std::size_t i = 0; i < 20; ++i) CurvaX[i] = static_cast<double>(i) * 16.0;
    CurvaX[20] = 555.0;
    CurvaY = {2.5, 3.5, 1001.4999999999999, -1.0, 40000.0, 32768.0, 70000.0, 0.5, 1.5, -2.5};
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(3); }, 24),
              Hex("48 18 | 03 | 00 14 | 00 01 | 00 00 | 00 00 | 00 00 | 00 28 | 00 02 |"
                  "00 00 00 10 00 20 00 30 00 40 00 50 00 60 00 70 00 80 00 90"
                  "00 A0 00 B0 00 C0 00 D0 00 E0 00 F0 01 00 01 10 01 20 01 30 | 00 00 |"
                  "00 02 00 04 03 EA FF FF 9C 40 80 00 11 70 00 00 00 02 FF FE 00*20 | 35 33"));
    EXPECT_EQ(Scambio([] { LeggiCurvaSensore(4); },
                      Hex("52 19 | 41*14 | 00 01 80 00 00*34 04 00 | 41*2 | 9C 40 00 05 00*34 FF FE"
                          "41")),
              Hex("48 19 04 36 35"));
    std::array<double, 21> x{1, -32768}, y{-25536, 5};
    x[19] = 1024;
    x[20] = 555;
    y[19] = -2;
    EXPECT_EQ(CurvaX, x);
    EXPECT_EQ(CurvaY, y);
}

TEST_F(RecordStrumento, WhatIsNoNumberIsShownAndNotSent) {
    const auto rifiutato = [this](void (*invia)(), Voce campo, const std::string& valore) {
        NonInviato(invia,
                   Testo(Voce::ValoreNonInviabile) + "\r\n" + Testo(campo) + ": \"" + valore + "\"",
                   Icon::Warning);
        EXPECT_TRUE(porta.Scritti.empty());
    };
    DatiProgetto.LedGiallo = true;
    DatiProgetto.TipoLedGiallo = "giallo";
    rifiutato(InviaDatiAllarmi, Voce::LedGiallo, "giallo");
    for (const double valore : {3e9, std::numeric_limits<double>::quiet_NaN()}) {
        CurvaY[19] = valore;
        rifiutato([] { InviaCurvaSensore(1); }, Voce::TipoPressioneOlio,
                  valore > 0 ? "3000000000" : "");
    }
    EditorProva allarmi("frmAllarmi", {{"chkTO", "1"}, {"txtTO", "1E999"}});
    rifiutato(InviaDatiAllarmi, Voce::SogliaTemperaturaOlio, "1E999");
}

TEST_F(RecordStrumento, TheBoxThatNeedsAnotherValueIsNamed) {
    const TabellaRecord* const record[] = {&kRecordSetup1, &kRecordAllarmi};
    macchina.Risposte = {Answer::Cancel, Answer::Cancel, Answer::Ok, Answer::Ok};
    {
        EditorProva setup("frmConfigurazione");
        RiempiRecord(kRecordSetup1, std::string(30, '\xC8'), &setup);  // 200 fits into a byte
        setup.Indice("cboLingua", -1);
        EXPECT_EQ(ConfermaInvio(record), "cboLingua");
        EXPECT_EQ(macchina.Mostrati[0].Testo,
                  Testo(Voce::ValoriFuoriCampo) + "\r\n" + Testo(CampoDi("cboLingua")->Didascalia) +
                      ": -1 (0 ... 255), " + Testo(Voce::StrumentoRiceve) + " 255\r\n" +
                      Testo(Voce::InviareLoStesso));
    }
    EditorProva allarmi("frmAllarmi");
    RiempiRecord(kRecordAllarmi, std::string(31, '\1'), &allarmi);
    allarmi.Testo("txtTO", "3276.8");
    allarmi.Testo("txtTA", "4000");
    EXPECT_EQ(ConfermaInvio(record), "txtTO");
    EXPECT_EQ(macchina.Mostrati[1].Testo,
              Testo(Voce::ValoriFuoriCampo) + "\r\n" + Testo(Voce::SogliaTemperaturaOlio) +
                  ": 3276.8 (-3276.8 ... 3276.7), " + Testo(Voce::StrumentoRiceve) +
                  " -3276.8\r\n" + Testo(Voce::SogliaTemperaturaAcqua) +
                  ": 4000 (-3276.8 ... 3276.7), " + Testo(Voce::StrumentoRiceve) + " -2553.6\r\n" +
                  Testo(Voce::InviareLoStesso));
    EXPECT_EQ(ConfermaInvio(record), std::nullopt);
    allarmi.Testo("txtLed3", "a lot");
    EXPECT_EQ(ConfermaInvio(record), "txtLed3");
    EXPECT_EQ(macchina.Mostrati[3].Testo.find(Testo(Voce::ValoreNonInviabile)), 0u);
    EXPECT_EQ(CampoDi("txtLed3")->Byte, 21u);
    EXPECT_EQ(CampoDi("OKButton"), nullptr);
}

TEST_F(RecordStrumento, AnEditorThatClosesDuringItsReadLeavesNoTrace) {
    for (const int chiusura : {1, 30}) {  // while the reply is awaited, while the lamp flashes
        EditorProva allarmi("frmAllarmi");
        int eventi = 0;
        macchina.DuranteEventi = [&] {
            if (++eventi == chiusura) ImpostaFormAttiva(nullptr);
        };
        Scambio(LeggiDatiAllarmi, std::string(31, '\2'));
        EXPECT_EQ(Progetto() + allarmi.Stato(), "");
    }
}

}  // namespace
}  // namespace lapvane
