#include "BenchProject.h"
#include "dashboard/frmWorkspace.h"
#include "host/embedded/EmbeddedHost.h"
#include "panel/PanelPicture.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace lumivane;
using namespace lumivane::bench;

namespace {

const QByteArray& fiveThousandRows()
{
    static const QByteArray workbook = benchWorkbook(5000, 20);
    return workbook;
}

/// The window with the project's dashboard loaded, every panel with its picture.
std::unique_ptr<frmWorkspace> openWindow(const BenchProject& project)
{
    auto window = std::make_unique<frmWorkspace>();
    gSources->LoadAll(gDB);
    bool loaded = false;
    window->Workspace_LoadPanels(project.dashboard(), loaded);
    return window;
}

/// Forty panels of twenty workbooks of 5,000 x 20 cells, all of which have a new version: each is read, the ranges are
/// found again and every picture is drawn.
void passWithAllSourcesNew(benchmark::State& state)
{
    BenchProject project(20, 2, Arrival::InPlace, fiveThousandRows());
    const auto window = openWindow(project);
    for (auto _ : state) {
        state.PauseTiming();
        project.deliverAll();
        state.ResumeTiming();
        window->Workspace_CheckUpdates();
    }
    state.counters["panels"] = gWorkspace->NumPanels();
}
BENCHMARK(passWithAllSourcesNew)->Unit(benchmark::kMillisecond);

/// The same forty panels when nothing is new, each source with a folder of a thousand files to look through.
void passWithNothingNew(benchmark::State& state)
{
    BenchProject project(20, 2, Arrival::FromFolder, fiveThousandRows());
    for (int source = 0; source < 20; ++source)
        for (int i = 0; i < 1000; ++i) {
            QFile old(project.incomingFolder(source) + u"/Report %1.xlsx"_s.arg(i));
            if (!old.open(QIODevice::WriteOnly) ||
                !old.setFileTime(QDateTime::currentDateTime().addDays(-30), QFileDevice::FileModificationTime))
                state.SkipWithError("the folder cannot be filled");
        }
    const auto window = openWindow(project);
    for (auto _ : state)
        window->Workspace_CheckUpdates();
}
BENCHMARK(passWithNothingNew)->Unit(benchmark::kMillisecond);

/// A dashboard of a hundred panels that all have their pictures in the cache.
void openCachedDashboard(benchmark::State& state)
{
    BenchProject project(20, 5, Arrival::InPlace, fiveThousandRows());
    const auto window = openWindow(project);
    for (auto _ : state) {
        window->ClosePanels();
        bool loaded = false;
        window->Workspace_LoadPanels(project.dashboard(), loaded);
        QApplication::processEvents();
    }
}
BENCHMARK(openCachedDashboard)->Unit(benchmark::kMillisecond);

/// What the hundred pictures alone cost: the floor of the benchmark above.
void decodeCachedPictures(benchmark::State& state)
{
    BenchProject project(20, 5, Arrival::InPlace, fiveThousandRows());
    const auto window = openWindow(project);
    for (auto _ : state)
        for (int i = 1; i <= gWorkspace->NumPanels(); ++i)
            benchmark::DoNotOptimize(loadCachedPicture(panelPictureFile(gWorkspace->Panels(i)->ID)));
}
BENCHMARK(decodeCachedPictures)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    setHostFactory({makeEmbeddedWorker, [] { return nullptr; }});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
