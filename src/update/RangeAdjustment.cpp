#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/RuntimeError.h"
#include "range/RangeFit.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsLog.h"

#include <QSet>

// The stored ranges of a source's panels, moved on when a new file becomes current.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString adjustModule = u"clsPanelSource"_s;
const QString adjustProcedure = u"AdjustRanges"_s;

/// Works through the panels of one source with its new workbook open.
class RangeAdjustment
{
public:
    RangeAdjustment(std::shared_ptr<Database> database, std::shared_ptr<Workbook> workbook)
        : m_database(std::move(database)), m_workbook(std::move(workbook))
    {
    }

    void adjust(const std::shared_ptr<Recordset>& row)
    {
        if (row->text(u"RelativeTo") == "top"_L1)
            return;
        const auto sheet = worksheet(row->text(u"SheetName"));
        if (!sheet)
            return;
        clsWorkspacePanel panel;
        panel.LoadFromRecSet(m_database, row);
        if (const QString reason = misfit(panel, *sheet); !reason.isEmpty()) {
            LogEvent(adjustModule, adjustProcedure, u"%1: %2"_s.arg(panel.Caption, reason), false);
            return;
        }
        panel.AdjustAll(*sheet);
        panel.SaveToDB(m_database, static_cast<qint32>(row->number(u"WorkspaceID")));
    }

private:
    /// Why the range may not be moved on; one panel that fails keeps the others from nothing.
    static QString misfit(clsWorkspacePanel located, Worksheet& sheet)
    {
        try {
            return locateRange(located, sheet);
        } catch (const RuntimeError& failure) {
            return failure.description();
        }
    }

    std::shared_ptr<Worksheet> worksheet(const QString& name)
    {
        if (m_unreadable.contains(name))
            return nullptr;
        if (!Excel_HasSheet(m_workbook, name)) {
            LogEvent(adjustModule, adjustProcedure, name % u" not found in " % m_workbook->Name(), false);
            return nullptr;
        }
        // An engine may read a sheet only when it is needed. One that cannot be read must be seen here: the adjustment
        // passes over failures, and would store a panel without its range.
        const auto sheet = m_workbook->WorksheetByName(name);
        try {
            sheet->usedArea();
            return sheet;
        } catch (const RuntimeError& failure) {
            m_unreadable.insert(name);
            LogError(adjustModule, adjustProcedure, failure.number(), failure.description(), true);
            return nullptr;
        }
    }

    const std::shared_ptr<Database> m_database;
    const std::shared_ptr<Workbook> m_workbook;
    QSet<QString> m_unreadable; ///< sheets that have been reported already
};

} // namespace

void clsPanelSource::AdjustRanges(const std::shared_ptr<Database>& DB, const QString& Path)
{
    std::shared_ptr<Recordset> rows;
    try {
        const QString sql =
            u"SELECT * FROM LvnSavedPanel WHERE SourceID = "_s % QString::number(ID) % u" AND ContentType = 'S'";
        if (SQL_OpenRecordset(DB, rows, sql, true, {}, {}) && !rows->EOF_()) {
            const JobWorker worker;
            if (worker) {
                RangeAdjustment adjustment(DB, worker->Open(Path));
                for (; !rows->EOF_(); rows->MoveNext())
                    adjustment.adjust(rows);
            }
        }
    } catch (const RuntimeError& failure) {
        LogError(adjustModule, adjustProcedure, failure.number(), failure.description(), true);
    }
    if (rows)
        rows->Close();
}

} // namespace lumivane
