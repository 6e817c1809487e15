#include "Program.h"

#include "platform/qt/QtSerialControl.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

namespace lapvane {

Program::Program(int& argc, char** argv) : application_(argc, argv) {
    QApplication::setApplicationName(QStringLiteral("Lapvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    SetPlatform(&machine_);
}

Program::~Program() = default;

int Program::Run() {
    frmSplash splash;
    splash.AlTermine = [this] {
        main_ = std::make_unique<frmMain>(std::make_unique<QtSerialControl>());
        main_->Carica();
        main_->show();
        main_->AvviaSorveglianza();
    };
    splash.show();
    return QApplication::exec();
}

}  // namespace lapvane
