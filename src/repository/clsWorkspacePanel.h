#pragma once

#include "platform/Clock.h"

#include <QDateTime>
#include <QString>
#include <memory>

namespace lumivane {

class Database;
class Recordset;
class Worksheet;
class clsPanelSource;

/// A panel's stored definition, one row of LvnSavedPanel, with the working fields of its range logic. The record's
/// members are defined in repository/, those that look at a worksheet in range/.
class clsWorkspacePanel
{
public:
    qint16 ID = 0;       ///< below 1: not stored yet
    qint32 SourceID = 0; ///< 0: no source
    QString Comments;
    QString ContentType; ///< "S" range, "C" chart or shape, "P" picture file, "M" read like "S"
    QString IsCustom;    ///< "Y": keeps a personal copy of its workbook
    QString SheetName;
    QString PicRange;     ///< moving range ` fixed rows ` fixed columns; for "C" the name of the chart or shape
    QString RowHeights;   ///< runs such as "5:12=12.75" joined by back-quotes, points
    QString ColWidths;    ///< runs such as "A:C=8.43" joined by back-quotes, characters
    QString RelativeTo;   ///< "top", "bottom", "contents"
    QString ContentMatch; ///< "bottom=", "anchor=", "content=" clauses joined by back-quotes
    int pLeft = 0, pTop = 0, pWidth = 0, pHeight = 0; ///< window on the dashboard, twips
    QString ViewType;                                 ///< "A" autosize, "C" crop, "Z" zoom to fit
    QDateTime LastViewed = longAgo();
    QString Caption;

    // Working fields, not stored.
    QString movRange;
    QString pAdjMovRange;
    QString NewCell;
    QString Content;
    bool anchorRows = false;
    bool anchorCols = false;

    // The record (repository/).
    bool LoadFromDB(int PanelID, const std::shared_ptr<Database>& DB);
    bool LoadFromRecSet(const std::shared_ptr<Database>& DB, const std::shared_ptr<Recordset>& rs);
    bool SaveToDB(const std::shared_ptr<Database>& DB, qint32 WorkspaceID);
    bool Delete(const std::shared_ptr<Database>& DB);
    /// The next save stores a new row, with the thresholds of the present one; that one stays as it is.
    void becomeCopy();
    /// Makes the panel an empty one; heights, widths and fixed parts deliberately stay.
    void ClearSource();
    /// The panel's source in gSources, or null.
    std::shared_ptr<clsPanelSource> Source() const;
    void BuildPicRange();
    void ParsePicRange();

    // The range logic (range/). `ws` is the sheet of the version being examined; failures are thrown as RuntimeError.
    void parseContentMatch(QString& bottom, QString& anchor, QString& content) const;
    void GetAdjRange(Worksheet& ws);
    QString FromBottomRight(Worksheet& ws);
    QString FromAnchor(Worksheet& ws);
    void AdjustAll(Worksheet& ws);
    void SetAnchorDefaults(Worksheet& ws);
    const QString& adjMovRange() const { return pAdjMovRange; }
    /// Takes the user's selection and panes; tells the user why when it refuses.
    bool PasteRange(Worksheet& UserWS, const QString& RangeDefs);
    void GetHeights(Worksheet& WSheet, int start, int last);
    void GetWidths(Worksheet& WSheet, int start, int last);
    /// Joins fixed and moving parts on the sheet, lays the stored heights and widths, and gives the rectangle to draw.
    QString adjRange(Worksheet& ws);
    void adjHeightWidths(Worksheet& ws);
    const QString& adjPicRange() const { return pAdjPicRange; }
    /// Where a cell of the stored definition lies in this version, as "C5". GetAdjRange must have run.
    QString MapCell(qint32 row, qint32 col, Worksheet& ws) const;
    /// Colours the cells whose values pass a limit of LvnpanelThresholds, on the sheet and so in its picture. Throws
    /// for a watched cell that holds no number.
    void lightCells(Worksheet& ws, const std::shared_ptr<Database>& DB) const;

    int rowOffset() const { return pRowOff; }
    int columnOffset() const { return pColOff; }

private:
    bool InsertDB(const std::shared_ptr<Database>& DB, qint32 WorkspaceID);
    bool UpdateDB(const std::shared_ptr<Database>& DB, qint32 WorkspaceID);
    bool copyThresholds(const std::shared_ptr<Database>& DB);
    bool SplitPaneRanges(Worksheet& UserWS, const QString& RangeDefs);
    void SaveHeightsWidths(Worksheet& UserWS);
    void CalcAdjPicRange(Worksheet& ws);
    void ShiftHeightsWidths(Worksheet& ws);
    QString watchedCell(qint32 row, qint32 col, const QString& action, Worksheet& ws) const;

    int pFixRowFirst = 0, pFixRowLast = 0;
    QString pFixColFirst, pFixColLast;
    int pRowOff = 0, pColOff = 0;
    QString pAdjPicRange;
    qint16 m_thresholdsOf = 0; ///< the panel whose thresholds the next save copies; 0: none

    friend struct PanelProbe; // tests look at the fixed fields
};

} // namespace lumivane
