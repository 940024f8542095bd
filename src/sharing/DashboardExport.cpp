#include "sharing/DashboardExport.h"

#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsLog.h"

#include <QFile>
#include <QFileInfo>

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

bool isSameFile(const QString& a, const QString& b)
{
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath();
}

/// The file that an export is to replace, out of its way; back in its place when the export comes to nothing.
class FileBefore
{
public:
    explicit FileBefore(const QString& file)
        : m_file(file), m_aside(QFileInfo(file).path() + u"/."_s + QFileInfo(file).fileName() + u".before"_s)
    {
    }
    ~FileBefore()
    {
        if (!m_isAside)
            return;
        QFile::remove(m_file);
        QFile::rename(m_aside, m_file);
    }
    Q_DISABLE_COPY_MOVE(FileBefore)

    bool setAside()
    {
        QFile::remove(m_aside);
        m_isAside = QFile::rename(m_file, m_aside);
        return m_isAside;
    }
    void drop()
    {
        if (m_isAside)
            QFile::remove(m_aside);
        m_isAside = false;
    }

private:
    const QString m_file, m_aside;
    bool m_isAside = false;
};

/// The open project is never removed, whatever name was given for the shared file.
bool removeOldFile(const QString& file, const QString& project, FileBefore& before)
{
    const bool isLink = QFileInfo(file).isSymLink();
    if (!QFileInfo::exists(file) && !isLink)
        return true;
    if (!QFileInfo(file).isFile() && !isLink)
        return false;
    if (isSameFile(file, project) || !QFileInfo(file).isWritable() || !before.setAside())
        return false;
    // What a killed program left beside the old file would be played into the new one.
    QFile::remove(file + u"-journal"_s);
    return true;
}

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
QStringList pruningStatements(const QString& ids)
{
    return {u"DELETE * FROM LvnSavedWorkspace WHERE ID NOT IN ("_s + ids + u')',
            u"DELETE * FROM LvnSavedPanel WHERE WorkspaceID NOT IN ("_s + ids + u')',
            u"DELETE * FROM LvnPanelSource WHERE ID NOT IN ( SELECT DISTINCT SourceID FROM LvnSavedPanel)"_s,
            u"DELETE * FROM LvnSystem"_s};
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
    const QStringList pruning = pruningStatements(ids);
    if (!goOn(0, 1 + pruning.size()))
        return false;
    FileBefore before(file);
    if (!removeOldFile(file, project, before))
        return refuseExport(u"Unable to delete "_s + file +
                                u" in preparing for exporting. Will not be able to continue processing."_s,
                            u"Unable to delete "_s + file + u'.');
    if (!copyProject(file))
        return refuseExport(u"Unable to export to "_s + file + u".  The file could not be created."_s,
                            u"File_Copy "_s + project + u',' + file + u" error."_s);

    std::shared_ptr<Database> copy;
    if (!SQL_OpenDatabase(copy, file, databaseConnect(), false, exportModule, exportProcedure))
        return refuseExport(u"Error opening shared file.  Unable to continue exporting."_s, {});
    const bool isPruned = pruneCopy(copy, pruning, goOn);
    SQL_CloseDatabase(copy, false, exportModule, exportProcedure);
    if (isPruned)
        before.drop();
    else
        QFile::remove(file);
    return isPruned;
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
