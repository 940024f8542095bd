#include "dashboard/DashboardArea.h"
#include "dashboard/PanelAlignment.h"
#include "dashboard/frmWorkspace.h"
#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QStatusBar>

// Layout mode: panels are no live views then but objects to be lined up.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int coarseNudge = 10; ///< pixels, with Shift

QPoint nudgeDirection(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

void frmWorkspace::connectLayout()
{
    const DashboardActions& a = m_actions;
    for (QAction* toggle : {a.mnuWorkspaceLayout, a.mnuPanelLayout, a.mnuMultiLayout})
        connect(toggle, &QAction::triggered, this, &frmWorkspace::mnuWorkspaceLayout_Click);
    connect(a.mnuAlignLeft, &QAction::triggered, this, &frmWorkspace::mnuAlignLeft_Click);
    connect(a.mnuAlignRight, &QAction::triggered, this, &frmWorkspace::mnuAlignRight_Click);
    connect(a.mnuAlignTop, &QAction::triggered, this, &frmWorkspace::mnuAlignTop_Click);
    connect(a.mnuAlignBottom, &QAction::triggered, this, &frmWorkspace::mnuAlignBottom_Click);
    connect(a.mnuSameWidth, &QAction::triggered, this, &frmWorkspace::mnuSameWidth_Click);
    connect(a.mnuSameHeight, &QAction::triggered, this, &frmWorkspace::mnuSameHeight_Click);
    connect(a.mnuSameBoth, &QAction::triggered, this, &frmWorkspace::mnuSameBoth_Click);

    m_leaveLayout = new QShortcut(Qt::Key_Escape, this);
    connect(m_leaveLayout, &QShortcut::activated, this, &frmWorkspace::leaveLayoutMode);
    m_area->installEventFilter(this);

    m_layoutHint = new QLabel(u"<b>Layout mode</b> – click panels to mark them, move the marked ones with the arrow "
                              "keys, press Esc to leave. Panels are not updated meanwhile."_s);
    m_layoutHint->setObjectName(u"layoutHintLabel"_s);
    m_layoutHint->setContentsMargins(6, 0, 0, 0);
    m_layoutHint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(m_layoutHint, 1);
    showLayoutMode();
}

void frmWorkspace::mnuWorkspaceLayout_Click()
{
    if (EditMode)
        leaveLayoutMode();
    else if (frmPanel* panel = activePanel())
        enterLayoutMode(*panel);
    showLayoutMode(); // the entry that was clicked has changed its own check mark
}

void frmWorkspace::enterLayoutMode(frmPanel& base)
{
    EditMode = true;
    m_marks.setBase(base);
    showLayoutMode();
    base.setFocus(); // for the arrow keys
}

void frmWorkspace::leaveLayoutMode()
{
    if (!EditMode)
        return;
    EditMode = false;
    ClearMarks();
    showLayoutMode();
}

void frmWorkspace::showLayoutMode()
{
    const DashboardActions& a = m_actions;
    // Of the two, the one that is seen has the letter: a menu bar lets hidden menus keep theirs.
    a.mnuPanel->setTitle(EditMode ? u"Panel"_s : u"&Panel"_s);
    a.mnuMultiPanel->setTitle(EditMode ? u"&Panel"_s : u"Panel"_s);
    a.mnuPanel->menuAction()->setVisible(!EditMode);
    a.mnuMultiPanel->menuAction()->setVisible(EditMode);
    for (QAction* toggle : {a.mnuWorkspaceLayout, a.mnuPanelLayout, a.mnuMultiLayout})
        toggle->setChecked(EditMode);
    a.mnuPanelDelete->setEnabled(!EditMode); // its key works without the menu
    m_layoutHint->setVisible(EditMode);
    m_leaveLayout->setEnabled(EditMode);
}

void frmWorkspace::ClearMarks()
{
    m_marks.clear();
}

void frmWorkspace::keepMarks(const std::function<void()>& steps)
{
    if (!EditMode)
        return steps();
    m_marks.keepThrough(steps);
    if (!m_marks.base())
        leaveLayoutMode();
}

void frmWorkspace::changeMarkedPanels(const QString& procedure, const MarkedStep& step)
{
    command(procedure, [&] {
        const frmPanel* base = m_marks.base();
        if (!base)
            return;
        for (frmPanel* panel : m_marks.marked()) {
            const auto record = gWorkspace->Panels(panel->Index);
            if (panel->IsBase || !record)
                continue;
            if (panel->isMinimized())
                panel->showNormal(); // a place is given to what is seen, not to its icon
            step(*panel, *record, *base);
            IsModified = true;
        }
    });
}

void frmWorkspace::mnuAlignLeft_Click()
{
    changeMarkedPanels(u"mnuAlignLeft_Click"_s, alignLeft);
}

void frmWorkspace::mnuAlignRight_Click()
{
    changeMarkedPanels(u"mnuAlignRight_Click"_s, alignRight);
}

void frmWorkspace::mnuAlignTop_Click()
{
    changeMarkedPanels(u"mnuAlignTop_Click"_s, alignTop);
}

void frmWorkspace::mnuAlignBottom_Click()
{
    changeMarkedPanels(u"mnuAlignBottom_Click"_s, alignBottom);
}

void frmWorkspace::mnuSameWidth_Click()
{
    changeMarkedPanels(u"mnuSameWidth_Click"_s, takeWidth);
}

void frmWorkspace::mnuSameHeight_Click()
{
    changeMarkedPanels(u"mnuSameHeight_Click"_s, takeHeight);
}

void frmWorkspace::mnuSameBoth_Click()
{
    changeMarkedPanels(u"mnuSameBoth_Click"_s, takeSize);
}

bool frmWorkspace::eventFilter(QObject* watched, QEvent* event)
{
    // Keys that no part of a panel takes end up at the ground, which would scroll.
    if (watched == m_area && EditMode && event->type() == QEvent::KeyPress &&
        layoutKey(static_cast<const QKeyEvent&>(*event)))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

bool frmWorkspace::layoutKey(const QKeyEvent& key)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (key.key() == Qt::Key_Space && modifiers == Qt::NoModifier && activePanel()) {
        activePanel()->Panel_ToggleMark();
        return true;
    }
    const QPoint direction = nudgeDirection(key.key());
    if (direction.isNull() || (modifiers != Qt::NoModifier && modifiers != Qt::ShiftModifier))
        return false;
    nudgeMarkedPanels(direction * (modifiers == Qt::ShiftModifier ? coarseNudge : 1));
    return true;
}

void frmWorkspace::nudgeMarkedPanels(const QPoint& pixels)
{
    command(u"nudgeMarkedPanels"_s, [&] {
        for (frmPanel* panel : m_marks.marked()) {
            const auto record = gWorkspace->Panels(panel->Index);
            if (panel->isMinimized() || !record)
                continue;
            nudge(*panel, *record, pixels);
            IsModified = true;
        }
    });
}

} // namespace lumivane
