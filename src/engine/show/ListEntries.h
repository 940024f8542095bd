#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"
#include "engine/formula/WorkbookCells.h"

#include <map>
#include <memory>
#include <optional>

namespace lumivane::engine {

/// Finds the cells that hold the entries of lists on a sheet.
class ListEntries
{
public:
    /// `others` gives the other sheets of the workbook, in which they may lie; it may be empty.
    ListEntries(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                WorkbookCells::SheetSource others);

    struct Entry
    {
        FormulaValue value;
        int style = 0; ///< of its cell
    };
    /// How many there are: the rows of the reference, whose first column counts; 0 where it leads to no cells.
    int count(const QString& reference);
    /// By index from 0.
    Entry at(const QString& reference, int index);

private:
    const SheetArea* find(const QString& reference);

    const int m_sheetIndex;
    WorkbookCells::SheetSource m_sheets;
    WorkbookCells m_cells;
    std::map<QString, std::optional<SheetArea>> m_areas;
};

} // namespace lumivane::engine
