#include "bench/LargeWorkbook.h"
#include "support/XlsxWriter.h"
#include "viewer/SheetFinder.h"
#include "viewer/SheetView.h"
#include "viewer/ViewedWorkbook.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <algorithm>
#include <benchmark/benchmark.h>

// What the workbook window costs on a sheet of 100,000 x 20 cells. A frame that takes longer than 16.7 ms is one that
// the user misses at 60 frames a second; the counters tell how long frames took and how many were missed.

namespace {

using namespace lumivane;
using namespace Qt::StringLiterals;

constexpr int benchRows = 100000;
constexpr double frameMilliseconds = 1000.0 / 60;

std::shared_ptr<const ViewedSheet> largeSheet()
{
    static ViewedWorkbook workbook(test::writeTemporary(u"Large.xlsx"_s, bench::largeWorkbook(benchRows, 20)));
    return workbook.sheet(0);
}

/// A sheet view of the size of a full screen, with the large sheet in it.
struct ScrolledView
{
    ScrolledView()
    {
        view.resize(1366, 700);
        view.setSheet(std::make_shared<OpenSheet>(largeSheet()), nullptr);
        view.show();
        QApplication::processEvents();
        times.reserve(100000);
    }

    /// One frame: scroll, paint at once, and let the view prepare what comes next, as it does while the user waits for
    /// the next frame.
    void frame(qint64 pixels)
    {
        QElapsedTimer timer;
        timer.start();
        QScrollBar& bar = *view.verticalScrollBar();
        bar.setValue(bar.value() + pixels < bar.maximum() ? int(bar.value() + pixels) : 0);
        view.viewport()->repaint();
        const double spent = double(timer.nsecsElapsed()) / 1e6;
        times.push_back(spent);
        QApplication::processEvents(QEventLoop::AllEvents, std::max(0, int(frameMilliseconds - spent)));
    }

    void report(benchmark::State& state)
    {
        std::sort(times.begin(), times.end());
        state.counters["median_ms"] = times[times.size() / 2];
        state.counters["p99_ms"] = times[times.size() * 99 / 100];
        state.counters["worst_ms"] = times.back();
        state.counters["frames"] = double(times.size());
        state.counters["missed"] =
            double(std::count_if(times.begin(), times.end(), [](double t) { return t > frameMilliseconds; }));
    }

    SheetView view;
    std::vector<double> times;
};

/// `range` pixels a frame: 7 is reading along, 60 a turned wheel, 700 a page at each frame, 20000 a dragged bar.
void scrolling(benchmark::State& state)
{
    ScrolledView scrolled;
    const qint64 pixels = state.range(0);
    for (auto _ : state)
        scrolled.frame(pixels);
    scrolled.report(state);
}
BENCHMARK(scrolling)->Arg(7)->Arg(60)->Arg(700)->Arg(20000)->Unit(benchmark::kMillisecond)->Iterations(600);

/// Beside reading the file: what is known of the sheet before it is first shown.
void openTheSheet(benchmark::State& state)
{
    ViewedWorkbook workbook(test::writeTemporary(u"Opened.xlsx"_s, bench::largeWorkbook(benchRows, 20)));
    const auto content = workbook.file()->sheet(0);
    for (auto _ : state) {
        const OpenSheet open(std::make_shared<ViewedSheet>(workbook.content(), content));
        benchmark::DoNotOptimize(open.zoom());
    }
}
BENCHMARK(openTheSheet)->Unit(benchmark::kMillisecond);

void jumpToTheEnd(benchmark::State& state)
{
    OpenSheet open(largeSheet());
    open.setSize({1366, 700});
    for (auto _ : state) {
        open.move(Direction::Down, OpenSheet::Step::DataEdge, false);
        open.move(Direction::Up, OpenSheet::Step::DataEdge, false);
    }
}
BENCHMARK(jumpToTheEnd)->Unit(benchmark::kMillisecond);

/// The whole sheet is searched in vain.
void findNothing(benchmark::State& state)
{
    const QString sought = state.range(0) ? u"0.123456789"_s : u"nobody of this name"_s;
    const auto sheet = largeSheet();
    for (auto _ : state)
        benchmark::DoNotOptimize(findText(*sheet, sought, {1, 1}, true));
}
BENCHMARK(findNothing)->ArgName("number")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
