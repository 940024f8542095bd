#pragma once

#include "platform/CellArea.h"

#include <QString>

namespace lumivane::engine {

/// A chart, picture, shape or control on a sheet: its name, kind and place. What it shows is not read.
struct DrawingContent
{
    QString name;
    QString kind;    ///< "chart", "picture", "shape", "control"
    CellArea anchor; ///< from the cell with its top left corner to that with its bottom right one; the former alone
                     ///< where the file stores a size instead (`width` and `height`)
    bool hidden = false;
    // In EMU, 9525 to a pixel: the corners' distance from those of their cells, or from the sheet's own corner for an
    // absolute place, whose anchor is A1.
    qint64 startX = 0, startY = 0;
    qint64 endX = 0, endY = 0;
    qint64 width = -1, height = -1; ///< below 0: as the anchor says
    QString part;                   ///< of the package, with the chart or the picture; empty if it has none
};

} // namespace lumivane::engine
