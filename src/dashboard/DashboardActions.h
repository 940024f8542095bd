#pragma once

class QAction;
class QComboBox;
class QMainWindow;
class QMenu;
class QToolBar;

namespace lumivane {

/// The main window's menus, toolbar and the actions in them, named as their entries are. What an action does is
/// connected by its owner.
struct DashboardActions
{
    explicit DashboardActions(QMainWindow& window);

    QMenu* mnuWorkspace = nullptr;
    QAction* mnuWorkspaceNew = nullptr;
    QAction* mnuWorkspaceOpen = nullptr;
    QAction* mnuWorkspaceRename = nullptr;
    QAction* mnuWorkspaceSave = nullptr;
    QAction* mnuWorkspaceSaveAs = nullptr;
    QAction* mnuWorkspaceRefresh = nullptr;
    QAction* mnuWorkspaceDelete = nullptr;
    QAction* mnuWorkspaceWorkbook = nullptr; ///< opens a workbook to select from
    QMenu* mnuWorkspaceRecent = nullptr;     ///< workbooks opened last
    QAction* mnuWorkspacePaste = nullptr;
    QAction* mnuWorkspaceLayout = nullptr;
    QAction* mnuWorkspaceSwitchRepository = nullptr;
    QAction* mnuWorkspaceExit = nullptr;

    QMenu* mnuPanel = nullptr;
    QAction* mnuPanelPicture = nullptr;
    QAction* mnuPanelPaste = nullptr;
    QAction* mnuPanelExcel = nullptr;
    QAction* mnuPanelCustomExcel = nullptr;
    QAction* mnuPanelDrillback = nullptr;
    QAction* mnuPanelDrillbackProperties = nullptr;
    QAction* mnuPanelCaption = nullptr;
    QAction* mnuPanelRange = nullptr;
    QAction* mnuPanelProperties = nullptr;
    QAction* mnuPanelRefresh = nullptr;
    QAction* mnuPanelDelete = nullptr;
    QAction* mnuPanelLayout = nullptr;
    QAction* mnuPanelAutosize = nullptr;
    QAction* mnuPanelZoomToFit = nullptr;
    QAction* mnuPanelCrop = nullptr;
    QAction* mnuPanelCopy = nullptr;
    QAction* mnuPanelMove = nullptr;
    QAction* mnuPanelThresholds = nullptr;

    QMenu* mnuMultiPanel = nullptr; ///< stands in place of mnuPanel in layout mode
    QAction* mnuMultiLayout = nullptr;
    QMenu* mnuMultiAlign = nullptr;
    QAction* mnuAlignLeft = nullptr;
    QAction* mnuAlignRight = nullptr;
    QAction* mnuAlignTop = nullptr;
    QAction* mnuAlignBottom = nullptr;
    QMenu* mnuSameSize = nullptr;
    QAction* mnuSameWidth = nullptr;
    QAction* mnuSameHeight = nullptr;
    QAction* mnuSameBoth = nullptr;

    QMenu* mnuTools = nullptr;
    QAction* mnuToolsOptions = nullptr;
    QAction* mnuToolsImport = nullptr;
    QAction* mnuToolsExport = nullptr;

    QMenu* mnuEdit = nullptr;
    QAction* mnuEditHorizontal = nullptr;
    QAction* mnuEditVertical = nullptr;
    QAction* mnuEditCascade = nullptr;
    QAction* mnuEditIcons = nullptr;

    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpContents = nullptr;
    QAction* mnuHelpLearningGuide = nullptr;
    QAction* mnuHelpWeb = nullptr; ///< only seen where an address is known
    QAction* mnuHelpAbout = nullptr;

    QToolBar* picToolbar = nullptr;
    QComboBox* cmbWorkspaces = nullptr;
    QAction* cmdHelp = nullptr;

private:
    void buildWorkspaceMenu(QMainWindow& window);
    void buildPanelMenu(QMainWindow& window);
    void buildMultiPanelMenu(QMainWindow& window);
    void buildToolsMenu(QMainWindow& window);
    void buildEditMenu(QMainWindow& window);
    void buildHelpMenu(QMainWindow& window);
    void buildToolbar(QMainWindow& window);
};

} // namespace lumivane
