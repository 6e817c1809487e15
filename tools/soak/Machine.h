#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "instrument/PseudoTerminal.h"
#include "instrument/Strumento.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "tools/support/BareViews.h"

namespace lapvane::soak {

/// The simulated instrument at the far end of a real pseudo-terminal that can be pulled out. Beside
/// it a twin in good order hears the same, so that what should have come is known. May be used from
/// two threads.
class Line {
 public:
    /// `link` is where the program finds the terminal.
    Line(strumento::Strumento& instrument, strumento::Strumento& twin, std::filesystem::path link);

    void Plug();
    void Pull();
    void PullAt(std::int64_t ms);
    /// The plug goes at the n-th request of a command from now on, before its reply.
    void PullAtRequest(int command, int nth);
    bool Plugged() const;
    /// The one fault in force from now on; none ends the last one.
    void Misbehave(const std::optional<strumento::Guasto>& fault);
    /// The same record in the memories of the instrument and of its twin.
    void Remember(strumento::Record record, const std::string& data);
    void RememberCurve(int channel, const std::string& data);

    /// Reads what the program wrote, answers, sends what is due, pulls the plug if it is time.
    void Step(std::int64_t now);
    /// When something is due; nothing if no reply is on its way.
    std::optional<std::int64_t> Next() const;

    std::size_t Received() const;  ///< characters from the program, over the whole life
    std::size_t Sent() const;      ///< characters to the program
    std::size_t Waiting() const;   ///< of those, the ones that the terminal still holds
    std::string Clean() const;     ///< what an instrument in good order answers to the last request
    std::size_t SentSinceRequest() const;
    int Requests(int command) const;
    int Hits() const;  ///< requests that a fault took hold of
    std::string Stored(strumento::Record record) const;
    std::string StoredCurve(int channel) const;

 private:
    mutable std::recursive_mutex mutex_;
    strumento::Strumento& instrument_;
    strumento::Strumento& twin_;
    std::filesystem::path link_;
    std::unique_ptr<strumento::PseudoTerminal> terminal_;
    std::vector<strumento::Risposta> onItsWay_;
    std::optional<std::int64_t> pullAt_;
    int pullCommand_ = 0;
    int pullIn_ = 0;  // requests of it until then; 0: never
    std::string clean_;
    std::size_t received_ = 0;
    std::size_t sent_ = 0;
    std::size_t sinceRequest_ = 0;
    std::map<int, int> requests_;
    int hits_ = 0;
};

class Machine;

/// The program's own serial control, with account of what has not reached the other side yet.
class CountedPort : public QtSerialControl {
 public:
    CountedPort(Machine& machine, Line& line) : machine_(machine), line_(line) {}
    using QtSerialControl::PortOpen;
    void PortOpen(bool open) override;
    void ClearInBuffer() override;
    std::string Input() override;
    void Output(const std::string& bytes) override;
    void WaitForInput(int ms) override;

    /// Waits in the control itself, no event runs.
    void WaitInControl() { QtSerialControl::WaitForInput(1); }
    std::size_t Written() const { return written_; }
    /// Characters of the line that have arrived: taken, thrown away, or waiting in some buffer.
    std::size_t Arrived();
    /// Whether the control itself has everything that it has room for.
    bool Read();
    /// What was taken since the last frame.
    const std::string& Taken() const { return taken_; }
    /// What was taken at once, the last time that something was.
    const std::string& LastTaken() const { return lastTaken_; }
    /// Takes what is on the terminal now as the state to count from.
    void Resync();
    /// Longest time from a frame to the next, or to the closing of the port, by command.
    std::map<int, std::int64_t> Longest;

 private:
    void EndGap();

    Machine& machine_;
    Line& line_;
    std::size_t written_ = 0;
    std::size_t gone_ = 0;
    std::string taken_;
    std::string lastTaken_;
    int command_ = 0;
    std::int64_t start_ = 0;
};

/// The machine of the soak. Its clock is the real one, or one that stands still as long as anything
/// is under way on the terminal and runs on by what is being waited for when nothing is. Everything
/// that could arrive is written by this very thread then, so that no reply can be late or early by
/// the pace of the clock.
class Machine : public QtPlatform {
 public:
    Machine(std::filesystem::path folder, strumento::Strumento& instrument,
            strumento::Strumento& twin);
    ~Machine() override;

    /// From here on real time: the instrument answers from a thread of its own.
    void RealTime();

    std::int64_t GetTickCount() override;
    void Sleep(int ms) override {
        Pause(ms, [] {});
    }
    void Pause(int ms, const std::function<void()>& meanwhile) override;
    void DoEvents(int waitMs = 0) override;
    Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                  const std::string& title) override;
    std::filesystem::path AppPath() override { return folder_; }
    std::filesystem::path CurDir() override { return folder_; }
    void ChDir(const std::filesystem::path&) override {}
    char DecimalSeparator() override { return '.'; }
    void MousePointer(Pointer) override {}
    void End(int code) override { throw FineProgrammaSoak{code}; }

    /// What the program's end raises here.
    struct FineProgrammaSoak {
        int Code;
    };

    /// Moves everything that is due to the other side; with `events` false as inside a wait that
    /// lets none run. True if anything moved.
    bool Settle(bool events);
    void Wait(int ms, bool events);
    /// Lets pass what is still on its way, and puts the plug in again.
    void Calm();

    bool Real() const { return thread_.joinable(); }

    std::vector<std::string> Boxes;  ///< texts of the message boxes
    std::int64_t Leapt = 0;          ///< ms that the clock has run without real time

 private:
    std::filesystem::path folder_;

 public:
    Line TheLine;
    CountedPort Port;

 private:
    std::int64_t clock_ = 1000;
    int idle_ = 0;
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

}  // namespace lapvane::soak
