// The records' frames and replies, byte by byte, against a port that notes them.
#include "device/RecordStrumento.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "device/TabelleRecord.h"
#include "project/DatiProgetto.h"
#include "sensors/Curve.h"
#include "shell/Editor.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/SerialeProva.h"

namespace lapvane {
namespace {

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

/// "name=value" pairs between bars.
std::vector<std::pair<std::string, std::string>> Coppie(std::string_view testo) {
    std::vector<std::pair<std::string, std::string>> coppie;
    while (!testo.empty()) {
        const std::string_view coppia = testo.substr(0, testo.find('|'));
        testo.remove_prefix(std::min(testo.size(), coppia.size() + 1));
        const std::size_t uguale = coppia.find('=');
        coppie.emplace_back(coppia.substr(0, uguale), coppia.substr(uguale + 1));
    }
    return coppie;
}

/// An editor without a window: each control's value as text, and "name!" whether it is enabled.
class EditorProva : public Editor, public ControlliEditor {
 public:
    explicit EditorProva(std::string_view nome, std::string_view valori = {}) : nome_(nome) {
        Imposta(valori);
        ImpostaFormAttiva(this);
    }
    ~EditorProva() override { ImpostaFormAttiva(nullptr); }
    void Imposta(std::string_view valori) {
        for (const auto& [controllo, valore] : Coppie(valori)) valori_[controllo] = valore;
    }
    /// Everything that is set, by name.
    std::string Stato() const {
        std::string stato;
        for (const auto& [controllo, valore] : valori_) {
            stato += (stato.empty() ? "" : "|") + controllo + "=" + valore;
        }
        return stato;
    }
    std::string_view Nome() const override { return nome_; }
    void AbilitaStrumento(bool) override {}
    ControlliEditor* Controlli() override { return this; }
    std::string Testo(std::string_view c) const override { return valori_.at(std::string(c)); }
    void Testo(std::string_view c, const std::string& t) override { valori_[std::string(c)] = t; }
    int Indice(std::string_view c) const override { return std::stoi(Testo(c)); }
    void Indice(std::string_view c, int i) override { Testo(c, std::to_string(i)); }
    bool Spunta(std::string_view c) const override { return Testo(c) == "1"; }
    void Spunta(std::string_view c, bool s) override { Testo(c, s ? "1" : "0"); }
    void Abilita(std::string_view c, bool a) override { Spunta(std::string(c) + "!", a); }

 private:
    std::string nome_;
    std::map<std::string, std::string> valori_;
};

/// Works on a field of the project as its own type.
template <class F>
auto Campo(std::string_view nome, F azione) {
    return std::visit([&](auto membro) { return azione(DatiProgetto.*membro); },
                      kCampiProgetto[PosizioneCampo(nome)].Campo);
}
/// An empty project but for these fields.
void Progetto(std::string_view valori) {
    DatiProgetto = {};
    for (const auto& [nome, valore] : Coppie(valori)) {
        Campo(nome, [&valore = valore](auto& dove) {
            if constexpr (std::is_same_v<decltype(dove), std::string&>) {
                dove = valore;
            } else {
                dove = static_cast<std::remove_reference_t<decltype(dove)>>(std::stoi(valore));
            }
        });
    }
}
void NelProgetto(std::string_view attesi) {
    for (const auto& [nome, valore] : Coppie(attesi)) {
        EXPECT_EQ(Campo(nome,
                        [](auto& dove) {
                            if constexpr (std::is_same_v<decltype(dove), std::string&>) {
                                return dove;
                            } else {
                                return std::to_string(dove);
                            }
                        }),
                  valore)
            << nome;
    }
}

class RecordStrumento : public ::testing::Test {
 protected:
    RecordStrumento() {
        prova::CaricaTestiVeri(1);
        FaseComunicazione = 18;
        finestra.Seriale = &porta;
        porta.PortOpen(true);
    }

