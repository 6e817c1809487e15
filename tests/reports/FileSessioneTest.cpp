#include "reports/FileSessione.h"

#include <gtest/gtest.h>

#include <limits>

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
    const std::string testo = ScriviSessione(Prova(), {});
    RecordSessione letta;
    letta.VeicoloSessione = "prima";
    std::string veicolo = "Alfa";
    CanaliSessione canali;
    LeggiSessione(testo, letta, veicolo, canali);
    EXPECT_EQ(veicolo, "");
    EXPECT_EQ(letta.VeicoloSessione, "");
    EXPECT_EQ(letta.Piloti, "Rossi Bianchi Verdi");
    EXPECT_EQ(letta.OraSessione, "10=30");
    LeggiSessione("a\r\nb\r\nc\r\nd\r\ne\r\nx= Alfa 8 \r\n", letta, veicolo, canali);
    EXPECT_EQ(veicolo, "Alfa 8");
    EXPECT_EQ(letta.Sessione, "a") << "a line without an equals sign is all value";
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
        SCOPED_TRACE(caso.Riga);
        CanaliSessione canali;
        canali[0] = prima;
        RecordSessione sessione;
        std::string veicolo;
        LeggiSessione("\n\n\n\n\n\n\n\n" + std::string(caso.Riga), sessione, veicolo, canali);
        EXPECT_EQ(canali[0].Filtro, caso.Atteso.Filtro);
        EXPECT_EQ(canali[0].Tinta, caso.Atteso.Tinta);
        EXPECT_EQ(canali[0].Spessore, caso.Atteso.Spessore);
        EXPECT_EQ(canali[0].Minimo, caso.Atteso.Minimo);
        EXPECT_EQ(canali[0].Massimo, caso.Atteso.Massimo);
    }
}

TEST(FileSessione, EveryCutAndEveryHalfWrittenFileStillOpens) {
    CanaliSessione canali;
    for (CanaleSessione& canale : canali) canale = {"Canale", 3, 255, 2, -10.5, 250};
    const std::string nuovo = ScriviSessione(Prova(), canali);
    RecordSessione altra;
    altra.NoteSessione = std::string(200, 'n');
    const std::string vecchio = ScriviSessione(altra, CanaliSessione{});
    for (std::size_t n = 0; n <= nuovo.size(); ++n) {
        for (const std::string& resto :
             {std::string(), vecchio.substr(std::min(n, vecchio.size()))}) {
            RecordSessione letta;
            std::string veicolo;
            CanaliSessione letti;
            LeggiSessione(nuovo.substr(0, n) + resto, letta, veicolo, letti);
            // What was written before the break stands.
            if (n > 24) {
                ASSERT_EQ(letta.Sessione, "Prove libere") << n;
            }
            for (const CanaleSessione& canale : letti) {
                ASSERT_GE(canale.Filtro, 1);
                ASSERT_TRUE(canale.Spessore >= 1 && canale.Spessore <= 6);
            }
        }
    }
}
