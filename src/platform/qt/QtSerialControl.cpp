#include "platform/qt/QtSerialControl.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <QFileInfo>
#include <QLockFile>
#include <QSerialPortInfo>
#include <algorithm>
#include <cerrno>

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"

namespace lapvane {

namespace {

QStringList AskPorts() {
    QStringList ports;
    const auto found = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : found) ports.append(port.systemLocation());
    return ports;
}

/// Whether the lock that keeps a port taken is of a program that is gone. Only its owner can take
/// it away, as long as the machine runs.
bool LockIsAbandoned(QString name) {
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    // The folder is the first of these that takes files.
    for (const char* folder : {"/var/lock/LCK..", "/tmp/LCK.."}) {
        qint64 process = 0;
        QString host, program;
        const QLockFile lock(QLatin1String(folder) + name);
        if (lock.getLockInfo(&process, &host, &program)) {
            return ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
        }
    }
    return false;
}

}  // namespace

std::unique_ptr<SerialControl> MachineSerialControl() {
    return std::make_unique<QtSerialControl>();
}

QtSerialControl::QtSerialControl() : machinePorts_(QStringLiteral("/dev"), AskPorts) {
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { CloseIfLost(error); });
}

QString QtSerialControl::Location() {
    const QString name = QStringLiteral("COM%1").arg(number_);
    const QFileInfo link(PercorsoInQt(platform().AppPath() / "ports") + QLatin1Char('/') + name);
    if (link.exists()) return link.canonicalFilePath();
    return machinePorts_.List().value(number_ - 1);
}

void QtSerialControl::Settings(const std::string& settings) {
    baud_ = BaudRate(settings);
}

void QtSerialControl::Handshaking(int mode) {
    if (mode != 0) throw ErroreControllo("unsupported handshaking");
}

void QtSerialControl::PortOpen(bool open) {
    if (!open) {
        lost_ = false;
        if (port_.isOpen()) port_.close();
        return;
    }
    if (lost_) PortOpen(false);
    if (port_.isOpen()) throw ErroreControllo("port already open");
    QString location = Location();
    if (location.isEmpty()) throw ErroreControllo("no such port");
    port_.setPortName(location);
    port_.setBaudRate(baud_);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    port_.setReadBufferSize(inBufferSize_);
    bool opened = port_.open(QIODevice::ReadWrite);
    // By another of its names, "/dev/./ttyUSB0", the port has another lock. Programs that use it at
    // the same time are still kept apart, by the exclusive mode of the terminal.
    constexpr int kNames = 10;
    for (int i = 1; !opened && i < kNames && LockIsAbandoned(port_.portName()); ++i) {
        port_.setPortName(
            location.insert(location.lastIndexOf(QLatin1Char('/')) + 1, QLatin1String("./")));
        opened = port_.open(QIODevice::ReadWrite);
    }
    if (!opened) throw ErroreControllo(port_.errorString().toStdString());
    // A virtual port refuses both lines; that is no failure.
    port_.setDataTerminalReady(dtr_);
    port_.setRequestToSend(rts_);
    port_.clearError();
}

void QtSerialControl::CloseIfLost(QSerialPort::SerialPortError error) {
    switch (error) {
        case QSerialPort::ResourceError:
        case QSerialPort::DeviceNotFoundError:
        case QSerialPort::PermissionError:
        case QSerialPort::ReadError:
        case QSerialPort::WriteError:
            break;
        default:
            return;
    }
    if (!port_.isOpen() || lost_) return;
    // The port counts as closed at once. It is closed behind the signal, whose sender still works
    // on it.
    lost_ = true;
    QMetaObject::invokeMethod(
        &port_,
        [this] {
            if (lost_) PortOpen(false);
        },
        Qt::QueuedConnection);
}

std::size_t QtSerialControl::InBufferCount() {
    return PortOpen() ? static_cast<std::size_t>(port_.bytesAvailable()) : 0;
}

void QtSerialControl::ClearInBuffer() {
    if (!PortOpen()) return;
    port_.clear(QSerialPort::Input);
    port_.readAll();
}

std::size_t QtSerialControl::OutBufferCount() {
    return 0;  // what was written is the system's
}

void QtSerialControl::ClearOutBuffer() {
    if (PortOpen()) port_.clear(QSerialPort::Output);
}

std::string QtSerialControl::Input() {
    if (!PortOpen()) return {};
    const qint64 waiting = port_.bytesAvailable();
    const qint64 most =
        inputLen_ == 0 ? waiting : std::min(waiting, static_cast<qint64>(inputLen_));
    return port_.read(most).toStdString();
}

void QtSerialControl::Output(const std::string& bytes) {
    // A port that vanished under the caller is no error here: the wait that follows sees it closed.
    if (lost_) return;
    if (!port_.isOpen()) throw ErroreControllo("port not open");
    // Not through the port's own buffer, whose writing takes events and calls a system that is full
    // an error. No frame is longer than what the system takes at once.
    constexpr int kPatience = 1000;  // ms
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t taken = ::write(port_.handle(), rest.data(), rest.size());
        if (taken >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(taken));
        } else if (errno == EAGAIN) {
            pollfd room{port_.handle(), POLLOUT, 0};
            if (::poll(&room, 1, kPatience) == 0) throw ErroreControllo("the port takes nothing");
        } else if (errno != EINTR) {
            return CloseIfLost(QSerialPort::WriteError);
        }
    }
}

void QtSerialControl::WaitForInput(int ms) {
    if (PortOpen()) port_.waitForReadyRead(ms);
}

}  // namespace lapvane
