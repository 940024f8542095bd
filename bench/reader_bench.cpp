#include "bench/LargeWorkbook.h"
#include "bench/ReadingFloor.h"
#include "engine/read/WorkbookFile.h"
#include "support/XlsxWriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <map>

// How near reading a workbook comes to its floor: reading the sheet's bytes once, inflating them through one small
// reused buffer and walking over them once. Run it alone on a quiet machine; only ratios of one run mean anything.

namespace {

using namespace lumivane;
using namespace lumivane::engine;
using bench::seconds;

const QString& workbookFile(int rows, int columns)
{
    static std::map<std::pair<int, int>, QString> files;
    QString& file = files[{rows, columns}];
    if (file.isEmpty())
        file = test::writeTemporary(QStringLiteral("Large.xlsx"), bench::largeWorkbook(rows, columns));
    return file;
}

void Floor(benchmark::State& state)
{
    const QString& path = workbookFile(int(state.range(0)), int(state.range(1)));
    const bench::ReadingFloor floor(path);
    for (auto _ : state)
        benchmark::DoNotOptimize(floor.walk());
}

/// Floor and reading take turns, so that what else the machine does strikes both; the least of each counts.
void Reading(benchmark::State& state)
{
    const QString& path = workbookFile(int(state.range(0)), int(state.range(1)));
    const bench::ReadingFloor below(path);
    double floor = 1e9, reading = 1e9;
    for (auto _ : state) {
        state.PauseTiming();
        const double least = seconds([&] { benchmark::DoNotOptimize(below.walk()); });
        state.ResumeTiming();
        const double whole = seconds([&] { benchmark::DoNotOptimize(WorkbookFile::open(path)->sheet(0)); });
        floor = std::min(floor, least);
        reading = std::min(reading, whole);
    }
    state.counters["floor_ms"] = floor * 1000;
    state.counters["reading_ms"] = reading * 1000;
    state.counters["ratio"] = reading / floor;
}

BENCHMARK(Floor)->Args({200, 12})->Args({5000, 20})->Args({100000, 20})->Unit(benchmark::kMillisecond);
BENCHMARK(Reading)->Args({200, 12})->Args({5000, 20})->Args({100000, 20})->Unit(benchmark::kMillisecond);

/// The most memory that this process ever held, in kB.
QByteArray peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return "unknown";
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed();
    }
    return "unknown";
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 3 && QByteArray(argv[1]) == "--peak") {
        const QByteArray before = peakMemory();
        const auto book = WorkbookFile::open(QString::fromLocal8Bit(argv[2]));
        const auto sheet = book->sheet(0);
        std::printf("peak memory: %s before, %s with %zu cells (%lld bytes of content)\n", before.constData(),
                    peakMemory().constData(), sheet->cells.size(), static_cast<long long>(book->bytes()));
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    // In a process of its own, since this one has held whole workbooks in memory.
    std::fflush(stdout);
    return QProcess::execute(QCoreApplication::applicationFilePath(),
                             {QStringLiteral("--peak"), workbookFile(100000, 20)});
}
