// The serial control on a real pseudo-terminal.
#include "platform/qt/QtSerialControl.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>

#include "instrument/PseudoTerminal.h"
#include "platform/qt/ConversioniQt.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

constexpr int kMassimo = 60000;  // ms, for what comes at once on an idle machine

class Seriale : public ::testing::Test {
 protected:
    Seriale() {
        Attacca();
        porta.Settings("38400,N,8,1");
        porta.CommPort(1);
    }
    void Attacca() {
        terminale = std::make_unique<strumento::PseudoTerminal>();
        terminale->MakeLink(macchina.Cartella / "ports" / "COM1");
    }
    std::string DalProgramma(std::size_t quanti) {
        std::string letto;
        const auto tutti = [&] { return (letto += terminale->Read()).size() >= quanti; };
        EXPECT_TRUE(QTest::qWaitFor(tutti, kMassimo));
        return letto;
    }
    void AlProgramma(const std::string& byte, std::size_t arrivano) {
        terminale->Write(byte);
        EXPECT_TRUE(QTest::qWaitFor([&] { return porta.InBufferCount() == arrivano; }, kMassimo));
    }

    prova::WindowPlatform macchina;
    std::unique_ptr<strumento::PseudoTerminal> terminale;
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

TEST_F(Seriale, EveryByteGoesBothWaysThoughThePortRefusesItsLines) {
    porta.PortOpen(true);
    termios modo{};
    const int altra = ::open(terminale->Name().c_str(), O_RDWR | O_NOCTTY);
    ::tcgetattr(altra, &modo);
    ::close(altra);
    EXPECT_EQ(::cfgetospeed(&modo), speed_t{B38400});
    std::string tutti;
    for (int c = 0; c < 256; ++c) tutti += static_cast<char>(c);
    porta.Output("H");
    EXPECT_EQ(terminale->Read(), "H") << "it has left before any event runs";
    porta.Output(tutti);
    EXPECT_EQ(DalProgramma(256), tutti);
    EXPECT_EQ(porta.OutBufferCount(), 0u);
    AlProgramma(tutti, 256);
    porta.InputLen(100);
    EXPECT_EQ(porta.Input(), tutti.substr(0, 100));
    porta.InputLen(0);
    EXPECT_EQ(porta.Input(), tutti.substr(100));
    AlProgramma("rest", 4);
    porta.ClearInBuffer();
    EXPECT_EQ(porta.InBufferCount(), 0u);
    // Who talks without end does not fill the memory.
    AlProgramma(std::string(1000, 'x'), 300);
    EXPECT_THROW(porta.PortOpen(true), ErroreControllo);
    porta.PortOpen(false);
    EXPECT_THROW(porta.Output("x"), ErroreControllo);
    EXPECT_EQ(porta.Input(), "");
}

TEST_F(Seriale, WaitWithoutEventsEndsWhenSomethingArrives) {
    porta.PortOpen(true);
    terminale->Write("R");
    porta.WaitForInput(kMassimo);
    EXPECT_EQ(porta.InBufferCount(), 1u);
    QElapsedTimer orologio;
    orologio.start();
    porta.WaitForInput(30);
    EXPECT_GE(orologio.elapsed(), 25);
}

TEST_F(Seriale, PortThatVanishesClosesItselfAndCanBeOpenedAgain) {
    porta.PortOpen(true);
    terminale.reset();
    EXPECT_NO_THROW({
        porta.ClearOutBuffer();
        porta.ClearInBuffer();
        porta.Output("H");
    });
    EXPECT_FALSE(porta.PortOpen()) << "it counts as closed at once";
    EXPECT_EQ(porta.InBufferCount() + porta.OutBufferCount(), 0u);
    EXPECT_EQ(porta.Input(), "");
    Attacca();
    porta.PortOpen(true);
    QCoreApplication::processEvents();
    EXPECT_TRUE(porta.PortOpen());
}

TEST_F(Seriale, WhatIsNotThereOrNotKnownIsRefused) {
    for (const char* altro : {"9600,E,8,1", "9600,N,7,1", "9600,N,8,2", "fast,N,8,1", ""}) {
        EXPECT_THROW(porta.Settings(altro), ErroreControllo) << altro;
    }
    EXPECT_THROW(porta.Handshaking(2), ErroreControllo);
    porta.CommPort(200);
    try {
        porta.PortOpen(true);
        ADD_FAILURE();
    } catch (const ErroreControllo& errore) {
        EXPECT_STREQ(errore.what(), "no such port");
    }
}

}  // namespace
}  // namespace lapvane
