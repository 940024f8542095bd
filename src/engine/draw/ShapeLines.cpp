#include "engine/draw/ShapeLines.h"

#include <QLineF>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

/// Lengths of dashes and gaps in widths of the line.
QList<qreal> dashPattern(Dash dash)
{
    switch (dash) {
    case Dash::Solid:
        break;
    case Dash::Dot:
        return {1, 3};
    case Dash::Dash:
        return {4, 3};
    case Dash::LongDash:
        return {8, 3};
    case Dash::DashDot:
        return {4, 3, 1, 3};
    case Dash::LongDashDot:
        return {8, 3, 1, 3};
    case Dash::LongDashDotDot:
        return {8, 3, 1, 3, 1, 3};
    case Dash::SystemDot:
        return {1, 1};
    case Dash::SystemDash:
        return {3, 1};
    case Dash::SystemDashDot:
        return {3, 1, 1, 1};
    case Dash::SystemDashDotDot:
        return {3, 1, 1, 1, 1, 1};
    }
    return {};
}

QPen penOf(const ShapeLine& line, double width, const QPainterPath& path)
{
    static constexpr Qt::PenCapStyle caps[] = {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap};
    static constexpr Qt::PenJoinStyle joins[] = {Qt::RoundJoin, Qt::BevelJoin, Qt::MiterJoin};
    QPen pen(QColor::fromRgba(line.color), width, Qt::SolidLine, caps[static_cast<size_t>(line.cap)],
             joins[static_cast<size_t>(line.join)]);
    if (line.dash != Dash::Solid && dashCount(path, width) > 0)
        pen.setDashPattern(dashPattern(line.dash));
    return pen;
}

/// The head of an arrow whose tip is at the origin and which points along the x axis.
QPainterPath endShape(LineEnd kind, double length, double width)
{
    QPainterPath path;
    switch (kind) {
    case LineEnd::None:
        break;
    case LineEnd::Triangle:
        path.addPolygon(QPolygonF({{0, 0}, {-length, -width / 2}, {-length, width / 2}, {0, 0}}));
        break;
    case LineEnd::Stealth:
        path.addPolygon(QPolygonF({{0, 0}, {-length, -width / 2}, {-length * 0.6, 0}, {-length, width / 2}, {0, 0}}));
        break;
    case LineEnd::Diamond:
        path.addPolygon(
            QPolygonF({{length / 2, 0}, {0, -width / 2}, {-length / 2, 0}, {0, width / 2}, {length / 2, 0}}));
        break;
    case LineEnd::Oval:
        path.addEllipse(QPointF(0, 0), length / 2, width / 2);
        break;
    case LineEnd::Arrow:
        path.addPolygon(QPolygonF({{-length, -width / 2}, {0, 0}, {-length, width / 2}}));
        break;
    }
    return path;
}

/// Draws an end whose tip is at an element of the path, coming from its neighbour, and shortens the path so that the
/// line does not show at the tip.
void paintEnd(QPainter& painter, QPainterPath& path, int tip, int neighbour, const LineEndStyle& end,
              const ShapeLine& line, double width, double scale)
{
    const QPointF at = path.elementAt(tip), from = path.elementAt(neighbour);
    const QLineF direction(from, at);
    if (end.kind == LineEnd::None || direction.length() <= 0)
        return;
    constexpr double leastPixels = 2 * 96.0 / 72; // an end is as large as that of a line of 2 points
    const double unit = std::max(width, leastPixels * scale), length = end.length * unit;
    painter.save();
    painter.translate(at);
    painter.rotate(-direction.angle());
    const QPainterPath shape = endShape(end.kind, length, end.width * unit);
    if (end.kind == LineEnd::Arrow)
        painter.strokePath(shape,
                           QPen(QColor::fromRgba(line.color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    else
        painter.fillPath(shape, QColor::fromRgba(line.color));
    painter.restore();
    if (end.kind == LineEnd::Triangle || end.kind == LineEnd::Stealth) {
        const QPointF back = at - (at - from) * std::min(length / 2 / direction.length(), 0.9);
        path.setElementPositionAt(tip, back.x(), back.y());
    }
}

} // namespace

double linePixels(const ShapeLine& line, double scale)
{
    return std::max(line.width / emuPerPixel, 1.0) * scale;
}

/// A line of countless dashes looks like a plain one and takes for ever.
double dashCount(const QPainterPath& path, double lineWidth)
{
    constexpr double most = 20000;
    const QRectF bounds = path.boundingRect();
    const double roughLength = (bounds.width() + bounds.height()) * std::max(path.elementCount() / 2, 1);
    const double count = roughLength / lineWidth;
    return count < most ? count : 0;
}

void paintShapeLine(QPainter& painter, QPainterPath path, const ShapeLine& line, double scale)
{
    if (!line.drawn || path.elementCount() < 2)
        return;
    const double width = linePixels(line, scale);
    const QPointF first = path.elementAt(0), last = path.currentPosition();
    if (first != last) { // a closed outline has no ends
        const int count = path.elementCount();
        paintEnd(painter, path, 0, 1, line.head, line, width, scale);
        paintEnd(painter, path, count - 1, count - 2, line.tail, line, width, scale);
    }
    painter.strokePath(path, penOf(line, width, path));
}

} // namespace lumivane::engine
