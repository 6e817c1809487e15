// What the person waits for in the comparison: its panes drawn anew for a step of the wheel, the
// cursor from one place to another.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <cmath>

#include "analysis/compare/DisegnoQuadri.h"

namespace {

using namespace lapvane;

constexpr QSize kSize(1600, 900);
constexpr double kLength = 4000.0;
constexpr int kLaps = 1 + kGiriAccanto;
constexpr int kPanes = 4;
constexpr int kParts = 9;

/// Waves with a hundredth of noise and, in the last pane, flat tops as a throttle has them.
double Value(int pane, int lap, double x) {
    const double wave = std::sin(x / 90.0 + 0.1 * lap) + 0.6 * std::sin(x / 37.0 + pane);
    const double noise = 0.02 * std::sin(x * 7.7 + lap * 3.1) * std::sin(x * 3.3);
    if (pane == 0) return 0.2 * lap * wave * x / kLength;
    return pane == 3 ? std::clamp(2.0 * wave, 0.0, 1.0) : wave + noise;
}

DatiQuadri Panes(int points) {
    DatiQuadri data;
    data.Fine = kLength;
    data.Fuoco = 'C';
    data.Peggiori = {3, 4, 6};
    for (int i = 1; i < kParts; ++i) data.Confini.push_back(kLength * i / kParts);
    for (int pane = 0; pane < kPanes; ++pane) {
        QuadroConfronto q{"Channel " + std::to_string(pane), "unit", 1, pane == 0, {}};
        for (int lap = pane == 0 ? 1 : 0; lap < kLaps; ++lap) {
            CurvaGiro curve;
            curve.Lettera = lap == 0 ? kRiferimento : static_cast<char>('A' + lap - 1);
            for (int n = 0; n < points; ++n) {
                curve.X.push_back(kLength * n / (points - 1));
                curve.Y.push_back(Value(pane, lap, curve.X.back()));
            }
            q.Curve.push_back(std::move(curve));
        }
        data.Quadri.push_back(std::move(q));
    }
    return data;
}

struct Shown {
    explicit Shown(int points, const QSize& size = kSize) {
        Graph.resize(size);
        Graph.Imposta(Panes(points));
        Graph.show();
        QApplication::processEvents();
    }
    /// Paints at once what is to be painted, on to the window's own store.
    void Paint() {
        QEvent update(QEvent::UpdateRequest);
        QApplication::sendEvent(&Graph, &update);
    }
    /// A hair more or less in sight, so that all is drawn anew.
    void Step() {
        Even = !Even;
        Graph.MettiVista(0.0, Even ? kLength : 0.999 * kLength);
    }
    DisegnoQuadri Graph;
    bool Even = true;
};

void RedrawPanes(benchmark::State& state, int points, int scale) {
    Shown shown(points, scale * kSize);
    const int before = shown.Graph.Ridisegni();
    for (auto _ : state) {
        shown.Step();
        shown.Paint();
    }
    if (shown.Graph.Ridisegni() - before != static_cast<int>(state.iterations())) {
        state.SkipWithError("not every repaint was a redraw");
    }
}
BENCHMARK_CAPTURE(RedrawPanes, 700, 700, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RedrawPanes, 6000, 6000, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RedrawPanes, Large700, 700, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RedrawPanes, Large6000, 6000, 2)->Unit(benchmark::kMillisecond);

void PanesCursor(benchmark::State& state) {
    Shown shown(700);
    const int before = shown.Graph.Ridisegni();
    double x = 0.0;
    for (auto _ : state) {
        x = std::fmod(x + 1171.0, kLength);
        shown.Graph.MettiCursore(x);
        shown.Paint();
    }
    if (shown.Graph.Ridisegni() != before) state.SkipWithError("the cursor redrew the curves");
}
BENCHMARK(PanesCursor)->Unit(benchmark::kMillisecond);

}  // namespace
