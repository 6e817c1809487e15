#include "Machine.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "device/Codec.h"
#include "platform/ErroreRuntime.h"

namespace lapvane::soak {

using namespace strumento;

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

std::int64_t RealMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

Line::Line(Strumento& instrument, Strumento& twin, std::filesystem::path link)
    : instrument_(instrument), twin_(twin), link_(std::move(link)) {
    Plug();
}

void Line::Plug() {
    const Lock lock(mutex_);
    if (terminal_ != nullptr) return;
    terminal_ = std::make_unique<PseudoTerminal>();
    terminal_->MakeLink(link_);
}

void Line::Pull() {
    const Lock lock(mutex_);
    terminal_.reset();
    onItsWay_.clear();
    pullAt_.reset();
    pullIn_ = 0;
}

void Line::PullAt(std::int64_t ms) {
    const Lock lock(mutex_);
    pullAt_ = ms;
}

void Line::PullAtRequest(int command, int nth) {
    const Lock lock(mutex_);
    pullCommand_ = command;
    pullIn_ = nth;
}

bool Line::Plugged() const {
    const Lock lock(mutex_);
    return terminal_ != nullptr;
}

void Line::Misbehave(const std::optional<Guasto>& fault) {
    const Lock lock(mutex_);
    instrument_.Difetti.Togli();
    if (fault) instrument_.Difetti.Aggiungi(*fault);
}

void Line::Remember(Record record, const std::string& data) {
    const Lock lock(mutex_);
    instrument_.Dati.Programma(record, data);
    twin_.Dati.Programma(record, data);
}

void Line::RememberCurve(int channel, const std::string& data) {
    const Lock lock(mutex_);
    instrument_.Dati.ProgrammaCurva(channel, data);
    twin_.Dati.ProgrammaCurva(channel, data);
}

void Line::Step(std::int64_t now) {
    const Lock lock(mutex_);
    if (pullAt_ && *pullAt_ <= now) Pull();
    if (terminal_ == nullptr) return;
    const std::string bytes = terminal_->Read();
    received_ += bytes.size();
    for (const Risposta& reply : twin_.Ricevi(bytes, now)) {
        clean_ = reply.Byte;
        sinceRequest_ = 0;
        ++requests_[reply.Tipo->Codice];
        if (pullIn_ > 0 && reply.Tipo->Codice == pullCommand_ && --pullIn_ == 0) {
            Pull();
            return;
        }
    }
    for (Risposta& reply : instrument_.Ricevi(bytes, now)) {
        if (reply.Guasta) ++hits_;
        if (!reply.Byte.empty()) onItsWay_.push_back(std::move(reply));
    }
    while (!onItsWay_.empty() && onItsWay_.front().Quando <= now) {
        const std::string& reply = onItsWay_.front().Byte;
        terminal_->Write(reply);
        sent_ += reply.size();
        sinceRequest_ += reply.size();
        onItsWay_.erase(onItsWay_.begin());
    }
}

std::optional<std::int64_t> Line::Next() const {
    const Lock lock(mutex_);
    std::optional<std::int64_t> next = pullAt_;
    if (!onItsWay_.empty() && (!next || onItsWay_.front().Quando < *next)) {
        next = onItsWay_.front().Quando;
    }
    return next;
}

std::size_t Line::Received() const {
    const Lock lock(mutex_);
    return received_;
}

std::size_t Line::Sent() const {
    const Lock lock(mutex_);
    return sent_;
}

std::size_t Line::Waiting() const {
    const Lock lock(mutex_);
    return terminal_ == nullptr ? 0 : terminal_->Waiting();
}

std::string Line::Clean() const {
    const Lock lock(mutex_);
    return clean_;
}

std::size_t Line::SentSinceRequest() const {
    const Lock lock(mutex_);
    return sinceRequest_;
}

int Line::Requests(int command) const {
    const Lock lock(mutex_);
    const auto found = requests_.find(command);
    return found == requests_.end() ? 0 : found->second;
}

int Line::Hits() const {
    const Lock lock(mutex_);
    return hits_;
}

std::string Line::Stored(Record record) const {
    const Lock lock(mutex_);
    return instrument_.Dati.Dati(record);
}

std::string Line::StoredCurve(int channel) const {
    const Lock lock(mutex_);
    return instrument_.Dati.Curva(channel);
}

void CountedPort::PortOpen(bool open) {
    // The machine may have other ports; the soak has this one.
    if (open && (CommPort() != 1 || !line_.Plugged())) throw ErroreControllo("no such port");
    EndGap();
    QtSerialControl::PortOpen(open);
    Resync();
}

void CountedPort::ClearInBuffer() {
    // What has arrived by now goes, and nothing else: let the terminal deliver it first.
    machine_.Settle(false);
    QtSerialControl::ClearInBuffer();
    Resync();
}

std::string CountedPort::Input() {
    std::string bytes = QtSerialControl::Input();
    gone_ += bytes.size();
    taken_ += bytes;
    if (!bytes.empty()) lastTaken_ = bytes;
    return bytes;
}

void CountedPort::Output(const std::string& bytes) {
    EndGap();
    taken_.clear();
    lastTaken_.clear();
    command_ = ByteIn(bytes, 2);
    start_ = machine_.GetTickCount();
    if (PortOpen()) written_ += bytes.size();
    QtSerialControl::Output(bytes);
}

void CountedPort::WaitForInput(int ms) {
    if (machine_.Real()) {
        QtSerialControl::WaitForInput(ms);
    } else if (PortOpen()) {
        machine_.Wait(ms, false);
    }
}

std::size_t CountedPort::Arrived() {
    return gone_ + InBufferCount() + line_.Waiting();
}

bool CountedPort::Read() {
    constexpr std::size_t kBuffer = 300;
    return !PortOpen() || line_.Waiting() == 0 || InBufferCount() >= kBuffer;
}

void CountedPort::Resync() {
    if (machine_.Real()) return;
    written_ = line_.Received();
    gone_ = line_.Sent() - InBufferCount() - line_.Waiting();
}

void CountedPort::EndGap() {
    if (command_ == 0) return;
    std::int64_t& longest = Longest[command_];
    longest = std::max(longest, machine_.GetTickCount() - start_);
    command_ = 0;
}

Machine::Machine(std::filesystem::path folder, Strumento& instrument, Strumento& twin)
    : folder_(std::move(folder)),
      TheLine(instrument, twin, folder_ / "ports" / "COM1"),
      Port(*this, TheLine) {
    SetPlatform(this);
}

Machine::~Machine() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
    SetPlatform(nullptr);
}

