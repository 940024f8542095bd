#pragma once

#include "host/embedded/Content.h"
#include "host/embedded/reader/Package.h"

namespace lumivane::embedded {

/// Names, kinds and places of what lies on a sheet, from its drawing part. Throws Fault when that is broken.
std::vector<DrawingContent> readDrawings(const Package& package, const Package::Entry& entry);

} // namespace lumivane::embedded
