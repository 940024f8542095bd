#include "engine/draw/VisibleGrid.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

/// Picks the visible entries, which are those that have an extent.
void pickVisible(const std::vector<int>& edges, int first, std::vector<int>& numbers, std::vector<int>& visibleEdges)
{
    for (size_t i = 0; i + 1 < edges.size(); ++i) {
        if (edges[i + 1] == edges[i])
            continue;
        numbers.push_back(first + static_cast<int>(i));
        visibleEdges.push_back(edges[i]);
    }
    visibleEdges.push_back(edges.back());
}

} // namespace

VisibleGrid::VisibleGrid(const SheetGeometry& geometry, const CellArea& area, double scale, bool rightToLeft)
    : m_geometry(geometry), m_area(area), m_scale(scale), m_rightToLeft(rightToLeft),
      m_allY(geometry.rowEdges(area.firstRow, area.lastRow, scale)),
      m_allX(geometry.columnEdges(area.firstColumn, area.lastColumn, scale))
{
    pickVisible(m_allY, area.firstRow, m_rows, m_y);
    pickVisible(m_allX, area.firstColumn, m_columns, m_x);
}

int VisibleGrid::x(int index) const
{
    const int logical = m_x[static_cast<size_t>(index)];
    return m_rightToLeft ? m_x.back() - logical : logical;
}

QRect VisibleGrid::cellRect(int rowIndex, int columnIndex) const
{
    const int from = x(columnIndex), to = x(columnIndex + 1);
    return {std::min(from, to), y(rowIndex), std::abs(to - from), y(rowIndex + 1) - y(rowIndex)};
}

int VisibleGrid::logicalX(int column) const
{
    if (column < m_area.firstColumn)
        return -m_geometry.columnEdges(column, m_area.firstColumn - 1, m_scale).back();
    if (column > m_area.lastColumn)
        return m_allX.back() + m_geometry.columnEdges(m_area.lastColumn + 1, column - 1, m_scale).back();
    return m_allX[static_cast<size_t>(column - m_area.firstColumn)];
}

int VisibleGrid::logicalY(int row) const
{
    if (row < m_area.firstRow)
        return -static_cast<int>(std::lround(double(m_geometry.rowsPixels(row, m_area.firstRow - 1)) * m_scale));
    if (row > m_area.lastRow)
        return m_allY.back() +
               static_cast<int>(std::lround(double(m_geometry.rowsPixels(m_area.lastRow + 1, row - 1)) * m_scale));
    return m_allY[static_cast<size_t>(row - m_area.firstRow)];
}

QRect VisibleGrid::rect(const CellArea& cells) const
{
    const int top = logicalY(cells.firstRow), bottom = logicalY(cells.lastRow + 1);
    int left = logicalX(cells.firstColumn), right = logicalX(cells.lastColumn + 1);
    if (m_rightToLeft) {
        const int width = m_x.back();
        std::swap(left, right);
        left = width - left;
        right = width - right;
    }
    return {left, top, right - left, bottom - top};
}

} // namespace lumivane::engine
