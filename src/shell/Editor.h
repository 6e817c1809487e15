#pragma once

#include <string_view>

namespace lapvane {

/// What the poll and the device routines know of an open editor.
class Editor {
 public:
    virtual ~Editor() = default;
    /// The form's name ("frmSensori").
    virtual std::string_view Nome() const = 0;
    /// Switches the buttons that need the instrument.
    virtual void AbilitaStrumento(bool presente) = 0;
};

}  // namespace lapvane
