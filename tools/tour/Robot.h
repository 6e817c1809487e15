#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>

namespace lapvane::tour {

/// Plays a list of stops one after the other: waits until a stop is there, checks what it shows,
/// acts. It lives in timers, so that it goes on while a modal window holds its caller.
class Robot : public QObject {
    Q_OBJECT
 public:
    explicit Robot(const QString& folder) : folder_(folder) {}

    /// Waits until `there` holds (at most `seconds`), then acts.
    void Stop(const QString& name, std::function<bool()> there, std::function<void()> act,
              int seconds = 20);
    void Start();
    /// Runs before a failed tour ends its process.
    std::function<void()> OnFailure;
    int Stops() const { return done_; }
    /// What the census found in the windows of all pictures.
    int Faults() const { return faults_; }

    /// Saves a picture of a window under the next number, and takes its census.
    void Picture(QWidget* window, const QString& name);
    /// Fails the tour unless it holds.
    void Check(bool holds, const QString& what);

    /// The visible modal window that inherits `type`, or null.
    static QWidget* Modal(const char* type);
    /// A click in the middle of a control; the control must be visible and enabled.
    void Click(QWidget* control);

 private:
    struct Step {
        QString Name;
        std::function<bool()> There;
        std::function<void()> Act;
        int Seconds;
    };
    void Look();
    void Fail(const QString& why);

    QString folder_;
    std::deque<Step> steps_;
    QTimer timer_;
    QElapsedTimer waited_;
    int pictures_ = 0;
    int done_ = 0;
    int faults_ = 0;
    bool failed_ = false;
};

}  // namespace lapvane::tour
