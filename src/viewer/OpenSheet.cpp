#include "viewer/OpenSheet.h"

#include "engine/draw/DrawingLayer.h"
#include "engine/draw/DrawingPlace.h"

#include <QStringList>
#include <algorithm>
#include <bit>
#include <cmath>

namespace lumivane {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerScreenPixel = 15;
// A stored split counts from the window's corner, headers of the usual size included.
constexpr int splitHeaderHeight = 20;
constexpr int splitHeaderWidth = 26;
constexpr int blockPixels = 512;

/// As many entries to a block as make it about blockPixels long, so that blocks of cells are pictures of a handy size.
int blockLengthFor(int usualSize, double scale)
{
    const double entries = blockPixels / std::max(1.0, usualSize * scale);
    return static_cast<int>(std::bit_floor(static_cast<unsigned>(std::clamp(entries, 1.0, 64.0))));
}

SheetAxis rowsOf(const ViewedSheet& sheet)
{
    const SheetGeometry& geometry = sheet.geometry();
    return SheetAxis(maxRow, std::max(1, geometry.rowPixels(maxRow)),
                     [&geometry](int first, int last, double scale) { return geometry.rowEdges(first, last, scale); });
}

SheetAxis columnsOf(const ViewedSheet& sheet)
{
    const SheetGeometry& geometry = sheet.geometry();
    return SheetAxis(
        maxColumn, std::max(1, geometry.columnPixels(maxColumn)),
        [&geometry](int first, int last, double scale) { return geometry.columnEdges(first, last, scale); });
}

} // namespace

OpenSheet::OpenSheet(std::shared_ptr<const ViewedSheet> sheet)
    : m_sheet(std::move(sheet)), m_rowAxis(rowsOf(*m_sheet)),
      m_columnAxis(columnsOf(*m_sheet)), m_panes{AxisBands(m_rowAxis), AxisBands(m_columnAxis)}, m_selection(*m_sheet)
{
    const int stored = m_sheet->content().view.zoom;
    m_zoom = std::clamp(stored > 0 ? stored : 100, smallestZoom, largestZoom);
    applyScale();
    applyStoredPanes();
    applyStoredSelection();
}

void OpenSheet::applyStoredPanes()
{
    const SheetView& view = m_sheet->content().view;
    const int topRow = std::clamp(view.topRow, 1, maxRow);
    const int leftColumn = std::clamp(view.leftColumn, 1, maxColumn);
    const bool byRows = view.panes != PaneKind::None && view.ySplit > 0;
    const bool byColumns = view.panes != PaneKind::None && view.xSplit > 0;
    m_panes.rows.scrollTo(0, topRow);
    m_panes.columns.scrollTo(0, leftColumn);
    if (view.panes == PaneKind::Frozen) {
        if (byRows)
            m_panes.rows.freeze(topRow, topRow + static_cast<int>(std::min<double>(view.ySplit, maxRow)) - 1);
        if (byColumns)
            m_panes.columns.freeze(leftColumn,
                                   leftColumn + static_cast<int>(std::min<double>(view.xSplit, maxColumn)) - 1);
    } else if (view.panes == PaneKind::Split) {
        const auto pixels = [&](double twips, int header) {
            const double place = std::clamp(twips / twipsPerScreenPixel - header, 1.0, 10000.0);
            return static_cast<int>(std::lround(place * scale()));
        };
        if (byRows)
            m_panes.rows.split(pixels(view.ySplit, splitHeaderHeight));
        if (byColumns)
            m_panes.columns.split(pixels(view.xSplit, splitHeaderWidth));
    }
    if (byRows)
        m_panes.rows.scrollTo(1, std::clamp(view.paneTopRow, 1, maxRow));
    if (byColumns)
        m_panes.columns.scrollTo(1, std::clamp(view.paneLeftColumn, 1, maxColumn));
}

void OpenSheet::applyStoredSelection()
{
    std::vector<CellArea> areas;
    const QStringList stored = m_sheet->content().view.selection.split(u' ', Qt::SkipEmptyParts);
    for (const QString& text : stored.first(std::min<qsizetype>(stored.size(), 256))) {
        if (const auto area = CellArea::parse(text))
            areas.push_back(*area);
    }
    if (areas.empty())
        return;
    m_selection.select(areas);
    const auto active = CellArea::parse(m_sheet->content().view.activeCell);
    if (active && areas.size() == 1 && areas.front().contains(active->firstRow, active->firstColumn))
        m_selection.selectArea(areas.front(), {active->firstRow, active->firstColumn});
}

