#pragma once

#include "engine/content/Styles.h"

#include <QBrush>
#include <QRectF>
#include <vector>

class QPainter;

namespace lumivane::engine {

/// The colours follow each other in a direction (a vector of length 1) along a line through the middle of the place, as
/// long as the place is in that direction.
QBrush linearGradient(const std::vector<GradientStop>& stops, const QRectF& place, const QPointF& direction);

/// The same for an angle in degrees, clockwise; 0: from left to right.
QPointF directionOf(double degrees);

/// The colours follow each other from an inner rectangle, which may be a point, to the sides of the place.
void paintRectangularGradient(QPainter& painter, const std::vector<GradientStop>& stops, const QRectF& place,
                              const QRectF& inner);

QGradientStops gradientStops(const std::vector<GradientStop>& stops);

} // namespace lumivane::engine
