#include "platform/RuntimeError.h"
#include "services/ProgramFolder.h"
#include "services/modMain.h"

#include <QFileInfo>

namespace lumivane::test {

using namespace Qt::StringLiterals;

using Log = ProgramFolder;

TEST_F(Log, StartsWithABlankLineAndAHeader)
{
    EXPECT_EQ(read(GetLogFile()), "\r\n2026-11-24 10:30:05\tLumivane\r\n");
    InitFileLog(GetLogFile(), false);
    EXPECT_EQ(read(GetLogFile()).count("Lumivane"), 2);
    InitFileLog(GetLogFile(), true);
    EXPECT_EQ(read(GetLogFile()).count("Lumivane"), 1);
}

TEST_F(Log, WritesEventsAndErrors)
{
    LogEvent(u"Main"_s, u"Start"_s, u"Größe"_s, false);
    LogError(u"Main"_s, QString(), 53, u"no file"_s, false);
    LogError(QString(), u"Proc"_s, -1, QString(), false);
    EXPECT_EQ(logged(), QByteArray("2026-11-24 10:30:05 Event at [Main.Start]: Größe\r\n"
                                   "2026-11-24 10:30:05 Error on [Main]\r\nError: (53) no file\r\n"
                                   "2026-11-24 10:30:05 Error on [Proc]\r\nError: (-1) \r\n"));
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(Log, ShowsWhatItIsAskedToShow)
{
    LogEvent(u"Main"_s, u"Start"_s, u"text"_s, true);
    LogError(u"Main"_s, u"Start"_s, 53, u"no file"_s, true);
    gSuppressMessages = true;
    LogError(u"Main"_s, u"Start"_s, 53, u"no file"_s, true);
    EXPECT_EQ(user.shown,
              QStringList({u"text"_s, u"Error Source:  Main.Start\r\nNumber:  53\r\nDescription:  no file"_s}));
}

TEST_F(Log, MovesAFullFileAsideAtTheStart)
{
    const QString aside = path(u"lumivane_261124_1030.log"_s);
    write(GetLogFile(), QByteArray(1'000'000, 'x'));
    InitFileLog(GetLogFile(), false);
    EXPECT_FALSE(QFileInfo::exists(aside)) << "one byte short of the limit";

    write(aside, "an older one of the same minute");
    write(GetLogFile(), QByteArray(1'000'001, 'x'));
    InitFileLog(GetLogFile(), false);
    EXPECT_EQ(QFileInfo(aside).size(), 1'000'001);
    EXPECT_EQ(logged(), "");
    EXPECT_TRUE(gLogToFile);
}

TEST_F(Log, GoesOnWithoutAFile)
{
    InitFileLog(path(u"none/x.log"_s), false);
    EXPECT_FALSE(gLogToFile);
    LogEvent(u"Main"_s, u"Start"_s, u"text"_s, true);
    EXPECT_EQ(user.shown, QStringList(u"text"_s));
    EXPECT_FALSE(QFileInfo::exists(path(u"none"_s)));
}

TEST_F(Log, AFailingDatabaseLogIsNotAskedAgain)
{
    int asked = 0;
    setDatabaseLog([&](const QString& module, const QString&, const QString& type, int number, const QString& text) {
        ++asked;
        LogError(u"UtilsSQL"_s, u"SQL_Execute"_s, 10, u"disk full"_s, false);
        throw RuntimeError(10, module + type + QString::number(number) + text);
    });
    LogError(u"Main"_s, u"Start"_s, 53, u"no file"_s, false);
    LogEvent(u"Main"_s, u"Start"_s, u"text"_s, false);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(logged().count("disk full"), 2);
    EXPECT_TRUE(user.shown.isEmpty());
}

} // namespace lumivane::test