    /// The one frame of a send, which is acknowledged.
    std::string Inviato(void (*invia)()) {
        porta.Scritti.clear();
        porta.Risponde = [this](const std::string& f) { porta.Fra(20, Conferma(f[1])); };
        ErroreComunicazione = true;
        const int lampi = static_cast<int>(macchina.Orologio);
        invia();
        EXPECT_FALSE(ErroreComunicazione);
        EXPECT_GE(macchina.Orologio - lampi, 500) << "the lamp has flashed";
        EXPECT_EQ(porta.Scritti.size(), 1u);
        return porta.Scritti.empty() ? "" : porta.Scritti[0];
    }
    /// A read that is answered; its request.
    std::string Letto(void (*leggi)(), const std::string& risposta) {
        porta.Scritti.clear();
        porta.Risponde = [&](const std::string&) { porta.Fra(20, risposta); };
        ErroreComunicazione = true;
        const std::int64_t inizio = macchina.Orologio;
        leggi();
        EXPECT_FALSE(ErroreComunicazione);
        EXPECT_GE(macchina.Orologio - inizio, 500) << "the lamp has flashed";
        return porta.Scritti.at(0);
    }
    /// A send that ends in this one box.
    void NonInviato(void (*invia)(), const std::string& testo, Icon icona) {
        SCOPED_TRACE(testo);
        macchina.Risposte = {Answer::Ok};
        macchina.Mostrati.clear();
        macchina.Puntatori.clear();
        porta.Scritti.clear();
        ErroreComunicazione = false;
        invia();
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_TRUE(porta.Scritti.empty());
        EXPECT_EQ(macchina.Puntatori, std::vector<Pointer>{Pointer::Normal});
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, testo);
        EXPECT_EQ(macchina.Mostrati[0].Icona, icona);
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    SerialeProva porta{macchina};
};

struct Viaggio {
    const char* Nome;
    const char* Progetto;
    const char* Controlli;
    void (*Invia)();
    const char* Frame;
    void (*Leggi)();
    const char* Richiesta;
    std::size_t Risposta;  // characters
};
const Viaggio kSetup1 = {
    "frmConfigurazione",
    "Lingua=1|UMVel=2|UMTemp=3|UMPress=4|PaginaAbilitata1=0|PaginaAbilitata2=1|PaginaAbilitata3=0|"
    "PaginaAbilitata5=1|PaginaAbilitata8=0|PaginaAbilitata9=1|chkAbilRecLap=1|mskStopRecSecondi=30|"
    "mskAbilRecVel=-2",
    "PagineAbilitateTemp1=1|PagineAbilitateTemp2=0|PagineAbilitateTemp3=0|PagineAbilitateTemp4=1|"
    "PagineAbilitateTemp5=0|PagineAbilitateTemp6=0|PagineAbilitateTemp7=0|PagineAbilitateTemp8=1|"
    "cboLingua=1|cboUMPressione=4|cboUMTemperatura=3|cboUMVelocita=2|chkAbilRecLAP=1|"
    "txtAbilRecVel=-2|txtStopRecSecondi=30",
    InviaDatiSetup1,
    "48 12 | 01 02 03 04 | 00 89 | 01 1E | FF FE | 00*16 | 30 39",
    LeggiDatiSetup1,
    "48 13 35 42",
    30};
const Viaggio kSetup2 = {
    "frmConfigurazione",
    "TempoMsgGiro=5|TempoVisGiro=255|Settore1=1000|Settore2=-1|Settore3=800|Settore4=1|"
    "Settore5=32767",
    "txtSettoreCrono0=1000|txtSettoreCrono1=-1|txtSettoreCrono2=800|txtSettoreCrono3=1|"
    "txtSettoreCrono4=32767|txtTempoMsgGiro=5|txtTempoVisGiro=255",
    InviaDatiSetup2,
    "48 1C | 05 FF | 03 E8 FF FF 03 20 00 01 7F FF | 00*10 | 46 33",
    LeggiDatiSetup2,
    "48 1D 36 35",
    16};
const Viaggio kSensori = {
    "frmSensori",
    "NumAccRPM=2|ImpulsiRuota=4|DiametroRuota=590|LAPO=1|LAAL=3|AbilTO=1|AbilPO=0|AbilPB=0|"
    "AbilTA=1|AbilLB=0|AbilCambio=1|AbilSG=1|AbilSensoreLambda=0|ChannCambio=-1|ChannSG=1|"
    "ChannSensoreLambda=4|ChannPT=2|AbilPT=1",
    "cboChannCambio=-1|cboChannPT=2|cboChannSG=1|cboChannSensoreLambda=4|cboLAAL=3|cboLAPO=1|"
    "chkAbilCambio=1|chkAbilLB=0|chkAbilPB=0|chkAbilPO=0|chkAbilPT=1|chkAbilSG=1|"
    "chkAbilSensoreLambda=0|chkAbilTA=1|chkAbilTO=1|txtDiametroRuota=590|txtImpulsiRuota=4|"
    "txtNumAccRPM=2",
    InviaDatiSensori,
    "48 16 | 02 04 | 02 4E | 01 03 | 01 00 00 01 00 01 01 00 | 00 02 05 03 | 01 | 00*15 | 43 37",
    LeggiDatiSensori,
    "48 17 35 46",
    21};
// The fuel pressure's threshold and the output are off; the lamps Verde and Blu do not travel.
const Viaggio kAllarmi = {
    "frmAllarmi",
    "chkTO=1|mskTO=1250|chkPO=1|mskPO=1200|chkPB=0|mskPB=0|chkTA=1|mskTA=1021|chkLB=1|mskLB=50|"
    "chkTB=1|mskTB=120|Led0=9500|Led1=10000|Led2=10500|Led3=11000|Led4=11500|LedGiallo=1|"
    "TipoLedGiallo=3|chkUscita=0|TipoUscita=0",
    "cboIngresso!=0|cboLedGiallo=2|cboLedGiallo!=1|cboUscita!=0|chkIngresso=0|chkLB=1|"
    "chkLedGiallo=1|chkPB=0|chkPO=1|chkTA=1|chkTB=1|chkTO=1|chkUscita=0|txtLB=5.0|txtLB!=1|"
    "txtLed0=9500|txtLed1=10000|txtLed2=10500|txtLed3=11000|txtLed4=11500|txtPB!=0|txtPO=1.200|"
    "txtPO!=1|txtTA=102.1|txtTA!=1|txtTB=12.0|txtTB!=1|txtTO=125.0|txtTO!=1",
    InviaDatiAllarmi,
    "48 14 | 04 E2 | 04 B0 | 00 00 | 03 FD | 00 32 | 00 78 | 25 1C | 27 10 | 29 04 | 2A F8 | 2C EC "
    "|"
    "03 00 00 00 00 00 | 00*20 | 38 32",
    LeggiDatiAllarmi,
    "48 15 35 44",
    31};

TEST_F(RecordStrumento, FrameReplyProjectAndEditorHoldTheSameFields) {
    for (const Viaggio& v : {kSetup1, kSetup2, kSensori, kAllarmi}) {
        SCOPED_TRACE(v.Richiesta);
        const std::string frame = Hex(v.Frame);
        // The first two characters of a reply are not looked at.
        std::string risposta = "XX" + frame.substr(2, v.Risposta - 2);
        risposta.resize(v.Risposta, 'A');
        Progetto(v.Progetto);
        EXPECT_EQ(Inviato(v.Invia), frame);
        Progetto("");
        EXPECT_EQ(Letto(v.Leggi, risposta), Hex(v.Richiesta));
        NelProgetto(v.Progetto);
        Progetto("");
        EditorProva editor(v.Nome);
        Letto(v.Leggi, risposta);
        EXPECT_EQ(editor.Stato(), v.Controlli);
        EXPECT_EQ(Inviato(v.Invia), frame);
        NelProgetto("Lingua=0|Settore1=0|NumAccRPM=0|AbilTO=0|mskTO=0|Led0=0");
    }
}

TEST_F(RecordStrumento, EveryFlagHasItsOwnPlace) {
    const auto solo = [this](void (*invia)(), const std::string& campo) {
        Progetto("");
        std::string spento = Inviato(invia);
        Progetto(campo + "=1");
        const std::string acceso = Inviato(invia);
        for (std::size_t i = 0; i < spento.size(); ++i) spento[i] ^= acceso[i];
        return spento.substr(2, spento.size() - 4);  // the checksum has its own tests
    };
    for (int pagina = 2; pagina <= 9; ++pagina) {
        std::string atteso(26, '\0');
        atteso[5] = static_cast<char>(1 << (pagina - 2));
        EXPECT_EQ(solo(InviaDatiSetup1, "PaginaAbilitata" + std::to_string(pagina)), atteso);
    }
    for (const char* ferma : {"PaginaAbilitata1", "PaginaAbilitata10", "LedVerde", "LedBlu"}) {
        EXPECT_EQ(solo(InviaDatiSetup1, ferma), std::string(26, '\0')) << ferma;
    }
    std::size_t byte = 6;
    for (const char* canale : {"TO", "PO", "PB", "TA", "LB", "Cambio", "SG", "SensoreLambda"}) {
        std::string atteso(34, '\0');
        atteso[byte++] = '\1';
        EXPECT_EQ(solo(InviaDatiSensori, std::string("Abil") + canale), atteso) << canale;
    }
}

TEST_F(RecordStrumento, WhatIsTooLargeOrBrokenTravelsAsTheBytesTakeIt) {
    Progetto("mskStopRecSecondi=300|mskAbilRecVel=32768");
    EXPECT_EQ(Inviato(InviaDatiSetup1).substr(8, 4), Hex("00 2C 80 00"));
    Progetto("chkPO=1|mskPO=70000|chkTA=0|mskTA=1020|LedGiallo=1|TipoLedGiallo=|TipoUscita=5");
    EXPECT_EQ(Inviato(InviaDatiAllarmi).substr(2, 8), Hex("00 00 11 70 00 00 00 00"));
    EXPECT_EQ(Inviato(InviaDatiAllarmi).substr(24, 6), Hex("00*6"));
    {
        // Fractions go to the even neighbour, blanks are no harm, an empty box is 0.
        EditorProva setup("frmConfigurazione",
                          "txtTempoMsgGiro=3.5|txtTempoVisGiro=2.5|txtSettoreCrono0=1205.5|"
                          "txtSettoreCrono1= 65535 |txtSettoreCrono2=|txtSettoreCrono3=100,5|"
                          "txtSettoreCrono4=-1");
        EXPECT_EQ(Inviato(InviaDatiSetup2).substr(2, 12),
                  Hex("04 02 04 B6 FF FF 00 00 00 64 FF FF"));
    }
    EditorProva allarmi("frmAllarmi",
                        "chkTO=1|chkPO=1|chkPB=1|chkTA=0|chkLB=1|chkTB=1|txtTO=120.25|txtPO=2.5|"
                        "txtPB=32.768|txtTA=99.0|txtLB=12.35|txtTB=abc|txtLed0=1|txtLed1=2|"
                        "txtLed2=3|txtLed3=4|txtLed4=5|chkLedGiallo=1|cboLedGiallo=-1|"
                        "chkUscita=0|cboUscita=6|chkIngresso=1|cboIngresso=0");
    EXPECT_EQ(Inviato(InviaDatiAllarmi).substr(2, 12), Hex("04 B2 09 C4 80 00 00 00 00 7C 00 00"));
    EXPECT_EQ(Inviato(InviaDatiAllarmi).substr(24, 6), Hex("00*6"));
}

TEST_F(RecordStrumento, RepliesKeepTheirSignAndWhatIsOffKeepsItsText) {
    const std::string risposta = Hex(
        "52 15 | 00 01 | 80 00 | 00 00 | 03 FC | FF FF | 00 78 | 25 1C | 80 00 | 00 00 | 00 01 |"
        "7F FF | FF 41 41 00 02 | 41*2");
    Progetto("chkPO=1|chkPB=1|chkIngresso=1|chkUscita=1|LedVerde=1|TipoLedVerde=7");
    Letto(LeggiDatiAllarmi, risposta);
    // The input's type comes from the instrument, its flag goes off.
    NelProgetto(
        "mskTO=1|chkTO=1|mskPO=-32768|chkPO=0|mskPB=0|chkPB=0|mskLB=-1|chkLB=0|Led1=-32768|"
        "TipoLedGiallo=255|LedGiallo=1|TipoUscita=0|chkUscita=0|TipoIngresso=2|chkIngresso=0|"
        "LedVerde=1|TipoLedVerde=7");
    EditorProva allarmi("frmAllarmi", "txtPB=2.500|txtPO=1.000|cboUscita=4");
    Letto(LeggiDatiAllarmi, risposta);
    for (const char* stato : {"cboIngresso=1|cboIngresso!=1", "cboUscita=4|cboUscita!=0",
                              "txtPB=2.500|txtPB!=0", "txtPO=1.000|txtPO!=0", "chkPO=0|"}) {
        EXPECT_NE(allarmi.Stato().find(stato), std::string::npos) << stato << allarmi.Stato();
    }
}

TEST_F(RecordStrumento, CurvesTravelAsWordsInBothDirections) {
    for (std::size_t i = 0; i < 20; ++i) CurvaX[i] = static_cast<double>(i) * 16.0;
    CurvaX[20] = 555.0;
    CurvaY = {2.5, 3.5, 1001.4999999999999, -1.0, 40000.0, 32768.0, 70000.0, 0.5, 1.5, -2.5};
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(3); }),
              Hex("48 18 | 03 | 00 14 | 00 01 | 00 00 | 00 00 | 00 00 | 00 28 | 00 02 |"
                  "00 00 00 10 00 20 00 30 00 40 00 50 00 60 00 70 00 80 00 90"
                  "00 A0 00 B0 00 C0 00 D0 00 E0 00 F0 01 00 01 10 01 20 01 30 | 00 00 |"
                  "00 02 00 04 03 EA FF FF 9C 40 80 00 11 70 00 00 00 02 FF FE 00*20 | 35 33"));
    CurvaY[20] = 2.5;
    EXPECT_EQ(Letto([] { LeggiCurvaSensore(4); },
                    Hex("52 19 | 41*14 | 00 01 FF FF 80 00 7F FF 00*30 04 00 | 41*2 |"
                        "9C 40 00 05 00*34 FF FE | 41")),
              Hex("48 19 04 36 35"));
    EXPECT_EQ(CurvaX, (std::array<double, 21>{1, -1, -32768, 32767, 0, 0, 0, 0, 0,    0,  0,
                                              0, 0,  0,      0,     0, 0, 0, 0, 1024, 555}));
    EXPECT_EQ(CurvaY[0], -25536.0);
    EXPECT_EQ(CurvaY[1], 5.0);
    EXPECT_EQ(CurvaY[19], -2.0);
    EXPECT_EQ(CurvaY[20], 2.5);
}

