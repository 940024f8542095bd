#include "assist/Drillback.h"
#include "dashboard/DashboardArea.h"
#include "dashboard/frmWorkspace.h"
#include "panel/frmPanel.h"
#include "repository/Database.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"

#include <QAction>
#include <QMenu>

// The commands of the active panel.

namespace lumivane {

using namespace Qt::StringLiterals;

void frmWorkspace::connectPanelCommands()
{
    const DashboardActions& a = m_actions;
    const auto route = [this](QAction* entry, const std::function<void(frmPanel&)>& member) {
        connect(entry, &QAction::triggered, this,
                [this, entry, member] { runPanelCommand(entry->objectName() + u"_Click"_s, member); });
    };
    connect(a.mnuPanelPicture, &QAction::triggered, this, &frmWorkspace::mnuPanelPicture_Click);
    route(a.mnuPanelExcel, &frmPanel::Panel_Launch);
    route(a.mnuPanelCustomExcel, &frmPanel::Panel_LaunchCustom);
    route(a.mnuPanelDrillback, &frmPanel::Panel_Drillback);
    route(a.mnuPanelDrillbackProperties, &frmPanel::Panel_DrillbackProperties);
    route(a.mnuPanelCaption, [](frmPanel& panel) { panel.Panel_Caption(false); });
    route(a.mnuPanelRange, [](frmPanel& panel) { panel.Panel_Range(false); });
    route(a.mnuPanelProperties, [](frmPanel& panel) { panel.Panel_Properties(false); });
    route(a.mnuPanelAutosize, &frmPanel::Panel_Autosize);
    route(a.mnuPanelZoomToFit, &frmPanel::Panel_ZoomToFit);
    route(a.mnuPanelCrop, &frmPanel::Panel_Crop);
    connect(a.mnuPanelDelete, &QAction::triggered, this, &frmWorkspace::mnuPanelDelete_Click);
    m_area->addAction(a.mnuPanelDelete);
    connect(a.mnuPanel, &QMenu::aboutToShow, this, &frmWorkspace::Panel_PrepMenu);
    connect(m_area, &QMdiArea::subWindowActivated, this, &frmWorkspace::Panel_PrepMenu);
}

void frmWorkspace::runPanelCommand(const QString& procedure, const std::function<void(frmPanel&)>& member)
{
    command(procedure, [&] {
        if (frmPanel* panel = activePanel()) {
            IsBusy = true;
            member(*panel);
            IsBusy = false;
        }
    });
    // A switch that was clicked without effect must not stay clicked.
    Panel_PrepMenu();
}

void frmWorkspace::Panel_PrepMenu()
{
    const frmPanel* panel = activePanel();
    const auto record = panel && gWorkspace ? gWorkspace->Panels(panel->Index) : nullptr;
    m_actions.mnuPanelCustomExcel->setEnabled(record && record->IsCustom == u"Y");
    m_actions.mnuPanelRange->setEnabled(record && record->ContentType == u"S");
    m_actions.mnuPanelDrillback->setEnabled(record && HasDrillback(record->SourceID, record->SheetName, gDB));
    tickView();
}

void frmWorkspace::tickView()
{
    const frmPanel* panel = activePanel();
    const auto record = panel && gWorkspace ? gWorkspace->Panels(panel->Index) : nullptr;
    const QString view = record ? record->ViewType : QString();
    m_actions.mnuPanelCrop->setChecked(view == u"C");
    m_actions.mnuPanelZoomToFit->setChecked(view == u"Z");
    m_actions.mnuPanelAutosize->setChecked(record && view != u"C" && view != u"Z");
}

void frmWorkspace::mnuPanelPicture_Click()
{
    // Passes go on behind the file dialog, which may stand open for long.
    command(u"mnuPanelPicture_Click"_s, [this] {
        if (frmPanel* panel = activePanel())
            panel->Panel_BrowsePicture();
    });
    Panel_PrepMenu();
}

void frmWorkspace::panelDoubleClicked()
{
    if (auto* panel = qobject_cast<frmPanel*>(sender()))
        m_area->setActiveSubWindow(panel);
    runPanelCommand(u"picPanel_DblClick"_s, &frmPanel::Panel_Launch);
}

void frmWorkspace::mnuPanelDelete_Click()
{
    runPanelCommand(u"mnuPanelDelete_Click"_s, [this](frmPanel& panel) {
        if (!ConfirmAction(u"You are about to delete the active panel.  You will not be able to undelete.\r\n"
                           "Do you want to continue?"_s))
            return;
        Panel_Remove(panel, true);
        IsModified = true;
    });
}

} // namespace lumivane
