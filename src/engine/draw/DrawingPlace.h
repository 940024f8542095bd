#pragma once

#include "engine/content/Drawings.h"

#include <QRectF>
#include <map>

namespace lumivane::engine {

class SheetGeometry;
class VisibleGrid;

/// A stretch of a sheet in pixels, along its rows or along its columns.
struct Stretch
{
    double begin = 0, end = 0;
    bool overlaps(const Stretch& other) const;
};

/// Where a drawing lies, given where the first and the last row (or column) of its anchor lie. A corner never leaves
/// its cell, so that narrow and hidden ones draw it in. A drawing that stores a size is as long as that at every scale,
/// whatever lies below it.
Stretch drawingRows(const DrawingContent& drawing, const Stretch& first, const Stretch& last, double scale = 1);
Stretch drawingColumns(const DrawingContent& drawing, const Stretch& first, const Stretch& last, double scale = 1);

/// Where a place on the sheet at scale 1 lies in a picture of the grid, whose own place begins at `origin`.
QRectF placeIn(const VisibleGrid& grid, const QRectF& place, const QPointF& origin);

/// The places of all drawings of a sheet at scale 1, in pixels from the corner of A1 and as on a sheet written from
/// left to right. Rows are walked over once, however many drawings there are.
class DrawingPlaces
{
public:
    DrawingPlaces(const SheetGeometry& geometry, const std::vector<DrawingContent>& drawings);

    /// Of one of these drawings.
    QRectF rect(const DrawingContent& drawing) const;
    QRectF rect(const CellArea& area) const;
    /// Whether any of a drawing shows on the place of an area. Whatever of it lies on hidden rows or columns is not
    /// seen on the screen either, unless its size is its own.
    bool showsOn(const DrawingContent& drawing, const QRectF& area) const;

private:
    using Begins = std::map<int, double>; ///< of rows or columns
    Stretch row(int number) const { return {m_rows.at(number), m_rows.at(number + 1)}; }
    Stretch column(int number) const { return {m_columns.at(number), m_columns.at(number + 1)}; }

    const SheetGeometry& m_geometry;
    Begins m_rows, m_columns;
};

} // namespace lumivane::engine
