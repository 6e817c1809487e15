// The serial control on Windows.
//
// One thread makes every call of a driver. It sleeps until a byte arrives, a write ends or the
// program wants something, and has a look at the port each second: some adapters that are unplugged
// never end what was asked of them.

#include "platform/SerialControlWindows.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include "platform/ErroreRuntime.h"

#ifndef CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
#define CREATE_WAITABLE_TIMER_HIGH_RESOLUTION 0x00000002
#endif

namespace lapvane {

namespace {

using Clock = std::chrono::steady_clock;

// All in ms. A port of the machine opens in a few of them, one over the air takes seconds.
constexpr DWORD kOpening = 2000;
constexpr DWORD kClosing = 2000;
constexpr DWORD kCancelling = 500;  // what a driver gets to end what it was told to end
constexpr DWORD kAnswer = 1500;     // what the thread of the port gets to do as it is told
constexpr DWORD kLook = 1000;
// Beyond the time that the bytes take on the wire; less than a frame without reply is waited for.
constexpr DWORD kWriting = 2000;

constexpr DWORD kDriverBuffer = 4096;  // bytes, either way
constexpr int kEmptyReads = 100;       // in a row, before a port counts as lost

/// An event of the system.
class Event {
 public:
    explicit Event(bool manual) : handle_(::CreateEventW(nullptr, manual, FALSE, nullptr)) {
        if (handle_ == nullptr) throw ErroreControllo("no event to be had");
    }
    ~Event() { ::CloseHandle(handle_); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    HANDLE Handle() const { return handle_; }
    void Set() { ::SetEvent(handle_); }
    void Reset() { ::ResetEvent(handle_); }
    bool Wait(DWORD ms) const { return ::WaitForSingleObject(handle_, ms) == WAIT_OBJECT_0; }

 private:
    HANDLE handle_;
};

/// The system's words for an error, in UTF-8.
std::string Words(DWORD error) {
    wchar_t text[512];
    DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                         0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && text[length - 1] <= L' ') --length;
    if (length == 0) return "error " + std::to_string(error);
    const std::u8string utf8 = std::filesystem::path(text, text + length).u8string();
    return {reinterpret_cast<const char*>(utf8.data()), utf8.size()};
}

/// Numbers of the ports whose driver has not come back from an opening or a closing. Never
/// destroyed: their threads may outlive everything.
struct Hanging {
    std::mutex Guard;
    std::set<int> Numbers;
};
Hanging& hanging() {
    static Hanging* const all = new Hanging;
    return *all;
}

/// A read or a write that the driver works on.
struct Operation {
    OVERLAPPED Overlapped{};
    Event Done{true};
    bool UnderWay = false;

    void Prepare() {
        Done.Reset();
        Overlapped = OVERLAPPED{};
        Overlapped.hEvent = Done.Handle();
    }
    /// What a call has said: false only for an error.
    bool Started(BOOL said) {
        UnderWay = said || ::GetLastError() == ERROR_IO_PENDING;
        return UnderWay;
    }
    /// True when nothing is left that the driver could still write to.
    bool Cancel(HANDLE port) {
        if (!UnderWay) return true;
        ::CancelIoEx(port, &Overlapped);
        if (!Done.Wait(kCancelling)) return false;
        Done.Reset();
        UnderWay = false;
        return true;
    }
};

}  // namespace

/// An open port: the side of the program, which never calls the driver, and the thread.
class WindowsSerialControl::Port : public std::enable_shared_from_this<Port> {
 public:
    Port(int number, int baud, bool dtr, bool rts, int room)
        : number_(number),
          baud_(static_cast<DWORD>(baud)),
          dtr_(dtr),
          rts_(rts),
          room_(static_cast<std::size_t>(std::max(room, 1))),
          owner_(::GetCurrentThreadId()) {}

    void Open();
    void Close();
    bool Lost() {
        const std::lock_guard lock(guard_);
        return lost_;
    }
    HANDLE Arrived() const { return arrived_.Handle(); }
    std::size_t Count();
    std::string Take(std::size_t most);
    std::size_t Unsent();
    void Send(const std::string& bytes);
    void Clear(bool in);

 private:
    void Run();
    DWORD OpenDriver();
    bool SetUp() const;
    void Serve();
    bool Obey();
    bool Read();
    bool EndRead();
    bool Write();
    bool EndWrite();
    bool GiveUpWrite();
    bool Alive() const;
    DWORD Limit() const;
    void AwaitEnd(DWORD ms);

    const int number_;
    const DWORD baud_;
    const bool dtr_, rts_;
    const std::size_t room_;
    const DWORD owner_;  // the thread that waits for its messages

