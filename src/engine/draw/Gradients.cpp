#include "engine/draw/Gradients.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {

QGradientStops gradientStops(const std::vector<GradientStop>& stops)
{
    QGradientStops result;
    for (const GradientStop& stop : stops)
        result.append({stop.position, QColor::fromRgba(stop.color)});
    return result;
}

QPointF directionOf(double degrees)
{
    const double angle = qDegreesToRadians(degrees);
    return {std::cos(angle), std::sin(angle)};
}

QBrush linearGradient(const std::vector<GradientStop>& stops, const QRectF& place, const QPointF& direction)
{
    const double half = (std::abs(direction.x()) * place.width() + std::abs(direction.y()) * place.height()) / 2;
    QLinearGradient gradient(place.center() - direction * half, place.center() + direction * half);
    gradient.setStops(gradientStops(stops));
    return gradient;
}

void paintRectangularGradient(QPainter& painter, const std::vector<GradientStop>& stops, const QRectF& place,
                              const QRectF& inner)
{
    constexpr int steps = 128;
    QImage line(steps, 1, QImage::Format_ARGB32_Premultiplied);
    line.fill(Qt::transparent);
    QPainter along(&line);
    along.fillRect(line.rect(), linearGradient(stops, line.rect(), {1, 0}));
    along.end();
    for (int i = steps; i-- > 0;) {
        const double share = (i + 1.0) / steps;
        const QRectF ring(QPointF(inner.left() + (place.left() - inner.left()) * share,
                                  inner.top() + (place.top() - inner.top()) * share),
                          QPointF(inner.right() + (place.right() - inner.right()) * share,
                                  inner.bottom() + (place.bottom() - inner.bottom()) * share));
        painter.fillRect(ring, line.pixelColor(i, 0));
    }
}

} // namespace lumivane::engine
