#pragma once

#include <QApplication>
#include <QLabel>
#include <QPaintEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "platform/qt/TestoQt.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {

/// The machine of the window tests: scripted like that of the logic tests, on a virtual clock, but
/// with the real event loop behind DoEvents.
class WindowPlatform : public PlatformProva {
 public:
    void DoEvents(int waitMs = 0) override {
        PlatformProva::DoEvents(waitMs);
        QCoreApplication::processEvents();
    }
};

/// The control of that name below a window; fails the test if there is none.
template <class W>
W* Controllo(const QObject& finestra, const char* nome) {
    W* trovato = finestra.findChild<W*>(QString::fromLatin1(nome));
    if (trovato == nullptr) throw std::runtime_error(std::string("no control ") + nome);
    return trovato;
}

/// Where a window that is shown is drawn anew by `azione`.
inline QRegion Ridipinto(QWidget& finestra, const std::function<void()>& azione) {
    struct Spia : QObject {
        bool eventFilter(QObject*, QEvent* evento) override {
            if (evento->type() == QEvent::Paint) {
                Dove += static_cast<QPaintEvent*>(evento)->region();
            }
            return false;
        }
        QRegion Dove;
    } spia;
    finestra.show();
    QCoreApplication::processEvents();
    finestra.installEventFilter(&spia);
    azione();
    QCoreApplication::processEvents();
    return spia.Dove;
}

}  // namespace lapvane::prova
