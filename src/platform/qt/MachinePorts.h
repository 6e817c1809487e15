#pragma once

#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QStringList>
#include <functional>

namespace lapvane {

/// The serial ports of the machine in name order. To ask the system for them takes 10 ms, which is
/// dear beside a scan of twenty numbers five times a second: it is asked when something changes in
/// the folder of the devices, and for some seconds behind that, while the device gets its name and
/// its rights. Where the folder cannot be watched it is asked once a second.
class MachinePorts {
 public:
    /// `ask` lists the locations of the ports.
    MachinePorts(const QString& devices, std::function<QStringList()> ask);

    const QStringList& List();

 private:
    QFileSystemWatcher devices_;
    std::function<QStringList()> ask_;
    QStringList ports_;
    QElapsedTimer age_;     ///< of the answer; not valid: there is none
    QElapsedTimer change_;  ///< since the folder has changed; not valid: it never has
};

}  // namespace lapvane
