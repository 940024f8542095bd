#include "engine/show/ListEntries.h"

#include "engine/formula/Formula.h"

namespace lumivane::engine {

int ListEntries::count(const QString& reference)
{
    const SheetArea* area = find(reference);
    return area ? area->cells.rows() : 0;
}

ListEntries::Entry ListEntries::at(const QString& reference, int index)
{
    const SheetArea* area = find(reference);
    if (!area || index < 0 || index >= area->cells.rows())
        return {};
    const int row = area->cells.firstRow + index, column = area->cells.firstColumn;
    const SheetContent* sheet = m_cells.sheet(area->sheet);
    const Cell* cell = sheet ? sheet->find(row, column) : nullptr;
    return {m_cells.value(area->sheet, row, column), cell ? static_cast<int>(cell->style) : 0};
}

const SheetArea* ListEntries::find(const QString& reference)
{
    constexpr size_t maxReferences = 1000; // each is a formula that takes its time
    if (m_areas.size() >= maxReferences && !m_areas.contains(reference))
        return nullptr;
    const auto [place, isNew] = m_areas.try_emplace(reference);
    if (isNew)
        place->second = areaReferredTo(reference, m_cells, m_sheet);
    return place->second ? &*place->second : nullptr;
}

} // namespace lumivane::engine
