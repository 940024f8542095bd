#pragma once

#include "engine/draw/SheetGeometry.h"

#include <QImage>

class QPainter;

namespace lumivane::engine {

class SheetCells;
class SheetTexts;
class VisibleGrid;

/// Draws cells of one sheet: fills, borders with the right one winning, gridlines as the view says, texts that run into
/// empty neighbours, "####", wrapping, rotation, indent, shrink to fit. With Metrics::Calc there are no gridlines, as
/// in Calc's own pictures of a range.
class SheetPainter
{
public:
    /// No picture is wider or higher than this.
    static constexpr int maxSide = 32767;

    SheetPainter(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                 const SheetOverlay* overlay = nullptr, Metrics metrics = Metrics::File);
    ~SheetPainter();

    /// Size of the area in pixels at a scale; hidden rows and columns take none. May be larger than a picture can be.
    QSize size(const CellArea& area, double scale = 1) const;
    /// Draws the area with its top left corner at the painter's origin. Nothing is drawn outside its size.
    void paint(QPainter& painter, const CellArea& area, double scale = 1) const;
    /// A null image where nothing of the area is visible or a side would be longer than maxSide.
    QImage image(const CellArea& area, double scale = 1) const;

    const SheetGeometry& geometry() const { return m_geometry; }

private:
    void paintFills(QPainter& painter, const VisibleGrid& grid) const;
    void paintGridLines(QPainter& painter, const VisibleGrid& grid, const SheetTexts& texts) const;
    FillStyle shownFill(int row, int column) const;
    bool hasFill(int row, int column) const;

    std::shared_ptr<const SheetContent> m_sheet;
    const SheetOverlay* m_overlay;
    Metrics m_metrics;
    SheetGeometry m_geometry;
    std::unique_ptr<SheetCells> m_cells;
};

} // namespace lumivane::engine
