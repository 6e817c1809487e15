#include "reports/FileSessione.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace lapvane;

namespace {

RecordSessione Prova() {
    RecordSessione s;
    s.Sessione = "Prove libere";
    s.OraSessione = "10=30";
    s.Circuito = "Citt\xE0 di Bra";
    s.LunghTracciato = "3480";
    s.Piloti = "Rossi\r\nBianchi\nVerdi";
    s.NoteSessione = " ";
    return s;
}

std::vector<double> Campi(const CanaleSessione& c) {
    return {1.0 * c.Filtro, 1.0 * c.Tinta, 1.0 * c.Spessore, c.Minimo, c.Massimo};
}

std::string RigheVuote(int da) {
    std::string testo;
    for (int c = da; c <= 20; ++c) testo += ";1;0;1;0;0\r\n";
    return testo;
}

}  // namespace

TEST(FileSessione, IsWrittenByteForByte) {
    CanaliSessione canali;
    canali[0] = {"Giri\r\nmotore", 2, 16711680, 4, -1.5, 12000};
    canali[1] = {"a;b", 1, 255, 6, 0.0000123456789012345678, 1e20};
    canali[2] = {"",
                 32767,
                 0xFFFFFF,
                 1,
                 std::numeric_limits<double>::quiet_NaN(),
                 std::numeric_limits<double>::infinity()};
    EXPECT_EQ(ScriviSessione(Prova(), canali),
              "Sessione=Prove libere\r\nDataSessione= \r\nOraSessione=10=30\r\n"
              "Circuito=Citt\xE0 di Bra\r\nLunghTracciato=3480\r\nVeicoloSessione= \r\n"
              "Piloti=Rossi Bianchi Verdi\r\nNoteSessione= \r\n"
              "Giri motore;2;16711680;4;-1.5;12000\r\n"
              "a;b;1;255;6;0.0000123456789012346;100000000000000000000\r\n"
              ";32767;16777215;1;0;0\r\n" +
                  RigheVuote(6));
}

TEST(FileSessione, LosesTheVehicleAndGivesTheProjectsBack) {
    RecordSessione letta;
    letta.VeicoloSessione = "prima";
    std::string veicolo = "Alfa";
    CanaliSessione canali;
    LeggiSessione(ScriviSessione(Prova(), {}), letta, veicolo, canali);
    EXPECT_EQ(veicolo, "");
    EXPECT_EQ(letta.VeicoloSessione, "");
    EXPECT_EQ(letta.Piloti, "Rossi Bianchi Verdi");
    EXPECT_EQ(letta.OraSessione, "10=30");
    canali[0].Filtro = 7;
    LeggiSessione("a\r\nb\r\nc\r\nd\r\ne\r\nx= Alfa 8 \r\n", letta, veicolo, canali);
    EXPECT_EQ(veicolo, "Alfa 8");
    EXPECT_EQ(letta.Sessione, "a") << "a line without an equals sign is all value";
    EXPECT_EQ(letta.Piloti, "");
    EXPECT_EQ(canali[0].Filtro, 7) << "the text ends before it";
}

TEST(FileSessione, WhatIsNoNumberOrCannotBeDrawnLeavesTheChannelAsItWas) {
    struct Caso {
        const char* Riga;
        CanaleSessione Atteso;
    };
    const CanaleSessione prima{"", 7, 99, 5, -3, 8};
    const Caso casi[] = {
        {"x; 2 ; 255 ; 6 ;-1,5; 12.5", {"", 2, 255, 6, -1.5, 12.5}},
        {"x;0;255;0;1;2", {"", 7, 255, 5, 1, 2}},
        {"x;-4;255;7;1;2", {"", 7, 255, 5, 1, 2}},
        {"x;40000;-1;70000;1e999;nan", {"", 7, 0xFFFFFF, 5, -3, 8}},
        {"x;boh;;1a;;", {"", 7, 99, 5, -3, 8}},
        {"x;3", {"", 3, 99, 5, -3, 8}},
        {"a;b;1;255;6;0;1", {"", 7, 1, 5, 6, 8}},  // the caption's ";" shifts the fields
        {"", prima},
    };
    for (const Caso& caso : casi) {
        CanaliSessione canali;
        canali[0] = prima;
        RecordSessione sessione;
        std::string veicolo;
        LeggiSessione("\n\n\n\n\n\n\n\n" + std::string(caso.Riga), sessione, veicolo, canali);
        EXPECT_EQ(Campi(canali[0]), Campi(caso.Atteso)) << caso.Riga;
    }
}
