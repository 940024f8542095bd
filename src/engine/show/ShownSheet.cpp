#include "engine/show/ShownSheet.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

QString booleanText(double value)
{
    return value != 0 ? u"TRUE"_s : u"FALSE"_s;
}

const SheetOverlay noOverlay;

} // namespace

ShownSheet::ShownSheet(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                       const SheetOverlay* overlay, WorkbookCells::SheetSource others)
    : m_workbook(std::move(workbook)), m_sheet(std::move(sheet)), m_overlay(overlay ? overlay : &noOverlay),
      m_others(std::move(others)), m_styles(m_workbook->styles), m_tables(TableLooks::of(*m_sheet)),
      m_formats(m_workbook->styles.numberFormats.size())
{
    if (!m_sheet->conditions.empty())
        m_conditions = std::make_unique<Conditions>(cells(), m_sheet);
    if (!m_sheet->sparklines.empty())
        m_sparklines = std::make_unique<Sparklines>(cells(), m_sheet);
}

WorkbookCells& ShownSheet::cells() const
{
    if (!m_cells)
        m_cells = std::make_unique<WorkbookCells>(m_workbook, [own = m_sheet, others = m_others](int index) {
            return index == own->sheetIndex ? own : others ? others(index) : nullptr;
        });
    return *m_cells;
}

const NumberFormat& ShownSheet::format(int style) const
{
    const CellStyle& cellStyle = m_styles.cell(style);
    const size_t index = static_cast<size_t>(std::max(cellStyle.numberFormat, 0));
    if (index >= m_formats.size())
        m_formats.resize(index + 1);
    std::unique_ptr<NumberFormat>& format = m_formats[index];
    if (!format)
        format = std::make_unique<NumberFormat>(m_styles.numberFormat(cellStyle));
    return *format;
}

bool ShownSheet::mayChangeFormat(int row, int column) const
{
    return m_conditions && m_conditions->changesTexts(row, column);
}

const ConditionResult* ShownSheet::condition(int row, int column) const
{
    return m_conditions ? &m_conditions->at(row, column) : nullptr;
}

const SparklineShown* ShownSheet::sparkline(int row, int column) const
{
    return m_sparklines ? m_sparklines->at(row, column) : nullptr;
}

QStringList ShownSheet::listEntries(const QString& reference, int first, int most) const
{
    if (!m_listEntries)
        m_listEntries = std::make_unique<ListEntries>(cells(), m_sheet->sheetIndex);
    QStringList texts;
    const int end = m_listEntries->count(reference);
    for (int i = std::max(first, 0); i < end && texts.size() < most; ++i) {
        const auto [value, style] = m_listEntries->at(reference, i);
        texts << (value.isNumber()    ? shownNumber(value.number(), style)
                  : value.isText()    ? value.text()
                  : value.isBoolean() ? booleanText(value.boolean())
                  : value.isError()   ? errorText(value.error())
                                      : QString());
    }
    return texts;
}

QStringList ShownSheet::conditionsLeftOut(const CellArea& area) const
{
    return m_conditions ? m_conditions->leftOut(area) : QStringList();
}

QString ShownSheet::storedText(const Cell& cell) const
{
    return (cell.kind == CellKind::Text ? m_workbook->texts : m_sheet->texts).text(cell.text);
}

FormattedText ShownSheet::formatted(int row, const Cell& cell, int generalChars) const
{
    const int style = mayChangeFormat(row, cell.column) ? styleIndex(row, cell.column) : static_cast<int>(cell.style);
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

QString ShownSheet::shown(int row, const Cell& cell) const
{
    return formatted(row, cell).text;
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
    return cell ? formatted(row, *cell, generalChars) : FormattedText();
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
    const int stored = storedStyle(row, column);
    return m_styles.combined(stored, m_tables ? m_tables->at(row, column) : nullptr,
                             m_conditions ? m_conditions->at(row, column).look : nullptr);
}

int ShownSheet::storedStyle(int row, int column) const
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
    return m_styles.font(style);
}

const BorderStyle& ShownSheet::border(const CellStyle& style) const
{
    return m_styles.border(style);
}

FillStyle ShownSheet::fill(int row, int column) const
{
    const auto changed = m_overlay->colors.find({row, column});
    if (changed != m_overlay->colors.end())
        return {Pattern::Solid, changed->second};
    if (const ConditionResult* condition = this->condition(row, column); condition && condition->scale)
        return {Pattern::Solid, *condition->scale};
    return m_styles.fill(style(row, column));
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

std::optional<CellArea> ShownSheet::extent(const std::function<bool(int row, const Cell&)>& counts) const
{
    CellArea extent{1, 1, 0, 0};
    for (size_t n = m_sheet->rows.size(); n-- > 0;) {
        // Once the last row is known, only cells further to the right matter.
        const auto cells = m_sheet->cellsIn(n, extent.lastColumn + 1, maxColumn);
        const auto last = std::find_if(cells.rbegin(), cells.rend(),
                                       [&](const Cell& cell) { return counts(m_sheet->rows[n].row, cell); });
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
