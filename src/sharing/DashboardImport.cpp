#include "sharing/DashboardImport.h"

#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"
#include "sharing/SourceTransfer.h"
#include "sharing/ThresholdTransfer.h"

#include <QDateTime>
#include <QStringList>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString importModule = u"frmImport"_s;
/// Rows between two signs of life.
constexpr qint64 rowsAStep = 200;

bool refuseImport(const QString& reason)
{
    prompts().message(reason + u"  Unable to continue importing dashboards."_s, Prompts::Icon::Exclamation);
    return false;
}

bool openRows(const std::shared_ptr<Database>& database, std::shared_ptr<Recordset>& rows, const QString& sql,
              const QString& procedure)
{
    return SQL_OpenRecordset(database, rows, sql, false, importModule, procedure);
}

void copyFields(Recordset& from, Recordset& to, std::initializer_list<const char16_t*> columns)
{
    for (const char16_t* column : columns)
        to.setField(QStringView(column), from.Field(QStringView(column)));
}

/// The criterion by which a source is looked for is a text of its own; one with an apostrophe makes it fail.
void requireCriterion(Recordset& row)
{
    for (const char16_t* column : {u"UpdateType", u"Mask", u"DestFolder"}) {
        if (!staysOneText(row.text(QStringView(column))))
            throw RuntimeError(RuntimeError::ApplicationDefined,
                               u"Syntax error (missing operator) in the search for ["_s +
                                   row.text(QStringView(column)) + u"]."_s);
    }
}

qint64 lastId(Recordset& target)
{
    target.setBookmark(target.LastModified());
    return target.number(u"ID");
}

/// A new source counts as never checked, so that the next look for new versions fetches it.
qint64 addSource(Recordset& from, Recordset& target)
{
    const QDateTime never = longAgo();
    target.AddNew();
    copyFields(from, target, {u"FullPath", u"Mask", u"DestFolder"});
    target.setField(u"NewestFile", QString(u""_s));
    target.setField(u"LastUpdated", never);
    target.setField(u"LastChecked", never);
    copyFields(from, target,
               {u"CheckEveryNMin", u"UpdateType", u"SourceFolder", u"OutlookFolder", u"OutlookSubject",
                u"OutlookSender", u"OutlookAttachment", u"MacroName", u"CmdLine", u"AddedParams"});
    target.Update();
    return lastId(target);
}

} // namespace

DashboardImport::DashboardImport(const QString& ImportFile, SharingProgress progress)
    : m_file(ImportFile), m_progress(std::move(progress))
{
}

DashboardImport::~DashboardImport()
{
    if (m_shared)
        SQL_CloseDatabase(m_shared, false, importModule, u"Form_Unload"_s);
}

bool DashboardImport::Open()
{
    if (!FileExists(m_file)) {
        prompts().message(u"Import file ["_s + m_file + u"] does not exist."_s, Prompts::Icon::Exclamation);
        return false;
    }
    if (!SQL_OpenSharedFile(m_shared, m_file, databaseConnect(), true, importModule, u"Form_Activate"_s))
        return refuseImport(u"Error opening shared file."_s);
    return true;
}

/// The one handler of all procedures; it shows nothing.
bool DashboardImport::trapped(const QString& procedure, const std::function<bool()>& steps, const QString& fault)
{
    try {
        return steps();
    } catch (const RuntimeError& error) {
        LogError(importModule, procedure, error.number(), error.description(), false);
        m_faults.append(fault + u": "_s + error.description());
        return false;
    }
}

