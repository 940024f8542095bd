#include "platform/Checked.h"
#include "repository/Database.h"
#include "repository/OtherProgram.h"
#include "services/ProgramFolder.h"
#include "services/modMain.h"
#include "services/modUtilsINI.h"
#include "session/ProjectUse.h"
#include "session/Startup.h"

#include <QFileInfo>
#include <QSysInfo>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

class StartUp : public ProgramFolder
{
protected:
    ~StartUp() override
    {
        gDB.reset();
        setLargeSheets(false);
    }

    const QString project = path(u"lumivane.lvdu"_s);
    const QString secondBox =
        u"Error occurred during initialization of Lumivane.\r\nIf this occurred right after install, try re-running "
        "the application \r\nby clicking on the icon in the desktop or via the Start menu."_s;
};

TEST_F(StartUp, OpensTheProjectBesideTheProgram)
{
    Database::create(project);
    EXPECT_TRUE(Main_Start());
    ASSERT_TRUE(gDB);
    EXPECT_TRUE(logged().contains(u"[Utils.InitRepository]: opened database at %1\r\n"_s.arg(project).toUtf8()));
    for (int i = 0; i < 2; ++i)
        Main_Exit();
    EXPECT_FALSE(gDB);
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(StartUp, ANewProgramFolderIsFurnished)
{
    setProgramFolder(path(u"share/lumivane"_s));
    EXPECT_TRUE(Main_Start());
    EXPECT_TRUE(QFileInfo(path(u"share/lumivane/lumivane.lvdu"_s)).isFile());
    EXPECT_TRUE(gLogToFile);
    EXPECT_EQ(read(GetIniFile()), "[Settings]\nLarge Sheets=1\n");
    EXPECT_TRUE(largeSheets());
}

TEST_F(StartUp, AFullDiskLeavesNoFolderThatLocksTheUserOut)
{
    setProgramFolder(path(u"share/lumivane"_s));
    gLogToFile = false;
    signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{4096, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_FALSE(Main_Start());
    setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_EQ(user.shown.size(), 3);
    EXPECT_TRUE(user.shown[0].contains(u"lumivane/.lumivane.lvdu"_s)) << user.shown[0];
    EXPECT_FALSE(QFileInfo::exists(programFolder()));
    EXPECT_TRUE(Main_Start()) << "the next start has room";
}

TEST_F(StartUp, AProjectThatIsBusySaysSo)
{
    Database::create(project);
    EXPECT_EQ(whyNotOpened(project), QString());
    OtherProgram other(project);
    other.run("BEGIN EXCLUSIVE");
    EXPECT_TRUE(whyNotOpened(project).contains(u"is in use by another program"_s)) << whyNotOpened(project);
}

TEST_F(StartUp, TheSecondProgramOnAProjectSaysWhoHasItOpen)
{
    Database::create(project);
    {
        const ProjectUse first(project);
        EXPECT_EQ(first.other(), QString());
        EXPECT_TRUE(Main_Start());
        ASSERT_EQ(user.shown.size(), 1);
        EXPECT_TRUE(user.shown[0].contains(u" on the computer "_s + QSysInfo::machineHostName() +
                                           u" since 2026-11-24 10:30:05.\r\n"_s))
            << user.shown[0];
    }
    if (fork() == 0) {
        new ProjectUse(project);
        _exit(0); // as a kill does, it ends without clearing up
    }
    wait(nullptr);
    EXPECT_TRUE(InitStandard());
    EXPECT_EQ(user.shown.size(), 1) << "nobody has it any more";
}

TEST_F(StartUp, WhatIsNoProjectIsToldTwiceAndLeftAsItIs)
{
    EXPECT_FALSE(Main_Start());
    EXPECT_FALSE(QFileInfo::exists(project));
    write(project, "no project");
    EXPECT_FALSE(Main_Start());
    EXPECT_FALSE(gDB);
    EXPECT_EQ(read(project), "no project");
    const QString missing = u"Project file [%1] not found.  Unable to continue loading Lumivane."_s.arg(project),
                  foreign = u"Selected file is not a valid Lumivane project file."_s;
    EXPECT_EQ(user.shown, QStringList({missing, secondBox, foreign, secondBox}));
}

TEST_F(StartUp, OptionsAreReadAsTheyStandOrHaveDefaults)
{
    const auto options = [] {
        EXPECT_TRUE(GetOptionsSettings());
        return u"%1 %2 %3 %4"_s.arg(gDashboardColor, 0, 16)
            .arg(gPanelTimeStamp)
            .arg(gRefreshFrequency)
            .arg(gCaptionAlignment);
    };
    EXPECT_EQ(options(), u"ffffff 1 10 Center"_s);
    write(GetIniFile(), "[Options]\nDashboard Color=255\nPanel Time Stamp=7\nRefresh Frequency=often\n"
                        "Caption Alignment=Middle\n[Settings]\nLarge Sheets=1\n");
    EXPECT_FALSE(largeSheets()) << "the key is absent";
    EXPECT_EQ(options(), u"ff0000 1 0 Middle"_s) << "red is the lowest byte";
    EXPECT_TRUE(largeSheets());
    write(GetIniFile(), "[Options]\nRefresh Frequency=-5\n");
    EXPECT_EQ(options(), u"ffffff 1 10 Center"_s) << "a pass every -5 minutes is none";
}

TEST_F(StartUp, AFrequencyBeyondSixteenBitsEndsTheStart)
{
    Database::create(project);
    write(GetIniFile(), "[Options]\nRefresh Frequency=40000\n");
    EXPECT_FALSE(Main_Start());
    EXPECT_FALSE(gDB);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_TRUE(user.shown[0].contains(u"Refresh Frequency in section [Options]"_s)) << user.shown[0];
}

TEST_F(StartUp, ProjectsAreTriedBeforeTheyAreTaken)
{
    Database::create(project);
    Database::create(path(u"log.lvdu"_s), Database::Content::ErrorLog);
    write(path(u"text.lvdu"_s), "no project");
    EXPECT_TRUE(ValidateRepository(project));
    for (const QString& name : {u"log.lvdu"_s, u"text.lvdu"_s, u"none.lvdu"_s})
        EXPECT_FALSE(ValidateRepository(path(name))) << name;
    EXPECT_TRUE(user.shown.isEmpty());

    ASSERT_TRUE(InitRepository(gDB, project));
    const auto open = gDB;
    EXPECT_FALSE(InitRepository(gDB, path(u"text.lvdu"_s)));
    EXPECT_EQ(gDB, open) << "a refused file leaves the open project";
    EXPECT_TRUE(gDB->isOpen());
    EXPECT_TRUE(ValidateRepository(project)) << "the open one too";
}

TEST_F(StartUp, ProjectPropertiesHoldTextsAlone)
{
    Database::create(project);
    ASSERT_TRUE(InitStandard());
    EXPECT_TRUE(SaveSystemSettings(u"kept"_s, u"value"_s));
    EXPECT_FALSE(SaveSystemSettings(u"key"_s, u"x'), ('other', 'y"_s));
    EXPECT_FALSE(DeleteSystemSettings(u"key' OR PropertyKey <> '"_s));
    EXPECT_EQ(GetSystemSettings(u"key' OR PropertyKey <> '"_s) + GetSystemSettings(u"other"_s), QString());
    EXPECT_EQ(user.shown.size(), 3);
    EXPECT_EQ(GetSystemSettings(u"KEPT"_s), u"value"_s);
    EXPECT_TRUE(DeleteSystemSettings(u"kept"_s));
    EXPECT_EQ(GetSystemSettings(u"kept"_s), QString());
}

} // namespace lumivane::test
