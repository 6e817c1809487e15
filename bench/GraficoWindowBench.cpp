// What the person waits for: the graph's full redraw beside a bare QPainter that strokes the same
// polylines, a step of the scroll, a move of the cursor, the opening of a full log.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <sstream>

#include "BareRead.h"
#include "BenchMain.h"
#include "FullLog.h"
#include "Paired.h"
#include "analysis/AnalisiDatiSpeed.h"
#include "analysis/frmAnalisiDatiSpeed.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/QtPlatform.h"
#include "shell/LoadStrings.h"
#include "tools/support/BareViews.h"
#include "tools/support/OffscreenScreen.h"
#include "widgets/GraficoWidget.h"
#include "widgets/style/Vesti.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

constexpr std::size_t kPoints = 500;
constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr double kPen = 1.4;  // pixels of the graph's thinnest line
constexpr double kYMax = 1000.0;
constexpr double kSampleStep = 0.1;

enum Data : int { Smooth, Noisy, Rough, Wild, Real };

struct Channel {
    std::string Name;
    Colore Tint = 0;
    std::vector<double> X, Y;  // seconds, and values that reach up to kYMax
};

Colore Tint(std::size_t c) {
    constexpr Colore kTints[] = {Rgb(192, 0, 0),   Rgb(255, 128, 0), Rgb(0, 192, 0),
                                 Rgb(0, 128, 128), Rgb(0, 0, 192),   Rgb(192, 0, 192)};
    return kTints[c % std::size(kTints)];
}

/// A channel's rows of the sample run from row 3000 on, stretched to the common maximum.
std::vector<Channel> SampleChannels(std::size_t rows) {
    std::ifstream file(std::string(LAPVANE_BIN_DIR) + "/sample/Esempio.csv");
    std::string line;
    for (int skipped = 0; skipped < 3000; ++skipped) std::getline(file, line);
    std::vector<Channel> channels(14);
    for (std::size_t r = 0; r < rows && std::getline(file, line); ++r) {
        std::istringstream cells(line);
        std::string cell;
        for (std::size_t c = 0; std::getline(cells, cell, ';'); ++c) {
            if (c < 2) continue;
            channels[c - 2].X.push_back(static_cast<double>(r) * kSampleStep);
            channels[c - 2].Y.push_back(cell.empty() ? 0.0 : std::stod(cell));
        }
    }
    if (channels[0].Y.size() != rows) throw std::runtime_error("the sample run is too short");
    for (Channel& channel : channels) {
        const double top = *std::max_element(channel.Y.begin(), channel.Y.end());
        for (double& y : channel.Y) y *= top > 0.0 ? kYMax / top : 1.0;
    }
    return channels;
}

/// Waves; `noise` is the standard deviation in parts of the range.
std::vector<Channel> WaveChannels(std::size_t number, std::size_t rows, double noise) {
    std::mt19937 generator(1);
    std::normal_distribution<double> normal;
    std::vector<Channel> channels(number);
    for (std::size_t c = 0; c < number; ++c) {
        for (std::size_t r = 0; r < rows; ++r) {
            const double t = static_cast<double>(r) * kSampleStep;
            const double wave = 0.5 + (0.15 + 0.015 * static_cast<double>(c)) *
                                          std::sin(t * (0.2 + 0.05 * static_cast<double>(c)) +
                                                   static_cast<double>(c));
            channels[c].X.push_back(t);
            channels[c].Y.push_back(kYMax * (wave + noise * normal(generator)));
        }
    }
    return channels;
}

std::vector<Channel> Channels(Data data, std::size_t number, std::size_t rows) {
    std::vector<Channel> channels;
    switch (data) {
        case Smooth:
            channels = WaveChannels(number, rows, 0.0);
            break;
        case Noisy:
            channels = WaveChannels(number, rows, 0.03);
            break;
        case Rough:
            channels = WaveChannels(number, rows, 0.10);
            break;
        case Wild:
            channels = WaveChannels(number, rows, 0.30);  // beyond what any sensor gives
            break;
        case Real:
            channels = SampleChannels(rows);
            // The sample has fewer channels than a window can show.
            for (std::size_t c = 0; channels.size() < number; ++c) channels.push_back(channels[c]);
            channels.resize(number);
            break;
    }
    for (std::size_t c = 0; c < channels.size(); ++c) {
        channels[c].Name = "Channel " + std::to_string(c + 1);
        channels[c].Tint = Tint(c);
    }
    return channels;
}

