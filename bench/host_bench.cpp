#include "bench/LargeWorkbook.h"
#include "bench/ReadingFloor.h"
#include "host/embedded/EmbeddedHost.h"
#include "host/modUtilsExcel.h"
#include "support/XlsxWriter.h"

#include <QGuiApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <map>

// What a panel costs: opening its workbook, finding its range and taking its picture. Run it alone on a quiet machine;
// only ratios of one run mean anything.

namespace {

using namespace lumivane;
using namespace lumivane::engine;
using namespace Qt::StringLiterals;

const QString& workbookFile(int rows, int columns)
{
    static std::map<std::pair<int, int>, QString> files;
    QString& file = files[{rows, columns}];
    if (file.isEmpty())
        file = test::writeTemporary(u"Large.xlsx"_s, bench::largeWorkbook(rows, columns));
    return file;
}

const CellArea pictured = *CellArea::parse(u"A1:L30");

/// A sheet that has been read, with all that keeps it open.
struct OpenSheet
{
    explicit OpenSheet(const benchmark::State& state)
        : sheet(application.Open(workbookFile(int(state.range(0)), int(state.range(1))))->ActiveSheet())
    {
        sheet->usedArea();
    }
    ContentCache cache;
    EmbeddedApplication application{cache};
    std::shared_ptr<Worksheet> sheet;
};

/// The whole road of a panel's first picture in a new version, against the floor of reading alone.
void FirstPicture(benchmark::State& state)
{
    const QString& path = workbookFile(int(state.range(0)), int(state.range(1)));
    const bench::ReadingFloor below(path);
    double floor = 1e9, job = 1e9;
    for (auto _ : state) {
        state.PauseTiming();
        const double least = bench::seconds([&] { benchmark::DoNotOptimize(below.walk()); });
        state.ResumeTiming();
        const double whole = bench::seconds([&] {
            ContentCache cache;
            EmbeddedApplication application(cache);
            const auto sheet = application.Open(path)->ActiveSheet();
            benchmark::DoNotOptimize(RealBottomRight(*sheet));
            benchmark::DoNotOptimize(sheet->Find(*CellArea::parse(u"A:A"), {u"absent"_s}));
            benchmark::DoNotOptimize(sheet->CopyPicture(pictured));
        });
        floor = std::min(floor, least);
        job = std::min(job, whole);
    }
    state.counters["floor_ms"] = floor * 1000;
    state.counters["job_ms"] = job * 1000;
    state.counters["ratio"] = job / floor;
}

/// What each further panel of the same workbook costs, an opening of its own included.
void NextPicture(benchmark::State& state)
{
    OpenSheet open(state);
    const QString& path = workbookFile(int(state.range(0)), int(state.range(1)));
    for (auto _ : state) {
        EmbeddedApplication application(open.cache);
        benchmark::DoNotOptimize(application.Open(path)->ActiveSheet()->CopyPicture(pictured));
    }
}

void LastCell(benchmark::State& state)
{
    OpenSheet open(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(RealBottomRight(*open.sheet));
}

void search(benchmark::State& state, const CellArea& area, const QString& what)
{
    OpenSheet open(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(open.sheet->Find(area, {what}));
}

void FindTextInColumn(benchmark::State& state)
{
    search(state, *CellArea::parse(u"A:A"), u"absent"_s);
}

void FindTextOnSheet(benchmark::State& state)
{
    search(state, CellArea::wholeSheet(), u"absent"_s);
}

void FindNumberOnSheet(benchmark::State& state)
{
    search(state, CellArea::wholeSheet(), u"-1,234.56"_s);
}

void FindDateOnSheet(benchmark::State& state)
{
    search(state, CellArea::wholeSheet(), u"2/30/2026"_s);
}

/// The picture of 30 x 12 cells without (0) and with (1) a conditional format of every kind on them.
void ConditionedPicture(benchmark::State& state)
{
    ContentCache cache;
    EmbeddedApplication application(cache);
    const auto sheet =
        application
            .Open(test::writeTemporary(
                u"Marked.xlsx"_s, bench::largeWorkbook(30, 12, state.range(0) ? bench::everyCondition("A1:L30") : "")))
            ->ActiveSheet();
    for (auto _ : state)
        benchmark::DoNotOptimize(sheet->CopyPicture(pictured));
}

/// The first picture of a cell in a column of 100,000 cells without (0) and with (1) a color scale over them.
void ColorScaleAtFirstSight(benchmark::State& state)
{
    const std::string scale =
        "<conditionalFormatting sqref=\"D1:D100000\"><cfRule type=\"colorScale\" priority=\"1\"><colorScale>"
        "<cfvo type=\"min\"/><cfvo type=\"percentile\" val=\"50\"/><cfvo type=\"max\"/><color rgb=\"FFF8696B\"/>"
        "<color rgb=\"FFFFEB84\"/><color rgb=\"FF63BE7B\"/></colorScale></cfRule></conditionalFormatting>";
    ContentCache cache;
    EmbeddedApplication reader(cache);
    const QString path =
        test::writeTemporary(u"Marked.xlsx"_s, bench::largeWorkbook(100000, 12, state.range(0) ? scale : ""));
    const auto kept = reader.Open(path)->ActiveSheet();
    kept->usedArea();
    for (auto _ : state) {
        EmbeddedApplication application(cache);
        benchmark::DoNotOptimize(application.Open(path)->ActiveSheet()->CopyPicture(*CellArea::parse(u"D1:D2")));
    }
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->Args({200, 12})->Args({5000, 20})->Args({100000, 20})->Unit(benchmark::kMillisecond);
}

BENCHMARK(FirstPicture)->Apply(sizes);
BENCHMARK(NextPicture)->Apply(sizes);
BENCHMARK(LastCell)->Apply(sizes);
BENCHMARK(FindTextInColumn)->Apply(sizes);
BENCHMARK(FindTextOnSheet)->Apply(sizes);
BENCHMARK(FindNumberOnSheet)->Apply(sizes);
BENCHMARK(FindDateOnSheet)->Apply(sizes);
BENCHMARK(ConditionedPicture)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ColorScaleAtFirstSight)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
