#pragma once

#include "platform/Platform.h"

namespace lapvane {

/// Shows the busy pointer for the length of a scope.
class PuntatoreOccupato {
 public:
    PuntatoreOccupato() { platform().MousePointer(Pointer::Busy); }
    ~PuntatoreOccupato() { platform().MousePointer(Pointer::Normal); }
    PuntatoreOccupato(const PuntatoreOccupato&) = delete;
    PuntatoreOccupato& operator=(const PuntatoreOccupato&) = delete;
};

}  // namespace lapvane
