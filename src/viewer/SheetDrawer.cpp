#include "viewer/SheetDrawer.h"

#include "engine/draw/DrawingLayer.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPainterPath>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

namespace {
constexpr double smallestHeaderShare = 0.65;
}

QRect SheetLayout::toView(const QRect& cells) const
{
    const int x = mirrored ? size.width() - headerWidth - cells.x() - cells.width() : cells.x() + headerWidth;
    return {x, cells.y() + headerHeight, cells.width(), cells.height()};
}

QPoint SheetLayout::toCells(const QPoint& view) const
{
    const int x = mirrored ? size.width() - headerWidth - 1 - view.x() : view.x() - headerWidth;
    return {x, view.y() - headerHeight};
}

QRect SheetLayout::cornerRect() const
{
    return {mirrored ? size.width() - headerWidth : 0, 0, headerWidth, headerHeight};
}

bool SheetLayout::inRowHeader(const QPoint& view) const
{
    return mirrored ? view.x() >= size.width() - headerWidth : view.x() < headerWidth;
}

SheetDrawer::SheetDrawer(const OpenSheet& sheet, SheetTiles& tiles, const SheetLayout& layout,
                         const ViewerColors& colors, const QFont& headerFont, double deviceScale)
    : m_sheet(sheet), m_tiles(tiles), m_layout(layout), m_colors(colors), m_headerFont(headerFont),
      m_deviceScale(deviceScale)
{
    // Smaller with small cells, but never too small to read.
    const double pixels = headerFont.pointSizeF() > 0 ? headerFont.pointSizeF() * 96 / 72 : headerFont.pixelSize();
    const double share = std::clamp(sheet.zoom() / 100.0, smallestHeaderShare, 1.0);
    m_headerFont.setPixelSize(std::max(1, qRound(pixels * share * deviceScale)));
}

bool SheetDrawer::draw(QPainter& painter, int millisecondsForTiles, const DrawingPicture& picture)
{
    painter.fillRect(QRect(QPoint(), m_layout.size), m_colors.ground);
    QElapsedTimer spent;
    spent.start();
    const auto hasTime = [&] { return spent.elapsed() < millisecondsForTiles; };
    bool complete = true;
    for (int pane = 0; pane < m_sheet.panes().count(); ++pane) {
        const QRect clip = m_layout.toView(m_sheet.paneRect(pane));
        if (clip.isEmpty())
            continue;
        painter.save();
        painter.setClipRect(clip);
        complete = drawPane(painter, pane, hasTime) && complete;
        drawFilterButtons(painter, pane);
        drawDrawings(painter, pane, picture);
        drawSelection(painter, pane);
        painter.restore();
    }
    drawPaneLines(painter);
    drawHeaders(painter);
    return complete;
}

bool SheetDrawer::drawPane(QPainter& painter, int pane, const std::function<bool()>& hasTime)
{
    bool complete = true;
    const CellArea visible = m_sheet.panes().visible(pane);
    const SheetAxis& rows = m_sheet.rowAxis();
    const SheetAxis& columns = m_sheet.columnAxis();
    for (int r = rows.blockOf(visible.firstRow); r <= rows.blockOf(visible.lastRow); ++r) {
        for (int c = columns.blockOf(visible.firstColumn); c <= columns.blockOf(visible.lastColumn); ++c) {
            const SheetTiles::Place tile{r, c};
            const QRect place = m_layout.toView(m_sheet.rectIn(pane, SheetTiles::cells(m_sheet, tile)));
            if (place.isEmpty())
                continue;
            const QPixmap* pixmap = m_tiles.find(tile);
            if (!pixmap && hasTime()) {
                pixmap = m_tiles.draw(m_sheet, tile);
                if (!pixmap) {
                    painter.save();
                    painter.setClipRect(place, Qt::IntersectClip);
                    painter.translate(place.topLeft());
                    SheetTiles::drawDirectly(painter, m_sheet, tile);
                    painter.restore();
                    continue;
                }
            }
            if (pixmap)
                painter.drawPixmap(place.topLeft(), *pixmap);
            else
                drawBlank(painter, place);
            complete = complete && pixmap;
        }
    }
    return complete;
}

void SheetDrawer::drawBlank(QPainter& painter, const QRect& place) const
{
    painter.fillRect(place, Qt::white);
}

