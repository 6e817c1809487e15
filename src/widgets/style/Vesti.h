#pragma once

namespace lapvane {

/// Dresses the whole program in its style and palette: every window, menu, list and box that there
/// is or comes. It follows the desktop when that changes its theme, and `ImpostaTema`. Once an
/// application, before its first window.
void Vesti();

/// The mode for the pit lane on or off: letters of at least 14 pt, larger controls, the theme for
/// the sun. What is open is measured anew, and grows or shrinks with its letters.
void ImpostaModoBox(bool acceso);

}  // namespace lapvane
