#include "engine/draw/SheetPainter.h"

#include "engine/draw/CellFills.h"
#include "engine/draw/SheetBorders.h"
#include "engine/draw/SheetTexts.h"
#include "engine/show/SheetCells.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {

SheetPainter::SheetPainter(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                           const SheetOverlay* overlay, Metrics metrics)
    : m_sheet(sheet), m_overlay(overlay), m_metrics(metrics), m_geometry(workbook, sheet, overlay, metrics),
      m_cells(std::make_unique<SheetCells>(workbook, sheet, overlay))
{
}

SheetPainter::~SheetPainter() = default;

QSize SheetPainter::size(const CellArea& area, double scale) const
{
    const auto side = [&](qint64 pixels) {
        return static_cast<int>(std::min(std::round(double(pixels) * scale), 1e9));
    };
    return {side(m_geometry.columnsPixels(area.firstColumn, area.lastColumn)),
            side(m_geometry.rowsPixels(area.firstRow, area.lastRow))};
}

void SheetPainter::paint(QPainter& painter, const CellArea& area, double scale) const
{
    const QSize whole = size(area, scale);
    if (whole.isEmpty() || std::max(whole.width(), whole.height()) > maxSide)
        return;
    const VisibleGrid grid(m_geometry, area, scale, m_sheet->view.rightToLeft);
    painter.save();
    painter.setClipRect(QRect(QPoint(0, 0), whole), Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.fillRect(QRect(QPoint(0, 0), whole), Qt::white);

    SheetTexts texts(*m_cells, m_geometry, grid, Fonts::shared(scale, m_metrics), m_metrics);
    texts.place();
    paintFills(painter, grid);
    if (m_sheet->view.gridLines && m_metrics == Metrics::File)
        paintGridLines(painter, grid, texts);
    SheetBorders(*m_cells, grid).paint(painter);
    texts.paint(painter);
    painter.restore();
}

QImage SheetPainter::image(const CellArea& area, double scale) const
{
    const QSize whole = size(area, scale);
    if (whole.isEmpty() || std::max(whole.width(), whole.height()) > maxSide)
        return {};
    QImage image(whole, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    image.setDotsPerMeterX(3780); // 96 dots per inch: sizes of fonts are computed for them
    image.setDotsPerMeterY(3780);
    QPainter painter(&image);
    paint(painter, area, scale);
    return image;
}

bool SheetPainter::hasFill(int row, int column) const
{
    return m_cells->changedColor(row, column) || m_cells->fill(m_cells->style(row, column)).pattern != Pattern::None;
}

FillStyle SheetPainter::shownFill(int row, int column) const
{
    const FillStyle& fill = m_cells->fill(m_cells->style(row, column));
    return m_metrics == Metrics::Calc ? evened(fill) : fill;
}

void SheetPainter::paintFills(QPainter& painter, const VisibleGrid& grid) const
{
    for (int rowIndex = 0; rowIndex < grid.rowCount(); ++rowIndex)
        for (int columnIndex = 0; columnIndex < grid.columnCount(); ++columnIndex) {
            int row = grid.row(rowIndex), column = grid.column(columnIndex);
            const QRect place(QPoint(std::min(grid.x(columnIndex), grid.x(columnIndex + 1)), grid.y(rowIndex)),
                              QSize(std::abs(grid.x(columnIndex + 1) - grid.x(columnIndex)),
                                    grid.y(rowIndex + 1) - grid.y(rowIndex)));
            if (const CellArea* merged = m_cells->mergedAt(row, column)) {
                row = merged->firstRow;
                column = merged->firstColumn;
            }
            if (const auto color = m_cells->changedColor(row, column))
                painter.fillRect(place, QColor::fromRgb(*color));
            else
                paintFill(painter, place, shownFill(row, column), grid.scale());
        }
}

/// A gridline lies in the last pixel before an edge; fills of either cell, merged areas and texts running over it
/// leave it out.
void SheetPainter::paintGridLines(QPainter& painter, const VisibleGrid& grid, const SheetTexts& texts) const
{
    const QColor color = QColor::fromRgb(m_sheet->view.gridColor);
    const int width = std::max(1, static_cast<int>(std::lround(grid.scale())));
    for (int r = 0; r < grid.rowCount(); ++r)
        for (int c = 0; c < grid.columnCount(); ++c) {
            const int row = grid.row(r), column = grid.column(c);
            const bool filled = hasFill(row, column);
            const CellArea* merged = m_cells->mergedAt(row, column);
            const int left = std::min(grid.x(c), grid.x(c + 1)), right = std::max(grid.x(c), grid.x(c + 1));
            const int top = grid.y(r), bottom = grid.y(r + 1);
            const bool joinedRight = merged && column < merged->lastColumn;
            const bool joinedBelow = merged && row < merged->lastRow;
            if (!filled && !joinedRight && !texts.runsOver(row, column) &&
                !hasFill(row, std::min(column + 1, maxColumn)))
                painter.fillRect(right - width, top, width, bottom - top, color);
            if (!filled && !joinedBelow && !hasFill(std::min(row + 1, maxRow), column))
                painter.fillRect(left, bottom - width, right - left, width, color);
        }
}

} // namespace lumivane::engine
