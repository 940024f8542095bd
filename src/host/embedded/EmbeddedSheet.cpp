#include "host/embedded/EmbeddedSheet.h"

#include "engine/show/CellSearch.h"
#include "platform/DayZero.h"
#include "platform/FindOrder.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>

namespace lumivane {

using namespace engine;

using namespace Qt::StringLiterals;

namespace {

/// Larger pictures are refused: 256 MB of memory for one picture serve nobody.
constexpr qint64 maxPicturePixels = 64ll << 20;
constexpr double maxPictureScale = 8;

constexpr double emuPerPixel = 9525;

/// A stretch of the sheet in pixels, along rows or along columns.
struct Stretch
{
    double begin = 0, end = 0;
    bool overlaps(const Stretch& other) const { return std::max(begin, other.begin) < std::min(end, other.end); }
};

/// Whether any of a drawing shows on an area. Whatever of it lies on hidden rows or columns is not seen on the screen
/// either, unless its size is its own.
bool showsOn(const SheetGeometry& geometry, const DrawingContent& drawing, const CellArea& area)
{
    const auto stretch = [](double firstStart, qint64 from, double lastStart, qint64 to, qint64 size) {
        const double begin = firstStart + static_cast<double>(from) / emuPerPixel;
        return Stretch{begin, size >= 0 ? begin + static_cast<double>(size) / emuPerPixel
                                        : lastStart + static_cast<double>(to) / emuPerPixel};
    };
    const auto above = [&](int row) { return static_cast<double>(geometry.rowsPixels(1, row - 1)); };
    const auto before = [&](int column) { return static_cast<double>(geometry.columnsPixels(1, column - 1)); };
    const CellArea& cells = drawing.anchor;
    const Stretch down =
        stretch(above(cells.firstRow), drawing.startY, above(cells.lastRow), drawing.endY, drawing.height);
    const Stretch across =
        stretch(before(cells.firstColumn), drawing.startX, before(cells.lastColumn), drawing.endX, drawing.width);
    return !drawing.hidden && down.overlaps({above(area.firstRow), above(area.lastRow + 1)}) &&
           across.overlaps({before(area.firstColumn), before(area.lastColumn + 1)});
}

qint64 countUncomputed(const SheetContent& sheet, const CellArea& area)
{
    qint64 count = 0;
    for (size_t i = 0; i < sheet.rows.size() && sheet.rows[i].row <= area.lastRow; ++i) {
        if (sheet.rows[i].row < area.firstRow)
            continue;
        const auto [begin, end] = sheet.rowCells(i);
        count += std::count_if(begin, end, [&](const Cell& cell) {
            return cell.kind == CellKind::Uncomputed && area.contains(sheet.rows[i].row, cell.column);
        });
    }
    return count;
}

} // namespace

EmbeddedSheet::EmbeddedSheet(std::shared_ptr<WorkbookFile> file, int index, const QString& workbookName,
                             Metrics metrics, std::function<void()> onActivate)
    : m_file(std::move(file)), m_workbook(m_file->content()), m_index(index), m_workbookName(workbookName),
      m_metrics(metrics), m_onActivate(std::move(onActivate))
{
}

QString EmbeddedSheet::Name() const
{
    return m_workbook->sheets[static_cast<size_t>(m_index)].name;
}

bool EmbeddedSheet::Visible() const
{
    return m_workbook->sheets[static_cast<size_t>(m_index)].visible;
}

const SheetContent& EmbeddedSheet::content()
{
    if (!m_content)
        m_content = m_file->sheet(m_index);
    return *m_content;
}

const ShownTexts& EmbeddedSheet::texts()
{
    if (!m_texts) {
        content();
        m_texts = std::make_unique<ShownTexts>(m_workbook, m_content);
    }
    return *m_texts;
}

const SheetPainter& EmbeddedSheet::painter()
{
    if (!m_painter) {
        content();
        m_painter = std::make_unique<SheetPainter>(m_workbook, m_content, &m_overlay, m_metrics);
    }
    return *m_painter;
}

QString EmbeddedSheet::place() const
{
    return u"sheet \"%1\" of workbook \"%2\""_s.arg(Name(), m_workbookName);
}

CellArea EmbeddedSheet::usedArea()
{
    return content().used.value_or(CellArea::cell(1, 1));
}

std::optional<CellArea> EmbeddedSheet::contentArea()
{
    return CellSearch(*m_workbook, content(), texts()).contentArea();
}

QString EmbeddedSheet::shownText(int row, int column)
{
    const Cell* cell = content().find(row, column);
    return cell ? texts().shown(*cell) : QString();
}

QString EmbeddedSheet::valueText(int row, int column)
{
    const Cell* cell = content().find(row, column);
    return cell ? texts().plain(*cell) : QString();
}

double EmbeddedSheet::rowHeight(int row)
{
    return painter().geometry().rowHeightPoints(row);
}

void EmbeddedSheet::setRowHeight(int firstRow, int lastRow, double points)
{
    for (int row = firstRow; row <= lastRow; ++row)
        m_overlay.rowHeights[row] = points;
    m_painter.reset();
}

double EmbeddedSheet::columnWidth(int column)
{
    return painter().geometry().columnWidthCharacters(column);
}

void EmbeddedSheet::setColumnWidth(int firstColumn, int lastColumn, double characters)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        m_overlay.columnWidths[column] = characters;
    m_painter.reset();
}

