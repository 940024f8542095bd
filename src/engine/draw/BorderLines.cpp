#include "engine/draw/BorderLines.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

/// Which line shows where two meet; more is stronger.
int lineRank(LineStyle style)
{
    switch (style) {
    case LineStyle::None:
        return 0;
    case LineStyle::Hair:
        return 1;
    case LineStyle::Dotted:
        return 2;
    case LineStyle::DashDotDot:
        return 3;
    case LineStyle::DashDot:
        return 4;
    case LineStyle::Dashed:
        return 5;
    case LineStyle::Thin:
        return 6;
    case LineStyle::MediumDashDotDot:
        return 7;
    case LineStyle::SlantDashDot:
        return 8;
    case LineStyle::MediumDashDot:
        return 9;
    case LineStyle::MediumDashed:
        return 10;
    case LineStyle::Medium:
        return 11;
    case LineStyle::Thick:
        return 12;
    case LineStyle::Double:
        return 13;
    }
    return 0;
}

/// Lengths of dashes and gaps in turn, pixels at scale 1; empty for an unbroken line.
std::vector<int> dashes(LineStyle style)
{
    switch (style) {
    case LineStyle::Hair:
        return {1, 1};
    case LineStyle::Dotted:
        return {2, 2};
    case LineStyle::Dashed:
        return {3, 1};
    case LineStyle::MediumDashed:
        return {9, 3};
    case LineStyle::DashDot:
    case LineStyle::MediumDashDot:
        return {9, 3, 3, 3};
    case LineStyle::DashDotDot:
    case LineStyle::MediumDashDotDot:
        return {9, 3, 3, 3, 3, 3};
    case LineStyle::SlantDashDot:
        return {11, 1, 5, 1};
    default:
        return {};
    }
}

int scaled(int pixels, double scale)
{
    return std::max(1, static_cast<int>(std::lround(pixels * scale)));
}

} // namespace

const BorderLine& strongerLine(const BorderLine& a, const BorderLine& b)
{
    const int rankA = lineRank(a.style), rankB = lineRank(b.style);
    if (rankA != rankB)
        return rankA > rankB ? a : b;
    return qGray(b.color) < qGray(a.color) ? b : a;
}

int lineWidth(LineStyle style)
{
    switch (style) {
    case LineStyle::None:
        return 0;
    case LineStyle::Medium:
    case LineStyle::MediumDashed:
    case LineStyle::MediumDashDot:
    case LineStyle::MediumDashDotDot:
    case LineStyle::SlantDashDot:
        return 2;
    case LineStyle::Thick:
    case LineStyle::Double:
        return 3;
    default:
        return 1;
    }
}

void paintEdge(QPainter& painter, const BorderLine& line, Qt::Orientation orientation, int from, int to, int edge,
               int limit, double scale)
{
    const int width = scaled(lineWidth(line.style), scale);
    // A thin line takes the last pixel in front of the edge; thicker ones straddle it.
    const int start = std::clamp(edge - width + width / 3, 0, std::max(limit - width, 0));
    const QColor color = QColor::fromRgb(line.color);
    const auto stroke = [&](int first, int last, int across, int thickness) {
        if (orientation == Qt::Horizontal)
            painter.fillRect(first, across, last - first, thickness, color);
        else
            painter.fillRect(across, first, thickness, last - first, color);
    };
    if (line.style == LineStyle::Double) {
        const int single = scaled(1, scale);
        stroke(from, to, start, single);
        stroke(from, to, start + width - single, single);
        return;
    }
    const std::vector<int> pattern = dashes(line.style);
    if (pattern.empty()) {
        stroke(from, to, start, width);
        return;
    }
    size_t part = 0;
    for (int at = from; at < to; ++part) {
        const int next = at + scaled(pattern[part % pattern.size()], scale);
        if (part % 2 == 0)
            stroke(at, std::min(next, to), start, width);
        at = next;
    }
}

void paintDiagonals(QPainter& painter, const QRect& place, const BorderStyle& border, double scale)
{
    if (border.diagonal.style == LineStyle::None || place.isEmpty())
        return;
    QPen pen(QColor::fromRgb(border.diagonal.color), scaled(lineWidth(border.diagonal.style), scale));
    const std::vector<int> pattern = dashes(border.diagonal.style);
    if (!pattern.empty()) {
        QList<qreal> lengths; // in pen widths
        for (const int length : pattern)
            lengths.append(length * scale / pen.widthF());
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern(lengths);
    }
    painter.setPen(pen);
    if (border.diagonalDown)
        painter.drawLine(place.topLeft(), place.bottomRight());
    if (border.diagonalUp)
        painter.drawLine(place.bottomLeft(), place.topRight());
}

} // namespace lumivane::engine
