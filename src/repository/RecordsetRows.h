#pragma once

#include "repository/Connection.h"

#include <QStringList>
#include <memory>
#include <optional>

namespace lumivane {

/// The rows of a query in memory, and where they came from.
struct Recordset::Rows
{
    std::weak_ptr<Database::Connection> connection;
    QStringList names;
    QStringList origins; ///< the columns' names in their table
    QString table;       ///< empty when the columns are not all of one table
    QList<Row> rows;
    qsizetype position = 0;
    qint64 lastModified = -1;
    std::optional<Row> added; ///< between AddNew and Update
};

} // namespace lumivane
