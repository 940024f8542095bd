#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/Checked.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modUtilsLog.h"

#include <algorithm>

// Where a panel's range lies in another version of its workbook.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// Anchors and bottom cells shorter than this count as not given.
constexpr int shortestCellText = 2;

/// Runs a step whose failure must not keep the next one from running.
template <class Step>
void attempt(Step step)
{
    try {
        step();
    } catch (const RuntimeError&) {
    }
}

SheetRange findValue(Worksheet& ws, const SheetRange& where, const QString& value, SearchOrder order)
{
    const auto hit = ws.Find(where.area(), {value, LookAt::Whole, SearchDirection::Next, order});
    if (!hit)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    return {ws, *hit};
}

SheetRange findInColumn(Worksheet& ws, const QString& anchor, const QString& value)
{
    const int column = ws.Range(anchor).Column();
    const SheetRange used = ws.UsedRange();
    const int lastRow = used.RowsCount() + used.Row() - 1;
    const SheetRange searched = ws.Range(ws.Cells(1, column), ws.Cells(lastRow, column));
    return ws.Cells(toRow(findValue(ws, searched, value, SearchOrder::ByRows).Row()), column);
}

SheetRange findInRow(Worksheet& ws, const QString& anchor, const QString& value)
{
    const int row = ws.Range(anchor).Row();
    const SheetRange used = ws.UsedRange();
    const int lastColumn = used.ColumnsCount() + used.Column() - 1;
    const SheetRange searched = ws.Range(ws.Cells(row, 1), ws.Cells(row, lastColumn));
    return ws.Cells(row, toColumn(findValue(ws, searched, value, SearchOrder::ByColumns).Column()));
}

/// Row and column come from two searches. With several hits the cell at their crossing need not hold the value; stored
/// definitions rely on that cell all the same.
SheetRange findOnSheet(Worksheet& ws, const QString& value)
{
    const int row = toRow(findValue(ws, ws.Cells(), value, SearchOrder::ByRows).Row());
    const int column = toColumn(findValue(ws, ws.Cells(), value, SearchOrder::ByColumns).Column());
    return ws.Cells(row, column);
}

struct Distance
{
    int rows = 0;
    int columns = 0;
};

Distance distance(Worksheet& ws, const QString& from, const QString& to)
{
    const SheetRange target = ws.Range(to);
    const SheetRange start = ws.Range(from);
    return {toRow(target.Row() - start.Row()), toColumn(target.Column() - start.Column())};
}

/// The form that says what the next search may change: the part with a sign stays.
QString anchorText(const SheetRange& cell, bool fixedRow, bool fixedColumn)
{
    const QString sign = u"$"_s;
    return (fixedColumn ? sign : QString()) % columnLetters(cell.Column()) % (fixedRow ? sign : QString()) %
           QString::number(cell.Row());
}

std::optional<SheetRange> firstVisibleValue(Worksheet& ws, const SheetRange& range)
{
    // Nothing outside the cells in use holds a value; whole rows and columns end there.
    const CellArea used = ws.usedArea();
    const int rows = std::min(range.RowsCount(), used.lastRow - range.Row() + 1);
    const int columns = std::min(range.ColumnsCount(), used.lastColumn - range.Column() + 1);
    for (int i = 1; i <= rows; ++i) {
        if (range.Cells(i, 1).RowHeight() <= 0)
            continue;
        for (int j = 1; j <= columns; ++j) {
            const SheetRange cell = range.Cells(i, j);
            if (cell.ColumnWidth() > 0 && !cell.ValueText().isEmpty())
                return cell;
        }
    }
    return std::nullopt;
}

} // namespace

