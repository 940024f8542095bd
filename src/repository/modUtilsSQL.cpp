#include "repository/modUtilsSQL.h"

#include "repository/Database.h"
#include "repository/Dialect.h"
#include "repository/SqlText.h"
#include "services/modUtilsLog.h"

#include <limits>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString ownModule = u"UtilsSQL"_s;
bool fileFailed = false; ///< by the last procedure

bool isFailureOfFile(int number)
{
    return number == FileInUse || number == FileProtected || number == DiskFull || number == NotAProject ||
           number == ObjectClosed;
}

/// Who asks for a database, and how a failure is reported.
struct SqlCaller
{
    const QString& procedure; ///< of this module
    const QString& module;
    const QString& proc;
    bool showError;

    QString text() const
    {
        if (module.isEmpty())
            return {};
        return u"\r\nCaller: "_s + module + (proc.isEmpty() ? QString() : QString(u'.' + proc)) + u"\r\n"_s;
    }

    /// The trap of all procedures here. The log also has the file or the statement; a box has no statement, nor what
    /// quotes one.
    template <class Work>
    bool guard(Work work, const QString& before, const QString& behind) const
    {
        try {
            work();
            fileFailed = false;
            return true;
        } catch (const RuntimeError& error) {
            LogError(ownModule, procedure, error.number(), text() + before + error.description() + behind, false);
            const bool quotesStatement = error.number() == SyntaxError;
            if (showError)
                ShowError(ownModule, procedure, error.number(),
                          text() + before +
                              (quotesStatement ? u"The project file could not be read or changed in one place. The "
                                                 "log file beside the project says in which."_s
                                               : error.description()));
            fileFailed = isFailureOfFile(error.number()); // now: the log may have a database too
            return false;
        }
    }

    template <class Work>
    bool guardStatement(const QString& sql, Work work) const
    {
        return guard(work, QString(), u"\r\nSQL: "_s + readableStatement(sql));
    }
};

void requireSet(const std::shared_ptr<Database>& database)
{
    if (!database)
        throw RuntimeError(RuntimeError::ObjectNotSet, u"No project file is open."_s);
}

bool openDatabase(std::shared_ptr<Database>& database, const QString& name, const QString& connect,
                  Database::Trust trust, std::chrono::milliseconds patience, const SqlCaller& caller)
{
    return caller.guard([&] { database = Database::open(name, connect, trust, patience); }, u"["_s + name + u"] "_s,
                        {});
}

} // namespace

bool SQL_OpenDatabase(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                      bool ShowError, const QString& CallerModule, const QString& CallerProc)
{
    return openDatabase(Database, DBName, Connect, lumivane::Database::Trust::Own, lumivane::Database::usualPatience,
                        {u"SQL_OpenDatabase"_s, CallerModule, CallerProc, ShowError});
}

bool SQL_OpenSharedFile(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                        bool ShowError, const QString& CallerModule, const QString& CallerProc)
{
    return openDatabase(Database, DBName, Connect, lumivane::Database::Trust::Stranger,
                        lumivane::Database::usualPatience,
                        {u"SQL_OpenDatabase"_s, CallerModule, CallerProc, ShowError});
}

bool SQL_OpenLogDatabase(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                         const QString& CallerModule, const QString& CallerProc)
{
    return openDatabase(Database, DBName, Connect, lumivane::Database::Trust::Own, std::chrono::milliseconds(200),
                        {u"SQL_OpenDatabase"_s, CallerModule, CallerProc, false});
}

bool SQL_Execute(const std::shared_ptr<Database>& Database, const QString& SQL, bool ShowError,
                 const QString& CallerModule, const QString& CallerProc)
{
    return SqlCaller{u"SQL_Execute"_s, CallerModule, CallerProc, ShowError}.guardStatement(SQL, [&] {
        requireSet(Database);
        Database->Execute(SQL);
    });
}

bool SQL_ExecuteOnRow(const std::shared_ptr<Database>& Database, const QString& SQL, const QString& Noun,
                      const QString& CallerModule, const QString& CallerProc)
{
    return SqlCaller{u"SQL_Execute"_s, CallerModule, CallerProc, true}.guardStatement(SQL, [&] {
        requireSet(Database);
        if (Database->Execute(SQL) == 0)
            throw RuntimeError(RowGone, u"The %1 is no longer in the project, and was not saved. Another program has "
                                        "deleted it. Save the dashboard under another name to keep what is "
                                        "shown."_s.arg(Noun));
    });
}

void SQL_CloseDatabase(std::shared_ptr<Database>& Database, bool ShowError, const QString& CallerModule,
                       const QString& CallerProc)
{
    SqlCaller{u"SQL_CloseDatabase"_s, CallerModule, CallerProc, ShowError}.guard(
        [&] {
            requireSet(Database);
            Database->Close();
            Database.reset();
        },
        {}, {});
}

bool SQL_OpenRecordset(const std::shared_ptr<Database>& Database, std::shared_ptr<Recordset>& Recordset,
                       const QString& SQL, bool ShowError, const QString& CallerModule, const QString& CallerProc)
{
    return SqlCaller{u"SQL_OpenRecordset"_s, CallerModule, CallerProc, ShowError}.guardStatement(SQL, [&] {
        requireSet(Database);
        Recordset = Database->OpenRecordset(SQL);
    });
}

qint16 SQL_KeepNewID(const std::shared_ptr<Database>& Database, const QString& Table, const QString& Noun, qint64 ID,
                     const QString& CallerModule, const QString& CallerProc)
{
    if (ID <= std::numeric_limits<qint16>::max())
        return static_cast<qint16>(ID);
    SQL_Execute(Database, u"DELETE FROM "_s + Table + u" WHERE ID = "_s + QString::number(ID), true, CallerModule,
                CallerProc);
    throw RuntimeError(RuntimeError::Overflow,
                       u"The project has given out all 32,767 numbers for a %1, and stores no further one. Export its "
                       "dashboards into a shared file, and import that into a new project."_s.arg(Noun));
}

bool SQL_FileFailed()
{
    return fileFailed;
}

} // namespace lumivane
