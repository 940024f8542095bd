#include "engine/content/DateSerial.h"
#include "engine/format/FormatDate.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Function.h"

#include <QDate>
#include <algorithm>
#include <cmath>
#include <set>

// Days are counted from 1900 here, whatever the workbook counts from; results go through `asWritten`.

namespace lumivane::engine {
namespace {

constexpr qint64 lastDay = 2958465; // 31 December 9999
constexpr qint64 days1904 = 1462;

enum Weekday { Monday = 1, Saturday = 6, Sunday = 7 };

/// A day as the workbook counts it; #NUM! if there is none.
FormulaValue asWritten(FunctionCall& call, double day)
{
    const double written = day - (call.evaluation().date1904() ? days1904 : 0);
    return written >= 0 && day <= lastDay ? FormulaValue(written) : ErrorCode::Num;
}

qint64 dayOf(FunctionCall& call, int place)
{
    return static_cast<qint64>(call.moment(place));
}

int weekdayOf(qint64 day)
{
    return calendarDay(day).weekday;
}

/// The first day of a month, which may lie beyond its year's twelve.
std::optional<double> firstOfMonth(double year, double month)
{
    const double months = year * 12 + month - 1;
    if (!(months >= 1900 * 12 && months < 10000 * 12))
        return std::nullopt;
    const int whole = static_cast<int>(months);
    return serialFromDay(whole / 12, whole % 12 + 1, 1, false);
}

int daysInMonth(int year, int month)
{
    return year == 1900 && month == 2 ? 29 : QDate(year, month, 1).daysInMonth();
}

FormulaValue today(FunctionCall& call)
{
    const QDate date = call.evaluation().now().date();
    return serialFromDay(date.year(), date.month(), date.day(), call.evaluation().date1904()).value_or(0);
}

FormulaValue now(FunctionCall& call)
{
    constexpr double msecsOfDay = 86'400'000;
    return today(call).number() + call.evaluation().now().time().msecsSinceStartOfDay() / msecsOfDay;
}

FormulaValue date(FunctionCall& call)
{
    const double year = std::trunc(call.number(0));
    const auto first = firstOfMonth(year < 1900 ? year + 1900 : year, std::trunc(call.number(1)));
    if (!first || year < 0)
        return ErrorCode::Num;
    return asWritten(call, *first + std::trunc(call.number(2)) - 1);
}

FormulaValue time(FunctionCall& call)
{
    const double seconds =
        std::trunc(call.number(0)) * 3600 + std::trunc(call.number(1)) * 60 + std::trunc(call.number(2));
    return seconds < 0 ? FormulaValue(ErrorCode::Num) : std::fmod(seconds, 86400) / 86400;
}

FormulaValue year(FunctionCall& call)
{
    return calendarDay(dayOf(call, 0)).year;
}

FormulaValue month(FunctionCall& call)
{
    return calendarDay(dayOf(call, 0)).month;
}

FormulaValue day(FunctionCall& call)
{
    return calendarDay(dayOf(call, 0)).day;
}

/// Seconds of the day, rounded.
qint64 secondsOf(FunctionCall& call)
{
    const double moment = call.moment(0);
    return std::llround((moment - std::floor(moment)) * 86400) % 86400;
}

FormulaValue hour(FunctionCall& call)
{
    return secondsOf(call) / 3600;
}

FormulaValue minute(FunctionCall& call)
{
    return secondsOf(call) / 60 % 60;
}

FormulaValue second(FunctionCall& call)
{
    return secondsOf(call) % 60;
}

/// The weekday that a week begins with, by the numbers of WEEKDAY and WEEKNUM; 0 for an unknown number.
int weekStart(int kind)
{
    if (kind == 1)
        return Sunday;
    if (kind == 2)
        return Monday;
    return kind >= 11 && kind <= 17 ? kind - 10 : 0;
}

FormulaValue weekday(FunctionCall& call)
{
    const int weekday = weekdayOf(dayOf(call, 0));
    const int kind = call.integer(1, 1, 17, 1);
    if (kind == 3)
        return weekday - 1;
    const int start = weekStart(kind);
    return start ? FormulaValue((weekday - start + 7) % 7 + 1) : ErrorCode::Num;
}

/// The number of the week that holds a year's first Thursday is 1.
int isoWeek(qint64 day)
{
    const qint64 thursday = std::max<qint64>(day - weekdayOf(day) + 4, 1);
    const auto first = serialFromDay(calendarDay(thursday).year, 1, 1, false).value_or(1);
    return static_cast<int>(thursday - static_cast<qint64>(first)) / 7 + 1;
}

FormulaValue isoWeekNumber(FunctionCall& call)
{
    return isoWeek(dayOf(call, 0));
}

FormulaValue weekNumber(FunctionCall& call)
{
    const qint64 day = dayOf(call, 0);
    const int kind = call.integer(1, 1, 21, 1);
    if (kind == 21)
        return isoWeek(day);
    const int start = weekStart(kind);
    if (!start)
        return ErrorCode::Num;
    const auto first = static_cast<qint64>(serialFromDay(calendarDay(day).year, 1, 1, false).value_or(1));
    const int inFirstWeek = (weekdayOf(first) - start + 7) % 7;
    return (day - first + inFirstWeek) / 7 + 1;
}

/// The same day so many months later, or the last of that month; `endOfMonth`: always the last.
FormulaValue monthsLater(FunctionCall& call, bool endOfMonth)
{
    const CalendarDay from = calendarDay(dayOf(call, 0));
    const double months = std::trunc(call.number(1));
    const auto first = firstOfMonth(from.year, from.month + months);
    if (!first)
        return ErrorCode::Num;
    const CalendarDay month = calendarDay(static_cast<qint64>(*first));
    const int days = daysInMonth(month.year, month.month);
    return asWritten(call, *first + (endOfMonth ? days : std::min(from.day, days)) - 1);
}

FormulaValue editDate(FunctionCall& call)
{
    return monthsLater(call, false);
}

FormulaValue endOfMonth(FunctionCall& call)
{
    return monthsLater(call, true);
}

FormulaValue daysBetween(FunctionCall& call)
{
    return std::floor(call.number(0)) - std::floor(call.number(1));
}

FormulaValue dateDifference(FunctionCall& call)
{
    const qint64 start = dayOf(call, 0), end = dayOf(call, 1);
    const QString unit = call.text(2).toUpper();
    if (start > end)
        return ErrorCode::Num;
    const CalendarDay a = calendarDay(start), b = calendarDay(end);
    const int months = (b.year - a.year) * 12 + b.month - a.month - (b.day < a.day);
    if (unit == u"D")
        return end - start;
    if (unit == u"M")
        return months;
    if (unit == u"Y")
        return months / 12;
    if (unit == u"YM")
        return months % 12;
    // The last time that the day came round; a shorter month has its last day instead.
    const auto sinceThen = [&](int year, int month) -> FormulaValue {
        const auto first = firstOfMonth(year, month);
        if (!first)
            return ErrorCode::Num;
        const CalendarDay then = calendarDay(static_cast<qint64>(*first));
        return double(end) - (*first + std::min(a.day, daysInMonth(then.year, then.month)) - 1);
    };
    if (unit == u"MD")
        return sinceThen(b.year, b.month - (b.day < a.day));
    if (unit == u"YD") {
        const bool nextYear = b.month < a.month || (b.month == a.month && b.day < a.day);
        return sinceThen(b.year - nextYear, a.month);
    }
    return ErrorCode::Num;
}

/// Days that are given as holidays.
std::set<qint64> holidays(FunctionCall& call, int place)
{
    std::set<qint64> days;
    if (place < call.count()) {
        for (const double number : call.numbersOf(place))
            days.insert(static_cast<qint64>(std::clamp<double>(number, -1, lastDay)) +
                        (call.evaluation().date1904() ? days1904 : 0));
    }
    return days;
}

bool isWorkday(qint64 day, const std::set<qint64>& holidays)
{
    return weekdayOf(day) < Saturday && !holidays.contains(day);
}

FormulaValue networkDays(FunctionCall& call)
{
    const qint64 start = dayOf(call, 0), end = dayOf(call, 1);
    const std::set<qint64> free = holidays(call, 2);
    const auto [first, last] = std::minmax(start, end);
    // Whole weeks have five workdays each.
    const qint64 weeks = (last - first + 1) / 7;
    qint64 count = weeks * 5;
    for (qint64 day = first + weeks * 7; day <= last; ++day)
        count += weekdayOf(day) < Saturday;
    for (const qint64 day : free)
        count -= day >= first && day <= last && weekdayOf(day) < Saturday;
    return end < start ? -count : count;
}

FormulaValue workday(FunctionCall& call)
{
    qint64 day = dayOf(call, 0);
    int left = call.integer(1, -static_cast<int>(lastDay), static_cast<int>(lastDay));
    const std::set<qint64> free = holidays(call, 2);
    const int step = left < 0 ? -1 : 1;
    for (left = std::abs(left); left > 0;) {
        day += step;
        if (day < 1 || day > lastDay)
            return ErrorCode::Num;
        if (isWorkday(day, free))
            --left;
        if (!call.evaluation().spend(1))
            break;
    }
    return asWritten(call, static_cast<double>(day));
}

FormulaValue dateValue(FunctionCall& call)
{
    return std::floor(call.number(0));
}

FormulaValue timeValue(FunctionCall& call)
{
    const double number = call.number(0);
    return number - std::floor(number);
}

constexpr Function functions[]{
    {"TODAY", 0, 0, "v", today},
    {"NOW", 0, 0, "v", now},
    {"DATE", 3, 3, "v", date},
    {"TIME", 3, 3, "v", time},
    {"YEAR", 1, 1, "v", year},
    {"MONTH", 1, 1, "v", month},
    {"DAY", 1, 1, "v", day},
    {"HOUR", 1, 1, "v", hour},
    {"MINUTE", 1, 1, "v", minute},
    {"SECOND", 1, 1, "v", second},
    {"WEEKDAY", 1, 2, "v", weekday},
    {"WEEKNUM", 1, 2, "v", weekNumber},
    {"ISOWEEKNUM", 1, 1, "v", isoWeekNumber},
    {"EDATE", 2, 2, "v", editDate},
    {"EOMONTH", 2, 2, "v", endOfMonth},
    {"DAYS", 2, 2, "v", daysBetween},
    {"DATEDIF", 3, 3, "v", dateDifference},
    {"NETWORKDAYS", 2, 3, "vvm", networkDays},
    {"WORKDAY", 2, 3, "vvm", workday},
    {"DATEVALUE", 1, 1, "v", dateValue},
    {"TIMEVALUE", 1, 1, "v", timeValue},
};

} // namespace

std::span<const Function> dateFunctions()
{
    return functions;
}

} // namespace lumivane::engine
