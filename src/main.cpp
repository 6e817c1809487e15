#include <QApplication>

#include "platform/qt/QtPlatform.h"
#include "shell/frmMain.h"

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    lapvane::QtPlatform machine;
    lapvane::SetPlatform(&machine);
    return lapvane::frmMain::Avvia();
}
