#include "engine/draw/ShapeFills.h"

#include "engine/draw/CellFills.h"
#include "engine/draw/Gradients.h"
#include "engine/draw/PictureCache.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

QBrush linearBrush(const ShapeFill& fill, const QRectF& place)
{
    QPointF direction = directionOf(fill.angle);
    if (fill.scaled) {
        direction = {direction.x() * place.height(), direction.y() * place.width()};
        direction /= std::max(std::hypot(direction.x(), direction.y()), 1e-6);
    }
    return linearGradient(fill.stops, place, direction);
}

/// From a rectangle in the shape to its sides, or from a point to its corners.
void paintPathGradient(QPainter& painter, const QPainterPath& outline, const QRectF& place, const ShapeFill& fill)
{
    const QRectF inner(place.x() + fill.center.x() * place.width(), place.y() + fill.center.y() * place.height(),
                       fill.center.width() * place.width(), fill.center.height() * place.height());
    if (fill.round) {
        const QPointF middle = inner.center();
        const double across = std::max({middle.x() - place.left(), place.right() - middle.x(), 1e-3});
        const double down = std::max({middle.y() - place.top(), place.bottom() - middle.y(), 1e-3});
        QRadialGradient gradient(QPointF(0, 0), M_SQRT2);
        gradient.setStops(gradientStops(fill.stops));
        QBrush brush(gradient);
        brush.setTransform(QTransform(across, 0, 0, down, middle.x(), middle.y()));
        painter.fillPath(outline, brush);
        return;
    }
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    paintRectangularGradient(painter, fill.stops, place, inner);
    painter.restore();
}

/// The pattern of cells that is nearest to one of shapes.
Pattern nearestPattern(const std::string& name)
{
    const auto has = [&name](const char* part) { return name.find(part) != std::string::npos; };
    if (name.starts_with("pct")) {
        const int share = std::atoi(name.c_str() + 3);
        return share <= 5    ? Pattern::Gray0625
               : share <= 15 ? Pattern::Gray125
               : share <= 30 ? Pattern::LightGray
               : share <= 60 ? Pattern::MediumGray
                             : Pattern::DarkGray;
    }
    const bool dark = name.starts_with("dk") || name.starts_with("wd") || name.starts_with("nar");
    if (has("UpDiag"))
        return dark ? Pattern::DarkUp : Pattern::LightUp;
    if (has("DnDiag"))
        return dark ? Pattern::DarkDown : Pattern::LightDown;
    if (has("Horz") || name == "horz")
        return dark ? Pattern::DarkHorizontal : Pattern::LightHorizontal;
    if (has("Vert") || name == "vert")
        return dark ? Pattern::DarkVertical : Pattern::LightVertical;
    if (has("Grid") || name == "cross" || has("Brick"))
        return Pattern::LightGrid;
    if (has("Check"))
        return Pattern::DarkGrid;
    return name == "trellis" ? Pattern::DarkTrellis : Pattern::LightTrellis;
}

void paintTiles(QPainter& painter, const QPainterPath& outline, const QRectF& place, const PictureFill& fill,
                double scale)
{
    std::optional<QBrush> brush = tileBrush(fill, scale);
    if (!brush)
        return paintMissing(painter, place, scale);
    const QPointF start = place.topLeft() + QPointF(fill.tileX, fill.tileY) / emuPerPixel * scale;
    brush->setTransform(
        brush->transform() *
        QTransform::fromScale(std::clamp(fill.tileWidth, 0.01, 100.0), std::clamp(fill.tileHeight, 0.01, 100.0)) *
        QTransform::fromTranslate(start.x(), start.y()));
    painter.fillPath(outline, *brush);
}

void paintPicture(QPainter& painter, const QPainterPath& outline, const QRectF& place, const PictureFill& fill,
                  double scale)
{
    if (fill.tiled)
        return paintTiles(painter, outline, place, fill, scale);
    // The place that the whole picture would take, of which a part shows.
    const double shownWidth = std::max(1 - fill.left - fill.right, 1e-3);
    const double shownHeight = std::max(1 - fill.top - fill.bottom, 1e-3);
    const QSizeF wholeSize(place.width() / shownWidth, place.height() / shownHeight);
    constexpr double largest = 1e5;
    const QImage image = PictureCache::shared().image(fill, wholeSize.boundedTo({largest, largest}).toSize());
    if (image.isNull())
        return paintMissing(painter, place, scale);
    const QRectF whole(place.topLeft() - QPointF(fill.left * wholeSize.width(), fill.top * wholeSize.height()),
                       wholeSize);
    // Only what is left of it is painted, lest pixels that were cut off show in the smoothed edge.
    const QRectF part(fill.left * image.width(), fill.top * image.height(), shownWidth * image.width(),
                      shownHeight * image.height());
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(painter.opacity() * fill.opacity);
    painter.drawImage(whole & place, image, part & QRectF(image.rect()));
    painter.restore();
}

} // namespace

void paintMissing(QPainter& painter, const QRectF& place, double scale)
{
    painter.save();
    painter.setPen(QPen(QColor(0x80, 0x80, 0x80), scale));
    const QRectF frame = place.adjusted(scale / 2, scale / 2, -scale / 2, -scale / 2);
    painter.drawRect(frame);
    painter.drawLine(frame.topLeft(), frame.bottomRight());
    painter.drawLine(frame.topRight(), frame.bottomLeft());
    painter.restore();
}

std::optional<QBrush> tileBrush(const PictureFill& fill, double scale)
{
    constexpr QSizeF largest(4096, 4096);
    const QSizeF size = QSizeF(PictureCache::shared().ownSize(fill)) * scale;
    const QImage tile = PictureCache::shared().image(fill, size.boundedTo(largest).toSize());
    if (size.isEmpty() || tile.isNull())
        return std::nullopt;
    QBrush brush(tile);
    brush.setTransform(QTransform::fromScale(size.width() / tile.width(), size.height() / tile.height()));
    return brush;
}

void paintShapeFill(QPainter& painter, const QPainterPath& outline, const QRectF& place, const ShapeFill& fill,
                    double scale)
{
    switch (fill.kind) {
    case FillKind::None:
        return;
    case FillKind::Solid:
        return painter.fillPath(outline, QColor::fromRgba(fill.color));
    case FillKind::LinearGradient:
        return painter.fillPath(outline, linearBrush(fill, place));
    case FillKind::PathGradient:
        return paintPathGradient(painter, outline, place, fill);
    case FillKind::Pattern:
        return painter.fillPath(outline,
                                patternBrush({nearestPattern(fill.pattern), fill.color, fill.backColor}, scale));
    case FillKind::Picture:
        return paintPicture(painter, outline, place, fill.picture, scale);
    }
}

} // namespace lumivane::engine
