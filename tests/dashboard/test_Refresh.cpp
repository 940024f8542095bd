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

TEST_F(Refresh, APassAsksNothingAndDrawsNothingWhereNothingIsNew)
{
    makeDirty();
    window().Workspace_CheckUpdates();
    EXPECT_TRUE(m_user.asked.isEmpty());
    EXPECT_TRUE(window().AnyPanelDirty());
    EXPECT_EQ(openings(path()), 0);
    EXPECT_FALSE(window().IsBusy);
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Default);
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
    const auto panels = window().panelWindows();
    panels.first()->IsDirty = true; // the last one made is the active one
    window().mnuPanelRefresh_Click();
    EXPECT_TRUE(m_user.asked.isEmpty());
    EXPECT_EQ(openings(path()), 1);
    panels.last()->IsDirty = true;
    window().mnuPanelRefresh_Click();
    EXPECT_EQ(m_user.asked.size(), 1);
    EXPECT_EQ(openings(path()), 1) << "cancelled";
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
    const auto panels = window().panelWindows();
    for (frmPanel* panel : panels)
        gWorkspace->Panels(panel->Index)->ViewType = u"Z"_s;
    window().menus().mnuEditVertical->trigger();
    const QSize tiled = panels[0]->size();
    EXPECT_EQ(panels[1]->geometry(), QRect(QPoint(tiled.width(), 0), tiled));
    window().menus().mnuEditCascade->trigger();
    const int title = panels[0]->contentsMargins().top();
    EXPECT_EQ(panels[0]->geometry(), QRect(QPoint(), tiled));
    EXPECT_EQ(panels[1]->pos(), QPoint(title, title));
    EXPECT_TRUE(window().AnyPanelDirty()) << "the new places are worth a prompt";
}

} // namespace
