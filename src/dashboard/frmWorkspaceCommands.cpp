#include "dashboard/frmWorkspace.h"

#include "controls/modUtilsControls.h"
#include "dashboard/DashboardArea.h"
#include "dashboard/LoadMark.h"
#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmSaveWorkspace.h"
#include "panel/frmPanel.h"
#include "platform/Checked.h"
#include "platform/Failures.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "repository/modUtilsSQL.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsLog.h"
#include "update/PassReport.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QScopeGuard>
#include <QSignalBlocker>

// The commands that make, open, save and delete dashboards, and the list of dashboards.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// What makes a dashboard in memory the one that is stored.
class StoredIdentity
{
public:
    explicit StoredIdentity(const clsWorkspace& dashboard) : m_name(dashboard.Name), m_id(dashboard.ID)
    {
        for (int i = 1; i <= dashboard.NumPanels(); ++i)
            m_panels.append(dashboard.Panels(i)->ID);
    }
    void giveBackTo(clsWorkspace& dashboard) const
    {
        dashboard.Name = m_name;
        dashboard.ID = m_id;
        for (int i = 1; i <= dashboard.NumPanels(); ++i)
            dashboard.Panels(i)->ID = m_panels[i - 1];
    }

private:
    QString m_name;
    qint32 m_id;
    QList<qint16> m_panels;
};

} // namespace

void frmWorkspace::mnuWorkspaceNew_Click()
{
    command(u"mnuWorkspaceNew_Click"_s, [this] {
        bool OK = false;
        PromptSave(false, OK);
        if (!OK)
            return;
        IsBusy = true;
        ClosePanels();
        leaveLayoutMode();
        gWorkspace = std::make_shared<clsWorkspace>();
        gWorkspace->Name = u"Untitled"_s;
        SetFormCaption(gWorkspace->Name);
        QComboBox& list = *m_actions.cmbWorkspaces;
        {
            const QSignalBlocker filling(list);
            ComboAddItem(list, gWorkspace->Name, 0);
            list.setCurrentIndex(-1);
        }
        list.setCurrentIndex(list.count() - 1);
        m_actions.mnuPanel->menuAction()->setEnabled(false);
        IsModified = true;
        IsBusy = false;
    });
}

void frmWorkspace::mnuWorkspaceOpen_Click()
{
    command(u"mnuWorkspaceOpen_Click"_s, [this] {
        bool OK = false;
        PromptSave(false, OK);
        if (!OK)
            return;
        IsBusy = true;
        frmOpenWorkspace dialog(QString(), this);
        dialog.exec();
        if (dialog.WorkspaceID > 0)
            ComboSelectByData(*m_actions.cmbWorkspaces, dialog.WorkspaceID);
        IsBusy = false;
    });
}

void frmWorkspace::mnuWorkspaceSave_Click()
{
    saveDashboard();
}

frmWorkspace::Saved frmWorkspace::saveDashboard()
{
    Saved saved = Saved::Failed;
    command(u"mnuWorkspaceSave_Click"_s, [&] {
        StorePanelPositions();
        if (gWorkspace->ID > 0)
            saved = Workspace_Save() ? Saved::Yes : Saved::Failed;
        else
            saved = saveUnderNewName(u"SaveAs"_s, true);
    });
    return saved;
}

void frmWorkspace::mnuWorkspaceSaveAs_Click()
{
    command(u"mnuWorkspaceSaveAs_Click"_s, [this] { saveUnderNewName(u"SaveAs"_s, true); });
}

void frmWorkspace::mnuWorkspaceRename_Click()
{
    command(u"mnuWorkspaceRename_Click"_s, [this] { saveUnderNewName(u"Rename"_s, false); });
}

frmWorkspace::Saved frmWorkspace::saveUnderNewName(const QString& Mode, bool asCopy)
{
    IsBusy = true;
    frmSaveWorkspace dialog(Mode, gWorkspace->Name, this);
    dialog.exec();
    if (dialog.WorkspaceName.isEmpty()) {
        IsBusy = false;
        return Saved::Cancelled;
    }
    const StoredIdentity before(*gWorkspace);
    gWorkspace->Name = dialog.WorkspaceName;
    if (asCopy) {
        // All rows are inserted anew, and those of the dashboard it came from stay as they are.
        gWorkspace->ID = 0;
        for (int i = 1; i <= gWorkspace->NumPanels(); ++i)
            gWorkspace->Panels(i)->becomeCopy();
    }
    const auto end = qScopeGuard([&] {
        if (gWorkspace->ID < 1)
            before.giveBackTo(*gWorkspace); // it has no row of its own
        IsBusy = false;
    });
    return Workspace_Save() ? Saved::Yes : Saved::Failed;
}

