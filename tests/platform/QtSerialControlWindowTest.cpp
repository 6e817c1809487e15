// The serial control on a real pseudo-terminal.
#include "platform/qt/QtSerialControl.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTest>
#include <filesystem>

#include "platform/ErroreRuntime.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

constexpr int kMassimo = 60000;  // ms, for what comes at once on an idle machine

class Seriale : public ::testing::Test {
 protected:
    Seriale() {
        maestro = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_EQ(::grantpt(maestro), 0);
        EXPECT_EQ(::unlockpt(maestro), 0);
        std::filesystem::create_directory(macchina.Cartella / "ports");
        std::filesystem::create_symlink(::ptsname(maestro), macchina.Cartella / "ports" / "COM1");
        porta.Settings("19200,N,8,1");
        porta.CommPort(1);
    }
    ~Seriale() override { Stacca(); }
    void Stacca() {
        if (maestro >= 0) ::close(maestro);
        maestro = -1;
    }
    std::string DalProgramma(std::size_t quanti) {
        std::string letto;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                char byte[512];
                const ssize_t n = ::read(maestro, byte, sizeof byte);
                if (n > 0) letto.append(byte, static_cast<std::size_t>(n));
                return letto.size() >= quanti;
            },
            kMassimo));
        return letto;
    }
    void AlProgramma(const std::string& byte, std::size_t arrivano) {
        EXPECT_EQ(::write(maestro, byte.data(), byte.size()), static_cast<ssize_t>(byte.size()));
        EXPECT_TRUE(QTest::qWaitFor([&] { return porta.InBufferCount() == arrivano; }, kMassimo));
    }

    prova::WindowPlatform macchina;
    int maestro = -1;
    QtSerialControl porta;
};

TEST_F(Seriale, EveryByteGoesBothWaysThoughThePortRefusesItsLines) {
    porta.PortOpen(true);
    ASSERT_TRUE(porta.PortOpen());
    termios modo{};
    ASSERT_EQ(::tcgetattr(maestro, &modo), 0);
    EXPECT_EQ(::cfgetospeed(&modo), speed_t{B19200});
    std::string tutti;
    for (int c = 0; c < 256; ++c) tutti += static_cast<char>(c);
    porta.Output("H");
    char primo = 0;
    EXPECT_EQ(::read(maestro, &primo, 1), 1) << "it has left before any event runs";
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
    EXPECT_EQ(::write(maestro, "R", 1), 1);
    porta.WaitForInput(kMassimo);
    EXPECT_EQ(porta.InBufferCount(), 1u);
    QElapsedTimer orologio;
    orologio.start();
    porta.WaitForInput(30);
    EXPECT_GE(orologio.elapsed(), 25);
}

TEST_F(Seriale, PortThatVanishesClosesItselfAndCanBeOpenedAgain) {
    porta.PortOpen(true);
    Stacca();
    EXPECT_NO_THROW({
        porta.ClearOutBuffer();
        porta.ClearInBuffer();
        porta.Output("H");
    });
    EXPECT_FALSE(porta.PortOpen()) << "it counts as closed at once";
    EXPECT_EQ(porta.InBufferCount() + porta.OutBufferCount(), 0u);
    EXPECT_EQ(porta.Input(), "");
    maestro = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    ::grantpt(maestro);
    ::unlockpt(maestro);
    const auto legame = macchina.Cartella / "ports" / "COM1";
    std::filesystem::remove(legame);
    std::filesystem::create_symlink(::ptsname(maestro), legame);
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
