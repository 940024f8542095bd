#include "engine/content/SheetContent.h"

#include <algorithm>

namespace lumivane::engine {

std::pair<const Cell*, const Cell*> SheetContent::rowCells(size_t rowIndex) const
{
    const size_t end = rowIndex + 1 < rows.size() ? rows[rowIndex + 1].firstCell : cells.size();
    return {cells.data() + rows[rowIndex].firstCell, cells.data() + end};
}

const RowContent* SheetContent::findRow(int row) const
{
    const auto place =
        std::lower_bound(rows.begin(), rows.end(), row, [](const RowContent& r, int wanted) { return r.row < wanted; });
    return place != rows.end() && place->row == row ? &*place : nullptr;
}

const Cell* SheetContent::find(int row, int column) const
{
    const RowContent* found = findRow(row);
    if (!found)
        return nullptr;
    const auto [first, last] = rowCells(static_cast<size_t>(found - rows.data()));
    const Cell* place =
        std::lower_bound(first, last, column, [](const Cell& cell, int wanted) { return cell.column < wanted; });
    return place != last && place->column == column ? place : nullptr;
}

const ColumnContent* SheetContent::findColumn(int column) const
{
    const auto place = std::lower_bound(columns.begin(), columns.end(), column,
                                        [](const ColumnContent& c, int wanted) { return c.last < wanted; });
    return place != columns.end() && place->first <= column ? &*place : nullptr;
}

void SheetContent::setMerged(std::vector<CellArea> areas)
{
    merged = std::move(areas);
    std::stable_sort(merged.begin(), merged.end(),
                     [](const CellArea& a, const CellArea& b) { return a.firstRow < b.firstRow; });
    mergedReach.clear();
    for (const CellArea& area : merged)
        mergedReach.push_back(std::max(area.lastRow, mergedReach.empty() ? 0 : mergedReach.back()));
}

const CellArea* SheetContent::mergedAt(int row, int column) const
{
    if (mergedReach.size() != merged.size()) {
        const auto place = std::find_if(merged.begin(), merged.end(),
                                        [&](const CellArea& area) { return area.contains(row, column); });
        return place != merged.end() ? &*place : nullptr;
    }
    // From the last that begins at or above the row, back to where none reaches down to it any more.
    auto place = std::upper_bound(merged.begin(), merged.end(), row,
                                  [](int wanted, const CellArea& area) { return wanted < area.firstRow; });
    while (place != merged.begin() && mergedReach[static_cast<size_t>(place - merged.begin()) - 1] >= row) {
        --place;
        if (place->contains(row, column))
            return &*place;
    }
    return nullptr;
}

qint64 SheetContent::bytes() const
{
    return qint64(cells.capacity() * sizeof(Cell) + rows.capacity() * sizeof(RowContent) +
                  columns.capacity() * sizeof(ColumnContent) + merged.capacity() * sizeof(CellArea)) +
           texts.bytes() + qint64(sizeof(*this));
}

} // namespace lumivane::engine
