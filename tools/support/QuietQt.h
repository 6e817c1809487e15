#pragma once

#include <QString>
#include <QtGlobal>

namespace lapvane {

/// Keeps what Qt says of a screen that is none (no window hints, no raising, no keyboard to grab)
/// out of a log, where a hundred such lines hide the one that matters. Everything else is told as
/// before. To be called before the application is made.
inline void QuietOffscreen() {
    static QtMessageHandler before = nullptr;
    before = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& message) {
            if (message.startsWith(QLatin1String("This plugin does not support"))) return;
            if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
                return;
            if (before != nullptr) before(type, context, message);
        });
}

}  // namespace lapvane
