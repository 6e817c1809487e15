#include "platform/Platform.h"

#include <cassert>
#include <cstdlib>

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

void EndProgram(int code) {
    platform().End(code);
    std::abort();  // a machine whose End returns is none
}

}  // namespace lapvane
