#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>

namespace lapvane {

/// The first window: shows name and version for three seconds, then lets the main window appear.
class frmSplash : public QWidget {
    Q_OBJECT
 public:
    explicit frmSplash(QWidget* parent = nullptr);

    /// Set before showing: the form only informs, until a key or the loss of the focus.
    bool ModoInformazioni = false;
    /// Runs once during the wait: what the main window needs can be made ready.
    std::function<void()> NelFrattempo;
    /// Shows the main window at the end of the wait.
    std::function<void()> AlTermine;

 protected:
    void showEvent(QShowEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void paintEvent(QPaintEvent* evento) override;
    bool event(QEvent* evento) override;

 private:
    void Attiva();

    QLabel* lblVersion_ = nullptr;
    bool attivata_ = false;
};

}  // namespace lapvane
