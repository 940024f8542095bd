#pragma once

#include <optional>

namespace lumivane::engine {

/// The serial number of a day, as workbooks count them; none for a day that does not exist or that lies before the
/// first one. The day 60 (29 February 1900), which never was, is left out.
std::optional<double> serialFromDay(int year, int month, int day, bool date1904);

} // namespace lumivane::engine
