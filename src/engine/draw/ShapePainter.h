#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/draw/Fonts.h"
#include "engine/draw/PaintBudget.h"
#include "engine/show/ShownSheet.h"

#include <QPainterPath>
#include <QRectF>

class QPainter;

namespace lumivane::engine {

/// Draws shapes, pictures and groups of them at one scale.
class ShapePainter
{
public:
    /// Lists take their entries from `sheet`. Shapes that the budget does not pay for are marked as missing.
    ShapePainter(QPainter& painter, const Fonts& fonts, const ShownSheet& sheet, PaintBudget& budget)
        : m_painter(painter), m_fonts(fonts), m_sheet(sheet), m_budget(budget), m_scale(fonts.scale())
    {
    }

    /// Draws a shape whose frame, before it is turned, lies in `place`, in pixels.
    void paint(const ShapeContent& shape, const QRectF& place);

private:
    void paintUnturned(const ShapeContent& shape, const QRectF& place);
    void paintFill(const ShapeFill& fill, const QPainterPath& path, const QRectF& place, double light);
    void paintGroup(const ShapeContent& group, const QRectF& place);
    bool affords(const ShapeContent& shape, const QList<QPainterPath>& outline);
    void markMissing(const QRectF& place);
    void paintText(const ShapeContent& shape, const QRectF& textRect);

    QPainter& m_painter;
    const Fonts& m_fonts;
    const ShownSheet& m_sheet;
    PaintBudget& m_budget;
    const double m_scale;
};

/// What a shape covers that is drawn in such a place at a scale, shadows and texts that run over it left out; empty for
/// what is not drawn.
QRectF coveredByShape(const ShapeContent& shape, const QRectF& place, double scale);

/// Whether a shape drawn in such a place is there at a point: anywhere in its frame, but of one without fill and text
/// only within `reach` of its lines, since what lies below it is seen through it.
bool isAtPoint(const ShapeContent& shape, const QRectF& place, double scale, const QPointF& point, double reach);

/// Whether what is turned by so many degrees lies on its side, so that the frame which encloses it as drawn has its
/// width for its height.
bool liesOnItsSide(double rotation);

} // namespace lumivane::engine
