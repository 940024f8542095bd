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

/// Moves a thin line between pixels, so that upright and level lines are sharp.
QPointF sharpened(const ShapeContent& shape, double scale)
{
    const int width = static_cast<int>(std::lround(linePixels(shape.line, scale)));
    return shape.line.drawn && width % 2 == 1 ? QPointF(0.5, 0.5) : QPointF(0, 0);
}

QTransform aboutCenter(const QRectF& place, const QTransform& transform)
{
    return QTransform::fromTranslate(-place.center().x(), -place.center().y()) * transform *
           QTransform::fromTranslate(place.center().x(), place.center().y());
}

QTransform turned(const ShapeContent& shape, const QRectF& place)
{
    return aboutCenter(place, QTransform().rotate(shape.rotation));
}

QTransform mirrored(const ShapeContent& shape, const QRectF& place)
{
    return aboutCenter(place, QTransform::fromScale(shape.flippedAcross ? -1 : 1, shape.flippedDown ? -1 : 1));
}

/// Of a child before the group is mirrored and turned.
QRectF placeInGroup(const ShapeContent& group, const ShapeContent& child, const QRectF& place, double scale)
{
    const QRectF& inner = group.childPlace;
    const double across = inner.width() > 0 ? place.width() / inner.width() : scale / emuPerPixel;
    const double down = inner.height() > 0 ? place.height() / inner.height() : scale / emuPerPixel;
    const QPointF corner((child.place.x() - inner.x()) * across, (child.place.y() - inner.y()) * down);
    return QRectF(place.topLeft() + corner, QSizeF(child.place.width() * across, child.place.height() * down));
}

/// From the EMU of an outline to the pixels of its place.
QTransform transformInto(const QRectF& place, const ShapeContent& shape, double scale)
{
    const double pixels = scale / emuPerPixel;
    return QTransform::fromScale(pixels, pixels) * QTransform::fromTranslate(place.x(), place.y()) *
           mirrored(shape, place);
}

QList<QPainterPath> pathsIn(const QTransform& toPlace, const ShapeOutline& outline)
{
    QList<QPainterPath> paths;
    for (const OutlinePath& one : outline.paths)
        paths.append(toPlace.map(one.path));
    return paths;
}

} // namespace

bool liesOnItsSide(double rotation)
{
    const double angle = std::fmod(std::fmod(rotation, 180) + 180, 180);
    return angle >= 45 && angle < 135;
}

QRectF coveredByShape(const ShapeContent& shape, const QRectF& place, double scale)
{
    if (shape.hidden || shape.kind == ShapeContent::Kind::Undrawn)
        return {};
    QRectF covered = place;
    if (shape.kind == ShapeContent::Kind::Group) {
        for (const ShapeContent& child : shape.children)
            covered |=
                mirrored(shape, place).mapRect(coveredByShape(child, placeInGroup(shape, child, place, scale), scale));
    } else if (shape.kind != ShapeContent::Kind::Control) {
        const ShapeOutline outline = outlineOf(shape.geometry, place.size() * emuPerPixel / scale);
        for (const QPainterPath& path : pathsIn(transformInto(place, shape, scale), outline))
            covered |= path.boundingRect();
        const double half = shape.line.drawn ? linePixels(shape.line, scale) / 2 : 0;
        const QPointF moved = sharpened(shape, scale);
        covered = covered.adjusted(moved.x() - half, moved.y() - half, moved.x() + half, moved.y() + half);
    }
    return turned(shape, place).mapRect(covered);
}

void ShapePainter::paint(const ShapeContent& shape, const QRectF& place)
{
    if (shape.hidden || shape.kind == ShapeContent::Kind::Undrawn)
        return;
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setTransform(turned(shape, place), true);
    if (shape.kind == ShapeContent::Kind::Group)
        paintGroup(shape, place);
    else if (shape.kind == ShapeContent::Kind::Control && !affords(shape, {}))
        markMissing(place);
    else if (shape.kind == ShapeContent::Kind::Control)
        paintControl(m_painter, shape, place, m_fonts, m_sheet);
    else
        paintUnturned(shape, place);
    m_painter.restore();
}

void ShapePainter::paintUnturned(const ShapeContent& shape, const QRectF& place)
{
    const ShapeOutline outline = outlineOf(shape.geometry, place.size() * emuPerPixel / m_scale);
    const QTransform toPlace = transformInto(place, shape, m_scale);
    QList<QPainterPath> paths = pathsIn(toPlace, outline);
    if (!affords(shape, paths))
        return markMissing(place);

    paintShadow(m_painter, shape, paths, m_scale);
    m_painter.save();
    if (shape.fill.kind == FillKind::Picture && (shape.flippedAcross || shape.flippedDown)) {
        // The picture is mirrored with its shape.
        m_painter.setTransform(mirrored(shape, place), true);
        for (QPainterPath& path : paths)
            path = mirrored(shape, place).map(path);
    }
    // Each path covers the lines of those before it.
    const QPointF shift = sharpened(shape, m_scale);
    for (size_t i = 0; i < outline.paths.size(); ++i) {
        const QPainterPath& path = paths[static_cast<qsizetype>(i)];
        if (outline.paths[i].filled)
            paintFill(shape.fill, path, place, outline.paths[i].light);
        if (outline.paths[i].stroked)
            paintShapeLine(m_painter, path.translated(shift), shape.line, m_scale);
    }
    m_painter.restore();
    paintText(shape, toPlace.mapRect(outline.textRect));
}

/// Faces of a body are lighter or darker than its fill.
void ShapePainter::paintFill(const ShapeFill& fill, const QPainterPath& path, const QRectF& place, double light)
{
    paintShapeFill(m_painter, path, place, fill, m_scale);
    if (light == 0 || fill.kind == FillKind::None)
        return;
    QColor over(light > 0 ? Qt::white : Qt::black);
    const int opacity = fill.kind == FillKind::Solid ? qAlpha(fill.color) : 255;
    over.setAlphaF(static_cast<float>(std::abs(light) * opacity / 255));
    m_painter.fillPath(path, over);
}

bool isAtPoint(const ShapeContent& shape, const QRectF& place, double scale, const QPointF& point, double reach)
{
    const QPointF unturned = turned(shape, place).inverted().map(point);
    const bool seeThrough =
        shape.kind == ShapeContent::Kind::Shape && shape.fill.kind == FillKind::None && shape.text.paragraphs.empty();
    if (!seeThrough)
        return place.contains(unturned);
    QPainterPathStroker pen;
    pen.setWidth(linePixels(shape.line, scale) + 2 * reach);
    const QList<QPainterPath> paths =
        pathsIn(transformInto(place, shape, scale), outlineOf(shape.geometry, place.size() * emuPerPixel / scale));
    return std::any_of(paths.begin(), paths.end(),
                       [&](const QPainterPath& path) { return pen.createStroke(path).contains(unturned); });
}

bool ShapePainter::affords(const ShapeContent& shape, const QList<QPainterPath>& outline)
{
    QRectF visible;
    for (const QPainterPath& path : outline)
        visible |= path.boundingRect();
    if (m_painter.hasClipping())
        visible &= m_painter.clipBoundingRect();
    return m_budget.take(shape, outline, visible, m_scale);
}

void ShapePainter::markMissing(const QRectF& place)
{
    if (m_budget.takeMark())
        paintMissing(m_painter, place, m_scale);
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
    m_painter.setTransform(mirrored(group, place), true);
    for (const ShapeContent& child : group.children)
        paint(child, placeInGroup(group, child, place, m_scale));
}

} // namespace lumivane::engine
