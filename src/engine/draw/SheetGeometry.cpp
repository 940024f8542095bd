#include "engine/draw/SheetGeometry.h"

#include "engine/draw/CellText.h"
#include "engine/draw/TextLines.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

constexpr double pointsPerPixel = 72.0 / 96.0;
constexpr double twipsPerPixel = 15;
constexpr double highestRow = 409.5; // points
constexpr int cellPadding = 2;       // pixels left and right of a text
constexpr int mostFittedCharacters = 100;

double fontLine(const FontStyle& style, const Measures& measures)
{
    return std::round(Fonts::shared(1, measures).face(style).lineHeight());
}

/// Calc's own, for files that name none.
const FontStyle& calcFont()
{
    static const FontStyle font = [] {
        FontStyle made;
        made.family = QStringLiteral("Liberation Sans");
        made.points = 10;
        return made;
    }();
    return font;
}

double characters(double pixels, int digit, int padding)
{
    const double width = pixels < digit + padding ? pixels / (digit + padding) : (pixels - padding) / digit;
    return std::round(width * 100) / 100;
}

} // namespace

SheetGeometry::SheetGeometry(std::shared_ptr<const ShownSheet> sheet, Metrics metrics)
    : m_shown(std::move(sheet)), m_workbook(m_shown->workbook()), m_sheet(m_shown->sheet()),
      m_overlay(m_shown->overlay()), m_measures(Measures::of(metrics))
{
    const CellStyle& usual = m_workbook.styles.cell(0);
    const FontStyle& stored = m_shown->font(usual);
    m_digit = std::max(1, static_cast<int>(std::lround(
                              widestDigit(stored, stored.points / pointsPerPixel, Measures::of(Metrics::File)))));
    // Calc measures with a font of as many pixels as the real one has twips, a trace small.
    m_digitTwips =
        std::max(1.0, std::floor(widestDigit(stored, stored.points * 20, Measures::of(Metrics::Calc)) + 0.4));
    m_defaultLine = fontLine(font(usual), m_measures);
    if (m_sheet.sizedByTexts)
        m_textWidths = std::make_shared<TextWidths>(*m_shown, font(usual), m_measures, mostFittedCharacters * m_digit);

    const int base = std::clamp(m_sheet.baseColumnWidth, 0, 255);
    if (m_sheet.defaultColumnWidth >= 0)
        m_defaultColumnPixels = filePixels(m_sheet.defaultColumnWidth);
    else if (m_measures.wholeDigits)
        m_defaultColumnPixels = std::ceil((base * m_digit + padding()) / 8.0) * 8;
    else if (m_sheet.defaultRowHeight < 0)
        m_defaultColumnPixels = 8.5 * m_digitTwips / twipsPerPixel; // the file says nothing of sizes at all
    else
        m_defaultColumnPixels = (base * m_digitTwips) / twipsPerPixel + 5;
}

const FontStyle& SheetGeometry::font(const CellStyle& style) const
{
    return m_sheet.sizedByTexts && m_measures.ownFont ? calcFont() : m_shown->font(style);
}

/// Width of a column for which the file stores none.
double SheetGeometry::fittedPixels(int column) const
{
    const double widest = m_textWidths ? m_textWidths->widest(column) : 0;
    if (widest <= 0)
        return m_defaultColumnPixels;
    const bool stored = m_measures.fittedPadding < 0;
    return stored ? std::ceil(widest) + padding() : widest * m_measures.fittedShare + m_measures.fittedPadding;
}

int SheetGeometry::padding() const
{
    return 2 * ((m_digit + 3) / 4) + 1;
}

double SheetGeometry::filePixels(double storedWidth) const
{
    const double width = std::clamp(storedWidth, 0.0, 256.0);
    if (!m_measures.wholeDigits)
        return std::round(width * m_digitTwips) / twipsPerPixel;
    return std::trunc((256 * width + std::trunc(128.0 / m_digit)) / 256 * m_digit);
}

