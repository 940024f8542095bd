#include "repository/clsWorkspacePanel.h"

#include "platform/Checked.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/modUtilsSQL.h"

#include <QScopeGuard>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestRuns = 255;

const QString& panelModule()
{
    static const QString name = u"clsWorkspacePanel"_s;
    return name;
}

/// What the column takes of a list of row or column runs: whole runs, since one cut in two would be another one.
QString fittingRuns(const QString& runs)
{
    if (runs.size() <= longestRuns)
        return runs;
    const qsizetype end = runs.lastIndexOf(u'`', longestRuns);
    return end < 0 ? QString() : runs.first(end);
}

} // namespace

bool clsWorkspacePanel::LoadFromDB(int PanelID, const std::shared_ptr<Database>& DB)
{
    std::shared_ptr<Recordset> rs;
    if (!SQL_OpenRecordset(DB, rs, u"SELECT * FROM LvnSavedPanel"_s + u" WHERE ID = "_s + QString::number(PanelID),
                           true, panelModule(), u"LoadFromDB"_s))
        return false;
    return !rs->EOF_() && LoadFromRecSet(DB, rs);
}

bool clsWorkspacePanel::LoadFromRecSet(const std::shared_ptr<Database>&, const std::shared_ptr<Recordset>& rs)
{
    // A row that cannot be read to its end changes nothing: half of it would be stored with the next save.
    auto halfRead = qScopeGuard([this, before = *this] { *this = before; });
    LastViewed = longAgo();
    for (QString* text : {&movRange, &pAdjMovRange, &pAdjPicRange, &NewCell, &Content})
        text->clear();
    pRowOff = 0;
    pColOff = 0;

    ID = toInt16(double(rs->number(u"ID")));
    try {
        pLeft = toStoredTwips(double(rs->number(u"Left")));
        pTop = toStoredTwips(double(rs->number(u"Top")));
        pWidth = toStoredTwips(double(rs->number(u"Width")));
        pHeight = toStoredTwips(double(rs->number(u"Height")));
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.number(), u"Panel '"_s + rs->text(u"Caption") +
                                               u"' has a place or size that cannot be used. "_s + error.description());
    }
    SourceID = rs->number32(u"SourceID");

    rs->read(u"Comments", Comments);
    rs->read(u"ContentType", ContentType);
    rs->read(u"SheetName", SheetName);
    rs->read(u"PicRange", PicRange);
    rs->read(u"RowHeights", RowHeights);
    rs->read(u"ColWidths", ColWidths);
    rs->read(u"RelativeTo", RelativeTo);
    rs->read(u"ContentMatch", ContentMatch);
    rs->read(u"ViewType", ViewType);
    rs->read(u"LastViewed", LastViewed);
    rs->read(u"Caption", Caption);
    rs->read(u"IsCustom", IsCustom);
    halfRead.dismiss();
    return true;
}

bool clsWorkspacePanel::SaveToDB(const std::shared_ptr<Database>& DB, qint32 WorkspaceID)
{
    const bool isSaved = ID < 1 ? InsertDB(DB, WorkspaceID) : UpdateDB(DB, WorkspaceID);
    return isSaved && copyThresholds(DB);
}

void clsWorkspacePanel::becomeCopy()
{
    // A copy that could not be saved is still one of the panel that it was made of.
    if (m_thresholdsOf < 1)
        m_thresholdsOf = ID;
    ID = 0;
}

bool clsWorkspacePanel::copyThresholds(const std::shared_ptr<Database>& DB)
{
    if (m_thresholdsOf < 1 || m_thresholdsOf == ID) {
        m_thresholdsOf = 0; // the panel itself again, whose copy came to nothing
        return true;
    }
    const QString columns = u", rowOffset, colOffset, highExp, ifHigh, lowExp, ifLow"_s;
    const QString sql = u"INSERT INTO LvnpanelThresholds (PanelID"_s + columns + u") SELECT "_s + QString::number(ID) +
                        columns + u" FROM LvnpanelThresholds WHERE PanelID = "_s + QString::number(m_thresholdsOf);
    if (!SQL_Execute(DB, sql, true, panelModule(), u"SaveToDB"_s))
        return false;
    m_thresholdsOf = 0;
    return true;
}

