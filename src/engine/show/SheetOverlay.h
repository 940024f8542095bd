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
    struct Value
    {
        CellKind kind = CellKind::Blank;
        double number = 0;
        QString text;
    };
    std::map<std::pair<int, int>, Value> values;
};

} // namespace lumivane::engine