double Milliseconds(const std::chrono::steady_clock::time_point& since) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - since)
        .count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// What two paths that were measured in turn have to do with each other: the median of the rounds'
/// ratios and, as its range, their quarters.
void Ratio(benchmark::State& state, const std::string& name, const std::vector<double>& a,
           const std::vector<double>& b) {
    std::vector<double> ratios;
    for (std::size_t n = 0; n < a.size(); ++n) ratios.push_back(a[n] / b[n]);
    std::sort(ratios.begin(), ratios.end());
    state.counters[name] = Median(ratios);
    state.counters[name + "_low"] = ratios[ratios.size() / 4];
    state.counters[name + "_high"] = ratios[ratios.size() * 3 / 4];
}

void Window(GraficoWidget& graph, double from, double to) {
    graph.ImpostaIntervallo(from, to, 0.0, kYMax * 1.1, 0);
}

void Fill(GraficoWidget& graph, const std::vector<Channel>& channels, int scale) {
    for (const Channel& channel : channels) {
        graph.ColoreElemento(channel.Tint);
        graph.SpessoreElemento(static_cast<std::int16_t>(scale));
        graph.NomeElemento(channel.Name);
        graph.DisegnaArray(channel.X, channel.Y, graph.ElementoCorrente(), 1.0, 1, {});
    }
}

/// A graph on the screen, in the light palette. At scale 2 it has the pixels of a screen of twice
/// the density, and lines as broad as there.
struct Shown {
    explicit Shown(const std::vector<Channel>& channels, int scale = 1) {
        QPalette light;
        light.setColor(QPalette::Base, Qt::white);
        light.setColor(QPalette::Text, Qt::black);
        Graph.setPalette(light);
        Graph.resize(scale * kWidth, scale * kHeight);
        Graph.EtichettaX("Time [sec]");
        Graph.EtichettaY("Channel 1 [bar]");
        Graph.ColoreAsse(Tint(0));
        Window(Graph, channels[0].X.front(), channels[0].X.back());
        Fill(Graph, channels, scale);
        Graph.AggiungiCursore();
        Graph.CursoreVisibile(true);
        Graph.show();
        QApplication::processEvents();
    }
    /// Paints at once what is to be painted, on to the window's own store.
    void Paint() {
        QEvent update(QEvent::UpdateRequest);
        QApplication::sendEvent(&Graph, &update);
    }
    GraficoWidget Graph;
};

/// The same polylines at the same places, in the picture's pixels.
std::vector<QPolygonF> Polylines(const GraficoWidget& graph, const std::vector<Channel>& channels) {
    const QRectF area = graph.AreaDisegno();
    const double seconds = channels[0].X.back() - channels[0].X.front();
    std::vector<QPolygonF> lines;
    for (const Channel& channel : channels) {
        QPolygonF line;
        for (std::size_t n = 0; n < channel.X.size(); ++n) {
            line.append(
                QPointF(area.left() + area.width() * (channel.X[n] - channel.X[0]) / seconds,
                        area.bottom() - area.height() * channel.Y[n] / (kYMax * 1.1)));
        }
        lines.push_back(line);
    }
    return lines;
}

/// Nothing but a white ground and the lines: as polylines, or segment by segment, which QPainter
/// draws far faster.
void Bare(QImage& picture, const std::vector<QPolygonF>& lines, bool segments, double width) {
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t c = 0; c < lines.size(); ++c) {
        painter.setPen(QPen(InQColor(Tint(c)), width));
        if (!segments) {
            painter.drawPolyline(lines[c]);
            continue;
        }
        QList<QLineF> pieces;
        pieces.reserve(lines[c].size());
        for (qsizetype n = 1; n < lines[c].size(); ++n) {
            pieces.append(QLineF(lines[c][n - 1], lines[c][n]));
        }
        painter.drawLines(pieces);
    }
}

