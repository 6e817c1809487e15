#pragma once

#include <QSerialPort>

#include "platform/SerialControl.h"
#include "platform/qt/MachinePorts.h"

namespace lapvane {

/// The serial control on QSerialPort, wherever the system is a POSIX one.
class QtSerialControl : public SerialControl {
 public:
    QtSerialControl();

    int CommPort() const override { return number_; }
    void CommPort(int number) override { number_ = number; }
    void Settings(const std::string& settings) override;
    void Handshaking(int mode) override;
    void InBufferSize(int bytes) override { inBufferSize_ = bytes; }
    void OutBufferSize(int) override {}  // the system's own buffer is larger
    void DTREnable(bool on) override { dtr_ = on; }
    void RTSEnable(bool on) override { rts_ = on; }
    bool PortOpen() const override { return port_.isOpen() && !lost_; }
    void PortOpen(bool open) override;
    std::size_t InBufferCount() override;
    void ClearInBuffer() override;
    std::size_t OutBufferCount() override;
    void ClearOutBuffer() override;
    void InputLen(std::size_t characters) override { inputLen_ = characters; }
    std::string Input() override;
    void Output(const std::string& bytes) override;
    void WaitForInput(int ms) override;

 private:
    QString Location();
    void CloseIfLost(QSerialPort::SerialPortError error);

    mutable QSerialPort port_;
    MachinePorts machinePorts_;
    int number_ = 1;
    int baud_ = 19200;
    int inBufferSize_ = 300;
    std::size_t inputLen_ = 0;
    bool dtr_ = false;
    bool rts_ = true;
    bool lost_ = false;  // the port vanished and is about to be closed
};

}  // namespace lapvane
