#include "engine/draw/BorderLayer.h"

#include "engine/draw/BorderLines.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <functional>

namespace lumivane::engine {
namespace {

/// Calls `draw` for each stretch of equal lines among `count` edge pieces.
void eachStretch(int count, const std::function<BorderLine(int)>& line,
                 const std::function<void(const BorderLine&, int from, int to)>& draw)
{
    int start = 0;
    BorderLine current;
    for (int i = 0; i <= count; ++i) {
        const BorderLine next = i < count ? line(i) : BorderLine{};
        if (i > 0 && next == current)
            continue;
        if (current.style != LineStyle::None)
            draw(current, start, i);
        current = next;
        start = i;
    }
}

} // namespace

const BorderStyle& BorderLayer::borderOf(const CellPlace& place) const
{
    static const BorderStyle none;
    if (place.row < 1 || place.row > maxRow || place.column < 1 || place.column > maxColumn)
        return none;
    return m_scene.sheet.border(m_scene.sheet.style(place.row, place.column));
}

/// What shows at the edge between two cells, of which one may lie beyond the sheet. Nothing inside a merged area.
BorderLine BorderLayer::line(Qt::Orientation orientation, const CellPlace& before, const CellPlace& after) const
{
    const bool across = orientation == Qt::Horizontal;
    const BorderStyle& first = borderOf(before);
    const BorderStyle& second = borderOf(after);
    const BorderLine& shown = across ? strongerLine(first.bottom, second.top) : strongerLine(first.right, second.left);
    if (shown.style == LineStyle::None)
        return {};
    const CellArea* merged = m_scene.sheet.mergedAt(before.row, before.column);
    return merged && merged->contains(after.row, after.column) ? BorderLine{} : shown;
}

void BorderLayer::paintEdges(QPainter& painter, Qt::Orientation orientation) const
{
    const bool across = orientation == Qt::Horizontal;
    const int edges = across ? m_scene.grid.rowCount() : m_scene.grid.columnCount();
    const int pieces = across ? m_scene.grid.columnCount() : m_scene.grid.rowCount();
    const int limit = across ? m_scene.grid.size().height() : m_scene.grid.size().width();
    const int corner = across ? std::max(1, static_cast<int>(std::lround(m_scene.grid.scale()))) : 0;
    const auto number = [&](int index) { return across ? m_scene.grid.row(index) : m_scene.grid.column(index); };

    for (int edge = 0; edge <= edges; ++edge) {
        const int before = edge > 0 ? number(edge - 1) : number(0) - 1;
        const int after = edge < edges ? number(edge) : number(edges - 1) + 1;
        const auto lineAt = [&](int piece) {
            return across ? line(orientation, {before, m_scene.grid.column(piece)}, {after, m_scene.grid.column(piece)})
                          : line(orientation, {m_scene.grid.row(piece), before}, {m_scene.grid.row(piece), after});
        };
        eachStretch(pieces, lineAt, [&](const BorderLine& shown, int first, int last) {
            int from = across ? m_scene.grid.x(first) : m_scene.grid.y(first);
            int to = across ? m_scene.grid.x(last) : m_scene.grid.y(last);
            if (from > to)
                std::swap(from, to);
            // Thin lines lie in front of their edge, so the line across takes the corner in.
            paintEdge(painter, shown, orientation, from - corner, to,
                      across ? m_scene.grid.y(edge) : m_scene.grid.x(edge), limit, m_scene.grid.scale());
        });
    }
}

void BorderLayer::paintDiagonalLines(QPainter& painter) const
{
    for (int row = 0; row < m_scene.grid.rowCount(); ++row)
        for (int column = 0; column < m_scene.grid.columnCount(); ++column) {
            const CellPlace place{m_scene.grid.row(row), m_scene.grid.column(column)};
            const BorderStyle& border = borderOf(place);
            if (!border.diagonalUp && !border.diagonalDown)
                continue;
            const CellArea* merged = m_scene.sheet.mergedAt(place.row, place.column);
            const CellArea area = merged ? *merged : CellArea::cell(place.row, place.column);
            if (!merged || (merged->firstRow == place.row && merged->firstColumn == place.column))
                paintDiagonals(painter, m_scene.grid.rect(area), border, m_scene.grid.scale());
        }
}

void BorderLayer::paint(QPainter& painter) const
{
    paintEdges(painter, Qt::Vertical);
    paintEdges(painter, Qt::Horizontal);
    paintDiagonalLines(painter);
}

} // namespace lumivane::engine