void SheetDrawer::drawFilterButtons(QPainter& painter, int pane) const
{
    const CellArea visible = m_sheet.panes().visible(pane);
    const std::vector<FilterButton>& buttons = m_sheet.sheet().filterButtons();
    auto button = std::lower_bound(buttons.begin(), buttons.end(), visible.firstRow,
                                   [](const FilterButton& one, int row) { return one.cell.row < row; });
    for (; button != buttons.end() && button->cell.row <= visible.lastRow; ++button) {
        const auto [row, column] = button->cell;
        if (visible.contains(row, column))
            drawFilterButton(painter, m_layout.toView(m_sheet.rectIn(pane, CellArea::cell(row, column))),
                             button->inUse);
    }
}

/// At the end of the cell, above its lower edge: an arrow, or a funnel where the filter leaves rows out.
void SheetDrawer::drawFilterButton(QPainter& painter, const QRect& cell, bool inUse) const
{
    constexpr double usual = 17, least = 7; // pixels at scale 1, of the screen
    const int side = std::min({qRound(usual * m_sheet.scale()), cell.width() - 1, cell.height() - 1});
    if (side < least)
        return;
    const QRectF place(m_layout.mirrored ? cell.left() : cell.right() - side, cell.bottom() - side, side, side);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = place.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(QColor(0xab, 0xab, 0xab), 1));
    painter.setBrush(QColor(0xfc, 0xfc, 0xfc));
    painter.drawRoundedRect(frame, side / 9.0, side / 9.0);
    const auto at = [&](double x, double y) {
        return QPointF(place.left() + x * place.width(), place.top() + y * place.height());
    };
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x44, 0x4b, 0x53));
    if (inUse)
        painter.drawPolygon(
            QPolygonF({at(0.22, 0.25), at(0.78, 0.25), at(0.57, 0.52), at(0.57, 0.78), at(0.43, 0.7), at(0.43, 0.52)}));
    else
        painter.drawPolygon(QPolygonF({at(0.27, 0.4), at(0.73, 0.4), at(0.5, 0.66)}));
    painter.restore();
}

void SheetDrawer::drawDrawings(QPainter& painter, int pane, const DrawingPicture& picture)
{
    const auto& drawings = m_sheet.sheet().content().drawings;
    const QRect clip = m_layout.toView(m_sheet.paneRect(pane));
    for (size_t i = 0; i < drawings.size(); ++i) {
        if (drawings[i].hidden)
            continue;
        const QRect place = m_layout.toView(m_sheet.drawingRect(pane, static_cast<int>(i)));
        if (!place.intersects(clip.adjusted(-pen(8), -pen(8), pen(8), pen(8))))
            continue;
        // All others are drawn with the cells.
        if (isUndrawn(drawings[i])) {
            const QImage image = picture ? picture(static_cast<int>(i)) : QImage();
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            if (image.isNull())
                drawPlaceholder(painter, place, drawings[i].name, drawings[i].kind);
            else
                painter.drawImage(place, image);
        }
        if (m_sheet.selectedDrawing() == static_cast<int>(i))
            drawSelectedDrawing(painter, place);
    }
}

void SheetDrawer::drawPlaceholder(QPainter& painter, const QRect& place, const QString& name, DrawingKind kind) const
{
    painter.save();
    painter.setClipRect(place.adjusted(0, 0, 1, 1), Qt::IntersectClip);
    painter.fillRect(place, QColor(0xf4, 0xf7, 0xfa, 235));
    painter.setPen(QPen(QColor(0xa9, 0xb7, 0xc4), pen(1), Qt::DashLine));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    painter.setPen(QColor(0x4a, 0x5a, 0x6a));
    painter.setFont(m_headerFont);
    QString what = kindWord(kind);
    what[0] = what[0].toUpper();
    painter.drawText(place.adjusted(pen(6), pen(4), -pen(6), -pen(4)), Qt::AlignCenter | Qt::TextWordWrap,
                     u"%1 \"%2\"\nis not drawn here"_s.arg(what, name));
    painter.restore();
}

