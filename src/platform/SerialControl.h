#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace lapvane {

/// A serial port with the properties of a classic serial control. Any operation may raise
/// `ErroreControllo`. A port that vanishes closes itself: `PortOpen` is then false.
class SerialControl {
 public:
    virtual ~SerialControl() = default;

    virtual int CommPort() const = 0;
    virtual void CommPort(int number) = 0;
    virtual void Settings(const std::string& settings) = 0;  ///< "19200,N,8,1"
    virtual void Handshaking(int mode) = 0;                  ///< 0: none
    virtual void InBufferSize(int bytes) = 0;
    virtual void OutBufferSize(int bytes) = 0;
    virtual void DTREnable(bool on) = 0;
    virtual void RTSEnable(bool on) = 0;

    virtual bool PortOpen() const = 0;
    virtual void PortOpen(bool open) = 0;

    virtual std::size_t InBufferCount() = 0;
    virtual void ClearInBuffer() = 0;  ///< InBufferCount = 0
    virtual std::size_t OutBufferCount() = 0;
    virtual void ClearOutBuffer() = 0;  ///< OutBufferCount = 0

    /// Most characters that `Input` takes at once; 0: everything that waits.
    virtual void InputLen(std::size_t characters) = 0;
    virtual std::string Input() = 0;
    virtual void Output(const std::string& bytes) = 0;

    /// Waits without running any event until something arrives or `ms` have passed.
    virtual void WaitForInput(int ms) = 0;
};

/// The serial control of this machine. On Windows COMn is COMn. Elsewhere it is the link
/// `ports/COMn` beside the program if there is one, else the n-th serial port of the machine in
/// name order.
std::unique_ptr<SerialControl> MachineSerialControl();

/// The speed (bits a second) in "19200,N,8,1"; `ErroreControllo` for any other form.
int BaudRate(const std::string& settings);

}  // namespace lapvane
