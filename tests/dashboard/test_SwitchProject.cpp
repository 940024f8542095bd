#include "dashboard/DashboardFixture.h"
#include "dashboard/ProgramWindows.h"
#include "dashboard/frmLogin.h"
#include "panel/frmPanel.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "session/Startup.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
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
    frmLogin& login()
    {
        windows.workspace()->menus().mnuWorkspaceSwitchRepository->trigger();
        return *windows.login();
    }
    QLineEdit& path() { return *windows.login()->findChild<QLineEdit*>(u"txtRepository"_s); }
    QPushButton& button(const QString& name) { return *windows.login()->findChild<QPushButton*>(name); }
    void choose(const QString& file)
    {
        login();
        path().setText(file);
        button(u"cmdOK"_s).click();
    }
    QStringList captions() const
    {
        QStringList texts;
        for (const frmPanel* panel : windows.workspace()->panelWindows())
            texts.append(panel->windowTitle());
        return texts;
    }
    void makeWindowDirty() { windows.workspace()->panelWindows().first()->IsDirty = true; }
    static QString leftOf(const QString& project)
    {
        return Database::open(project, databaseConnect())
            ->OpenRecordset(u"SELECT * FROM LvnSavedPanel"_s)
            ->text(u"Left");
    }

    const QString other = programFile(u"other.lvdu"_s);
    ProgramWindows windows;
    QSignalSpy ended{&windows, &ProgramWindows::ended};
};

TEST_F(SwitchProject, TheMainWindowIsLoadedAnewOnTheChosenProject)
{
    const QPointer<frmWorkspace> before = windows.workspace();
    const auto sources = gSources;
    const auto project = gDB;
    choose(u"  %1 "_s.arg(other));
    activate();

    EXPECT_NE(windows.workspace(), before);
    EXPECT_EQ(windows.workspace()->windowTitle(), u"Lumivane - Night"_s);
    EXPECT_EQ(captions(), QStringList{u"Two"_s});
    EXPECT_NE(gSources, sources);
    EXPECT_EQ(gDB->Name(), other);
    EXPECT_FALSE(project->isOpen());
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Default);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(before) << "the old window is gone";
    EXPECT_FALSE(windows.login());
    EXPECT_EQ(ended.count(), 0) << "the run goes on";
}

TEST_F(SwitchProject, TheDialogProposesTheProjectChosenLastAndTheNextRunDoesNotTakeIt)
{
    choose(other);
    activate();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(login().windowTitle(), u"Welcome to Lumivane"_s);
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
    EXPECT_FALSE(windows.login() && windows.login()->isVisible());
    EXPECT_EQ(windows.workspace(), before);
    EXPECT_EQ(gDB, project);
    EXPECT_TRUE(project->isOpen());
    EXPECT_EQ(GetDefaultRepository(), QString());

    ASSERT_TRUE(QFile::remove(upper) && QFile::copy(gDB->Name(), upper));
    choose(upper);
    EXPECT_EQ(gDB->Name(), upper) << "two files where case counts";
}

TEST_F(SwitchProject, AFileThatIsNoProjectIsToldAndAnotherIsAskedFor)
{
    const QString text = programFile(u"text.lvdu"_s);
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no project");
    file.close();
    for (const QString& wrong : {text, programFile(u"none.lvdu"_s)}) {
        m_user.shown.clear();
        m_user.asked.clear();
        m_user.files = {other};
        choose(wrong);
        EXPECT_EQ(m_user.shown, QStringList{u"You did not pick a valid project file."_s});
        EXPECT_EQ(m_user.asked, QStringList{u"Select project file"_s});
        EXPECT_TRUE(windows.login()->isVisible());
        EXPECT_EQ(path().text(), other) << "to be confirmed";
        EXPECT_EQ(gDB->Name(), programFile(u"lumivane.lvdu"_s));
    }
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
    const QString ours = programFile(u"lumivane.lvdu"_s);
    const frmWorkspace* before = windows.workspace();
    login();
    before->panelWindows().first()->setPlace(600, 450);
    makeWindowDirty();
    path().setText(other);
    m_user.answers = {Answer::Cancel, Answer::Yes};
    button(u"cmdOK"_s).click();
    EXPECT_EQ(m_user.asked, QStringList{u"Save changes to Morning?"_s});
    EXPECT_EQ(gDB->Name(), ours);
    EXPECT_TRUE(gDB->isOpen());
    EXPECT_EQ(windows.workspace(), before);
    EXPECT_EQ(captions(), QStringList{u"One"_s});
    EXPECT_EQ(GetDefaultRepository(), QString());
    EXPECT_TRUE(windows.login()->isVisible());

    button(u"cmdOK"_s).click();
    EXPECT_EQ(gDB->Name(), other);
    activate();
    EXPECT_EQ(captions(), QStringList{u"Two"_s});
    EXPECT_EQ(leftOf(ours), u"600"_s);
    EXPECT_EQ(leftOf(other), u"150"_s);
    EXPECT_EQ(ended.count(), 0);
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
    button(u"cmdCancel"_s).click();
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
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        lived = !before.isNull();
    };
    gDB->Execute(u"UPDATE LvnPanelSource SET DestFolder = '/nowhere/'"_s);
    gSources = std::make_shared<clsSources>();
    ASSERT_TRUE(gSources->LoadAll(gDB));
    user.folders = {bookPath(QString())};
    before->mnuWorkspaceRefresh_Click();
    EXPECT_FALSE(user.act) << "the command did not let events run";
    EXPECT_TRUE(lived);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(before);
    setPrompts(&m_user);
}

} // namespace
