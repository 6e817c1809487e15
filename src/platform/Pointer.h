#pragma once

namespace lapvane {

enum class Pointer { Normal, Busy };

}  // namespace lapvane
