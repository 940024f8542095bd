#pragma once

#include "platform/CellArea.h"

namespace lumivane {

// What a rule does: a text that begins with "color" marks the cell. A rule entered in the program tells behind it, as
// in "color@A19", where the panel's moving range began at that time. The stored definition may be moved on and back
// again behind the rule, which is never rewritten; with that place the watched cell is found all the same.

inline constexpr QStringView markWord = u"color";

QString markFrom(const CellArea& moving);
/// The first cell of the moving range when the rule was entered; none for other texts.
std::optional<CellArea> markedFrom(const QString& action);

} // namespace lumivane
