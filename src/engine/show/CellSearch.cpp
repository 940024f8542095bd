#include "engine/show/CellSearch.h"

#include "platform/FindOrder.h"

#include <algorithm>

namespace lumivane::engine {

namespace {

size_t firstRowIndex(const SheetContent& sheet, int row)
{
    const auto place = std::lower_bound(sheet.rows.begin(), sheet.rows.end(), row,
                                        [](const RowContent& r, int wanted) { return r.row < wanted; });
    return static_cast<size_t>(place - sheet.rows.begin());
}

} // namespace

std::optional<CellArea> CellSearch::find(const CellArea& area, const FindQuestion& question) const
{
    if (question.what.isEmpty())
        return std::nullopt;
    CellMatcher matcher(m_workbook, m_sheet, m_texts, question);
    return findStored(area, question, matcher);
}

std::optional<CellArea> CellSearch::findStored(const CellArea& area, const FindQuestion& question,
                                               CellMatcher& matcher) const
{
    const bool forward = question.direction == SearchDirection::Next;
    const size_t begin = firstRowIndex(m_sheet, area.firstRow);
    const size_t end = firstRowIndex(m_sheet, area.lastRow + 1);
    int firstColumn = area.firstColumn, lastColumn = area.lastColumn;
    std::optional<CellArea> best;
    for (size_t n = 0; n < end - begin && firstColumn <= lastColumn; ++n) {
        const size_t index = forward ? begin + n : end - 1 - n;
        const int row = m_sheet.rows[index].row;
        // A search forwards begins just behind the first cell; that one comes last, below.
        const int skip = forward && row == area.firstRow && firstColumn == area.firstColumn ? 1 : 0;
        const Cell* hit = firstInRow(index, firstColumn + skip, lastColumn, forward, matcher);
        if (!hit)
            continue;
        best = CellArea::cell(row, hit->column);
        if (question.order == SearchOrder::ByRows)
            return best;
        // By columns, a row further on wins only with a column that comes before this one.
        (forward ? lastColumn : firstColumn) = forward ? hit->column - 1 : hit->column + 1;
    }
    if (best || !forward || begin == end || m_sheet.rows[begin].row != area.firstRow)
        return best;
    const Cell* first = firstInRow(begin, area.firstColumn, area.firstColumn, true, matcher);
    return first ? std::optional(CellArea::cell(area.firstRow, area.firstColumn)) : std::nullopt;
}

const Cell* CellSearch::firstInRow(size_t rowIndex, int firstColumn, int lastColumn, bool forward,
                                   CellMatcher& matcher) const
{
    const auto [rowBegin, rowEnd] = m_sheet.rowCells(rowIndex);
    const auto before = [](const Cell& cell, int column) { return cell.column < column; };
    const Cell* begin = firstColumn <= 1 ? rowBegin : std::lower_bound(rowBegin, rowEnd, firstColumn, before);
    const Cell* end = lastColumn >= maxColumn ? rowEnd : std::lower_bound(begin, rowEnd, lastColumn + 1, before);
    const auto hits = [&](const Cell& cell) { return matcher.hits(cell); };
    if (forward) {
        const Cell* hit = std::find_if(begin, end, hits);
        return hit == end ? nullptr : hit;
    }
    for (const Cell* cell = end; cell > begin;) {
        if (hits(*--cell))
            return cell;
    }
    return nullptr;
}

std::optional<CellArea> CellSearch::contentArea() const
{
    CellArea contents{1, 1, 0, 0};
    for (size_t n = m_sheet.rows.size(); n-- > 0;) {
        const auto [begin, end] = m_sheet.rowCells(n);
        const int row = m_sheet.rows[n].row;
        // Below the last row is known, only cells further to the right matter.
        const bool rowKnown = contents.lastRow > 0;
        for (const Cell* cell = end; cell > begin;) {
            --cell;
            if (rowKnown && cell->column <= contents.lastColumn)
                break;
            if (!hasContents(m_workbook, m_sheet, *cell))
                continue;
            contents.lastRow = std::max(contents.lastRow, row);
            contents.lastColumn = std::max<int>(contents.lastColumn, cell->column);
            break;
        }
    }
    return contents.lastRow ? std::optional(contents) : std::nullopt;
}

} // namespace lumivane::engine
