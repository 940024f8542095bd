#include "engine/show/ShownSheet.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

QString booleanText(double value)
{
    return value != 0 ? u"TRUE"_s : u"FALSE"_s;
}

/// An index found in a file, made safe.
template <class T>
const T& entryOf(const std::vector<T>& list, int index)
{
    return list[index >= 0 && static_cast<size_t>(index) < list.size() ? static_cast<size_t>(index) : 0];
}

const SheetOverlay noOverlay;

} // namespace

ShownSheet::ShownSheet(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                       const SheetOverlay* overlay)
    : m_workbook(std::move(workbook)), m_sheet(std::move(sheet)), m_overlay(overlay ? overlay : &noOverlay),
      m_formats(m_workbook->styles.numberFormats.size())
{
}

const NumberFormat& ShownSheet::format(int style) const
{
    const StyleTable& styles = m_workbook->styles;
    size_t index = static_cast<size_t>(styles.cell(style).numberFormat);
    if (index >= m_formats.size())
        index = 0;
    std::unique_ptr<NumberFormat>& format = m_formats[index];
    if (!format)
        format = std::make_unique<NumberFormat>(styles.numberFormats[index]);
    return *format;
}

QString ShownSheet::storedText(const Cell& cell) const
{
    return (cell.kind == CellKind::Text ? m_workbook->texts : m_sheet->texts).text(cell.text);
}

FormattedText ShownSheet::formatted(const Cell& cell, int generalChars) const
{
    const int style = static_cast<int>(cell.style);
    switch (cell.kind) {
    case CellKind::Number:
        return format(style).number(cell.number, m_workbook->date1904, generalChars);
    case CellKind::Text:
    case CellKind::SheetText:
        return format(style).text(storedText(cell));
    default: {
        FormattedText unformatted;
        unformatted.text = plain(cell);
        return unformatted;
    }
    }
}

QString ShownSheet::shown(const Cell& cell) const
{
    return formatted(cell).text;
}

QString ShownSheet::shownNumber(double number, int style) const
{
    return format(style).number(number, m_workbook->date1904).text;
}

QString ShownSheet::plain(const Cell& cell) const
{
    switch (cell.kind) {
    case CellKind::Number:
        return plainValueText(cell.number);
    case CellKind::Text:
    case CellKind::SheetText:
        return storedText(cell);
    case CellKind::Boolean:
        return booleanText(cell.number);
    case CellKind::Error:
        return errorText(static_cast<ErrorCode>(cell.text));
    case CellKind::Blank:
    case CellKind::Uncomputed:
        break;
    }
    return {};
}

CellKind ShownSheet::kind(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell ? cell->kind : CellKind::Blank;
}

double ShownSheet::number(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell && (cell->kind == CellKind::Number || cell->kind == CellKind::Boolean) ? cell->number : 0;
}

FormattedText ShownSheet::formatted(int row, int column, int generalChars) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell ? formatted(*cell, generalChars) : FormattedText();
}

const std::vector<TextRun>* ShownSheet::runs(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    if (!cell)
        return nullptr;
    if (cell->kind == CellKind::Text)
        return m_workbook->texts.runs(cell->text);
    return cell->kind == CellKind::SheetText ? m_sheet->texts.runs(cell->text) : nullptr;
}

int ShownSheet::styleIndex(int row, int column) const
{
    if (const auto index = m_sheet->storedRow(row)) {
        const auto cell = m_sheet->cellsIn(*index, column, column);
        if (!cell.empty())
            return static_cast<int>(cell.front().style);
        if (m_sheet->rows[*index].style >= 0)
            return m_sheet->rows[*index].style;
    }
    const ColumnContent* content = m_sheet->findColumn(column);
    return content && content->style >= 0 ? content->style : 0;
}

const FontStyle& ShownSheet::font(const CellStyle& style) const
{
    return entryOf(m_workbook->styles.fonts, style.font);
}

const BorderStyle& ShownSheet::border(const CellStyle& style) const
{
    return entryOf(m_workbook->styles.borders, style.border);
}

FillStyle ShownSheet::fill(int row, int column) const
{
    const auto changed = m_overlay->colors.find({row, column});
    if (changed != m_overlay->colors.end())
        return {Pattern::Solid, changed->second};
    return entryOf(m_workbook->styles.fills, style(row, column).fill);
}

bool ShownSheet::hasContents(const Cell& cell) const
{
    switch (cell.kind) {
    case CellKind::Blank:
        return false;
    case CellKind::Text:
        return !m_workbook->texts.utf8(cell.text).empty();
    case CellKind::SheetText:
        return !m_sheet->texts.utf8(cell.text).empty();
    default:
        return true;
    }
}

int ShownSheet::nextFilled(int row, int column, int step) const
{
    const auto index = m_sheet->storedRow(row);
    if (!index)
        return 0;
    const auto filled = [](const Cell& cell) { return cell.kind != CellKind::Blank; };
    if (step > 0) {
        const auto cells = m_sheet->cellsIn(*index, column + 1, maxColumn);
        const auto found = std::find_if(cells.begin(), cells.end(), filled);
        return found != cells.end() ? found->column : 0;
    }
    const auto cells = m_sheet->cellsIn(*index, 1, column - 1);
    const auto found = std::find_if(cells.rbegin(), cells.rend(), filled);
    return found != cells.rend() ? found->column : 0;
}

std::optional<CellArea> ShownSheet::extent(const std::function<bool(const Cell&)>& counts) const
{
    CellArea extent{1, 1, 0, 0};
    for (size_t n = m_sheet->rows.size(); n-- > 0;) {
        // Once the last row is known, only cells further to the right matter.
        const auto cells = m_sheet->cellsIn(n, extent.lastColumn + 1, maxColumn);
        const auto last = std::find_if(cells.rbegin(), cells.rend(), counts);
        if (last == cells.rend())
            continue;
        extent.lastRow = std::max(extent.lastRow, m_sheet->rows[n].row);
        extent.lastColumn = last->column;
    }
    return extent.lastRow ? std::optional(extent) : std::nullopt;
}

qint64 ShownSheet::uncomputedFormulas(const CellArea& area) const
{
    qint64 count = 0;
    const auto [begin, end] = m_sheet->rowIndices(area);
    for (size_t i = begin; i < end; ++i) {
        const auto cells = m_sheet->cellsIn(i, area.firstColumn, area.lastColumn);
        count += std::count_if(cells.begin(), cells.end(),
                               [](const Cell& cell) { return cell.kind == CellKind::Uncomputed; });
    }
    return count;
}

} // namespace lumivane::engine
