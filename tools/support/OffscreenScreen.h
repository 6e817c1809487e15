#pragma once

#include <QFileInfo>
#include <QTemporaryFile>
#include <QtGlobal>

namespace lapvane {

/// The screen of an application without one: that of the platform "offscreen" is 800 x 800, which
/// no desktop has. To be made before the application, and to live until that is there.
class OffscreenScreen {
 public:
    /// Pixels of the screen, whatever scale it is looked at with.
    OffscreenScreen(int columns, int rows) {
#ifdef Q_OS_WIN
        // The name may hold no colon, so it is one of the current folder.
        file_.setFileTemplate(QStringLiteral("screen-XXXXXX"));
#endif
        if (qgetenv("QT_QPA_PLATFORM") != "offscreen" || !file_.open()) return;
        file_.write(QByteArray(R"({"screens":[{"name":"one","x":0,"y":0,"width":)") +
                    QByteArray::number(columns) + R"(,"height":)" + QByteArray::number(rows) +
                    R"(,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
        file_.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + FileName().toLocal8Bit());
    }

 private:
    QString FileName() const {
#ifdef Q_OS_WIN
        return QFileInfo(file_.fileName()).fileName();
#else
        return file_.fileName();
#endif
    }
    QTemporaryFile file_;
};

}  // namespace lapvane
