#pragma once

#include "engine/show/CellMatcher.h"
#include "platform/FindOrder.h"

namespace lumivane::engine {

/// Searches in one sheet. Only stored cells are visited, row by row as they lie in
/// memory, whatever the order asked for.
class CellSearch
{
public:
    CellSearch(const WorkbookContent& workbook, const SheetContent& sheet, const ShownTexts& texts)
        : m_workbook(workbook), m_sheet(sheet), m_texts(texts)
    {
    }

    /// The first hit in the order of FindOrder.
    std::optional<CellArea> find(const CellArea& area, const FindQuestion& question) const;
    /// From A1 to the last row and the last column with contents; none when there are none.
    std::optional<CellArea> contentArea() const;

private:
    /// A search that runs to the end or to the beginning of the area, without the wrap.
    std::optional<CellArea> findStored(const CellArea& area, const FindQuestion& question, CellMatcher& matcher) const;
    const Cell* firstInRow(size_t rowIndex, int firstColumn, int lastColumn, bool forward, CellMatcher& matcher) const;

    const WorkbookContent& m_workbook;
    const SheetContent& m_sheet;
    const ShownTexts& m_texts;
};

} // namespace lumivane::engine
