#pragma once

#include <QStringList>
#include <QWidget>

namespace lapvane::tour {

/// What keeps a person from working a window with the keyboard or a screen reader: controls without
/// a name, buttons that no key reaches, letters of Alt that two controls claim. Empty if all is
/// well.
QStringList Census(QWidget* window);

}  // namespace lapvane::tour
