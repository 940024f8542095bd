#pragma once

#include "engine/content/ShapeContent.h"

#include <QBrush>
#include <QPainterPath>
#include <optional>

class QPainter;

namespace lumivane::engine {

/// Fills an outline that lies in a place; both in pixels at the scale.
void paintShapeFill(QPainter& painter, const QPainterPath& outline, const QRectF& place, const ShapeFill& fill,
                    double scale);
/// Marks a place whose picture or shape cannot be shown.
void paintMissing(QPainter& painter, const QRectF& place, double scale);

/// A brush that repeats a picture from 0, 0 on, a pixel of it for one at scale 1; none where it cannot be shown.
std::optional<QBrush> tileBrush(const PictureFill& fill, double scale);

} // namespace lumivane::engine
