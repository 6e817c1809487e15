#pragma once

#include "tools/support/BarePlatform.h"

namespace lapvane {

/// A machine for the fuzz targets: one without files.
class FuzzPlatform : public BarePlatform {
 public:
    FuzzPlatform() : BarePlatform("/nonexistent") {}
};

}  // namespace lapvane
