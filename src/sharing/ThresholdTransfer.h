#pragma once

#include <QHash>
#include <QString>

namespace lumivane {

class Database;

// Thresholds of the panels of chosen dashboards on their way from a shared file into a project.

/// False for a file made without their table.
bool holdsThresholds(const Database& shared);
/// The query for the rules of all panels of these dashboards.
QString thresholdsQuery(const QString& ids);
/// Adds them to the project. `panels` gives the new id of a panel by its id in the shared file; rules of others are
/// left out. Throws RuntimeError.
void transferThresholds(Database& shared, Database& project, const QString& ids, const QHash<qint64, qint64>& panels);

} // namespace lumivane
