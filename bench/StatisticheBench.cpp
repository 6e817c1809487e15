// The figures of the scales over one lap as long as a full log, beside a plain pass over the same
// columns that does nothing but read them.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/Statistiche.h"

namespace {

using namespace lapvane;

constexpr std::size_t kRows = 163780;
constexpr std::size_t kChannels = 14;  // columns 3 to 16

const std::vector<std::vector<double>>& Columns() {
    static const std::vector<std::vector<double>> columns = [] {
        std::vector<std::vector<double>> made(kChannels, std::vector<double>(kRows));
        std::uint32_t noise = 1;
        for (auto& column : made) {
            for (double& value : column) {
                noise = noise * 1664525U + 1013904223U;
                value = static_cast<double>(noise >> 8) / 1000.0 - 100.0;
            }
        }
        return made;
    }();
    return columns;
}

void CountBytes(benchmark::State& state, int passes) {
    state.SetBytesProcessed(state.iterations() * passes *
                            static_cast<std::int64_t>(kRows * kChannels * sizeof(double)));
}

/// Three passes over each column, as the scales make them.
void ScaleFigures(benchmark::State& state) {
    const auto& columns = Columns();
    const std::vector<std::span<const double>> spans(columns.begin(), columns.end());
    for (auto _ : state) {
        for (const auto& column : columns) {
            benchmark::DoNotOptimize(MassimoColonna(column));
            benchmark::DoNotOptimize(MinimoColonna(column));
        }
        benchmark::DoNotOptimize(MediaColonne(spans, static_cast<double>(kRows)));
    }
    CountBytes(state, 3);
}
BENCHMARK(ScaleFigures)->Unit(benchmark::kMicrosecond);

template <class F>
void One(benchmark::State& state, F figure) {
    const auto& columns = Columns();
    for (auto _ : state) {
        for (const auto& column : columns) benchmark::DoNotOptimize(figure(column));
    }
    CountBytes(state, 1);
}
BENCHMARK_CAPTURE(One, Maximum, [](std::span<const double> v) {
    return MassimoColonna(v);
})->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(One, Minimum, [](std::span<const double> v) {
    return MinimoColonna(v);
})->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(One, Mean, [](std::span<const double> v) {
    return MediaColonna(v, 1e5);
})->Unit(benchmark::kMicrosecond);
/// The plain loop: all bits of all values, in words, which the compiler turns into vector code.
BENCHMARK_CAPTURE(One, PlainRead, [](std::span<const double> v) {
    const auto* const words = reinterpret_cast<const std::uint32_t*>(v.data());
    std::uint32_t bits = 0;
    for (std::size_t n = 0; n < 2 * v.size(); ++n) bits ^= words[n];
    return bits;
})->Unit(benchmark::kMicrosecond);
/// The loop that anybody writes first: one running sum.
BENCHMARK_CAPTURE(One, PlainSum, [](std::span<const double> v) {
    double sum = 0.0;
    for (const double value : v) sum += value;
    return sum;
})->Unit(benchmark::kMicrosecond);

}  // namespace
