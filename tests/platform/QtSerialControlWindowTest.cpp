// The serial control on a real pseudo-terminal.
#include "platform/qt/QtSerialControl.h"

#include <thread>

#include "support/FarEnd.h"
#include "support/SerialCases.h"
#include "support/WindowPlatform.h"

namespace lapvane {
namespace {

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

}  // namespace
}  // namespace lapvane
