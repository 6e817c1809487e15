#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

#include "tools/support/OffscreenScreen.h"
#include "tools/support/QuietQt.h"
#include "widgets/TastoInvio.h"
#include "widgets/style/Vesti.h"

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    lapvane::QuietOffscreen();
    const lapvane::OffscreenScreen screen(1920, 1080);
    QLocale::setDefault(QLocale::c());  // whatever the system has, and so its paper
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setQuitOnLastWindowClosed(false);
    lapvane::Vesti();
    const lapvane::TastoInvio invio;  // as the main window has it
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
