#pragma once

#include "platform/CellArea.h"

#include <QRgb>
#include <utility>

namespace lumivane {

// What a rule does: a text that begins with "color" marks the cell. A rule entered in the program says behind the word,
// as in "color@A19", where the panel's moving range began at that time. The stored definition may be moved on and back
// again, while the rule is never rewritten; with that place the watched cell is found all the same.

inline constexpr QStringView markWord = u"color";
inline constexpr QRgb highMark = qRgb(128, 180, 180);
inline constexpr QRgb lowMark = qRgb(180, 128, 180);

/// The action of a rule that is entered while the moving range lies there.
QString markFrom(const CellArea& moving);
/// Rows and columns by which a moving range lies away from where it was when the rule was entered; none for a rule that
/// does not say where that was.
std::optional<std::pair<int, int>> movedSince(const QString& action, const CellArea& moving);
/// Of the two actions of a stored row, the one that says it.
const QString& actionWithPlace(const QString& ifHigh, const QString& ifLow);

} // namespace lumivane
