#pragma once

#include "engine/draw/SheetGeometry.h"

#include <QImage>

class QPainter;

namespace lumivane::engine {

/// Draws cells of one sheet: fills, gridlines as the view says, borders with the right one winning, texts that run into
/// empty neighbours, "####", wrapping, rotation, indent, shrink to fit.
class SheetPainter
{
public:
    /// No picture is wider or higher than this.
    static constexpr int maxSide = 32767;

    explicit SheetPainter(std::shared_ptr<const ShownSheet> sheet, Metrics metrics = Metrics::File);

    /// Size of the area in pixels at a scale; hidden rows and columns take none. May be larger than a picture can be.
    QSize size(const CellArea& area, double scale = 1) const;
    /// Draws the area with its top left corner at the painter's origin. Nothing is drawn outside its size.
    void paint(QPainter& painter, const CellArea& area, double scale = 1) const;
    /// A null image where nothing of the area is visible, a side would be longer than maxSide or memory is short.
    QImage image(const CellArea& area, double scale = 1) const;

    /// One of the sheet's drawings alone, on white. A null image where it has no extent or is too large.
    QImage drawingImage(const DrawingContent& drawing, double scale = 1) const;

    const SheetGeometry& geometry() const { return m_geometry; }

private:
    static bool drawable(const QSize& whole);
    void paint(QPainter& painter, const CellArea& area, double scale, const QSize& whole) const;

    std::shared_ptr<const ShownSheet> m_sheet;
    const Metrics m_metrics;
    SheetGeometry m_geometry;
};

} // namespace lumivane::engine
