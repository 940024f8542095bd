#include "engine/draw/BackgroundLayer.h"

#include "engine/draw/DrawingPlace.h"
#include "engine/draw/ShapeFills.h"

#include <QPainter>
#include <cmath>

namespace lumivane::engine {

void BackgroundLayer::paint(QPainter& painter) const
{
    const PictureFill& picture = m_scene.sheet.sheet().background;
    if (!picture.data || !m_scene.measures.background)
        return;
    const VisibleGrid& grid = m_scene.grid;
    std::optional<QBrush> brush = tileBrush(picture, grid.scale());
    if (!brush)
        return;
    // The corner of the sheet, from which the tiles count; on a mirrored sheet it is the right one.
    const DrawingPlaces places(m_scene.geometry, {});
    const QRectF start = placeIn(grid, QRectF(0, 0, 0, 0), places.rect(grid.area()).topLeft());
    brush->setTransform(brush->transform() * QTransform::fromTranslate(std::round(start.x()), std::round(start.y())));
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(QRect(QPoint(0, 0), grid.size()), *brush);
    painter.restore();
}

} // namespace lumivane::engine
