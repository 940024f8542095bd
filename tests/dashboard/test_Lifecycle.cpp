#include "dashboard/DashboardFixture.h"
#include "dashboard/LoadMark.h"
#include "dashboard/frmSaveWorkspace.h"
#include "host/Host.h"
#include "panel/frmPanel.h"
#include "platform/Checked.h"
#include "repository/Database.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modUtilsINI.h"
#include "support/LargeSheets.h"

#include <QWheelEvent>

using namespace lumivane;
using namespace Qt::StringLiterals;
using Answer = Prompts::Answer;

namespace {

using Lifecycle = test::DashboardFixture;

TEST_F(Lifecycle, AProjectThatCannotBeReadEndsTheWindow)
{
    gDB->Close();
    start();
    ASSERT_FALSE(m_user.shown.isEmpty());
    EXPECT_EQ(m_user.shown.last(), u"Lumivane was unable to use its database. Please contact your administrator to "
                                   "correct the problem."_s);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(Lifecycle, EachNewAddsAnEntryAndNoDropsThemAll)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    window().mnuWorkspaceNew_Click();
    window().ClearDirty();
    window().mnuWorkspaceNew_Click();
    EXPECT_EQ(listed(), (QStringList{u"Morning"_s, u"Untitled"_s, u"Untitled"_s}));
    EXPECT_EQ(list().currentIndex(), 2);
    m_user.answers = {Answer::No};
    bool OK = false;
    window().PromptSave(false, OK);
    EXPECT_EQ(listed(), QStringList{u"Morning"_s});
}

// ---- the list ----

class Switching : public Lifecycle
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Morning"_s, {u"One"_s});
        storeDashboard(u"Evening"_s, {u"Two"_s});
        start();
    }
};

TEST_F(Switching, TheChosenDashboardIsLoadedOnceAfterASave)
{
    makeDirty();
    m_user.answers = {Answer::Yes};
    list().setCurrentIndex(1);
    EXPECT_EQ(list().currentText().trimmed(), u"Morning"_s);
    EXPECT_EQ(panelCaptions(), QStringList{u"One"_s});
    EXPECT_EQ(workersStarted(), 1);
}

TEST_F(Switching, AWheelThatPassesOverTheListLoadsNothing)
{
    window().panelWindows().first()->setFocus();
    QWheelEvent wheel({5, 5}, list().mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&list(), &wheel);
    EXPECT_EQ(list().currentIndex(), 0);
}

TEST_F(Switching, WithoutAHostTheRecordIsThereAndTheHourglassStays)
{
    setHostFactory({});
    list().setCurrentIndex(1);
    EXPECT_EQ(gWorkspace->NumPanels(), 1);
    EXPECT_TRUE(window().panelWindows().isEmpty());
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Hourglass);
    EXPECT_FALSE(window().IsBusy);
}

TEST_F(Switching, ADashboardWhoseRowVanishedLoadsEmpty)
{
    gDB->Execute(u"DELETE * FROM LvnSavedWorkspace WHERE Name = 'Morning'"_s);
    list().setCurrentIndex(1);
    EXPECT_EQ(window().windowTitle(), u"Lumivane"_s);
    EXPECT_TRUE(window().panelWindows().isEmpty());
}

// ---- new, save, rename, delete ----

TEST_F(Lifecycle, SaveAsCopiesThresholdsAndTheOldPlaces)
{
    storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s});
    start();
    for (frmPanel* panel : window().panelWindows())
        panel->setPlace(600, 450);
    gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (2, 2, 2, '>5', 'color', '', '')"_s);
    answerName(u"Copy"_s);
    window().mnuWorkspaceSaveAs_Click();
    EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s, u"PanelID = 4"_s), 1);
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"[Left] = 150"_s), 4) << "Save As alone does not look at the windows";
    window().mnuWorkspaceSave_Click();
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"[Left] = 600"_s), 2);
}

TEST_F(Lifecycle, ACancelledNameChangesNothing)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    for (auto save : {&frmWorkspace::mnuWorkspaceSaveAs_Click, &frmWorkspace::mnuWorkspaceRename_Click}) {
        test::whenShown<frmSaveWorkspace>([](frmSaveWorkspace& dialog) { dialog.reject(); });
        (window().*save)();
        EXPECT_EQ(gWorkspace->Name, u"Morning"_s);
        EXPECT_GT(gWorkspace->ID, 0);
        EXPECT_FALSE(window().IsBusy);
    }
}

// ---- what could not be saved ----

class FailedSave : public Lifecycle
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Evening"_s, {u"Two"_s});
        storeDashboard(u"Morning"_s, {u"One"_s});
    }
    /// Answers that changes are to be saved, and whether the window is closed all the same.
    bool close(bool allTheSame)
    {
        m_user.shown.clear();
        m_user.answers = {Answer::Yes};
        m_user.confirmations = {allTheSame};
        return window().close();
    }
};

