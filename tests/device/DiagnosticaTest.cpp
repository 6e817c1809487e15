#include "device/Diagnostica.h"

#include "device/SerialComm.h"
#include "device/UltimoMinuto.h"
#include "support/SerialeProva.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

class VistaProva : public VistaDiagnostica {
 public:
    void ValoreCampo(int campo, const std::string& testo) override { campi[campo] = testo; }
    void Allarme(int n, bool acceso) override { allarmi.at(std::size_t(n)) = acceso; }
    void ValoreAnalogico(int i, const std::string& testo) override { analogici[i] = testo; }
    void Letto(GruppoLive gruppo, bool riuscito) override { letti[gruppo].push_back(riuscito); }
    bool Visibile() const override { return visibile; }
    std::map<int, std::string> campi, analogici;
    std::vector<bool> allarmi = std::vector<bool>(8, true);
    std::map<GruppoLive, std::vector<bool>> letti;
    bool visibile = true;
};

class Diagnostica : public ::testing::Test {
 protected:
    Diagnostica() {
        CaricaTestiVeri(1);
        finestra.Seriale = &seriale;
        seriale.Risponde = [this](const std::string& frame) {
            if (frame[1] == 37) seriale.Fra(2, live);
            if (frame[1] == 9) seriale.Fra(2, analogici);
        };
        seriale.PortOpen(true);
    }
    PlatformProva macchina;
    PrincipaleProva finestra;
    SerialeProva seriale{macchina};
    VistaProva vista;
    std::string live = std::string(36, '\0');
    std::string analogici = std::string(19, '\0');
};

}  // namespace

using namespace std::string_literals;

TEST_F(Diagnostica, ShowsEveryFieldOfTheLiveFrame) {
    //       flags    rpm      -        km/h     oil 98.5  water    oil 5.250 fuel 3.8  12.6 V
    live =
        "R%\x41\x05\x1F\x40\xAA\xAA\x00\xC8\x03\xD9\x03\x2C\x14\x82\x0E\xD8\x00\x7E"
        // -       laps     fuel gear turbo throttle G   lambda   free memory
        "\xAA\xAA\x00\x11\x41\x04\xFA\x64\xF3\x05\xBE\x00\x0F\xFE\x80\0"s;
    LeggiValoriLive(vista);
    const std::map<int, std::string> attesi = {
        {0, "8000"},  {2, "200"},    {3, "98.5"}, {4, "81.2"},  {5, "5.250"}, {6, "3.800"},
        {7, "12.6"},  {8, "17"},     {9, "6.5"},  {10, "4"},    {11, "-0.6"}, {12, "100"},
        {13, "-1.3"}, {14, "14.70"}, {15, "50"},  {16, "1.000"}};
    EXPECT_EQ(vista.campi, attesi);
    // The free memory: 0x000FFE80 = 1048192 is half of 2096384.
    // Bits 8 to 15 of the flag word are the lamps; bits 0 and 2 are none.
    EXPECT_EQ(vista.allarmi,
              (std::vector<bool>{true, false, false, false, false, false, true, false}));
    macchina.Separatore = ',';
    live = std::string(36, '\0');
    LeggiValoriLive(vista);
    EXPECT_EQ(vista.campi[15], "100");
    EXPECT_EQ(vista.campi[5], "0,000");
}

TEST(UltimoMinuto, HoldsAMinuteWithItsGapsAndMovesOnlyWhileItChanges) {
    UltimoMinuto minuto;
    EXPECT_FALSE(minuto.Valore(0));
    std::int64_t ora = 90000;
    const auto legge = [&](double valore, std::int64_t poi) {
        return minuto.Aggiungi(valore, ora += poi);
    };
    EXPECT_TRUE(legge(5.0, 0));
    EXPECT_FALSE(legge(7.0, 100)) << "in the same half second";
    EXPECT_EQ(minuto.Valore(0), 7.0) << "the last one counts";
    EXPECT_TRUE(legge(8.0, 1000));
    EXPECT_EQ(minuto.Valore(1), 7.0) << "a wait of the link is no gap";
    EXPECT_TRUE(legge(9.0, 5000));
    EXPECT_FALSE(minuto.Valore(1));
    EXPECT_EQ(minuto.Valore(10), 8.0);
    EXPECT_EQ(minuto.Intervallo(1.0).Massimo, 9.0);
    EXPECT_EQ(minuto.Intervallo(1.0).Minimo, 7.0);
    EXPECT_EQ(minuto.Intervallo(10.0).Minimo, 3.0) << "noise looks like noise";
    for (int i = 0; i < 119; ++i) EXPECT_TRUE(legge(9.0, 500)) << i;
    EXPECT_FALSE(legge(9.0, 500));
    EXPECT_EQ(minuto.Valore(119), 9.0);
    EXPECT_FALSE(minuto.Valore(120));
}

TEST_F(Diagnostica, AnalogueInputsGoToTheWindowOrToTheNumbers) {
    analogici = "R\t\x00\x01\xFF\xFF\x03\xFF\x80\x00\x7F\xFF\x00\x00\x00\x0A\x12\x34\0"s;
    ErroreComunicazione = true;
    LeggiValoriAnalogici();
    EXPECT_FALSE(ErroreComunicazione);
    EXPECT_EQ(ValoriAnalogici,
              (std::array<std::int16_t, 8>{1, -1, 1023, -32768, 32767, 0, 10, 4660}));
    ValoriAnalogici = {};
    LeggiValoriAnalogici(&vista);
    EXPECT_EQ(ValoriAnalogici[7], 0) << "the window takes them";
    EXPECT_EQ(vista.analogici[3], "-32768");
    EXPECT_EQ(vista.analogici[7], "4660");
}

TEST_F(Diagnostica, CycleRunsUntilTheWindowClosesAndLeavesThePollOff) {
    const std::int64_t inizio = macchina.Orologio;
    macchina.DuranteEventi = [&] { vista.visibile = macchina.Orologio <= inizio + 1000; };
    EseguiDiagnostica(vista);
    EXPECT_GE(seriale.Scritti.size(), 15u) << "two exchanges and 100 ms of pauses a round";
    EXPECT_LE(seriale.Scritti.size(), 20u);
    EXPECT_EQ(vista.campi.size() + vista.analogici.size(), 24u);
    EXPECT_EQ(FaseComunicazione, 37);
    // A port that has gone.
    seriale.PortOpen(false);
    seriale.Porte.clear();
    vista.letti.clear();
    vista.visibile = true;
    macchina.DuranteEventi = [&] { vista.visibile = vista.letti.empty(); };
    EseguiDiagnostica(vista);
    EXPECT_EQ(vista.letti[GruppoLive::Valori], std::vector<bool>{false});
}