/// Both in turn. The time is that of the graph: all of its picture and the copy to the window.
void Redraw(benchmark::State& state, Data data) {
    const auto channels = Channels(data, 16, kPoints);
    Shown shown(channels);
    const auto lines = Polylines(shown.Graph, channels);
    QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    std::vector<double> graph, bare, hairline;
    const int before = shown.Graph.Ridisegni();
    for (auto _ : state) {
        shown.Graph.ScalaY(graph.size() % 2 == 0 ? 1.0 : 2.0);
        auto start = std::chrono::steady_clock::now();
        shown.Paint();
        graph.push_back(Milliseconds(start));
        state.SetIterationTime(graph.back() / 1000.0);
        start = std::chrono::steady_clock::now();
        Bare(picture, lines, true, kPen);
        bare.push_back(Milliseconds(start));
        start = std::chrono::steady_clock::now();
        Bare(picture, lines, true, 1.0);
        hairline.push_back(Milliseconds(start));
    }
    if (shown.Graph.Ridisegni() - before != static_cast<int>(graph.size())) {
        state.SkipWithError("not every repaint was a redraw");
        return;
    }
    state.counters["graph_ms"] = Median(graph);
    state.counters["bare_ms"] = Median(bare);
    state.counters["bare_1px_ms"] = Median(hairline);
    Ratio(state, "ratio", graph, bare);
    Ratio(state, "ratio_1px", graph, hairline);
}
BENCHMARK_CAPTURE(Redraw, Smooth, Smooth)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Redraw, Noisy3Percent, Noisy)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Redraw, Noisy10Percent, Rough)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Redraw, Noisy30Percent, Wild)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Redraw, Real, Real)->Unit(benchmark::kMillisecond)->UseManualTime();

/// The same on a screen of twice the density, beside the least that any picture of that size
/// costs: a fill and a copy.
void RedrawDouble(benchmark::State& state, Data data) {
    constexpr int kScale = 2;
    Shown shown(Channels(data, 16, kPoints), kScale);
    QImage picture(kScale * kWidth, kScale * kHeight, QImage::Format_RGB32);
    QImage screen = picture.copy();
    std::vector<double> graph, bare;
    for (auto _ : state) {
        shown.Graph.ScalaY(graph.size() % 2 == 0 ? 1.0 : 2.0);
        auto start = std::chrono::steady_clock::now();
        shown.Paint();
        graph.push_back(Milliseconds(start));
        state.SetIterationTime(graph.back() / 1000.0);
        start = std::chrono::steady_clock::now();
        picture.fill(Qt::white);
        QPainter(&screen).drawImage(0, 0, picture);
        bare.push_back(Milliseconds(start));
    }
    state.counters["graph_ms"] = Median(graph);
    state.counters["bare_ms"] = Median(bare);
    Ratio(state, "ratio", graph, bare);
}
BENCHMARK_CAPTURE(RedrawDouble, Smooth, Smooth)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(RedrawDouble, Noisy3Percent, Noisy)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

/// The graph under a hand that sizes its window: one pixel wider or narrower, laid out and painted.
void GraphResizeStep(benchmark::State& state) {
    Shown shown(Channels(Noisy, 16, kPoints));
    const int before = shown.Graph.Ridisegni();
    int steps = 0;
    for (auto _ : state) {
        shown.Graph.resize(kWidth + ++steps % 2, kHeight);
        QApplication::processEvents();
    }
    if (shown.Graph.Ridisegni() - before < steps) state.SkipWithError("a size was left out");
}
BENCHMARK(GraphResizeStep)->Unit(benchmark::kMillisecond);

/// The bare lines as whole polylines.
void BarePolylines(benchmark::State& state, Data data) {
    const auto channels = Channels(data, 16, kPoints);
    const Shown shown(channels);
    const auto lines = Polylines(shown.Graph, channels);
    QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) Bare(picture, lines, false, kPen);
}
BENCHMARK_CAPTURE(BarePolylines, Smooth, Smooth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BarePolylines, Noisy3Percent, Noisy)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BarePolylines, Real, Real)->Unit(benchmark::kMillisecond);

/// One round of the automatic scroll: all elements anew over a window of 500 points that moves by a
/// hundredth of its width, the cursor to its left edge, the picture on the screen.
void ScrollStep(benchmark::State& state) {
    const auto channels = Channels(Noisy, 8, 20 * kPoints);
    Shown shown(channels);
    const double width = static_cast<double>(kPoints) * kSampleStep;
    std::size_t row = 0;
    for (auto _ : state) {
        const double from = static_cast<double>(row) * kSampleStep;
        shown.Graph.PulisciGrafico();
        for (const Channel& channel : channels) {
            shown.Graph.ColoreElemento(channel.Tint);
            shown.Graph.NomeElemento(channel.Name);
            Window(shown.Graph, from, from + width);
            shown.Graph.DisegnaArray(std::span(channel.X).subspan(row, kPoints),
                                     std::span(channel.Y).subspan(row, kPoints),
                                     shown.Graph.ElementoCorrente(), 1.0, 1, {});
        }
        shown.Graph.CursoreX(from);
        shown.Paint();
        row = (row + kPoints / 100) % (19 * kPoints);
    }
}
BENCHMARK(ScrollStep)->Unit(benchmark::kMillisecond);

