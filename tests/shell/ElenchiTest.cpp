#include "platform/FileTesto.h"
#include "shell/CsvTabella.h"
#include "shell/LogRecenti.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {
namespace {

TEST(CsvTabella, NumbersAndTimesTakeTheSeparatorAndTextsStayOneField) {
    EXPECT_EQ(
        CsvTabella({{"V. max", "a;b \"c\""}, {"-12.5", "01:02.03"}, {"1.2.3", "-.", "7"}}, ','),
        "V. max;\"a;b \"\"c\"\"\"\r\n-12,5;01:02,03\r\n1.2.3;-.;7\r\n");
    EXPECT_EQ(CsvTabella({{"0,5"}}, '.'), "0.5\r\n");
}

TEST(LogRecenti, FourComeBackTheNewestFirstAndADamagedListNotAtAll) {
    PlatformProva macchina;
    EXPECT_TRUE(CaricaLogRecenti().empty());
    ElencoLog elenco;
    for (const char8_t* log :
         {u8"/a%\n.csv", u8"/b.csv", u8"/東京 ñ.csv", u8"/d.csv", u8"/e.csv"}) {
        MettiInCima(elenco, log);
    }
    MettiInCima(elenco, elenco[1]);
    EXPECT_EQ(elenco, (ElencoLog{u8"/d.csv", u8"/e.csv", u8"/東京 ñ.csv", u8"/b.csv"}));
    elenco[1] = u8"/a%\n.csv";
    SalvaLogRecenti(elenco);
    EXPECT_EQ(CaricaLogRecenti(), elenco);
    const std::string testo = Leggi(platform().AppPath() / "RecentLogs.lapvane");
    for (const char* guasto : {"", "lapvane-logs 2\nlog=/a\n", "lapvane-logs 1\nlog=/a\nxxxxxx\n",
                               "lapvane-logs 1\nlog=\n"}) {
        EXPECT_TRUE(LeggiLogRecenti(guasto).empty()) << guasto;
    }
    EXPECT_EQ(LeggiLogRecenti(testo + "log=/fifth\n"), elenco);
}

}  // namespace
}  // namespace lapvane::prova
