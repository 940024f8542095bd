#pragma once

#include <optional>
#include <string_view>

namespace lumivane::engine {

/// The serial number of a day, as workbooks count them; none for a day that does not exist or that lies before the
/// first one. The day 60 (29 February 1900), which never was, is left out.
std::optional<double> serialFromDay(int year, int month, int day, bool date1904);

/// An ISO date, time or both as a serial number of days; none when it is not one.
std::optional<double> serialFromIso(std::string_view text, bool date1904);

} // namespace lumivane::engine
