#include "engine/draw/SparklineLayer.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <limits>

namespace lumivane::engine {

namespace {

constexpr double margin = 3; // pixels at scale 1

/// One small chart in its place.
class SparklinePainter
{
public:
    SparklinePainter(QPainter& painter, const SparklineShown& shown, const QRectF& place, double scale)
        : m_painter(painter), m_shown(shown), m_group(*shown.group), m_place(place), m_scale(scale)
    {
        for (const SparklineShown::Point& point : shown.points) {
            m_lowest = std::min(m_lowest, point.value.value_or(m_lowest));
            m_highest = std::max(m_highest, point.value.value_or(m_highest));
        }
    }

    void paint()
    {
        m_group.kind == SparklineGroup::Kind::Line ? paintLine() : paintColumns();
        if (m_group.showsAxis &&
            (m_group.kind == SparklineGroup::Kind::WinLoss || (m_shown.least <= 0 && m_shown.most >= 0)))
            m_painter.fillRect(QRectF(m_place.left(), std::round(y(0)), m_place.width(), m_scale),
                               QColor::fromRgb(m_group.axisColor));
    }

private:
    double y(double value) const
    {
        if (m_group.kind == SparklineGroup::Kind::WinLoss)
            return m_place.center().y() - (value > 0 ? 1 : value < 0 ? -1 : 0) * m_place.height() / 2;
        const double range = m_shown.most - m_shown.least;
        const double part = range > 0 ? std::clamp((value - m_shown.least) / range, 0.0, 1.0) : 0.5;
        return m_place.bottom() - part * m_place.height();
    }
    std::optional<QRgb> marked(size_t index) const;
    void paintLine();
    void paintColumns();

    QPainter& m_painter;
    const SparklineShown& m_shown;
    const SparklineGroup& m_group;
    QRectF m_place;
    double m_scale;
    double m_lowest = std::numeric_limits<double>::infinity(), m_highest = -m_lowest; ///< of the chart's own values
};

/// The colour of a point that is set off from the others, the first of these that holds.
std::optional<QRgb> SparklinePainter::marked(size_t index) const
{
    const auto& points = m_shown.points;
    const double value = *points[index].value;
    if (m_group.showsFirst && index == 0)
        return m_group.firstColor;
    if (m_group.showsLast && index + 1 == points.size())
        return m_group.lastColor;
    if (m_group.showsHigh && value >= m_highest)
        return m_group.highColor;
    if (m_group.showsLow && value <= m_lowest)
        return m_group.lowColor;
    if (m_group.showsNegative && value < 0)
        return m_group.negativeColor;
    if (m_group.showsMarkers && m_group.kind == SparklineGroup::Kind::Line)
        return m_group.markerColor;
    return {};
}

void SparklinePainter::paintLine()
{
    const auto at = [&](const SparklineShown::Point& point) {
        return QPointF(m_place.left() + point.place * m_place.width(), y(*point.value));
    };
    QPainterPath path;
    bool joined = false;
    for (const SparklineShown::Point& point : m_shown.points) {
        if (!point.value) {
            joined = joined && m_group.empty == SparklineGroup::Empty::Joined;
            continue;
        }
        joined ? path.lineTo(at(point)) : path.moveTo(at(point));
        joined = true;
    }
    const double width = m_group.lineWidth * 96 / 72 * m_scale;
    m_painter.strokePath(path, QPen(QColor::fromRgb(m_group.color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double side = 2 * width + m_scale;
    for (size_t i = 0; i < m_shown.points.size(); ++i)
        if (const auto color = m_shown.points[i].value ? marked(i) : std::nullopt) {
            QRectF dot(0, 0, side, side);
            dot.moveCenter(at(m_shown.points[i]));
            m_painter.fillRect(dot, QColor::fromRgb(*color));
        }
}

void SparklinePainter::paintColumns()
{
    const size_t count = m_shown.points.size();
    const double slot = m_place.width() / static_cast<double>(count);
    const bool winLoss = m_group.kind == SparklineGroup::Kind::WinLoss;
    const double base = winLoss ? 0 : std::clamp(0.0, m_shown.least, std::max(m_shown.least, m_shown.most));
    for (size_t i = 0; i < count; ++i) {
        const SparklineShown::Point& point = m_shown.points[i];
        if (!point.value || *point.value == 0)
            continue;
        const double left = m_place.left() + point.place * (m_place.width() - slot);
        double top = std::min(y(*point.value), y(base)), bottom = std::max(y(*point.value), y(base));
        // The least value would have no height where the scale begins with it.
        const double least = m_place.height() / 10;
        if (bottom - top < least)
            *point.value < 0 ? bottom = top + least : top = bottom - least;
        m_painter.fillRect(QRectF(left + slot * 0.15, top, slot * 0.7, bottom - top),
                           QColor::fromRgb(marked(i).value_or(m_group.color)));
    }
}

} // namespace

void SparklineLayer::paint(QPainter& painter) const
{
    if (m_scene.sheet.sheet().sparklines.empty())
        return;
    const VisibleGrid& grid = m_scene.grid;
    const double scale = grid.scale();
    for (int r = 0; r < grid.rowCount(); ++r)
        for (int c = 0; c < grid.columnCount(); ++c) {
            const int row = grid.row(r), column = grid.column(c);
            const SparklineShown* shown = m_scene.sheet.sparkline(row, column);
            if (!shown)
                continue;
            const CellArea* merged = m_scene.sheet.mergedAt(row, column);
            const QRect cell = merged ? grid.rect(*merged) : grid.cellRect(r, c);
            const double inset = margin * scale;
            const QRectF place = QRectF(cell).adjusted(inset, inset, -inset, -inset);
            if (place.isEmpty())
                continue;
            painter.save();
            painter.setClipRect(cell, Qt::IntersectClip);
            painter.setRenderHint(QPainter::Antialiasing);
            SparklinePainter(painter, *shown, place, scale).paint();
            painter.restore();
        }
}

} // namespace lumivane::engine
