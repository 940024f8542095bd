#include "engine/draw/GridLineLayer.h"

#include "engine/draw/TextLayer.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {

bool GridLineLayer::hasFill(int row, int column) const
{
    return m_scene.sheet.fill(std::min(row, maxRow), std::min(column, maxColumn)).pattern != Pattern::None;
}

void GridLineLayer::paint(QPainter& painter) const
{
    const SheetView& view = m_scene.sheet.sheet().view;
    if (!view.gridLines || !m_scene.measures.gridLines)
        return;
    const VisibleGrid& grid = m_scene.grid;
    const QColor color = QColor::fromRgb(view.gridColor);
    const int width = std::max(1, static_cast<int>(std::lround(grid.scale())));
    for (int r = 0; r < grid.rowCount(); ++r)
        for (int c = 0; c < grid.columnCount(); ++c) {
            const int row = grid.row(r), column = grid.column(c);
            if (hasFill(row, column))
                continue;
            const CellArea* merged = m_scene.sheet.mergedAt(row, column);
            const QRect place = grid.cellRect(r, c);
            const int right = place.x() + place.width(), bottom = place.y() + place.height();
            const bool joinedRight = merged && column < merged->lastColumn;
            const bool joinedBelow = merged && row < merged->lastRow;
            if (!joinedRight && !m_texts.runsOver(row, column) && !hasFill(row, column + 1))
                painter.fillRect(right - width, place.y(), width, place.height(), color);
            if (!joinedBelow && !hasFill(row + 1, column))
                painter.fillRect(place.x(), bottom - width, place.width(), width, color);
        }
}

} // namespace lumivane::engine
