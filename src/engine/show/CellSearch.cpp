#include "engine/show/CellSearch.h"

#include "engine/show/CellMatcher.h"

#include <algorithm>

namespace lumivane::engine {

namespace {

const Cell* firstInRow(int row, std::span<const Cell> cells, bool forward, CellMatcher& matcher)
{
    const auto hits = [&](const Cell& cell) { return matcher.hits(row, cell); };
    if (forward) {
        const auto hit = std::find_if(cells.begin(), cells.end(), hits);
        return hit != cells.end() ? &*hit : nullptr;
    }
    const auto hit = std::find_if(cells.rbegin(), cells.rend(), hits);
    return hit != cells.rend() ? &*hit : nullptr;
}

} // namespace

std::optional<CellArea> findCell(const ShownSheet& shown, const CellArea& area, const FindQuestion& question)
{
    if (question.what.isEmpty())
        return std::nullopt;
    CellMatcher matcher(shown, question);
    const SheetContent& sheet = shown.sheet();
    const bool forward = question.direction == SearchDirection::Next;
    const auto [begin, end] = sheet.rowIndices(area);
    int firstColumn = area.firstColumn, lastColumn = area.lastColumn;
    std::optional<CellArea> best;
    for (size_t n = 0; n < end - begin && firstColumn <= lastColumn; ++n) {
        const size_t index = forward ? begin + n : end - 1 - n;
        const int row = sheet.rows[index].row;
        // A search forwards begins just behind the first cell; that one comes last, below.
        const int skip = forward && row == area.firstRow && firstColumn == area.firstColumn ? 1 : 0;
        const Cell* hit = firstInRow(row, sheet.cellsIn(index, firstColumn + skip, lastColumn), forward, matcher);
        if (!hit)
            continue;
        best = CellArea::cell(row, hit->column);
        if (question.order == SearchOrder::ByRows)
            return best;
        // By columns, a row further on wins only with a column that comes before this one.
        (forward ? lastColumn : firstColumn) = forward ? hit->column - 1 : hit->column + 1;
    }
    if (best || !forward || begin == end || sheet.rows[begin].row != area.firstRow)
        return best;
    const Cell* first =
        firstInRow(area.firstRow, sheet.cellsIn(begin, area.firstColumn, area.firstColumn), true, matcher);
    return first ? std::optional(CellArea::cell(area.firstRow, area.firstColumn)) : std::nullopt;
}

} // namespace lumivane::engine
