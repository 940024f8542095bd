#include "engine/draw/ShapeShadows.h"

#include "engine/draw/ShapeLines.h"

#include <QPainter>
#include <QtMath>
#include <cmath>

namespace lumivane::engine {
namespace {

void paintSilhouette(QPainter& painter, const ShapeContent& shape, const QList<QPainterPath>& outline, double scale)
{
    const QColor color = QColor::fromRgba(shape.shadow.color);
    for (const QPainterPath& path : outline) {
        if (shape.fill.kind != FillKind::None)
            painter.fillPath(path, color);
        else if (shape.line.drawn)
            painter.strokePath(path, QPen(color, linePixels(shape.line, scale)));
    }
}

} // namespace

void paintShadow(QPainter& painter, const ShapeContent& shape, const QList<QPainterPath>& outline, double scale)
{
    if (!shape.shadow.drawn)
        return;
    const double angle = qDegreesToRadians(shape.shadow.direction), pixels = scale / emuPerPixel;
    const double distance = shape.shadow.distance * pixels, blur = shape.shadow.blur * pixels;
    const QPointF offset(distance * std::cos(angle), distance * std::sin(angle));
    QRectF bounds;
    for (const QPainterPath& path : outline)
        bounds |= path.boundingRect();
    const QPointF fixed(bounds.x() + shape.shadow.fixed.x() * bounds.width(),
                        bounds.y() + shape.shadow.fixed.y() * bounds.height());
    QTransform toShadow = QTransform::fromTranslate(offset.x() + fixed.x(), offset.y() + fixed.y());
    toShadow.scale(shape.shadow.across, shape.shadow.down).translate(-fixed.x(), -fixed.y());
    bounds = toShadow.mapRect(bounds).adjusted(-blur - 1, -blur - 1, blur + 1, blur + 1);
    if (painter.hasClipping())
        bounds &= painter.clipBoundingRect().adjusted(-blur, -blur, blur, blur);
    constexpr double largest = 4096; // pixels; beyond, nobody sees the whole of it
    const QRect area = bounds.toAlignedRect();
    if (area.isEmpty() || area.width() > largest || area.height() > largest)
        return;
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter on(&image);
    on.setRenderHint(QPainter::Antialiasing);
    on.setTransform(toShadow * QTransform::fromTranslate(-area.x(), -area.y()));
    paintSilhouette(on, shape, outline, scale);
    on.end();
    if (const double coarse = blur / 2; coarse > 1) {
        // Made small and large again: the mean over some pixels, softened.
        const QSize small = (QSizeF(image.size()) / coarse).toSize().expandedTo({1, 1});
        image = image.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .scaled(area.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    painter.drawImage(area.topLeft(), image);
}

} // namespace lumivane::engine
