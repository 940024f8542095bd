#pragma once

#include "sharing/DashboardList.h"

namespace lumivane {

// Export of chosen dashboards of the open project into a shared file: the project is copied whole, and what was not
// chosen is deleted from the copy.

/// Every dashboard of the project, by name. False when they cannot be read.
bool exportableDashboards(std::vector<DashboardEntry>& dashboards);

/// Writes the shared file, in place of one that is there already. When it fails, a box has said why, except for
/// a run-time error, which is only logged. Unless it succeeds, the file of that name is as it was before.
bool ExportDashboard(const QString& File, const std::vector<qint32>& ids, const SharingProgress& progress = {});

} // namespace lumivane
