#include "dashboard/DashboardActions.h"

#include "controls/Look.h"
#include "platform/ApplicationInfo.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

struct EntryText
{
    QString name;
    QString caption; ///< with its mnemonic
    QString icon;    ///< file name without folder and suffix
    QString hint;    ///< shown in the status bar
    QKeySequence shortcut = {};
};

/// The list of dashboards. A wheel that passes over it does not load another one.
class DashboardList : public QComboBox
{
public:
    DashboardList() { setFocusPolicy(Qt::StrongFocus); }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

QAction* addEntry(QMenu& menu, const EntryText& entry)
{
    QAction* action = menu.addAction(dashboardIcon(entry.icon), entry.caption);
    action->setObjectName(entry.name);
    action->setStatusTip(entry.hint);
    action->setShortcut(entry.shortcut);
    return action;
}

QMenu* addSubmenu(QMenu& menu, const QString& name, const QString& caption)
{
    QMenu* submenu = menu.addMenu(caption);
    submenu->setObjectName(name);
    return submenu;
}

/// The same switch in several menus: the first one has the keys, which the others only show.
QAction* addLayoutEntry(QMenu& menu, const QString& name, bool hasKeys)
{
    const QKeySequence keys(Qt::CTRL | Qt::Key_L);
    const QString shownKeys = hasKeys ? QString() : u'\t' + keys.toString(QKeySequence::NativeText);
    QAction* action =
        addEntry(menu, {name, u"&Layout Mode"_s + shownKeys, u"layout"_s,
                        u"Line up panels and give them the same size"_s, hasKeys ? keys : QKeySequence()});
    action->setCheckable(true);
    return action;
}

QMenu* addMenu(QMainWindow& window, const QString& name, const QString& caption)
{
    QMenu* menu = window.menuBar()->addMenu(caption);
    menu->setObjectName(name);
    return menu;
}

void addToolButton(QToolBar& toolbar, QAction& action, const QString& name, const QString& toolTip)
{
    toolbar.addAction(&action);
    QWidget* button = toolbar.widgetForAction(&action);
    button->setObjectName(name);
    button->setAccessibleName(toolTip);
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    action.setToolTip(keys.isEmpty() ? toolTip : toolTip + u" ("_s + keys + u')');
}

} // namespace

DashboardActions::DashboardActions(QMainWindow& window)
{
    buildWorkspaceMenu(window);
    buildPanelMenu(window);
    buildMultiPanelMenu(window);
    buildToolsMenu(window);
    buildEditMenu(window);
    buildHelpMenu(window);
    buildToolbar(window);
}

void DashboardActions::buildWorkspaceMenu(QMainWindow& window)
{
    mnuWorkspace = addMenu(window, u"mnuWorkspace"_s, u"&Dashboard"_s);
    QMenu& menu = *mnuWorkspace;
    mnuWorkspaceNew = addEntry(menu, {u"mnuWorkspaceNew"_s, u"&New"_s, u"new"_s, u"Start an empty dashboard"_s,
                                      QKeySequence(Qt::CTRL | Qt::Key_N)});
    mnuWorkspaceOpen =
        addEntry(menu, {u"mnuWorkspaceOpen"_s, u"&Open..."_s, u"open"_s, u"Open another dashboard of this project"_s,
                        QKeySequence(Qt::CTRL | Qt::Key_O)});
    mnuWorkspaceRename = addEntry(menu, {u"mnuWorkspaceRename"_s, u"Rena&me"_s, u"rename"_s,
                                         u"Save the dashboard under another name"_s, QKeySequence(Qt::Key_F2)});
    menu.addSeparator();
    mnuWorkspaceSave = addEntry(menu, {u"mnuWorkspaceSave"_s, u"&Save"_s, u"save"_s,
                                       u"Save the dashboard with the places and views of its panels"_s,
                                       QKeySequence(Qt::CTRL | Qt::Key_S)});
    mnuWorkspaceSaveAs = addEntry(menu, {u"mnuWorkspaceSaveAs"_s, u"Save &As..."_s, u"save-as"_s,
                                         u"Save a copy of the dashboard under a new name"_s,
                                         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)});
    menu.addSeparator();
    mnuWorkspaceRefresh = addEntry(menu, {u"mnuWorkspaceRefresh"_s, u"&Refresh"_s, u"refresh"_s,
                                          u"Look for new versions of all workbooks and draw every panel anew"_s,
                                          QKeySequence(Qt::Key_F5)});
    mnuWorkspaceDelete = addEntry(menu, {u"mnuWorkspaceDelete"_s, u"&Delete"_s, u"delete"_s,
                                         u"Delete this dashboard and its panels from the project"_s});
    menu.addSeparator();
    mnuWorkspaceWorkbook =
        addEntry(menu, {u"mnuWorkspaceWorkbook"_s, u"Open &Workbook..."_s, u"workbook"_s,
                        u"Show a workbook in a window of its own, to select what a panel is to show"_s,
                        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O)});
    mnuWorkspaceRecent = menu.addMenu(dashboardIcon(u"recent"_s), u"Recent Wor&kbooks"_s);
    mnuWorkspaceRecent->setObjectName(u"mnuWorkspaceRecent"_s);
    mnuWorkspaceRecent->menuAction()->setStatusTip(u"Show one of the workbooks that were opened last"_s);
    mnuWorkspacePaste =
        addEntry(menu, {u"mnuWorkspacePaste"_s, u"&Paste"_s, u"paste"_s,
                        u"Make a panel of what is selected in the workbook"_s, QKeySequence(Qt::CTRL | Qt::Key_V)});
    mnuWorkspaceLayout = addLayoutEntry(menu, u"mnuWorkspaceLayout"_s, true);
    menu.addSeparator();
    mnuWorkspaceSwitchRepository =
        addEntry(menu, {u"mnuWorkspaceSwitchRepository"_s, u"Switch Pro&ject..."_s, u"switch-project"_s,
                        u"Close this project and work with another one"_s});
    menu.addSeparator();
    mnuWorkspaceExit = addEntry(
        menu, {u"mnuWorkspaceExit"_s, u"E&xit"_s, u"exit"_s, u"End the program"_s, QKeySequence(Qt::CTRL | Qt::Key_Q)});
}