void Machine::RealTime() {
    Calm();
    thread_ = std::thread([this] {
        while (!stop_) {
            TheLine.Step(GetTickCount());
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
}

std::int64_t Machine::GetTickCount() {
    // Ahead of the leaping clock at any rate: the instrument's time does not go back.
    return Real() ? RealMilliseconds() + (std::int64_t{1} << 40) : clock_;
}

void Machine::Pause(int ms, const std::function<void()>& meanwhile) {
    if (Real()) {
        QtPlatform::Pause(ms, meanwhile);
    } else {
        meanwhile();
        // What comes meanwhile waits in the terminal's buffer and is seen by the next round.
        clock_ += ms;
        Leapt += ms;
    }
}

void Machine::DoEvents(int waitMs) {
    if (Real()) {
        QtPlatform::DoEvents(waitMs);
    } else {
        Wait(waitMs, true);
    }
}

void Machine::Wait(int ms, bool events) {
    if (Settle(events)) return;
    const std::int64_t end = clock_ + ms;
    const auto next = TheLine.Next();
    const std::int64_t now = next ? std::clamp(*next, clock_, end) : end;
    Leapt += now - clock_;
    clock_ = now;
    Settle(events);
}

bool Machine::Settle(bool events) {
    constexpr int kStall = 5000;
    constexpr int kIdleRounds = 64;
    if (Real()) return false;
    const auto next = TheLine.Next();
    if (Port.Written() == TheLine.Received() && !(next && *next <= clock_) && Port.Read() &&
        (TheLine.Plugged() || !Port.PortOpen())) {
        // Nothing can have happened on the line; the rest of the program gets its turn at times.
        if (events && ++idle_ % kIdleRounds == 0) QtPlatform::DoEvents(0);
        return false;
    }
    QElapsedTimer real;
    real.start();
    const bool open = Port.PortOpen();
    for (;;) {
        TheLine.Step(clock_);
        if (!TheLine.Plugged()) {
            // A pulled plug counts when the control has seen it.
            if (!Port.PortOpen()) break;
        } else {
            const auto due = TheLine.Next();
            const bool there = (!Port.PortOpen() || Port.Written() == TheLine.Received()) &&
                               Port.Arrived() == TheLine.Sent() && !(due && *due <= clock_);
            if (there && Port.Read()) break;
        }
        if (real.elapsed() > kStall) throw std::logic_error("the terminal does not deliver");
        if (events || !open) {
            QtPlatform::DoEvents(0);
        } else {
            Port.WaitInControl();
        }
        if (open && !Port.PortOpen()) break;
    }
    return true;
}

Answer Machine::MsgBox(const std::string& text, Buttons buttons, Icon, const std::string&) {
    Boxes.push_back(text);
    return buttons == Buttons::YesNoCancel ? Answer::Yes : Answer::Ok;
}

void Machine::Calm() {
    constexpr int kRound = 50;
    TheLine.Misbehave(std::nullopt);
    while (TheLine.Next()) DoEvents(kRound);
    if (!TheLine.Plugged()) {
        QElapsedTimer real;
        real.start();
        while (Port.PortOpen() && real.elapsed() < 5000) QtPlatform::DoEvents(1);
        TheLine.Plug();
        Port.Resync();
    }
    DoEvents(kRound);
}

}  // namespace lapvane::soak
