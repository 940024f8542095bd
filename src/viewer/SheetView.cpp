#include "viewer/SheetView.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

// Showing the sheet. What the user does with mouse and keyboard stands in SheetViewInput.cpp.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {
// A frame has 16 ms; what drawing blocks takes beyond this is left to the next one.
constexpr int tileMillisecondsOfFrame = 7;
constexpr int millisecondsUntilAhead = 40;
} // namespace

SheetView::SheetView(QWidget* parent) : QAbstractScrollArea(parent), m_colors(std::make_unique<ViewerColors>(palette()))
{
    setObjectName(u"sheetView"_s);
    setAccessibleName(u"Cells"_s);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setCornerWidget(new QWidget); // in place of the frame that the style draws there
    setAttribute(Qt::WA_InputMethodEnabled, false);

    m_scroll.setInterval(10);
    connect(&m_scroll, &QTimer::timeout, this, &SheetView::scrollStep);
    m_dragScroll.setInterval(30);
    connect(&m_dragScroll, &QTimer::timeout, this, &SheetView::scrollWhileDragging);
    m_ahead.setSingleShot(true);
    connect(&m_ahead, &QTimer::timeout, this, &SheetView::prepareAhead);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int value) { scrollFromBar(Qt::Vertical, value); });
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int value) { scrollFromBar(Qt::Horizontal, value); });
}

SheetView::~SheetView() = default;

void SheetView::setSheet(std::shared_ptr<OpenSheet> sheet, DrawingPicture picture)
{
    stopMoving();
    m_sheet = std::move(sheet);
    m_picture = std::move(picture);
    m_tiles.clear();
    layOut();
    if (m_sheet)
        tellSelection();
    viewport()->update();
}

void SheetView::stopMoving()
{
    m_drag = Drag::None;
    m_dragScroll.stop();
    m_scroll.stop();
    m_scrollLeft = {};
    m_ahead.stop();
}

int SheetView::headerWidthFor(int lastRow) const
{
    const int digits = std::max(3, static_cast<int>(QString::number(lastRow).size()));
    return fontMetrics().horizontalAdvance(u'0') * digits + 14;
}

/// Fits the sheet to the viewport. Everything inside is counted in pixels of the screen, so that lines stay sharp at
/// any scale.
void SheetView::layOut()
{
    if (!m_sheet)
        return;
    const double scale = viewport()->devicePixelRatioF();
    m_layout.size = {static_cast<int>(std::lround(viewport()->width() * scale)),
                     static_cast<int>(std::lround(viewport()->height() * scale))};
    m_layout.mirrored = m_sheet->sheet().content().view.rightToLeft;
    const bool headings = m_sheet->sheet().content().view.headings;
    m_layout.headerHeight = headings ? static_cast<int>(std::lround((fontMetrics().height() + 7) * scale)) : 0;
    m_sheet->setDeviceScale(scale);
    // How wide the row headers are depends on the rows seen, and these on the height alone.
    m_sheet->setSize(m_layout.cellsSize());
    const int lastRow = m_sheet->panes().visible(m_sheet->panes().count() - 1).lastRow;
    m_layout.headerWidth = headings ? static_cast<int>(std::lround(headerWidthFor(lastRow) * scale)) : 0;
    m_sheet->setSize(m_layout.cellsSize());
    if (m_tilesScale != m_sheet->scale())
        m_tiles.clear();
    m_tilesScale = m_sheet->scale();

    const int top = m_sheet->panes().rows.topOf(m_sheet->panes().rows.freeBand());
    if (top != m_lastTop)
        m_direction = top > m_lastTop ? 1 : -1;
    m_lastTop = top;
    updateScrollBars();
}

