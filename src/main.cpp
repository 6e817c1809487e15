#include <QApplication>
#include <memory>

#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "shell/Protetto.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lapvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    lapvane::QtPlatform machine;
    lapvane::SetPlatform(&machine);

    std::unique_ptr<lapvane::frmMain> main;
    lapvane::frmSplash splash;
    splash.AlTermine = [&main] {
        main = std::make_unique<lapvane::frmMain>(std::make_unique<lapvane::QtSerialControl>());
        main->Carica();
        main->show();
        main->AvviaSorveglianza();
    };
    splash.show();
    return QApplication::exec();
}
