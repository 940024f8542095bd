#include "engine/draw/ConditionLayer.h"

#include "engine/draw/IconPictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {

namespace {

/// What a gradient fades to: a tenth of the colour over white.
QColor faded(const QColor& color)
{
    const auto part = [](int value) { return 255 - (255 - value) / 10; };
    return {part(color.red()), part(color.green()), part(color.blue())};
}

} // namespace

void ConditionLayer::paint(QPainter& painter) const
{
    const VisibleGrid& grid = m_scene.grid;
    if (m_scene.sheet.sheet().conditions.empty())
        return;
    for (int r = 0; r < grid.rowCount(); ++r)
        for (int c = 0; c < grid.columnCount(); ++c) {
            int row = grid.row(r), column = grid.column(c);
            const CellArea* merged = m_scene.sheet.mergedAt(row, column);
            // A merged area is painted with the first of its cells that is visible.
            if (merged && ((r > 0 && grid.row(r - 1) >= merged->firstRow) ||
                           (c > 0 && grid.column(c - 1) >= merged->firstColumn)))
                continue;
            if (merged) {
                row = merged->firstRow;
                column = merged->firstColumn;
            }
            const ConditionResult& result = *m_scene.sheet.condition(row, column);
            const QRect cell = merged ? grid.rect(*merged) : grid.cellRect(r, c);
            if (result.bar.bar)
                paintBar(painter, cell, result.bar);
            if (result.icon)
                paintIconOf(painter, cell, m_scene.sheet.style(row, column), result);
        }
}

void ConditionLayer::paintBar(QPainter& painter, const QRect& cell, const BarShown& shown) const
{
    const DataBar& bar = *shown.bar;
    const double scale = m_scene.grid.scale(), margin = (bar.hasAxis ? 2 : 1) * scale;
    const QRectF inner = QRectF(cell).adjusted(margin, margin, -margin, -margin);
    if (inner.width() <= 0 || inner.height() <= 0)
        return;
    const bool mirrored = bar.direction == DataBar::Direction::RightToLeft ||
                          (bar.direction == DataBar::Direction::ByContext && m_scene.grid.rightToLeft());
    const auto x = [&](double part) { return std::round(inner.left() + (mirrored ? 1 - part : part) * inner.width()); };
    painter.save();
    painter.setClipRect(cell, Qt::IntersectClip);
    if (shown.from != shown.to) {
        const double from = x(shown.from), to = x(shown.to);
        const QRectF place(QPointF(std::min(from, to), inner.top()),
                           QPointF(std::max(from, to) + scale, inner.bottom()));
        const QColor color = QColor::fromRgb(shown.negative ? bar.negativeColor : bar.color);
        QLinearGradient gradient(QPointF(from, 0), QPointF(to, 0));
        gradient.setColorAt(0, color);
        gradient.setColorAt(1, faded(color));
        painter.fillRect(place, bar.gradient ? QBrush(gradient) : QBrush(color));
        if (const auto edge = shown.negative ? bar.negativeBorderColor : bar.borderColor) {
            painter.setPen(QPen(QColor::fromRgb(*edge), scale, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(place.adjusted(scale / 2, scale / 2, -scale / 2, -scale / 2));
        }
    }
    if (shown.axis && bar.axis != DataBar::Axis::None) {
        QPen pen(QColor::fromRgb(bar.axisColor), scale, Qt::CustomDashLine, Qt::FlatCap);
        pen.setDashPattern({3, 3});
        painter.setPen(pen);
        const double at = x(*shown.axis) + scale / 2;
        painter.drawLine(QPointF(at, cell.top()), QPointF(at, cell.bottom() + 1));
    }
    painter.restore();
}

void ConditionLayer::paintIconOf(QPainter& painter, const QRect& cell, const CellStyle& style,
                                 const ConditionResult& result) const
{
    const double scale = m_scene.grid.scale(), side = iconSide(m_scene.sheet.font(style)) * scale;
    const double margin = iconMargin * scale;
    const bool mirrored = m_scene.grid.rightToLeft();
    double x = mirrored ? cell.right() + 1 - margin - side : cell.left() + margin;
    // Alone in its cell it lies as a text would.
    if (result.hidesValue && style.horizontal == Horizontal::Center)
        x = QRectF(cell).center().x() - side / 2;
    else if (result.hidesValue && style.horizontal == Horizontal::Right)
        x = cell.right() + 1 - margin - side;
    double y = cell.bottom() + 1 - side - scale;
    if (style.vertical == Vertical::Top)
        y = cell.top() + scale;
    else if (style.vertical != Vertical::Bottom)
        y = QRectF(cell).center().y() - side / 2;
    painter.save();
    painter.setClipRect(cell, Qt::IntersectClip);
    paintIcon(painter, QRectF(std::round(x), std::round(y), side, side), *result.icon);
    painter.restore();
}

} // namespace lumivane::engine