/// The bars reach over the cells in use and always one window further than what is seen now, so that one can scroll on.
void SheetView::updateScrollBars()
{
    const bool dragged = verticalScrollBar()->isSliderDown() || horizontalScrollBar()->isSliderDown();
    m_settingBars = true;
    const auto set = [&](QScrollBar& bar, const AxisBands& bands, const SheetAxis& axis, int lastUsed, int usual) {
        const int band = bands.freeBand();
        const int length = bands.bandLength(band);
        const qint64 start = axis.start(bands.firstOf(band));
        const qint64 used = axis.start(std::max(lastUsed, bands.firstOf(band)) + 1) - start;
        const qint64 position = bands.position(band);
        const qint64 most = std::min<qint64>(std::max(used - length / 2, position), axis.length() - start - length);
        if (!dragged)
            bar.setRange(0, static_cast<int>(std::clamp<qint64>(most + length / 4, 0, 2'000'000'000)));
        bar.setPageStep(std::max(1, length));
        bar.setSingleStep(std::max(1, static_cast<int>(usual * m_sheet->scale())));
        bar.setValue(static_cast<int>(std::clamp<qint64>(position, 0, bar.maximum())));
    };
    const CellArea& used = m_sheet->sheet().used();
    set(*verticalScrollBar(), m_sheet->panes().rows, m_sheet->rowAxis(), used.lastRow, 20);
    set(*horizontalScrollBar(), m_sheet->panes().columns, m_sheet->columnAxis(), used.lastColumn, 64);
    horizontalScrollBar()->setInvertedAppearance(m_layout.mirrored != isRightToLeft());
    m_settingBars = false;
}

void SheetView::scrollFromBar(Qt::Orientation orientation, int value)
{
    if (m_settingBars || !m_sheet)
        return;
    m_scrollLeft = {};
    AxisBands& bands = orientation == Qt::Vertical ? m_sheet->panes().rows : m_sheet->panes().columns;
    bands.setPosition(bands.freeBand(), value);
    layOut();
    viewport()->update();
}

/// Scrolling is done by scrollFromBar; the viewport has nothing to move by itself.
void SheetView::scrollContentsBy(int, int) {}

void SheetView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    if (!m_sheet) {
        painter.fillRect(viewport()->rect(), m_colors->ground);
        return;
    }
    const double scale = viewport()->devicePixelRatioF();
    painter.scale(1 / scale, 1 / scale);
    SheetDrawer drawer(*m_sheet, m_tiles, m_layout, *m_colors, font(), scale);
    if (drawer.draw(painter, tileMillisecondsOfFrame, m_picture))
        m_ahead.start(millisecondsUntilAhead);
    else
        QTimer::singleShot(0, viewport(), qOverload<>(&QWidget::update));
}

/// Draws one of the blocks that scrolling on will show next, while nothing else is to do.
void SheetView::prepareAhead()
{
    if (!m_sheet)
        return;
    const CellArea seen = m_sheet->panes().visible(m_sheet->panes().count() - 1);
    const SheetAxis& rows = m_sheet->rowAxis();
    const SheetAxis& columns = m_sheet->columnAxis();
    const int edge = rows.blockOf(m_direction > 0 ? seen.lastRow : seen.firstRow);
    for (int step = 1; step <= 3; ++step) {
        const int row = edge + step * m_direction;
        if (row < 0 || row > rows.blockOf(rows.count()))
            return;
        for (int column = columns.blockOf(seen.firstColumn); column <= columns.blockOf(seen.lastColumn); ++column) {
            const SheetTiles::Place place{row, column};
            if (m_tiles.find(place) || SheetTiles::tooLarge(*m_sheet, place) || !m_tiles.draw(*m_sheet, place))
                continue;
            m_ahead.start(0);
            return;
        }
    }
}

void SheetView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    layOut();
}

void SheetView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        m_colors = std::make_unique<ViewerColors>(palette());
        layOut();
        viewport()->update();
    }
}

void SheetView::setZoom(int percent)
{
    if (!m_sheet || percent == m_sheet->zoom())
        return;
    stopMoving();
    m_sheet->setZoom(percent);
    layOut();
    viewport()->update();
    Q_EMIT zoomChanged(m_sheet->zoom());
}

void SheetView::tellSelection()
{
    const CellSpot active = m_sheet->selection().activeCell();
    setAccessibleDescription(m_sheet->selectedDrawing() >= 0
                                 ? m_sheet->selectedDrawingText()
                                 : QString(CellArea::cell(active.row, active.column).relative() + u": "_s +
                                           m_sheet->sheet().shownText(active.row, active.column)));
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
    Q_EMIT selectionChanged();
}

void SheetView::selectAreas(const std::vector<CellArea>& areas)
{
    if (!m_sheet || areas.empty())
        return;
    m_sheet->selectDrawing(-1);
    m_sheet->selection().select(areas);
    const CellArea& last = m_sheet->selection().lastArea();
    // Its end comes into view too where that leaves its beginning there.
    m_sheet->reveal({last.lastRow, last.lastColumn});
    m_sheet->reveal(m_sheet->selection().activeCell());
    layOut();
    viewport()->update();
    tellSelection();
}

void SheetView::selectRegionOrAll()
{
    if (!m_sheet)
        return;
    m_sheet->selectRegionOrAll();
    viewport()->update();
    tellSelection();
}

void SheetView::freezeAt(const CellSpot& cell)
{
    if (!m_sheet)
        return;
    m_sheet->freezeAt(cell);
    layOut();
    viewport()->update();
    Q_EMIT panesChanged();
}

void SheetView::unfreeze()
{
    if (!m_sheet)
        return;
    m_sheet->unfreeze();
    layOut();
    viewport()->update();
    Q_EMIT panesChanged();
}

QRect SheetView::cellRect(const CellSpot& cell) const
{
    if (!m_sheet)
        return {};
    const SheetPanes& panes = m_sheet->panes();
    int pane = panes.count() - 1;
    for (int i = 0; i < panes.count(); ++i) {
        if (panes.visible(i).contains(cell.row, cell.column))
            pane = i;
    }
    const QRect place = m_layout.toView(m_sheet->rectIn(pane, CellArea::cell(cell.row, cell.column)));
    const double scale = viewport()->devicePixelRatioF();
    return QRectF(place.x() / scale, place.y() / scale, place.width() / scale, place.height() / scale).toRect();
}

} // namespace lumivane