    Event wake_{false};     // something to do for the thread
    Event opened_{true};    // or not, see openError_
    Event cleared_{false};  // the thread has cleared what it was told to
    Event ended_{true};     // the handle is closed
    Event arrived_{true};   // something has happened since the program last looked

    std::mutex guard_;  // of these
    std::string in_;
    std::string out_;
    std::size_t sending_ = 0;
    bool clearIn_ = false, clearOut_ = false;
    bool stop_ = false;
    bool lost_ = false;
    bool stuck_ = false;  // a write was given up, and nobody knows yet
    DWORD openError_ = 0;

    // Of the thread alone. One byte is read at a time: a read of more ends with some drivers at the
    // first byte, with others only when it is full.
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    Operation read_, write_;
    char byte_ = 0;
    int empty_ = 0;
    std::string written_;
    Clock::time_point deadline_;
};

// ---- The side of the program

void WindowsSerialControl::Port::Open() {
    {
        const std::lock_guard lock(hanging().Guard);
        if (hanging().Numbers.contains(number_)) throw ErroreControllo(Words(ERROR_BUSY));
    }
    std::thread([self = shared_from_this()] { self->Run(); }).detach();
    if (!opened_.Wait(kOpening)) {
        Close();
        throw ErroreControllo(Words(ERROR_TIMEOUT));
    }
    if (openError_ != 0) throw ErroreControllo(Words(openError_));
}

void WindowsSerialControl::Port::Close() {
    const bool opening = !opened_.Wait(0);
    {
        const std::lock_guard lock(guard_);
        stop_ = true;
    }
    wake_.Set();
    AwaitEnd(opening ? 0 : kClosing);
}

/// Waits for the thread's end; one that does not come is noted, so that nobody waits for it again.
void WindowsSerialControl::Port::AwaitEnd(DWORD ms) {
    if (ended_.Wait(ms)) return;
    const std::lock_guard lock(hanging().Guard);
    if (!ended_.Wait(0)) hanging().Numbers.insert(number_);
}

std::size_t WindowsSerialControl::Port::Count() {
    const std::lock_guard lock(guard_);
    if (!lost_) arrived_.Reset();
    return lost_ ? 0 : in_.size();
}

std::string WindowsSerialControl::Port::Take(std::size_t most) {
    const std::lock_guard lock(guard_);
    if (lost_) return {};
    arrived_.Reset();
    if (in_.size() >= room_) wake_.Set();
    std::string taken = in_.substr(0, most);
    in_.erase(0, taken.size());
    return taken;
}

std::size_t WindowsSerialControl::Port::Unsent() {
    const std::lock_guard lock(guard_);
    if (std::exchange(stuck_, false)) throw ErroreControllo(Words(ERROR_TIMEOUT));
    return lost_ ? 0 : out_.size() + sending_;
}

void WindowsSerialControl::Port::Send(const std::string& bytes) {
    const std::lock_guard lock(guard_);
    if (std::exchange(stuck_, false)) throw ErroreControllo(Words(ERROR_TIMEOUT));
    // A port that vanished under the caller is no error here: the wait that follows sees it closed.
    if (lost_) return;
    out_ += bytes;
    wake_.Set();
}

void WindowsSerialControl::Port::Clear(bool in) {
    {
        const std::lock_guard lock(guard_);
        if (lost_) return;
        (in ? clearIn_ : clearOut_) = true;
        cleared_.Reset();
    }
    wake_.Set();
    if (cleared_.Wait(kAnswer)) return;
    const std::lock_guard lock(guard_);
    lost_ = true;
    stop_ = true;
}

// ---- The thread

void WindowsSerialControl::Port::Run() {
    openError_ = OpenDriver();
    opened_.Set();
    if (openError_ == 0) Serve();
    {
        const std::lock_guard lock(guard_);
        lost_ = true;
        stop_ = true;
    }
    arrived_.Set();
    cleared_.Set();
    ::PostThreadMessageW(owner_, WM_NULL, 0, 0);
    const bool readEnded = read_.Cancel(handle_);
    const bool writeEnded = write_.Cancel(handle_);
    if (!readEnded || !writeEnded) {
        // The driver may still write to what belongs to this object: it stays for good.
        new std::shared_ptr<Port>(shared_from_this());
    }
    if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_);
    const std::lock_guard lock(hanging().Guard);
    ended_.Set();
    hanging().Numbers.erase(number_);
}

/// 0, or the error number.
DWORD WindowsSerialControl::Port::OpenDriver() {
    // Behind COM9 a port has only this name.
    const std::wstring name = L"\\\\.\\COM" + std::to_wstring(number_);
    handle_ = ::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                            FILE_FLAG_OVERLAPPED, nullptr);
    if (handle_ == INVALID_HANDLE_VALUE) return ::GetLastError();
    return SetUp() ? 0 : ::GetLastError();
}

