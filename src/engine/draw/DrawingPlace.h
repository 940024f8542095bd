#pragma once

#include "engine/content/Drawings.h"

namespace lumivane::engine {

class SheetGeometry;

/// A stretch of a sheet in pixels, along its rows or along its columns.
struct Stretch
{
    double begin = 0, end = 0;
    bool overlaps(const Stretch& other) const;
};

/// Where a drawing lies, given the places at which the first and the last row (or column) of its anchor begin. A
/// drawing that stores a size is as long as that at every scale, whatever lies below it.
Stretch drawingRows(const DrawingContent& drawing, double firstRow, double lastRow, double scale = 1);
Stretch drawingColumns(const DrawingContent& drawing, double firstColumn, double lastColumn, double scale = 1);

/// Whether any of a drawing shows on an area. Whatever of it lies on hidden rows or columns is not seen on the screen
/// either, unless its size is its own.
bool showsOn(const SheetGeometry& geometry, const DrawingContent& drawing, const CellArea& area);

} // namespace lumivane::engine
