#include "thresholds/ThresholdRules.h"

#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/RuntimeError.h"
#include "range/PanelSheet.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "repository/modUtilsSQL.h"
#include "thresholds/ThresholdFormula.h"
#include "thresholds/ThresholdMarks.h"

#include <QScopeGuard>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t mostColumns = 256;
constexpr size_t mostCells = 200'000;

/// The fixed numbers and then the moving ones, each once.
std::vector<int> joined(int fixedFirst, int fixedLast, int first, int last, size_t most)
{
    std::vector<int> numbers;
    const auto add = [&](int from, int to) {
        for (int i = from; i <= to && numbers.size() < most; ++i)
            numbers.push_back(i);
    };
    add(fixedFirst, fixedLast);
    add(std::max(first, fixedLast + 1), last);
    return numbers;
}

PanelView viewOf(Worksheet& sheet, clsWorkspacePanel panel, const PanelCells& cells)
{
    panel.GetAdjRange(sheet);
    panel.adjRange(sheet); // lays the stored heights and widths, by which rows and columns are hidden
    PanelView view;
    view.rowOffset = panel.rowOffset();
    view.columnOffset = panel.columnOffset();
    const auto shownRow = [&](int row) { return cells.isFixedRow(row) ? row : row + view.rowOffset; };
    const auto shownColumn = [&](int column) {
        return cells.isFixedColumn(column) ? column : column + view.columnOffset;
    };
    for (const int row : cells.rows()) {
        if (shownRow(row) >= 1 && sheet.rowHeight(shownRow(row)) > 0)
            view.rows.push_back(row);
    }
    for (const int column : cells.columns()) {
        if (shownColumn(column) >= 1 && sheet.columnWidth(shownColumn(column)) > 0)
            view.columns.push_back(column);
    }
    view.texts.reserve(view.rows.size() * view.columns.size());
    for (const int row : view.rows) {
        for (const int column : view.columns)
            view.texts.push_back(sheet.shownText(shownRow(row), shownColumn(column)));
    }
    return view;
}

/// Where a watched cell is in the present definition, which may have moved since the rule was entered.
std::pair<int, int> presentPlace(std::pair<int, int> place, const QString& action, const PanelCells& cells)
{
    const auto moved = movedSince(action, cells.moving());
    if (!moved || cells.isInCorner(place.first, place.second))
        return place;
    return {place.first + moved->first, place.second + moved->second};
}

} // namespace

std::optional<PanelCells> PanelCells::of(const QString& PicRange)
{
    const auto moving = CellArea::parse(PicRange.section(u'`', 0, 0));
    if (!moving)
        return std::nullopt;
    PanelCells cells;
    cells.m_moving = *moving;
    if (const auto rows = CellArea::parse(PicRange.section(u'`', 1, 1))) {
        cells.m_fixed.firstRow = rows->firstRow;
        cells.m_fixed.lastRow = rows->lastRow;
    }
    if (const auto columns = CellArea::parse(PicRange.section(u'`', 2, 2))) {
        cells.m_fixed.firstColumn = columns->firstColumn;
        cells.m_fixed.lastColumn = columns->lastColumn;
    }
    return cells;
}

bool PanelCells::canWatch(int row, int column) const
{
    return m_moving.contains(row, column) || m_fixed.contains(row, column);
}

std::vector<int> PanelCells::rows() const
{
    return joined(m_fixed.firstRow, m_fixed.lastRow, m_moving.firstRow, m_moving.lastRow, mostCells / columns().size());
}

bool PanelCells::areAllListed() const
{
    return rows().back() >= m_moving.lastRow && columns().back() >= m_moving.lastColumn;
}

std::vector<int> PanelCells::columns() const
{
    return joined(m_fixed.firstColumn, m_fixed.lastColumn, m_moving.firstColumn, m_moving.lastColumn, mostColumns);
}

PanelView viewWithoutWorkbook(const PanelCells& cells)
{
    PanelView view;
    view.rows = cells.rows();
    view.columns = cells.columns();
    return view;
}

Result<PanelView> readPanelView(const clsWorkspacePanel& panel, const PanelCells& cells)
{
    const auto source = panel.Source();
    if (!source)
        return Failure{u"Panel has no source defined."_s};
    try {
        const PanelSheet opened(source->currentPath(), panel.SheetName);
        return viewOf(opened.sheet(), panel, cells);
    } catch (const RuntimeError& error) {
        return Failure{error.description()};
    }
}

