#pragma once

#include <QString>
#include <functional>

#include "Robot.h"
#include "shell/frmMain.h"

namespace lapvane::tour {

/// The stops of the second road: the open project goes into the instrument, a new project takes its
/// place on the screen, the instrument is read into that, and what is saved then is held against
/// the first project's file. At the end that project is open again. Lives as long as the robot.
class DeviceRoad {
 public:
    /// `project` is the file of the open project, `saved` the one to be written.
    DeviceRoad(Robot& robot, std::function<frmMain*()> window, QString project, QString saved);

    void Play();

 private:
    void Click(const char* key);
    void FileDialog(const QString& path);
    void LongCommand(const char* key, int question, int title, const QString& name);
    QString Panel(int n) const;

    Robot& robot_;
    std::function<frmMain*()> window_;
    QString project_;
    QString saved_;
};

}  // namespace lapvane::tour
