#include "viewer/SheetFinder.h"

#include "engine/show/CellMatcher.h"
#include "platform/FindQuestion.h"

namespace lumivane {

using namespace engine;

namespace {

/// One walk over the rows that are stored.
class FindWalk
{
public:
    FindWalk(const ViewedSheet& sheet, const QString& text)
        : m_sheet(sheet),
          m_matcher(sheet.shown(), FindQuestion{text, LookAt::Part, SearchDirection::Next, SearchOrder::ByRows})
    {
    }

    /// The first hit of a row within columns, or the last one when searching backwards.
    std::optional<CellSpot> inRow(size_t rowIndex, int firstColumn, int lastColumn, bool forward)
    {
        const int row = m_sheet.content().rows[rowIndex].row;
        const auto cells = m_sheet.content().cellsIn(rowIndex, firstColumn, lastColumn);
        for (size_t i = 0; i < cells.size(); ++i) {
            const Cell& cell = forward ? cells[i] : cells[cells.size() - 1 - i];
            if (!m_matcher.hits(row, cell))
                continue;
            if (!m_sheet.geometry().rowHidden(row) && !m_sheet.geometry().columnHidden(cell.column))
                return CellSpot{row, cell.column};
        }
        return std::nullopt;
    }

private:
    const ViewedSheet& m_sheet;
    CellMatcher m_matcher;
};

} // namespace

std::optional<CellSpot> findText(const ViewedSheet& sheet, const QString& text, const CellSpot& from, bool forward)
{
    const auto& rows = sheet.content().rows;
    if (text.isEmpty() || rows.empty())
        return std::nullopt;
    FindWalk walk(sheet, text);
    const size_t count = rows.size();
    const size_t start = sheet.content().rowIndexFrom(from.row);
    const bool startIsStored = start < count && rows[start].row == from.row;

    // The rest of the row at hand first, its beginning last.
    if (startIsStored) {
        const auto hit = forward ? walk.inRow(start, from.column + 1, maxColumn, true)
                                 : walk.inRow(start, 1, from.column - 1, false);
        if (hit)
            return hit;
    }
    const size_t others = startIsStored ? count - 1 : count;
    for (size_t i = 1; i <= others; ++i) {
        const size_t forwardIndex = (start + i - (startIsStored ? 0 : 1)) % count;
        const size_t index = forward ? forwardIndex : (start + count - i) % count;
        if (const auto hit = walk.inRow(index, 1, maxColumn, forward))
            return hit;
    }
    if (!startIsStored)
        return std::nullopt;
    return forward ? walk.inRow(start, 1, from.column, true) : walk.inRow(start, from.column, maxColumn, false);
}

} // namespace lumivane
