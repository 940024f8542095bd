#pragma once

#include "engine/show/ShownTexts.h"

#include <unordered_map>

namespace lumivane::engine {

/// A sheet as one opening of its workbook shows it: stored cells, what a job has laid over them, and the styles that
/// hold where no cell is stored.
class SheetCells
{
public:
    SheetCells(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
               const SheetOverlay* overlay);

    const WorkbookContent& workbook() const { return *m_workbook; }
    const SheetContent& sheet() const { return *m_sheet; }
    const ShownTexts& texts() const { return m_texts; }

    /// Index into StyleTable::cells: of the cell, else of its row, else of its column.
    int styleIndex(int row, int column) const;
    const CellStyle& style(int row, int column) const { return m_workbook->styles.cell(styleIndex(row, column)); }
    const FillStyle& fill(const CellStyle& style) const;
    const BorderStyle& border(const CellStyle& style) const;
    std::optional<QRgb> changedColor(int row, int column) const;

    /// The merged area of a cell; null if it is in none.
    const CellArea* mergedAt(int row, int column) const;

    CellKind kind(int row, int column) const;
    double number(int row, int column) const; ///< of a number or boolean
    FormattedText formatted(int row, int column, int generalChars) const;
    /// Stretches of a rich text; null for any other.
    const std::vector<TextRun>* runs(int row, int column) const;

    /// The next cell of a row with something in it, right (step 1) or left (-1) of a column; 0 if there is none.
    int nextFilled(int row, int column, int step) const;

private:
    std::shared_ptr<const WorkbookContent> m_workbook;
    std::shared_ptr<const SheetContent> m_sheet;
    const SheetOverlay* m_overlay;
    ShownTexts m_texts;
    // Asked for every edge of every cell, so those of one stretch of rows are found at once.
    std::unordered_map<int, std::vector<const CellArea*>> m_mergedByRows;
    std::vector<const CellArea*> m_tallMerged; ///< over more rows than it pays to list them by
};

} // namespace lumivane::engine
