#pragma once

#include "repository/Database.h"
#include "support/QtPrinting.h"

namespace lumivane::test {

/// The rows of a query as text, columns separated by "|", null as "-".
inline QStringList rowsOf(Database& project, const QString& sql)
{
    QStringList lines;
    const auto rs = project.OpenRecordset(sql);
    for (; !rs->EOF_(); rs->MoveNext()) {
        QStringList values;
        for (const QString& name : rs->fieldNames())
            values.append(rs->isNull(name) ? QStringLiteral("-") : rs->text(name));
        lines.append(values.join(u'|'));
    }
    return lines;
}

} // namespace lumivane::test
