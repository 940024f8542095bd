#pragma once

#include "platform/CellArea.h"

#include <vector>

namespace lumivane::engine {

/// The areas that are left, in their order, when of any two that overlap the later one goes.
std::vector<CellArea> withoutOverlaps(const std::vector<CellArea>& areas);

} // namespace lumivane::engine
