#include "engine/draw/DrawingLayer.h"

#include "engine/draw/DrawingPlace.h"
#include "engine/draw/PictureCache.h"
#include "engine/draw/ShapeOutline.h"
#include "engine/draw/ShapePainter.h"

#include <QPainter>
#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// Of a shape or of any in a group.
QString shapeGap(const ShapeContent& shape)
{
    if (shape.hidden)
        return {};
    if (shape.kind == ShapeContent::Kind::Undrawn)
        return u"a part of it is not drawn"_s;
    if (shape.kind == ShapeContent::Kind::Control) {
        const bool holdsList = shape.control.kind == ControlKind::List || shape.control.kind == ControlKind::DropDown;
        // A list that macros fill leaves nothing of it in the file.
        return holdsList && shape.control.entries.isEmpty() ? u"the entries of its list are missing"_s : QString();
    }
    if (shape.fill.kind == FillKind::Picture) {
        if (const QString problem = PictureCache::shared().problem(shape.fill.picture); !problem.isEmpty())
            return problem;
    }
    if (!shape.geometry.preset.empty() && !isKnownPreset(shape.geometry.preset))
        return u"its outline is drawn as a rectangle"_s;
    for (const ShapeContent& child : shape.children) {
        if (const QString gap = shapeGap(child); !gap.isEmpty())
            return gap;
    }
    return {};
}

/// Where the frame of a drawing lies before it is turned.
QRectF frameIn(QRectF place, const DrawingContent& drawing)
{
    // Sharp edges begin with whole pixels.
    place = QRectF(QPointF(std::round(place.left()), std::round(place.top())),
                   QPointF(std::round(place.right()), std::round(place.bottom())));
    // The anchor encloses a shape as it lies, its frame is that before it is turned.
    if (drawing.anchorKind == AnchorKind::TwoCells && liesOnItsSide(drawing.shape.rotation)) {
        const QPointF center = place.center();
        place.setSize(place.size().transposed());
        place.moveCenter(center);
    }
    return place;
}

} // namespace

void DrawingLayer::paint(QPainter& painter) const
{
    const std::vector<DrawingContent>& drawings = m_scene.sheet.sheet().drawings;
    if (std::all_of(drawings.begin(), drawings.end(), isUndrawn))
        return;
    const DrawingPlaces places(m_scene.geometry, drawings);
    const VisibleGrid& grid = m_scene.grid;
    PaintBudget budget(grid.size());
    const QPointF origin = places.rect(grid.area()).topLeft();
    for (const DrawingContent& drawing : drawings) {
        if (isUndrawn(drawing))
            continue;
        paintDrawing(painter, drawing, placeIn(grid, places.rect(drawing), origin), m_scene.fonts, m_scene.sheet,
                     budget);
    }
}

void paintDrawing(QPainter& painter, const DrawingContent& drawing, const QRectF& place, const Fonts& fonts,
                  const ShownSheet& sheet, PaintBudget& budget)
{
    const QRectF frame = frameIn(place, drawing);
    if (frame.width() + frame.height() > 0)
        ShapePainter(painter, fonts, sheet, budget).paint(drawing.shape, frame);
}

QRect coveredBy(const DrawingContent& drawing, const QRectF& place, double scale)
{
    const QRectF frame = frameIn(place, drawing);
    if (frame.width() + frame.height() <= 0)
        return {};
    // An outline may reach as far as its file says.
    const double farthest = std::max(frame.width(), frame.height());
    const QRectF covered =
        coveredByShape(drawing.shape, frame, scale) & frame.adjusted(-farthest, -farthest, farthest, farthest);
    constexpr double tiny = 0.01; // from turning
    return covered.adjusted(tiny, tiny, -tiny, -tiny).toAlignedRect();
}

bool isHit(const DrawingContent& drawing, const QRectF& place, double scale, const QPointF& point, double reach)
{
    return !drawing.hidden && place.adjusted(-reach, -reach, reach, reach).contains(point) &&
           isAtPoint(drawing.shape, frameIn(place, drawing), scale, point, reach);
}

QString drawingGap(const DrawingContent& drawing)
{
    return drawing.hidden || isUndrawn(drawing) ? QString() : shapeGap(drawing.shape);
}

bool isUndrawn(const DrawingContent& drawing)
{
    return drawing.hidden || drawing.shape.kind == ShapeContent::Kind::Undrawn;
}

} // namespace lumivane::engine
