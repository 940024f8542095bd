#include "dashboard/DashboardFixture.h"
#include "dashboard/ProgramWindows.h"
#include "dashboard/frmLogin.h"
#include "panel/frmPanel.h"
#include "repository/ProjectRows.h"
#include "repository/clsPanelSource.h"
#include "session/Startup.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QSignalSpy>

using namespace lumivane;
using namespace Qt::StringLiterals;
using Answer = Prompts::Answer;

namespace {

/// A run on a project with the dashboard "Morning", and a second project with the dashboard "Night".
class SwitchProject : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        const auto first = gDB;
        Database::create(other);
        gDB = Database::open(other, databaseConnect());
        storeDashboard(u"Night"_s, {u"Two"_s});
        gDB = first;
        gSources = std::make_shared<clsSources>();
        storeDashboard(u"Morning"_s, {u"One"_s});
        windows.showWorkspace();
        activate();
    }
    void TearDown() override { windows.unloadWorkspace(); }

    /// What the window system does some time after the window is shown.
    void activate()
    {
        ASSERT_TRUE(windows.workspace());
        windows.workspace()->Form_Activate();
    }
    void login() { windows.workspace()->menus().mnuWorkspaceSwitchRepository->trigger(); }
    QLineEdit& path() { return test::control<QLineEdit>(*windows.login(), u"txtRepository"_s); }
    void press(const QString& button) { test::clickOn(*windows.login(), button); }
    void choose(const QString& file)
    {
        login();
        path().setText(file);
        press(u"cmdOK"_s);
    }
    QString onlyCaption() const { return windows.workspace()->panelWindows().first()->windowTitle(); }
    static void deleteLater() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    static QString leftOf(const QString& project)
    {
        return test::rowsOf(*Database::open(project, databaseConnect()), u"SELECT [Left] FROM LvnSavedPanel"_s)[0];
    }

    const QString other = programFile(u"other.lvdu"_s);
    ProgramWindows windows;
    QSignalSpy ended{&windows, &ProgramWindows::ended};
};

TEST_F(SwitchProject, TheMainWindowIsLoadedAnewOnTheChosenProjectWhichTheNextRunDoesNotTake)
{
    const QPointer<frmWorkspace> before = windows.workspace();
    const auto sources = gSources;
    const auto project = gDB;
    choose(u"  %1 "_s.arg(other));
    activate();
    EXPECT_EQ(onlyCaption(), u"Two"_s);
    EXPECT_NE(gSources, sources);
    EXPECT_FALSE(project->isOpen());
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Default);
    deleteLater();
    EXPECT_FALSE(before) << "the old window is gone";
    EXPECT_FALSE(windows.login());
    EXPECT_EQ(ended.count(), 0) << "the run goes on";

    login();
    EXPECT_EQ(path().text(), other);
    windows.unloadWorkspace();
    ASSERT_TRUE(InitStandard());
    EXPECT_EQ(gDB->Name(), programFile(u"lumivane.lvdu"_s));
}

TEST_F(SwitchProject, TheSameProjectIsNotLoadedAgainUnderAnotherName)
{
    const QString upper = programFile(u"LUMIVANE.lvdu"_s);
    ASSERT_TRUE(QFile::link(gDB->Name(), upper));
    const frmWorkspace* before = windows.workspace();
    const auto project = gDB;
    choose(upper);
    EXPECT_EQ(windows.workspace(), before);
    EXPECT_EQ(gDB, project);
    EXPECT_TRUE(project->isOpen());

    ASSERT_TRUE(QFile::remove(upper) && QFile::copy(gDB->Name(), upper));
    choose(upper);
    EXPECT_EQ(gDB->Name(), upper) << "two files where case counts";
}

TEST_F(SwitchProject, AFileThatIsNoProjectIsToldAndAnotherIsAskedFor)
{
    m_user.files = {other};
    choose(writeFile(u"text.lvdu"_s, "no project"));
    EXPECT_EQ(m_user.shown, QStringList{u"You did not pick a valid project file."_s});
    EXPECT_TRUE(windows.login()->isVisible());
    EXPECT_EQ(path().text(), other) << "to be confirmed";
    EXPECT_EQ(gDB->Name(), programFile(u"lumivane.lvdu"_s));
}

TEST_F(SwitchProject, OutsideASwitchCancelClosesTheProject)
{
    frmLogin dialog(windows);
    dialog.show();
    dialog.reject();
    EXPECT_FALSE(gDB);
}

TEST_F(SwitchProject, UnsavedWorkIsAskedForBeforeAnythingChanges)
{
    const QString ours = gDB->Name();
    const frmWorkspace* before = windows.workspace();
    login();
    before->panelWindows().first()->setPlace(600, 450);
    before->panelWindows().first()->IsDirty = true;
    m_user.answers = {Answer::Cancel, Answer::Yes};
    path().setText(other);
    press(u"cmdOK"_s);
    EXPECT_EQ(m_user.asked, QStringList{u"Save changes to Morning?"_s});
    EXPECT_EQ(gDB->Name(), ours);
    EXPECT_TRUE(gDB->isOpen());
    EXPECT_EQ(windows.workspace(), before);
    EXPECT_EQ(onlyCaption(), u"One"_s);
    EXPECT_EQ(GetDefaultRepository(), QString());
    EXPECT_TRUE(windows.login()->isVisible());

    press(u"cmdOK"_s);
    activate();
    EXPECT_EQ(onlyCaption(), u"Two"_s);
    EXPECT_EQ(leftOf(ours), u"600"_s);
    EXPECT_EQ(leftOf(other), u"150"_s);
}

TEST_F(SwitchProject, AWindowThatIsGoneIsNotActivatedAnyMore)
{
    gDB->Execute(u"DELETE * FROM LvnSavedWorkspace"_s);
    windows.unloadWorkspace();
    windows.showWorkspace(); // would show its tip
    const QPointer<frmWorkspace> shown = windows.workspace();
    windows.unloadWorkspace();
    shown->Form_Activate();
    EXPECT_EQ(shown->menus().cmbWorkspaces->count(), 0);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(SwitchProject, TheRunEndsWithTheMainWindowAlone)
{
    login();
    press(u"cmdCancel"_s);
    EXPECT_EQ(ended.count(), 0);
    login();
    windows.workspace()->close();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_FALSE(windows.login() && windows.login()->isVisible());
}

/// Somebody who chooses another project while a pass lets events run.
class ImpatientUser : public test::ScriptedPrompts
{
public:
    std::function<void()> act;
    void doEvents() override
    {
        if (act)
            std::exchange(act, nullptr)();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(SwitchProject, AWindowWhoseCommandStillRunsOutlivesIt)
{
    ImpatientUser user;
    setPrompts(&user);
    const QPointer<frmWorkspace> before = windows.workspace();
    bool lived = false;
    user.act = [&] {
        choose(other);
        deleteLater();
        lived = !before.isNull();
    };
    gDB->Execute(u"UPDATE LvnPanelSource SET DestFolder = '/nowhere/'"_s);
    gSources = std::make_shared<clsSources>();
    ASSERT_TRUE(gSources->LoadAll(gDB));
    user.folders = {bookPath(QString())};
    before->mnuWorkspaceRefresh_Click();
    EXPECT_FALSE(user.act) << "the command did not let events run";
    EXPECT_TRUE(lived);
    deleteLater();
    EXPECT_FALSE(before);
    setPrompts(&m_user);
}

} // namespace
