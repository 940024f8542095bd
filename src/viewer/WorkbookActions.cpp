#include "viewer/WorkbookActions.h"

#include "viewer/ViewerColors.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QAction* workbookAction(QMainWindow& window, QMenu& menu, const QString& objectName, const QString& text,
                        const QList<QKeySequence>& shortcuts, const QString& hint)
{
    auto* action = new QAction(text, &window);
    action->setObjectName(objectName);
    action->setShortcuts(shortcuts);
    action->setStatusTip(hint);
    if (!shortcuts.isEmpty())
        action->setToolTip(QString(text).remove(u'&').remove(u"..."_s) + u" ("_s +
                           shortcuts.front().toString(QKeySequence::NativeText) + u')');
    menu.addAction(action);
    return action;
}

} // namespace

WorkbookActions::WorkbookActions(QMainWindow& window)
{
    buildFileMenu(window);
    buildEditMenu(window);
    buildViewMenu(window);
    buildToolBar(window);
    applyIcons(window);
}

void WorkbookActions::buildFileMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"&File"_s);
    open = workbookAction(window, menu, u"openAction"_s, u"&Open..."_s, {QKeySequence::Open}, u"Open a workbook"_s);
    recent = menu.addMenu(u"Open &Recent"_s);
    recent->setObjectName(u"recentMenu"_s);
    menu.addSeparator();
    readAgain = workbookAction(window, menu, u"readAgainAction"_s, u"Read &Again"_s, {QKeySequence(Qt::Key_F5)},
                               u"Read the workbook from its file again"_s);
    menu.addSeparator();
    close = workbookAction(window, menu, u"closeAction"_s, u"&Close"_s, {QKeySequence(Qt::CTRL | Qt::Key_W)},
                           u"Close this window"_s);
}

void WorkbookActions::buildEditMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"&Edit"_s);
    copy = workbookAction(window, menu, u"copyAction"_s, u"&Copy"_s, {QKeySequence::Copy},
                          u"Copy the selected cells as text"_s);
    selectAll = workbookAction(window, menu, u"selectAllAction"_s, u"Select &All"_s, {QKeySequence::SelectAll},
                               u"Select the data around the active cell; once more selects the sheet"_s);
    menu.addSeparator();
    find = workbookAction(window, menu, u"findAction"_s, u"&Find..."_s, {QKeySequence::Find},
                          u"Find a text in the sheet"_s);
    findNext = workbookAction(window, menu, u"findNextAction"_s, u"Find &Next"_s, {QKeySequence(Qt::Key_F3)},
                              u"Find the text once more"_s);
    findPrevious = workbookAction(window, menu, u"findPreviousAction"_s, u"Find &Previous"_s,
                                  {QKeySequence(Qt::SHIFT | Qt::Key_F3)}, u"Find the text before this place"_s);
    goTo = workbookAction(window, menu, u"goToAction"_s, u"&Go To..."_s, {QKeySequence(Qt::CTRL | Qt::Key_G)},
                          u"Type an address or a name to go to"_s);
}

void WorkbookActions::buildViewMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"&View"_s);
    freeze = workbookAction(window, menu, u"freezeAction"_s, u"&Freeze Panes"_s, {}, QString());
    freeze->setCheckable(true); // text and hint say what it would do now
    freezeTopRow = workbookAction(window, menu, u"freezeTopRowAction"_s, u"Freeze Top &Row"_s, {},
                                  u"Keep the first row that is seen in place"_s);
    freezeFirstColumn = workbookAction(window, menu, u"freezeFirstColumnAction"_s, u"Freeze First &Column"_s, {},
                                       u"Keep the first column that is seen in place"_s);
    menu.addSeparator();
    zoomIn = workbookAction(window, menu, u"zoomInAction"_s, u"Zoom &In"_s,
                            {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
                            u"Show the cells larger"_s);
    zoomOut = workbookAction(window, menu, u"zoomOutAction"_s, u"Zoom &Out"_s, {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
                             u"Show the cells smaller"_s);
    zoomReset = workbookAction(window, menu, u"zoomResetAction"_s, u"&Actual Size"_s,
                               {QKeySequence(Qt::CTRL | Qt::Key_0)}, u"Show the cells as large as panels do"_s);
    zoom = menu.addMenu(u"&Zoom"_s);
    zoom->setObjectName(u"zoomMenu"_s);
}

void WorkbookActions::buildToolBar(QMainWindow& window)
{
    bar = window.addToolBar(u"Commands"_s);
    bar->setObjectName(u"commandBar"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setIconSize(QSize(20, 20));
    bar->addActions({open, readAgain});
    bar->addSeparator();
    bar->addActions({copy, find, freeze});
    bar->addSeparator();
}

void WorkbookActions::applyIcons(const QWidget& window)
{
    const QPalette colors = window.palette();
    open->setIcon(viewerIcon(u"open"_s, colors));
    readAgain->setIcon(viewerIcon(u"read-again"_s, colors));
    copy->setIcon(viewerIcon(u"copy"_s, colors));
    find->setIcon(viewerIcon(u"find"_s, colors));
    freeze->setIcon(viewerIcon(u"freeze"_s, colors));
}

} // namespace lumivane
