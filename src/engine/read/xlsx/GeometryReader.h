#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/read/xlsx/DrawingBudget.h"

#include <pugixml.hpp>

namespace lumivane::engine {

/// The outline that the properties of a shape (<spPr>) state; a rectangle where they state none.
ShapeGeometry readGeometry(pugi::xml_node properties, DrawingBudget& budget);

} // namespace lumivane::engine
