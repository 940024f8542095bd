#pragma once

#include "engine/content/Drawings.h"
#include "engine/draw/PaintBudget.h"
#include "engine/draw/Scene.h"

#include <QImage>

namespace lumivane::engine {

/// Pictures and shapes over the cells, in the order of the file.
class DrawingLayer
{
public:
    explicit DrawingLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    const Scene& m_scene;
};

/// Draws one drawing of a sheet into a place, in pixels at the scale of the fonts.
void paintDrawing(QPainter& painter, const DrawingContent& drawing, const QRectF& place, const Fonts& fonts,
                  const ShownSheet& sheet, PaintBudget& budget);

/// The pixels that a drawing covers in such a place: more where it is turned, has a line, or points out of its frame.
QRect coveredBy(const DrawingContent& drawing, const QRectF& place, double scale);

/// Whether a drawing in such a place is hit by a click; `reach` is how near to a line counts.
bool isHit(const DrawingContent& drawing, const QRectF& place, double scale, const QPointF& point, double reach);

/// What a drawing of which something is drawn lacks ("its outline is drawn as a rectangle"); empty for nothing.
QString drawingGap(const DrawingContent& drawing);
/// Nothing at all of it is drawn.
bool isUndrawn(const DrawingContent& drawing);

} // namespace lumivane::engine
