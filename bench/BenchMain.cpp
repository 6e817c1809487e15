#include "BenchMain.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "Limits.h"

namespace lapvane::bench {

namespace {

/// Keeps what was measured, by benchmark and figure. The empty figure is the time in ms.
class Keeper : public benchmark::BenchmarkReporter {
 public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(),
                             run.error_message.c_str());
                failed_ = true;
                continue;
            }
            auto& figures = kept_[run.run_name.function_name];
            figures[""].push_back(run.GetAdjustedRealTime() * 1e3 /
                                  benchmark::GetTimeUnitMultiplier(run.time_unit));
            for (const auto& [name, counter] : run.counters) {
                figures[name].push_back(counter.value);
            }
        }
    }
    /// The least of all repetitions, since whatever else the machine does only adds; 0: never
    /// measured.
    double Least(std::string_view run, std::string_view figure) const {
        const auto figures = kept_.find(std::string(run));
        if (figures == kept_.end()) return 0.0;
        const auto found = figures->second.find(std::string(figure));
        if (found == figures->second.end()) return 0.0;
        return *std::min_element(found->second.begin(), found->second.end());
    }
    /// The middle of all repetitions.
    double Middle(std::string_view run, std::string_view figure) const {
        const auto figures = kept_.find(std::string(run));
        if (figures == kept_.end()) return 0.0;
        const auto found = figures->second.find(std::string(figure));
        if (found == figures->second.end()) return 0.0;
        std::vector<double> values = found->second;
        std::nth_element(values.begin(), values.begin() + std::ssize(values) / 2, values.end());
        return values[values.size() / 2];
    }
    bool Failed() const { return failed_; }

 private:
    std::map<std::string, std::map<std::string, std::vector<double>>> kept_;
    bool failed_ = false;
};

/// One row; false if the limit does not hold.
bool Row(const Limit& limit, const Keeper& keeper) {
    // What is measured in turn with its yardstick is a ratio of its own.
    const bool paired = limit.Figure == "ratio";
    double measured =
        paired ? keeper.Middle(limit.Run, limit.Figure) : keeper.Least(limit.Run, limit.Figure);
    if (!limit.Yardstick.empty()) {
        const double yardstick = keeper.Least(limit.Yardstick, "");
        measured = yardstick > 0.0 ? measured / yardstick : 0.0;
    }
    const bool met = measured > 0.0 && measured <= limit.Most;
    std::printf("%-34s %9.2f %9.4g %-13s %7.2f  %s\n", std::string(limit.Path).c_str(), measured,
                limit.Most, std::string(limit.Unit).c_str(), measured / limit.Most,
                met               ? "met"
                : measured == 0.0 ? "NOT MEASURED"
                                  : "NOT MET");
    if (const double high = keeper.Middle(limit.Run, "ratio_high"); paired && high > 0.0) {
        std::printf("%-34s %9.2f to %.2f, %.1f ms beside %.1f", "",
                    keeper.Middle(limit.Run, "ratio_low"), high,
                    keeper.Middle(limit.Run, "ours_ms"), keeper.Middle(limit.Run, "bare_ms"));
        if (const double ours = keeper.Middle(limit.Run, "ours_Minstr"); ours > 0.0) {
            std::printf(", %.0f beside %.0f million instructions", ours,
                        keeper.Middle(limit.Run, "bare_Minstr"));
        }
        std::printf(", load of the machine %.1f\n", keeper.Middle(limit.Run, "load"));
    }
    return met;
}

/// A pattern for the benchmarks that the limits of a program need.
std::string Needed(std::string_view program) {
    std::string names;
    for (const Limit& limit : kLimits) {
        if (limit.Program != program) continue;
        for (const std::string_view name : {limit.Run, limit.Yardstick}) {
            if (!name.empty()) names.append(names.empty() ? "" : "|").append(name);
        }
    }
    return "^(" + names + ")(/|$)";
}

}  // namespace

int RunBenches(std::string program, int argc, char* argv[]) {
    const char* const screen = std::getenv("QT_QPA_PLATFORM");
    if (screen != nullptr && std::string_view(screen) == "xcb") program += " on X";
    char** const end = argv + argc;
    char** const asked =
        std::find_if(argv, end, [](const char* a) { return std::strcmp(a, "--table") == 0; });
    const bool table = asked != end;
    if (table) argc = static_cast<int>(std::remove(asked, end, *asked) - argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    if (!table) {
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    }
    benchmark::SetBenchmarkFilter(Needed(program));
    Keeper keeper;
    benchmark::RunSpecifiedBenchmarks(&keeper);
    bool good = !keeper.Failed();
    for (const Limit& limit : kLimits) {
        if (limit.Program == program) good = Row(limit, keeper) && good;
    }
    return good ? 0 : 1;
}

}  // namespace lapvane::bench