void OpenSheet::applyScale()
{
    const SheetGeometry& geometry = m_sheet->geometry();
    m_rowAxis.setScale(scale(), blockLengthFor(geometry.rowPixels(maxRow), scale()));
    m_columnAxis.setScale(scale(), blockLengthFor(geometry.columnPixels(maxColumn), scale()));
    m_panes.rows.axisChanged();
    m_panes.columns.axisChanged();
}

void OpenSheet::setZoom(int percent)
{
    const int wanted = std::clamp(percent, smallestZoom, largestZoom);
    if (wanted == m_zoom)
        return;
    m_zoom = wanted;
    applyScale();
}

void OpenSheet::setDeviceScale(double scale)
{
    if (scale == m_deviceScale)
        return;
    m_deviceScale = scale;
    applyScale();
}

void OpenSheet::setSize(const QSize& size)
{
    m_panes.rows.setLength(size.height());
    m_panes.columns.setLength(size.width());
}

bool OpenSheet::isFrozen() const
{
    return m_panes.rows.division() != AxisBands::Division::None ||
           m_panes.columns.division() != AxisBands::Division::None;
}

void OpenSheet::freezeAt(const CellSpot& cell)
{
    unfreeze();
    const auto freeze = [](AxisBands& bands, int index) {
        if (index > bands.topOf(0) && index <= bands.visible(0).last)
            bands.freeze(bands.topOf(0), index - 1);
    };
    freeze(m_panes.rows, cell.row);
    freeze(m_panes.columns, cell.column);
}

void OpenSheet::unfreeze()
{
    m_panes.rows.unite();
    m_panes.columns.unite();
}

void OpenSheet::takeOver(const OpenSheet& before)
{
    m_zoom = before.m_zoom;
    m_deviceScale = before.m_deviceScale;
    applyScale();
    const auto take = [](AxisBands& bands, const AxisBands& old, double scale) {
        bands.unite();
        if (old.division() == AxisBands::Division::Frozen)
            bands.freeze(old.frozen().first, old.frozen().last);
        else if (old.division() == AxisBands::Division::Split)
            bands.split(old.bandLength(0));
        for (int band = 0; band < old.bandCount(); ++band)
            bands.scrollTo(band, old.topOf(band));
    };
    take(m_panes.rows, before.m_panes.rows, scale());
    take(m_panes.columns, before.m_panes.columns, scale());
    const CellSpot active = before.m_selection.activeCell();
    m_selection.select(before.m_selection.areas());
    if (before.m_selection.areas().size() == 1)
        m_selection.selectArea(before.m_selection.areas().front(), active);
    if (before.m_selectedDrawing >= 0)
        m_selectedDrawing = drawingNamed(before.drawing(before.m_selectedDrawing).name);
}

QString OpenSheet::selectedDrawingText() const
{
    if (m_selectedDrawing < 0)
        return {};
    const DrawingContent& selected = drawing(m_selectedDrawing);
    return u"the %1 \"%2\""_s.arg(kindWord(selected.kind), selected.name);
}

