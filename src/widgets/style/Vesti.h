#pragma once

namespace lapvane {

/// Dresses the whole program in its style and palette: every window, menu, list and box that there
/// is or comes. It follows the desktop when that changes its theme, and `ImpostaTema`. Once an
/// application, before its first window.
void Vesti();

}  // namespace lapvane
