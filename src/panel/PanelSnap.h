#pragma once

#include <QRect>
#include <QVector>

namespace lumivane {

/// Lines that the edges of a panel are drawn to while it is moved or sized. A line lies in front of the pixel of its
/// number, so that a panel's right edge can lie on another one's left edge.
struct SnapLines
{
    QVector<int> vertical;
    QVector<int> horizontal;
};

/// The edges of the area and of all neighbours.
SnapLines snapLines(const QRect& area, const QVector<QRect>& neighbours);

/// `wanted`, with each edge that has left its place in `before` on the nearest line within `distance` pixels. A moved
/// panel keeps its size; a sized one keeps its other edge and never falls below `smallest`.
QRect snapped(const QRect& wanted, const QRect& before, const QSize& smallest, const SnapLines& lines, int distance);

} // namespace lumivane
