#include "engine/draw/CellFills.h"

#include "engine/draw/Gradients.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace lumivane::engine {
namespace {

using PatternRows = std::array<quint8, 8>; // the top one first, the leftmost pixel in the highest bit

PatternRows patternRows(Pattern pattern)
{
    switch (pattern) {
    case Pattern::Gray125:
        return {0x88, 0x00, 0x22, 0x00, 0x88, 0x00, 0x22, 0x00};
    case Pattern::Gray0625:
        return {0x80, 0x00, 0x08, 0x00, 0x80, 0x00, 0x08, 0x00};
    case Pattern::DarkGray:
        return {0x77, 0xdd, 0x77, 0xdd, 0x77, 0xdd, 0x77, 0xdd};
    case Pattern::MediumGray:
        return {0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55};
    case Pattern::LightGray:
        return {0x88, 0x22, 0x88, 0x22, 0x88, 0x22, 0x88, 0x22};
    case Pattern::DarkHorizontal:
        return {0xff, 0xff, 0x00, 0x00, 0xff, 0xff, 0x00, 0x00};
    case Pattern::DarkVertical:
        return {0xcc, 0xcc, 0xcc, 0xcc, 0xcc, 0xcc, 0xcc, 0xcc};
    case Pattern::DarkDown:
        return {0xcc, 0x66, 0x33, 0x99, 0xcc, 0x66, 0x33, 0x99};
    case Pattern::DarkUp:
        return {0xcc, 0x99, 0x33, 0x66, 0xcc, 0x99, 0x33, 0x66};
    case Pattern::DarkGrid:
        return {0xcc, 0xcc, 0x33, 0x33, 0xcc, 0xcc, 0x33, 0x33};
    case Pattern::DarkTrellis:
        return {0xff, 0x66, 0xff, 0x99, 0xff, 0x66, 0xff, 0x99};
    case Pattern::LightHorizontal:
        return {0xff, 0x00, 0x00, 0x00, 0xff, 0x00, 0x00, 0x00};
    case Pattern::LightVertical:
        return {0x88, 0x88, 0x88, 0x88, 0x88, 0x88, 0x88, 0x88};
    case Pattern::LightDown:
        return {0x88, 0x44, 0x22, 0x11, 0x88, 0x44, 0x22, 0x11};
    case Pattern::LightUp:
        return {0x11, 0x22, 0x44, 0x88, 0x11, 0x22, 0x44, 0x88};
    case Pattern::LightGrid:
        return {0xff, 0x88, 0x88, 0x88, 0xff, 0x88, 0x88, 0x88};
    case Pattern::LightTrellis:
        return {0x88, 0x55, 0x22, 0x55, 0x88, 0x55, 0x22, 0x55};
    case Pattern::None:
    case Pattern::Solid:
    case Pattern::Gradient:
        break;
    }
    return {};
}

QImage patternTile(const FillStyle& fill, int dot)
{
    const PatternRows rows = patternRows(fill.pattern);
    QImage tile(8 * dot, 8 * dot, QImage::Format_RGB32);
    for (int y = 0; y < tile.height(); ++y)
        for (int x = 0; x < tile.width(); ++x) {
            const bool set = rows[static_cast<size_t>(y / dot)] & (0x80 >> (x / dot));
            tile.setPixel(x, y, set ? fill.fore : fill.back);
        }
    return tile;
}

void paintGradient(QPainter& painter, const QRect& place, const CellGradient& gradient)
{
    if (!gradient.inner)
        return painter.fillRect(place, linearGradient(gradient.stops, place, directionOf(gradient.degrees)));
    const QRectF& inner = *gradient.inner;
    const QRectF part(place.x() + inner.x() * place.width(), place.y() + inner.y() * place.height(),
                      inner.width() * place.width(), inner.height() * place.height());
    paintRectangularGradient(painter, gradient.stops, place, part);
}

} // namespace

void paintFill(QPainter& painter, const QRect& place, const FillStyle& fill, double scale)
{
    switch (fill.pattern) {
    case Pattern::None:
        return;
    case Pattern::Solid:
        painter.fillRect(place, QColor::fromRgb(fill.fore));
        return;
    case Pattern::Gradient:
        if (fill.gradient)
            paintGradient(painter, place, *fill.gradient);
        return;
    default:
        painter.fillRect(place, patternBrush(fill, scale));
    }
}

QBrush patternBrush(const FillStyle& fill, double scale)
{
    return QBrush(patternTile(fill, std::clamp(static_cast<int>(std::lround(scale)), 1, 16)));
}

FillStyle evened(const FillStyle& fill)
{
    if (fill.pattern == Pattern::None || fill.pattern == Pattern::Solid || fill.pattern == Pattern::Gradient)
        return fill;
    int dots = 0;
    for (const quint8 row : patternRows(fill.pattern))
        dots += std::popcount(row);
    const auto mixed = [&](int fore, int back) { return (fore * dots + back * (64 - dots)) / 64; };
    const QRgb color = qRgb(mixed(qRed(fill.fore), qRed(fill.back)), mixed(qGreen(fill.fore), qGreen(fill.back)),
                            mixed(qBlue(fill.fore), qBlue(fill.back)));
    return {Pattern::Solid, color, fill.back};
}

} // namespace lumivane::engine
