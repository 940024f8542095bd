#pragma once

#include "engine/draw/SheetGeometry.h"
#include "engine/draw/VisibleGrid.h"

namespace lumivane::engine {

/// What the layers of one picture paint and how: the sheet, where its rows and columns lie in the picture, and the
/// fonts at its scale. Each layer paints its subject for the whole area, over the layers before it.
struct Scene
{
    const ShownSheet& sheet;
    const SheetGeometry& geometry;
    const VisibleGrid& grid;
    const Fonts& fonts;
    const Measures& measures;
};

} // namespace lumivane::engine
