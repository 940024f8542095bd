#pragma once

#include "engine/content/ShapeContent.h"

#include <QPainterPath>

class QPainter;

namespace lumivane::engine {

/// Width of a line in pixels: at least one at scale 1.
double linePixels(const ShapeLine& line, double scale);
/// Draws a line along a path, with its dashes and its ends.
void paintShapeLine(QPainter& painter, QPainterPath path, const ShapeLine& line, double scale);

} // namespace lumivane::engine
