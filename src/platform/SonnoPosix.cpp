#include <thread>

#include "platform/Sonno.h"

namespace lapvane {

void DormiFino(std::chrono::steady_clock::time_point fine) {
    std::this_thread::sleep_until(fine);
}

}  // namespace lapvane
