#include "sharing/DashboardExport.h"

#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString exportModule = u"frmExport"_s;
const QString exportProcedure = u"ExportDashboard"_s;

bool refuseExport(const QString& message, const QString& logText)
{
    prompts().message(message, Prompts::Icon::Exclamation);
    if (!logText.isEmpty())
        LogEvent(exportModule, exportProcedure, logText, false);
    return false;
}

/// The open project is never replaced, whatever name was given for the shared file.
bool canBeReplaced(const QString& file, const QString& project)
{
    const QFileInfo info(file);
    if (!info.exists() && !info.isSymLink())
        return true;
    const bool isFile = info.isFile() || info.isSymLink();
    return isFile && !isSamePlace(file, project) && (info.isWritable() || !info.exists()) &&
           QFileInfo(info.path()).isWritable();
}

/// A shared file while it is written, beside its place under a hidden name. So the former file stays until the new one
/// is complete, and nobody gets hold of one from which the other dashboards are not yet deleted, whenever the program
/// is ended.
class Draft
{
public:
    explicit Draft(const QString& file)
        : m_file(file), m_name(QFileInfo(file).path() + u"/."_s + QFileInfo(file).fileName() + u".new"_s)
    {
        remove(); // what a killed program left
    }
    ~Draft() { remove(); }
    Q_DISABLE_COPY_MOVE(Draft)

    const QString& name() const { return m_name; }
    bool takePlace() const
    {
        std::error_code failed;
        std::filesystem::rename(QFileInfo(m_name).filesystemFilePath(), QFileInfo(m_file).filesystemFilePath(), failed);
        // What a killed program left beside the former file would be played into the new one.
        return !failed && (QFile::remove(journalOf(m_file)) || !QFile::exists(journalOf(m_file)));
    }

private:
    static QString journalOf(const QString& file) { return file + u"-journal"_s; }
    void remove() const
    {
        QFile::remove(m_name);
        QFile::remove(journalOf(m_name));
    }

    const QString m_file, m_name;
};

bool copyProject(const QString& file)
{
    try {
        gDB->copyTo(file);
        return true;
    } catch (const RuntimeError& error) {
        LogError(exportModule, exportProcedure, error.number(), error.description(), false);
        return false;
    }
}

/// The sources follow from the panels that are left, so the order matters.
QStringList pruningStatements(const QString& ids, bool hasImported)
{
    QStringList statements{
        u"DELETE * FROM LvnSavedWorkspace WHERE ID NOT IN ("_s + ids + u')',
        u"DELETE * FROM LvnSavedPanel WHERE WorkspaceID NOT IN ("_s + ids + u')',
        u"DELETE * FROM LvnPanelSource WHERE ID NOT IN ( SELECT DISTINCT SourceID FROM LvnSavedPanel)"_s,
        u"DELETE * FROM LvnSystem"_s};
    if (hasImported)
        statements.append(u"DROP TABLE TempSources"_s); // sources of others, that an import left
    return statements;
}

/// False when it was given up.
bool pruneCopy(const std::shared_ptr<Database>& copy, const QStringList& statements, const SharingProgress& goOn)
{
    for (qsizetype done = 0; done < statements.size(); ++done) {
        if (!goOn(1 + done, 1 + statements.size()))
            return false;
        SQL_Execute(copy, statements[done], false, exportModule, exportProcedure);
    }
    return true;
}

bool exportInto(const QString& file, const QString& ids, const SharingProgress& goOn)
{
    const QString project = gDB->Name();
    const QStringList pruning =
        pruningStatements(ids, gDB->TableNames().contains(u"TempSources"_s, Qt::CaseInsensitive));
    if (!goOn(0, 1 + pruning.size()))
        return false;
    if (!canBeReplaced(file, project))
        return refuseExport(u"Unable to delete "_s + file +
                                u" in preparing for exporting. Will not be able to continue processing."_s,
                            u"Unable to delete "_s + file + u'.');
    const auto refuseCopy = [&] {
        return refuseExport(u"Unable to export to "_s + file + u".  The file could not be created."_s,
                            u"File_Copy "_s + project + u',' + file + u" error."_s);
    };
    const Draft draft(file);
    if (!copyProject(draft.name()))
        return refuseCopy();

    std::shared_ptr<Database> copy;
    if (!SQL_OpenDatabase(copy, draft.name(), databaseConnect(), false, exportModule, exportProcedure))
        return refuseExport(u"Error opening shared file.  Unable to continue exporting."_s, {});
    const bool isPruned = pruneCopy(copy, pruning, goOn);
    SQL_CloseDatabase(copy, false, exportModule, exportProcedure);
    if (!isPruned)
        return false;
    return draft.takePlace() || refuseCopy();
}

} // namespace

bool exportableDashboards(std::vector<DashboardEntry>& dashboards)
{
    std::shared_ptr<Recordset> rows;
    if (!SQL_OpenRecordset(gDB, rows, u"SELECT * FROM LvnSavedWorkspace ORDER BY Name"_s, true, exportModule,
                           u"lstWorkspaces_Load"_s))
        return false;
    dashboards = dashboardEntries(*rows);
    rows->Close();
    return true;
}

bool ExportDashboard(const QString& File, const std::vector<qint32>& ids, const SharingProgress& progress)
{
    try {
        // An empty list would leave everything in the copy.
        if (!gDB || ids.empty())
            throw RuntimeError(RuntimeError::ObjectNotSet);
        return exportInto(
            QFileInfo(File).absoluteFilePath(), idList(ids), progress ? progress : [](qint64, qint64) { return true; });
    } catch (const RuntimeError& error) {
        LogError(exportModule, exportProcedure, error.number(), error.description(), false);
        return false;
    }
}

} // namespace lumivane
