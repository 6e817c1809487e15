#pragma once

#include <string>
#include <string_view>

namespace lapvane {

/// A phrase of the run-time error box in the current language. The code writes its phrases in
/// English where an error is raised; one without an Italian form comes back as it stands.
std::string FraseErrore(std::string_view inglese);

}  // namespace lapvane
