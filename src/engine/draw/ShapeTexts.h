#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/draw/Fonts.h"

#include <QRectF>

class QPainter;

namespace lumivane::engine {

/// Writes the text of a shape into a place, in pixels at the scale of the fonts; what does not fit runs over it.
void paintShapeText(QPainter& painter, const ShapeText& text, const QRectF& place, const Fonts& fonts);

} // namespace lumivane::engine
