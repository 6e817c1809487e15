#include "device/Diagnostica.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "device/SerialComm.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/SerialeProva.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

class VistaProva : public VistaDiagnostica {
 public:
    void ValoreCampo(int campo, const std::string& testo) override { campi[campo] = testo; }
    void Allarme(int n, bool acceso) override { allarmi[n] = acceso; }
    void ValoreAnalogico(int i, const std::string& testo) override { analogici[i] = testo; }
    void Letto(GruppoLive gruppo, bool riuscito) override { letti[gruppo].push_back(riuscito); }
    bool Visibile() const override { return visibile; }
    std::map<int, std::string> campi, analogici;
    std::map<int, bool> allarmi;
    std::map<GruppoLive, std::vector<bool>> letti;
    bool visibile = true;
};

class Diagnostica : public ::testing::Test {
 protected:
    Diagnostica() {
        CaricaTestiVeri(1);
        finestra.Seriale = &seriale;
        seriale.Risponde = [this](const std::string& frame) {
            ++richieste;
            if (frame[0] != 'H' || frame.size() < 2) return;
            if (frame[1] == 37) seriale.Fra(2, live);
            if (frame[1] == 9) seriale.Fra(2, analogici);
        };
        seriale.PortOpen(true);
    }
    /// A reply of that many characters with bytes from position `da` (from 1) on.
    static std::string Risposta(std::size_t lunga, std::size_t da, const std::string& byte) {
        std::string r(lunga, '\0');
        r.replace(da - 1, byte.size(), byte);
        return r;
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    SerialeProva seriale{macchina};
    int richieste = 0;
    std::string live = std::string(36, '\0');
    std::string analogici = std::string(19, '\0');
};

}  // namespace

TEST_F(Diagnostica, ShowsEveryFieldOfTheLiveFrame) {
    VistaProva vista;
    using namespace std::string_literals;
    //       flags    rpm      -        km/h     oil 98.5  water    oil 5.250 fuel 3.8  12.6 V
    live = Risposta(36, 3,
                    "\x81\x05\x1F\x40\xAA\xAA\x00\xC8\x03\xD9\x03\x2C\x14\x82\x0E\xD8\x00\x7E"
                    // -       laps     fuel gear turbo throttle G   lambda   free memory
                    "\xAA\xAA\x00\x11\x41\x04\xFA\x64\xF3\x05\xBE\x00\x0F\xFE\x80"s);
    LeggiValoriLive(vista);
    const std::map<int, std::string> attesi = {
        {0, "8000"},  {2, "200"},    {3, "98.5"}, {4, "81.2"},  {5, "5.250"}, {6, "3.800"},
        {7, "12.6"},  {8, "17"},     {9, "6.5"},  {10, "4"},    {11, "-0.6"}, {12, "100"},
        {13, "-1.3"}, {14, "14.70"}, {15, "50"},  {16, "1.000"}};
    EXPECT_EQ(vista.campi, attesi);
    // The free memory: 0x000FFE80 = 1048192 is half of 2096384.
    // Bits 8 and 15 of the flag word are the first and the last lamp; bits 0 and 2 are none.
    EXPECT_EQ(vista.allarmi, (std::map<int, bool>{{0, true},
                                                  {1, false},
                                                  {2, false},
                                                  {3, false},
                                                  {4, false},
                                                  {5, false},
                                                  {6, false},
                                                  {7, true}}));
    live = Risposta(36, 32, "\x00\x1F\xFD\x00"s);  // 2096384: the memory is full
    LeggiValoriLive(vista);
    EXPECT_EQ(vista.campi[15], "0");
    macchina.Separatore = ',';
    live = std::string(36, '\0');
    LeggiValoriLive(vista);
    EXPECT_EQ(vista.campi[15], "100");
    EXPECT_EQ(vista.campi[5], "0,000");
}

TEST_F(Diagnostica, AnalogueInputsGoToTheWindowOrToTheNumbers) {
    using namespace std::string_literals;
    analogici =
        Risposta(19, 3, "\x00\x01\xFF\xFF\x03\xFF\x80\x00\x7F\xFF\x00\x00\x00\x0A\x12\x34"s);
    LeggiValoriAnalogici();
    EXPECT_EQ(ValoriAnalogici,
              (std::array<std::int16_t, 8>{1, -1, 1023, -32768, 32767, 0, 10, 4660}));
    ValoriAnalogici = {};
    VistaProva vista;
    LeggiValoriAnalogici(&vista);
    EXPECT_EQ(ValoriAnalogici[7], 0) << "the window takes them";
    EXPECT_EQ(vista.analogici[3], "-32768");
    EXPECT_EQ(vista.analogici[7], "4660");
}

TEST_F(Diagnostica, CycleRunsUntilTheWindowClosesAndLeavesThePollOff) {
    VistaProva vista;
    const std::int64_t inizio = macchina.Orologio;
    macchina.DuranteEventi = [&] {
        if (macchina.Orologio > inizio + 1000) vista.visibile = false;
    };
    EseguiDiagnostica(vista);
    EXPECT_GE(richieste, 15) << "two exchanges and 100 ms of pauses a round";
    EXPECT_LE(richieste, 20);
    EXPECT_FALSE(vista.campi.empty());
    EXPECT_FALSE(vista.analogici.empty());
    for (const auto& [gruppo, esiti] : vista.letti) {
        EXPECT_EQ(std::count(esiti.begin(), esiti.end(), false), 0);
    }
    EXPECT_EQ(vista.letti.size(), 2u);
    EXPECT_EQ(FaseComunicazione, 37);
}

TEST_F(Diagnostica, LostLinkIsToldReadByReadAndTheWindowStillCloses) {
    VistaProva vista;
    seriale.Risponde = {};
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    std::size_t dettiPrima = 0;  // what the window knew when the message came
    macchina.AlBox = [&] { dettiPrima = vista.letti[GruppoLive::Valori].size(); };
    // The person closes the window while the third read waits.
    macchina.DuranteEventi = [&] {
        if (macchina.Mostrati.size() == 2 && macchina.ChiamateEventi % 7 == 0) {
            vista.visibile = false;
            collegamento().Abbandonato = true;
        }
    };
    EseguiDiagnostica(vista);
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::StrumentoNonRisponde));
    EXPECT_TRUE(vista.campi.empty());
    EXPECT_EQ(vista.letti[GruppoLive::Valori].front(), false);
    EXPECT_GT(dettiPrima, 0u) << "the window knew it only behind the message";
}
