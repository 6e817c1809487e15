#include "platform/Platform.h"

#include <array>
#include <cassert>
#include <cstdlib>
#include <ctime>

namespace lapvane {

namespace {
Platform* theInUse = nullptr;
}

Platform& platform() {
    assert(theInUse != nullptr);
    return *theInUse;
}

void SetPlatform(Platform* platform) {
    theInUse = platform;
}

std::string Platform::Stamp() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 32> text{};
    const std::size_t length =
        std::strftime(text.data(), text.size(), "%Y-%m-%d %H-%M-%S", std::localtime(&now));
    return {text.data(), length};
}

void EndProgram(int code) {
    platform().End(code);
    std::abort();  // a machine whose End returns is none
}

}  // namespace lapvane
