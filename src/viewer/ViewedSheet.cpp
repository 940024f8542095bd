#include "viewer/ViewedSheet.h"

#include <algorithm>
#include <map>

namespace lumivane {

using namespace engine;

namespace {

bool isVertical(Direction direction)
{
    return direction == Direction::Up || direction == Direction::Down;
}

int stepOf(Direction direction)
{
    return direction == Direction::Right || direction == Direction::Down ? 1 : -1;
}

/// Hostile files may store any number of filters over one another.
std::vector<FilterButton> filterButtonsOf(const SheetContent& sheet)
{
    int left = 200000;
    std::map<std::pair<int, int>, bool> inUse; // of those cells that have one
    for (const CellArea& filter : sheet.filtered) {
        for (int column = filter.firstColumn; column <= filter.lastColumn && left > 0; ++column, --left)
            inUse.emplace(std::pair(filter.firstRow, column), false);
    }
    for (const FilterColumn& column : sheet.filterColumns) {
        if (!column.hasButton)
            inUse.erase({column.row, column.column});
        else if (const auto found = inUse.find({column.row, column.column}); found != inUse.end())
            found->second = column.inUse;
    }
    std::vector<FilterButton> buttons;
    for (const auto& [place, used] : inUse)
        buttons.push_back({{place.first, place.second}, used});
    return buttons;
}

} // namespace

ViewedSheet::ViewedSheet(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                         WorkbookCells::SheetSource others)
    : m_workbook(std::move(workbook)), m_sheet(std::move(sheet)),
      m_shown(std::make_shared<ShownSheet>(m_workbook, m_sheet, nullptr, std::move(others))), m_painter(m_shown),
      m_filterButtons(filterButtonsOf(*m_sheet)), m_used(findUsed()), m_lastFilled(findLastFilled())
{
}

CellArea ViewedSheet::findUsed() const
{
    CellArea used = CellArea::cell(1, 1);
    const auto include = [&used](const CellArea& area) {
        used.lastRow = std::clamp(area.lastRow, used.lastRow, maxRow);
        used.lastColumn = std::clamp(area.lastColumn, used.lastColumn, maxColumn);
    };
    if (m_sheet->used)
        include(*m_sheet->used);
    for (const CellArea& area : m_sheet->merged)
        include(area);
    for (const DrawingContent& drawing : m_sheet->drawings)
        include(drawing.anchor);
    for (const OpenNote& note : m_sheet->openNotes)
        include(note.box.anchor);
    return used;
}

CellSpot ViewedSheet::findLastFilled() const
{
    const auto extent = m_shown->extent([](int, const Cell& cell) { return cell.kind != CellKind::Blank; });
    return extent ? CellSpot{extent->lastRow, extent->lastColumn} : CellSpot();
}

bool ViewedSheet::filled(int row, int column) const
{
    return m_shown->kind(row, column) != CellKind::Blank;
}

QString ViewedSheet::shownText(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell ? m_shown->shown(row, *cell) : QString();
}

QString ViewedSheet::commentText(const CellSpot& cell) const
{
    const CellArea merged = mergedAround(cell);
    for (const CommentMark& mark : m_sheet->comments) {
        if (mark.row == merged.firstRow && mark.column == merged.firstColumn && mark.text >= 0)
            return m_sheet->texts.text(static_cast<quint64>(mark.text));
    }
    return {};
}

CellArea ViewedSheet::mergedAround(const CellSpot& cell) const
{
    const CellArea* merged = m_shown->mergedAt(cell.row, cell.column);
    return merged ? *merged : CellArea::cell(cell.row, cell.column);
}

CellArea ViewedSheet::widened(CellArea area) const
{
    for (bool grown = true; grown;) {
        grown = false;
        for (const CellArea& merged : m_sheet->merged) {
            if (!intersect(area, merged))
                continue;
            const CellArea both{std::min(area.firstRow, merged.firstRow),
                                std::min(area.firstColumn, merged.firstColumn), std::max(area.lastRow, merged.lastRow),
                                std::max(area.lastColumn, merged.lastColumn)};
            grown = grown || both != area;
            area = both;
        }
    }
    return area;
}

bool ViewedSheet::anyFilled(const CellArea& area) const
{
    const auto [begin, end] = m_sheet->rowIndices(area);
    for (size_t i = begin; i < end; ++i) {
        const auto cells = m_sheet->cellsIn(i, area.firstColumn, area.lastColumn);
        if (std::any_of(cells.begin(), cells.end(), [](const Cell& cell) { return cell.kind != CellKind::Blank; }))
            return true;
    }
    return false;
}

CellArea ViewedSheet::regionAround(const CellSpot& cell) const
{
    CellArea region = mergedAround(cell);
    for (bool grown = true; grown;) {
        const CellArea before = region;
        // Each side grows for itself, as long as what touches it, corners included, holds something.
        const auto grow = [&](int& edge, int step, int limit, bool vertical) {
            while (edge != limit) {
                CellArea line{std::max(1, region.firstRow - 1), std::max(1, region.firstColumn - 1),
                              std::min(maxRow, region.lastRow + 1), std::min(maxColumn, region.lastColumn + 1)};
                (vertical ? line.firstRow : line.firstColumn) = edge + step;
                (vertical ? line.lastRow : line.lastColumn) = edge + step;
                if (!anyFilled(line))
                    break;
                edge += step;
            }
        };
        grow(region.lastRow, 1, m_used.lastRow, true);
        grow(region.lastColumn, 1, m_used.lastColumn, false);
        grow(region.firstRow, -1, 1, true);
        grow(region.firstColumn, -1, 1, false);
        grown = region != before;
    }
    return region;
}

/// One visible cell further; the same cell at the edge.
CellSpot ViewedSheet::stepVisible(CellSpot from, Direction direction) const
{
    CellSpot next = from;
    int& moving = isVertical(direction) ? next.row : next.column;
    const int limit = isVertical(direction) ? maxRow : maxColumn;
    for (moving += stepOf(direction); moving >= 1 && moving <= limit; moving += stepOf(direction)) {
        const bool hidden =
            isVertical(direction) ? geometry().rowHidden(next.row) : geometry().columnHidden(next.column);
        if (!hidden)
            return next;
    }
    return from;
}

CellSpot ViewedSheet::neighbour(const CellSpot& from, Direction direction) const
{
    const CellArea area = mergedAround(from);
    CellSpot edge = from;
    if (isVertical(direction))
        edge.row = direction == Direction::Down ? area.lastRow : area.firstRow;
    else
        edge.column = direction == Direction::Right ? area.lastColumn : area.firstColumn;
    const CellSpot next = stepVisible(edge, direction);
    return next == edge ? from : next;
}

CellSpot ViewedSheet::sheetEdge(const CellSpot& from, Direction direction) const
{
    CellSpot edge = from;
    if (isVertical(direction))
        edge.row = direction == Direction::Down ? maxRow + 1 : 0;
    else
        edge.column = direction == Direction::Right ? maxColumn + 1 : 0;
    const Direction back = direction == Direction::Down    ? Direction::Up
                           : direction == Direction::Up    ? Direction::Down
                           : direction == Direction::Right ? Direction::Left
                                                           : Direction::Right;
    return stepVisible(edge, back);
}

bool ViewedSheet::anythingBeyond(const CellSpot& from, Direction direction) const
{
    CellArea rest = CellArea::cell(from.row, from.column);
    switch (direction) {
    case Direction::Left:
        rest.firstColumn = 1;
        rest.lastColumn = from.column - 1;
        break;
    case Direction::Right:
        rest.firstColumn = from.column + 1;
        rest.lastColumn = maxColumn;
        break;
    case Direction::Up:
        rest.firstRow = 1;
        rest.lastRow = from.row - 1;
        break;
    case Direction::Down:
        rest.firstRow = from.row + 1;
        rest.lastRow = maxRow;
        break;
    }
    return anyFilled(rest);
}

CellSpot ViewedSheet::dataEdge(const CellSpot& from, Direction direction) const
{
    CellSpot at = neighbour(from, direction);
    if (at == from)
        return from;
    if (filled(from.row, from.column) && filled(at.row, at.column)) {
        for (CellSpot next = stepVisible(at, direction); next != at && filled(next.row, next.column);
             next = stepVisible(at, direction))
            at = next;
        return at;
    }
    // Looked up once, so that a leap over a million blank rows visits none of them.
    if (!filled(at.row, at.column) && !anythingBeyond(at, direction))
        return sheetEdge(at, direction);
    while (!filled(at.row, at.column)) {
        const CellSpot next = stepVisible(at, direction);
        if (next == at)
            break;
        at = next;
    }
    return at;
}

} // namespace lumivane
