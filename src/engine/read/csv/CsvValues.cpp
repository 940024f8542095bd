#include "engine/read/csv/CsvValues.h"

#include "engine/content/DateSerial.h"
#include "engine/read/package/AttributeValues.h"

#include <algorithm>
#include <array>
#include <string>

namespace lumivane::engine {

namespace {

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

std::string_view trimmed(std::string_view text)
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

bool equalsIgnoringCase(std::string_view text, std::string_view small)
{
    return std::equal(text.begin(), text.end(), small.begin(), small.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; });
}

/// Takes a text apart from its front.
class Reading
{
public:
    explicit Reading(std::string_view text) : m_rest(text) {}

    bool atEnd() const { return m_rest.empty(); }
    bool take(char letter)
    {
        if (!m_rest.starts_with(letter))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    bool takeBlanks()
    {
        const size_t before = m_rest.size();
        while (take(' '))
            ;
        return m_rest.size() < before;
    }
    /// A whole number of at least one digit and at most `most` of them; `digits` receives how many there were.
    std::optional<int> number(size_t most, size_t* digits = nullptr)
    {
        const size_t count = std::min(m_rest.find_first_not_of("0123456789"), m_rest.size());
        if (count == 0 || count > most)
            return std::nullopt;
        int value = 0;
        for (const char digit : m_rest.substr(0, count))
            value = value * 10 + (digit - '0');
        m_rest.remove_prefix(count);
        if (digits)
            *digits = count;
        return value;
    }
    std::string_view letters()
    {
        size_t count = 0;
        while (count < m_rest.size() && static_cast<unsigned char>((m_rest[count] | 0x20) - 'a') < 26)
            ++count;
        const std::string_view word = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return word;
    }
    std::string_view rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

/// Digits with a decimal point, thousands grouped by commas in threes, an exponent. Nothing else.
std::optional<double> plainNumber(std::string_view text, bool& exponent)
{
    std::string digits;
    size_t at = 0, group = 0;
    bool grouped = false;
    for (; at < text.size() && (isDigit(text[at]) || text[at] == ','); ++at) {
        if (text[at] != ',') {
            digits += text[at];
            ++group;
            continue;
        }
        if (group == 0 || group > 3 || (grouped && group != 3))
            return std::nullopt;
        grouped = true;
        group = 0;
    }
    if (grouped && group != 3)
        return std::nullopt;
    const bool whole = !digits.empty();
    size_t decimals = 0;
    if (at < text.size() && text[at] == '.') {
        for (digits += text[at++]; at < text.size() && isDigit(text[at]); ++at, ++decimals)
            digits += text[at];
    }
    if (!whole && decimals == 0)
        return std::nullopt;
    exponent = at < text.size() && (text[at] == 'e' || text[at] == 'E');
    if (exponent) {
        digits += 'e';
        at += at + 1 < text.size() && text[at + 1] == '+' ? 2 : 1;
        digits.append(text.substr(at));
    } else if (at != text.size()) {
        return std::nullopt;
    }
    return numberFrom(digits);
}

std::optional<CsvValue> asNumber(std::string_view text)
{
    bool negative = false;
    if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
        negative = true;
        text = text.substr(1, text.size() - 2);
    } else if (text.front() == '-' || text.front() == '+') {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const bool dollars = text.starts_with('$');
    if (dollars)
        text.remove_prefix(1);
    const bool percent = !dollars && text.ends_with('%');
    if (percent)
        text = trimmed(text.substr(0, text.size() - 1));
    bool exponent = false;
    const std::optional<double> number = plainNumber(text, exponent);
    if (!number || (exponent && (dollars || percent)))
        return std::nullopt;
    CsvValue value;
    value.number = (negative ? -*number : *number) / (percent ? 100 : 1);
    if (dollars)
        value.format = u"\"$\"#,##0.00;[Red]-\"$\"#,##0.00";
    else if (percent)
        value.format = u"0.00%";
    else if (exponent)
        value.format = u"0.00E+00";
    return value;
}

/// "1 1/2"
std::optional<CsvValue> asFraction(std::string_view text)
{
    Reading reading(text);
    const bool negative = reading.take('-');
    const std::optional<int> whole = reading.number(9);
    if (!whole || !reading.takeBlanks())
        return std::nullopt;
    size_t digits = 0;
    const std::optional<int> above = reading.number(3);
    if (!above || !reading.take('/'))
        return std::nullopt;
    const std::optional<int> below = reading.number(3, &digits);
    if (!below || *below == 0 || !reading.atEnd())
        return std::nullopt;
    static constexpr const char16_t* formats[] = {u"# ?/?", u"# ?\?/?\?", u"# ?\?\?/?\?\?"};
    CsvValue value;
    value.number = (*whole + double(*above) / *below) * (negative ? -1 : 1);
    value.format = formats[digits - 1];
    return value;
}

/// 1 to 12 for a month's name or its first three letters.
std::optional<int> monthFrom(std::string_view word)
{
    static constexpr std::array<std::string_view, 12> names{"january",   "february", "march",    "april",
                                                            "may",       "june",     "july",     "august",
                                                            "september", "october",  "november", "december"};
    for (size_t i = 0; i < names.size(); ++i) {
        if (equalsIgnoringCase(word, names[i]) || equalsIgnoringCase(word, names[i].substr(0, 3)))
            return static_cast<int>(i) + 1;
    }
    return std::nullopt;
}

/// Two digits are a year from 1930 to 2029.
std::optional<int> yearFrom(Reading& reading)
{
    size_t digits = 0;
    const std::optional<int> year = reading.number(4, &digits);
    if (!year || digits == 3)
        return std::nullopt;
    return digits > 2 ? *year : *year + (*year < 30 ? 2000 : 1900);
}

struct Day
{
    int year = 0, month = 0, day = 0;
    enum class Form { Iso, Customary, NoYear } form = Form::Customary;
};

/// "11/24/2026", "11/24"
std::optional<Day> slashedDay(Reading& reading, int thisYear)
{
    const std::optional<int> month = reading.number(2);
    if (!month || !reading.take('/'))
        return std::nullopt;
    const std::optional<int> day = reading.number(2);
    if (!day)
        return std::nullopt;
    if (!reading.take('/'))
        return Day{thisYear, *month, *day, Day::Form::Customary};
    const std::optional<int> year = yearFrom(reading);
    return year ? std::optional(Day{*year, *month, *day, Day::Form::Customary}) : std::nullopt;
}

/// "2026-11-24", "24-Nov-2026", "24-Nov"
std::optional<Day> dashedDay(Reading& reading, int thisYear)
{
    Reading asYear = reading;
    const std::optional<int> year = yearFrom(asYear);
    const std::optional<int> first = reading.number(4);
    if (!first || !reading.take('-'))
        return std::nullopt;
    if (const std::optional<int> month = monthFrom(reading.letters())) {
        if (!reading.take('-'))
            return Day{thisYear, *month, *first, Day::Form::NoYear};
        const std::optional<int> end = yearFrom(reading);
        return end ? std::optional(Day{*end, *month, *first, Day::Form::Customary}) : std::nullopt;
    }
    const std::optional<int> month = reading.number(2);
    if (!month || !reading.take('-'))
        return std::nullopt;
    size_t digits = 0;
    const std::optional<int> day = reading.number(2, &digits);
    // "1-2-2026" would have to be guessed.
    return day && year ? std::optional(Day{*year, *month, *day, Day::Form::Iso}) : std::nullopt;
}

/// "Nov 24, 2026", "November 24", "Nov-2026"
std::optional<Day> wordedDay(Reading& reading, int thisYear)
{
    const std::optional<int> month = monthFrom(reading.letters());
    if (!month)
        return std::nullopt;
    if (reading.take('-')) {
        const std::optional<int> year = yearFrom(reading);
        return year ? std::optional(Day{*year, *month, 1, Day::Form::Customary}) : std::nullopt;
    }
    if (!reading.takeBlanks())
        return std::nullopt;
    const std::optional<int> day = reading.number(2);
    if (!day)
        return std::nullopt;
    reading.take(',');
    if (!reading.takeBlanks())
        return Day{thisYear, *month, *day, Day::Form::Customary};
    const std::optional<int> year = yearFrom(reading);
    return year ? std::optional(Day{*year, *month, *day, Day::Form::Customary}) : std::nullopt;
}

struct Time
{
    double days = 0;
    bool fraction = false;
    bool overDay = false;
};

/// "10:30", "10:30:15.25", "1:05 PM", "1 AM"; must take all that is left.
std::optional<Time> timeFrom(Reading reading)
{
    const std::optional<int> hours = reading.number(4);
    if (!hours)
        return std::nullopt;
    int hour = *hours, minute = 0;
    double second = 0;
    bool clock = false, fraction = false;
    if (reading.take(':')) {
        clock = true;
        const std::optional<int> minutes = reading.number(2);
        if (!minutes || *minutes > 59)
            return std::nullopt;
        minute = *minutes;
        if (reading.take(':')) {
            const std::string_view text = reading.rest();
            const size_t end = std::min(text.find_first_not_of("0123456789."), text.size());
            const std::optional<double> seconds = numberFrom(text.substr(0, end));
            if (!seconds || *seconds >= 60 || !isDigit(text.front()))
                return std::nullopt;
            second = *seconds;
            fraction = text.substr(0, end).find('.') != std::string_view::npos;
            reading = Reading(text.substr(end));
        }
    }
    reading.takeBlanks();
    const std::string_view half = reading.letters();
    const bool morning = equalsIgnoringCase(half, "am"), evening = equalsIgnoringCase(half, "pm");
    if (morning || evening) {
        if (hour < 1 || hour > 12)
            return std::nullopt;
        hour = hour % 12 + (evening ? 12 : 0);
    } else if (!clock || !half.empty()) {
        return std::nullopt;
    }
    if (!reading.atEnd())
        return std::nullopt;
    return Time{(hour * 3600 + minute * 60 + second) / 86400, fraction, hour >= 24};
}

std::optional<CsvValue> asTime(std::string_view text)
{
    const std::optional<Time> time = timeFrom(Reading(text));
    if (!time)
        return std::nullopt;
    CsvValue value;
    value.number = time->days;
    value.format = time->overDay ? u"[hh]:mm:ss" : time->fraction ? u"hh:mm:ss.00" : u"hh:mm:ss AM/PM";
    return value;
}

const char16_t* dayFormat(Day::Form form, bool withTime, bool isoMark)
{
    if (isoMark)
        return u"yyyy-mm-dd\"T\"hh:mm:ss";
    if (form == Day::Form::Iso)
        return withTime ? u"yyyy-mm-dd hh:mm:ss" : u"yyyy-mm-dd";
    if (withTime)
        return u"mm/dd/yy hh:mm AM/PM";
    return form == Day::Form::NoYear ? u"d-mmm" : u"mm/dd/yy";
}

std::optional<CsvValue> asDay(std::string_view text, int thisYear)
{
    for (const auto read : {slashedDay, dashedDay, wordedDay}) {
        Reading reading(text);
        const std::optional<Day> day = read(reading, thisYear);
        if (!day)
            continue;
        const std::optional<double> serial = serialFromDay(day->year, day->month, day->day, false);
        if (!serial)
            return std::nullopt;
        CsvValue value;
        value.number = *serial;
        bool withTime = false, isoMark = false;
        if (!reading.atEnd()) {
            isoMark = day->form == Day::Form::Iso && reading.take('T');
            const bool apart = isoMark || reading.takeBlanks();
            const std::optional<Time> time = apart ? timeFrom(reading) : std::nullopt;
            if (!time || time->overDay)
                return std::nullopt;
            value.number += time->days;
            withTime = true;
        }
        value.format = dayFormat(day->form, withTime, isoMark);
        return value;
    }
    return std::nullopt;
}

std::optional<CsvValue> asWord(std::string_view text)
{
    CsvValue value;
    if (equalsIgnoringCase(text, "true") || equalsIgnoringCase(text, "false")) {
        value.kind = CellKind::Boolean;
        value.number = text.size() == 4;
        return value;
    }
    if (text.size() > 1 && text.front() == '=') {
        value.kind = CellKind::Uncomputed;
        return value;
    }
    if (const std::optional<ErrorCode> error = errorFrom(text)) {
        value.kind = CellKind::Error;
        value.error = *error;
        return value;
    }
    return std::nullopt;
}

} // namespace

std::optional<CsvValue> csvValue(std::string_view field, int year)
{
    const std::string_view text = trimmed(field);
    constexpr size_t longest = 40; // of all that is not a text
    if (text.empty())
        return std::nullopt;
    if (const std::optional<CsvValue> word = asWord(text))
        return word;
    if (text.size() > longest)
        return std::nullopt;
    if (const std::optional<CsvValue> number = asNumber(text))
        return number;
    // Nothing else begins otherwise, and most fields are texts.
    if (!isDigit(text.front()) && text.front() != '-' && !monthFrom(text.substr(0, 3)))
        return std::nullopt;
    if (const std::optional<CsvValue> time = asTime(text))
        return time;
    if (const std::optional<CsvValue> day = asDay(text, year))
        return day;
    return asFraction(text);
}

} // namespace lumivane::engine
