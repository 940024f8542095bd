#include "dashboard/frmWorkspace.h"

#include "controls/modUtilsControls.h"
#include "dashboard/DashboardArea.h"
#include "dashboard/PanelArrangement.h"
#include "dashboard/WindowPlace.h"
#include "panel/Twips.h"
#include "panel/frmPanel.h"
#include "platform/ApplicationInfo.h"
#include "platform/Failures.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "platform/ShownText.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modMain.h"
#include "services/modUtilsLog.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QScopeGuard>
#include <QScrollBar>
#include <QStatusBar>

// Building the window, its first activation and its end. The commands stand in the other files named after the window.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {
constexpr int millisecondsPerTick = 60000;
}

frmWorkspace::frmWorkspace(QWidget* parent) : QMainWindow(parent), m_actions(*this), m_area(new DashboardArea)
{
    setObjectName(u"frmWorkspace"_s);
    setCentralWidget(m_area);
    setAcceptDrops(true);
    buildStatusBar();
    connectActions();
    connectPanelCommands();
    restoreWindowPlace(*this);
    Form_Load();
}

frmWorkspace::~frmWorkspace()
{
    // The ground sends signals for windows that become active while it is taken apart.
    disconnect(m_area, nullptr, this, nullptr);
}

void frmWorkspace::buildStatusBar()
{
    m_lastCheck = new QLabel;
    m_lastCheck->setObjectName(u"lastCheckLabel"_s);
    m_lastCheck->setToolTip(u"When the dashboard last looked for new versions of its workbooks"_s);
    statusBar()->addPermanentWidget(m_lastCheck);
    statusBar()->setSizeGripEnabled(false);
}

void frmWorkspace::connectActions()
{
    const DashboardActions& a = m_actions;
    connect(a.mnuWorkspaceNew, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceNew_Click);
    connect(a.mnuWorkspaceOpen, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceOpen_Click);
    connect(a.mnuWorkspaceSave, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceSave_Click);
    connect(a.mnuWorkspaceSaveAs, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceSaveAs_Click);
    connect(a.mnuWorkspaceRename, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceRename_Click);
    connect(a.mnuWorkspaceDelete, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceDelete_Click);
    connect(a.mnuWorkspaceRefresh, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceRefresh_Click);
    connect(a.mnuWorkspaceExit, &QAction::triggered, this, &QWidget::close);
    connect(a.mnuPanelRefresh, &QAction::triggered, this, &frmWorkspace::mnuPanelRefresh_Click);
    connectSharing();
    connectPasting();
    connectSession();
    connectLayout();
    connectCopyMove();
    explainEmptyDashboard();
    connect(a.mnuEditHorizontal, &QAction::triggered, this, [this] { m_area->tile(tileHorizontally); });
    connect(a.mnuEditVertical, &QAction::triggered, this, [this] { m_area->tile(tileVertically); });
    connect(a.mnuEditCascade, &QAction::triggered, m_area, &DashboardArea::stack);
    connect(a.mnuEditIcons, &QAction::triggered, m_area, &DashboardArea::lineUpIcons);
    connect(a.cmbWorkspaces, &QComboBox::currentIndexChanged, this, &frmWorkspace::cmbWorkspaces_Click);
    connect(m_area, &DashboardArea::menuRequested, this, &frmWorkspace::showWorkspaceMenu);
    connect(&timerRefresh, &QTimer::timeout, this, &frmWorkspace::timerRefresh_Timer);
}

void frmWorkspace::Form_Load()
{
    EditMode = false;
    m_area->setBackground(QColor(gDashboardColor));
    timerRefresh.setInterval(millisecondsPerTick);
    timerRefresh.start();
    TickCount = 0;
    setWindowTitle(applicationTitle());
    gWorkspace = std::make_shared<clsWorkspace>();
    gSources = std::make_shared<clsSources>();
    IsFirstActivate = true;
}

void frmWorkspace::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // Not on activation: a window system without a window manager activates nothing.
    if (!event->spontaneous())
        QTimer::singleShot(0, this, &frmWorkspace::Form_Activate);
}

void frmWorkspace::Form_Activate()
{
    // The tip lets events run, and the window may be activated among them.
    if (!IsFirstActivate || m_activating)
        return;
    m_activating = true;
    command(u"Form_Activate"_s, [this] {
        if (firstActivation() && gWorkspace->ID < 1 && IsFirstActivate)
            showTip();
    });
    m_activating = false;
    IsFirstActivate = false;
}