Result<std::vector<ThresholdRule>> loadThresholds(int PanelID, const PanelCells& cells)
{
    try {
        std::vector<ThresholdRule> rules;
        const auto rows =
            gDB->OpenRecordset(u"Select * from LvnpanelThresholds where PanelID = "_s + QString::number(PanelID));
        for (; !rows->EOF_(); rows->MoveNext()) {
            const QString ifHigh = rows->text(u"ifHigh"), ifLow = rows->text(u"ifLow");
            const auto [row, column] = presentPlace({rows->number32(u"rowOffset"), rows->number32(u"colOffset")},
                                                    actionWithPlace(ifHigh, ifLow), cells);
            // The high one is applied first, as in the order of the rules.
            if (!rows->text(u"highExp").isEmpty())
                rules.push_back({row, column, true, rows->text(u"highExp"), ifHigh});
            if (!rows->text(u"lowExp").isEmpty())
                rules.push_back({row, column, false, rows->text(u"lowExp"), ifLow});
        }
        return rules;
    } catch (const RuntimeError& error) {
        return Failure{u"The thresholds of the panel cannot be read: "_s + error.description()};
    }
}

QString thresholdFault(const ThresholdRule& rule, const PanelCells& cells, const QString& cell)
{
    if (!cells.canWatch(rule.row, rule.column))
        return u"The cell %1 is not one of the panel that can be watched. Pick a cell of its moving range."_s.arg(cell);
    const QString fault = comparisonFault(rule.comparison);
    if (fault.isEmpty())
        return {};
    const QString start = rule.comparison.trimmed().left(1);
    const bool beginsWithSign = start == u"<" || start == u">" || start == u"=";
    return u"The limit of cell %1 cannot be used: %2. Enter %3."_s.arg(
        cell, fault,
        beginsWithSign ? u"a number, as 1000 or -2.5"_s : u"what follows the value in a formula, as *2>7"_s);
}

QStringList thresholdLines(int PanelID)
{
    QStringList lines;
    std::shared_ptr<Recordset> rules;
    if (PanelID < 1 ||
        !SQL_OpenRecordset(gDB, rules,
                           u"SELECT * FROM LvnpanelThresholds WHERE PanelID = "_s + QString::number(PanelID), false,
                           u"ThresholdRules"_s, u"thresholdLines"_s))
        return lines;
    for (; !rules->EOF_(); rules->MoveNext()) {
        QStringList fields;
        for (const char16_t* column : {u"rowOffset", u"colOffset", u"highExp", u"ifHigh", u"lowExp", u"ifLow"})
            fields.append(rules->text(column));
        lines.append(fields.join(u'\t'));
    }
    return lines;
}

QString saveThresholds(int PanelID, const PanelCells& cells, const std::vector<ThresholdRule>& rules)
{
    try {
        Database::Bulk bulk(*gDB);
        // All rules or those before; nothing is left to undo once the bulk is finished.
        const auto undo = qScopeGuard([&] { bulk.takeBack(); });
        gDB->Execute(u"DELETE * FROM LvnpanelThresholds WHERE PanelID = "_s + QString::number(PanelID));
        for (const ThresholdRule& rule : rules) {
            const QString action = rule.action.startsWith(markWord) ? markFrom(cells.moving()) : rule.action;
            const QString used = doubledLiteral(rule.comparison) + u", "_s + doubledLiteral(action),
                          unused = u"'', ''"_s;
            gDB->Execute(u"INSERT INTO LvnpanelThresholds (PanelID, rowOffset, colOffset, highExp, ifHigh, lowExp, "
                         "ifLow) VALUES ("_s +
                         QString::number(PanelID) + u", "_s + QString::number(rule.row) + u", "_s +
                         QString::number(rule.column) + u", "_s + (rule.isHigh ? used : unused) + u", "_s +
                         (rule.isHigh ? unused : used) + u')');
        }
        bulk.finish();
        return {};
    } catch (const RuntimeError& error) {
        return u"The thresholds of the panel could not be saved: "_s + error.description();
    }
}

} // namespace lumivane
