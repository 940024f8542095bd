#include "engine/draw/PresetPen.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumivane::engine {

PresetPen::PresetPen(const QSizeF& size, const GuideValues& values)
    : w(size.width()), h(size.height()), ss(std::min(w, h)), m_values(values), m_made{{}, QRectF(QPointF(0, 0), size)}
{
}

double PresetPen::share(const char* name, double otherwise, double least, double most) const
{
    return std::clamp(m_values.value(name, otherwise * 100000) / 100000, least, std::max(least, most));
}

double PresetPen::angle(const char* name, double otherwise) const
{
    return std::fmod(m_values.value(name, otherwise * 60000) / 60000, 360);
}

PresetPen& PresetPen::move(double x, double y)
{
    m_path.moveTo(x, y);
    return *this;
}

PresetPen& PresetPen::line(double x, double y)
{
    m_path.lineTo(x, y);
    return *this;
}

PresetPen& PresetPen::arc(double across, double down, double from, double sweep)
{
    const double radians = from * std::numbers::pi / 180;
    const QPointF middle = m_path.currentPosition() - QPointF(across * std::cos(radians), down * std::sin(radians));
    m_path.arcTo(QRectF(middle.x() - across, middle.y() - down, 2 * across, 2 * down), -from, -sweep);
    return *this;
}

PresetPen& PresetPen::curve(double x1, double y1, double x2, double y2, double x, double y)
{
    m_path.cubicTo(x1, y1, x2, y2, x, y);
    return *this;
}

PresetPen& PresetPen::bow(double controlX, double controlY, double x, double y)
{
    m_path.quadTo(controlX, controlY, x, y);
    return *this;
}

PresetPen& PresetPen::close()
{
    m_path.closeSubpath();
    return *this;
}

PresetPen& PresetPen::polygon(const QList<QPointF>& points)
{
    m_path.addPolygon(QPolygonF(points));
    return close();
}

PresetPen& PresetPen::rect(double left, double top, double right, double bottom)
{
    return polygon({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}

PresetPen& PresetPen::ellipse(const QPointF& center, double across, double down)
{
    m_path.addEllipse(center, across, down);
    return *this;
}

PresetPen& PresetPen::add(const QPainterPath& path)
{
    m_path.addPath(path);
    return *this;
}

void PresetPen::end(Use use, double light)
{
    m_made.paths.push_back({m_path, use != Use::Lines, use != Use::Fill, light});
    m_path = {};
}

void PresetPen::text(double left, double top, double right, double bottom)
{
    m_made.textRect = QRectF(QPointF(left, top), QPointF(right, bottom)).normalized();
}

void PresetPen::take(PresetPen& other, const QTransform& transform)
{
    for (OutlinePath& one : other.m_made.paths) {
        one.path = transform.map(one.path);
        m_made.paths.push_back(std::move(one));
    }
    m_made.textRect = transform.mapRect(other.m_made.textRect);
}

} // namespace lumivane::engine
