#include "session/modUtilsLogDB.h"

#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"
#include "services/modMain.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsINI.h"
#include "services/modUtilsLog.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString& logModule()
{
    static const QString name = u"modUtilsLog"_s;
    return name;
}

bool openLogDatabase(std::shared_ptr<Database>& database, const QString& procedure)
{
    return SQL_OpenLogDatabase(database, gLogDBFile, databaseConnect(), logModule(), procedure);
}

} // namespace

void InitLog(const QString& FileName, bool Reset, bool NoMessages)
{
    gSuppressMessages = NoMessages;
    InitFileLog(FileName, Reset);
    InitDBLog();
}

void InitDBLog()
{
    gLogToDB = false;
    setDatabaseLog(LogDBLog);
    gLogDBFile = GetIniString(GetIniFile(), u"Settings"_s, u"Log DB"_s, QString());
    const auto explain = [](const QString& text) { WriteEventLine(logModule(), u"InitDBLog"_s, text); };
    if (gLogDBFile.isEmpty())
        return explain(u"No 'Log DB' value specified in [Settings] section of "_s + GetIniFile());
    if (!FileExists(gLogDBFile))
        return explain(u"Invalid error log database name "_s + gLogDBFile);
    std::shared_ptr<Database> database;
    if (!openLogDatabase(database, u"InitDBLog"_s))
        return explain(u"Error opening database "_s + gLogDBFile);
    std::shared_ptr<Recordset> rs;
    gLogToDB =
        SQL_OpenRecordset(database, rs, u"SELECT COUNT(*) FROM TlyS_ErrorLogs"_s, false, logModule(), u"InitDBLog"_s);
    SQL_CloseDatabase(database, false, logModule(), u"InitDBLog"_s);
}

void LogDBLog(const QString& Module, const QString& Procedure, const QString& LogType, int Number,
              const QString& Description)
{
    std::shared_ptr<Database> database;
    if (!gLogToDB || !openLogDatabase(database, u"LogDBLog"_s))
        return;
    // Only the description has its apostrophes doubled.
    QString values;
    for (const QString& text : {applicationTitle(), Module, Procedure, LogType})
        values += textLiteral(text) + u',';
    SQL_Execute(database,
                u"INSERT INTO TlyS_ErrorLogs"_s +
                    u" (ApplicationName, ModuleName, ProcedureName, LogType, LogTime, LogNumber, LogDescription)"_s +
                    u" VALUES ("_s + values + dateLiteral(Clock::now()) + u","_s + QString::number(Number) + u","_s +
                    doubledLiteral(Description) + u" )"_s,
                false, logModule(), u"LogDBLog"_s);
    SQL_CloseDatabase(database, false, logModule(), u"LogDBLog"_s);
}

} // namespace lumivane
