#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modMain.h"

#include <QAction>

using namespace lumivane;
using namespace Qt::StringLiterals;
using Answer = Prompts::Answer;

namespace {

class Refresh : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s});
        start();
    }

    QString path() const { return bookPath(u"Morning.xlsx"_s); }
    /// Ticks until a pass has run; 0 if none came within `most` ticks.
    int ticksToPass(int most)
    {
        for (int ticks = 1; ticks <= most; ++ticks) {
            const qsizetype before = workersStarted();
            window().timerRefresh_Timer();
            if (workersStarted() > before)
                return ticks;
        }
        return 0;
    }
};

TEST_F(Refresh, APassComesEveryFrequencyPlusOneTicks)
{
    for (const qint16 frequency : {0, 1, 10}) {
        gRefreshFrequency = frequency;
        window().TickCount = 0;
        EXPECT_EQ(ticksToPass(frequency + 2), frequency + 1);
        EXPECT_EQ(ticksToPass(frequency + 2), frequency + 1) << "and again";
    }
}

TEST_F(Refresh, APassDueWhileBusyOrInLayoutModeIsLost)
{
    gRefreshFrequency = 3;
    for (bool frmWorkspace::*flag : {&frmWorkspace::IsBusy, &frmWorkspace::EditMode}) {
        window().TickCount = 3;
        window().*flag = true;
        EXPECT_EQ(ticksToPass(1), 0);
        window().*flag = false;
        EXPECT_EQ(ticksToPass(5), 4) << "the next one comes a whole period later";
    }
}

TEST_F(Refresh, APassStartsAHostForEachPanelAndDrawsNothingWhereNothingIsNew)
{
    window().Workspace_CheckUpdates();
    EXPECT_EQ(m_library.events, (QStringList{u"start"_s, u"quit"_s, u"start"_s, u"quit"_s}));
    EXPECT_FALSE(window().IsBusy);
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Default);
}

TEST_F(Refresh, APassBringsInANewVersionForAllPanelsOfItsSource)
{
    touch(path(), 3600);
    m_library.books[path()].front().put(u"B2"_s, u"999"_s);
    const auto before = window().panelWindows().first()->picture().image;
    window().Workspace_CheckUpdates();
    EXPECT_EQ(openings(path()), 3) << "once to move the ranges, once for each panel";
    EXPECT_NE(window().panelWindows().first()->picture().image, before);
    EXPECT_FALSE(window().AnyPanelDirty());
}

TEST_F(Refresh, APassAsksNothingAboutUnsavedChanges)
{
    makeDirty();
    window().Workspace_CheckUpdates();
    EXPECT_TRUE(m_user.asked.isEmpty());
    EXPECT_TRUE(window().AnyPanelDirty());
}

TEST_F(Refresh, RefreshOfTheDashboardDrawsAllPanelsWithOneHost)
{
    window().mnuWorkspaceRefresh_Click();
    EXPECT_EQ(workersStarted(), 1);
    EXPECT_EQ(openings(path()), 2);
    EXPECT_EQ(panelCaptions(), (QStringList{u"Two"_s, u"One"_s}));
    EXPECT_FALSE(window().IsBusy || window().AnyPanelDirty());
}

TEST_F(Refresh, WithoutAHostTheDashboardStaysClosedAndBusy)
{
    setHostFactory({});
    window().mnuWorkspaceRefresh_Click();
    EXPECT_TRUE(window().panelWindows().isEmpty());
    EXPECT_TRUE(window().IsBusy);
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Hourglass);
}

TEST_F(Refresh, RefreshOfOnePanelLeavesTheOthersAlone)
{
    window().mnuPanelRefresh_Click();
    EXPECT_EQ(openings(path()), 1);
    EXPECT_EQ(workersStarted(), 1);
    EXPECT_FALSE(window().IsBusy);
}

TEST_F(Refresh, RefreshOfOnePanelPromptsOnlyForThatPanel)
{
    const auto panels = window().panelWindows();
    panels.first()->IsDirty = true; // the last one made is the active one
    window().mnuPanelRefresh_Click();
    EXPECT_TRUE(m_user.asked.isEmpty());
    panels.last()->IsDirty = true;
    m_library.events.clear();
    window().mnuPanelRefresh_Click();
    EXPECT_EQ(m_user.asked.size(), 1);
    EXPECT_EQ(openings(path()), 0) << "cancelled";
    EXPECT_FALSE(window().IsBusy);
}

TEST_F(Refresh, AMinimizedPanelKeepsItsSizeWhenItsPictureChanges)
{
    frmPanel& panel = *window().panelWindows().first();
    panel.Panel_Crop();
    panel.resize(333, 222);
    panel.showMinimized();
    const QSize minimized = panel.size();
    touch(path(), 3600);
    window().Workspace_CheckUpdates();
    EXPECT_GT(openings(path()), 0);
    EXPECT_EQ(panel.size(), minimized);
    panel.showNormal();
    EXPECT_EQ(panel.size(), QSize(333, 222));
}

TEST_F(Refresh, ArrangingKeepsSizesOfACascadeAndFillsTheGroundWithTiles)
{
    for (const frmPanel* panel : window().panelWindows())
        gWorkspace->Panels(panel->Index)->ViewType = u"Z"_s;
    window().menus().mnuEditVertical->trigger();
    const auto panels = window().panelWindows();
    EXPECT_EQ(panels[0]->height(), panels[1]->height());
    EXPECT_EQ(panels[0]->geometry().right() + 1, panels[1]->x());
    const QSize tiled = panels[0]->size();
    window().menus().mnuEditCascade->trigger();
    EXPECT_EQ(panels[0]->pos(), QPoint(0, 0));
    EXPECT_EQ(panels[1]->pos(), QPoint(panels[0]->contentsMargins().top(), panels[0]->contentsMargins().top()));
    EXPECT_EQ(panels[0]->size(), tiled);
    EXPECT_TRUE(window().AnyPanelDirty()) << "the new places are worth a prompt";
}

TEST_F(Refresh, ViewCommandsActOnTheActivePanelAndTickIt)
{
    const DashboardActions& actions = window().menus();
    frmPanel* active = window().panelWindows().last();
    const auto record = gWorkspace->Panels(active->Index);
    struct
    {
        QAction* action;
        QString view;
    } const rows[] = {
        {actions.mnuPanelCrop, u"C"_s}, {actions.mnuPanelZoomToFit, u"Z"_s}, {actions.mnuPanelAutosize, u"A"_s}};
    for (const auto& row : rows) {
        ASSERT_TRUE(row.action->isEnabled());
        row.action->trigger();
        EXPECT_EQ(record->ViewType, row.view);
        for (const auto& other : rows)
            EXPECT_EQ(other.action->isChecked(), other.action == row.action) << row.view.toStdString();
    }
    EXPECT_TRUE(active->IsDirty);
    EXPECT_FALSE(window().IsBusy);
}

} // namespace
