#include "sensors/FileSensore.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/ErroreRuntime.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;
using Righe = std::vector<std::string>;

std::string Righe20(const std::string& prime, const std::string& ultima, int volte) {
    std::string testo = prime;
    for (int i = 0; i < volte; ++i) testo += ultima + "\r\n";
    return testo;
}

TEST(FileSensore, WritesTheUsersTextsAndPadsWithTheLast) {
    const std::string testa = "ZEVSensor\r\nPressione\r\nOlio \xE0 10\r\n20\r\n";
    EXPECT_EQ(
        TestoSensore("Pressione", "Olio \xE0 10", Righe{"0", "512", "1023"},
                     Righe{"0.000", "5.25", "10.000"}),
        testa + Righe20("0\r\n512\r\n", "1023", 18) + Righe20("0.000\r\n5.25\r\n", "10.000", 18));
    Righe x, y;
    std::string attesoX, attesoY;
    for (int i = 0; i < 20; ++i) {
        x.push_back(std::to_string(50 * i));
        y.push_back(std::to_string(i) + ".5");
        attesoX += x.back() + "\r\n";
        attesoY += y.back() + "\r\n";
    }
    const std::string venti = TestoSensore("Pressione", "Olio \xE0 10", x, y);
    EXPECT_EQ(venti, testa + attesoX + attesoY);
    // One row more than the table has does not reach the file.
    x.push_back("9999");
    y.push_back("9");
    EXPECT_EQ(TestoSensore("Pressione", "Olio \xE0 10", x, y), venti);
}

TEST(FileSensore, WhatIsWrittenComesBackAndAFailureLeavesTheOldFile) {
    PlatformProva macchina;
    const fs::path percorso = macchina.Cartella / "sensors" / "Prova.sns";
    EXPECT_THROW(ScriviSensore(percorso, "Altro", "Prova", Righe{"1"}, Righe{"2"}), ErroreRuntime);
    fs::create_directory(percorso.parent_path());
    ScriviSensore(percorso, "Altro", "Prova", Righe{"10", "20,7"}, Righe{"-1.5", ""});
    CaricaLibreriaSensori();
    ASSERT_EQ(LibreriaSensori.size(), 1u);
    const CSensore& s = LibreriaSensori[0];
    EXPECT_EQ(s.NumPunti(), 20);
    EXPECT_EQ(s.X(0), 10.0);
    EXPECT_EQ(s.X(1), 20.0);  // a comma ends the number
    EXPECT_EQ(s.X(19), 20.0);
    EXPECT_EQ(s.Y(0), -1.5);
    EXPECT_EQ(s.Y(19), 0.0);
    // A name that leads into a folder that is not there.
    const std::string prima = prova::Leggi(percorso);
    EXPECT_THROW(ScriviSensore(percorso / "x" / "y.sns", "Altro", "Prova", Righe{"1"}, Righe{"2"}),
                 ErroreRuntime);
    EXPECT_EQ(prova::Leggi(percorso), prima);
}

TEST(FileSensore, AFileCutAtAnyLineIsRejected) {
    const std::string intero =
        TestoSensore("LivelloBenzina", "Serbatoio", Righe{"1", "2"}, Righe{"3", "4"});
    ASSERT_TRUE(LeggiSensore(intero));
    EXPECT_TRUE(LeggiSensore(intero + "more behind it\r\n"));
    EXPECT_TRUE(LeggiSensore(intero.substr(0, intero.size() - 2)));  // last line not ended
    int tagli = 0;
    for (std::size_t fine = intero.size() - 2; fine > 0; fine = intero.rfind("\r\n", fine - 1)) {
        if (fine == std::string::npos) break;
        const std::size_t inizioUltima = intero.rfind("\r\n", fine - 1);
        if (inizioUltima == std::string::npos) break;
        EXPECT_FALSE(LeggiSensore(intero.substr(0, inizioUltima + 2))) << tagli;
        ++tagli;
    }
    EXPECT_EQ(tagli, 43);
    EXPECT_FALSE(LeggiSensore(""));
}

TEST(FileSensore, NumberOfPointsIsTakenFrom0To21) {
    const auto file = [](const std::string& tipo, const std::string& n, int righe) {
        std::string testo = "ZEVSensor\r\n" + tipo + "\r\nx\r\n" + n + "\r\n";
        for (int i = 1; i <= righe; ++i) testo += std::to_string(i) + "\r\n";
        return testo;
    };
    const auto zero = LeggiSensore(file("Pressione", "0", 0));
    ASSERT_TRUE(zero);
    EXPECT_EQ(zero->NumPunti(), 0);
    const auto ventuno = LeggiSensore(file("Pressione", "21", 42));
    ASSERT_TRUE(ventuno);
    EXPECT_EQ(ventuno->X(20), 21.0);
    EXPECT_EQ(ventuno->Y(20), 42.0);
    for (const char* tipo : {"Pressione", "LivelloBenzina"}) {
        for (const char* n : {"22", "-1", "molti", "", "40000", "1E9"}) {
            EXPECT_FALSE(LeggiSensore(file(tipo, n, 60))) << tipo << " " << n;
        }
    }
    // As text becomes a 16-bit integer elsewhere: a fraction is rounded half to even.
    EXPECT_EQ(LeggiSensore(file("Altro", " 2.5 ", 4))->NumPunti(), 2);
    EXPECT_EQ(LeggiSensore("zevsensor\r\nAltro\r\nx\r\n0\r\n"), std::nullopt);
}

}  // namespace
}  // namespace lapvane
