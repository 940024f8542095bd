#include "engine/draw/DrawingPlace.h"

#include "engine/draw/SheetGeometry.h"
#include "engine/draw/VisibleGrid.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr double farthest = 1e9; // pixels; beyond the end of every sheet

double pixelsOf(qint64 emu, double scale)
{
    return std::clamp(static_cast<double>(emu) / emuPerPixel * scale, -farthest, farthest);
}

double cornerIn(const Stretch& cell, double offset)
{
    return cell.begin + std::min(offset, cell.end - cell.begin);
}

Stretch along(AnchorKind kind, const Stretch& first, const Stretch& last, double start, double end, double length)
{
    const double begin = kind == AnchorKind::Absolute ? first.begin + start : cornerIn(first, start);
    return {begin, length >= 0 ? begin + length : cornerIn(last, end)};
}

/// Where these rows begin, from those before each on.
template <class Pixels>
void addUp(std::map<int, double>& begins, Pixels pixels)
{
    int next = 1;
    double sum = 0;
    for (auto& [number, begin] : begins) {
        sum += pixels(next, number - 1);
        begin = sum;
        next = number;
    }
}

} // namespace

bool Stretch::overlaps(const Stretch& other) const
{
    return std::max(begin, other.begin) < std::min(end, other.end);
}

Stretch drawingRows(const DrawingContent& drawing, const Stretch& first, const Stretch& last, double scale)
{
    return along(drawing.anchorKind, first, last, pixelsOf(drawing.startY, scale), pixelsOf(drawing.endY, scale),
                 pixelsOf(drawing.height, scale));
}

Stretch drawingColumns(const DrawingContent& drawing, const Stretch& first, const Stretch& last, double scale)
{
    return along(drawing.anchorKind, first, last, pixelsOf(drawing.startX, scale), pixelsOf(drawing.endX, scale),
                 pixelsOf(drawing.width, scale));
}

QRectF placeIn(const VisibleGrid& grid, const QRectF& place, const QPointF& origin)
{
    QRectF result((place.topLeft() - origin) * grid.scale(), place.size() * grid.scale());
    if (grid.rightToLeft())
        result.moveLeft(grid.size().width() - result.right());
    return result;
}

DrawingPlaces::DrawingPlaces(const SheetGeometry& geometry, const std::vector<DrawingContent>& drawings)
    : m_geometry(geometry)
{
    for (const DrawingContent& drawing : drawings) {
        for (const int row : {drawing.anchor.firstRow, drawing.anchor.lastRow})
            m_rows[row] = m_rows[row + 1] = 0;
        for (const int column : {drawing.anchor.firstColumn, drawing.anchor.lastColumn})
            m_columns[column] = m_columns[column + 1] = 0;
    }
    addUp(m_rows, [&](int first, int last) { return static_cast<double>(geometry.rowsPixels(first, last)); });
    addUp(m_columns, [&](int first, int last) { return static_cast<double>(geometry.columnsPixels(first, last)); });
}

QRectF DrawingPlaces::rect(const DrawingContent& drawing) const
{
    const CellArea& cells = drawing.anchor;
    const Stretch down = drawingRows(drawing, row(cells.firstRow), row(cells.lastRow));
    const Stretch across = drawingColumns(drawing, column(cells.firstColumn), column(cells.lastColumn));
    return QRectF(QPointF(across.begin, down.begin), QPointF(across.end, down.end)).normalized();
}

QRectF DrawingPlaces::rect(const CellArea& area) const
{
    const auto above = [&](int row) { return static_cast<double>(m_geometry.rowsPixels(1, row - 1)); };
    const auto before = [&](int column) { return static_cast<double>(m_geometry.columnsPixels(1, column - 1)); };
    return QRectF(QPointF(before(area.firstColumn), above(area.firstRow)),
                  QPointF(before(area.lastColumn + 1), above(area.lastRow + 1)));
}

bool DrawingPlaces::showsOn(const DrawingContent& drawing, const QRectF& area) const
{
    QRectF place = rect(drawing);
    // A level or upright line has no extent of its own across.
    if (drawing.kind == DrawingKind::Shape && place.width() + place.height() > 0)
        place.setSize(place.size().expandedTo({1, 1}));
    return !drawing.hidden && Stretch{place.left(), place.right()}.overlaps({area.left(), area.right()}) &&
           Stretch{place.top(), place.bottom()}.overlaps({area.top(), area.bottom()});
}

} // namespace lumivane::engine
