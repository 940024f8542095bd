#include "host/modUtilsExcel.h"
#include "panel/PanelPipeline.h"
#include "platform/RuntimeError.h"
#include "platform/ShownText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "tools/Commands.h"
#include "tools/DashboardPicture.h"
#include "tools/OpenProject.h"
#include "tools/Output.h"
#include "update/PassReport.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// What a timer's pass does with one panel, in words. A worker of its own serves each panel, as in the program.
QString refreshPanel(const std::shared_ptr<clsWorkspacePanel>& panel, bool& failed)
{
    JobWorker worker;
    if (!worker) {
        failed = true;
        return u"failed: no workbook engine could be started"_s;
    }
    PanelPipeline pipeline;
    const bool drawn = pipeline.Panel_Reload(worker.instance(), panel);
    if (pipeline.problem.isEmpty())
        return drawn ? u"drawn anew"_s : u"unchanged"_s;
    // What is being written is no failure; the next pass comes.
    const auto source = panel->Source();
    if (source && source->IsWaiting && pipeline.problem == source->Problem)
        return u"waiting: "_s + pipeline.problem.simplified();
    failed = true;
    return u"failed: "_s + pipeline.problem.simplified();
}

} // namespace

int refreshCommand(const CommandLine& line)
{
    OpenProject project(line.argument(0), line.option(u"home"_s));
    project.loadDashboard(line.argument(1));
    gSources->ClearFlags();
    bool anyFailed = false;
    const PassReport report;
    for (int i = 1; i <= gWorkspace->NumPanels(); ++i) {
        const auto panel = gWorkspace->Panels(i);
        const QString outcome = refreshPanel(panel, anyFailed);
        printLine(u"%1\t%2\t%3"_s.arg(QString::number(panel->ID), shownName(panel->Caption), outcome));
    }
    return anyFailed ? 1 : 0;
}

int snapshotCommand(const CommandLine& line)
{
    OpenProject project(line.argument(0), line.option(u"home"_s));
    project.loadDashboard(line.argument(1));
    const DashboardPicture picture = drawDashboard();
    writePicture(picture.image, line.argument(2));
    QStringList missing;
    if (!picture.cutPanels.isEmpty())
        missing << u"The picture ends at %1 x %2 pixels, so these panels are not or not wholly on it: %3."_s
                       .arg(picture.image.width())
                       .arg(picture.image.height())
                       .arg(picture.cutPanels.join(u", "_s));
    if (!picture.failedPanels.isEmpty())
        missing << u"No current picture could be had for: %1."_s.arg(picture.failedPanels.join(u", "_s));
    if (!missing.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined, missing.join(u' '));
    return 0;
}

} // namespace lumivane
