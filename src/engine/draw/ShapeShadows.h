#pragma once

#include "engine/content/ShapeContent.h"

#include <QList>
#include <QPainterPath>

class QPainter;

namespace lumivane::engine {

/// Draws the shadow that the outline of a shape, filled or not, throws; before the shape itself.
void paintShadow(QPainter& painter, const ShapeContent& shape, const QList<QPainterPath>& outline, double scale);

} // namespace lumivane::engine
