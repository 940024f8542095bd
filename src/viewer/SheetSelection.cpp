#include "viewer/SheetSelection.h"

#include <QStringList>
#include <algorithm>

namespace lumivane {

namespace {

CellArea areaBetween(const CellSpot& a, const CellSpot& b)
{
    return {std::min(a.row, b.row), std::min(a.column, b.column), std::max(a.row, b.row), std::max(a.column, b.column)};
}

bool isWholeRows(const CellArea& area)
{
    return area.firstColumn == 1 && area.lastColumn == maxColumn;
}

bool isWholeColumns(const CellArea& area)
{
    return area.firstRow == 1 && area.lastRow == maxRow;
}

} // namespace

bool SheetSelection::contains(int row, int column) const
{
    return std::any_of(m_areas.begin(), m_areas.end(),
                       [&](const CellArea& area) { return area.contains(row, column); });
}

bool SheetSelection::rowTouched(int row) const
{
    return std::any_of(m_areas.begin(), m_areas.end(),
                       [&](const CellArea& area) { return row >= area.firstRow && row <= area.lastRow; });
}

bool SheetSelection::columnTouched(int column) const
{
    return std::any_of(m_areas.begin(), m_areas.end(),
                       [&](const CellArea& area) { return column >= area.firstColumn && column <= area.lastColumn; });
}

bool SheetSelection::rowWhole(int row) const
{
    return std::any_of(m_areas.begin(), m_areas.end(), [&](const CellArea& area) {
        return isWholeRows(area) && row >= area.firstRow && row <= area.lastRow;
    });
}

bool SheetSelection::columnWhole(int column) const
{
    return std::any_of(m_areas.begin(), m_areas.end(), [&](const CellArea& area) {
        return isWholeColumns(area) && column >= area.firstColumn && column <= area.lastColumn;
    });
}

QString SheetSelection::address() const
{
    QStringList texts;
    for (const CellArea& area : m_areas)
        texts.append(area.absolute());
    return texts.join(u',');
}

void SheetSelection::select(const CellSpot& cell)
{
    const CellArea area = m_sheet->mergedAround(cell);
    selectArea(area, {area.firstRow, area.firstColumn});
}

void SheetSelection::select(const std::vector<CellArea>& areas)
{
    if (areas.empty())
        return;
    m_areas.clear();
    for (const CellArea& area : areas)
        addArea(area, {area.firstRow, area.firstColumn});
}

void SheetSelection::selectArea(const CellArea& area, const CellSpot& active)
{
    m_areas.clear();
    addArea(area, active);
}

void SheetSelection::addArea(const CellArea& area, const CellSpot& active)
{
    m_areas.push_back(grown(area));
    m_active = active;
    m_corner = {active.row == area.firstRow ? area.lastRow : area.firstRow,
                active.column == area.firstColumn ? area.lastColumn : area.firstColumn};
}

void SheetSelection::extendTo(const CellSpot& corner)
{
    CellArea area = areaBetween(m_active, corner);
    if (isWholeRows(m_areas.back()) && !isWholeColumns(m_areas.back())) {
        area.firstColumn = 1;
        area.lastColumn = maxColumn;
    } else if (isWholeColumns(m_areas.back()) && !isWholeRows(m_areas.back())) {
        area.firstRow = 1;
        area.lastRow = maxRow;
    }
    m_areas.back() = grown(area);
    m_corner = corner;
}

CellArea SheetSelection::grown(const CellArea& area) const
{
    return isWholeRows(area) || isWholeColumns(area) ? area : m_sheet->widened(area);
}

bool SheetSelection::isOneCell() const
{
    return m_areas.size() == 1 && m_areas.front() == m_sheet->mergedAround(m_active);
}

int SheetSelection::areaOfActive() const
{
    for (size_t i = m_areas.size(); i-- > 0;) {
        if (m_areas[i].contains(m_active.row, m_active.column))
            return static_cast<int>(i);
    }
    return 0;
}

void SheetSelection::step(Direction direction)
{
    if (isOneCell()) {
        select(m_sheet->neighbour(m_active, direction));
        return;
    }
    const bool byRows = direction == Direction::Left || direction == Direction::Right;
    const int step = direction == Direction::Right || direction == Direction::Down ? 1 : -1;
    int index = areaOfActive();
    const CellArea& area = m_areas[static_cast<size_t>(index)];
    int& inner = byRows ? m_active.column : m_active.row;
    int& outer = byRows ? m_active.row : m_active.column;
    const int innerFirst = byRows ? area.firstColumn : area.firstRow;
    const int innerLast = byRows ? area.lastColumn : area.lastRow;
    const int outerFirst = byRows ? area.firstRow : area.firstColumn;
    const int outerLast = byRows ? area.lastRow : area.lastColumn;

    inner += step;
    if (inner >= innerFirst && inner <= innerLast)
        return;
    inner = step > 0 ? innerFirst : innerLast;
    outer += step;
    if (outer >= outerFirst && outer <= outerLast)
        return;
    const int count = static_cast<int>(m_areas.size());
    index = (index + step + count) % count;
    const CellArea& next = m_areas[static_cast<size_t>(index)];
    m_active = step > 0 ? CellSpot{next.firstRow, next.firstColumn} : CellSpot{next.lastRow, next.lastColumn};
}

} // namespace lumivane
