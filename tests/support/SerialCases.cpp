#include "support/SerialCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/ErroreRuntime.h"

namespace lapvane::prova {

namespace {

using Clock = std::chrono::steady_clock;

std::int64_t Since(Clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

constexpr int kLongest = 60000;  // ms, for what comes at once on an idle machine

/// Whether something comes true while the control waits.
template <class F>
bool Becomes(SerialControl& port, F what) {
    for (const auto start = Clock::now(); Since(start) < kLongest;) {
        if (what()) return true;
        port.WaitForInput(20);
        if (!port.PortOpen()) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
}

/// Opens the port as soon as the far end answers there: without it COM1 may be another port.
void Opens(SerialControl& port) {
    EXPECT_TRUE(Becomes(port, [&] {
        try {
            port.PortOpen(true);
            // Whatever an earlier test has left there ends with the first line.
            port.Output("\nsay 1\n");
        } catch (const ErroreControllo&) {
        }
        port.WaitForInput(1000);
        if (port.InBufferCount() == 0) port.PortOpen(false);
        return port.Input() == "x";
    }));
}

}  // namespace

void Order(SerialControl& port, const std::string& line) {
    port.Output(line + "\n");
}

bool Arrives(SerialControl& port, std::size_t bytes) {
    return Becomes(port, [&] { return port.InBufferCount() >= bytes; });
}

void SerialBytesGoBothWays(SerialControl& port) {
    Opens(port);
    EXPECT_THROW(port.PortOpen(true), ErroreControllo);
    Order(port, "speed");
    EXPECT_TRUE(Arrives(port, 6));
    EXPECT_EQ(port.Input(), "38400\n");
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    Order(port, "echo 256");
    port.Output(all);
    EXPECT_TRUE(Arrives(port, 256));
    EXPECT_EQ(port.OutBufferCount(), 0u);
    port.InputLen(100);
    EXPECT_EQ(port.Input(), all.substr(0, 100));
    port.InputLen(0);
    EXPECT_EQ(port.Input(), all.substr(100));
    Order(port, "say 4");
    EXPECT_TRUE(Arrives(port, 4));
    port.ClearOutBuffer();
    port.ClearInBuffer();
    EXPECT_EQ(port.InBufferCount(), 0u);
    // Who talks without end does not fill the memory, and loses nothing.
    Order(port, "say 1000");
    EXPECT_TRUE(Arrives(port, 300));
    port.WaitForInput(50);
    EXPECT_EQ(port.InBufferCount(), 300u);
    std::string taken;
    EXPECT_TRUE(Becomes(port, [&] { return (taken += port.Input()).size() == 1000; }));
    port.PortOpen(false);
    EXPECT_THROW(port.Output("x"), ErroreControllo);
    EXPECT_EQ(port.Input(), "");
}

void SerialWaitsAreExact(SerialControl& port) {
    Opens(port);
    Order(port, "after 100");
    const auto start = Clock::now();
    port.WaitForInput(kLongest);
    EXPECT_LT(Since(start), kLongest / 2);
    EXPECT_EQ(port.InBufferCount(), 1u);
    // What has been looked at ends no wait. The machine may be busy: the shortest counts.
    std::int64_t shortest = kLongest;
    for (int i = 0; i < 10; ++i) {
        const auto again = Clock::now();
        port.WaitForInput(7);
        shortest = std::min(shortest, Since(again));
    }
    EXPECT_GE(shortest, 6);
    EXPECT_LE(shortest, 11);
    port.PortOpen(false);
}

void SerialPortThatVanishesCloses(SerialControl& port) {
    Opens(port);
    Order(port, "gone 300");
    EXPECT_TRUE(Becomes(port, [&] { return !port.PortOpen(); }));
    EXPECT_NO_THROW({
        port.ClearOutBuffer();
        port.ClearInBuffer();
        port.Output("H");
    });
    EXPECT_EQ(port.InBufferCount() + port.OutBufferCount(), 0u);
    EXPECT_EQ(port.Input(), "");
    Opens(port);
    Order(port, "say 3");
    EXPECT_TRUE(Arrives(port, 3));
    port.PortOpen(false);
}

void SerialRefusals(SerialControl& port) {
    for (const char* wrong :
         {"9600,E,8,1", "9600,N,7,1", "9600,N,8,2", "fast,N,8,1", "-1,N,8,1", "9600,N,8,1 ", ""}) {
        EXPECT_THROW(port.Settings(wrong), ErroreControllo) << wrong;
    }
    EXPECT_THROW(port.Handshaking(2), ErroreControllo);
    port.CommPort(200);
    EXPECT_THROW(port.PortOpen(true), ErroreControllo);
    EXPECT_FALSE(port.PortOpen());
}

}  // namespace lapvane::prova
