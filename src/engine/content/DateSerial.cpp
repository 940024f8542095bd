#include "engine/content/DateSerial.h"

#include "engine/read/package/AttributeValues.h"

#include <QDate>

namespace lumivane::engine {

namespace {

/// Takes exactly `count` digits from the front; -1 when they are not there.
int takeDigits(std::string_view& text, size_t count)
{
    int value = 0;
    if (text.size() < count)
        return -1;
    for (size_t i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return -1;
        value = value * 10 + (text[i] - '0');
    }
    text.remove_prefix(count);
    return value;
}

bool take(std::string_view& text, char letter)
{
    if (!text.starts_with(letter))
        return false;
    text.remove_prefix(1);
    return true;
}

/// "10:30", "10:30:15" or "10:30:15.25", perhaps with "Z", as part of a day.
std::optional<double> takeTime(std::string_view text)
{
    const int hours = takeDigits(text, 2);
    if (hours < 0 || hours > 24 || !take(text, ':'))
        return std::nullopt;
    const int minutes = takeDigits(text, 2);
    double seconds = 0;
    if (minutes < 0 || minutes > 59)
        return std::nullopt;
    if (text.ends_with('Z'))
        text.remove_suffix(1);
    if (take(text, ':')) {
        const std::optional<double> rest = numberFrom(text);
        if (!rest || !(*rest >= 0 && *rest < 60))
            return std::nullopt;
        seconds = *rest;
    } else if (!text.empty()) {
        return std::nullopt;
    }
    return (hours * 3600 + minutes * 60 + seconds) / 86400;
}

} // namespace

std::optional<double> serialFromDay(int year, int month, int day, bool date1904)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    const QDate first = date1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    qint64 serial = first.daysTo(date);
    if (!date1904 && serial <= 60)
        --serial;
    return serial >= 0 && year <= 9999 ? std::optional(double(serial)) : std::nullopt;
}

std::optional<double> serialFromIso(std::string_view text, bool date1904)
{
    if (text.size() > 2 && text[2] == ':')
        return takeTime(text);
    const int year = takeDigits(text, 4);
    if (year < 0 || !take(text, '-'))
        return std::nullopt;
    const int month = takeDigits(text, 2);
    if (month < 0 || !take(text, '-'))
        return std::nullopt;
    const int day = takeDigits(text, 2);
    const std::optional<double> date = day < 0 ? std::nullopt : serialFromDay(year, month, day, date1904);
    if (!date || text.empty())
        return date;
    if (!take(text, 'T') && !take(text, ' '))
        return std::nullopt;
    const std::optional<double> time = takeTime(text);
    return time ? std::optional(*date + *time) : std::nullopt;
}

} // namespace lumivane::engine
