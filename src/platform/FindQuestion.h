#pragma once

#include "platform/CellArea.h"

// What is looked for among cells, and in which order they are walked. Spreadsheet programs agree on both.

namespace lumivane {

enum class LookAt { Whole = 1, Part = 2 };
enum class SearchDirection { Next = 1, Previous = 2 };
enum class SearchOrder { ByRows = 1, ByColumns = 2 };

struct FindQuestion
{
    QString what; ///< "*" with LookAt::Part hits any cell with contents; otherwise no character is a wild card
    LookAt lookAt = LookAt::Whole;
    SearchDirection direction = SearchDirection::Next;
    SearchOrder order = SearchOrder::ByRows;
};

/// The order in which a search walks an area: it starts just behind the top-left cell and wraps round, so that with
/// Next the top-left cell comes last and with Previous the bottom-right one comes first.
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