TEST_F(RecordStrumento, WhatIsNoNumberIsShownAndNotSent) {
    const auto rifiutato = [this](void (*invia)(), Voce campo, const std::string& valore) {
        NonInviato(invia,
                   Testo(Voce::ValoreNonInviabile) + "\r\n" + Testo(campo) + ": \"" + valore + "\"",
                   Icon::Warning);
    };
    Progetto("LedGiallo=1|TipoLedGiallo=giallo");
    rifiutato(InviaDatiAllarmi, Voce::LedGiallo, "giallo");
    for (const double valore : {3e9, std::numeric_limits<double>::quiet_NaN()}) {
        CurvaY[19] = valore;
        rifiutato([] { InviaCurvaSensore(1); }, Voce::TipoPressioneOlio,
                  valore > 0 ? "3000000000" : "");
    }
    {
        EditorProva sensori("frmSensori", "txtNumAccRPM=12x");
        rifiutato(InviaDatiSensori, Voce::AccensioniPerGiro, "12x");
    }
    EditorProva allarmi("frmAllarmi", "chkTO=1|txtTO=1E999");
    rifiutato(InviaDatiAllarmi, Voce::SogliaTemperaturaOlio, "1E999");
}

TEST_F(RecordStrumento, TheBoxThatNeedsAnotherValueIsNamed) {
    const TabellaRecord* const record[] = {&kRecordAllarmi};
    EditorProva allarmi("frmAllarmi",
                        "chkTO=1|chkPO=1|chkPB=0|chkTA=1|chkLB=0|chkTB=0|txtTO=3276.8|txtPO=2.5|"
                        "txtTA=4000.0|txtLed0=|txtLed1=2|txtLed2=3|txtLed3=4|txtLed4=5|"
                        "chkLedGiallo=1|cboLedGiallo=-1|chkUscita=0|cboUscita=6");
    macchina.Risposte = {Answer::Cancel, Answer::Ok, Answer::Ok};
    EXPECT_EQ(ConfermaInvio(record), "txtTO");
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::ValoriFuoriCampo) + "\r\n" + Testo(Voce::SogliaTemperaturaOlio) +
                  ": 3276.8 (-3276.8 ... 3276.7), " + Testo(Voce::StrumentoRiceve) +
                  " -3276.8\r\n" + Testo(Voce::SogliaTemperaturaAcqua) +
                  ": 4000.0 (-3276.8 ... 3276.7), " + Testo(Voce::StrumentoRiceve) +
                  " -2553.6\r\n" + Testo(Voce::InviareLoStesso));
    EXPECT_EQ(ConfermaInvio(record), std::nullopt);
    allarmi.Imposta("txtTO=1|txtTA=1|txtLed3=a lot");
    EXPECT_EQ(ConfermaInvio(record), "txtLed3");
    EXPECT_EQ(macchina.Mostrati[2].Testo.find(Testo(Voce::ValoreNonInviabile)), 0u);
    allarmi.Imposta("txtLed3=4");
    EXPECT_EQ(ConfermaInvio(record), std::nullopt);
    EXPECT_EQ(CampoDi("txtLed3")->Didascalia, CampoDi("txtLed3")->Didascalia);
    EXPECT_EQ(CampoDi("OKButton"), nullptr);
}

