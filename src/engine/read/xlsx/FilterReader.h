#pragma once

#include "engine/content/SheetContent.h"

#include <pugixml.hpp>

namespace lumivane::engine {

/// Adds the filter that an <autoFilter> of a sheet or a table describes. One without a usable place is passed over.
void readFilter(pugi::xml_node filter, SheetContent& content);

} // namespace lumivane::engine
