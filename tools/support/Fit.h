#pragma once

#include <QStringList>
#include <QWidget>

namespace lapvane {

/// What of a window a person does not get to see: words that are wider or higher than their place,
/// controls that reach beyond what holds them, a window larger than its screen, an OK button out of
/// view. Empty if all is there. What is drawn by hand is not looked at, and what shortens its words
/// itself is taken at its word.
QStringList Fit(QWidget* window);

}  // namespace lapvane
