#include "engine/draw/ShapeOutline.h"

#include "engine/draw/PresetOutlines.h"

#include <cmath>
#include <numbers>

namespace lumivane::engine {
namespace {

/// The angle that draws an ellipse as far as a ray at the given angle meets it; both in degrees.
double onEllipse(double angle, double across, double down)
{
    const double turns = std::floor((angle + 180) / 360) * 360;
    const double radians = (angle - turns) * std::numbers::pi / 180;
    return std::atan2(across * std::sin(radians), down * std::cos(radians)) * 180 / std::numbers::pi + turns;
}

/// `arc` goes on from the path's end, clockwise for a sweep above 0.
void addArc(QPainterPath& path, double across, double down, double start, double sweep)
{
    across = std::abs(across);
    down = std::abs(down);
    sweep = std::clamp(sweep, -360.0, 360.0);
    const double from = onEllipse(start, across, down);
    const double to = std::abs(sweep) >= 360 ? from + sweep : onEllipse(start + sweep, across, down);
    const double radians = from * std::numbers::pi / 180;
    const QPointF center = path.currentPosition() - QPointF(across * std::cos(radians), down * std::sin(radians));
    path.arcTo(QRectF(center.x() - across, center.y() - down, 2 * across, 2 * down), -from, from - to);
}

OutlinePath ownPath(const ShapePath& own, const QSizeF& size, const GuideValues& values)
{
    OutlinePath made{{}, own.filled, own.stroked};
    QPainterPath& path = made.path;
    const double across = own.width > 0 ? size.width() / own.width : 1;
    const double down = own.height > 0 ? size.height() / own.height : 1;
    for (const PathStep& step : own.steps) {
        const auto point = [&](size_t index) {
            return QPointF(values.value(step.arguments[2 * index]) * across,
                           values.value(step.arguments[2 * index + 1]) * down);
        };
        const auto number = [&](size_t index) { return values.value(step.arguments[index]); };
        switch (step.kind) {
        case PathStep::Kind::Move:
            path.moveTo(point(0));
            break;
        case PathStep::Kind::Line:
            path.lineTo(point(0));
            break;
        case PathStep::Kind::Quadratic:
            path.quadTo(point(0), point(1));
            break;
        case PathStep::Kind::Cubic:
            path.cubicTo(point(0), point(1), point(2));
            break;
        case PathStep::Kind::Arc:
            addArc(path, number(0) * across, number(1) * down, std::fmod(number(2) / 60000, 360), number(3) / 60000);
            break;
        case PathStep::Kind::Close:
            path.closeSubpath();
            break;
        }
    }
    return made;
}

} // namespace

ShapeOutline outlineOf(const ShapeGeometry& geometry, const QSizeF& size)
{
    const GuideValues values(size, geometry.adjusts, geometry.guides);
    const QRectF whole(QPointF(0, 0), size);
    if (!geometry.preset.empty()) {
        if (std::optional<ShapeOutline> known = presetOutline(geometry.preset, size, values))
            return *known;
        QPainterPath rectangle;
        rectangle.addRect(whole);
        return {{{rectangle}}, whole, false};
    }
    ShapeOutline made{{}, whole};
    for (const ShapePath& path : geometry.paths)
        made.paths.push_back(ownPath(path, size, values));
    if (geometry.textRect.size() == 4) {
        const auto side = [&](size_t index) { return values.value(geometry.textRect[index]); };
        made.textRect = QRectF(QPointF(side(0), side(1)), QPointF(side(2), side(3))).normalized();
    }
    return made;
}

bool isKnownPreset(const std::string& name)
{
    const QSizeF size(100, 100);
    return presetOutline(name, size, GuideValues(size, {}, {})).has_value();
}

} // namespace lumivane::engine