void EmbeddedSheet::setInteriorColor(int row, int column, QRgb color)
{
    m_overlay.colors[{row, column}] = color;
    m_painter.reset();
}

std::optional<CellArea> EmbeddedSheet::Find(const CellArea& area, const FindQuestion& question)
{
    return CellSearch(*m_workbook, content(), texts()).find(area, question);
}

QStringList EmbeddedSheet::ShapeNames()
{
    QStringList names;
    for (const DrawingContent& drawing : content().drawings)
        names.append(drawing.name);
    return names;
}

QStringList EmbeddedSheet::undrawn(const CellArea& area)
{
    QStringList missing;
    if (!content().problem.isEmpty())
        missing.append(content().problem);
    for (const DrawingContent& drawing : content().drawings) {
        if (showsOn(painter().geometry(), drawing, area))
            missing.append(u"the %1 \"%2\""_s.arg(drawing.kind, drawing.name));
    }
    for (const UnreadLook& look : content().unread) {
        if (intersect(look.area, area) && !missing.contains(look.what))
            missing.append(look.what);
    }
    if (const qint64 formulas = countUncomputed(content(), area))
        missing.append(formulas == 1 ? u"the result of a formula, which the file does not store"_s
                                     : u"the results of %1 formulas, which the file does not store"_s.arg(formulas));
    return missing;
}

QImage EmbeddedSheet::CopyPicture(const CellArea& area, double scale)
{
    if (!(scale > 0 && scale <= maxPictureScale))
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"A picture cannot be taken at a scale of %1."_s.arg(scale));
    const QSize size = painter().size(area, scale);
    if (size.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"Nothing of the range %1 on %2 is visible: all its rows or columns are hidden."_s.arg(
                               area.relative(), place()));
    if (qint64(size.width()) * size.height() > maxPicturePixels)
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The range %1 on %2 is too large for a picture (%3 x %4 pixels). Select a smaller one."_s
                               .arg(area.relative(), place())
                               .arg(size.width())
                               .arg(size.height()));
    return painter().image(area, scale);
}

QImage EmbeddedSheet::CopyShapePicture(const QString& name, double)
{
    for (const DrawingContent& drawing : content().drawings) {
        if (drawing.name.compare(name, Qt::CaseInsensitive) == 0)
            throw RuntimeError(RuntimeError::ApplicationDefined,
                               u"The %1 \"%2\" on %3 cannot be drawn yet."_s.arg(drawing.kind, name, place()));
    }
    throw RuntimeError(RuntimeError::ApplicationDefined,
                       u"There is no chart or shape \"%1\" on %2."_s.arg(name, place()));
}

} // namespace lumivane
