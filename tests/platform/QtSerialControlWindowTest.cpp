// The serial control on a real pseudo-terminal.
#include "platform/qt/QtSerialControl.h"

#include <thread>

#include "platform/qt/ConversioniQt.h"
#include "support/FarEnd.h"
#include "support/SerialCases.h"
#include "support/SpazioFinito.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

constexpr int kMassimo = 60000;  // ms, for what comes at once on an idle machine

class Seriale : public ::testing::Test {
 protected:
    Seriale() {
        porta.Settings("38400,N,8,1");
        porta.CommPort(1);
    }

    prova::WindowPlatform macchina;
    std::filesystem::path legame = macchina.Cartella / "ports" / "COM1";
    QtSerialControl porta;
};

TEST_F(Seriale, TheMachineIsAskedForItsPortsWhenADeviceComesOrGoes) {
    int domande = 0;
    MachinePorts porte(PercorsoInQt(macchina.Cartella), [&] {
        ++domande;
        return QStringList{QStringLiteral("b"), QStringLiteral("a")};
    });
    for (int n = 0; n < 3; ++n) EXPECT_EQ(porte.List().front(), QStringLiteral("a"));
    QTest::qWait(1100);
    porte.List();
    EXPECT_EQ(domande, 1);
    std::filesystem::create_directory(macchina.Cartella / "ttyUSB0");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return porte.List().size() == 2 && domande == 2; }, kMassimo));
    // Its name may come before its rights.
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return porte.List().size() == 2 && domande == 3; }, kMassimo));
}

TEST_F(Seriale, DoesWhatEverySerialControlDoes) {
    prova::FarEnd capo(legame);
    std::atomic<bool> fine{false};
    std::thread filo([&] { capo.Serve(fine); });
    prova::SerialBytesGoBothWays(porta);
    prova::SerialWaitsAreExact(porta);
    prova::SerialPortThatVanishesCloses(porta);
    fine = true;
    filo.join();
    prova::SerialRefusals(porta);
}

TEST_F(Seriale, WhatTheSystemDoesNotTakeAtOnceFollowsInItsOrder) {
    prova::FarEnd capo(legame);
    std::atomic<bool> fine{false};
    std::thread filo([&] { capo.Serve(fine); });
    porta.PortOpen(true);
    // Here and there a line that is answered.
    std::string testi[2], atteso;
    for (int i = 1000; i < 1200; ++i) {
        atteso += std::to_string(i);
        testi[i / 1100] += std::string(190, 'z') + "\necho 4\n" + std::to_string(i);
    }
    prova::Order(porta, "deaf 200");
    for (const std::string& testo : testi) porta.Output(testo);
    std::string tornato;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            tornato += porta.Input();
            return tornato.size() >= atteso.size();
        },
        kMassimo));
    EXPECT_EQ(tornato, atteso);
    fine = true;
    filo.join();
    EXPECT_THROW(porta.Output(std::string(200000, 'z')), ErroreControllo) << "nobody reads";
}

TEST_F(Seriale, PortThatVanishesCountsAsClosedAtOnceAndIsNotClosedTwice) {
    auto capo = std::make_unique<prova::FarEnd>(legame);
    porta.PortOpen(true);
    QtSerialControl altra;
    EXPECT_THROW(altra.PortOpen(true), ErroreControllo) << "it is taken";
    capo.reset();
    porta.Output("H");
    EXPECT_FALSE(porta.PortOpen());
    capo = std::make_unique<prova::FarEnd>(legame);
    porta.PortOpen(true);
    QCoreApplication::processEvents();
    EXPECT_TRUE(porta.PortOpen());
}

TEST_F(Seriale, TheLockOfAProgramThatIsGoneKeepsNobodyOut) {
    prova::FarEnd capo(legame);
    const std::filesystem::path terminale = std::filesystem::canonical(legame);
    const std::filesystem::path lucchetto = "/var/lock/LCK..pts_" + terminale.filename().string();
    std::filesystem::permissions(macchina.Cartella, std::filesystem::perms{0777});
    std::filesystem::permissions(terminale, std::filesystem::perms{0666});
    // No process has the first number; the second is that of the first one of all.
    for (const char* processo : {"4194305", "1"}) {
        prova::Scrivi(lucchetto, std::string(processo) + "\nlapvane\nbox\n");
        const prova::SenzaPrivilegi nessuno;
        try {
            porta.PortOpen(true);
        } catch (const ErroreControllo&) {
        }
        EXPECT_EQ(porta.PortOpen(), processo[0] == '4');
        porta.PortOpen(false);
    }
    std::filesystem::remove(lucchetto);
}

}  // namespace
}  // namespace lapvane
