#pragma once

#include "engine/content/Cell.h"
#include "platform/CellArea.h"

#include <QString>
#include <optional>
#include <string_view>

namespace lumivane::engine {

// Reading of what stands in attributes and values, without a QString in between. A null view stands for "not there".

std::optional<double> numberFrom(std::string_view text); ///< blanks around it allowed; never infinite, never NaN
std::optional<int> integerFrom(std::string_view text);
/// "1", "true" and "on" are true.
bool flagFrom(std::string_view text, bool otherwise);

struct CellPlace
{
    int row = 0, column = 0;
};
/// "B3" or "$B$3" within the grid.
std::optional<CellPlace> placeFrom(std::string_view address);
/// "B3:D8", "B3", "B:D", "3:8", corners in any order, within the grid.
std::optional<CellArea> areaFrom(std::string_view address);

std::optional<ErrorCode> errorFrom(std::string_view text); ///< "#DIV/0!" and its like

/// An ISO date, time or both as a serial number of days; none when it is not one.
std::optional<double> serialFromIso(std::string_view text, bool date1904);

QString textFrom(std::string_view utf8);

} // namespace lumivane::engine
