#pragma once

#include "engine/formula/WorkbookCells.h"

#include <map>
#include <optional>

namespace lumivane::engine {

/// Finds the cells that hold the entries of lists on a sheet.
class ListEntries
{
public:
    /// For lists on a sheet by index. `cells` must outlive the object.
    ListEntries(WorkbookCells& cells, int sheet) : m_cells(cells), m_sheet(sheet) {}

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

    WorkbookCells& m_cells;
    const int m_sheet;
    std::map<QString, std::optional<SheetArea>> m_areas;
};

} // namespace lumivane::engine