bool SheetGeometry::rowHidden(int row) const
{
    if (const auto changed = m_overlay.rowHeights.find(row); changed != m_overlay.rowHeights.end())
        return changed->second <= 0;
    const RowContent* stored = m_sheet.findRow(row);
    return stored ? stored->hidden || stored->height == 0 : m_sheet.defaultRowsHidden;
}

bool SheetGeometry::columnHidden(int column) const
{
    if (const auto changed = m_overlay.columnWidths.find(column); changed != m_overlay.columnWidths.end())
        return changed->second <= 0;
    const ColumnContent* stored = m_sheet.findColumn(column);
    return stored && (stored->hidden || stored->width == 0);
}

double SheetGeometry::defaultRowPoints() const
{
    if (m_sheet.defaultRowHeight > 0)
        return std::min(m_sheet.defaultRowHeight, highestRow);
    return m_measures.rowPoints > 0 ? m_measures.rowPoints : (m_defaultLine + 2) * pointsPerPixel;
}

double SheetGeometry::rowPoints(int row, const RowContent* stored) const
{
    double points = defaultRowPoints();
    if (stored && stored->height > 0)
        points = std::min(static_cast<double>(stored->height), highestRow);
    else if (stored && m_sheet.sizedByTexts)
        return autoHeight(*stored);
    else if (stored && m_measures.growsRows && !m_sheet.customDefaultHeight)
        points = autoHeight(*stored);
    const bool cut = !m_measures.wholeRows && points != m_measures.rowPoints;
    return cut ? std::floor(points / pointsPerPixel + 1e-4) * pointsPerPixel : points;
}

/// The height that the largest font and the wrapped texts of a row ask for, at least the default one.
double SheetGeometry::autoHeight(const RowContent& stored) const
{
    const auto known = m_autoHeights.find(stored.row);
    if (known != m_autoHeights.end())
        return known->second;
    const double fallback = defaultRowPoints();
    double extra = 0; // pixels over the default
    const auto [first, last] = m_sheet.rowCells(static_cast<size_t>(&stored - m_sheet.rows.data()));
    int fontBefore = -1;
    double line = m_defaultLine;
    for (const Cell* cell = first; cell != last; ++cell) {
        const CellStyle& style = m_workbook.styles.cell(static_cast<int>(cell->style));
        if (style.font != fontBefore)
            line = style.font == m_workbook.styles.cells[0].font ? m_defaultLine : fontLine(font(style), m_measures);
        fontBefore = style.font;
        extra = std::max(extra, line - m_defaultLine);
        if (takesSeveralLines(style))
            extra = std::max(extra, cellHeight(*cell, stored.row, line) - m_defaultLine - 2);
    }
    const double points = std::min(fallback + extra * pointsPerPixel, highestRow);
    m_autoHeights.emplace(stored.row, points);
    return points;
}

/// Pixels that a wrapped text needs. Merged cells never make a row higher.
double SheetGeometry::cellHeight(const Cell& cell, int row, double line) const
{
    if (cell.kind != CellKind::Text && cell.kind != CellKind::SheetText)
        return line + 2;
    if (m_shown->mergedAt(row, cell.column))
        return line + 2;
    const QString text = withFewMarks(m_shown->plain(cell));
    const CellStyle& style = m_workbook.styles.cell(static_cast<int>(cell.style));
    const Fonts::Face& face = Fonts::shared(1, m_measures).face(font(style));
    const double width = shownExactColumnPixels(cell.column) - 2 * cellPadding;
    const auto lines = breakLines(
        text, width, [&](int start, int length) { return face.advance(QStringView(text).mid(start, length)); });
    if (!m_measures.wholeLines)
        line = Fonts::shared(outlineScale, m_measures).face(font(style)).lineHeight() / outlineScale;
    const int leading = 2 * m_measures.leading;
    return static_cast<double>(lines.size()) * (line + leading) + 2 - leading;
}

double SheetGeometry::shownRowHeightPoints(int row) const
{
    if (const auto changed = m_overlay.rowHeights.find(row);
        changed != m_overlay.rowHeights.end() && changed->second > 0)
        return changed->second;
    return rowPoints(row, m_sheet.findRow(row));
}

