#pragma once

#include <QApplication>
#include <memory>

#include "platform/qt/QtPlatform.h"

namespace lapvane {

class frmMain;

/// The program from its start to its end, as `main` runs it.
class Program {
 public:
    Program(int& argc, char** argv);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Shows the splash, after its wait the main window; returns what the process ends with.
    int Run();

 private:
    QApplication application_;
    QtPlatform machine_;
    std::unique_ptr<frmMain> main_;
};

}  // namespace lapvane
