#pragma once

#include <QIcon>
#include <string_view>

namespace lapvane {

/// A drawing of the program's own by name ("Open", "link1"), in the colours of the theme that is in
/// use when it is painted, grey and pale where it is disabled.
QIcon Icona(std::string_view nome);

}  // namespace lapvane
