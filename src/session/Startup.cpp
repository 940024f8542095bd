#include "session/Startup.h"

#include "assist/modHTMLHelp.h"
#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/Dialect.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsINI.h"
#include "services/modUtilsLog.h"
#include "session/ProjectUse.h"
#include "session/modUtilsLogDB.h"

#include <QDir>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// A program folder of the user's own is made and gets an empty project when it is not there yet. One that is there
/// is left as it is: a missing project is reported, not replaced. So a folder whose project cannot be made is taken
/// back, or the next start would find it without. Gives the reason of a failure.
QString furnishProgramFolder()
{
    if (FolderExists(programFolder()))
        return {};
    try {
        if (!QDir().mkpath(programFolder()))
            return u"The folder ["_s + programFolder() +
                   u"] cannot be made. Check the disk and the rights of the "
                   "folder above it."_s;
        Database::create(GetRepositoryFile());
        SetIniString(GetIniFile(), u"Settings"_s, u"Large Sheets"_s, u"1"_s);
        return {};
    } catch (const RuntimeError& error) {
        QDir().rmdir(programFolder());
        return error.description();
    }
}

} // namespace

bool Main_Start()
{
    const QString unfurnished = furnishProgramFolder();
    InitLog(GetLogFile(), false, false);
    if (!unfurnished.isEmpty())
        LogEvent(u"Main"_s, u"Main"_s, unfurnished, true);
    SetHelpFile();
    try {
        if (!GetOptionsSettings())
            return false;
    } catch (const RuntimeError& error) {
        LogError(u"Main"_s, u"GetOptionsSettings"_s, error.number(), error.description(), true);
        return false;
    }
    if (InitStandard())
        return true;
    prompts().message(u"Error occurred during initialization of "_s + applicationTitle() + u".\r\n"_s +
                          u"If this occurred right after install, "_s + u"try re-running the application \r\n"_s +
                          u"by clicking on the icon in the desktop or via the Start menu."_s,
                      Prompts::Icon::Information);
    return false;
}

void Main_Exit()
{
    if (gDB)
        SQL_CloseDatabase(gDB, true, u"Main"_s, u"Main_Exit"_s);
}

QString GetRepositoryFile()
{
    return withDelimiter(programFolder()) + executableName() + u".lvdu"_s;
}

bool InitStandard()
{
    const QString fileName = GetRepositoryFile();
    if (!FileExists(fileName)) {
        LogEvent(u"Main"_s, u"InitStandard"_s,
                 u"Project file ["_s + fileName + u"] not found.  Unable to continue loading "_s + applicationTitle() +
                     u"."_s,
                 true);
        return false;
    }
    if (!InitRepository(gDB, fileName)) {
        const QString reason = whyNotOpened(fileName);
        LogEvent(u"Main"_s, u"InitStandard"_s,
                 reason.isEmpty() ? u"Selected file is not a valid "_s + applicationTitle() + u" project file."_s
                                  : reason,
                 true);
        gDB.reset();
        return false;
    }
    announceProject(fileName);
    return true;
}

bool InitRepository(std::shared_ptr<Database>& Database, const QString& FileName)
{
    if (!SQL_OpenDatabase(Database, FileName, databaseConnect(), false, u"Utils"_s, u"InitRepository"_s))
        return false;
    LogEvent(u"Utils"_s, u"InitRepository"_s, u"opened database at "_s + Database->Name(), false);
    return true;
}

bool ValidateRepository(const QString& FileName)
{
    std::shared_ptr<Database> database;
    if (!SQL_OpenDatabase(database, FileName, databaseConnect(), false, u"Utils"_s, u"ValidateRepository"_s))
        return false;
    std::shared_ptr<Recordset> rs;
    const bool valid = SQL_OpenRecordset(database, rs, u"SELECT TOP 1 * FROM LvnSavedWorkspace"_s, false, u"Utils"_s,
                                         u"ValidateRepository"_s);
    SQL_CloseDatabase(database, false, u"Utils"_s, u"ValidateRepository"_s);
    return valid;
}

QString whyNotOpened(const QString& FileName)
{
    try {
        Database::open(FileName, databaseConnect(), Database::Trust::Own, std::chrono::milliseconds(0));
    } catch (const RuntimeError& error) {
        if (error.number() == FileInUse || error.number() == FileProtected || error.number() == DiskFull)
            return error.description();
    }
    return {};
}

QString GetDefaultRepository()
{
    return GetIniString(GetIniFile(), u"Session"_s, u"Repository"_s, QString()).trimmed();
}

void SaveDefaultRepository(const QString& FileName)
{
    SetIniString(GetIniFile(), u"Session"_s, u"Repository"_s, FileName);
}

} // namespace lumivane