TEST_F(RecordStrumento, AnyOtherFormGetsAndGivesNoRecord) {
    EditorProva altra("frmImpostaSensore");
    Progetto("Lingua=1|TempoMsgGiro=5");
    // The setup's frames go out without their fields.
    EXPECT_EQ(Inviato(InviaDatiSetup1), Hex("48 12 | 00*16 | 35 41"));
    EXPECT_EQ(Inviato(InviaDatiSetup2), Hex("48 1C"));
    for (const auto invia : {InviaDatiSensori, InviaDatiAllarmi}) {
        NonInviato(invia, Testo(Voce::StrumentoNonRisponde), Icon::None);
    }
    Letto(LeggiDatiSetup1, std::string(30, '\2'));
    Letto(LeggiDatiSensori, std::string(21, '\2'));
    NelProgetto("Lingua=1|TempoMsgGiro=5|NumAccRPM=0");
    EXPECT_EQ(altra.Stato(), "");
    // A curve does not ask which form is open.
    EXPECT_EQ(Inviato([] { InviaCurvaSensore(0); }).size(), 101u);
}

TEST_F(RecordStrumento, AnEditorThatClosesDuringItsReadLeavesNoTrace) {
    for (const int chiusura : {1, 30}) {  // while the reply is awaited, while the lamp flashes
        EditorProva allarmi("frmAllarmi");
        int eventi = 0;
        macchina.DuranteEventi = [&] {
            if (++eventi == chiusura) ImpostaFormAttiva(nullptr);
        };
        Letto(LeggiDatiAllarmi, std::string(31, '\2'));
        EXPECT_GE(eventi, chiusura);
        EXPECT_EQ(allarmi.Stato(), "");
        NelProgetto("mskTO=0|Led0=0");
    }
}

TEST_F(RecordStrumento, AWriteThatIsNotAcknowledgedFails) {
    const std::int64_t inizio = macchina.Orologio;
    NonInviato(
        [] {
            InviaCurvaSensore(2);
            static_cast<prova::SerialeProva&>(principale().SerialComm()).Scritti.clear();
        },
        Testo(Voce::StrumentoNonRisponde), Icon::None);
    EXPECT_EQ(macchina.Orologio - inizio, 10000);
}

}  // namespace
}  // namespace lapvane
