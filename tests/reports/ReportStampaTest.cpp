#include <algorithm>
#include <span>

#include "reports/DatiSessione.h"
#include "reports/StampaGrafico.h"
#include "reports/StampaReport.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {
namespace {

/// A printer that writes down what is drawn. The page that NewPage opens counts once it is used.
class StampanteProva : public Printer {
 public:
    struct Scritta {
        double Punti, X, Y, Destra;
        std::string Testo;
    };
    struct Pagina {
        std::vector<Scritta> Testi;
        std::vector<std::array<double, 4>> Linee;
    };

    void Sheet(double width, double height) override { EXPECT_EQ(width / height, 21 / 29.7); }
    void FontSize(double points) override { punti = points; }
    void FontBold(bool) override {}
    void Line(double x1, double y1, double x2, double y2) override {
        Foglio().Linee.push_back({x1, y1, x2, y2});
    }
    void Text(double x, double y, double right, const std::string& text) override {
        Foglio().Testi.push_back({punti, x, y, right, text});
    }
    void NewPage() override { nuova = true; }
    void EndDoc() override { ++fini; }

    std::vector<Pagina> pagine;
    int fini = 0;

 private:
    Pagina& Foglio() {
        EXPECT_EQ(fini, 0) << "drawn behind the end";
        if (nuova) pagine.emplace_back();
        nuova = false;
        return pagine.back();
    }
    double punti = 0.0;
    bool nuova = true;
};

class ReportStampa : public ::testing::Test {
 protected:
    ReportStampa() {
        CaricaTestiVeri(1);
        DatiSessione = {"Prove", "24/11/2026",       "10:20",           "Imola", "4909",
                        "mai",   "Rossi\r\nBianchi", "pista\r\numida\n"};
        DatiProgetto.Veicolo = "Monoposto";
    }
    static StampanteProva Stampa(int quanti) {
        std::vector<RigaReport> giri;
        for (int i = 1; i <= quanti; ++i) {
            const std::string n = std::to_string(i);
            giri.push_back({"s" + n, n, "t" + n, "v" + n});
        }
        StampanteProva stampante;
        StampaReport(stampante, giri);
        EXPECT_EQ(stampante.fini, 1);
        return stampante;
    }
    /// The text whose top left corner is there, with its font size: "text@10".
    static std::string In(const StampanteProva::Pagina& pagina, double x, double y) {
        for (const auto& s : pagina.Testi) {
            if (std::abs(s.X - x) < 1e-9 && std::abs(s.Y - y) < 1e-9)
                return s.Testo + "@" + std::to_string(static_cast<int>(s.Punti));
        }
        return "-";
    }

    PlatformProva macchina;
};

TEST_F(ReportStampa, PutsFramesSessionAndHeadingsWhereTheyBelong) {
    const auto pagina = Stampa(1).pagine.at(0);
    const std::vector<std::array<double, 4>> linee = {
        {1, 1, 19, 1},     {19, 1, 19, 5},    {19, 5, 1, 5},   {1, 5, 1, 1},
        {1, 5.5, 19, 5.5}, {19, 5.5, 19, 28}, {19, 28, 1, 28}, {1, 28, 1, 5.5}};
    EXPECT_TRUE(std::ranges::equal(linee, std::span(pagina.Linee).first(8)));
    EXPECT_EQ(pagina.Testi.size(), 7u + 8u + 2u) << "the one lap stays out";
    EXPECT_EQ(In(pagina, 1.5, 1.5), "Session: Prove@10");
    EXPECT_EQ(In(pagina, 1.5, 2.0), "Date: 24/11/2026@10");
    EXPECT_EQ(In(pagina, 9, 2.0), "Time: 10:20@10");
    EXPECT_EQ(In(pagina, 1.5, 2.5), "Circuit: Imola@10");
    EXPECT_EQ(In(pagina, 9, 2.5), "Car: Monoposto@10");
    EXPECT_EQ(In(pagina, 1.5, 3.0), "Drivers: Rossi, Bianchi@10");
    EXPECT_EQ(In(pagina, 1.5, 3.5), "Notes: pista umida @10");
    const std::array<double, 8> x = {1.5, 3, 4.5, 7, 10.5, 12, 13.5, 16};
    const std::array<const char*, 4> titoli = {"Session@9", "Lap@9", "Time@9", "Speed (Km/h)@9"};
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_EQ(In(pagina, x[i], 6.0), titoli[i % 4]);
    // Nothing may run over a frame or into what stands right of it.
    for (const auto& a : pagina.Testi) {
        EXPECT_LT(a.Destra, 19.0) << a.Testo;
        for (const auto& b : pagina.Testi) {
            if (a.Y == b.Y && b.X > a.X) {
                EXPECT_LT(a.Destra, b.X) << a.Testo;
            }
        }
    }
}

TEST_F(ReportStampa, LapsOfAPageGoDownTwoGroupsAndTheLastOneStaysOut) {
    const std::pair<int, std::vector<int>> casi[] = {
        {0, {}}, {1, {0}}, {80, {79}}, {81, {79, 0}}, {250, {79, 79, 79, 9}}};
    for (const auto& [giri, righe] : casi) {  // lines of each page
        const StampanteProva stampante = Stampa(giri);
        ASSERT_EQ(stampante.pagine.size(), righe.size()) << giri;
        for (std::size_t p = 0; p < righe.size(); ++p) {
            const auto& pagina = stampante.pagine[p];
            ASSERT_EQ(pagina.Testi.size(), 17u + 4u * static_cast<unsigned>(righe[p])) << giri;
            EXPECT_EQ(pagina.Testi.back().Testo,
                      "Page " + std::to_string(p + 1) + " of " + std::to_string(righe.size()));
            for (int k = 1; k <= righe[p]; ++k) {
                const std::string n = std::to_string(80 * static_cast<int>(p) + k);
                const bool primo = k <= 40;
                const double y = 6.5 + 0.5 * (primo ? k : k - 40);
                for (const auto& [x, campo] :
                     {std::pair{1.5, "s"}, {3.0, ""}, {4.5, "t"}, {7.0, "v"}}) {
                    EXPECT_EQ(In(pagina, primo ? x : x + 9.0, y), campo + n + "@9");
                }
            }
        }
    }
    EXPECT_EQ(In(Stampa(81).pagine[0], 16, 26.0), "v79@9") << "the lowest line of a page";
}

TEST_F(ReportStampa, GraphHasSevenLinesAndALegend) {
    TestiStampaGrafico testi = TestiGraficoCanali();
    const std::array<std::string, 7> righe = {
        "Session: Prove", "Date: 24/11/2026",        "Time: 10:20",         "Circuit: Imola",
        "Car: Monoposto", "Drivers: Rossi  Bianchi", "Notes: pista  umida "};
    EXPECT_EQ(testi.Righe, righe) << "each carriage return and each line feed is a blank";
    EXPECT_EQ(testi.Legenda, "Channels of the selected lap");
    testi = TestiGraficoAllarmi();
    EXPECT_EQ(testi.Righe, righe);
    EXPECT_EQ(testi.Legenda,
              "Oil pump;Alternator;Oil temperature;Water temperature;Battery;Fuel pressure;"
              "Oil pressure;Fuel level;");
}

}  // namespace
}  // namespace lapvane::prova
