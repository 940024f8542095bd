#include "engine/draw/FillLayer.h"

#include "engine/draw/CellFills.h"

namespace lumivane::engine {

void FillLayer::paint(QPainter& painter) const
{
    const VisibleGrid& grid = m_scene.grid;
    for (int rowIndex = 0; rowIndex < grid.rowCount(); ++rowIndex)
        for (int columnIndex = 0; columnIndex < grid.columnCount(); ++columnIndex) {
            int row = grid.row(rowIndex), column = grid.column(columnIndex);
            if (const CellArea* merged = m_scene.sheet.mergedAt(row, column)) {
                row = merged->firstRow;
                column = merged->firstColumn;
            }
            const FillStyle fill = m_scene.sheet.fill(row, column);
            paintFill(painter, grid.cellRect(rowIndex, columnIndex),
                      m_scene.measures.evenPatterns ? evened(fill) : fill, grid.scale());
        }
}

} // namespace lumivane::engine