bool DashboardImport::importableDashboards(std::vector<DashboardEntry>& dashboards)
{
    const auto steps = [&] {
        std::shared_ptr<Recordset> rows;
        if (!openRows(gDB, rows, u"SELECT Name FROM LvnSavedWorkspace"_s, u"lstWorkspaces_Load"_s))
            return false;
        QStringList names;
        for (; !rows->EOF_(); rows->MoveNext()) {
            if (!rows->isNull(u"Name"))
                names.append(textLiteral(rows->text(u"Name")));
        }
        rows->Close();
        QString sql = u"SELECT * FROM LvnSavedWorkspace"_s;
        if (!names.isEmpty())
            sql += u" WHERE NOT Name IN ("_s + names.join(u',') + u')';
        if (!SQL_OpenRecordset(m_shared, rows, sql + u" ORDER BY Name"_s, true, importModule, u"lstWorkspaces_Load"_s))
            return false;
        dashboards = dashboardEntries(*rows);
        rows->Close();
        return true;
    };
    return trapped(u"lstWorkspaces_Load"_s, steps, u"The dashboards of the shared file cannot be read"_s);
}

Result<ImportPreview> DashboardImport::preview(const std::vector<qint32>& ids)
{
    return previewImport(m_shared, gDB, idList(ids), m_progress);
}

bool DashboardImport::ImportDashboard(const std::vector<qint32>& ids)
{
    m_faults.clear();
    const auto steps = [&] {
        const QString list = idList(ids);
        m_done = 0;
        m_total = panelsOf(list);
        DelTempSources(gDB);
        if (!ImportSources(list))
            return false;
        SourceIds sources;
        if (!readSourceIds(sources))
            return refuseImport(u"Error accessing sources."_s);
        m_panels.clear();
        const bool areImported = ImportWorkspaces(list, sources);
        ImportThresholds(list);
        return areImported;
    };
    return trapped(u"ImportDashboard"_s, steps, u"The dashboards were not imported"_s);
}

qint64 DashboardImport::panelsOf(const QString& ids)
{
    std::shared_ptr<Recordset> rows;
    if (!openRows(m_shared, rows,
                  u"SELECT COUNT(*) AS PanelCount FROM LvnSavedPanel WHERE WorkspaceID IN ("_s + ids + u')',
                  u"ImportDashboard"_s))
        return 0;
    return rows->number(u"PanelCount");
}

bool DashboardImport::readSourceIds(SourceIds& sources)
{
    std::shared_ptr<Recordset> rows;
    if (!openRows(gDB, rows, u"SELECT ID, NewID FROM TempSources"_s, u"ImportDashboard"_s))
        return false;
    for (; !rows->EOF_(); rows->MoveNext()) {
        if (!rows->isNull(u"ID") && !sources.contains(rows->number(u"ID")))
            sources.insert(rows->number(u"ID"), rows->number(u"NewID"));
    }
    rows->Close();
    return true;
}

bool DashboardImport::ImportSources(const QString& ids)
{
    const auto steps = [&] {
        if (!makeTempSources(m_shared, gDB, ids))
            return refuseImport(u"Error accessing source panels."_s);
        Database::Bulk bulk(*gDB);
        rewritePaths(m_shared, gDB, [this](qint64 done, qint64 total) {
            if (m_progress)
                m_progress(done, total);
            return true; // half of the paths would be worse than none
        });
        const bool areMatched = matchSources();
        bulk.finish();
        return areMatched;
    };
    return trapped(u"ImportSources"_s, steps, u"The sources of the dashboards were not all imported"_s);
}

bool DashboardImport::matchSources()
{
    std::shared_ptr<Recordset> target, sources;
    if (!openRows(gDB, target, u"SELECT * FROM LvnPanelSource"_s, u"ImportSources"_s))
        return refuseImport(u"Error accessing destination panels."_s);
    if (!openRows(gDB, sources, u"SELECT * FROM TempSources"_s, u"ImportSources"_s))
        return refuseImport(u"Error accessing source panels."_s);
    QHash<QString, qint64> known = knownSources(*target);
    qint64 place = 0;
    for (; !sources->EOF_(); sources->MoveNext()) {
        const QString identity = sourceIdentity(*sources);
        requireCriterion(*sources);
        if (!known.contains(identity))
            known.insert(identity, addSource(*sources, *target));
        // By its place, as the table has no key and is read in the order in which it was filled.
        gDB->Execute(u"UPDATE TempSources SET NewID = %1 WHERE rowid = %2"_s.arg(known.value(identity)).arg(++place));
    }
    target->Close();
    sources->Close();
    return true;
}

