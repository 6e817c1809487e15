#pragma once

class QWidget;

namespace lapvane {

/// Dresses one window in the program's style and palette, with everything that is in it or comes
/// into it later: controls, menus, lists that drop down, dialogs that belong to it. It follows the
/// desktop when that changes its theme. A second call does nothing. To be called before tables are
/// filled: a row keeps the height that it was made with.
void Vesti(QWidget& finestra);

}  // namespace lapvane
