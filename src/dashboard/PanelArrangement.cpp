#include "dashboard/PanelArrangement.h"

#include <cmath>

namespace lumivane {

namespace {

/// The part of a length that piece `index` of `count` takes, without gaps from rounding: begin and end.
std::pair<int, int> tilePiece(int length, int count, int index)
{
    return {length * index / count, length * (index + 1) / count};
}

/// Windows in lines: `lines` lines along the first direction, filled so that the last lines hold one window more.
QVector<QRect> tileLines(const QRect& area, int count, bool linesAreColumns)
{
    QVector<QRect> places;
    if (count < 1)
        return places;
    const int lines = qMax(1, static_cast<int>(std::sqrt(count)));
    const int across = linesAreColumns ? area.width() : area.height();
    const int along = linesAreColumns ? area.height() : area.width();
    for (int line = 0; line < lines; ++line) {
        const int inLine = count / lines + (line >= lines - count % lines ? 1 : 0);
        const auto [lineBegin, lineEnd] = tilePiece(across, lines, line);
        for (int i = 0; i < inLine; ++i) {
            const auto [begin, end] = tilePiece(along, inLine, i);
            const QRect place = linesAreColumns ? QRect(lineBegin, begin, lineEnd - lineBegin, end - begin)
                                                : QRect(begin, lineBegin, end - begin, lineEnd - lineBegin);
            places.append(place.translated(area.topLeft()));
        }
    }
    return places;
}

} // namespace

QVector<QRect> tileHorizontally(const QRect& area, int count)
{
    return tileLines(area, count, true);
}

QVector<QRect> tileVertically(const QRect& area, int count)
{
    return tileLines(area, count, false);
}

QVector<QPoint> cascade(const QRect& area, int step, int count)
{
    QVector<QPoint> corners;
    // The lower half stays free, so that the last window of a column can be seen as well.
    const int inColumn = qMax(1, area.height() / 2 / step);
    for (int i = 0; i < count; ++i) {
        const int row = i % inColumn, column = i / inColumn;
        corners.append(area.topLeft() + QPoint((row + column * 2) * step, row * step));
    }
    return corners;
}

QVector<QRect> arrangeIcons(const QRect& area, const QSize& icon, int count)
{
    QVector<QRect> places;
    const int inRow = qMax(1, area.width() / qMax(1, icon.width()));
    for (int i = 0; i < count; ++i)
        places.append(QRect(area.left() + i % inRow * icon.width(), area.bottom() + 1 - (i / inRow + 1) * icon.height(),
                            icon.width(), icon.height()));
    return places;
}

} // namespace lumivane