TEST_F(FailedSave, KeepsTheDashboardUntilItsUserGivesItUp)
{
    start();
    gWorkspace->Panels(1)->SheetName = u"Bob's"_s; // is no text that a statement can hold
    makeDirty();
    m_user.answers = {Answer::Yes};
    list().setCurrentText(u"Evening"_s);
    EXPECT_EQ(panelCaptions(), QStringList{u"One"_s});
    EXPECT_EQ(list().currentText(), u"Morning"_s);
    EXPECT_TRUE(window().AnyPanelDirty());

    EXPECT_FALSE(close(false));
    EXPECT_TRUE(m_user.asked.last().startsWith(u"The dashboard 'Morning' could not be saved."_s));
    EXPECT_TRUE(close(true));
}

TEST_F(FailedSave, NamesThePanelThatStandsTooFarOut)
{
    {
        const test::LargeSheets unlimited;
        start();
        window().panelWindows().first()->setPlace(45000, 450);
    }
    EXPECT_FALSE(close(false));
    ASSERT_EQ(m_user.shown.size(), 1);
    EXPECT_TRUE(m_user.shown[0].contains(u"Panel 'One' cannot be stored where it is."_s));
}

TEST_F(FailedSave, UnderAnotherNameLeavesTheDashboardThatItWas)
{
    start();
    const qint32 id = gWorkspace->ID;
    gDB->Close();
    answerName(u"Copy"_s);
    window().mnuWorkspaceSaveAs_Click();
    EXPECT_EQ(gWorkspace->Name, u"Morning"_s);
    EXPECT_EQ(gWorkspace->ID, id);
    EXPECT_GT(gWorkspace->Panels(1)->ID, 0);
    EXPECT_TRUE(window().IsModified);
}

// ---- panels that do not load ----

TEST_F(Lifecycle, MemoryThatRunsOutEndsTheCommandAlone)
{
    start();
    HostFactory factory = m_library.factory();
    factory.visibleInstance = []() -> std::shared_ptr<Application> { throw std::bad_alloc(); };
    setHostFactory(factory);
    m_user.files = {u"huge.xlsx"_s};
    window().mnuWorkspaceWorkbook_Click();
    ASSERT_EQ(m_user.shown.size(), 1);
    EXPECT_TRUE(m_user.shown[0].contains(u"There is not enough memory for this."_s));
}

TEST_F(Lifecycle, APanelThatEndedTheProgramIsLeftOutOnce)
{
    storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s});
    const int culprit = gWorkspace->Panels(1)->ID;
    const auto captionsAfterTheEnd = [&](const QString& project) {
        const LoadMark mark(project, culprit); // its load has not ended at the next start
        start();
        return panelCaptions();
    };
    EXPECT_EQ(captionsAfterTheEnd(programFile(u"other.lvdu"_s)).size(), 2) << "a panel of another project";
    EXPECT_TRUE(m_user.shown.isEmpty());
    EXPECT_EQ(captionsAfterTheEnd(gDB->Name()), QStringList{u"Two"_s});
    ASSERT_EQ(m_user.shown.size(), 1);
    EXPECT_TRUE(m_user.shown[0].startsWith(u"The program ended while it loaded panel 'One'."_s));
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 2);
    start();
    EXPECT_EQ(panelCaptions().size(), 2);
}

TEST_F(Lifecycle, APanelThatDoesNotLoadGoesWithItsRowOnlyWhenTheUserSaysSo)
{
    storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s, u"Three"_s});
    gDB->Execute(u"UPDATE LvnSavedPanel SET SheetName = 'Daten' WHERE Caption = 'Two'"_s);
    start();
    EXPECT_EQ(m_user.asked,
              QStringList{u"Unable to load panel with caption 'Two'\r\nDelete this panel from dashboard?"_s});
    EXPECT_EQ(panelCaptions(), (QStringList{u"Three"_s, u"One"_s}));
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 3);
    EXPECT_EQ(gWorkspace->NumPanels(), 3);

    m_user.confirmations = {true};
    start();
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s), 2);
    ASSERT_EQ(panelCaptions(), (QStringList{u"Three"_s, u"One"_s}));
    for (const frmPanel* panel : window().panelWindows())
        EXPECT_EQ(gWorkspace->Panels(panel->Index)->Caption, panel->windowTitle());
}

// ---- the end ----

TEST_F(Lifecycle, TheWindowComesBackWhereItWas)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    const QRect place(40, 50, 640, 480);
    window().setGeometry(place);
    window().close();
    start();
    m_window = std::make_unique<frmWorkspace>();
    EXPECT_EQ(window().geometry(), place);
}

TEST_F(Lifecycle, APlaceOnNoScreenOrNoPlaceAtAllIsNotTaken)
{
    for (const QString& text : {u"90000,50,640,480,0"_s, u"40,50,640,480"_s, u"a,b,c,d,e"_s, u"40,50,3,2,0"_s}) {
        SetIniString(GetIniFile(), u"Session"_s, u"Window"_s, text);
        m_window = std::make_unique<frmWorkspace>();
        EXPECT_GE(window().width(), 640) << text.toStdString();
        EXPECT_LT(window().x(), 5000) << text.toStdString();
    }
}

} // namespace
