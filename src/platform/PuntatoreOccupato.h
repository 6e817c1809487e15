#pragma once

namespace lapvane {

/// Shows the busy pointer for the length of a scope.
class PuntatoreOccupato {
 public:
    PuntatoreOccupato();
    ~PuntatoreOccupato();
    PuntatoreOccupato(const PuntatoreOccupato&) = delete;
    PuntatoreOccupato& operator=(const PuntatoreOccupato&) = delete;
};

}  // namespace lapvane
