// The main window under a hand that sizes it: its ground, and a step of the resize.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPixmap>

#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "shell/frmMain.h"
#include "widgets/Sfondo.h"

namespace {

using namespace lapvane;

/// Once more the ground of a window that has its size.
void Ground(benchmark::State& state, int width, int height) {
    Sfondo ground;
    ground.resize(width, height);
    QPixmap screen(ground.size());
    ground.render(&screen);
    for (auto _ : state) ground.render(&screen, {}, {}, QWidget::DrawWindowBackground);
}
BENCHMARK_CAPTURE(Ground, at_start, 1180, 720)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Ground, whole_screen, 1920, 1080)->Unit(benchmark::kMillisecond);

/// The main window one pixel wider or narrower, laid out and painted.
void ResizeStep(benchmark::State& state) {
    frmMain window(std::make_unique<QtSerialControl>());
    window.Carica();
    window.resize(1180, 720);
    window.show();
    QApplication::processEvents();
    int width = 1180;
    for (auto _ : state) {
        width = width == 1180 ? 1181 : 1180;
        window.resize(width, 720);
        QApplication::processEvents();
    }
}
BENCHMARK(ResizeStep)->Unit(benchmark::kMillisecond);

}  // namespace
