#include "dashboard/DashboardFixture.h"
#include "dashboard/frmOpenWorkspace.h"
#include "panel/frmPanel.h"
#include "repository/Database.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QMdiArea>
#include <QMenu>
#include <QPushButton>

using namespace lumivane;
using namespace Qt::StringLiterals;
using Answer = Prompts::Answer;

namespace {

/// On screen: "Morning" with the panels One and Two, of which Two is active. Stored besides: "Evening" with Three.
class CopyMove : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Evening"_s, {u"Three"_s});
        storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s});
        start();
        activate(u"Two"_s);
    }

    void activate(const QString& caption)
    {
        for (frmPanel* panel : window().panelWindows()) {
            if (gWorkspace->Panels(panel->Index)->Caption == caption)
                panel->mdiArea()->setActiveSubWindow(panel);
        }
    }

    /// Runs a command and answers its dialog; empty: by Cancel.
    void run(QAction* command, const QString& target)
    {
        m_offered.clear();
        m_dialogs = 0;
        test::whenShown<frmOpenWorkspace>([this, target](frmOpenWorkspace& dialog) {
            ++m_dialogs;
            auto* source = dialog.findChild<QComboBox*>(u"cmbSource"_s);
            for (int i = 0; i < source->count(); ++i)
                m_offered.append(source->itemText(i));
            source->setCurrentText(target);
            dialog.findChild<QPushButton*>(target.isEmpty() ? u"cmdCancel"_s : u"cmdOK"_s)->click();
        });
        command->trigger();
        EXPECT_EQ(m_dialogs, 1);
        EXPECT_FALSE(window().IsBusy);
    }
    void copyTo(const QString& target) { run(window().menus().mnuPanelCopy, target); }
    void moveTo(const QString& target) { run(window().menus().mnuPanelMove, target); }

    /// The stored panels of a dashboard, by caption.
    QStringList storedOn(const QString& dashboard)
    {
        QStringList captions;
        const QString id = stored(u"SELECT * FROM LvnSavedWorkspace WHERE Name = '"_s + dashboard + u'\'', u"ID"_s);
        const auto rows =
            gDB->OpenRecordset(u"SELECT * FROM LvnSavedPanel WHERE WorkspaceID = "_s + id + u" ORDER BY Caption"_s);
        for (; !rows->EOF_(); rows->MoveNext())
            captions.append(rows->text(u"Caption"));
        return captions;
    }
    QString idOf(const QString& caption)
    {
        return stored(u"SELECT * FROM LvnSavedPanel WHERE Caption = '"_s + caption + u'\'', u"ID"_s);
    }

    QStringList m_offered;
    int m_dialogs = 0;
};

TEST_F(CopyMove, ACopyOnAnotherDashboardIsStoredThereAtOnce)
{
    gWorkspace->Panels(2)->ColWidths = u"A:C=12.5"_s;
    const qint16 id = gWorkspace->Panels(2)->ID;
    gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (3, 2, 2, '>5', 'color', '', '')"_s);
    copyTo(u"Evening"_s);
    EXPECT_EQ(m_offered, (QStringList{u"Morning"_s, u"Evening"_s})) << "newest first, the one on screen too";
    EXPECT_EQ(storedOn(u"Evening"_s), (QStringList{u"Three"_s, u"Two"_s}));
    EXPECT_EQ(storedOn(u"Morning"_s), (QStringList{u"One"_s, u"Two"_s}));
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"Caption = 'Two' AND ColWidths = 'A:C=12.5'"_s), 1);
    EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s, u"PanelID = 4 AND highExp = '>5'"_s), 1);
    EXPECT_EQ(rowCount(u"LvnPanelSource"_s), 2) << "sources are shared";
    EXPECT_EQ(gWorkspace->Panels(2)->ID, id) << "on screen it stays the panel it was";
    EXPECT_EQ(panelCaptions(), (QStringList{u"Two"_s, u"One"_s}));
    EXPECT_FALSE(window().IsModified);
    list().setCurrentText(u"Evening"_s);
    EXPECT_EQ(window().panelWindows().size(), 2);
}

TEST_F(CopyMove, ACopyOnTheSameDashboardIsStoredWithIt)
{
    gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (3, 2, 2, '>5', 'color', '', '')"_s);
    copyTo(u"Morning"_s);
    EXPECT_EQ(panelCaptions(), (QStringList{u"Two"_s, u"One"_s, u"Two"_s}));
    ASSERT_EQ(gWorkspace->NumPanels(), 3);
    EXPECT_EQ(gWorkspace->Panels(3)->ID, 0);
    EXPECT_EQ(window().panelWindows().last()->Index, 3);
    EXPECT_FALSE(window().panelWindows().last()->picture().image.isNull());
    EXPECT_EQ(window().panelWindows().last()->pos(), window().panelWindows().first()->pos());
    EXPECT_TRUE(window().IsModified);
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 3) << "nothing is stored before the dashboard is";

    window().mnuWorkspaceSave_Click();
    EXPECT_EQ(storedOn(u"Morning "_s), (QStringList{u"One"_s, u"Two"_s, u"Two"_s}));
    EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s, u"PanelID = 4"_s), 1);
    EXPECT_EQ(storedOn(u"Evening"_s), QStringList{u"Three"_s});
}

TEST_F(CopyMove, ACopyNotSavedIsGoneOnReload)
{
    copyTo(u"Morning"_s);
    m_user.answers = {Answer::No};
    list().setCurrentText(u"Evening"_s);
    list().setCurrentText(u"Morning"_s);
    EXPECT_EQ(panelCaptions().size(), 2);
    EXPECT_EQ(storedOn(u"Morning"_s), (QStringList{u"One"_s, u"Two"_s}));
}

TEST_F(CopyMove, WithoutAHostACopyHasNoWindowButARecord)
{
    setHostFactory({});
    copyTo(u"Morning"_s);
    EXPECT_EQ(window().panelWindows().size(), 2);
    EXPECT_EQ(gWorkspace->NumPanels(), 3);
    EXPECT_EQ(gWorkspace->Panels(3)->Caption, u"Two"_s);
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
    const QString id = idOf(u"One"_s);
    moveTo(u"Evening"_s);
    EXPECT_EQ(m_offered, QStringList{u"Evening"_s}) << "the one on screen is no target";
    EXPECT_EQ(storedOn(u"Evening"_s), (QStringList{u"One"_s, u"Three"_s}));
    EXPECT_EQ(storedOn(u"Morning"_s), QStringList{u"Two"_s});
    EXPECT_EQ(idOf(u"One"_s), id);
    EXPECT_EQ(panelCaptions(), QStringList{u"Two"_s});
    EXPECT_EQ(window().panelWindows().first()->Index, 1) << "later panels move down one place";
    EXPECT_EQ(gWorkspace->Panels(1)->Caption, u"Two"_s);
    EXPECT_FALSE(window().IsModified) << "it is stored already";

    moveTo(u"Evening"_s);
    EXPECT_FALSE(window().menus().mnuPanel->menuAction()->isEnabled()) << "the last panel is gone";
    EXPECT_EQ(storedOn(u"Evening"_s).size(), 3);
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
