#include "support/FindOrder.h"

namespace lumivane {

FindOrder::FindOrder(const CellArea& area, SearchDirection direction, SearchOrder order)
    : m_area(area), m_direction(direction), m_order(order)
{
}

qint64 FindOrder::rank(int row, int column) const
{
    const qint64 down = row - m_area.firstRow;
    const qint64 right = column - m_area.firstColumn;
    const qint64 place =
        m_order == SearchOrder::ByRows ? down * m_area.columns() + right : right * m_area.rows() + down;
    const qint64 last = qint64(m_area.rows()) * m_area.columns() - 1;
    if (m_direction == SearchDirection::Previous)
        return last - place;
    return place == 0 ? last : place - 1;
}

} // namespace lumivane
