#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/SerialControl.h"

namespace lapvane {

/// The serial control on the calls of Windows; COMn is COMn. A thread of the open port makes every
/// call of its driver, and who uses the control waits for that thread with a limit: a driver that
/// never comes back costs a port, not the program. What arrives wakes the thread that opened the
/// port from the wait for its messages.
class WindowsSerialControl : public SerialControl {
 public:
    WindowsSerialControl();
    ~WindowsSerialControl() override;
    WindowsSerialControl(const WindowsSerialControl&) = delete;
    WindowsSerialControl& operator=(const WindowsSerialControl&) = delete;

    int CommPort() const override { return number_; }
    void CommPort(int number) override { number_ = number; }
    void Settings(const std::string& settings) override;
    void Handshaking(int mode) override;
    void InBufferSize(int bytes) override { inBufferSize_ = bytes; }
    void OutBufferSize(int) override {}  // what waits to be written has room in memory
    void DTREnable(bool on) override { dtr_ = on; }
    void RTSEnable(bool on) override { rts_ = on; }
    bool PortOpen() const override;
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
    class Port;
    class Timer;

    std::shared_ptr<Port> port_;  // null: closed; one that was lost stays until it is closed
    std::unique_ptr<Timer> timer_;
    int number_ = 1;
    int baud_ = 19200;
    int inBufferSize_ = 300;
    std::size_t inputLen_ = 0;
    bool dtr_ = false;
    bool rts_ = true;
};

}  // namespace lapvane
