#pragma once

#include "platform/CellArea.h"

#include <unordered_map>
#include <vector>

namespace lumivane::engine {

/// The merged areas of a sheet, which do not overlap, in the order of their first rows. The area of a cell is asked for
/// at every edge of every cell that is drawn, so those of one stretch of rows are found at once.
class MergedCells
{
public:
    MergedCells() = default;
    explicit MergedCells(std::vector<CellArea> areas);

    const std::vector<CellArea>& areas() const { return m_areas; }
    auto begin() const { return m_areas.begin(); }
    auto end() const { return m_areas.end(); }
    /// The area that a cell lies in; null if it is in none.
    const CellArea* at(int row, int column) const;
    qint64 bytes() const;

private:
    const CellArea* among(const std::vector<quint32>& indexes, int row, int column) const;

    std::vector<CellArea> m_areas;
    std::unordered_map<int, std::vector<quint32>> m_byRows;
    std::vector<quint32> m_tall; ///< over more rows than it pays to list them by
};

} // namespace lumivane::engine
