#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmWorkspace.h"
#include "panel/frmPanel.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QComboBox>
#include <QStatusBar>
#include <algorithm>

// A panel's way to another dashboard, or to this one once more. Both work on stored rows, hence the save prompt first.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {
constexpr int transferMessageTime = 8000; ///< milliseconds in the status bar
}

void frmWorkspace::connectCopyMove()
{
    connect(m_actions.mnuPanelCopy, &QAction::triggered, this, &frmWorkspace::mnuPanelCopy_Click);
    connect(m_actions.mnuPanelMove, &QAction::triggered, this, &frmWorkspace::mnuPanelMove_Click);
}

void frmWorkspace::mnuPanelCopy_Click()
{
    command(u"mnuPanelCopy_Click"_s, [this] {
        if (!readyForTransfer())
            return;
        IsBusy = true;
        const qint32 target = askForTarget(u"Copy"_s);
        frmPanel* panel = activePanel();
        if (target > 0 && panel) {
            if (target == gWorkspace->ID)
                copyWithinDashboard(*panel);
            else
                copyToDashboard(*panel, target);
        }
        IsBusy = false;
    });
}

void frmWorkspace::mnuPanelMove_Click()
{
    command(u"mnuPanelMove_Click"_s, [this] {
        if (!readyForTransfer())
            return;
        IsBusy = true;
        const qint32 target = askForTarget(u"Move"_s);
        frmPanel* panel = activePanel();
        if (target > 0 && target != gWorkspace->ID && panel)
            moveToDashboard(*panel, target);
        IsBusy = false;
    });
}

bool frmWorkspace::readyForTransfer()
{
    bool OK = false;
    if (activePanel())
        PromptSave(false, OK);
    return OK;
}

qint32 frmWorkspace::askForTarget(const QString& Mode)
{
    frmOpenWorkspace dialog(Mode, this);
    dialog.exec();
    return dialog.WorkspaceID;
}

void frmWorkspace::copyToDashboard(frmPanel& panel, qint32 target)
{
    const auto record = gWorkspace->Panels(panel.Index);
    // Stored as a new row; what is on screen stays the panel it was, whatever comes of it.
    clsWorkspacePanel copy = *record;
    copy.becomeCopy();
    if (copy.SaveToDB(gDB, target))
        reportTransfer(
            u"\u201c%1\u201d has been copied to \u201c%2\u201d."_s.arg(record->Caption, dashboardName(target)));
}

void frmWorkspace::copyWithinDashboard(frmPanel& panel)
{
    const auto original = gWorkspace->Panels(panel.Index);
    const qint16 Index = gWorkspace->AddPanel();
    const auto copy = gWorkspace->Panels(Index);
    if (!copy->LoadFromDB(original->ID, gDB)) {
        gWorkspace->DelPanel(Index, false);
        prompts().message(u"Panel '"_s + original->Caption +
                              u"' is not stored in the project yet. Save the dashboard, then copy the panel again."_s,
                          Prompts::Icon::Exclamation);
        return;
    }
    copy->becomeCopy();
    // Without a host the copy has no window, but is stored with the dashboard like any other panel.
    if (JobWorker worker; worker)
        Panel_LoadWindow(worker.instance(), Index, false);
    IsModified = true;
    const QList<frmPanel*> windows = panelWindows();
    if (std::any_of(windows.begin(), windows.end(), [&](const frmPanel* window) { return window->Index == Index; }))
        reportTransfer(u"The copy of \u201c%1\u201d lies on the panel it was made of."_s.arg(original->Caption));
}

void frmWorkspace::moveToDashboard(frmPanel& panel, qint32 target)
{
    const auto record = gWorkspace->Panels(panel.Index);
    if (!record->SaveToDB(gDB, target))
        return;
    Panel_Remove(panel, false);
    reportTransfer(u"\u201c%1\u201d has been moved to \u201c%2\u201d."_s.arg(record->Caption, dashboardName(target)));
}

QString frmWorkspace::dashboardName(qint32 WorkspaceID) const
{
    const QComboBox& list = *m_actions.cmbWorkspaces;
    return list.itemText(list.findData(WorkspaceID)).trimmed();
}

void frmWorkspace::reportTransfer(const QString& text)
{
    statusBar()->showMessage(text, transferMessageTime);
}

} // namespace lumivane
