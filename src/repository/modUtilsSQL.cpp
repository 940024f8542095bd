#include "repository/modUtilsSQL.h"

#include "repository/Database.h"
#include "services/modUtilsLog.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

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

    /// The trap of all procedures here. `describe` tells what the failure's own text is set in.
    template <class Work, class Describe>
    bool guard(Work work, Describe describe) const
    {
        try {
            work();
            return true;
        } catch (const RuntimeError& error) {
            LogError(u"UtilsSQL"_s, procedure, error.number(), text() + describe(error.description()), showError);
            return false;
        }
    }
};

void requireSet(const std::shared_ptr<Database>& database)
{
    if (!database)
        throw RuntimeError(RuntimeError::ObjectNotSet, u"No project file is open."_s);
}

bool openDatabase(std::shared_ptr<Database>& database, const QString& name, const QString& connect,
                  Database::Trust trust, const SqlCaller& caller)
{
    return caller.guard([&] { database = Database::open(name, connect, trust); },
                        [&](const QString& reason) { return QString(u"["_s + name + u"] "_s + reason); });
}

} // namespace

bool SQL_OpenDatabase(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                      bool ShowError, const QString& CallerModule, const QString& CallerProc)
{
    return openDatabase(Database, DBName, Connect, lumivane::Database::Trust::Own,
                        {u"SQL_OpenDatabase"_s, CallerModule, CallerProc, ShowError});
}

bool SQL_OpenSharedFile(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                        bool ShowError, const QString& CallerModule, const QString& CallerProc)
{
    return openDatabase(Database, DBName, Connect, lumivane::Database::Trust::Stranger,
                        {u"SQL_OpenDatabase"_s, CallerModule, CallerProc, ShowError});
}

bool SQL_Execute(const std::shared_ptr<Database>& Database, const QString& SQL, bool ShowError,
                 const QString& CallerModule, const QString& CallerProc)
{
    return SqlCaller{u"SQL_Execute"_s, CallerModule, CallerProc, ShowError}.guard(
        [&] {
            requireSet(Database);
            Database->Execute(SQL);
        },
        [&](const QString& reason) { return QString(reason + u"\r\nSQL: "_s + SQL); });
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
        [](const QString& reason) { return reason; });
}

bool SQL_OpenRecordset(const std::shared_ptr<Database>& Database, std::shared_ptr<Recordset>& Recordset,
                       const QString& SQL, bool ShowError, const QString& CallerModule, const QString& CallerProc)
{
    return SqlCaller{u"SQL_OpenRecordset"_s, CallerModule, CallerProc, ShowError}.guard(
        [&] {
            requireSet(Database);
            Recordset = Database->OpenRecordset(SQL);
        },
        [&](const QString& reason) { return QString(reason + u"\r\nSQL: "_s + SQL); });
}

} // namespace lumivane