void DashboardActions::buildPanelMenu(QMainWindow& window)
{
    mnuPanel = addMenu(window, u"mnuPanel"_s, u"&Panel"_s);
    QMenu& menu = *mnuPanel;
    mnuPanelPicture = addEntry(
        menu, {u"mnuPanelPicture"_s, u"Load P&icture"_s, u"picture"_s, u"Show a picture file in this panel"_s});
    mnuPanelPaste = addEntry(menu, {u"mnuPanelPaste"_s, u"&Paste"_s, u"paste"_s,
                                    u"Make another panel of what is selected in the workbook"_s});
    menu.addSeparator();
    mnuPanelExcel = addEntry(menu, {u"mnuPanelExcel"_s, u"Open &Excel File"_s, u"open-excel"_s,
                                    u"Show the workbook of this panel at its sheet, in the newest version"_s,
                                    QKeySequence(Qt::CTRL | Qt::Key_E)});
    mnuPanelCustomExcel = addEntry(menu, {u"mnuPanelCustomExcel"_s, u"View Perso&nalized File"_s, u"open-excel"_s,
                                          u"Show the copy of the workbook that is prepared for this panel"_s});
    mnuPanelDrillback = addEntry(menu, {u"mnuPanelDrillback"_s, u"&View Data Source"_s, u"view-data-source"_s,
                                        u"Show the data behind the figures, where its source has been defined"_s});
    mnuPanelDrillbackProperties =
        addEntry(menu, {u"mnuPanelDrillbackProperties"_s, u"De&fine Data Source..."_s, u"define-data-source"_s,
                        u"Say which document the data behind the figures comes from"_s});
    // Nothing is kept of such a definition yet, and nothing is shown by it.
    mnuPanelDrillbackProperties->setVisible(false);
    menu.addSeparator();
    mnuPanelCaption =
        addEntry(menu, {u"mnuPanelCaption"_s, u"&Caption..."_s, u"caption"_s,
                        u"Change the text in the title of this panel"_s, QKeySequence(Qt::SHIFT | Qt::Key_F2)});
    mnuPanelRange = addEntry(menu, {u"mnuPanelRange"_s, u"Ran&ge Location..."_s, u"range-location"_s,
                                    u"Say where this panel's range lies in other versions of its workbook"_s});
    mnuPanelProperties = addEntry(menu, {u"mnuPanelProperties"_s, u"File &Updates..."_s, u"file-updates"_s,
                                         u"Say where new versions of this panel's workbook come from"_s});
    mnuPanelThresholds = addEntry(menu, {u"mnuPanelThresholds"_s, u"&Thresholds..."_s, u"thresholds"_s,
                                         u"Mark cells of this panel when their numbers pass a limit"_s});
    menu.addSeparator();
    mnuPanelRefresh =
        addEntry(menu, {u"mnuPanelRefresh"_s, u"&Refresh"_s, u"refresh-panel"_s,
                        u"Draw this panel anew from its workbook"_s, QKeySequence(Qt::SHIFT | Qt::Key_F5)});
    mnuPanelDelete = addEntry(menu, {u"mnuPanelDelete"_s, u"&Delete"_s, u"delete"_s,
                                     u"Take this panel off the dashboard for good"_s, QKeySequence(Qt::Key_Delete)});
    // Only with the focus among the panels: elsewhere the key deletes text.
    mnuPanelDelete->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    menu.addSeparator();
    mnuPanelLayout = addLayoutEntry(menu, u"mnuPanelLayout"_s, false);
    mnuPanelAutosize =
        addEntry(menu, {u"mnuPanelAutosize"_s, u"&Autosize"_s, u"autosize"_s,
                        u"Make the panel as large as its picture"_s, QKeySequence(Qt::CTRL | Qt::Key_1)});
    mnuPanelZoomToFit = addEntry(menu, {u"mnuPanelZoomToFit"_s, u"&Zoom to Fit"_s, u"zoom-to-fit"_s,
                                        u"Stretch the picture over the panel"_s, QKeySequence(Qt::CTRL | Qt::Key_2)});
    mnuPanelCrop = addEntry(menu, {u"mnuPanelCrop"_s, u"Cr&op"_s, u"crop"_s,
                                   u"Show the picture in its own size and scroll where it does not fit"_s,
                                   QKeySequence(Qt::CTRL | Qt::Key_3)});
    for (QAction* view : {mnuPanelAutosize, mnuPanelZoomToFit, mnuPanelCrop})
        view->setCheckable(true);
    menu.addSeparator();
    mnuPanelCopy = addEntry(menu, {u"mnuPanelCopy"_s, u"Cop&y..."_s, u"copy-panel"_s,
                                   u"Put a copy of this panel on a dashboard of your choice"_s});
    mnuPanelMove =
        addEntry(menu, {u"mnuPanelMove"_s, u"&Move..."_s, u"move-panel"_s, u"Take this panel to another dashboard"_s});
    menu.menuAction()->setEnabled(false);
}

