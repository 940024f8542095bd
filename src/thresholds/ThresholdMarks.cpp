#include "thresholds/ThresholdMarks.h"
#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/Checked.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"
#include "repository/modUtilsSQL.h"
#include "thresholds/ThresholdFormula.h"

// Cells of a panel that are marked because their values pass a limit.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString panelRecordModule = u"clsWorkspacePanel"_s;

double watchedValue(const SheetRange& cell)
{
    const QString text = cell.ValueText();
    if (text.isEmpty())
        return 0;
    // A truth value counts as the number that it is to the program's own conversions.
    if (text == u"TRUE")
        return -1;
    if (text == u"FALSE")
        return 0;
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber)
        throw RuntimeError(RuntimeError::TypeMismatch, u"The cell %1 of sheet [%2] is watched for a limit and holds "
                                                       "[%3], which is no number."_s.arg(
                                                           cell.area().relative(), cell.sheet().Name(), text.left(80)));
    return value;
}

bool passesLimit(double value, const QString& comparison, const SheetRange& cell)
{
    const auto passes = evaluateComparison(u"= "_s + plainNumber(value) + comparison);
    if (!passes)
        throw RuntimeError(RuntimeError::TypeMismatch, u"The limit of cell %1 cannot be compared: %2."_s.arg(
                                                           cell.area().relative(), passes.reason()));
    return passes.value();
}

void markCell(const SheetRange& cell, QRgb color)
{
    cell.sheet().setInteriorColor(cell.Row(), cell.Column(), color);
}

/// Rows and columns of the table are 32-bit; sums beyond are no cells either.
QString movedCell(qint64 row, qint64 column)
{
    if (row < 1 || row > maxRow || column > maxColumn)
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The watched cell in row %1 and column %2 is beyond the sheet."_s.arg(row).arg(column));
    return TrackedLetters(static_cast<int>(column)) % QString::number(row);
}

/// The first cell of the moving range when the rule was entered.
std::optional<CellArea> enteredAt(const QString& action)
{
    const qsizetype sign = markWord.size();
    return action.startsWith(markWord) && action.size() > sign && action[sign] == u'@'
               ? CellArea::parse(QStringView(action).sliced(sign + 1))
               : std::nullopt;
}

} // namespace

QString clsWorkspacePanel::MapCell(qint32 row, qint32 col, Worksheet& ws) const
{
    // Only a cell in both the fixed rows and the fixed columns stays: one in the fixed rows alone moves sideways and,
    // as the marks in use expect, downwards too.
    if (row <= pFixRowLast && col <= ColNumber(ws, pFixColLast))
        return movedCell(row, col);
    return movedCell(qint64(row) + pRowOff, qint64(col) + pColOff);
}

QString clsWorkspacePanel::watchedCell(qint32 row, qint32 col, const QString& action, Worksheet& ws) const
{
    const bool stays = row <= pFixRowLast && col <= ColNumber(ws, pFixColLast);
    const auto moved = stays ? std::nullopt : movedSince(action, ws.Range(pAdjMovRange).area());
    if (!moved)
        return MapCell(row, col, ws);
    return movedCell(qint64(row) + moved->first, qint64(col) + moved->second);
}

void clsWorkspacePanel::lightCells(Worksheet& ws, const std::shared_ptr<Database>& DB) const
{
    std::shared_ptr<Recordset> rules;
    if (!SQL_OpenRecordset(DB, rules, u"Select * from LvnpanelThresholds where PanelID = "_s + QString::number(ID),
                           false, panelRecordModule, u"lightCells"_s))
        return;
    for (; !rules->EOF_(); rules->MoveNext()) {
        const QString ifHigh = rules->text(u"ifHigh"), ifLow = rules->text(u"ifLow");
        const SheetRange cell = ws.Range(watchedCell(rules->number32(u"rowOffset"), rules->number32(u"colOffset"),
                                                     actionWithPlace(ifHigh, ifLow), ws));
        const double value = watchedValue(cell);
        const auto mark = [&](const QString& comparison, const QString& action, QRgb color) {
            if (!comparison.isEmpty() && passesLimit(value, comparison, cell) && action.startsWith(markWord))
                markCell(cell, color);
        };
        mark(rules->text(u"highExp"), ifHigh, highMark);
        mark(rules->text(u"lowExp"), ifLow, lowMark);
    }
    rules->Close();
}

QString markFrom(const CellArea& moving)
{
    return markWord % u'@' % CellArea::cell(moving.firstRow, moving.firstColumn).relative();
}

std::optional<std::pair<int, int>> movedSince(const QString& action, const CellArea& moving)
{
    const auto from = enteredAt(action);
    if (!from)
        return std::nullopt;
    return std::pair(moving.firstRow - from->firstRow, moving.firstColumn - from->firstColumn);
}

const QString& actionWithPlace(const QString& ifHigh, const QString& ifLow)
{
    return enteredAt(ifHigh) ? ifHigh : ifLow;
}

} // namespace lumivane
