#pragma once

#include "platform/CellArea.h"
#include "platform/FindQuestion.h"

namespace lumivane {

/// The order of a FindQuestion, cell by cell.
struct FindOrder
{
    CellArea area;
    SearchDirection direction;
    SearchOrder order;

    /// When a cell of the area is examined; smaller is earlier.
    qint64 rank(int row, int column) const
    {
        const qint64 down = row - area.firstRow, right = column - area.firstColumn;
        const qint64 place = order == SearchOrder::ByRows ? down * area.columns() + right : right * area.rows() + down;
        const qint64 last = qint64(area.rows()) * area.columns() - 1;
        return direction == SearchDirection::Previous ? last - place : place == 0 ? last : place - 1;
    }
};

} // namespace lumivane
