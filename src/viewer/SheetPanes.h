#pragma once

#include "platform/CellArea.h"
#include "viewer/AxisBands.h"

namespace lumivane {

/// A window's panes: the crossings of its bands of rows with its bands of columns, counted from left to right and then
/// from top to bottom, so that the last pane is the one that scrolls freely.
struct SheetPanes
{
    AxisBands rows;
    AxisBands columns;

    int count() const { return rows.bandCount() * columns.bandCount(); }
    int rowBand(int pane) const { return pane / columns.bandCount(); }
    int columnBand(int pane) const { return pane % columns.bandCount(); }
    CellArea visible(int pane) const
    {
        const auto r = rows.visible(rowBand(pane));
        const auto c = columns.visible(columnBand(pane));
        return {r.first, c.first, r.last, c.last};
    }
};

} // namespace lumivane
