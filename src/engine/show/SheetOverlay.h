#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"

#include <map>

namespace lumivane::engine {

/// What a job has changed on its own opening of a sheet.
struct SheetOverlay
{
    std::map<int, double> rowHeights;   ///< points by row; 0 hides
    std::map<int, double> columnWidths; ///< characters without padding, by column; 0 hides
    std::map<std::pair<int, int>, QRgb> colors;
};

} // namespace lumivane::engine