bool WindowsSerialControl::Port::SetUp() const {
    ::SetupComm(handle_, kDriverBuffer, kDriverBuffer);  // a wish
    DCB state{};
    state.DCBlength = sizeof state;
    if (!::GetCommState(handle_, &state)) return false;
    state.BaudRate = baud_;
    state.ByteSize = 8;
    state.Parity = NOPARITY;
    state.StopBits = ONESTOPBIT;
    state.fBinary = TRUE;
    state.fParity = FALSE;
    state.fOutxCtsFlow = FALSE;
    state.fOutxDsrFlow = FALSE;
    state.fDsrSensitivity = FALSE;
    state.fOutX = FALSE;
    state.fInX = FALSE;
    state.fErrorChar = FALSE;
    state.fNull = FALSE;
    // An error on the wire would else stop everything until somebody asks for it.
    state.fAbortOnError = FALSE;
    state.fDtrControl = dtr_ ? DTR_CONTROL_ENABLE : DTR_CONTROL_DISABLE;
    state.fRtsControl = rts_ ? RTS_CONTROL_ENABLE : RTS_CONTROL_DISABLE;
    if (!::SetCommState(handle_, &state)) return false;
    // All zero: a read waits for its byte, a write for its end. The limits are this thread's.
    COMMTIMEOUTS none{};
    if (!::SetCommTimeouts(handle_, &none)) return false;
    // What came before it was opened is nobody's.
    return ::PurgeComm(handle_, PURGE_RXCLEAR | PURGE_TXCLEAR) != FALSE;
}

void WindowsSerialControl::Port::Serve() {
    const HANDLE all[] = {wake_.Handle(), read_.Done.Handle(), write_.Done.Handle()};
    for (;;) {
        {
            const std::lock_guard lock(guard_);
            if (stop_) return;
        }
        if (!Obey() || !Read() || !Write()) return;
        const DWORD what = ::WaitForMultipleObjects(3, all, FALSE, Limit());
        if (what == WAIT_FAILED || !EndRead() || !EndWrite()) return;
        if (what == WAIT_TIMEOUT && !Alive()) return;
    }
}

DWORD WindowsSerialControl::Port::Limit() const {
    if (!write_.UnderWay) return kLook;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline_ - Clock::now()).count();
    return static_cast<DWORD>(std::clamp<std::int64_t>(left + 1, 0, kLook));
}

bool WindowsSerialControl::Port::Alive() const {
    DWORD errors = 0;
    COMSTAT state{};
    return ::ClearCommError(handle_, &errors, &state) != FALSE;
}

/// Clears what the program wants cleared.
bool WindowsSerialControl::Port::Obey() {
    bool in = false;
    bool out = false;
    {
        const std::lock_guard lock(guard_);
        in = std::exchange(clearIn_, false);
        out = std::exchange(clearOut_, false);
    }
    if (!in && !out) return true;
    if (out) {
        if (!::PurgeComm(handle_, PURGE_TXABORT | PURGE_TXCLEAR) || !write_.Cancel(handle_)) {
            return false;
        }
        const std::lock_guard lock(guard_);
        out_.clear();
        sending_ = 0;
        stuck_ = false;
    }
    if (in) {
        if (!::PurgeComm(handle_, PURGE_RXCLEAR) || !EndRead()) return false;
        const std::lock_guard lock(guard_);
        in_.clear();
        arrived_.Reset();
    }
    cleared_.Set();
    return true;
}

/// Keeps a read under way as long as there is room, and takes what is there at once.
bool WindowsSerialControl::Port::Read() {
    while (!read_.UnderWay) {
        {
            const std::lock_guard lock(guard_);
            if (in_.size() >= room_ || stop_) break;
        }
        read_.Prepare();
        if (!read_.Started(::ReadFile(handle_, &byte_, 1, nullptr, &read_.Overlapped))) {
            return false;
        }
        if (!EndRead()) return false;
    }
    return true;
}

bool WindowsSerialControl::Port::EndRead() {
    if (!read_.UnderWay || !read_.Done.Wait(0)) return true;
    read_.UnderWay = false;
    read_.Done.Reset();
    DWORD count = 0;
    if (!::GetOverlappedResult(handle_, &read_.Overlapped, &count, FALSE)) return false;
    if (count == 0) return ++empty_ < kEmptyReads && Alive();
    empty_ = 0;
    const std::lock_guard lock(guard_);
    in_ += byte_;
    if (arrived_.Wait(0)) return true;  // the program knows that it has to look
    arrived_.Set();
    ::PostThreadMessageW(owner_, WM_NULL, 0, 0);
    return true;
}

