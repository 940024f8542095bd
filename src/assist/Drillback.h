#pragma once

#include <QString>
#include <memory>

namespace lumivane {

class Database;

/// Whether it is defined where the data behind this sheet of a source can be viewed. The program only asks; nothing in
/// it writes such definitions. False, and a line in the log, where the project cannot be asked.
bool HasDrillback(qint32 sourceId, const QString& sheetName, const std::shared_ptr<Database>& db);

} // namespace lumivane
