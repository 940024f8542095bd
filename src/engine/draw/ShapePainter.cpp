#include "engine/draw/ShapePainter.h"

#include "engine/draw/ControlPainter.h"
#include "engine/draw/ShapeFills.h"
#include "engine/draw/ShapeLines.h"
#include "engine/draw/ShapeOutline.h"
#include "engine/draw/ShapeShadows.h"
#include "engine/draw/ShapeTexts.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

constexpr double emuPerPixel = 9525;

/// Moves a thin line between pixels, so that upright and level lines are sharp.
QPointF sharpened(const ShapeContent& shape, double scale)
{
    const int width = static_cast<int>(std::lround(linePixels(shape.line, scale)));
    return shape.line.drawn && width % 2 == 1 ? QPointF(0.5, 0.5) : QPointF(0, 0);
}

} // namespace

bool liesOnItsSide(double rotation)
{
    const double angle = std::fmod(std::fmod(rotation, 180) + 180, 180);
    return angle >= 45 && angle < 135;
}

void ShapePainter::paint(const ShapeContent& shape, const QRectF& place)
{
    if (shape.hidden || shape.kind == ShapeContent::Kind::Undrawn)
        return;
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.translate(place.center());
    m_painter.rotate(shape.rotation);
    m_painter.translate(-place.center());
    if (shape.kind == ShapeContent::Kind::Group)
        paintGroup(shape, place);
    else if (shape.kind == ShapeContent::Kind::Control)
        paintControl(m_painter, shape, place, m_fonts);
    else
        paintUnturned(shape, place);
    m_painter.restore();
}

void ShapePainter::paintUnturned(const ShapeContent& shape, const QRectF& place)
{
    const double pixels = m_scale / emuPerPixel;
    const ShapeOutline outline = outlineOf(shape.geometry, place.size() / pixels);
    QTransform toPlace;
    toPlace.translate(place.center().x(), place.center().y());
    toPlace.scale(shape.flippedAcross ? -1 : 1, shape.flippedDown ? -1 : 1);
    toPlace.translate(-place.width() / 2, -place.height() / 2);
    toPlace.scale(pixels, pixels);
    QList<QPainterPath> paths;
    for (const OutlinePath& one : outline.paths)
        paths.append(toPlace.map(one.path));

    paintShadow(m_painter, shape, paths, m_scale);
    m_painter.save();
    if (shape.fill.kind == FillKind::Picture && (shape.flippedAcross || shape.flippedDown)) {
        // The picture is mirrored with its shape.
        m_painter.translate(place.center());
        m_painter.scale(shape.flippedAcross ? -1 : 1, shape.flippedDown ? -1 : 1);
        m_painter.translate(-place.center());
        for (QPainterPath& path : paths)
            path = QTransform(shape.flippedAcross ? -1 : 1, 0, 0, shape.flippedDown ? -1 : 1,
                              shape.flippedAcross ? 2 * place.center().x() : 0,
                              shape.flippedDown ? 2 * place.center().y() : 0)
                       .map(path);
    }
    for (size_t i = 0; i < outline.paths.size(); ++i) {
        if (outline.paths[i].filled)
            paintShapeFill(m_painter, paths[static_cast<qsizetype>(i)], place, shape.fill, m_scale);
    }
    m_painter.translate(sharpened(shape, m_scale));
    for (size_t i = 0; i < outline.paths.size(); ++i) {
        if (outline.paths[i].stroked)
            paintShapeLine(m_painter, paths[static_cast<qsizetype>(i)], shape.line, m_scale);
    }
    m_painter.restore();
    paintText(shape, toPlace.mapRect(outline.textRect));
}

/// A text is turned with its shape but never mirrored; one that stands on its head is turned instead.
void ShapePainter::paintText(const ShapeContent& shape, const QRectF& textRect)
{
    m_painter.save();
    if (shape.flippedDown) {
        m_painter.translate(textRect.center());
        m_painter.rotate(180);
        m_painter.translate(-textRect.center());
    }
    paintShapeText(m_painter, shape.text, textRect, m_fonts);
    m_painter.restore();
}

void ShapePainter::paintGroup(const ShapeContent& group, const QRectF& place)
{
    m_painter.translate(place.center());
    m_painter.scale(group.flippedAcross ? -1 : 1, group.flippedDown ? -1 : 1);
    m_painter.translate(-place.center());
    const QRectF& inner = group.childPlace;
    const double across = inner.width() > 0 ? place.width() / inner.width() : m_scale / emuPerPixel;
    const double down = inner.height() > 0 ? place.height() / inner.height() : m_scale / emuPerPixel;
    for (const ShapeContent& child : group.children) {
        const QPointF corner((child.place.x() - inner.x()) * across, (child.place.y() - inner.y()) * down);
        paint(child,
              QRectF(place.topLeft() + corner, QSizeF(child.place.width() * across, child.place.height() * down)));
    }
}

} // namespace lumivane::engine
