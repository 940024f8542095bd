#pragma once

#include "repository/Database.h"

namespace lumivane {

/// Throws RuntimeError for a file whose schema holds anything but plain tables and indexes, as no file of the program
/// does: triggers, views, virtual tables, and expressions that SQLite would evaluate merely to read or check a row.
void refuseForeignSchema(Database::Connection& file);

} // namespace lumivane
