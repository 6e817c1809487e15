// The serial control of Windows at a port whose far end obeys: LAPVANE_FAR_END holds its number.
// Under wine a port that is open opens once more, so that one that is taken has no test here.
#include "platform/SerialControlWindows.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <cstdlib>

#include "platform/ErroreRuntime.h"
#include "support/SerialCases.h"

namespace lapvane {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using prova::Arrives;
using prova::Order;

class WindowsPort : public ::testing::Test {
 protected:
    void SetUp() override {
        const char* number = std::getenv("LAPVANE_FAR_END");
        if (number == nullptr) GTEST_SKIP() << "no port to test at";
        port.CommPort(std::atoi(number));
        port.Settings("38400,N,8,1");
    }

    WindowsSerialControl port;
};

TEST_F(WindowsPort, DoesWhatEverySerialControlDoes) {
    prova::SerialBytesGoBothWays(port);
    prova::SerialWaitsAreExact(port);
    prova::SerialPortThatVanishesCloses(port);
    prova::SerialRefusals(port);
}

TEST_F(WindowsPort, WhatArrivesWakesTheWaitForMessages) {
    port.PortOpen(true);
    for (int i = 0; i < 2; ++i) {
        port.Input();
        for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
        }
        Order(port, "\nafter 50");
        EXPECT_EQ(
            ::MsgWaitForMultipleObjectsEx(0, nullptr, 20000, QS_ALLINPUT, MWMO_INPUTAVAILABLE),
            WAIT_OBJECT_0);
        EXPECT_EQ(port.InBufferCount(), 1u);
    }
}

TEST_F(WindowsPort, AWriteThatDoesNotEndIsGivenUpAndThePortCloses) {
    port.Settings("921600,N,8,1");
    port.PortOpen(true);
    Order(port, "\ndeaf 5000");
    const auto start = Clock::now();
    port.Output(std::string(200000, 'x'));
    EXPECT_LT(Clock::now() - start, 1s) << "who writes does not wait";
    EXPECT_THROW(
        while (Clock::now() - start < 20s && port.OutBufferCount() > 0) port.WaitForInput(20),
        ErroreControllo);
    EXPECT_EQ(port.OutBufferCount(), 0u) << "it is told once";
    port.Output(std::string(200000, 'x'));
    const auto closing = Clock::now();
    port.PortOpen(false);
    EXPECT_LT(Clock::now() - closing, 1s);
}

TEST_F(WindowsPort, ClosesUnderAReadAndOpensAgainAtOnce) {
    for (int i = 0; i < 20; ++i) {
        const auto start = Clock::now();
        port.PortOpen(true);
        port.WaitForInput(1);
        port.PortOpen(false);
        EXPECT_LT(Clock::now() - start, 1s);
    }
}

}  // namespace
}  // namespace lapvane