double SheetGeometry::rowHeightPoints(int row) const
{
    return rowHidden(row) ? 0 : shownRowHeightPoints(row);
}

double SheetGeometry::pixelsOfRow(double points) const
{
    return m_measures.wholeRows ? std::round(points / pointsPerPixel) : points / pointsPerPixel;
}

double SheetGeometry::exactRowPixels(int row) const
{
    if (rowHidden(row))
        return 0;
    return pixelsOfRow(shownRowHeightPoints(row));
}

double SheetGeometry::shownExactColumnPixels(int column) const
{
    const auto changed = m_overlay.columnWidths.find(column);
    if (changed != m_overlay.columnWidths.end() && changed->second > 0) {
        const double width = std::min(changed->second, 255.0);
        return width < 1 ? std::round(width * (m_digit + padding()))
                         : std::trunc((256 * width + std::trunc(128.0 / m_digit)) / 256 * m_digit) + padding();
    }
    const ColumnContent* stored = m_sheet.findColumn(column);
    return stored && stored->width > 0 ? filePixels(stored->width) : fittedPixels(column);
}

int SheetGeometry::shownColumnPixels(int column) const
{
    return static_cast<int>(std::lround(shownExactColumnPixels(column)));
}

double SheetGeometry::shownColumnWidthCharacters(int column) const
{
    return characters(shownExactColumnPixels(column), m_digit, padding());
}

double SheetGeometry::exactColumnPixels(int column) const
{
    return columnHidden(column) ? 0 : shownExactColumnPixels(column);
}

double SheetGeometry::columnWidthCharacters(int column) const
{
    return columnHidden(column) ? 0 : shownColumnWidthCharacters(column);
}

int SheetGeometry::rowPixels(int row, double scale) const
{
    return static_cast<int>(std::lround(exactRowPixels(row) * scale));
}

int SheetGeometry::columnPixels(int column, double scale) const
{
    return static_cast<int>(std::lround(exactColumnPixels(column) * scale));
}

double SheetGeometry::drawnPixels(double pixels) const
{
    return m_measures.edgesFallShort && pixels > 0 ? std::max(std::ceil(pixels - 0.01) - 1, 1.0) : pixels;
}

std::vector<int> SheetGeometry::rowEdges(int first, int last, double scale) const
{
    std::vector<int> edges{0};
    double sum = 0;
    for (int row = first; row <= last; ++row) {
        sum += drawnPixels(exactRowPixels(row));
        edges.push_back(static_cast<int>(std::lround(sum * scale)));
    }
    return edges;
}

std::vector<int> SheetGeometry::columnEdges(int first, int last, double scale) const
{
    std::vector<int> edges{0};
    double sum = 0;
    for (int column = first; column <= last; ++column) {
        sum += drawnPixels(exactColumnPixels(column));
        edges.push_back(static_cast<int>(std::lround(sum * scale)));
    }
    return edges;
}

qint64 SheetGeometry::rowsPixels(int first, int last) const
{
    const double usual = m_sheet.defaultRowsHidden ? 0 : pixelsOfRow(rowPoints(0, nullptr));
    double sum = usual * std::max(last - first + 1, 0);
    for (size_t i = m_sheet.rowIndexFrom(first); i < m_sheet.rows.size() && m_sheet.rows[i].row <= last; ++i)
        sum += exactRowPixels(m_sheet.rows[i].row) - usual;
    for (auto changed = m_overlay.rowHeights.lower_bound(first);
         changed != m_overlay.rowHeights.end() && changed->first <= last; ++changed)
        if (!m_sheet.findRow(changed->first))
            sum += exactRowPixels(changed->first) - usual;
    return std::llround(sum);
}

qint64 SheetGeometry::columnsPixels(int first, int last) const
{
    double sum = 0;
    for (int column = first; column <= last; ++column)
        sum += exactColumnPixels(column);
    return std::llround(sum);
}

} // namespace lumivane::engine
