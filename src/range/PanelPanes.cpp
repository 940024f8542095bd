#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/Checked.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modUtilsLog.h"

#include <QStringList>
#include <algorithm>

// Fixed and moving parts of a panel's range, and the heights and widths that it brings along.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// What the columns of the repository hold; longer texts are cut there.
constexpr int longestRunsText = 255;
constexpr int invalidProcedureCall = 5;

/// One run of a stored heights or widths text: "5:12=12.75".
struct SizeRun
{
    QString key;
    QString rest; ///< from the "=" on
};

std::optional<SizeRun> splitRun(const QString& text)
{
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 0)
        return std::nullopt;
    return SizeRun{text.left(equals), text.mid(equals)};
}

/// Rewrites the key of every run. A run without "=" fails the whole.
template <class NewKey>
QString withShiftedKeys(const QString& runs, NewKey newKey)
{
    if (runs.isEmpty())
        return runs;
    QStringList shifted;
    for (const QString& text : runs.split(u'`')) {
        const auto run = splitRun(text);
        if (!run)
            throw RuntimeError(invalidProcedureCall, u"\"%1\" is no height or width of a panel."_s.arg(text));
        shifted.append(newKey(run->key) % run->rest);
    }
    return shifted.join(u'`');
}

/// Appends runs of equal sizes. Sizes are compared exactly: only what the user made equal is one run.
template <class KeyOf>
void appendRuns(QString& runs, int first, const std::vector<double>& sizes, KeyOf keyOf)
{
    int start = first;
    const int last = first + static_cast<int>(sizes.size()) - 1;
    double size = sizes.front();
    const auto run = [&](int end) { return QString(keyOf(start) % u':' % keyOf(end) % u'=' % plainNumber(size)); };
    for (int i = first + 1; i <= last; ++i) {
        const double next = sizes[static_cast<size_t>(i - first)];
        if (next == size)
            continue;
        runs += run(i - 1) % u'`';
        start = i;
        size = next;
    }
    runs += run(last);
}

bool refusePaste(const QString& reason)
{
    prompts().message(reason, Prompts::Icon::Exclamation);
    return false;
}

void warnIfTooLong(const QString& runs, const QString& warning)
{
    if (runs.size() > longestRunsText)
        prompts().message(warning, Prompts::Icon::Information);
}

QString columnKey(int first, int last)
{
    return TrackedLetters(first) % u':' % TrackedLetters(last);
}

QString rowKey(int first, int last)
{
    return QString::number(first) % u':' % QString::number(last);
}

} // namespace

bool clsWorkspacePanel::PasteRange(Worksheet& UserWS, const QString& RangeDefs)
{
    if (!SplitPaneRanges(UserWS, RangeDefs))
        return false;
    SaveHeightsWidths(UserWS);
    return true;
}

bool clsWorkspacePanel::SplitPaneRanges(Worksheet& UserWS, const QString& RangeDefs)
{
    const QStringList parts = RangeDefs.split(u'`');
    const SheetRange selection = UserWS.Range(parts.first());
    const auto moving = intersect(selection.area(), UserWS.Range(parts.last()).area());
    if (!moving)
        return refusePaste(u"No range of cells selected in the spreadsheet.  Please select a range and paste again."_s);
    movRange = moving->absolute();
    pFixRowFirst = pFixRowLast = 0;
    pFixColFirst.clear();
    pFixColLast.clear();

    if (parts.size() < 2)
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    const SheetRange first = UserWS.Range(parts[1]);
    const auto fixRows = [&] {
        pFixRowFirst = toRow(first.area().firstRow);
        pFixRowLast = toRow(first.area().lastRow);
    };
    const auto fixColumns = [&] {
        pFixColFirst = TrackedLetters(first.area().firstColumn);
        pFixColLast = TrackedLetters(first.area().lastColumn);
    };

    if (parts.size() == 3) {
        const SheetRange second = UserWS.Range(parts[2]);
        if (second.Row() == first.Row()) {
            if (first.Column() > second.Column())
                return refusePaste(u"The fixed columns must be on the left of the columns in the right pane of the "
                                   "spreadsheet.Please scroll the sheet so that the left side shows columns on the "
                                   "left of the right pane."_s);
            fixColumns();
        } else {
            if (first.Row() > second.Row())
                return refusePaste(u"The fixed rows must be above the rows in the bottom pane of the spreadsheet."
                                   "Please scroll the sheet so that the top pane shows rows that are above the lower "
                                   "pane's."_s);
            fixRows();
        }
    } else if (parts.size() == 5) {
        if (first.Row() > selection.Row() || first.Column() > selection.Column())
            return refusePaste(u"The fixed rows and columns must be above and to the left of the contents of the "
                               "bottom pane of the spreadsheet.Please scroll the sheet to correct the problem."_s);
        fixColumns();
        fixRows();
    }
    PicRange = movRange % u'`';
    BuildPicRange();
    return true;
}

void clsWorkspacePanel::GetHeights(Worksheet& WSheet, int start, int last)
{
    appendRuns(RowHeights, start, WSheet.rowHeights(start, std::max(start, last)),
               [](int row) { return QString::number(row); });
}

