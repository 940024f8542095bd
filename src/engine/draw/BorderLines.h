#pragma once

#include "engine/content/Styles.h"

#include <QRect>

class QPainter;

namespace lumivane::engine {

/// Of two lines asked for at the edge that two cells share, the one that shows: the heavier, of equals the darker.
const BorderLine& strongerLine(const BorderLine& a, const BorderLine& b);

/// Pixels of a line at scale 1; a double one counts the gap.
int lineWidth(LineStyle style);

/// Draws a straight line along a cell edge from one place to another; `along` is its first coordinate, `edge` the
/// other. No antialiasing: dashes, gaps and both lines of a double one are whole pixels, kept inside [0, limit).
void paintEdge(QPainter& painter, const BorderLine& line, Qt::Orientation orientation, int from, int to, int edge,
               int limit, double scale);

void paintDiagonals(QPainter& painter, const QRect& place, const BorderStyle& border, double scale);

} // namespace lumivane::engine
