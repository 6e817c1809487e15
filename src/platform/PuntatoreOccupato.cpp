#include "platform/PuntatoreOccupato.h"

#include "platform/Platform.h"

namespace lapvane {

PuntatoreOccupato::PuntatoreOccupato() {
    platform().MousePointer(Pointer::Busy);
}

PuntatoreOccupato::~PuntatoreOccupato() {
    platform().MousePointer(Pointer::Normal);
}

}  // namespace lapvane