void clsWorkspacePanel::parseContentMatch(QString& bottom, QString& anchor, QString& content) const
{
    const QString bottomKey = u"bottom="_s, anchorKey = u"anchor="_s, contentKey = u"content="_s;

    bottom.clear();
    const qsizetype bottomAt = ContentMatch.indexOf(bottomKey, 0, Qt::CaseInsensitive);
    if (bottomAt >= 0) {
        const qsizetype start = bottomAt + bottomKey.size();
        const qsizetype end = ContentMatch.indexOf(u'`', bottomAt);
        bottom = end < 0 ? ContentMatch.mid(start) : ContentMatch.mid(start, end - start);
    }

    const qsizetype anchorAt = ContentMatch.indexOf(anchorKey, 0, Qt::CaseInsensitive);
    const qsizetype anchorEnd = anchorAt < 0 ? -1 : ContentMatch.indexOf(u'`', anchorAt);
    if (anchorEnd < 0)
        return;
    const qsizetype contentAt = ContentMatch.indexOf(contentKey, 0, Qt::CaseInsensitive);
    if (contentAt < 0) {
        anchor.clear();
        content.clear();
        return;
    }
    const qsizetype anchorStart = anchorAt + anchorKey.size();
    anchor = ContentMatch.mid(anchorStart, anchorEnd - anchorStart);
    content = ContentMatch.mid(contentAt + contentKey.size());
}

void clsWorkspacePanel::GetAdjRange(Worksheet& ws)
{
    ParsePicRange();
    pRowOff = pColOff = 0;
    QString found = movRange;
    if (RelativeTo == "bottom"_L1)
        found = FromBottomRight(ws);
    else if (RelativeTo == "contents"_L1)
        found = FromAnchor(ws);
    pAdjMovRange = found.section(u'`', 0, 0);
}

QString clsWorkspacePanel::FromBottomRight(Worksheet& ws)
{
    QString bottom, anchor, content;
    parseContentMatch(bottom, anchor, content);
    const QString current = LastFilledCell(ws);
    if (bottom.size() < shortestCellText)
        bottom = current;
    const QString found = MoveRange(ws, movRange, bottom, current);
    const Distance moved = distance(ws, movRange, found);
    pColOff = moved.columns;
    pRowOff = moved.rows;
    return found;
}

QString clsWorkspacePanel::FromAnchor(Worksheet& ws)
{
    QString bottom, anchor;
    parseContentMatch(bottom, anchor, Content);
    try {
        if (Content.isEmpty() || anchor.size() < shortestCellText)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        const bool laterSign = anchor.indexOf(u'$', 1) >= 0;
        anchorCols = anchor.startsWith(u'$');
        // A free anchor ("C5") counts as one with its row fixed: once found, only that row is searched.
        anchorRows = !anchorCols || laterSign;
        if (anchorCols && laterSign)
            return movRange;

        const SheetRange hit = anchorCols  ? findInColumn(ws, anchor, Content)
                               : laterSign ? findInRow(ws, anchor, Content)
                                           : findOnSheet(ws, Content);
        const QString found = MoveRange(ws, movRange, anchor, hit.Address());
        const Distance moved = distance(ws, movRange, found);
        pColOff = moved.columns;
        pRowOff = moved.rows;
        NewCell = anchorText(hit, anchorRows, anchorCols);
        return found;
    } catch (const RuntimeError&) {
        // An anchor that is not found leaves the panel on its stored range, and is remembered for the next version.
        pRowOff = pColOff = 0;
        NewCell = anchor;
        return PicRange;
    }
}

void clsWorkspacePanel::AdjustAll(Worksheet& ws)
{
    attempt([&] { GetAdjRange(ws); });
    attempt([&] { ShiftHeightsWidths(ws); });
    PicRange = pAdjMovRange % u'`';
    attempt([&] { BuildPicRange(); });
    const QString bottom = RelativeTo == "bottom"_L1 ? RealBottomRight(ws) : QString();
    const QString anchor = RelativeTo == "contents"_L1 ? NewCell : QString();
    ContentMatch = u"bottom=" % bottom % u"`anchor=" % anchor % u"`content=" % Content;
}

void clsWorkspacePanel::SetAnchorDefaults(Worksheet& ws)
{
    try {
        const auto cell = firstVisibleValue(ws, ws.Range(pAdjMovRange));
        if (!cell)
            return;
        NewCell = cell->Address();
        Content = cell->ValueText();
        anchorCols = true;
        anchorRows = false;
    } catch (const RuntimeError& failure) {
        LogError(u"clsWorkspacePanel"_s, u"SetAnchorDefaults"_s, failure.number(), failure.description(), false);
    }
}

} // namespace lumivane