bool frmWorkspace::firstActivation()
{
    if (!gSources->LoadAll(gDB)) {
        unloadForMissingDatabase();
        return false;
    }
    ClearDirty();
    cmbWorkspaces_Load();
    if (m_actions.cmbWorkspaces->count() == 0)
        mnuWorkspaceNew_Click();
    else
        m_actions.cmbWorkspaces->setCurrentIndex(0);
    return true;
}

void frmWorkspace::unloadForMissingDatabase()
{
    prompts().message(applicationTitle() + u" was unable to use its database. Please contact your administrator to "
                                           "correct the problem."_s,
                      Prompts::Icon::Information);
    close();
}

void frmWorkspace::closeEvent(QCloseEvent* event)
{
    Saved saved = Saved::Failed;
    command(u"Form_QueryUnload"_s, [&] { saved = askToSave(false); });
    if (saved == Saved::Failed && ConfirmAction(u"The dashboard '"_s + gWorkspace->Name.trimmed() +
                                                u"' could not be saved. Do you want to close it all the same and "
                                                "lose its changes?"_s))
        saved = Saved::Yes;
    if (saved != Saved::Yes) {
        event->ignore();
        return;
    }
    storeWindowPlace(*this);
    timerRefresh.stop();
    QMainWindow::closeEvent(event);
    Q_EMIT unloaded();
}

void frmWorkspace::retire()
{
    m_retired = true;
    IsFirstActivate = false; // its activation may still be waiting in the queue
    if (m_running == 0)
        deleteLater();
}

void frmWorkspace::runToItsEnd(const std::function<void()>& steps)
{
    ++m_running;
    const auto end = qScopeGuard([this] {
        if (--m_running == 0 && m_retired)
            deleteLater();
    });
    steps();
}

void frmWorkspace::command(const QString& procedure, const std::function<void()>& steps)
{
    try {
        runToItsEnd(steps);
    } catch (const std::exception& failure) {
        const RuntimeError error = describedFailure(failure);
        IsBusy = false;
        prompts().setPointer(Prompts::Pointer::Default);
        LogError(objectName(), procedure, error.number(), error.description(), true);
    }
}

QList<frmPanel*> frmWorkspace::panelWindows() const
{
    QList<frmPanel*> panels;
    for (QMdiSubWindow* window : m_area->subWindowList(QMdiArea::CreationOrder)) {
        if (auto* panel = qobject_cast<frmPanel*>(window))
            panels.append(panel);
    }
    return panels;
}

frmPanel* frmWorkspace::activePanel() const
{
    return qobject_cast<frmPanel*>(m_area->currentSubWindow());
}

frmPanel* frmWorkspace::newPanelWindow(qint16 Index)
{
    auto* panel = new frmPanel([this] { return EditMode; });
    panel->Index = Index;
    m_area->addSubWindow(panel);
    connect(panel, &frmPanel::viewChanged, this, &frmWorkspace::tickView);
    connect(panel, &frmPanel::doubleClicked, this, &frmWorkspace::panelDoubleClicked);
    connect(panel, &frmPanel::menuRequested, this, &frmWorkspace::showPanelMenu);
    connect(panel, &frmPanel::pictureOutgrown, this, [this, panel] { sharpenPanel(*panel); });
    connect(panel, &frmPanel::placed, this, [this] { IsModified = true; });
    return panel;
}

void frmWorkspace::SetFormCaption(const QString& Name)
{
    setWindowTitle(Name.trimmed().isEmpty() ? applicationTitle() : applicationTitle() + u" - "_s + shownName(Name));
}

void frmWorkspace::showPanelMenu(const QPoint& globalPosition)
{
    if (auto* panel = qobject_cast<frmPanel*>(sender()))
        m_area->setActiveSubWindow(panel);
    Panel_PrepMenu();
    (EditMode ? m_actions.mnuMultiPanel : m_actions.mnuPanel)->popup(globalPosition);
}

void frmWorkspace::showWorkspaceMenu(const QPoint& position, const QPoint& globalPosition)
{
    ClickX = toTwips(position.x() + m_area->horizontalScrollBar()->value());
    ClickY = toTwips(position.y() + m_area->verticalScrollBar()->value());
    m_actions.mnuWorkspace->popup(globalPosition);
}

} // namespace lumivane
