#pragma once

#include "sharing/DashboardList.h"

#include <QHash>
#include <QString>
#include <memory>

namespace lumivane {

class Database;
class Recordset;

// The first part of an import: the sources of chosen dashboards come into the table TempSources of a project, with
// their paths rewritten for this machine.

/// Removes the table that an earlier import left; a failure is only logged.
void DelTempSources(const std::shared_ptr<Database>& project);

/// Makes TempSources in the file of `project` from the sources that panels of these dashboards use. False, logged, when
/// the statement fails.
bool makeTempSources(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project,
                     const QString& ids);

/// Applies the alternate paths of the shared file, longest base first, where the base does not exist on this machine
/// and the alternate does. All paths of a column under one base become the same: that of the first source. Stops
/// between two of them when the progress says so.
void rewritePaths(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project,
                  const SharingProgress& progress = {});

/// What makes two sources one, compared as the store compares texts. Throws RuntimeError for a row that lacks a part.
QString sourceIdentity(Recordset& row);
/// The ids of sources by identity; of two alike the first counts.
QHash<QString, qint64> knownSources(Recordset& rows);

} // namespace lumivane
