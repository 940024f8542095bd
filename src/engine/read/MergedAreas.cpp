#include "engine/read/MergedAreas.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace lumivane::engine {

// Walks down the rows and keeps the areas that the present row crosses by their first column, so that many thousand
// areas take no longer than they must.
std::vector<CellArea> withoutOverlaps(const std::vector<CellArea>& areas)
{
    std::vector<size_t> order(areas.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return areas[a].firstRow < areas[b].firstRow; });
    std::vector<bool> dropped(areas.size(), false);
    std::map<int, size_t> crossing;
    for (const size_t index : order) {
        const CellArea& area = areas[index];
        auto place = crossing.upper_bound(area.firstColumn);
        if (place != crossing.begin())
            --place;
        while (place != crossing.end() && place->first <= area.lastColumn && !dropped[index]) {
            const CellArea& other = areas[place->second];
            const bool ended = other.lastRow < area.firstRow;
            if (!ended && other.lastColumn < area.firstColumn) {
                ++place;
            } else if (ended || place->second > index) {
                dropped[place->second] = dropped[place->second] || !ended;
                place = crossing.erase(place);
            } else {
                dropped[index] = true;
            }
        }
        if (!dropped[index])
            crossing[area.firstColumn] = index;
    }
    std::vector<CellArea> kept;
    for (size_t i = 0; i < areas.size(); ++i) {
        if (!dropped[i])
            kept.push_back(areas[i]);
    }
    return kept;
}

} // namespace lumivane::engine