bool frmWorkspace::Workspace_Save()
{
    IsBusy = true;
    const auto idle = qScopeGuard([this] { IsBusy = false; });
    IsModified = true; // until all of it is stored
    const bool saved = gWorkspace->SaveToDB(gDB);
    if (saved)
        ClearDirty();
    // A dashboard that was stored in part has its row, and so its entry.
    if (saved || (gWorkspace->ID > 0 && m_actions.cmbWorkspaces->findData(gWorkspace->ID) < 0)) {
        SetFormCaption(gWorkspace->Name);
        cmbWorkspaces_Load();
        showInList(gWorkspace->ID);
    }
    return saved;
}

void frmWorkspace::showInList(qint32 WorkspaceID)
{
    const QSignalBlocker standing(m_actions.cmbWorkspaces);
    ComboSelectByData(*m_actions.cmbWorkspaces, WorkspaceID);
}

void frmWorkspace::mnuWorkspaceDelete_Click()
{
    command(u"mnuWorkspaceDelete_Click"_s, [this] {
        if (!ConfirmAction(u"Are you sure you want to delete '"_s + gWorkspace->Name + u"'?"_s))
            return;
        ClearDirty();
        gWorkspace->Delete(gDB);
        QComboBox& list = *m_actions.cmbWorkspaces;
        {
            const QSignalBlocker removing(list);
            list.removeItem(list.currentIndex());
            list.setCurrentIndex(-1);
        }
        m_actions.mnuWorkspaceDelete->setEnabled(list.count() > 0);
        if (list.count() > 0)
            list.setCurrentIndex(0);
        else
            mnuWorkspaceNew_Click();
    });
}

void frmWorkspace::cmbWorkspaces_Load()
{
    QComboBox& list = *m_actions.cmbWorkspaces;
    const QSignalBlocker filling(list);
    list.clear();
    std::shared_ptr<Recordset> rows;
    if (SQL_OpenRecordset(gDB, rows, u"SELECT * FROM LvnSavedWorkspace ORDER BY LastUpdated DESC"_s, true, objectName(),
                          u"cmbWorkspaces_Load"_s)) {
        for (; !rows->EOF_(); rows->MoveNext()) {
            if (!rows->isNull(u"Name"))
                ComboAddItem(list, rows->text(u"Name"), static_cast<qint32>(rows->number(u"ID")));
        }
        rows->Close();
    }
    list.setCurrentIndex(-1);
}

void frmWorkspace::cmbWorkspaces_Click()
{
    command(u"cmbWorkspaces_Click"_s, [this] {
        QComboBox& list = *m_actions.cmbWorkspaces;
        IsBusy = true;
        if (list.currentIndex() < 0 || ComboSelectedData(list) == gWorkspace->ID) {
            IsBusy = false;
            return;
        }
        bool OK = false;
        PromptSave(true, OK);
        if (!OK) {
            showInList(gWorkspace->ID);
            IsBusy = false;
            return;
        }
        IsBusy = true;
        bool loaded = false;
        Workspace_LoadPanels(ComboSelectedData(list), loaded);
        if (loaded)
            ClearDirty();
        SetFormCaption(gWorkspace->Name);
        leaveLayoutMode();
        IsBusy = false;
    });
}

void frmWorkspace::PromptSave(bool FromCombo, bool& OK)
{
    OK = askToSave(FromCombo) == Saved::Yes;
}

frmWorkspace::Saved frmWorkspace::askToSave(bool FromCombo)
{
    if (!gWorkspace || (!AnyPanelDirty() && !IsModified))
        return Saved::Yes;
    if (gWorkspace->Name.isEmpty())
        gWorkspace->Name = u"Untitled"_s;

    QComboBox& list = *m_actions.cmbWorkspaces;
    const qint32 chosen = ComboSelectedData(list);
    switch (prompts().askYesNoCancel(u"Save changes to "_s + gWorkspace->Name + u'?')) {
    case Prompts::Answer::Cancel:
        return Saved::Cancelled;
    case Prompts::Answer::Yes:
        if (const Saved saved = saveDashboard(); saved != Saved::Yes)
            return saved;
        break;
    case Prompts::Answer::No:
        ClearDirty();
        cmbWorkspaces_Load();
        showInList(chosen);
        return Saved::Yes;
    }
    // The list has been rebuilt, and stands on what was saved.
    if (FromCombo)
        showInList(chosen);
    return Saved::Yes;
}

