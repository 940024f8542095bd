#include "engine/format/FormatDate.h"

#include "engine/format/FormatLocale.h"
#include "platform/DayZero.h"

#include <QDate>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

constexpr qint64 lastSerial = 2958465; // 31 December 9999, counted from 1900
constexpr qint64 days1904 = 1462;      // by which the 1904 count is behind the other

QString zeroPadded(qint64 number, int digits)
{
    return QString::number(number).rightJustified(digits, u'0');
}

/// A moment cut into the units that a format shows.
class Moment
{
public:
    Moment(const FormatSection& section, double serial, bool date1904);

    bool inRange() const { return m_day >= 0 && m_day <= lastSerial; }
    QString text(const FormatPart& part) const;

private:
    QString yearText(const FormatPart& part) const;
    QString eraText(const FormatPart& part) const;
    QString monthText(const FormatPart& part) const;
    QString dayText(const FormatPart& part) const;
    QString hourText(const FormatPart& part) const;
    QString amPmText(const FormatPart& part) const;

    QString padded(qint64 number, int digits) const { return m_numerals.datePart(zeroPadded(number, digits)); }

    int m_languageId;
    Numerals m_numerals;
    bool m_twelveHours;
    int m_fractionDigits;
    qint64 m_day = 0;      // counted from 1900
    qint64 m_seconds = 0;  // of the day
    qint64 m_elapsed = 0;  // seconds since the first day
    qint64 m_fraction = 0; // of a second, in units of the last digit shown
};

Moment::Moment(const FormatSection& section, double serial, bool date1904)
    : m_languageId(section.locale), m_numerals(section.numerals)
{
    const auto has = [&](PartKind kind) {
        return std::find_if(section.parts.begin(), section.parts.end(),
                            [&](const FormatPart& part) { return part.kind == kind; });
    };
    m_twelveHours = has(PartKind::AmPm) != section.parts.end();
    const auto fraction = has(PartKind::SecondFraction);
    m_fractionDigits = fraction == section.parts.end() ? 0 : fraction->count;

    // Shown times are rounded to the last digit shown, but minutes are never rounded up by seconds.
    const double unitsPerSecond = std::pow(10.0, m_fractionDigits);
    const double wholeDays = std::floor(serial);
    const qint64 perDay = 86400 * static_cast<qint64>(unitsPerSecond);
    qint64 units = std::llround((serial - wholeDays) * 86400 * unitsPerSecond);
    qint64 day = static_cast<qint64>(wholeDays);
    if (units >= perDay) {
        units -= perDay;
        ++day;
    }
    m_seconds = units / static_cast<qint64>(unitsPerSecond);
    m_fraction = units % static_cast<qint64>(unitsPerSecond);
    m_elapsed = day * 86400 + m_seconds;
    m_day = date1904 ? day + days1904 : day;
}

QString Moment::yearText(const FormatPart& part) const
{
    const int year = calendarDay(m_day).year + (part.kind == PartKind::BuddhistYear ? 543 : 0);
    // Years are never counted in words.
    return m_numerals.digits(part.count <= 2 ? zeroPadded(year % 100, 2) : zeroPadded(year, 4));
}

QString Moment::eraText(const FormatPart& part) const
{
    const EraYear era = eraYear(m_day, calendarDay(m_day).year, m_languageId);
    return part.kind == PartKind::Era ? era.names[std::clamp(part.count, 1, 3) - 1]
                                      : padded(era.year, std::min(part.count, 2));
}

QString Moment::monthText(const FormatPart& part) const
{
    const int month = calendarDay(m_day).month;
    if (part.count <= 2)
        return padded(month, part.count);
    const QString name = monthName(month, part.count != 3, m_languageId);
    return part.count == 5 ? name.left(1) : name;
}

QString Moment::dayText(const FormatPart& part) const
{
    const CalendarDay day = calendarDay(m_day);
    return part.count <= 2 ? padded(day.day, part.count) : dayName(day.weekday, part.count > 3, m_languageId);
}

QString Moment::hourText(const FormatPart& part) const
{
    qint64 hour = m_seconds / 3600;
    if (m_twelveHours)
        hour = hour % 12 == 0 ? 12 : hour % 12;
    return padded(hour, std::min(part.count, 2));
}

QString Moment::amPmText(const FormatPart& part) const
{
    const bool afternoon = m_seconds >= 12 * 3600;
    if (part.text.size() == 3) // "A/P" keeps the letters of the code
        return QString(part.text[afternoon ? 2 : 0]);
    return afternoon ? u"PM"_s : u"AM"_s;
}

QString Moment::text(const FormatPart& part) const
{
    switch (part.kind) {
    case PartKind::Year:
    case PartKind::BuddhistYear:
        return yearText(part);
    case PartKind::Era:
    case PartKind::EraYear:
        return eraText(part);
    case PartKind::Month:
        return monthText(part);
    case PartKind::Day:
        return dayText(part);
    case PartKind::Hour:
        return hourText(part);
    case PartKind::Minute:
        return padded(m_seconds / 60 % 60, std::min(part.count, 2));
    case PartKind::Second:
        return padded(m_seconds % 60, std::min(part.count, 2));
    case PartKind::SecondFraction:
        return u'.' + m_numerals.digits(zeroPadded(m_fraction, m_fractionDigits));
    case PartKind::AmPm:
        return amPmText(part);
    case PartKind::ElapsedHours:
        return padded(m_elapsed / 3600, part.count);
    case PartKind::ElapsedMinutes:
        return padded(m_elapsed / 60, part.count);
    case PartKind::ElapsedSeconds:
        return padded(m_elapsed, part.count);
    default:
        return part.text;
    }
}

} // namespace

CalendarDay calendarDay(qint64 serial)
{
    const int weekday = static_cast<int>((serial + 5) % 7) + 1;
    if (serial == 0)
        return {1900, 1, 0, weekday};
    if (serial == 60)
        return {1900, 2, 29, weekday};
    const QDate date = dayZero().addDays(serial < 60 ? serial + 1 : serial);
    return {date.year(), date.month(), date.day(), weekday};
}

std::optional<QString> dateText(const FormatSection& section, double serial, bool date1904)
{
    if (!(serial >= 0 && serial < static_cast<double>(lastSerial + 1)))
        return {};
    const Moment moment(section, serial, date1904);
    if (!moment.inRange())
        return {};
    QString text;
    for (const FormatPart& part : section.parts)
        text += moment.text(part);
    return text;
}

} // namespace lumivane::engine
