#pragma once

#include <QString>

// What is looked for among cells, and in which order they are walked. Spreadsheet programs agree on both.

namespace lumivane {

enum class LookAt { Whole = 1, Part = 2 };
enum class SearchDirection { Next = 1, Previous = 2 };
enum class SearchOrder { ByRows = 1, ByColumns = 2 };

/// A search of an area starts just behind its top-left cell and wraps round, so that with Next the top-left cell comes
/// last and with Previous the bottom-right one comes first.
struct FindQuestion
{
    QString what; ///< "*" with LookAt::Part hits any cell with contents; otherwise no character is a wild card
    LookAt lookAt = LookAt::Whole;
    SearchDirection direction = SearchDirection::Next;
    SearchOrder order = SearchOrder::ByRows;
};

} // namespace lumivane
