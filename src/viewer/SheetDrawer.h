#pragma once

#include "viewer/SheetTiles.h"
#include "viewer/ViewerColors.h"

#include <QFont>
#include <QImage>
#include <functional>

namespace lumivane {

/// Where headers and cells lie in a sheet view, in pixels of the screen. On a sheet written from right to left the row
/// headers stand on the right and the cells run to the left.
struct SheetLayout
{
    QSize size;
    int headerWidth = 0;
    int headerHeight = 0;
    bool mirrored = false;

    QSize cellsSize() const { return {size.width() - headerWidth, size.height() - headerHeight}; }
    /// From places of the cells to those of the view, and back.
    QRect toView(const QRect& cells) const;
    QPoint toCells(const QPoint& view) const;
    QRect cornerRect() const;
    bool inRowHeader(const QPoint& view) const;
    bool inColumnHeader(const QPoint& view) const { return view.y() < headerHeight; }
};

/// The picture of a chart or another drawing by its index; null where it cannot be drawn.
using DrawingPicture = std::function<QImage(int drawing)>;

/// Draws one frame of a sheet view: cells by the same painter as the panels' pictures, then drawings, selection and
/// headers. Blocks of cells that are not drawn yet are drawn as long as the frame has time left and otherwise left
/// blank for the next one, so that scrolling never waits.
class SheetDrawer
{
public:
    SheetDrawer(const OpenSheet& sheet, SheetTiles& tiles, const SheetLayout& layout, const ViewerColors& colors,
                const QFont& headerFont, double deviceScale);

    /// Draws in pixels of the screen. True when all blocks are there.
    bool draw(QPainter& painter, int millisecondsForTiles, const DrawingPicture& picture);

private:
    bool drawPane(QPainter& painter, int pane, const std::function<bool()>& hasTime);
    void drawBlank(QPainter& painter, const QRect& place) const;
    void drawFilterButtons(QPainter& painter, int pane) const;
    void drawFilterButton(QPainter& painter, const QRect& cell, bool inUse) const;
    void drawDrawings(QPainter& painter, int pane, const DrawingPicture& picture);
    void drawPlaceholder(QPainter& painter, const QRect& place, const QString& name, engine::DrawingKind kind) const;
    void drawSelectedDrawing(QPainter& painter, const QRect& place) const;
    void drawSelection(QPainter& painter, int pane);
    void drawPaneLines(QPainter& painter);
    void drawHeaders(QPainter& painter);
    void drawRowHeaders(QPainter& painter);
    void drawColumnHeaders(QPainter& painter);
    void drawHeaderCell(QPainter& painter, const QRect& place, const QString& text, bool touched, bool whole,
                        bool isRow) const;
    void drawCorner(QPainter& painter) const;
    int pen(double pixels) const { return std::max(1, qRound(pixels * m_deviceScale)); }

    const OpenSheet& m_sheet;
    SheetTiles& m_tiles;
    const SheetLayout& m_layout;
    const ViewerColors& m_colors;
    QFont m_headerFont;
    double m_deviceScale;
};

} // namespace lumivane
