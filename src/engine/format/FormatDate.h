#pragma once

#include "engine/format/FormatCode.h"

namespace lumivane::engine {

struct CalendarDay
{
    int year, month, day, weekday; ///< weekday from 1 (Monday)
};

/// The day of a serial number counted from 1900, in which 1900 was a leap year: day 60 is 29 February, day 0 is the
/// day before 1 January, written as 0 January.
CalendarDay calendarDay(qint64 serial);

/// A day and time counted in days from the workbook's first day, as its format shows it; none where no such day is
/// (below zero, beyond the year 9999).
std::optional<QString> dateText(const FormatSection& section, double serial, bool date1904);

} // namespace lumivane::engine