void clsWorkspacePanel::GetWidths(Worksheet& WSheet, int start, int last)
{
    TrackedLetters(last); // runs of columns without letters could never be laid on a sheet again
    appendRuns(ColWidths, start, WSheet.columnWidths(start, std::max(start, last)),
               [](int column) { return ColLetter(column); });
}

void clsWorkspacePanel::SaveHeightsWidths(Worksheet& UserWS)
{
    const CellArea moving = UserWS.Range(movRange).area();
    GetHeights(UserWS, toRow(moving.firstRow), toRow(moving.lastRow));
    if (pFixRowFirst > 0) {
        RowHeights += u'`';
        GetHeights(UserWS, pFixRowFirst, pFixRowLast);
    }
    warnIfTooLong(RowHeights, u"Too many different row heights. Some hidden rows may appear in the future."_s);

    GetWidths(UserWS, toColumn(moving.firstColumn), toColumn(moving.lastColumn));
    if (!pFixColFirst.isEmpty()) {
        ColWidths += u'`';
        GetWidths(UserWS, ColNumber(UserWS, pFixColFirst), ColNumber(UserWS, pFixColLast));
    }
    warnIfTooLong(ColWidths, u"Too many different column widths. Some hidden columns may appear in the future."_s);
}

QString clsWorkspacePanel::adjRange(Worksheet& ws)
{
    // Stored sizes are laid last: where both touch a row or column they prevail over the squeezing.
    CalcAdjPicRange(ws);
    adjHeightWidths(ws);
    return pAdjPicRange;
}

void clsWorkspacePanel::CalcAdjPicRange(Worksheet& ws)
{
    CellArea joined = ws.Range(pAdjMovRange).area();
    toRow(joined.lastRow); // rows beyond the limit fail here

    // A gap of a single row or column is left in the picture; panels in use are laid out with it.
    if (!pFixColFirst.isEmpty()) {
        const int first = ColNumber(ws, pFixColFirst);
        const int last = ColNumber(ws, pFixColLast);
        if (first > 1)
            ws.Range(columnKey(1, first - 1)).setColumnWidth(0);
        if (last + 1 < joined.firstColumn - 1)
            ws.Range(columnKey(last + 1, joined.firstColumn - 1)).setColumnWidth(0);
        joined.firstColumn = std::min(joined.firstColumn, first);
        joined.lastColumn = std::max(joined.lastColumn, last);
    }
    if (pFixRowFirst > 0) {
        if (pFixRowFirst > 1)
            ws.Range(rowKey(1, pFixRowFirst - 1)).setRowHeight(0);
        if (pFixRowLast + 1 < joined.firstRow - 1)
            ws.Range(rowKey(pFixRowLast + 1, joined.firstRow - 1)).setRowHeight(0);
        joined.firstRow = std::min(joined.firstRow, pFixRowFirst);
        joined.lastRow = std::max(joined.lastRow, pFixRowLast);
    }
    pAdjPicRange = TrackedAddress(joined);
}

void clsWorkspacePanel::adjHeightWidths(Worksheet& ws)
{
    try {
        ws.Activate();
        for (const QString& text : RowHeights.split(u'`')) {
            auto run = splitRun(text);
            if (!run)
                continue;
            if (pFixRowLast >= 1 && pRowOff != 0 && ws.Range(run->key).Row() > pFixRowLast)
                run->key = OffsetRows(ws, run->key, pRowOff);
            ws.Rows(run->key).setRowHeight(leadingNumber(QStringView(run->rest).mid(1)));
        }
        for (const QString& text : ColWidths.split(u'`')) {
            auto run = splitRun(text);
            if (!run)
                continue;
            if (!pFixColFirst.isEmpty() && pColOff != 0 && ws.Range(run->key).Column() > ColNumber(ws, pFixColLast))
                run->key = OffsetCols(ws, run->key, pColOff);
            ws.Columns(run->key).setColumnWidth(leadingNumber(QStringView(run->rest).mid(1)));
        }
    } catch (const RuntimeError& failure) {
        LogError(u"clsWorkspacePanel"_s, u"AdjHeightWidths"_s, failure.number(), failure.description(), false);
    }
}

// Rows and columns are not treated alike, and stored panels depend on it: without fixed rows the row keys stay where
// they are when the range moves, while without fixed columns the column keys move with it.
void clsWorkspacePanel::ShiftHeightsWidths(Worksheet& ws)
{
    RowHeights = withShiftedKeys(RowHeights, [&](const QString& key) {
        if (pRowOff == 0)
            return OffsetRows(ws, key, 0);
        const bool moves = pFixRowLast > 0 && ws.Range(key).Row() > pFixRowLast;
        return moves ? OffsetRows(ws, key, pRowOff) : key;
    });
    ColWidths = withShiftedKeys(ColWidths, [&](const QString& key) {
        if (pColOff == 0)
            return key;
        const bool moves = pFixColFirst.isEmpty() || ws.Range(key).Column() > ColNumber(ws, pFixColLast);
        return moves ? OffsetCols(ws, key, pColOff) : key;
    });
}

} // namespace lumivane
