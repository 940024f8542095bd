#include "dashboard/frmWorkspace.h"

#include "panel/frmPanel.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modMain.h"
#include "update/PassReport.h"

#include <QLabel>
#include <QPointer>

// The timer's pass over all panels, and the refreshes that the user asks for.

namespace lumivane {

using namespace Qt::StringLiterals;

void frmWorkspace::timerRefresh_Timer()
{
    // A pass comes every frequency + 1 minutes.
    if (TickCount == gRefreshFrequency) {
        TickCount = 0;
        Workspace_CheckUpdates();
    } else {
        ++TickCount;
    }
}

void frmWorkspace::Workspace_CheckUpdates()
{
    if (IsBusy || EditMode)
        return;
    runQuietly([this] {
        const PassReport report;
        gSources->ClearFlags();
        checkPanels();
        m_lastCheck->setText(u"Last check "_s + Clock::now().toString(u"HH:mm"_s));
    });
}

void frmWorkspace::runQuietly(const std::function<void()>& steps)
{
    IsBusy = true;
    prompts().setPointer(Prompts::Pointer::ArrowHourglass);
    try {
        runToItsEnd(steps);
    } catch (const std::exception&) {
        // It ends without a word; the next pass comes soon enough.
    }
    IsBusy = false;
    prompts().setPointer(Prompts::Pointer::Default);
}

void frmWorkspace::checkPanels()
{
    // A folder prompt in the middle lets commands run, which may close windows.
    QList<QPointer<frmPanel>> panels;
    for (frmPanel* panel : panelWindows())
        panels.append(panel);
    for (const QPointer<frmPanel>& panel : panels) {
        if (!panel || !panel->mdiArea())
            continue;
        if (JobWorker worker; worker)
            panel->Panel_Reload(worker.instance());
    }
}

void frmWorkspace::sharpenPanel(frmPanel& panel)
{
    if (IsBusy)
        return; // the next pass sees to it
    runQuietly([&panel] {
        if (JobWorker worker; worker)
            panel.Panel_Sharpen(worker.instance());
    });
}

void frmWorkspace::mnuWorkspaceRefresh_Click()
{
    command(u"mnuWorkspaceRefresh_Click"_s, [this] {
        bool OK = false;
        PromptSave(false, OK);
        if (OK)
            keepMarks([this] { refreshDashboard(); });
    });
}

void frmWorkspace::refreshDashboard()
{
    IsBusy = true;
    prompts().setPointer(Prompts::Pointer::Hourglass);
    ClosePanels();
    gSources->ClearFlags();
    {
        JobWorker worker;
        // Left busy on purpose: passes would find no windows until a later command opens some.
        if (!worker)
            return;
        openPanelWindows(worker.instance(), true);
    }
    ClearDirty();
    prompts().setPointer(Prompts::Pointer::Default);
    IsBusy = false;
}

void frmWorkspace::mnuPanelRefresh_Click()
{
    command(u"mnuPanelRefresh_Click"_s, [this] {
        frmPanel* panel = activePanel();
        if (!panel)
            return;
        IsBusy = true;
        if (panel->IsDirty) {
            bool OK = false;
            PromptSave(false, OK);
            if (!OK) {
                IsBusy = false;
                return;
            }
        }
        refreshActivePanel(*panel);
    });
}

void frmWorkspace::refreshActivePanel(frmPanel& panel)
{
    prompts().setPointer(Prompts::Pointer::Hourglass);
    if (JobWorker worker; worker) {
        const auto record = gWorkspace->Panels(panel.Index);
        const auto source = record ? record->Source() : nullptr;
        if (!source)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        source->ClearFlags();
        panel.Panel_Load(worker.instance(), true);
    }
    prompts().setPointer(Prompts::Pointer::Default);
    IsBusy = false;
}

} // namespace lumivane
