#include "engine/read/xlsx/FilterReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"

namespace lumivane::engine {

void readFilter(pugi::xml_node filter, SheetContent& content)
{
    constexpr size_t maxFilterColumns = 100000;
    const std::optional<CellArea> area = areaFrom(attributeOf(filter, "ref"));
    if (!area)
        return;
    content.filtered.push_back(*area);
    for (const pugi::xml_node node : childrenNamed(filter, "filterColumn")) {
        const int index = integerFrom(attributeOf(node, "colId")).value_or(-1); // from 0
        if (index < 0 || index >= area->columns() || content.filterColumns.size() >= maxFilterColumns)
            continue;
        FilterColumn column{area->firstRow, area->firstColumn + index};
        column.hasButton =
            !flagFrom(attributeOf(node, "hiddenButton"), false) && flagFrom(attributeOf(node, "showButton"), true);
        column.inUse = node.first_child() != nullptr;
        content.filterColumns.push_back(column);
    }
}

} // namespace lumivane::engine
