#include "engine/read/package/AttributeValues.h"

#include "engine/content/DateSerial.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace lumivane::engine {

namespace {

std::string_view withoutBlanks(std::string_view text)
{
    constexpr const char* blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <class T>
std::optional<T> wholeNumber(std::string_view text)
{
    text = withoutBlanks(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

/// One corner of an area: letters, digits or both, each after an optional "$". 0 stands for what is not given.
std::optional<CellPlace> cornerFrom(std::string_view text)
{
    CellPlace place;
    size_t at = text.starts_with('$') ? 1 : 0;
    for (; at < text.size(); ++at) {
        const char letter = static_cast<char>(text[at] & ~0x20);
        if (letter < 'A' || letter > 'Z')
            break;
        place.column = place.column * 26 + (letter - 'A' + 1);
        if (place.column > maxColumn)
            return std::nullopt;
    }
    if (at < text.size() && text[at] == '$' && place.column > 0)
        ++at;
    if (at < text.size() && text[at] == '0')
        return std::nullopt;
    for (; at < text.size(); ++at) {
        if (text[at] < '0' || text[at] > '9')
            return std::nullopt;
        place.row = place.row * 10 + (text[at] - '0');
        if (place.row > maxRow)
            return std::nullopt;
    }
    return place;
}

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

std::optional<double> numberFrom(std::string_view text)
{
    const std::optional<double> value = wholeNumber<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<int> integerFrom(std::string_view text)
{
    // Nearly always there is nothing around the digits.
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size())
        return value;
    return wholeNumber<int>(text);
}

bool flagFrom(std::string_view text, bool otherwise)
{
    if (!text.data())
        return otherwise;
    return text == "1" || text == "true" || text == "on";
}

std::optional<CellPlace> placeFrom(std::string_view address)
{
    const std::optional<CellPlace> place = cornerFrom(address);
    return place && place->row > 0 && place->column > 0 ? place : std::nullopt;
}

std::optional<CellArea> areaFrom(std::string_view address)
{
    const size_t colon = address.find(':');
    const std::optional<CellPlace> one = cornerFrom(address.substr(0, colon));
    const std::optional<CellPlace> other =
        colon == std::string_view::npos ? one : cornerFrom(address.substr(colon + 1));
    if (!one || !other || (one->row == 0) != (other->row == 0) || (one->column == 0) != (other->column == 0))
        return std::nullopt;
    const bool wholeRows = one->column == 0, wholeColumns = one->row == 0;
    if ((wholeRows && wholeColumns) || ((wholeRows || wholeColumns) && colon == std::string_view::npos))
        return std::nullopt;
    CellArea area{std::min(one->row, other->row), std::min(one->column, other->column), std::max(one->row, other->row),
                  std::max(one->column, other->column)};
    if (wholeRows)
        area.firstColumn = 1, area.lastColumn = maxColumn;
    if (wholeColumns)
        area.firstRow = 1, area.lastRow = maxRow;
    return area;
}

std::optional<ErrorCode> errorFrom(std::string_view text)
{
    const auto name = std::find(std::begin(errorNames), std::end(errorNames), text);
    return name != std::end(errorNames) ? std::optional(static_cast<ErrorCode>(name - std::begin(errorNames)))
                                        : std::nullopt;
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

QString textFrom(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace lumivane::engine
