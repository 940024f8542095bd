#include "dashboard/DashboardArea.h"
#include "dashboard/frmWorkspace.h"
#include "host/Host.h"
#include "panel/frmPanel.h"
#include "platform/Checked.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QMenu>

// New panels from what the user has selected in their spreadsheet.

namespace lumivane {

using namespace Qt::StringLiterals;

void frmWorkspace::connectPasting()
{
    connect(m_actions.mnuWorkspaceWorkbook, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceWorkbook_Click);
    connect(m_actions.mnuWorkspacePaste, &QAction::triggered, this, &frmWorkspace::mnuWorkspacePaste_Click);
    connect(m_actions.mnuPanelPaste, &QAction::triggered, this, &frmWorkspace::mnuPanelPaste_Click);
}

void frmWorkspace::mnuWorkspaceWorkbook_Click()
{
    command(u"mnuWorkspaceWorkbook_Click"_s, [this] {
        const QString file = prompts().openFile(
            {u"Open workbook"_s, u"Workbooks (*.xlsx *.xlsm *.csv *.tsv *.txt);;All files (*)"_s, QString()});
        if (!file.isEmpty())
            showWorkbook(file);
    });
}

void frmWorkspace::showWorkbook(const QString& file)
{
    const auto& visible = hostFactory().visibleInstance;
    if (!visible)
        return;
    // What is wrong with a file is nothing to log: the user picked it, and reads it in a box.
    try {
        if (const auto instance = visible()) {
            instance->Open(file);
            instance->BringToFront();
        }
    } catch (const RuntimeError& error) {
        prompts().message(error.description(), Prompts::Icon::Exclamation);
    }
}

void frmWorkspace::mnuWorkspacePaste_Click()
{
    command(u"mnuWorkspacePaste_Click"_s, [this] { Panel_New(false); });
}

void frmWorkspace::mnuPanelPaste_Click()
{
    if (activePanel())
        command(u"mnuPanelPaste_Click"_s, [this] { Panel_New(false); });
}

void frmWorkspace::Panel_New(bool IsCustom)
{
    IsBusy = true;
    frmPanel* panel = newPanelWindow(gWorkspace->AddPanel());
    const auto record = gWorkspace->Panels(panel->Index);
    record->pLeft = toStoredTwips(panel->Left());
    record->pTop = toStoredTwips(panel->Top());
    record->IsCustom = IsCustom ? u"Y"_s : u"N"_s;
    if (panel->Panel_Paste()) {
        panel->setPlace(ClickX, ClickY);
        panel->show();
        m_actions.mnuPanel->menuAction()->setEnabled(true);
    } else {
        gWorkspace->DelPanel(panel->Index, false);
        panel->Unload();
        if (gWorkspace->NumPanels() == 0)
            m_actions.mnuPanel->menuAction()->setEnabled(false);
    }
    IsBusy = false;
}

} // namespace lumivane