void SheetDrawer::drawSelectedDrawing(QPainter& painter, const QRect& place) const
{
    painter.setPen(QPen(m_colors.accent, pen(2)));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place);
    const int half = pen(3.5);
    const QPoint middle = place.center();
    for (const int x : {place.left(), middle.x(), place.right()}) {
        for (const int y : {place.top(), middle.y(), place.bottom()}) {
            if (QPoint(x, y) == middle)
                continue;
            const QRect handle(x - half, y - half, 2 * half, 2 * half);
            painter.fillRect(handle, Qt::white);
            painter.setPen(QPen(m_colors.accent, pen(1)));
            painter.drawRect(handle);
        }
    }
}

void SheetDrawer::drawSelection(QPainter& painter, int pane)
{
    if (m_sheet.selectedDrawing() >= 0)
        return;
    const SheetSelection& selection = m_sheet.selection();
    const QRect clip = m_layout.toView(m_sheet.paneRect(pane));
    const CellArea activeCells = m_sheet.sheet().mergedAround(selection.activeCell());
    const QRect active = m_layout.toView(m_sheet.rectIn(pane, activeCells));
    QPainterPath covered;
    covered.setFillRule(Qt::WindingFill);
    for (const CellArea& area : selection.areas()) {
        const QRect place = m_layout.toView(m_sheet.rectIn(pane, area)).intersected(clip.adjusted(-9, -9, 9, 9));
        if (!place.isEmpty() && !(area == activeCells && selection.areas().size() == 1))
            covered.addRect(place);
    }
    QPainterPath activePath;
    activePath.addRect(active.intersected(clip.adjusted(-9, -9, 9, 9)));
    painter.fillPath(covered.subtracted(activePath), m_colors.selection);

    painter.setBrush(Qt::NoBrush);
    const bool several = selection.areas().size() > 1;
    for (const CellArea& area : selection.areas()) {
        const QRect place = m_layout.toView(m_sheet.rectIn(pane, area));
        if (place.isEmpty() || !place.intersects(clip))
            continue;
        // Lines far outside of the window would be clipped anyway, but not by every paint engine in time.
        const QRect frame = place.intersected(clip.adjusted(-9, -9, 9, 9));
        const int width = pen(several ? 1 : 2);
        painter.setPen(QPen(m_colors.accent, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(frame.adjusted(-1, -1, width % 2 == 0 ? 0 : -1, width % 2 == 0 ? 0 : -1));
    }
    if (several && !active.isEmpty()) {
        painter.setPen(QPen(m_colors.accent, pen(2), Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(active);
    }
}

void SheetDrawer::drawPaneLines(QPainter& painter)
{
    const SheetPanes& panes = m_sheet.panes();
    const QSize cells = m_layout.cellsSize();
    const auto thickness = [this](const AxisBands& bands) {
        return bands.division() == AxisBands::Division::Split ? pen(3) : pen(1);
    };
    if (panes.rows.bandCount() == 2) {
        const int y = panes.rows.bandStart(1);
        painter.fillRect(m_layout.toView(QRect(0, y - 1, cells.width(), thickness(panes.rows))), m_colors.paneLine);
    }
    if (panes.columns.bandCount() == 2) {
        const int x = panes.columns.bandStart(1);
        painter.fillRect(m_layout.toView(QRect(x - 1, 0, thickness(panes.columns), cells.height())), m_colors.paneLine);
    }
}

void SheetDrawer::drawHeaders(QPainter& painter)
{
    painter.setFont(m_headerFont);
    const QRect rowBar(m_layout.cornerRect().x(), 0, m_layout.headerWidth, m_layout.size.height());
    painter.fillRect(rowBar, m_colors.header);
    painter.fillRect(QRect(0, 0, m_layout.size.width(), m_layout.headerHeight), m_colors.header);
    drawRowHeaders(painter);
    drawColumnHeaders(painter);
    const QRect cells = m_layout.toView(QRect(QPoint(), m_layout.cellsSize()));
    const int inner = m_layout.mirrored ? cells.right() + 1 : cells.left() - 1;
    painter.fillRect(QRect(inner, 0, 1, m_layout.size.height()), m_colors.headerLine);
    painter.fillRect(QRect(0, cells.top() - 1, m_layout.size.width(), 1), m_colors.headerLine);
    drawCorner(painter);
}

void SheetDrawer::drawRowHeaders(QPainter& painter)
{
    const AxisBands& bands = m_sheet.panes().rows;
    const SheetSelection& selection = m_sheet.selection();
    const bool cellsSelected = m_sheet.selectedDrawing() < 0;
    const int x = m_layout.cornerRect().x();
    // Where rows are lower than their numbers, only some are numbered.
    const int needed = m_headerFont.pixelSize() + pen(1);
    for (int band = 0; band < bands.bandCount(); ++band) {
        painter.save();
        painter.setClipRect(
            QRect(x, m_layout.headerHeight + bands.bandStart(band), m_layout.headerWidth, bands.bandLength(band)));
        const auto [first, last] = bands.visible(band);
        for (int row = first; row <= last; ++row) {
            const QRect place(x, m_layout.headerHeight + bands.placeOf(band, row), m_layout.headerWidth,
                              m_sheet.rowAxis().size(row));
            if (place.isEmpty())
                continue;
            const int every = (needed + place.height() - 1) / place.height();
            const QString number = row % every == 0 ? QString::number(row) : QString();
            drawHeaderCell(painter, place, number, cellsSelected && selection.rowTouched(row),
                           cellsSelected && selection.rowWhole(row), true);
        }
        painter.restore();
    }
}

void SheetDrawer::drawColumnHeaders(QPainter& painter)
{
    const AxisBands& bands = m_sheet.panes().columns;
    const SheetSelection& selection = m_sheet.selection();
    const bool cellsSelected = m_sheet.selectedDrawing() < 0;
    const int top = -m_layout.headerHeight;
    for (int band = 0; band < bands.bandCount(); ++band) {
        painter.save();
        painter.setClipRect(
            m_layout.toView(QRect(bands.bandStart(band), top, bands.bandLength(band), m_layout.headerHeight)));
        const auto [first, last] = bands.visible(band);
        for (int column = first; column <= last; ++column) {
            const QRect place = m_layout.toView(
                QRect(bands.placeOf(band, column), top, m_sheet.columnAxis().size(column), m_layout.headerHeight));
            if (!place.isEmpty())
                drawHeaderCell(painter, place, columnLetters(column), cellsSelected && selection.columnTouched(column),
                               cellsSelected && selection.columnWhole(column), false);
        }
        painter.restore();
    }
}

void SheetDrawer::drawHeaderCell(QPainter& painter, const QRect& place, const QString& text, bool touched, bool whole,
                                 bool isRow) const
{
    if (touched)
        painter.fillRect(place, whole ? m_colors.headerWhole : m_colors.headerTouched);
    if (isRow)
        painter.fillRect(QRect(place.left(), place.bottom(), place.width(), 1), m_colors.headerLine);
    else
        painter.fillRect(QRect(m_layout.mirrored ? place.left() : place.right(), place.top(), 1, place.height()),
                         m_colors.headerLine);
    if (touched) {
        const int line = pen(2);
        if (isRow)
            painter.fillRect(m_layout.mirrored ? QRect(place.left(), place.top(), line, place.height())
                                               : QRect(place.right() + 1 - line, place.top(), line, place.height()),
                             m_colors.accent);
        else
            painter.fillRect(QRect(place.left(), place.bottom() + 1 - line, place.width(), line), m_colors.accent);
    }
    painter.setPen(touched ? m_colors.headerTextStrong : m_colors.headerText);
    painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, text);
}

/// A small triangle shows that a click selects everything.
void SheetDrawer::drawCorner(QPainter& painter) const
{
    const QRect corner = m_layout.cornerRect();
    painter.fillRect(corner.adjusted(m_layout.mirrored ? 1 : 0, 0, m_layout.mirrored ? 0 : -1, -1), m_colors.header);
    const int side = std::min(corner.width(), corner.height()) * 2 / 5;
    const int x = m_layout.mirrored ? corner.left() + pen(4) : corner.right() - pen(4);
    const int inward = m_layout.mirrored ? 1 : -1;
    const int y = corner.bottom() - pen(4);
    QPainterPath triangle(QPointF(x, y));
    triangle.lineTo(x + inward * side, y);
    triangle.lineTo(x, y - side);
    triangle.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(triangle, m_colors.headerLine);
    painter.restore();
}

} // namespace lumivane
