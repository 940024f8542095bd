#include "repository/OtherProgram.h"
#include "repository/ProjectRows.h"
#include "services/ProgramFolder.h"
#include "services/modMain.h"
#include "services/modUtilsINI.h"
#include "session/modUtilsLogDB.h"

#include <QElapsedTimer>

namespace lumivane::test {

using namespace Qt::StringLiterals;

class DatabaseLogFile : public ProgramFolder
{
protected:
    DatabaseLogFile()
    {
        Database::create(file, Database::Content::ErrorLog);
        SetIniString(GetIniFile(), u"Settings"_s, u"Log DB"_s, file);
    }
    ~DatabaseLogFile() override { gLogToDB = false; }

    QStringList entries() const
    {
        return rowsOf(*Database::open(file, databaseConnect()), u"SELECT * FROM TlyS_ErrorLogs"_s);
    }

    const QString file = path(u"errors.lvdu"_s);
};

TEST_F(DatabaseLogFile, TakesEventsAndErrors)
{
    InitLog(GetLogFile(), true, false);
    EXPECT_TRUE(gLogToDB);
    EXPECT_EQ(logged(), "") << "nothing to explain";
    LogEvent(u"Main"_s, u"Start"_s, u"it's there"_s, false);
    LogError(u"Main"_s, QString(), -5, u"no 'file'"_s, false);
    EXPECT_EQ(entries(), QStringList({u"Lumivane|Main|Start|Event|2026-11-24 10:30:05|0|it's there"_s,
                                      u"Lumivane|Main||Error|2026-11-24 10:30:05|-5|no 'file'"_s}));
}

TEST_F(DatabaseLogFile, AnApostropheInAModuleLosesTheEntryOnly)
{
    InitLog(GetLogFile(), true, false);
    LogEvent(u"Ann', 'x"_s, u"Start"_s, u"lost"_s, true);
    LogEvent(u"Main"_s, u"Start"_s, u"kept"_s, false);
    EXPECT_EQ(entries().size(), 1);
    EXPECT_EQ(logged().count("Error on [UtilsSQL.SQL_Execute]"), 1);
    EXPECT_EQ(user.shown, QStringList(u"lost"_s)) << "the log's own failure is not shown";
}

TEST_F(DatabaseLogFile, WithoutADatabaseTheLogSaysWhy)
{
    write(path(u"other.txt"_s), "x");
    const std::pair<QString, QString> cases[] = {
        {QString(), u"No 'Log DB' value specified in [Settings] section of "_s + GetIniFile()},
        {path(u"none.lvdu"_s), u"Invalid error log database name "_s + path(u"none.lvdu"_s)},
        {path(u"other.txt"_s), u"Error opening database "_s + path(u"other.txt"_s)},
    };
    for (const auto& [value, told] : cases) {
        SetIniString(GetIniFile(), u"Settings"_s, u"Log DB"_s, value);
        InitLog(GetLogFile(), true, false);
        EXPECT_FALSE(gLogToDB);
        const QString line = u"2026-11-24 10:30:05 Event at [modUtilsLog.InitDBLog]: %1\r\n"_s.arg(told);
        EXPECT_TRUE(logged().endsWith(line.toUtf8())) << logged().constData();
    }
    Database::create(path(u"project.lvdu"_s));
    SetIniString(GetIniFile(), u"Settings"_s, u"Log DB"_s, path(u"project.lvdu"_s));
    InitLog(GetLogFile(), true, false);
    EXPECT_FALSE(gLogToDB) << "a project is none";
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(DatabaseLogFile, AnotherProgramThatWritesHoldsNothingUp)
{
    InitLog(GetLogFile(), true, false);
    OtherProgram other(file);
    other.run("BEGIN EXCLUSIVE");
    QElapsedTimer timer;
    timer.start();
    LogEvent(u"Main"_s, u"Start"_s, u"in the file alone"_s, false);
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_TRUE(logged().contains("in the file alone"));
}

TEST_F(DatabaseLogFile, ADatabaseThatGoesAwayDoesNotSendTheLogRoundInACircle)
{
    InitLog(GetLogFile(), true, false);
    QFile::remove(file);
    LogError(u"Main"_s, u"Start"_s, 53, u"no file"_s, false);
    LogEvent(u"Main"_s, u"Start"_s, u"text"_s, false);
    EXPECT_EQ(logged().count("Error on [UtilsSQL.SQL_OpenDatabase]"), 2);
    EXPECT_TRUE(user.shown.isEmpty());
}

} // namespace lumivane::test
