#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace lumivane {

class Recordset;

/// A dashboard offered for export or import.
struct DashboardEntry
{
    qint32 ID = 0;
    QString text; ///< its name, or its ID where it has none
};

/// One for each row of a query on LvnSavedWorkspace.
std::vector<DashboardEntry> dashboardEntries(Recordset& rows);

/// The ids as a list for a statement: commas, no blanks.
QString idList(const std::vector<qint32>& ids);

/// Called now and then during long work, so that a window can show it and stay alive. Answers whether to go on, which
/// is not looked at where stopping would leave something half done. A total of 0: nobody knows.
using SharingProgress = std::function<bool(qint64 done, qint64 total)>;

} // namespace lumivane