void DashboardActions::buildMultiPanelMenu(QMainWindow& window)
{
    mnuMultiPanel = addMenu(window, u"mnuMultiPanel"_s, u"&Multi Panel"_s);
    mnuMultiPanel->menuAction()->setVisible(false);
    mnuMultiLayout = addLayoutEntry(*mnuMultiPanel, u"mnuMultiLayout"_s, false);

    mnuMultiAlign = addSubmenu(*mnuMultiPanel, u"mnuMultiAlign"_s, u"&Align"_s);
    mnuAlignLeft = addEntry(*mnuMultiAlign, {u"mnuAlignLeft"_s, u"&Lefts"_s, u"align-left"_s,
                                             u"Put the left edges of the marked panels in line with that of the base"_s,
                                             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Left)});
    mnuAlignRight =
        addEntry(*mnuMultiAlign, {u"mnuAlignRight"_s, u"&Rights"_s, u"align-right"_s,
                                  u"Put the right edges of the marked panels in line with that of the base"_s,
                                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Right)});
    mnuMultiAlign->addSeparator();
    mnuAlignTop = addEntry(*mnuMultiAlign, {u"mnuAlignTop"_s, u"&Tops"_s, u"align-top"_s,
                                            u"Put the top edges of the marked panels in line with that of the base"_s,
                                            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up)});
    mnuAlignBottom =
        addEntry(*mnuMultiAlign, {u"mnuAlignBottom"_s, u"&Bottoms"_s, u"align-bottom"_s,
                                  u"Put the bottom edges of the marked panels in line with that of the base"_s,
                                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down)});

    mnuSameSize = addSubmenu(*mnuMultiPanel, u"mnuSameSize"_s, u"&Make Same Size"_s);
    mnuSameWidth = addEntry(*mnuSameSize, {u"mnuSameWidth"_s, u"&Width"_s, u"same-width"_s,
                                           u"Make the marked panels as wide as the base"_s,
                                           QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W)});
    mnuSameHeight = addEntry(*mnuSameSize, {u"mnuSameHeight"_s, u"&Height"_s, u"same-height"_s,
                                            u"Make the marked panels as high as the base"_s,
                                            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H)});
    mnuSameBoth = addEntry(*mnuSameSize, {u"mnuSameBoth"_s, u"&Both"_s, u"same-both"_s,
                                          u"Make the marked panels as wide and as high as the base"_s,
                                          QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_B)});
}

