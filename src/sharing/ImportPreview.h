#pragma once

#include "platform/Result.h"
#include "sharing/DashboardList.h"

#include <QStringList>
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
    QStringList missingWorkbooks;      ///< of sources of which no file is here yet: the path, or folder and mask
    qint64 sources = 0;
    qint64 panels = 0;
};

/// Looks at the rows of the chosen dashboards and at the folders that their sources name, with alternate paths applied.
/// Refuses texts and numbers that no project holds, and more of them than this project has ids left for.
Result<ImportPreview> previewImport(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project,
                                    const QString& ids, const SharingProgress& progress = {});

} // namespace lumivane