bool DashboardImport::ImportWorkspaces(const QString& ids, const SourceIds& sources)
{
    const auto steps = [&] {
        std::shared_ptr<Recordset> from, target;
        if (!openRows(m_shared, from, u"SELECT * FROM LvnSavedWorkspace WHERE ID IN ("_s + ids + u')',
                      u"ImportWorkspaces"_s))
            return refuseImport(u"Error accessing source dashboards."_s);
        if (!openRows(gDB, target, u"SELECT TOP 1 * FROM LvnSavedWorkspace"_s, u"ImportWorkspaces"_s))
            return refuseImport(u"Error accessing destination dashboards."_s);
        Database::Bulk bulk(*gDB);
        for (; !from->EOF_(); from->MoveNext()) {
            target->AddNew();
            copyFields(*from, *target,
                       {u"Name", u"Description", u"Template", u"Selected", u"LastUpdated", u"Status", u"Comments",
                        u"LastViewed"});
            target->Update();
            // A dashboard whose panels fail does not keep the next one from being imported.
            ImportPanels(from->number(u"ID"), lastId(*target), from->text(u"Name"), sources);
        }
        bulk.finish();
        from->Close();
        target->Close();
        return true;
    };
    return trapped(u"ImportWorkspaces"_s, steps, u"The dashboards were not all imported"_s);
}

bool DashboardImport::ImportPanels(qint64 oldWorkspaceId, qint64 newWorkspaceId, const QString& name,
                                   const SourceIds& sources)
{
    const auto steps = [&] {
        std::shared_ptr<Recordset> from, target;
        if (!openRows(m_shared, from,
                      u"SELECT * FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(oldWorkspaceId),
                      u"ImportPanels"_s))
            return refuseImport(u"Error accessing source panels."_s);
        if (!openRows(gDB, target, u"SELECT TOP 1 * FROM LvnSavedPanel"_s, u"ImportPanels"_s))
            return refuseImport(u"Error accessing destination panels."_s);
        for (; !from->EOF_(); from->MoveNext()) {
            const qint64 source = sources.value(from->number(u"SourceID"), 0);
            target->AddNew();
            target->setField(u"WorkspaceID", newWorkspaceId);
            target->setField(u"SourceID", source);
            copyFields(*from, *target,
                       {u"Ndx", u"Comments", u"ContentType", u"IsCustom", u"SheetName", u"PicRange", u"RowHeights",
                        u"ColWidths", u"RelativeTo", u"ContentMatch", u"Top", u"Left", u"Height", u"Width", u"ViewType",
                        u"LastViewed", u"Caption"});
            target->Update();
            if (!from->isNull(u"ID") && !m_panels.contains(from->number(u"ID")))
                m_panels.insert(from->number(u"ID"), lastId(*target));
            step();
        }
        from->Close();
        target->Close();
        return true;
    };
    return trapped(u"ImportPanels"_s, steps, u"The dashboard \"%1\" lacks panels"_s.arg(name));
}

bool DashboardImport::ImportThresholds(const QString& ids)
{
    const auto steps = [&] {
        Database::Bulk bulk(*gDB);
        transferThresholds(*m_shared, *gDB, ids, m_panels);
        bulk.finish();
        return true;
    };
    return trapped(u"ImportThresholds"_s, steps, u"The thresholds of the panels were not all imported"_s);
}

void DashboardImport::step()
{
    if (++m_done % rowsAStep == 0 && m_progress)
        m_progress(m_done, m_total);
}

} // namespace lumivane
