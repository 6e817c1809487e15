#include "Robot.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QScrollArea>
#include <QTest>
#include <algorithm>
#include <cstdio>

#include "Census.h"
#include "tools/support/Fit.h"

namespace lapvane::tour {

void Robot::Stop(const QString& name, std::function<bool()> there, std::function<void()> act,
                 int seconds) {
    steps_.push_back({name, std::move(there), std::move(act), seconds});
}

void Robot::Start() {
    waited_.start();
    connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
    timer_.start(40);
}

void Robot::Look() {
    if (failed_) return;
    if (steps_.empty()) {
        timer_.stop();
        QApplication::exit(0);
        return;
    }
    const Step& step = steps_.front();
    if (!step.There()) {
        if (waited_.elapsed() > 1000LL * step.Seconds)
            Fail(step.Name + QStringLiteral(": did not come"));
        return;
    }
    std::printf("%-28s %6.1f s\n", qPrintable(step.Name),
                static_cast<double>(waited_.elapsed()) / 1e3);
    std::fflush(stdout);
    const auto act = step.Act;
    steps_.pop_front();
    ++done_;
    waited_.restart();
    // What acts may open a modal window and come back only when that closes: never from here.
    QTimer::singleShot(0, qApp, act);
}

void Robot::Fail(const QString& why) {
    failed_ = true;
    std::fprintf(stderr, "The tour failed at %s\n", qPrintable(why));
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible()) Picture(window, QStringLiteral("failure"));
    }
    std::fflush(nullptr);
    if (OnFailure) OnFailure();
    std::_Exit(1);
}

void Robot::Check(bool holds, const QString& what) {
    if (!holds && !failed_) Fail(what);
}

void Robot::Picture(QWidget* window, const QString& name) {
    const QString file = QStringLiteral("%1/%2-%3.png")
                             .arg(folder_)
                             .arg(++pictures_, 2, 10, QLatin1Char('0'))
                             .arg(name);
    const QStringList faults = failed_ ? QStringList() : Census(window) + Fit(window);
    for (const QString& fault : faults) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(name), qPrintable(fault));
    }
    faults_ += static_cast<int>(faults.size());
    const auto* scrolls = window->findChild<QScrollArea*>(QStringLiteral("rotolo"));
    if (scrolls != nullptr) {
        // No fault: the screen is too small for the letters.
        const QSize missing = scrolls->widget()->size() - scrolls->viewport()->size();
        std::printf("%s: scrolls, %d x %d out of view\n", qPrintable(name),
                    std::max(0, missing.width()), std::max(0, missing.height()));
    }
    if (!window->grab().save(file)) std::fprintf(stderr, "cannot save %s\n", qPrintable(file));
}

QWidget* Robot::Modal(const char* type) {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal->isVisible() && modal->inherits(type) ? modal : nullptr;
}

void Robot::Click(QWidget* control) {
    Check(control != nullptr && control->isVisible() && control->isEnabled(),
          QStringLiteral("a click on %1, which cannot be clicked")
              .arg(control != nullptr ? control->objectName() : QStringLiteral("nothing")));
    QTest::mouseClick(control, Qt::LeftButton);
}

}  // namespace lapvane::tour
