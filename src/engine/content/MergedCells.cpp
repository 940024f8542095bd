#include "engine/content/MergedCells.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr int rowStretch = 64;
constexpr int tallRows = 512;

} // namespace

MergedCells::MergedCells(std::vector<CellArea> areas) : m_areas(std::move(areas))
{
    std::stable_sort(m_areas.begin(), m_areas.end(),
                     [](const CellArea& a, const CellArea& b) { return a.firstRow < b.firstRow; });
    for (quint32 index = 0; index < m_areas.size(); ++index) {
        const CellArea& area = m_areas[index];
        if (area.rows() > tallRows) {
            m_tall.push_back(index);
            continue;
        }
        for (int stretch = area.firstRow / rowStretch; stretch <= area.lastRow / rowStretch; ++stretch)
            m_byRows[stretch].push_back(index);
    }
}

const CellArea* MergedCells::among(const std::vector<quint32>& indexes, int row, int column) const
{
    const auto place = std::find_if(indexes.begin(), indexes.end(),
                                    [&](quint32 index) { return m_areas[index].contains(row, column); });
    return place != indexes.end() ? &m_areas[*place] : nullptr;
}

const CellArea* MergedCells::at(int row, int column) const
{
    const auto stretch = m_byRows.find(row / rowStretch);
    const CellArea* found = stretch != m_byRows.end() ? among(stretch->second, row, column) : nullptr;
    return found ? found : among(m_tall, row, column);
}

qint64 MergedCells::bytes() const
{
    // Of the lists of rows as much as an area costs in them.
    return qint64(m_areas.capacity() * (sizeof(CellArea) + 2 * sizeof(quint32)));
}

} // namespace lumivane::engine
