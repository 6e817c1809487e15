// lapvane-instrument: the simulated instrument behind a pseudo-terminal.

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <deque>
#include <map>
#include <optional>

#include "instrument/Circuito.h"
#include "instrument/Options.h"
#include "instrument/PseudoTerminal.h"
#include "instrument/Sensori.h"
#include "instrument/Sessione.h"
#include "instrument/Strumento.h"

namespace fs = std::filesystem;

namespace lapvane::strumento {
namespace {

volatile sig_atomic_t theStop = 0;

double Milliseconds() {
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// The line to the other program: replies leave when they are due, and one after the other at the
/// pace of the line if that is wanted.
class Line {
 public:
    Line(PseudoTerminal& terminal, bool pace) : terminal_(terminal), pace_(pace) {}

    void Queue(Risposta reply) { waiting_.push_back(std::move(reply)); }

    void Send(double now) {
        while (!waiting_.empty() && static_cast<double>(waiting_.front().Quando) <= now) {
            if (out_.empty()) free_ = now;
            out_ += waiting_.front().Byte;
            waiting_.pop_front();
        }
        if (out_.empty()) return;
        std::size_t due = out_.size();
        if (pace_) {
            due = std::min(due, static_cast<std::size_t>((now - free_) / kByte));
            free_ += static_cast<double>(due) * kByte;
        }
        terminal_.Write(std::string_view(out_).substr(0, due));
        out_.erase(0, due);
    }

    /// When there is something to do next; nothing if the line is idle.
    std::optional<double> NextTime() const {
        if (!out_.empty()) {
            // A few characters at a time: waking for each one would cost more than it shows.
            return free_ + kByte * static_cast<double>(std::min<std::size_t>(out_.size(), 4));
        }
        if (!waiting_.empty()) return static_cast<double>(waiting_.front().Quando);
        return std::nullopt;
    }

 private:
    // ms of one character at 19200 baud: a start bit, eight data bits, a stop bit.
    static constexpr double kByte = 10.0 * 1000.0 / 19200.0;

    PseudoTerminal& terminal_;
    bool pace_;
    std::deque<Risposta> waiting_;
    std::string out_;
    double free_ = 0.0;
};

/// One line a second with the commands that were answered, as long as there are any.
class Journal {
 public:
    explicit Journal(bool quiet) : quiet_(quiet), start_(Milliseconds()) {}

    void Say(const std::string& text) const {
        if (quiet_) return;
        std::printf("%s\n", text.c_str());
        std::fflush(stdout);
    }
    void Count(const Risposta& reply, double now) {
        if (quiet_) return;  // nor wake up for it
        if (!due_) due_ = now + 1000.0;
        ++counts_[reply.Tipo->Codice];
        if (reply.Guasta) ++faults_;
    }
    void Rubbish(std::size_t characters, int wrong) {
        if (characters == rubbish_ && wrong == wrong_) return;
        Say("rubbish: " + std::to_string(characters - rubbish_) + " characters dropped, " +
            std::to_string(wrong - wrong_) + " wrong checksums");
        rubbish_ = characters;
        wrong_ = wrong;
    }
    void Flush(double now, bool force) {
        if (!due_ || (!force && now < *due_)) return;
        char time[32];
        std::snprintf(time, sizeof time, "%.1f s:", (now - start_) / 1000.0);
        std::string text = time;
        for (const auto& [code, count] : counts_) {
            text += std::string(" ") + CercaComando(code)->Nome + " (" + std::to_string(code) +
                    ") x" + std::to_string(count) + ",";
        }
        text.pop_back();
        if (faults_ != 0) text += "; faults x" + std::to_string(faults_);
        Say(text);
        counts_.clear();
        faults_ = 0;
        due_.reset();
    }
    std::optional<double> NextTime() const { return due_; }

 private:
    bool quiet_;
    double start_;
    std::optional<double> due_;
    std::map<int, int> counts_;
    int faults_ = 0;
    std::size_t rubbish_ = 0;
    int wrong_ = 0;
};

/// The litres of the tank, a line of the standard input each time they change.
class Console {
 public:
    explicit Console(bool open) : open_(open) {
        // Started in the background, it does without instead of being stopped.
        if (open_) ::signal(SIGTTIN, SIG_IGN);
    }
    int Descriptor() const { return open_ ? STDIN_FILENO : -1; }
    void Read(Strumento& instrument, const Journal& journal) {
        char bytes[256];
        const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (count <= 0) {
            open_ = false;
            return;
        }
        text_.append(bytes, static_cast<std::size_t>(count));
        for (std::size_t end = text_.find('\n'); end != std::string::npos; end = text_.find('\n')) {
            Line(text_.substr(0, end), instrument, journal);
            text_.erase(0, end + 1);
        }
    }

 private:
    static void Line(const std::string& line, Strumento& instrument, const Journal& journal) {
        try {
            const bool falling = instrument.Benzina && instrument.Benzina->Scende;
            instrument.Benzina = LeggiSerbatoio(line);
            instrument.Benzina->Scende |= falling;
            journal.Say("tank: " + line);
        } catch (const std::invalid_argument& error) {
            journal.Say(error.what());
        }
    }

    bool open_;
    std::string text_;
};

void Serve(Strumento& instrument, PseudoTerminal& terminal, const Options& options,
           const sigset_t& waitMask, Journal& journal) {
    Line line(terminal, options.Pace);
    Console console(options.Tank.has_value());
    std::optional<double> incomplete;  // when the beginning of a frame is given up
    while (theStop == 0) {
        std::optional<double> next = incomplete;
        for (const auto& time : {line.NextTime(), journal.NextTime()}) {
            if (time && (!next || *time < *next)) next = time;
        }
        timespec wait{};
        if (next) {
            const double ms = std::max(0.0, *next - Milliseconds());
            wait.tv_sec = static_cast<time_t>(ms / 1000.0);
            wait.tv_nsec = static_cast<long>(std::fmod(ms, 1000.0) * 1e6);
        }
        pollfd descriptors[] = {{terminal.Descriptor(), POLLIN, 0},
                                {console.Descriptor(), POLLIN, 0}};
        // Signals come only inside this wait.
        ::ppoll(descriptors, 2, next ? &wait : nullptr, &waitMask);
        const std::string bytes = (descriptors[0].revents & POLLIN) != 0 ? terminal.Read() : "";
        if (descriptors[1].revents != 0) console.Read(instrument, journal);
        const double now = Milliseconds();
        for (Risposta& reply :
             instrument.Ricevi(bytes, static_cast<std::int64_t>(std::floor(now)))) {
            journal.Count(reply, now);
            if (!reply.Byte.empty()) line.Queue(std::move(reply));
        }
        const LettoreFrame& reader = instrument.Lettore();
        if (!reader.InAttesa()) {
            incomplete.reset();
        } else if (!bytes.empty() || !incomplete) {
            incomplete = now + static_cast<double>(LettoreFrame::kQuiete) + 1.0;
        }
        line.Send(now);
        journal.Rubbish(reader.Scartati(), reader.Errati());
        journal.Flush(now, false);
    }
    journal.Flush(Milliseconds(), true);
}

fs::path ProgramFolder(const char* program) {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return (error ? fs::absolute(program) : self).parent_path();
}

/// Records the session; says what is in the memories.
std::string Record(const Options& options, const fs::path& programFolder, Memoria& memory) {
    std::string what = "empty";
    if (options.Session.Modo != ModoSessione::Vuota) {
        const fs::path folder = options.Tracks.empty() ? programFolder / "tracks" : options.Tracks;
        fs::path trk = folder / (options.Track + ".trk");
        if (options.Track.empty()) {
            const std::vector<fs::path> all = ElencaCircuiti(folder);
            if (all.empty()) throw ErroreCircuito("no circuit in the folder " + folder.string());
            trk = all.front();
        }
        RegistraSessione(Circuito::Leggi(trk), options.Session, memory);
        what = trk.stem().string();
    }
    return "session: " + what + ", " + std::to_string(memory.Giri()) + " laps, " +
           std::to_string(memory.ByteLog()) + " bytes";
}

/// SIGINT, SIGTERM and SIGHUP end the service. They are held back but for the mask returned.
sigset_t CatchSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) { theStop = 1; };
    sigset_t ours;
    sigset_t before;
    sigemptyset(&ours);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&ours, number);
        ::sigaction(number, &action, nullptr);
    }
    ::sigprocmask(SIG_BLOCK, &ours, &before);
    return before;
}

