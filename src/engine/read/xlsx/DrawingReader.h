#pragma once

#include "engine/content/Drawings.h"
#include "engine/read/package/Package.h"

namespace lumivane::engine {

/// Names, kinds and places of what lies on a sheet, from its drawing part. Throws Fault when that is broken.
std::vector<DrawingContent> readDrawings(const Package& package, const Package::Entry& entry);

} // namespace lumivane::engine
