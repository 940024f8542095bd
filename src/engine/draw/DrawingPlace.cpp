#include "engine/draw/DrawingPlace.h"

#include "engine/draw/SheetGeometry.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr double emuPerPixel = 9525;
constexpr double farthest = 1e9; // pixels; beyond the end of every sheet

double pixelsOf(qint64 emu, double scale)
{
    return std::clamp(static_cast<double>(emu) / emuPerPixel * scale, -farthest, farthest);
}

} // namespace

bool Stretch::overlaps(const Stretch& other) const
{
    return std::max(begin, other.begin) < std::min(end, other.end);
}

Stretch drawingRows(const DrawingContent& drawing, double firstRow, double lastRow, double scale)
{
    const double begin = firstRow + pixelsOf(drawing.startY, scale);
    return {begin,
            drawing.height >= 0 ? begin + pixelsOf(drawing.height, scale) : lastRow + pixelsOf(drawing.endY, scale)};
}

Stretch drawingColumns(const DrawingContent& drawing, double firstColumn, double lastColumn, double scale)
{
    const double begin = firstColumn + pixelsOf(drawing.startX, scale);
    return {begin,
            drawing.width >= 0 ? begin + pixelsOf(drawing.width, scale) : lastColumn + pixelsOf(drawing.endX, scale)};
}

bool showsOn(const SheetGeometry& geometry, const DrawingContent& drawing, const CellArea& area)
{
    if (drawing.hidden)
        return false;
    const auto above = [&](int row) { return static_cast<double>(geometry.rowsPixels(1, row - 1)); };
    const auto before = [&](int column) { return static_cast<double>(geometry.columnsPixels(1, column - 1)); };
    const CellArea& cells = drawing.anchor;
    const Stretch down = drawingRows(drawing, above(cells.firstRow), above(cells.lastRow));
    const Stretch across = drawingColumns(drawing, before(cells.firstColumn), before(cells.lastColumn));
    return down.overlaps({above(area.firstRow), above(area.lastRow + 1)}) &&
           across.overlaps({before(area.firstColumn), before(area.lastColumn + 1)});
}

} // namespace lumivane::engine
