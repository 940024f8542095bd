#pragma once

#include "engine/content/ShapeContent.h"

#include <QPainterPath>

namespace lumivane::engine {

/// What the shapes of one picture may cost to paint, in roughly nanoseconds: estimated beforehand and the same on every
/// machine, so that the same file always gives the same picture.
class PaintBudget
{
public:
    /// For a picture of a size in pixels.
    explicit PaintBudget(const QSize& picture);

    /// Whether a shape without its children may be painted; counts it then. `outline` is where it is painted, of which
    /// `visible` shows, in pixels at the scale of the picture.
    bool take(const ShapeContent& shape, const QList<QPainterPath>& outline, const QRectF& visible, double scale);
    /// Whether one of those that may not is marked: the first ones are.
    bool takeMark() { return --m_marksLeft >= 0; }

private:
    double m_left;
    int m_marksLeft = 100;
};

} // namespace lumivane::engine
