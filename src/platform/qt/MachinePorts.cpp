#include "platform/qt/MachinePorts.h"

#include <utility>

namespace lapvane {

MachinePorts::MachinePorts(const QString& devices, std::function<QStringList()> ask)
    : ask_(std::move(ask)) {
    devices_.addPath(devices);
    QObject::connect(&devices_, &QFileSystemWatcher::directoryChanged, &devices_,
                     [this] { change_.start(); });
}

const QStringList& MachinePorts::List() {
    constexpr int kOld = 1000;      // ms
    constexpr int kSettled = 5000;  // ms behind a change
    const bool watched = !devices_.directories().isEmpty();
    const bool quiet = watched && (!change_.isValid() || change_.hasExpired(kSettled));
    if (!age_.isValid() || (!quiet && age_.hasExpired(kOld))) {
        age_.start();
        ports_ = ask_();
        ports_.sort();
    }
    return ports_;
}

}  // namespace lapvane
