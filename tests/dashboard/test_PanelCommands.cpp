#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "session/modMain.h"

#include <QMdiArea>
#include <QMenu>
#include <QtTest/QTest>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

class PanelCommands : public DashboardFixture
{
protected:
    frmPanel& activate(const QString& caption)
    {
        for (frmPanel* panel : window().panelWindows()) {
            if (panel->windowTitle() == caption) {
                panel->mdiArea()->setActiveSubWindow(panel);
                return *panel;
            }
        }
        throw std::runtime_error("no panel has the caption " + caption.toStdString());
    }
    bool panelMenuEnabled() { return window().menus().mnuPanel->menuAction()->isEnabled(); }
};

TEST_F(PanelCommands, DeletingClosesTheGapInRecordsAndWindows)
{
    storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s, u"Three"_s});
    start();
    activate(u"Two"_s);
    m_user.confirmations = {false, true};

    window().menus().mnuPanelDelete->trigger();
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 3);
    EXPECT_FALSE(window().IsModified);
    EXPECT_EQ(m_user.asked, QStringList{u"You are about to delete the active panel.  You will not be able to undelete."
                                        "\r\nDo you want to continue?"_s});

    window().menus().mnuPanelDelete->trigger();
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"Caption = 'Two'"_s), 0) << "the row goes before any save";
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 2);
    EXPECT_TRUE(window().IsModified);
    EXPECT_FALSE(window().IsBusy);
    EXPECT_EQ(gWorkspace->Panels(2)->Caption, u"Three"_s);
    EXPECT_EQ(activate(u"Three"_s).Index, 2);
    EXPECT_EQ(activate(u"One"_s).Index, 1);
}

TEST_F(PanelCommands, TheDeleteKeyWorksOnThePanelAloneAndTheLastPanelTakesTheMenuAlong)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    frmPanel& panel = activate(u"One"_s);
    m_user.confirmations = {true};
    QApplication::setActiveWindow(&window());

    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_TRUE(m_user.asked.isEmpty()) << "the key was meant for the list";

    panel.widget()->setFocus();
    QTest::keyClick(panel.widget(), Qt::Key_Delete);
    EXPECT_EQ(gWorkspace->NumPanels(), 0);
    EXPECT_FALSE(panelMenuEnabled());

    window().mnuPanelDelete_Click();
    EXPECT_EQ(m_user.asked.size(), 1) << "without a panel there is nothing to ask";
}

} // namespace

} // namespace lumivane::test
