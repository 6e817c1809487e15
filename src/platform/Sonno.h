#pragma once

#include <chrono>

namespace lapvane {

/// Sleeps until `fine`, or a little longer: as little as the system can.
void DormiFino(std::chrono::steady_clock::time_point fine);

}  // namespace lapvane
