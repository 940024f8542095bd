#pragma once

#include "engine/draw/SheetGeometry.h"

#include <QRect>

namespace lumivane::engine {

/// The rows and columns of an area that are visible, with their places in a picture of it. On a sheet written from
/// right to left the picture is mirrored: column places count from its right side, and only here.
class VisibleGrid
{
public:
    VisibleGrid(const SheetGeometry& geometry, const CellArea& area, double scale, bool rightToLeft);

    const CellArea& area() const { return m_area; }
    double scale() const { return m_scale; }
    QSize size() const { return {m_x.back(), m_y.back()}; }
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    int columnCount() const { return static_cast<int>(m_columns.size()); }
    int row(int index) const { return m_rows[static_cast<size_t>(index)]; }
    int column(int index) const { return m_columns[static_cast<size_t>(index)]; }
    bool rightToLeft() const { return m_rightToLeft; }

    /// Where the edge before a visible row or column lies; index count: the end.
    int y(int index) const { return m_y[static_cast<size_t>(index)]; }
    int x(int index) const;
    QRect cellRect(int rowIndex, int columnIndex) const;
    /// Place of cells, inside or outside the area, hidden ones without extent.
    QRect rect(const CellArea& cells) const;

private:
    int logicalX(int column) const; ///< left edge of any column, counted from the area's first one
    int logicalY(int row) const;

    const SheetGeometry& m_geometry;
    CellArea m_area;
    double m_scale;
    bool m_rightToLeft;
    std::vector<int> m_rows, m_columns;
    std::vector<int> m_y, m_x;       ///< edges of the visible ones
    std::vector<int> m_allY, m_allX; ///< edges of all of the area
};

} // namespace lumivane::engine
