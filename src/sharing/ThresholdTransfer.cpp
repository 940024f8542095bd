#include "sharing/ThresholdTransfer.h"

#include "repository/Database.h"

namespace lumivane {

using namespace Qt::StringLiterals;

bool holdsThresholds(const Database& shared)
{
    return shared.TableNames().contains(u"LvnpanelThresholds"_s, Qt::CaseInsensitive);
}

QString thresholdsQuery(const QString& ids)
{
    return u"SELECT * FROM LvnpanelThresholds WHERE PanelID IN ( SELECT ID FROM LvnSavedPanel WHERE WorkspaceID IN ("_s +
           ids + u"))"_s;
}

void transferThresholds(Database& shared, Database& project, const QString& ids, const QHash<qint64, qint64>& panels)
{
    if (!holdsThresholds(shared))
        return;
    const auto from = shared.OpenRecordset(thresholdsQuery(ids));
    const auto to = project.OpenRecordset(u"SELECT TOP 1 * FROM LvnpanelThresholds"_s);
    for (; !from->EOF_(); from->MoveNext()) {
        const qint64 panel = panels.value(from->number(u"PanelID"), 0);
        if (panel == 0)
            continue;
        to->AddNew();
        to->setField(u"PanelID", panel);
        for (const char16_t* column : {u"rowOffset", u"colOffset", u"highExp", u"ifHigh", u"lowExp", u"ifLow"})
            to->setField(QStringView(column), from->Field(QStringView(column)));
        to->Update();
    }
}

} // namespace lumivane
