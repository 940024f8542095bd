#pragma once

#include "engine/content/ShapeContent.h"

#include <QPainterPath>

class QPainter;

namespace lumivane::engine {

/// Width of a line in pixels: at least one at scale 1.
double linePixels(const ShapeLine& line, double scale);
/// How many dashes a path has, roughly, where its line is drawn with any; 0 where they are too many to be.
double dashCount(const QPainterPath& path, double lineWidth);
/// Draws a line along a path, with its dashes and its ends.
void paintShapeLine(QPainter& painter, QPainterPath path, const ShapeLine& line, double scale);

} // namespace lumivane::engine
