#pragma once

#include "engine/format/FormatCode.h"

namespace lumivane::engine {

/// A day and time counted in days from the workbook's first day, as its format shows it; none where no such day is
/// (below zero, beyond the year 9999).
std::optional<QString> dateText(const FormatSection& section, double serial, bool date1904);

} // namespace lumivane::engine
