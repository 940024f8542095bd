#include "engine/show/SheetCells.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr int rowStretch = 64;
constexpr int tallRows = 512;

/// An index found in a file, made safe.
template <class T>
const T& entryOf(const std::vector<T>& list, int index)
{
    return list[index >= 0 && static_cast<size_t>(index) < list.size() ? static_cast<size_t>(index) : 0];
}

} // namespace

SheetCells::SheetCells(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                       const SheetOverlay* overlay)
    : m_workbook(std::move(workbook)), m_sheet(std::move(sheet)), m_overlay(overlay), m_texts(m_workbook, m_sheet)
{
    for (const CellArea& area : m_sheet->merged) {
        if (area.rows() > tallRows) {
            m_tallMerged.push_back(&area);
            continue;
        }
        for (int stretch = area.firstRow / rowStretch; stretch <= area.lastRow / rowStretch; ++stretch)
            m_mergedByRows[stretch].push_back(&area);
    }
}

const CellArea* SheetCells::mergedAt(int row, int column) const
{
    const auto find = [&](const std::vector<const CellArea*>& areas) -> const CellArea* {
        const auto place =
            std::find_if(areas.begin(), areas.end(), [&](const CellArea* area) { return area->contains(row, column); });
        return place != areas.end() ? *place : nullptr;
    };
    const auto stretch = m_mergedByRows.find(row / rowStretch);
    const CellArea* found = stretch != m_mergedByRows.end() ? find(stretch->second) : nullptr;
    return found ? found : find(m_tallMerged);
}

int SheetCells::styleIndex(int row, int column) const
{
    const RowContent* stored = m_sheet->findRow(row);
    if (stored) {
        const auto [first, last] = m_sheet->rowCells(static_cast<size_t>(stored - m_sheet->rows.data()));
        const Cell* cell =
            std::lower_bound(first, last, column, [](const Cell& c, int wanted) { return c.column < wanted; });
        if (cell != last && cell->column == column)
            return static_cast<int>(cell->style);
        if (stored->style >= 0)
            return stored->style;
    }
    const ColumnContent* content = m_sheet->findColumn(column);
    return content && content->style >= 0 ? content->style : 0;
}

const FillStyle& SheetCells::fill(const CellStyle& style) const
{
    return entryOf(m_workbook->styles.fills, style.fill);
}

const BorderStyle& SheetCells::border(const CellStyle& style) const
{
    return entryOf(m_workbook->styles.borders, style.border);
}

std::optional<QRgb> SheetCells::changedColor(int row, int column) const
{
    if (!m_overlay)
        return {};
    const auto place = m_overlay->colors.find({row, column});
    return place == m_overlay->colors.end() ? std::nullopt : std::optional(place->second);
}

CellKind SheetCells::kind(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell ? cell->kind : CellKind::Blank;
}

double SheetCells::number(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell && (cell->kind == CellKind::Number || cell->kind == CellKind::Boolean) ? cell->number : 0;
}

FormattedText SheetCells::formatted(int row, int column, int generalChars) const
{
    const Cell* cell = m_sheet->find(row, column);
    return cell ? m_texts.formatted(*cell, generalChars) : FormattedText();
}

const std::vector<TextRun>* SheetCells::runs(int row, int column) const
{
    const Cell* cell = m_sheet->find(row, column);
    if (!cell)
        return nullptr;
    if (cell->kind == CellKind::Text)
        return m_workbook->texts.runs(cell->text);
    return cell->kind == CellKind::SheetText ? m_sheet->texts.runs(cell->text) : nullptr;
}

int SheetCells::nextFilled(int row, int column, int step) const
{
    int found = 0;
    if (const RowContent* stored = m_sheet->findRow(row)) {
        const auto [first, last] = m_sheet->rowCells(static_cast<size_t>(stored - m_sheet->rows.data()));
        const Cell* cell =
            std::lower_bound(first, last, column, [](const Cell& c, int wanted) { return c.column < wanted; });
        if (step > 0) {
            for (; cell != last && !found; ++cell)
                if (cell->column > column && kind(row, cell->column) != CellKind::Blank)
                    found = cell->column;
        } else {
            while (cell != first && !found) {
                --cell;
                if (kind(row, cell->column) != CellKind::Blank)
                    found = cell->column;
            }
        }
    }
    return found;
}

} // namespace lumivane::engine
