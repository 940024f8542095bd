#include "viewer/SheetView.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int rowsPerNotch = 3;
constexpr int usualRowPixels = 20;
constexpr int dragScrollShare = 3; // of the distance from the edge, at each step

std::optional<Direction> arrowOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return Direction::Left;
    case Qt::Key_Right:
        return Direction::Right;
    case Qt::Key_Up:
        return Direction::Up;
    case Qt::Key_Down:
        return Direction::Down;
    default:
        return std::nullopt;
    }
}

} // namespace

QPoint SheetView::devicePoint(const QPointF& place) const
{
    const double scale = viewport()->devicePixelRatioF();
    return {static_cast<int>(std::floor(place.x() * scale)), static_cast<int>(std::floor(place.y() * scale))};
}

void SheetView::keyPressEvent(QKeyEvent* event)
{
    if (!m_sheet || (!moveByKey(*event) && !selectByKey(*event))) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    event->accept();
    m_scrollLeft = {};
    layOut();
    viewport()->update();
    tellSelection();
}

bool SheetView::moveByKey(const QKeyEvent& event)
{
    using Step = OpenSheet::Step;
    const bool control = event.modifiers() & Qt::ControlModifier;
    const bool extend = event.modifiers() & Qt::ShiftModifier;
    const bool alt = event.modifiers() & Qt::AltModifier;
    if (auto arrow = arrowOf(event.key()); arrow && !alt) {
        // The arrow points where it points on the screen.
        if (m_layout.mirrored && (*arrow == Direction::Left || *arrow == Direction::Right))
            arrow = *arrow == Direction::Left ? Direction::Right : Direction::Left;
        m_sheet->move(*arrow, control ? Step::DataEdge : Step::Cell, extend);
        return true;
    }
    switch (event.key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const bool down = event.key() == Qt::Key_PageDown;
        if (control) {
            Q_EMIT sheetStepRequested(down ? 1 : -1);
            return true;
        }
        if (alt)
            m_sheet->move(down ? Direction::Right : Direction::Left, Step::Page, extend);
        else
            m_sheet->move(down ? Direction::Down : Direction::Up, Step::Page, extend);
        return true;
    }
    case Qt::Key_Home:
        m_sheet->move(Direction::Left, control ? Step::SheetStart : Step::LineStart, extend);
        return true;
    case Qt::Key_End:
        m_sheet->move(Direction::Right, control ? Step::SheetEnd : Step::DataEdge, extend);
        return true;
    default:
        return false;
    }
}

bool SheetView::selectByKey(const QKeyEvent& event)
{
    const bool control = event.modifiers() & Qt::ControlModifier;
    const bool shift = event.modifiers() & Qt::ShiftModifier;
    SheetSelection& selection = m_sheet->selection();
    const CellSpot active = selection.activeCell();
    CellArea area = selection.lastArea();
    switch (event.key()) {
    case Qt::Key_Space:
        if (control) {
            area.firstRow = 1;
            area.lastRow = maxRow;
        }
        if (shift) {
            area.firstColumn = 1;
            area.lastColumn = maxColumn;
        }
        if (!control && !shift)
            return false;
        m_sheet->selectDrawing(-1);
        selection.selectArea(area, active);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        selection.step(event.key() == Qt::Key_Tab && !shift ? Direction::Right : Direction::Left);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        selection.step(shift ? Direction::Up : Direction::Down);
        break;
    case Qt::Key_Backspace: // back to the active cell after scrolling away from it
        break;
    case Qt::Key_Escape:
        if (m_sheet->selectedDrawing() < 0)
            return false;
        break;
    default:
        return false;
    }
    m_sheet->selectDrawing(-1);
    m_sheet->reveal(selection.activeCell());
    return true;
}

/// Tab moves from cell to cell; F6 and the mnemonics lead out of the view.
bool SheetView::focusNextPrevChild(bool)
{
    return false;
}

void SheetView::mousePressEvent(QMouseEvent* event)
{
    if (!m_sheet)
        return;
    const QPoint view = devicePoint(event->position());
    const QPoint place = m_layout.toCells(view);
    const bool right = event->button() == Qt::RightButton;
    if (event->button() != Qt::LeftButton && !right)
        return;
    m_scrollLeft = {};
    const bool inRows = m_layout.inRowHeader(view), inColumns = m_layout.inColumnHeader(view);
    if (inRows && inColumns) {
        m_sheet->selectDrawing(-1);
        m_sheet->selection().selectArea(CellArea::wholeSheet(), m_sheet->selection().activeCell());
    } else if (right && !inRows && !inColumns) {
        // The menu is about what is selected when the click falls into it.
        const CellSpot cell = m_sheet->cellAt(place);
        if (m_sheet->drawingAt(place) >= 0 || !m_sheet->selection().contains(cell.row, cell.column))
            pressCells(place, Qt::NoModifier);
    } else if (inRows || inColumns) {
        pressHeader(inRows ? Drag::Rows : Drag::Columns, place, event->modifiers());
    } else {
        pressCells(place, event->modifiers());
    }
    if (right)
        m_drag = Drag::None;
    viewport()->update();
    tellSelection();
}

