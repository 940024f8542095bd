#pragma once

#include "platform/CellArea.h"

#include <optional>

namespace lumivane {
struct FindQuestion;
}

namespace lumivane::engine {

class ShownSheet;

/// The first hit of a question in an area, in its exact order. Only stored cells are visited, row by row as they
/// lie in memory, whatever the order asked for.
std::optional<CellArea> findCell(const ShownSheet& sheet, const CellArea& area, const FindQuestion& question);

} // namespace lumivane::engine
