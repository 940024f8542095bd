#pragma once

#include "engine/content/Drawings.h"

#include <pugixml.hpp>

namespace lumivane::engine {

/// Takes over the place of an anchor: the cells or the position of its corners, or its size.
void readAnchor(pugi::xml_node anchor, DrawingContent& drawing);

/// The same from the older form, "1, 46, 3, 4, 4, 17, 6, 12": column, pixels, row and pixels of both corners, counted
/// from 0. False where it is none.
bool readPixelAnchor(std::string_view text, DrawingContent& drawing);

} // namespace lumivane::engine