void DashboardActions::buildToolsMenu(QMainWindow& window)
{
    mnuTools = addMenu(window, u"mnuTools"_s, u"&Tools"_s);
    mnuToolsOptions = addEntry(*mnuTools, {u"mnuToolsOptions"_s, u"&Options"_s, u"options"_s,
                                           u"Captions, background, and how often new versions are looked for"_s,
                                           QKeySequence(Qt::CTRL | Qt::Key_Comma)});
    mnuTools->addSeparator();
    mnuToolsImport = addEntry(*mnuTools, {u"mnuToolsImport"_s, u"&Import Dashboards..."_s, u"import"_s,
                                          u"Bring dashboards of a shared file into this project"_s});
    mnuToolsExport = addEntry(*mnuTools, {u"mnuToolsExport"_s, u"&Export Dashboards..."_s, u"export"_s,
                                          u"Write dashboards into a file that others can import"_s});
}

void DashboardActions::buildEditMenu(QMainWindow& window)
{
    mnuEdit = addMenu(window, u"mnuEdit"_s, u"&Window"_s);
    QMenu& menu = *mnuEdit;
    mnuEditHorizontal = addEntry(menu, {u"mnuEditHorizontal"_s, u"Tile &Horizontally"_s, u"tile-horizontal"_s,
                                        u"Lay the panels out below each other"_s});
    mnuEditVertical = addEntry(menu, {u"mnuEditVertical"_s, u"Tile &Vertically"_s, u"tile-vertical"_s,
                                      u"Lay the panels out beside each other"_s});
    mnuEditCascade = addEntry(menu, {u"mnuEditCascade"_s, u"&Cascade"_s, u"cascade"_s,
                                     u"Stack the panels so that all captions can be seen"_s});
    mnuEditIcons = addEntry(menu, {u"mnuEditIcons"_s, u"&Arrange Icons"_s, u"arrange-icons"_s,
                                   u"Line up minimized panels along the bottom"_s});
}

void DashboardActions::buildHelpMenu(QMainWindow& window)
{
    mnuHelp = addMenu(window, u"mnuHelp"_s, u"&Help"_s);
    mnuHelpContents = addEntry(*mnuHelp, {u"mnuHelpContents"_s, u"&Contents..."_s, u"help"_s,
                                          u"Show the first page of the help"_s, QKeySequence(Qt::Key_F1)});
    mnuHelpLearningGuide = addEntry(*mnuHelp, {u"mnuHelpLearningGuide"_s, u"&Learning Guide..."_s, u"guide"_s,
                                               u"Open the guide that leads through a first dashboard"_s});
    mnuHelpWeb = addEntry(
        *mnuHelp, {u"mnuHelpWeb"_s, u"&Visit Web Site..."_s, u"web"_s, u"Open the product's pages in the browser"_s});
    mnuHelp->addSeparator();
    mnuHelpAbout = addEntry(*mnuHelp, {u"mnuHelpAbout"_s, u"&About "_s + applicationTitle() + u"..."_s, u"about"_s,
                                       u"Version and purpose of the program"_s});
}

void DashboardActions::buildToolbar(QMainWindow& window)
{
    picToolbar = window.addToolBar(u"Toolbar"_s);
    picToolbar->setObjectName(u"picToolbar"_s);
    picToolbar->setMovable(false);
    picToolbar->setIconSize(QSize(22, 22));
    picToolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolButton(*picToolbar, *mnuWorkspaceNew, u"cmdWorkspaceNew"_s, u"New Dashboard"_s);
    addToolButton(*picToolbar, *mnuWorkspaceSave, u"cmdWorkspaceSave"_s, u"Save Dashboard"_s);
    addToolButton(*picToolbar, *mnuWorkspaceRefresh, u"cmdWorkspaceRefresh"_s, u"Refresh Dashboard"_s);
    addToolButton(*picToolbar, *mnuWorkspaceWorkbook, u"cmdWorkspaceWorkbook"_s, u"Open Workbook"_s);
    addToolButton(*picToolbar, *mnuWorkspacePaste, u"cmdWorkspacePaste"_s, u"Paste"_s);
    picToolbar->addSeparator();

    cmbWorkspaces = new DashboardList;
    cmbWorkspaces->setObjectName(u"cmbWorkspaces"_s);
    cmbWorkspaces->setToolTip(u"Open Workspace"_s);
    cmbWorkspaces->setStatusTip(u"The dashboard on screen; choose another one to switch"_s);
    cmbWorkspaces->setAccessibleName(u"Dashboard"_s);
    cmbWorkspaces->setMinimumWidth(280);
    cmbWorkspaces->setMaxVisibleItems(20);
    picToolbar->addWidget(cmbWorkspaces);

    cmdHelp = new QAction(dashboardIcon(u"help"_s), u"Help"_s, &window);
    cmdHelp->setStatusTip(u"Explain the main window"_s);
    addToolButton(*picToolbar, *cmdHelp, u"cmdHelp"_s, u"Help"_s);
}

} // namespace lumivane
