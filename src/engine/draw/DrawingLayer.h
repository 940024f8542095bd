#pragma once

#include "engine/content/Drawings.h"
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

/// Draws one drawing into a place, in pixels at the scale of the fonts.
void paintDrawing(QPainter& painter, const DrawingContent& drawing, QRectF place, const Fonts& fonts);

/// What a drawing of which something is drawn lacks ("its outline is drawn as a rectangle"); empty for nothing.
QString drawingGap(const DrawingContent& drawing);
/// Nothing at all of it is drawn.
bool isUndrawn(const DrawingContent& drawing);

} // namespace lumivane::engine
