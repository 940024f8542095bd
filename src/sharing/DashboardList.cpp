#include "sharing/DashboardList.h"

#include "repository/Database.h"

#include <QStringList>

namespace lumivane {

std::vector<DashboardEntry> dashboardEntries(Recordset& rows)
{
    std::vector<DashboardEntry> entries;
    for (; !rows.EOF_(); rows.MoveNext()) {
        const qint32 id = rows.number32(u"ID");
        entries.push_back({id, rows.isNull(u"Name") ? QString::number(id) : rows.text(u"Name")});
    }
    return entries;
}

QString idList(const std::vector<qint32>& ids)
{
    QStringList texts;
    for (const qint32 id : ids)
        texts.append(QString::number(id));
    return texts.join(u',');
}

} // namespace lumivane
