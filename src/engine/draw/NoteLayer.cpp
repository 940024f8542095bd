#include "engine/draw/NoteLayer.h"

#include "engine/draw/DrawingLayer.h"
#include "engine/draw/DrawingPlace.h"
#include "engine/draw/ShapeLines.h"

#include <QPainter>
#include <QPainterPath>

namespace lumivane::engine {
namespace {

/// From the corner of the box that is next to the cell to the corner with the mark.
QPainterPath arrowPath(const QRectF& box, const QRectF& cell, bool rightToLeft)
{
    const QPointF mark = rightToLeft ? cell.topLeft() : cell.topRight();
    const double x = mark.x() < box.center().x() ? box.left() : box.right();
    const double y = mark.y() < box.center().y() ? box.top() : box.bottom();
    QPainterPath path(QPointF(x, y));
    path.lineTo(mark);
    return path;
}

} // namespace

void NoteLayer::paint(QPainter& painter) const
{
    const SheetContent& sheet = m_scene.sheet.sheet();
    if (sheet.openNotes.empty() || !m_scene.measures.commentMarks)
        return;
    std::vector<DrawingContent> corners;
    for (const OpenNote& note : sheet.openNotes) {
        DrawingContent place;
        place.anchor = note.box.anchor;
        corners.push_back(place);
    }
    const DrawingPlaces places(m_scene.geometry, corners);
    const VisibleGrid& grid = m_scene.grid;
    const QPointF origin = places.rect(grid.area()).topLeft();
    ShapeLine arrow;
    arrow.drawn = true;
    arrow.color = 0xff000000;
    arrow.tail = {LineEnd::Triangle, 3, 4};
    PaintBudget budget(grid.size());
    for (const OpenNote& note : sheet.openNotes) {
        // The box of a hidden cell is not to be seen either.
        if (m_scene.geometry.rowHidden(note.row) || m_scene.geometry.columnHidden(note.column))
            continue;
        const QRectF box = placeIn(grid, places.rect(note.box), origin);
        const CellArea* merged = sheet.merged.at(note.row, note.column);
        const QRectF cell =
            placeIn(grid, places.rect(merged ? *merged : CellArea::cell(note.row, note.column)), origin);
        if (!(box | cell).adjusted(-4, -4, 4, 4).intersects(QRectF(QPointF(0, 0), grid.size())))
            continue;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        paintShapeLine(painter, arrowPath(box, cell, grid.rightToLeft()), arrow, grid.scale());
        painter.restore();
        paintDrawing(painter, note.box, box, m_scene.fonts, m_scene.sheet, budget);
    }
}

} // namespace lumivane::engine
