#pragma once

#include "dashboard/DashboardActions.h"
#include "dashboard/LayoutMarks.h"
#include "host/modUtilsExcel.h"

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>

class QKeyEvent;
class QLabel;
class QShortcut;

namespace lumivane {

class DashboardArea;
class WorkingDialog;
class clsWorkspacePanel;
class frmPanel;

/// The main window: the frame around the panels of the dashboard on screen, the owner of all commands and of the timer
/// by which the dashboard keeps itself up to date. A window of its own is kept for each stored panel; windows and
/// records are tied by `frmPanel::Index`.
///
/// A handler is named by its menu entry or control and the event. Each traps its own failure, logs and shows it, and
/// leaves the program as it was.
class frmWorkspace : public QMainWindow
{
    Q_OBJECT

public:
    bool EditMode = false;        ///< layout mode
    bool IsBusy = false;          ///< a command or a pass runs; only the pass looks at it
    bool IsModified = false;      ///< the dashboard has changes that no panel's IsDirty records
    bool IsFirstActivate = false; ///< the work of the first activation is still to do
    qint16 TickCount = 0;         ///< minutes counted
    float ClickX = 0;             ///< where the right button last went on the ground, in twips of the dashboard
    float ClickY = 0;

    explicit frmWorkspace(QWidget* parent = nullptr);
    ~frmWorkspace() override;

    const DashboardActions& menus() const { return m_actions; }
    /// The panel windows in the order in which they were made.
    QList<frmPanel*> panelWindows() const;

    void Form_Activate();
    /// After it has been closed: deletes itself, once no command of it runs any more. A command may let events run, and
    /// another project may be chosen among them.
    void retire();
    void timerRefresh_Timer();

    // Dashboards.
    void mnuWorkspaceNew_Click();
    void mnuWorkspaceOpen_Click();
    void mnuWorkspaceSave_Click();
    void mnuWorkspaceSaveAs_Click();
    void mnuWorkspaceRename_Click();
    void mnuWorkspaceDelete_Click();
    void cmbWorkspaces_Load();
    void cmbWorkspaces_Click();
    void Workspace_LoadPanels(qint32 WorkspaceID, bool& OK);
    /// False when a part of the dashboard could not be stored; it then counts as changed.
    bool Workspace_Save();
    /// OK is false when the dashboard must stay: the user cancelled, gave no name, or it could not be saved.
    /// `FromCombo`: the list already stands on another dashboard.
    void PromptSave(bool FromCombo, bool& OK);

    // Panel windows.
    void Panel_LoadWindow(XLInstance& XLInst, qint16 Index, bool Refresh);
    /// A new panel from what is selected in the user's spreadsheet, where the right button last went on the ground.
    void Panel_New(bool IsCustom);
    void mnuWorkspaceWorkbook_Click();
    void mnuWorkspacePaste_Click();
    void mnuPanelPaste_Click();
    bool Panel_Remove(frmPanel& panel, bool delFromDB);
    void ClosePanels();
    bool AnyPanelDirty() const;
    void ClearDirty();
    void StorePanelPositions();

    // Keeping up to date.
    void mnuWorkspaceRefresh_Click();
    void mnuPanelRefresh_Click();
    void Workspace_CheckUpdates();

    // Commands of the active panel.
    void mnuPanelPicture_Click();
    void mnuPanelDelete_Click();

    // Layout mode: the marked panels are lined up with the base, which stays. Places and sizes stand in windows and
    // records until the dashboard is saved.
    void mnuWorkspaceLayout_Click();
    void mnuAlignLeft_Click();
    void mnuAlignRight_Click();
    void mnuAlignTop_Click();
    void mnuAlignBottom_Click();
    void mnuSameWidth_Click();
    void mnuSameHeight_Click();
    void mnuSameBoth_Click();
    void ClearMarks();

    // The active panel's way to another dashboard: stored there at once. A copy within the dashboard has no row until
    // the dashboard is saved.
    void mnuPanelCopy_Click();
    void mnuPanelMove_Click();

    // Other projects, and limits of a panel.
    void mnuToolsExport_Click();
    void mnuToolsImport_Click();
    void mnuPanelThresholds_Click();

