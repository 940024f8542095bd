#pragma once

#include "sharing/DashboardList.h"
#include "sharing/ImportPreview.h"

#include <QHash>
#include <QStringList>
#include <memory>

namespace lumivane {

class Database;
class Recordset;

/// Import of dashboards from one shared file into the open project: a merge of rows by which dashboards and panels get
/// new ids, and their sources are found in the project or added to it. Panels keep their thresholds. Paths are
/// rewritten through the alternate paths in the shared file. What has been written before a failure stays.
class DashboardImport
{
public:
    explicit DashboardImport(const QString& ImportFile, SharingProgress progress = {});
    ~DashboardImport(); ///< closes the shared file
    DashboardImport(const DashboardImport&) = delete;
    DashboardImport& operator=(const DashboardImport&) = delete;

    /// Opens the shared file as one of a stranger. When it fails, a box has said why.
    bool Open();
    /// The dashboards whose names the project lacks, by name. False when they cannot be read.
    bool importableDashboards(std::vector<DashboardEntry>& dashboards);
    /// What an import of these dashboards would lead to; the project is not touched. Refuses what no program of this
    /// kind has written. Ends early, with any answer, when the progress says so.
    Result<ImportPreview> preview(const std::vector<qint32>& ids);
    /// When it fails, a box has said why, except for a run-time error, which is logged and kept in `faults`.
    bool ImportDashboard(const std::vector<qint32>& ids);
    /// What run-time errors kept the last import from bringing over, a sentence each; there may be some though it
    /// succeeded.
    const QStringList& faults() const { return m_faults; }

private:
    /// By the id in the shared file, the id in the project; the first of two rows with one id counts.
    using SourceIds = QHash<qint64, qint64>;

    bool trapped(const QString& procedure, const std::function<bool()>& steps, const QString& fault);
    bool ImportSources(const QString& ids);
    bool matchSources();
    bool ImportWorkspaces(const QString& ids, const SourceIds& sources);
    bool ImportPanels(qint64 oldWorkspaceId, qint64 newWorkspaceId, const QString& name, const SourceIds& sources);
    bool ImportThresholds(const QString& ids);
    bool readSourceIds(SourceIds& sources);
    qint64 panelsOf(const QString& ids);
    void step();

    QString m_file;
    SharingProgress m_progress;
    std::shared_ptr<Database> m_shared;
    QStringList m_faults;
    QHash<qint64, qint64> m_panels; ///< of the import, as `SourceIds`
    qint64 m_done = 0;
    qint64 m_total = 0;
};

} // namespace lumivane
