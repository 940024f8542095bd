#include "dashboard/DashboardFixture.h"
#include "dashboard/frmOpenWorkspace.h"
#include "panel/frmPanel.h"
#include "repository/Database.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QMenu>

using namespace lumivane;
using namespace Qt::StringLiterals;
using Answer = Prompts::Answer;

namespace {

/// On screen: "Morning" with the panels One and Two, of which Two is active and has a threshold. Stored besides:
/// "Evening" with Three.
class CopyMove : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Evening"_s, {u"Three"_s});
        storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s});
        start();
        activate(u"Two"_s);
        gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (3, 2, 2, '>5', 'color', '', '')"_s);
    }

    void run(QAction* command, const QString& target)
    {
        test::whenShown<frmOpenWorkspace>([target](frmOpenWorkspace& dialog) {
            test::control<QComboBox>(dialog, u"cmbSource"_s).setCurrentText(target);
            test::clickOn(dialog, u"cmdOK"_s);
        });
        command->trigger();
        EXPECT_FALSE(window().IsBusy);
    }
    void copyTo(const QString& target) { run(window().menus().mnuPanelCopy, target); }
    void moveTo(const QString& target) { run(window().menus().mnuPanelMove, target); }

    static constexpr int evening = 1, morning = 2;
    QStringList storedOn(int dashboard) const
    {
        return rows(u"SELECT Caption FROM LvnSavedPanel WHERE WorkspaceID = %1 ORDER BY Caption"_s.arg(dashboard));
    }
};

TEST_F(CopyMove, ACopyOnAnotherDashboardIsStoredThereAtOnce)
{
    gWorkspace->Panels(2)->ColWidths = u"A:C=12.5"_s;
    copyTo(u"Evening"_s);
    EXPECT_EQ(storedOn(evening), (QStringList{u"Three"_s, u"Two"_s}));
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"ID = 4 AND ColWidths = 'A:C=12.5'"_s), 1) << "as it is on screen";
    EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s, u"PanelID = 4 AND highExp = '>5'"_s), 1);
    EXPECT_EQ(gWorkspace->Panels(2)->ID, 3) << "on screen it stays the panel it was";
    EXPECT_FALSE(window().IsModified);
}

TEST_F(CopyMove, ACopyOnTheSameDashboardIsStoredWithIt)
{
    copyTo(u"Morning"_s);
    ASSERT_EQ(gWorkspace->NumPanels(), 3);
    EXPECT_EQ(gWorkspace->Panels(3)->ID, 0);
    const auto panels = window().panelWindows();
    EXPECT_EQ(panels.last()->Index, 3);
    EXPECT_FALSE(panels.last()->picture().image.isNull());
    EXPECT_EQ(panels.last()->pos(), panels.first()->pos());
    EXPECT_TRUE(window().IsModified);
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 3) << "nothing is stored before the dashboard is";

    window().mnuWorkspaceSave_Click();
    EXPECT_EQ(storedOn(morning), (QStringList{u"One"_s, u"Two"_s, u"Two"_s}));
    EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s, u"PanelID = 4"_s), 1);
}

TEST_F(CopyMove, WithoutAHostACopyHasNoWindowButARecord)
{
    setHostFactory({});
    copyTo(u"Morning"_s);
    EXPECT_EQ(window().panelWindows().size(), 2);
    EXPECT_EQ(gWorkspace->NumPanels(), 3);
}

TEST_F(CopyMove, APanelWithoutARowIsNotCopiedWithinItsDashboard)
{
    gDB->Execute(u"DELETE * FROM LvnSavedPanel WHERE Caption = 'Two'"_s);
    copyTo(u"Morning"_s);
    EXPECT_EQ(gWorkspace->NumPanels(), 2);
    EXPECT_FALSE(window().IsModified);
    EXPECT_EQ(m_user.shown, QStringList{u"Panel 'Two' is not stored in the project yet. Save the dashboard, then copy "
                                        "the panel again."_s});
}

TEST_F(CopyMove, AMovedPanelKeepsItsRowAndLeavesTheDashboard)
{
    activate(u"One"_s);
    moveTo(u"Evening"_s);
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"ID = 2 AND Caption = 'One' AND WorkspaceID = 1"_s), 1);
    EXPECT_EQ(storedOn(morning), QStringList{u"Two"_s});
    EXPECT_EQ(window().panelWindows().first()->Index, 1) << "later panels move down one place";
    EXPECT_EQ(gWorkspace->Panels(1)->Caption, u"Two"_s);
    EXPECT_FALSE(window().IsModified) << "it is stored already";

    moveTo(u"Evening"_s);
    EXPECT_FALSE(window().menus().mnuPanel->menuAction()->isEnabled()) << "the last panel is gone";
    EXPECT_EQ(storedOn(evening).size(), 3);
}

TEST_F(CopyMove, AMoveThatCannotBeStoredLeavesThePanel)
{
    gWorkspace->Panels(2)->RelativeTo = u"'"_s; // is no text that a statement can hold
    moveTo(u"Evening"_s);
    EXPECT_EQ(m_user.shown.size(), 1);
    EXPECT_EQ(panelCaptions(), (QStringList{u"Two"_s, u"One"_s}));
    EXPECT_EQ(gWorkspace->NumPanels(), 2);
}

TEST_F(CopyMove, ChangesAreSavedFirstAndCancelEndsTheCommand)
{
    window().IsModified = true;
    window().IsBusy = true;
    window().menus().mnuPanelCopy->trigger();
    window().menus().mnuPanelMove->trigger();
    EXPECT_TRUE(window().IsBusy) << "what else is running is left alone";
    EXPECT_EQ(m_user.asked, QStringList(2, u"Save changes to Morning?"_s));
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 3);

    gWorkspace->Panels(2)->Comments = u"changed"_s;
    m_user.answers = {Answer::Yes};
    copyTo(u"Evening"_s);
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"Comments = 'changed'"_s), 2);
}

} // namespace
