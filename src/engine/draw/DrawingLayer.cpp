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
        return holdsList ? u"the entries of its list are missing"_s : QString();
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

} // namespace

void DrawingLayer::paint(QPainter& painter) const
{
    const std::vector<DrawingContent>& drawings = m_scene.sheet.sheet().drawings;
    if (std::all_of(drawings.begin(), drawings.end(), isUndrawn))
        return;
    const DrawingPlaces places(m_scene.geometry, drawings);
    const VisibleGrid& grid = m_scene.grid;
    const QRectF area = places.rect(grid.area());
    for (const DrawingContent& drawing : drawings) {
        if (isUndrawn(drawing))
            continue;
        QRectF place = places.rect(drawing).translated(-area.topLeft());
        place = QRectF(place.topLeft() * grid.scale(), place.size() * grid.scale());
        if (grid.rightToLeft())
            place.moveLeft(grid.size().width() - place.right());
        paintDrawing(painter, drawing, place, m_scene.fonts);
    }
}

void paintDrawing(QPainter& painter, const DrawingContent& drawing, QRectF place, const Fonts& fonts)
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
    if (place.width() + place.height() > 0)
        ShapePainter(painter, fonts).paint(drawing.shape, place);
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