void frmWorkspace::Workspace_LoadPanels(qint32 WorkspaceID, bool& OK)
{
    OK = false;
    IsBusy = true;
    prompts().setPointer(Prompts::Pointer::Hourglass);
    try {
        ClosePanels();
        gWorkspace = std::make_shared<clsWorkspace>();
        gWorkspace->LoadFromDB(WorkspaceID, gDB);
        m_actions.mnuPanel->menuAction()->setEnabled(gWorkspace->NumPanels() >= 1);
        gSources->ClearFlags();
        // Without a host the record stands alone, and the program shows that it has not come to an end.
        JobWorker worker;
        if (!worker)
            return;
        const auto leftOut = gWorkspace->PanelsByID(LoadMark::takeLeftOver(gDB->Name()));
        openPanelWindows(worker.instance(), false, leftOut.get());
        SetFormCaption(gWorkspace->Name);
        OK = true;
        if (leftOut)
            prompts().message(u"The program ended while it loaded panel '"_s + leftOut->Caption +
                                  u"'. This time the dashboard is shown without that panel. It is tried again when "
                                  "the dashboard is loaded the next time."_s,
                              Prompts::Icon::Exclamation);
    } catch (const std::exception& failure) {
        const RuntimeError error = describedFailure(failure);
        LogError(objectName(), u"Workspace_LoadPanels"_s, error.number(), error.description(), true);
    }
    prompts().setPointer(Prompts::Pointer::Default);
    IsBusy = false;
}

void frmWorkspace::openPanelWindows(XLInstance& XLInst, bool Refresh, const clsWorkspacePanel* leftOut)
{
    const PassReport report;
    // Last to first, so that the first panel ends up on top.
    for (qint16 i = gWorkspace->NumPanels(); i >= 1; --i) {
        const auto panel = gWorkspace->Panels(i);
        if (panel && panel->ID >= 1 && panel.get() != leftOut)
            Panel_LoadWindow(XLInst, i, Refresh);
    }
}

void frmWorkspace::Panel_LoadWindow(XLInstance& XLInst, qint16 Index, bool Refresh)
{
    const auto record = gWorkspace->Panels(Index);
    frmPanel* panel = newPanelWindow(Index);
    panel->setPlace(record->pLeft, record->pTop);
    prompts().setPointer(Prompts::Pointer::Hourglass);
    if (loadMarked(*panel, XLInst, Refresh)) {
        panel->IsLoad = true;
        panel->show();
        panel->IsLoad = false;
    } else {
        prompts().setPointer(Prompts::Pointer::Default);
        if (ConfirmAction(u"Unable to load panel with caption '"_s + record->Caption +
                          u"'\r\nDelete this panel from dashboard?"_s))
            Panel_Remove(*panel, true);
        else
            panel->Unload();
    }
    prompts().setPointer(Prompts::Pointer::Default);
}

bool frmWorkspace::loadMarked(frmPanel& panel, XLInstance& XLInst, bool Refresh)
{
    const LoadMark mark(gDB->Name(), gWorkspace->Panels(panel.Index)->ID);
    return panel.Panel_Load(XLInst, Refresh);
}

bool frmWorkspace::Panel_Remove(frmPanel& panel, bool delFromDB)
{
    const qint16 removed = panel.Index;
    gWorkspace->DelPanel(removed, delFromDB);
    if (gWorkspace->NumPanels() < 1)
        m_actions.mnuPanel->menuAction()->setEnabled(false);
    panel.Unload();
    for (frmPanel* other : panelWindows()) {
        if (other->Index >= removed)
            --other->Index;
    }
    return true;
}

void frmWorkspace::ClosePanels()
{
    const QList<frmPanel*> panels = panelWindows();
    for (auto panel = panels.rbegin(); panel != panels.rend(); ++panel)
        (*panel)->Unload();
}

bool frmWorkspace::AnyPanelDirty() const
{
    const QList<frmPanel*> panels = panelWindows();
    return std::any_of(panels.rbegin(), panels.rend(), [](const frmPanel* panel) { return panel->IsDirty; });
}

void frmWorkspace::ClearDirty()
{
    IsModified = false;
    for (frmPanel* panel : panelWindows())
        panel->IsDirty = false;
}

void frmWorkspace::StorePanelPositions()
{
    for (const frmPanel* panel : panelWindows()) {
        const auto record = gWorkspace->Panels(panel->Index);
        if (!record)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        try {
            record->pLeft = toStoredTwips(panel->Left());
            record->pTop = toStoredTwips(panel->Top());
            record->pHeight = toStoredTwips(panel->Height());
            record->pWidth = toStoredTwips(panel->Width());
        } catch (const RuntimeError& error) {
            throw RuntimeError(error.number(), u"Panel '"_s + record->Caption + u"' cannot be stored where it is. "_s +
                                                   error.description());
        }
    }
}

} // namespace lumivane
