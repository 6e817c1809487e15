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

class Seriale : public ::testing::Test {
 protected:
    Seriale() {
        maestro = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_EQ(::grantpt(maestro), 0);
        EXPECT_EQ(::unlockpt(maestro), 0);
        termios crudo{};
        ::tcgetattr(maestro, &crudo);
        ::cfmakeraw(&crudo);
        ::tcsetattr(maestro, TCSANOW, &crudo);
        std::filesystem::create_directory(macchina.Cartella / "ports");
        std::filesystem::create_symlink(::ptsname(maestro), macchina.Cartella / "ports" / "COM1");
        porta.Settings("19200,N,8,1");
        porta.DTREnable(false);
        porta.RTSEnable(true);
        porta.CommPort(1);
    }
    ~Seriale() override { Stacca(); }
    void Stacca() {
        if (maestro >= 0) ::close(maestro);
        maestro = -1;
    }
    std::string DalProgramma() {
        std::string letto(256, '\0');
        const ssize_t n = ::read(maestro, letto.data(), letto.size());
        letto.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
        return letto;
    }
    void AlProgramma(const std::string& byte) {
        ASSERT_EQ(::write(maestro, byte.data(), byte.size()), static_cast<ssize_t>(byte.size()));
    }

    prova::WindowPlatform macchina;
    int maestro = -1;
    QtSerialControl porta;
};

TEST_F(Seriale, EveryByteGoesBothWaysThoughThePortRefusesItsLines) {
    porta.PortOpen(true);
    ASSERT_TRUE(porta.PortOpen());
    std::string tutti;
    for (int c = 0; c < 256; ++c) tutti += static_cast<char>(c);
    porta.Output(tutti);
    EXPECT_TRUE(QTest::qWaitFor([this] { return porta.OutBufferCount() == 0; }, 1000));
    EXPECT_EQ(DalProgramma(), tutti);
    AlProgramma(tutti);
    EXPECT_TRUE(QTest::qWaitFor([this] { return porta.InBufferCount() == 256; }, 1000));
    porta.InputLen(100);
    EXPECT_EQ(porta.Input(), tutti.substr(0, 100));
    porta.InputLen(0);
    EXPECT_EQ(porta.Input(), tutti.substr(100));
    AlProgramma("rest");
    EXPECT_TRUE(QTest::qWaitFor([this] { return porta.InBufferCount() == 4; }, 1000));
    porta.ClearInBuffer();
    EXPECT_EQ(porta.InBufferCount(), 0u);
    EXPECT_THROW(porta.PortOpen(true), ErroreControllo);
    porta.PortOpen(false);
    EXPECT_THROW(porta.Output("x"), ErroreControllo);
    EXPECT_EQ(porta.Input(), "");
}

TEST_F(Seriale, WaitWithoutEventsEndsWhenSomethingArrives) {
    porta.PortOpen(true);
    AlProgramma("R");
    QElapsedTimer orologio;
    orologio.start();
    porta.WaitForInput(3000);
    EXPECT_LT(orologio.elapsed(), 1000);
    EXPECT_EQ(porta.InBufferCount(), 1u);
    porta.Input();
    orologio.restart();
    porta.WaitForInput(30);
    EXPECT_GE(orologio.elapsed(), 25);
}

TEST_F(Seriale, PortThatVanishesClosesItself) {
    porta.PortOpen(true);
    Stacca();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !porta.PortOpen(); }, 2000));
    EXPECT_EQ(porta.InBufferCount(), 0u);
    EXPECT_EQ(porta.OutBufferCount(), 0u);
    EXPECT_EQ(porta.Input(), "");
}

TEST_F(Seriale, WritingToAPortThatVanishedIsNoErrorOfItsOwn) {
    porta.PortOpen(true);
    Stacca();
    EXPECT_NO_THROW({
        porta.ClearOutBuffer();
        porta.ClearInBuffer();
        porta.Output("H");
    });
    EXPECT_TRUE(QTest::qWaitFor([this] { return !porta.PortOpen(); }, 2000));
}

TEST_F(Seriale, OtherSettingsAreRefused) {
    EXPECT_THROW(porta.Settings("9600,E,7,1"), ErroreControllo);
    EXPECT_THROW(porta.Settings(""), ErroreControllo);
    EXPECT_THROW(porta.Handshaking(2), ErroreControllo);
}

}  // namespace
}  // namespace lapvane