    // The program itself.
    void mnuWorkspaceSwitchRepository_Click();
    void mnuToolsOptions_Click();
    void mnuHelpContents_Click();
    void mnuHelpLearningGuide_Click();
    void mnuHelpWeb_Click();
    void mnuHelpAbout_Click();
    void cmdHelp_Click();

Q_SIGNALS:
    /// The window has been closed for good.
    void unloaded();
    /// The user wants to work with another project; what is on screen is saved, or is not to be.
    void switchRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override; // Form_QueryUnload
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void Form_Load();
    void connectActions();
    void connectPanelCommands();
    void connectSharing();
    void connectPasting();
    void connectSession();
    void fillRecentWorkbooks();
    void openRecentWorkbook(const QString& path);
    void buildStatusBar();
    void explainEmptyDashboard();
    /// False when the window is closed again, for want of a project that can be read.
    bool firstActivation();
    void showTip();
    void unloadForMissingDatabase();
    void reloadSources();
    void noPassDuring(const WorkingDialog& dialog);

    /// Runs a command's steps and traps what they throw.
    void command(const QString& procedure, const std::function<void()>& steps);
    void runToItsEnd(const std::function<void()>& steps);
    enum class Saved { Yes, Cancelled, Failed };
    /// Asks whether changes are to be saved, and does so. Yes where nothing is left to be saved.
    Saved askToSave(bool FromCombo);
    Saved saveDashboard();
    Saved saveUnderNewName(const QString& Mode, bool asCopy);
    /// Stands the list on a dashboard without loading it.
    void showInList(qint32 WorkspaceID);
    /// Runs a command of the active panel, a member of frmPanel or steps with it, with passes held off meanwhile.
    /// Nothing happens without a panel. `procedure` names the entry in the log.
    void runPanelCommand(const QString& procedure, const std::function<void(frmPanel&)>& member);
    void refreshDashboard();
    void refreshActivePanel(frmPanel& panel);
    void checkPanels();
    /// What the timer does, not the user: a failure ends it without a box.
    void runQuietly(const std::function<void()>& steps);
    void sharpenPanel(frmPanel& panel);
    void openPanelWindows(XLInstance& XLInst, bool Refresh, const clsWorkspacePanel* leftOut = nullptr);
    bool loadMarked(frmPanel& panel, XLInstance& XLInst, bool Refresh);

    // Layout mode.
    using MarkedStep = std::function<void(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)>;
    void connectLayout();
    void enterLayoutMode(frmPanel& base);
    void leaveLayoutMode();
    void showLayoutMode();
    void changeMarkedPanels(const QString& procedure, const MarkedStep& step);
    bool layoutKey(const QKeyEvent& key);
    void nudgeMarkedPanels(const QPoint& pixels);
    /// Lets steps that make all windows anew end with the same panels marked.
    void keepMarks(const std::function<void()>& steps);

    /// Opens a file in the spreadsheet in front of the user.
    void showWorkbook(const QString& file);

    // Copying and moving panels.
    void connectCopyMove();
    /// Whether there is a panel, and the user has answered what becomes of unsaved changes.
    bool readyForTransfer();
    /// The dashboard that the user chooses; below 1 for none.
    qint32 askForTarget(const QString& Mode);
    void copyToDashboard(frmPanel& panel, qint32 target);
    void copyWithinDashboard(frmPanel& panel);
    void moveToDashboard(frmPanel& panel, qint32 target);
    QString dashboardName(qint32 WorkspaceID) const;
    void reportTransfer(const QString& text);

    frmPanel* activePanel() const;
    frmPanel* newPanelWindow(qint16 Index);
    void Panel_PrepMenu();
    void tickView(); ///< what of the menu follows each change of a view
    void panelDoubleClicked();
    void SetFormCaption(const QString& Name);
    void showPanelMenu(const QPoint& globalPosition);
    void showWorkspaceMenu(const QPoint& position, const QPoint& globalPosition);

    DashboardActions m_actions;
    DashboardArea* m_area = nullptr;
    LayoutMarks m_marks{[this] { return panelWindows(); }};
    QLabel* m_lastCheck = nullptr;
    QLabel* m_layoutHint = nullptr;
    QShortcut* m_leaveLayout = nullptr;
    QTimer timerRefresh;
    bool m_activating = false;
    int m_running = 0; ///< commands and passes under way, one inside the other
    bool m_retired = false;
};

} // namespace lumivane
