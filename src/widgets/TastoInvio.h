#pragma once

#include <QObject>

namespace lapvane {

/// Enter presses the button that has the focus, in every window of the program and whatever else
/// its default button is; anywhere but on a button it is the default button's, as Qt has it. A key
/// that is held down presses once. A button that is pressed by its Alt letter takes the focus
/// behind that, as one that is clicked; but not from a box that is being typed in.
class TastoInvio : public QObject {
    Q_OBJECT
 public:
    /// In force as long as the object lives.
    explicit TastoInvio(QObject* padre = nullptr);

 protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override;
};

}  // namespace lapvane
