#pragma once

#include "host/embedded/drawing/SheetGeometry.h"

#include <QImage>
#include <QRect>

class QPainter;

namespace lumivane::embedded {

/// Draws cells of one sheet: fills, borders with the right one winning, gridlines as the view says, texts that run into
/// empty neighbours, "####", wrapping, rotation, indent, shrink to fit.
class SheetPainter
{
public:
    SheetPainter(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                 const SheetOverlay* overlay = nullptr, Metrics metrics = Metrics::File);

    /// Size of the area in pixels at a scale; hidden rows and columns take none.
    QSize size(const CellArea& area, double scale = 1) const;
    /// Draws the area with its top left corner at the painter's origin. Nothing is drawn outside its size.
    void paint(QPainter& painter, const CellArea& area, double scale = 1) const;
    QImage image(const CellArea& area, double scale = 1) const;

    const SheetGeometry& geometry() const { return m_geometry; }

private:
    std::shared_ptr<const WorkbookContent> m_workbook;
    std::shared_ptr<const SheetContent> m_sheet;
    const SheetOverlay* m_overlay;
    SheetGeometry m_geometry;
};

} // namespace lumivane::embedded
