#pragma once

#include "engine/content/ShapeContent.h"

#include <QPainterPath>

class QPainter;

namespace lumivane::engine {

/// Fills an outline that lies in a place; both in pixels at the scale.
void paintShapeFill(QPainter& painter, const QPainterPath& outline, const QRectF& place, const ShapeFill& fill,
                    double scale);
/// Marks a place whose picture or shape cannot be shown.
void paintMissing(QPainter& painter, const QRectF& place, double scale);

} // namespace lumivane::engine
