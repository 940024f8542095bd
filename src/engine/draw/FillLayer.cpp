#include "engine/draw/FillLayer.h"

#include "engine/draw/CellFills.h"

#include <QPainter>

namespace lumivane::engine {

void FillLayer::paint(QPainter& painter) const
{
    const VisibleGrid& grid = m_scene.grid;
    for (int rowIndex = 0; rowIndex < grid.rowCount(); ++rowIndex)
        for (int columnIndex = 0; columnIndex < grid.columnCount(); ++columnIndex) {
            int row = grid.row(rowIndex), column = grid.column(columnIndex);
            const CellArea* merged = m_scene.sheet.mergedAt(row, column);
            if (merged) {
                row = merged->firstRow;
                column = merged->firstColumn;
            }
            const FillStyle fill = m_scene.sheet.fill(row, column);
            const QRect place = grid.cellRect(rowIndex, columnIndex);
            if (merged && fill.gradient) { // runs through the whole area
                painter.save();
                painter.setClipRect(place, Qt::IntersectClip);
                paintFill(painter, grid.rect(*merged), fill, grid.scale());
                painter.restore();
            } else {
                paintFill(painter, place, m_scene.measures.evenPatterns ? evened(fill) : fill, grid.scale());
            }
        }
}

} // namespace lumivane::engine
