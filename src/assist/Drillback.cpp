#include "assist/Drillback.h"

#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"

namespace lumivane {

using namespace Qt::StringLiterals;

bool HasDrillback(qint32 sourceId, const QString& sheetName, const std::shared_ptr<Database>& db)
{
    // No box: menus ask while they are about to be shown.
    std::shared_ptr<Recordset> rows;
    if (!SQL_OpenRecordset(db, rows,
                           u"SELECT * FROM LvnDrillback"_s + u" WHERE PanelSourceID = "_s + QString::number(sourceId) +
                               u" AND Sheet = "_s + textLiteral(sheetName),
                           false, u"Main"_s, u"HasDrillback"_s))
        return false;
    const bool found = !rows->EOF_();
    rows->Close();
    return found;
}

} // namespace lumivane
