#pragma once

#include "platform/Result.h"
#include "sharing/DashboardList.h"

#include <QString>
#include <memory>
#include <vector>

namespace lumivane {

class Database;

/// A folder that the sources of an import will use on this machine, as the program will resolve it.
struct ImportFolder
{
    QString path;
    bool isRead = false;
    bool isWritten = false;
    bool exists = false;
};

/// What an import would lead to, before anything is written.
struct ImportPreview
{
    std::vector<ImportFolder> folders; ///< by path, each once
    qint64 sources = 0;
    qint64 panels = 0;
};

/// Looks at the rows of the chosen dashboards and at the folders that their sources name, with alternate paths applied.
/// Refuses texts and numbers that no project holds, and more of them than any.
Result<ImportPreview> previewImport(const std::shared_ptr<Database>& shared, const QString& ids,
                                    const SharingProgress& progress = {});

} // namespace lumivane
