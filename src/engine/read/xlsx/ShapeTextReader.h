#pragma once

#include "engine/read/xlsx/DrawingBudget.h"
#include "engine/read/xlsx/DrawingTheme.h"

namespace lumivane::engine {

/// The text of a shape (<txBody>) with its fonts; `color` and `family` are those of runs that name none.
ShapeText readShapeText(pugi::xml_node body, const DrawingTheme& theme, QRgb color, const QString& family,
                        DrawingBudget& budget);

} // namespace lumivane::engine