void SheetView::pressCells(const QPoint& place, Qt::KeyboardModifiers modifiers)
{
    const int drawing = m_sheet->drawingAt(place);
    m_sheet->selectDrawing(drawing);
    if (drawing >= 0)
        return;
    SheetSelection& selection = m_sheet->selection();
    const CellSpot cell = m_sheet->cellAt(place);
    if (modifiers & Qt::ShiftModifier)
        selection.extendTo(cell);
    else if (modifiers & Qt::ControlModifier)
        selection.addArea(m_sheet->sheet().mergedAround(cell), cell);
    else
        selection.select(cell);
    m_drag = Drag::Cells;
    m_dragPlace = place;
}

void SheetView::pressHeader(Drag drag, const QPoint& place, Qt::KeyboardModifiers modifiers)
{
    m_sheet->selectDrawing(-1);
    SheetSelection& selection = m_sheet->selection();
    const CellSpot cell = m_sheet->cellAt(place);
    const CellArea seen = m_sheet->panes().visible(m_sheet->panes().count() - 1);
    const CellArea line =
        drag == Drag::Rows ? CellArea{cell.row, 1, cell.row, maxColumn} : CellArea{1, cell.column, maxRow, cell.column};
    // The active cell of a whole row or column is its first one that is seen.
    const CellSpot active =
        drag == Drag::Rows ? CellSpot{cell.row, seen.firstColumn} : CellSpot{seen.firstRow, cell.column};
    if (modifiers & Qt::ShiftModifier) {
        const CellSpot start = selection.activeCell();
        CellArea lines = line;
        lines.firstRow = std::min(line.firstRow, drag == Drag::Rows ? start.row : 1);
        lines.lastRow = std::max(line.lastRow, drag == Drag::Rows ? start.row : maxRow);
        lines.firstColumn = std::min(line.firstColumn, drag == Drag::Columns ? start.column : 1);
        lines.lastColumn = std::max(line.lastColumn, drag == Drag::Columns ? start.column : maxColumn);
        selection.selectArea(lines, start);
    } else if (modifiers & Qt::ControlModifier) {
        selection.addArea(line, active);
    } else {
        selection.selectArea(line, active);
    }
    m_drag = drag;
    m_dragPlace = place;
}

void SheetView::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint view = devicePoint(event->position());
    if (m_drag == Drag::None || !(event->buttons() & Qt::LeftButton)) {
        updateCursor(view);
        return;
    }
    dragTo(m_layout.toCells(view));
    const bool inside = QRect(QPoint(), m_layout.cellsSize()).contains(m_dragPlace);
    if (inside)
        m_dragScroll.stop();
    else if (!m_dragScroll.isActive())
        m_dragScroll.start();
}

void SheetView::updateCursor(const QPoint& view)
{
    if (!m_sheet)
        return;
    const bool inHeader = m_layout.inRowHeader(view) || m_layout.inColumnHeader(view);
    const bool overDrawing = !inHeader && m_sheet->drawingAt(m_layout.toCells(view)) >= 0;
    viewport()->setCursor(inHeader ? Qt::ArrowCursor : overDrawing ? Qt::PointingHandCursor : Qt::CrossCursor);
}

bool SheetView::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    showComment(*static_cast<QHelpEvent*>(event));
    return true;
}

/// The comment of the cell under the pointer, unless a drawing lies over it.
void SheetView::showComment(const QHelpEvent& event)
{
    constexpr qsizetype longest = 2000;
    const QPoint view = devicePoint(event.pos());
    QString text;
    CellSpot cell;
    if (m_sheet && !m_layout.inRowHeader(view) && !m_layout.inColumnHeader(view) &&
        m_sheet->drawingAt(m_layout.toCells(view)) < 0) {
        cell = m_sheet->cellAt(m_layout.toCells(view));
        text = m_sheet->sheet().commentText(cell).left(longest);
    }
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event.globalPos(), u"<p style='white-space:pre-wrap'>%1</p>"_s.arg(text.toHtmlEscaped()),
                           viewport(), cellRect(cell));
}

void SheetView::dragTo(const QPoint& place)
{
    m_dragPlace = place;
    const QSize cells = m_layout.cellsSize();
    const QPoint inside(std::clamp(place.x(), 0, std::max(0, cells.width() - 1)),
                        std::clamp(place.y(), 0, std::max(0, cells.height() - 1)));
    const CellSpot cell = m_sheet->cellAt(inside);
    SheetSelection& selection = m_sheet->selection();
    if (cell == selection.movingCorner())
        return;
    selection.extendTo(cell);
    viewport()->update();
    tellSelection();
}

