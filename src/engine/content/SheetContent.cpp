#include "engine/content/SheetContent.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

std::pair<const Cell*, const Cell*> SheetContent::rowCells(size_t rowIndex) const
{
    const size_t end = rowIndex + 1 < rows.size() ? rows[rowIndex + 1].firstCell : cells.size();
    return {cells.data() + rows[rowIndex].firstCell, cells.data() + end};
}

std::span<const Cell> SheetContent::cellsIn(size_t rowIndex, int firstColumn, int lastColumn) const
{
    const auto before = [](const Cell& cell, int column) { return cell.column < column; };
    const auto [first, last] = rowCells(rowIndex);
    // Whole rows are walked over often.
    const Cell* begin = firstColumn <= 1 ? first : std::lower_bound(first, last, firstColumn, before);
    const Cell* end = lastColumn >= maxColumn ? last : std::lower_bound(begin, last, lastColumn + 1, before);
    return {begin, end};
}

size_t SheetContent::rowIndexFrom(int row) const
{
    const auto place =
        std::lower_bound(rows.begin(), rows.end(), row, [](const RowContent& r, int wanted) { return r.row < wanted; });
    return static_cast<size_t>(place - rows.begin());
}

std::pair<size_t, size_t> SheetContent::rowIndices(const CellArea& area) const
{
    return {rowIndexFrom(area.firstRow), rowIndexFrom(area.lastRow + 1)};
}

std::optional<size_t> SheetContent::storedRow(int row) const
{
    const size_t index = rowIndexFrom(row);
    return index < rows.size() && rows[index].row == row ? std::optional(index) : std::nullopt;
}

const RowContent* SheetContent::findRow(int row) const
{
    const auto index = storedRow(row);
    return index ? &rows[*index] : nullptr;
}

const Cell* SheetContent::find(int row, int column) const
{
    const auto index = storedRow(row);
    if (!index)
        return nullptr;
    const auto cell = cellsIn(*index, column, column);
    return cell.empty() ? nullptr : cell.data();
}

const ColumnContent* SheetContent::findColumn(int column) const
{
    const auto place = std::lower_bound(columns.begin(), columns.end(), column,
                                        [](const ColumnContent& c, int wanted) { return c.last < wanted; });
    return place != columns.end() && place->first <= column ? &*place : nullptr;
}

void SheetContent::addProblem(const QString& sentence)
{
    problem += (problem.isEmpty() ? u""_s : u" "_s) + sentence;
}

qint64 SheetContent::bytes() const
{
    qint64 beside = pictureBytes;
    for (const DrawingContent& drawing : drawings)
        beside += drawingBytes(drawing);
    for (const OpenNote& note : openNotes)
        beside += drawingBytes(note.box);
    for (const SparklineGroup& group : sparklines)
        beside += qint64(sizeof(group) + group.members.capacity() * sizeof(SparklineGroup::Member));
    for (const PivotContent& pivot : pivots)
        beside += qint64(sizeof(pivot) + pivot.rows.capacity() + pivot.columns.capacity());
    return beside +
           qint64(cells.capacity() * sizeof(Cell) + rows.capacity() * sizeof(RowContent) +
                  columns.capacity() * sizeof(ColumnContent) + comments.capacity() * sizeof(CommentMark) +
                  conditions.capacity() * sizeof(ConditionalRule) + tables.capacity() * sizeof(TableContent)) +
           merged.bytes() + texts.bytes() + qint64(sizeof(*this));
}

} // namespace lumivane::engine