bool WindowsSerialControl::Port::Write() {
    while (!write_.UnderWay) {
        {
            const std::lock_guard lock(guard_);
            if (out_.empty()) break;
            written_ = std::exchange(out_, {});
            sending_ = written_.size();
        }
        const auto onTheWire = std::chrono::milliseconds(written_.size() * 10 * 1000 / baud_);
        deadline_ = Clock::now() + std::chrono::milliseconds(kWriting) + onTheWire;
        write_.Prepare();
        if (!write_.Started(::WriteFile(handle_, written_.data(),
                                        static_cast<DWORD>(written_.size()), nullptr,
                                        &write_.Overlapped))) {
            return false;
        }
        if (!EndWrite()) return false;
    }
    return true;
}

bool WindowsSerialControl::Port::EndWrite() {
    if (!write_.UnderWay) return true;
    if (!write_.Done.Wait(0)) return Clock::now() < deadline_ || GiveUpWrite();
    write_.UnderWay = false;
    write_.Done.Reset();
    DWORD count = 0;
    if (!::GetOverlappedResult(handle_, &write_.Overlapped, &count, FALSE)) return false;
    const std::lock_guard lock(guard_);
    sending_ = 0;
    // A driver with a time-out of its own.
    if (count < written_.size()) stuck_ = true;
    return true;
}

bool WindowsSerialControl::Port::GiveUpWrite() {
    if (!write_.Cancel(handle_)) return false;
    const std::lock_guard lock(guard_);
    out_.clear();
    sending_ = 0;
    stuck_ = true;
    return true;
}

// ---- The control

/// Waits that are exact to a millisecond or two; those of the system's scheduler are to sixteen.
class WindowsSerialControl::Timer {
 public:
    Timer()
        : handle_(::CreateWaitableTimerExW(nullptr, nullptr, CREATE_WAITABLE_TIMER_HIGH_RESOLUTION,
                                           TIMER_ALL_ACCESS)) {
        // Systems older than the flag have timers without it.
        if (handle_ == nullptr) handle_ = ::CreateWaitableTimerW(nullptr, FALSE, nullptr);
        if (handle_ == nullptr) throw ErroreControllo("no timer to be had");
    }
    ~Timer() { ::CloseHandle(handle_); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    void WaitFor(HANDLE event, int ms) {
        constexpr LONGLONG kMillisecond = -10000;  // in 100 ns from now
        LARGE_INTEGER due{};
        due.QuadPart = kMillisecond * std::max(ms, 0);
        if (!::SetWaitableTimer(handle_, &due, 0, nullptr, nullptr, FALSE)) return;
        const HANDLE both[] = {event, handle_};
        ::WaitForMultipleObjects(2, both, FALSE, static_cast<DWORD>(std::max(ms, 0)) + kLook);
        ::CancelWaitableTimer(handle_);
    }

 private:
    HANDLE handle_;
};

WindowsSerialControl::WindowsSerialControl() : timer_(std::make_unique<Timer>()) {}

WindowsSerialControl::~WindowsSerialControl() {
    if (port_) port_->Close();
}

std::unique_ptr<SerialControl> MachineSerialControl() {
    return std::make_unique<WindowsSerialControl>();
}

void WindowsSerialControl::Settings(const std::string& settings) {
    baud_ = BaudRate(settings);
}

void WindowsSerialControl::Handshaking(int mode) {
    if (mode != 0) throw ErroreControllo("unsupported handshaking");
}

bool WindowsSerialControl::PortOpen() const {
    return port_ && !port_->Lost();
}

void WindowsSerialControl::PortOpen(bool open) {
    if (open && PortOpen()) throw ErroreControllo("port already open");
    if (port_) std::exchange(port_, nullptr)->Close();
    if (!open) return;
    const auto port = std::make_shared<Port>(number_, baud_, dtr_, rts_, inBufferSize_);
    port->Open();
    port_ = port;
}

std::size_t WindowsSerialControl::InBufferCount() {
    return port_ ? port_->Count() : 0;
}

void WindowsSerialControl::ClearInBuffer() {
    if (port_) port_->Clear(true);
}

std::size_t WindowsSerialControl::OutBufferCount() {
    return port_ ? port_->Unsent() : 0;
}

void WindowsSerialControl::ClearOutBuffer() {
    if (port_) port_->Clear(false);
}

std::string WindowsSerialControl::Input() {
    return port_ ? port_->Take(inputLen_ == 0 ? std::string::npos : inputLen_) : std::string();
}

void WindowsSerialControl::Output(const std::string& bytes) {
    if (!port_) throw ErroreControllo("port not open");
    port_->Send(bytes);
}

void WindowsSerialControl::WaitForInput(int ms) {
    if (PortOpen()) timer_->WaitFor(port_->Arrived(), ms);
}

}  // namespace lapvane
