#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>

#include "instrument/PseudoTerminal.h"

namespace lapvane::prova {

/// What is at the other end of a serial port under test. It obeys lines that come through the port:
///     echo N    sends the next N bytes back
///     say N     sends N times "x"
///     after MS  sends "R" when that time has passed
///     speed     sends the port's speed as a line
///     gone MS   pulls the cable out for that time
///     deaf MS   takes nothing for that time
class FarEnd {
 public:
    explicit FarEnd(std::filesystem::path link);
    void Serve(const std::atomic<bool>& stop);

 private:
    void Attach();
    bool Obey();

    std::filesystem::path link_;
    std::unique_ptr<strumento::PseudoTerminal> terminal_;
    std::string waiting_;
};

}  // namespace lapvane::prova