void SheetView::scrollWhileDragging()
{
    const QSize cells = m_layout.cellsSize();
    const auto beyond = [](int place, int length) { return place < 0 ? place : std::max(0, place - length + 1); };
    SheetPanes& panes = m_sheet->panes();
    if (m_drag != Drag::Columns)
        panes.rows.scrollBy(panes.rows.freeBand(), beyond(m_dragPlace.y(), cells.height()) / dragScrollShare);
    if (m_drag != Drag::Rows)
        panes.columns.scrollBy(panes.columns.freeBand(), beyond(m_dragPlace.x(), cells.width()) / dragScrollShare);
    layOut();
    viewport()->update();
    dragTo(m_dragPlace);
}

void SheetView::mouseReleaseEvent(QMouseEvent*)
{
    m_drag = Drag::None;
    m_dragScroll.stop();
}

void SheetView::wheelEvent(QWheelEvent* event)
{
    if (!m_sheet)
        return;
    event->accept();
    if (event->modifiers() & Qt::ControlModifier) {
        zoomByWheel(*event);
        return;
    }
    const QPoint place = m_layout.toCells(devicePoint(event->position()));
    const SheetPanes& panes = m_sheet->panes();
    const auto band = [](const AxisBands& bands, int at) {
        return bands.division() == AxisBands::Division::Split ? bands.bandAt(at) : bands.freeBand();
    };
    const int rowBand = band(panes.rows, place.y()), columnBand = band(panes.columns, place.x());
    const double mirror = m_layout.mirrored ? -1 : 1;
    if (!event->pixelDelta().isNull()) {
        const QPointF pixels = QPointF(event->pixelDelta()) * viewport()->devicePixelRatioF();
        m_scrollLeft = {};
        m_sheet->panes().rows.scrollBy(rowBand, static_cast<qint64>(-pixels.y()));
        m_sheet->panes().columns.scrollBy(columnBand, static_cast<qint64>(-pixels.x() * mirror));
        layOut();
        viewport()->update();
        return;
    }
    QPointF notches = QPointF(event->angleDelta()) / 120.0;
    if (event->modifiers() & Qt::ShiftModifier)
        notches = QPointF(notches.y(), notches.x());
    const double pixels = rowsPerNotch * usualRowPixels * m_sheet->scale();
    scrollSmoothly({-notches.x() * pixels * mirror, -notches.y() * pixels}, rowBand, columnBand);
}

/// The cell under the pointer stays there.
void SheetView::zoomByWheel(const QWheelEvent& event)
{
    const int notches = event.angleDelta().y();
    if (notches == 0)
        return;
    const QPoint view = devicePoint(event.position());
    const CellSpot cell = m_sheet->cellAt(m_layout.toCells(view));
    const double factor = std::pow(1.1, notches / 120.0);
    int percent = static_cast<int>(std::lround(m_sheet->zoom() * factor / 5) * 5);
    if (percent == m_sheet->zoom())
        percent += notches > 0 ? 5 : -5;
    setZoom(percent);
    const QPoint place = m_layout.toCells(view);
    const auto hold = [](AxisBands& bands, int index, int at) {
        const int band = bands.bandAt(at);
        if (bands.division() == AxisBands::Division::None || band == bands.freeBand())
            bands.scrollBy(band, bands.placeOf(band, index) - at);
    };
    hold(m_sheet->panes().rows, cell.row, place.y());
    hold(m_sheet->panes().columns, cell.column, place.x());
    layOut();
    viewport()->update();
}

void SheetView::scrollSmoothly(const QPointF& pixels, int rowBand, int columnBand)
{
    m_scrollLeft += pixels;
    m_scrollRowBand = rowBand;
    m_scrollColumnBand = columnBand;
    if (!m_scroll.isActive()) {
        m_scroll.start();
        scrollStep();
    }
}

/// A third of the way at each step: quick at first, and gentle at the end.
void SheetView::scrollStep()
{
    const auto part = [](double left) {
        const double step = left / 3;
        return std::abs(step) < 2 ? std::copysign(std::min(2.0, std::abs(left)), left) : std::round(step);
    };
    const QPointF step(part(m_scrollLeft.x()), part(m_scrollLeft.y()));
    m_scrollLeft -= step;
    if (!m_sheet || (std::abs(m_scrollLeft.x()) < 1 && std::abs(m_scrollLeft.y()) < 1)) {
        m_scrollLeft = {};
        m_scroll.stop();
    }
    if (!m_sheet)
        return;
    m_sheet->panes().rows.scrollBy(m_scrollRowBand, std::llround(step.y()));
    m_sheet->panes().columns.scrollBy(m_scrollColumnBand, std::llround(step.x()));
    layOut();
    viewport()->update();
}

} // namespace lumivane
