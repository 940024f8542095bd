#include "panel/PanelSnap.h"

#include <cstdlib>

namespace lumivane {

namespace {

/// A rectangle's extent in one direction; `end` is the first pixel behind it.
struct SnapSpan
{
    int begin = 0, end = 0;
    int length() const { return end - begin; }
};

SnapSpan across(const QRect& rect)
{
    return {rect.x(), rect.x() + rect.width()};
}

SnapSpan down(const QRect& rect)
{
    return {rect.y(), rect.y() + rect.height()};
}

/// How far it is from an edge to the nearest line; beyond `distance` where no line is near enough.
int wayToLine(int edge, const QVector<int>& lines, int distance)
{
    int way = distance + 1;
    for (const int line : lines) {
        if (std::abs(line - edge) < std::abs(way))
            way = line - edge;
    }
    return way;
}

SnapSpan snappedSpan(SnapSpan wanted, const SnapSpan& before, int smallest, const QVector<int>& lines, int distance)
{
    const bool beginMoved = wanted.begin != before.begin, endMoved = wanted.end != before.end;
    const int wayOfBegin = beginMoved ? wayToLine(wanted.begin, lines, distance) : distance + 1;
    const int wayOfEnd = endMoved ? wayToLine(wanted.end, lines, distance) : distance + 1;
    const int way = std::abs(wayOfEnd) < std::abs(wayOfBegin) ? wayOfEnd : wayOfBegin;
    if (std::abs(way) > distance)
        return wanted;

    if (wanted.length() == before.length())
        return {wanted.begin + way, wanted.end + way};
    SnapSpan sized = wanted;
    (beginMoved ? sized.begin : sized.end) += way;
    return sized.length() < smallest ? wanted : sized;
}

} // namespace

SnapLines snapLines(const QRect& area, const QVector<QRect>& neighbours)
{
    SnapLines lines;
    for (const QRect& rect : QVector<QRect>{area} + neighbours) {
        lines.vertical << across(rect).begin << across(rect).end;
        lines.horizontal << down(rect).begin << down(rect).end;
    }
    return lines;
}

QRect snapped(const QRect& wanted, const QRect& before, const QSize& smallest, const SnapLines& lines, int distance)
{
    const SnapSpan x = snappedSpan(across(wanted), across(before), smallest.width(), lines.vertical, distance);
    const SnapSpan y = snappedSpan(down(wanted), down(before), smallest.height(), lines.horizontal, distance);
    return {x.begin, y.begin, x.length(), y.length()};
}

} // namespace lumivane
