#pragma once

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>

#ifdef __linux__
#include <linux/perf_event.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace lapvane::bench {

/// Counts the instructions of this thread, where the machine tells them; else 0.
class Instructions {
 public:
    Instructions() {
#ifdef __linux__
        perf_event_attr what{};
        what.size = sizeof what;
        what.type = PERF_TYPE_HARDWARE;
        what.config = PERF_COUNT_HW_INSTRUCTIONS;
        what.exclude_kernel = 1;
        what.exclude_hv = 1;
        file_ = static_cast<int>(::syscall(SYS_perf_event_open, &what, 0, -1, -1, 0));
#endif
    }
    ~Instructions() {
#ifdef __linux__
        if (file_ >= 0) ::close(file_);
#endif
    }
    Instructions(const Instructions&) = delete;
    Instructions& operator=(const Instructions&) = delete;
    double Now() const {
        std::uint64_t count = 0;
#ifdef __linux__
        if (file_ < 0 || ::read(file_, &count, sizeof count) != sizeof count) return 0.0;
#endif
        return static_cast<double>(count);
    }

 private:
    int file_ = -1;
};

/// Two ways to do the same, in turn: A B, B A, A B ... A machine that slows down for a while slows
/// both of a round, so that the median of their ratios holds where single times swing.
class Paired {
 public:
    /// One round.
    void Round(const auto& ours, const auto& bare) {
        const bool first = ratios_.size() % 2 == 0;
        if (first) Time(ours, ours_);
        Time(bare, bare_);
        if (!first) Time(ours, ours_);
        ratios_.push_back(ours_.Ms.back() / bare_.Ms.back());
    }
    double LastMs() const { return ours_.Ms.back(); }
    /// The figures of all rounds.
    void Tell(benchmark::State& state) {
        state.counters["ours_ms"] = Median(ours_.Ms);
        state.counters["bare_ms"] = Median(bare_.Ms);
        state.counters["ratio"] = Median(ratios_);
        state.counters["ratio_low"] = *std::min_element(ratios_.begin(), ratios_.end());
        state.counters["ratio_high"] = *std::max_element(ratios_.begin(), ratios_.end());
        if (ours_.Count.back() > 0.0) {
            state.counters["ours_Minstr"] = Median(ours_.Count) / 1e6;
            state.counters["bare_Minstr"] = Median(bare_.Count) / 1e6;
        }
        double load = 0.0;
        if (::getloadavg(&load, 1) == 1) state.counters["load"] = load;
    }

 private:
    struct Side {
        std::vector<double> Ms, Count;
    };
    void Time(const auto& work, Side& side) {
        const double before = instructions_.Now();
        const auto start = std::chrono::steady_clock::now();
        work();
        side.Ms.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
        side.Count.push_back(instructions_.Now() - before);
    }
    static double Median(std::vector<double> values) {
        std::nth_element(values.begin(), values.begin() + std::ssize(values) / 2, values.end());
        return values[values.size() / 2];
    }

    Instructions instructions_;
    Side ours_, bare_;
    std::vector<double> ratios_;
};

}  // namespace lapvane::bench
