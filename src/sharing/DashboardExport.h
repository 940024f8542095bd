#pragma once

#include "sharing/DashboardList.h"

namespace lumivane {

// Export of chosen dashboards of the open project into a shared file: the project is copied whole, and what was not
// chosen is deleted from the copy.

/// Every dashboard of the project, by name. False when they cannot be read.
bool exportableDashboards(std::vector<DashboardEntry>& dashboards);

/// Writes the shared file; one that is there already goes first. The user has been told why when it fails, except for
/// a run-time error, which is only logged. A failure behind the copying leaves the copy, not pruned; when `progress`
/// ends it, nothing is left.
bool ExportDashboard(const QString& File, const std::vector<qint32>& ids, const SharingProgress& progress = {});

} // namespace lumivane