bool clsWorkspacePanel::InsertDB(const std::shared_ptr<Database>& DB, qint32 WorkspaceID)
{
    const QString workspace = QString::number(WorkspaceID);
    QString sql = u"INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, Comments, "_s +
                  u" ContentType, SheetName, ViewType, Caption, "_s +
                  u" PicRange, RowHeights, ColWidths, RelativeTo, ContentMatch, isCustom, LastViewed, "_s +
                  u" [Top], [Left], Height, Width)"_s + u" VALUES ("_s + workspace + u","_s +
                  QString::number(SourceID) + u", "_s + doubledLiteral(Comments) + u","_s;
    for (const QString& text :
         {textLiteral(ContentType), textLiteral(SheetName), textLiteral(ViewType), doubledLiteral(Caption),
          textLiteral(PicRange), textLiteral(fittingRuns(RowHeights)), textLiteral(fittingRuns(ColWidths)),
          textLiteral(RelativeTo), textLiteral(ContentMatch), textLiteral(IsCustom)})
        sql += u" "_s + text + u", "_s;
    sql += u" "_s + dateLiteral(LastViewed) + u", "_s + QString::number(pTop) + u","_s + QString::number(pLeft) +
           u","_s + QString::number(pHeight) + u","_s + QString::number(pWidth) + u")"_s;
    if (!SQL_Execute(DB, sql, true, panelModule(), u"InsertDB"_s))
        return false;
    std::shared_ptr<Recordset> rs;
    if (!SQL_OpenRecordset(
            DB, rs, u"SELECT MAX(LvnSavedPanel.ID) AS ID FROM LvnSavedPanel"_s + u" WHERE WorkspaceID = "_s + workspace,
            true, panelModule(), u"InsertDB"_s))
        return false;
    ID = SQL_KeepNewID(DB, u"LvnSavedPanel"_s, u"panel"_s, rs->number(u"ID"), panelModule(), u"InsertDB"_s);
    return true;
}

bool clsWorkspacePanel::UpdateDB(const std::shared_ptr<Database>& DB, qint32 WorkspaceID)
{
    const auto assigned = [](const QString& column, const QString& text) {
        return QString(u" "_s + column + u" = "_s + textLiteral(text) + u", "_s);
    };
    const QString sql =
        u"UPDATE LvnSavedPanel SET "_s + u" WorkspaceID = "_s + QString::number(WorkspaceID) + u","_s +
        u" SourceID = "_s + QString::number(SourceID) + u","_s + u" Comments = "_s + doubledLiteral(Comments) + u","_s +
        assigned(u"ContentType"_s, ContentType) + assigned(u"SheetName"_s, SheetName) +
        assigned(u"ViewType"_s, ViewType) + u" Caption = "_s + doubledLiteral(Caption) + u", "_s +
        assigned(u"PicRange"_s, PicRange) + assigned(u"RowHeights"_s, fittingRuns(RowHeights)) +
        assigned(u"ColWidths"_s, fittingRuns(ColWidths)) + assigned(u"RelativeTo"_s, RelativeTo) +
        assigned(u"ContentMatch"_s, ContentMatch) + assigned(u"IsCustom"_s, IsCustom) + u" LastViewed = "_s +
        dateLiteral(LastViewed) + u", "_s + u" [Top] = "_s + QString::number(pTop) + u","_s + u" [Left] = "_s +
        QString::number(pLeft) + u","_s + u" Height = "_s + QString::number(pHeight) + u","_s + u" Width = "_s +
        QString::number(pWidth) + u" WHERE ID = "_s + QString::number(ID);
    return SQL_ExecuteOnRow(DB, sql, u"panel [%1]"_s.arg(Caption), panelModule(), u"UpdateDB"_s);
}

bool clsWorkspacePanel::Delete(const std::shared_ptr<Database>& DB)
{
    return SQL_Execute(DB, u"DELETE * FROM LvnSavedPanel"_s + u" WHERE ID = "_s + QString::number(ID), true,
                       panelModule(), u"Delete"_s);
}

void clsWorkspacePanel::ClearSource()
{
    SourceID = 0;
    for (QString* text : {&ContentType, &Comments, &ViewType, &Caption, &IsCustom, &SheetName, &PicRange, &RelativeTo,
                          &ContentMatch, &movRange, &pAdjMovRange, &pAdjPicRange, &NewCell, &Content})
        text->clear();
    LastViewed = longAgo();
    pRowOff = 0;
    pColOff = 0;
    m_thresholdsOf = 0;
}

std::shared_ptr<clsPanelSource> clsWorkspacePanel::Source() const
{
    return gSources ? gSources->Source(SourceID) : nullptr;
}

void clsWorkspacePanel::BuildPicRange()
{
    if (pFixRowFirst > 0)
        PicRange += QString::number(pFixRowFirst) + u':' + QString::number(pFixRowLast);
    PicRange += u'`';
    if (!pFixColFirst.isEmpty())
        PicRange += pFixColFirst + u':' + pFixColLast;
}

void clsWorkspacePanel::ParsePicRange()
{
    if (!movRange.isEmpty())
        return;
    const QStringList parts = PicRange.split(u'`');
    if (const QString rows = parts.value(1); !rows.isEmpty()) {
        pFixRowFirst = toRow(leadingNumber(rows.section(u':', 0, 0)));
        pFixRowLast = toRow(leadingNumber(rows.section(u':', 1)));
    }
    if (const QString columns = parts.value(2); !columns.isEmpty()) {
        pFixColFirst = columns.section(u':', 0, 0);
        pFixColLast = columns.section(u':', 1);
    }
    // Last: where the fixed parts cannot be used, a second try must not take them for none.
    movRange = parts[0];
}

} // namespace lumivane
