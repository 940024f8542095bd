#include "dashboard/frmWorkspace.h"

#include "controls/modUtilsControls.h"
#include "panel/frmPanel.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "sharing/frmExport.h"
#include "sharing/frmImport.h"
#include "thresholds/frmThresholds.h"

#include <QAction>
#include <QComboBox>

// Commands that reach other projects, and the limits of a panel.

namespace lumivane {

using namespace Qt::StringLiterals;

void frmWorkspace::connectSharing()
{
    connect(m_actions.mnuToolsExport, &QAction::triggered, this, &frmWorkspace::mnuToolsExport_Click);
    connect(m_actions.mnuToolsImport, &QAction::triggered, this, &frmWorkspace::mnuToolsImport_Click);
    connect(m_actions.mnuPanelThresholds, &QAction::triggered, this, &frmWorkspace::mnuPanelThresholds_Click);
}

void frmWorkspace::noPassDuring(const WorkingDialog& dialog)
{
    connect(&dialog, &WorkingDialog::working, this, [this](bool isWorking) { IsBusy = isWorking; });
}

void frmWorkspace::mnuToolsExport_Click()
{
    command(u"mnuToolsExport_Click"_s, [this] {
        frmExport dialog(this);
        noPassDuring(dialog);
        dialog.exec();
    });
}

void frmWorkspace::mnuToolsImport_Click()
{
    command(u"mnuToolsImport_Click"_s, [this] {
        const QString file =
            prompts().openFile({u"Select file to import from"_s, u"All shared files (*.lvds)"_s, QString(), u"lvds"_s});
        if (file.isEmpty())
            return;
        {
            frmImport dialog(this);
            dialog.ImportFile = file;
            noPassDuring(dialog);
            dialog.exec();
        }
        reloadSources();
    });
}

void frmWorkspace::reloadSources()
{
    const auto sources = std::make_shared<clsSources>();
    if (!sources->LoadAll(gDB)) {
        unloadForMissingDatabase();
        return;
    }
    gSources = sources;
    cmbWorkspaces_Load();
    showInList(gWorkspace->ID);
}

void frmWorkspace::mnuPanelThresholds_Click()
{
    command(u"mnuPanelThresholds_Click"_s, [this] {
        const frmPanel* panel = activePanel();
        const auto record = panel && gWorkspace ? gWorkspace->Panels(panel->Index) : nullptr;
        if (!record)
            return;
        IsBusy = true;
        prompts().setPointer(Prompts::Pointer::Hourglass);
        frmThresholds dialog(*record, this);
        prompts().setPointer(Prompts::Pointer::Default);
        const bool stored = dialog.exec() == QDialog::Accepted;
        IsBusy = false;
        if (stored)
            mnuPanelRefresh_Click();
    });
}

} // namespace lumivane