int OpenSheet::drawingNamed(const QString& name) const
{
    const auto& drawings = m_sheet->content().drawings;
    const auto found = std::find_if(drawings.begin(), drawings.end(), [&](const DrawingContent& one) {
        return !one.hidden && one.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == drawings.end() ? -1 : static_cast<int>(found - drawings.begin());
}

CellSpot OpenSheet::cellAt(const QPoint& place) const
{
    return {m_panes.rows.indexAt(place.y()), m_panes.columns.indexAt(place.x())};
}

QRect OpenSheet::rectIn(int pane, const CellArea& area) const
{
    const int rowBand = m_panes.rowBand(pane), columnBand = m_panes.columnBand(pane);
    const int top = m_panes.rows.placeOf(rowBand, area.firstRow);
    const int left = m_panes.columns.placeOf(columnBand, area.firstColumn);
    const int bottom = m_panes.rows.placeOf(rowBand, area.lastRow + 1);
    const int right = m_panes.columns.placeOf(columnBand, area.lastColumn + 1);
    return {left, top, right - left, bottom - top};
}

QRect OpenSheet::paneRect(int pane) const
{
    const int rowBand = m_panes.rowBand(pane), columnBand = m_panes.columnBand(pane);
    return {m_panes.columns.bandStart(columnBand), m_panes.rows.bandStart(rowBand),
            m_panes.columns.bandLength(columnBand), m_panes.rows.bandLength(rowBand)};
}

int OpenSheet::paneAt(const QPoint& place) const
{
    return m_panes.rows.bandAt(place.y()) * m_panes.columns.bandCount() + m_panes.columns.bandAt(place.x());
}

QRect OpenSheet::drawingRect(int pane, int drawing) const
{
    const DrawingContent& content = this->drawing(drawing);
    const QRect lastCell = rectIn(pane, CellArea::cell(content.anchor.lastRow, content.anchor.lastColumn));
    const QRect firstCell = rectIn(pane, CellArea::cell(content.anchor.firstRow, content.anchor.firstColumn));
    const auto columns = [](const QRect& cell) { return Stretch{double(cell.x()), double(cell.x() + cell.width())}; };
    const auto rows = [](const QRect& cell) { return Stretch{double(cell.y()), double(cell.y() + cell.height())}; };
    const Stretch across = drawingColumns(content, columns(firstCell), columns(lastCell), scale());
    const Stretch down = drawingRows(content, rows(firstCell), rows(lastCell), scale());
    const QPoint start(qRound(across.begin), qRound(down.begin)), end(qRound(across.end), qRound(down.end));
    return QRect(start, QSize(std::max(1, end.x() - start.x()), std::max(1, end.y() - start.y())));
}

int OpenSheet::drawingAt(const QPoint& place) const
{
    const int pane = paneAt(place);
    const auto& drawings = m_sheet->content().drawings;
    constexpr double reach = 4; // pixels of the window system
    for (size_t i = drawings.size(); i-- > 0;) {
        const QRectF rect = drawingRect(pane, static_cast<int>(i));
        QPointF point = place + QPointF(0.5, 0.5);
        // Places run to the left here, drawings never do.
        if (m_sheet->content().view.rightToLeft)
            point.setX(2 * rect.center().x() - point.x());
        if (isHit(drawings[i], rect, scale(), point, reach * m_deviceScale))
            return static_cast<int>(i);
    }
    return -1;
}

CellSpot OpenSheet::target(const CellSpot& from, Direction direction, Step step) const
{
    const int forward = direction == Direction::Right || direction == Direction::Down ? 1 : -1;
    const bool vertical = direction == Direction::Up || direction == Direction::Down;
    const AxisBands& rows = m_panes.rows;
    const AxisBands& columns = m_panes.columns;
    const int firstColumn = std::max(1, m_columnAxis.visibleFrom(columns.firstOf(columns.freeBand()), 1));
    switch (step) {
    case Step::Cell:
        return m_sheet->neighbour(from, direction);
    case Step::DataEdge:
        return m_sheet->dataEdge(from, direction);
    case Step::Page:
        if (vertical)
            return {rows.page(rows.freeBand(), from.row, forward), from.column};
        return {from.row, columns.page(columns.freeBand(), from.column, forward)};
    case Step::LineStart:
        return {from.row, firstColumn};
    case Step::SheetStart:
        return {std::max(1, m_rowAxis.visibleFrom(rows.firstOf(rows.freeBand()), 1)), firstColumn};
    case Step::SheetEnd:
        return m_sheet->lastFilled();
    }
    return from;
}

void OpenSheet::move(Direction direction, Step step, bool extend)
{
    m_selectedDrawing = -1;
    if (extend)
        m_selection.extendTo(target(m_selection.movingCorner(), direction, step));
    else
        m_selection.select(target(m_selection.activeCell(), direction, step));
    reveal(extend ? m_selection.movingCorner() : m_selection.activeCell());
}

void OpenSheet::reveal(const CellSpot& cell)
{
    m_panes.rows.reveal(m_panes.rows.freeBand(), cell.row);
    m_panes.columns.reveal(m_panes.columns.freeBand(), cell.column);
}

void OpenSheet::selectRegionOrAll()
{
    m_selectedDrawing = -1;
    const CellSpot active = m_selection.activeCell();
    const CellArea region = m_sheet->regionAround(active);
    const bool selected = m_selection.areas().size() == 1 && m_selection.lastArea() == m_sheet->widened(region);
    m_selection.selectArea(selected ? CellArea::wholeSheet() : region, active);
}

} // namespace lumivane
