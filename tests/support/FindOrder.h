#pragma once

#include "platform/CellArea.h"
#include "platform/FindQuestion.h"

namespace lumivane {

/// The order of a FindQuestion, cell by cell.
class FindOrder
{
public:
    FindOrder(const CellArea& area, SearchDirection direction, SearchOrder order);
    /// When a cell of the area is examined; smaller is earlier.
    qint64 rank(int row, int column) const;

private:
    CellArea m_area;
    SearchDirection m_direction;
    SearchOrder m_order;
};

} // namespace lumivane