int Run(const Options& options, const char* program) {
    const sigset_t waitMask = CatchSignals();
    Journal journal(options.Quiet);
    Strumento instrument(options.Identity);
    for (const Guasto& fault : options.Faults) instrument.Difetti.Aggiungi(fault);
    instrument.Benzina = options.Tank;
    const fs::path folder = ProgramFolder(program);
    journal.Say(Record(options, folder, instrument.Dati));
    const int sensors = MontaSensori(options.Sensors.empty() ? folder / "sensors" : options.Sensors,
                                     instrument.Dati);
    journal.Say("sensors: " + std::to_string(sensors) + " of " + std::to_string(kCanaliCurva) +
                " curves from the library");
    PseudoTerminal terminal;
    if (!options.Link.empty()) terminal.MakeLink(options.Link);
    journal.Say("ready on " + terminal.Name() +
                (options.Link.empty() ? "" : ", link " + options.Link.string()));
    Serve(instrument, terminal, options, waitMask, journal);
    journal.Say("end");
    return 0;
}

}  // namespace
}  // namespace lapvane::strumento

int main(int argc, char** argv) {
    using namespace lapvane::strumento;
    Options options;
    try {
        options = ParseOptions({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lapvane-instrument: %s\nTry --help.\n", error.what());
        return 2;
    }
    if (options.Help) {
        std::fputs(HelpText().c_str(), stdout);
        return 0;
    }
    try {
        return Run(options, argv[0]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lapvane-instrument: %s\n", error.what());
        return 1;
    }
}
