#include "engine/draw/PaintBudget.h"

#include "engine/draw/ShapeLines.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

double fillEffort(const ShapeFill& fill)
{
    switch (fill.kind) {
    case FillKind::None:
        return 0;
    case FillKind::Solid:
        return 2;
    case FillKind::LinearGradient:
    case FillKind::Pattern:
        return 5;
    case FillKind::PathGradient:
        return fill.round ? 10 : 200;
    case FillKind::Picture:
        return 10;
    }
    return 0;
}

/// Of what is painted on each pixel.
double areaEffort(const ShapeContent& shape)
{
    constexpr double shadow = 40;
    return fillEffort(shape.fill) + (shape.shadow.drawn ? shadow : 0);
}

/// Edges cost by the lines of pixels that they cross.
double edgeEffort(const QPainterPath& path)
{
    constexpr double edge = 2000, pixel = 50, longest = 5000; // what lies outside the picture costs little
    double effort = 0;
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPointF way = QPointF(path.elementAt(i)) - QPointF(path.elementAt(i - 1));
        effort += edge + pixel * std::min(way.manhattanLength(), longest);
    }
    return effort;
}

double outlineEffort(const ShapeContent& shape, const QList<QPainterPath>& outline, double scale)
{
    constexpr double start = 20000, dash = 1000;
    const bool isDashed = shape.line.drawn && shape.line.dash != Dash::Solid;
    double effort = start;
    for (const QPainterPath& path : outline) {
        effort += start + edgeEffort(path);
        if (isDashed)
            effort += dash * dashCount(path, linePixels(shape.line, scale));
    }
    return effort;
}

double textEffort(const ShapeText& text)
{
    constexpr double letter = 3000, run = 250000, paragraph = 20000; // a run may bring a font
    double effort = 0;
    for (const ShapeParagraph& one : text.paragraphs) {
        effort += paragraph;
        for (const ShapeTextRun& part : one.runs)
            effort += run + letter * static_cast<double>(part.text.size());
    }
    return effort;
}

} // namespace

PaintBudget::PaintBudget(const QSize& picture)
{
    // A picture may be covered by the dearest fill once.
    constexpr double least = 1e9, perPixel = 300;
    m_left = least + perPixel * picture.width() * picture.height();
}

bool PaintBudget::take(const ShapeContent& shape, const QList<QPainterPath>& outline, const QRectF& visible,
                       double scale)
{
    const double effort = std::max(visible.width(), 0.0) * std::max(visible.height(), 0.0) * areaEffort(shape) +
                          outlineEffort(shape, outline, scale) + textEffort(shape.text);
    if (effort > m_left)
        return false;
    m_left -= effort;
    return true;
}

} // namespace lumivane::engine