/// The cursor from one place to another, on the screen.
void CursorMove(benchmark::State& state) {
    const auto channels = Channels(Noisy, 16, kPoints);
    Shown shown(channels);
    const int before = shown.Graph.Ridisegni();
    std::size_t n = 0;
    for (auto _ : state) {
        n = (n + 170) % kPoints;
        shown.Graph.CursoreX(channels[0].X[n]);
        shown.Paint();
    }
    if (shown.Graph.Ridisegni() != before) state.SkipWithError("the cursor redrew the curves");
}
BENCHMARK(CursorMove)->Unit(benchmark::kMicrosecond);

/// The machine, standing in the folder of the log as after a file dialog.
class LogPlatform : public QtPlatform {
 public:
    LogPlatform() { SetPlatform(this); }
    std::filesystem::path CurDir() override { return Log().Folder; }
};

/// Both ways to open a log in turn with the least that any reader of it has to do.
void BesideBareRead(
    benchmark::State& state, const std::function<bool()>& open,
    const std::function<void()>& close = [] {}) {
    Log();
    const BareMainWindow mainWindow;
    Paired both;
    bool opened = true;
    for (auto _ : state) {
        both.Round([&] { opened = open() && opened; },
                   [] {
                       const BareLoad bare(Log().Csv(), Log().Side(), kRows);
                       benchmark::DoNotOptimize(bare.Data.Column(0)[5]);
                   });
        close();
        state.SetIterationTime(both.LastMs() / 1000.0);
    }
    if (!opened) state.SkipWithError("the log is not on the screen");
    both.Tell(state);
}

/// From the file's name to the first lap on the screen with four channels ticked.
void OpenLog(benchmark::State& state) {
    BesideBareRead(state, [] {
        GraficoWidget graph, overview;
        graph.resize(kWidth, kHeight);
        BareAnalysisView view;
        AnalisiDatiSpeed analysis(view, graph, overview);
        for (const int c : {3, 4, 5, 6}) analysis.chkGrafico_Click(c, true);
        const bool opened = analysis.Carica(Log().Csv());
        graph.show();
        QApplication::processEvents();
        return opened && analysis.NumRighe() == kRows && graph.ElementoCorrente() == 5 &&
               graph.Ridisegni() > 0;
    });
}
BENCHMARK(OpenLog)->Unit(benchmark::kMillisecond)->UseManualTime();

/// The same through the window: made, filled, shown, painted.
void OpenLogWindow(benchmark::State& state) {
    std::unique_ptr<frmAnalisiDatiSpeed> window;
    const auto open = [&window] {
        window = std::make_unique<frmAnalisiDatiSpeed>();
        window->NomeFileDati = Log().Csv();
        const bool opened = window->Carica();
        window->show();
        QApplication::processEvents();
        return opened && window->Analisi().NumRighe() == kRows;
    };
    BesideBareRead(state, open, [&window] { window.reset(); });
}
BENCHMARK(OpenLogWindow)->Unit(benchmark::kMillisecond)->UseManualTime();

/// From one lap to the next, with four channels.
void LapSwitch(benchmark::State& state) {
    Log();
    const BareMainWindow mainWindow;
    GraficoWidget graph, overview;
    graph.resize(kWidth, kHeight);
    BareAnalysisView view;
    AnalisiDatiSpeed analysis(view, graph, overview);
    for (const int c : {3, 4, 5, 6}) analysis.chkGrafico_Click(c, true);
    if (!analysis.Carica(Log().Csv())) state.SkipWithError("the log is not on the screen");
    graph.show();
    int lap = 2;
    for (auto _ : state) {
        analysis.MSFlexGrid1_Click(lap = lap % 190 + 2, kColonnaTempoGiro);
        QApplication::processEvents();
    }
}
BENCHMARK(LapSwitch)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const OffscreenScreen screen(1920, 1080);
    QApplication application(argc, argv);
    Vesti();
    LogPlatform machine;
    CaricaTesti();
    CalcolaBaseTesti();
    return RunBenches("window", argc, argv);
}
