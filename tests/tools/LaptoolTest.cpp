#include "tools/laptool/Laptool.h"

#include <cmath>
#include <sstream>

#include "analysis/compare/LogAperto.h"
#include "logs/Conversione.h"
#include "logs/FileScarico.h"
#include "platform/ErroreRuntime.h"
#include "reports/DatiSessione.h"
#include "support/PlatformProva.h"

namespace lapvane::laptool {
namespace {

namespace fs = std::filesystem;

/// The sample run in a folder with its circuit.
class Laptool : public ::testing::Test {
 protected:
    Laptool() {
        fs::copy(prova::CartellaBin() / "sample", machine.Cartella / "sample");
        fs::copy(prova::CartellaDati() / "tracks", machine.Cartella / "tracks");
        file = (machine.Cartella / "sample" / "Esempio.csv").string();
        prova::Scrivi(machine.Cartella / "sample" / "Esempio.ses", "Prove\r\n\r\n\r\nValdoro\r\n");
    }
    static std::vector<std::vector<std::string>> Table(const std::string& csv) {
        std::vector<std::vector<std::string>> rows;
        std::istringstream lines(csv);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream fields(line);
            rows.emplace_back();
            for (std::string field; std::getline(fields, field, ',');) rows.back().push_back(field);
        }
        return rows;
    }
    static std::string Why(const std::function<void()>& act) {
        try {
            act();
        } catch (const Refusal& refusal) {
            return refusal.Why;
        }
        return {};
    }

    prova::PlatformProva machine;
    std::string file;
};

TEST_F(Laptool, LapsHaveTheirNumbersTimesSectorsAndGaps) {
    DatiSessione.Circuito = "of the open log";
    const auto rows = Table(Laps({file, Form::Csv, 0}));
    ASSERT_EQ(rows.size(), 15u);
    const std::size_t sectors = LogAperto(file).Settori().size();
    ASSERT_EQ(rows[0].size(), sectors + 4);
    EXPECT_EQ(rows[1][0], "2") << "the first timed lap of a download";
    for (std::size_t r = 1; r < rows.size(); ++r) {
        long sum = 0;
        for (std::size_t s = 0; s < sectors; ++s)
            sum += std::lround(std::stod(rows[r][3 + s]) * 100);
        EXPECT_EQ(sum, std::lround(std::stod(rows[r][1]) * 100)) << r;
        EXPECT_NEAR(std::stod(rows[r].back()), std::stod(rows[r][1]) - 78.48, 0.001) << r;
    }
    EXPECT_EQ(DatiSessione.Circuito, "of the open log") << "the system's own record";
    EXPECT_EQ(Table(Laps({file, Form::Csv, 5}))[1].size(), 9u);
    EXPECT_NE(Laps({file, Form::Text, 0}).find("ideal"), std::string::npos);
    EXPECT_NE(Laps({file, Form::Json, 3}).find("\"ideal\""), std::string::npos);
}

TEST_F(Laptool, ComparisonRunsAlongTheReferenceToTheOfficialDifference) {
    const auto rows =
        Table(Compare({file, 12, {2, 3}, {"throt", "Lambda sensor [Lambda]"}, Form::Csv}));
    EXPECT_EQ(rows[0],
              (std::vector<std::string>{"distance", "delta 2", "delta 3", "Throttle 12",
                                        "Throttle 2", "Throttle 3", "Lambda sensor [Lambda] 12",
                                        "Lambda sensor [Lambda] 2", "Lambda sensor [Lambda] 3"}));
    EXPECT_EQ(rows[1][0], "0.000");
    EXPECT_EQ(rows[1][1], "0.000");
    for (std::size_t r = 2; r < rows.size(); ++r) {
        const double step = std::stod(rows[r][0]) - std::stod(rows[r - 1][0]);
        ASSERT_TRUE(step > 0.0 && step <= 1.0) << r;
    }
    EXPECT_NEAR(std::stod(rows.back()[0]), 3480.0, 1.0);
    EXPECT_EQ(rows.back()[1], "3.450");  // 81.93 against 78.48
    EXPECT_EQ(rows.back()[2], "2.590");
    const LogAperto log(file);
    const double start = log.Allineati().Allinea(log.CercaNumero(2)).value().Inizio;
    constexpr int kThrottle = 7;
    EXPECT_NEAR(std::stod(rows[1][4]), log.Valore(kThrottle, start), 0.001) << "lap 2's own";
    EXPECT_NE(rows[1][4], rows[1][3]);
}

TEST_F(Laptool, WhatCantBeDoneIsSaid) {
    EXPECT_EQ(Why([&] { Compare({file, 99, {2}, {}, Form::Csv}); }), "the log has no lap 99");
    EXPECT_NE(Why([&] {
                  Compare({file, 12, {2}, {"foo"}, Form::Csv});
              }).find("Engine, Speed"),
              std::string::npos);
    EXPECT_THROW(Laps({file + "x", Form::Csv, 0}), ErroreRuntime);
    fs::remove(machine.Cartella / "sample" / "Esempio.tim");
    EXPECT_NE(Why([&] { Laps({file, Form::Csv, 0}); }).find(".tim"), std::string::npos);
    prova::Scrivi(machine.Cartella / "sample" / "Esempio.tim", "1.4\r\n01:40.00, 1\r\n\r\n");
    const auto rows = Table(Laps({file, Form::Csv, 0}));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1][1], "100.00");
    EXPECT_EQ(rows[1][3], "") << "the log's rows tell of another lap";
    EXPECT_EQ(Why([&] {
                  Compare({file, 2, {2}, {}, Form::Csv});
              }),
              "lap 2 can't be compared: rows are missing");
    fs::remove(machine.Cartella / "sample" / "Esempio.txt");
    EXPECT_NE(Why([&] { Laps({file, Form::Csv, 0}); }).find(".txt"), std::string::npos);
}

TEST_F(Laptool, ADownloadBecomesTheFilesThatTheProgramMakes) {
    ScaricoSuDisco download;
    download.Titoli = {1, "mph", "F"};
    download.Byte = 512;
    download.Giri = 1;
    const std::string raw = (machine.Cartella / "a.download").string();
    const std::string csv = (machine.Cartella / "a.csv").string();
    prova::Scrivi(raw, TestaScarico(download) + RecordGiri(0, std::string(128, '\1')) +
                           RecordPagina(0, std::string(128, '\0'), std::string(128, '\0')));
    EXPECT_NE(Convert({raw, csv, false}).find("256 of 512 bytes"), std::string::npos);
    EXPECT_NE(Why([&] { Convert({raw, csv, false}); }).find("already"), std::string::npos);
    EXPECT_EQ(prova::Leggi(machine.Cartella / "a.tim"), "1.4\r\n2807:10.09, 0\r\n\r\n");
    EXPECT_TRUE(prova::Leggi(csv).starts_with(TitoliCsv(1, "mph", "F") + "\r\n"));
    EXPECT_NE(Why([&] { Convert({csv, csv, true}); }), "");
}

TEST(LogAperto, TimesOfEveryForm) {
    for (const auto& [text, hundredths] :
         std::vector<std::pair<const char*, std::int32_t>>{{"01:20.34", 8034},
                                                           {"00:00.05", 5},
                                                           {"100:00.00", 600000},
                                                           {"01:00:00.5", 360050},
                                                           {"1:2", 6200},
                                                           {"", 0},
                                                           {"x", 0},
                                                           {"01:20.345", 0},
                                                           {"-1:20.00", 0}}) {
        EXPECT_EQ(CentesimiDi(text), hundredths) << text;
    }
}

}  // namespace
}  // namespace lapvane::laptool
