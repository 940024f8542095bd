#pragma once

#include "host/CellArea.h"

#include <vector>

namespace lumivane::embedded {

/// The areas that are left, in their order, when of any two that overlap the later one goes.
std::vector<CellArea> withoutOverlaps(const std::vector<CellArea>& areas);

} // namespace lumivane::embedded
