#include "engine/formula/Coercion.h"

#include "engine/content/DateSerial.h"
#include "engine/format/NumberFormat.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

constexpr qsizetype longestNumber = 64;

std::optional<double> plainNumber(QStringView text)
{
    static const QRegularExpression pattern(
        uR"(^([-+]?)[ ]*\$?(\d{1,3}(?:,\d{3})+(?:\.\d*)?|\d+\.?\d*|\.\d+)(E[-+]?\d+)?[ ]*(%?)$)"_s,
        QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const double value = QString(match.captured(2).remove(u',') + match.captured(3)).toDouble();
    return (match.captured(1) == u"-" ? -value : value) / (match.capturedLength(4) ? 100 : 1);
}

std::optional<double> timeOfDay(QStringView text)
{
    static const QRegularExpression pattern(uR"(^(\d{1,4}):(\d{1,2})(?::(\d{1,2}(?:\.\d+)?))?(?: *([AP])M?)?$)"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    double hours = match.captured(1).toInt();
    const int minutes = match.captured(2).toInt();
    const double seconds = match.captured(3).toDouble();
    const bool halfDays = match.capturedLength(4) > 0;
    if (minutes > 59 || seconds >= 60 || (halfDays && (hours < 1 || hours > 12)))
        return std::nullopt;
    if (halfDays)
        hours = std::fmod(hours, 12) + (match.captured(4).toUpper() == u"P" ? 12 : 0);
    return (hours * 3600 + minutes * 60 + seconds) / 86400;
}

int monthNamed(QStringView name)
{
    static const QStringList months{u"jan"_s, u"feb"_s, u"mar"_s, u"apr"_s, u"may"_s, u"jun"_s,
                                    u"jul"_s, u"aug"_s, u"sep"_s, u"oct"_s, u"nov"_s, u"dec"_s};
    return static_cast<int>(months.indexOf(name.left(3).toString().toLower())) + 1;
}

std::optional<double> dayOf(QStringView text, bool date1904)
{
    static const QRegularExpression yearFirst(uR"(^(\d{4})[-/](\d{1,2})[-/](\d{1,2})$)"_s);
    static const QRegularExpression monthFirst(uR"(^(\d{1,2})[-/](\d{1,2})[-/](\d{4}|\d{2})$)"_s);
    static const QRegularExpression monthByName(uR"(^(\d{1,2})[- ]([a-z]{3,9})[- ,]+(\d{4}|\d{2})$)"_s,
                                                QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression nameFirst(uR"(^([a-z]{3,9}) (\d{1,2}), *(\d{4})$)"_s,
                                              QRegularExpression::CaseInsensitiveOption);
    int year = 0, month = 0, day = 0;
    if (auto match = yearFirst.match(text); match.hasMatch()) {
        year = match.captured(1).toInt();
        month = match.captured(2).toInt();
        day = match.captured(3).toInt();
    } else if (match = monthFirst.match(text); match.hasMatch()) {
        month = match.captured(1).toInt();
        day = match.captured(2).toInt();
        year = match.captured(3).toInt();
    } else if (match = monthByName.match(text); match.hasMatch()) {
        day = match.captured(1).toInt();
        month = monthNamed(match.captured(2));
        year = match.captured(3).toInt();
    } else if (match = nameFirst.match(text); match.hasMatch()) {
        month = monthNamed(match.captured(1));
        day = match.captured(2).toInt();
        year = match.captured(3).toInt();
    }
    // Years of two digits are those from 1930 to 2029.
    if (year < 100)
        year += year < 30 ? 2000 : 1900;
    return month ? serialFromDay(year, month, day, date1904) : std::nullopt;
}

} // namespace

std::optional<double> numberFromText(QStringView text, bool date1904)
{
    const QStringView trimmed = text.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > longestNumber)
        return std::nullopt;
    // Most texts of a sheet are words.
    if (std::none_of(trimmed.begin(), trimmed.end(), [](QChar letter) { return letter >= u'0' && letter <= u'9'; }))
        return std::nullopt;
    if (const auto number = plainNumber(trimmed))
        return std::isfinite(*number) ? number : std::nullopt;
    if (const auto time = timeOfDay(trimmed))
        return time;
    if (const auto day = dayOf(trimmed, date1904))
        return day;
    const qsizetype blank = trimmed.indexOf(u' ');
    const qsizetype letter = trimmed.indexOf(u'T');
    const qsizetype border = letter > 0 ? letter : blank;
    if (border > 0) {
        const auto day = dayOf(trimmed.left(border), date1904);
        const auto time = timeOfDay(trimmed.mid(border + 1).trimmed());
        if (day && time)
            return *day + *time;
    }
    return std::nullopt;
}

FormulaValue asNumber(const FormulaValue& value, bool date1904)
{
    switch (value.kind()) {
    case FormulaValue::Kind::Blank:
        return 0;
    case FormulaValue::Kind::Number:
    case FormulaValue::Kind::Error:
        return value;
    case FormulaValue::Kind::Boolean:
        return value.boolean() ? 1 : 0;
    case FormulaValue::Kind::Text:
        if (const auto number = numberFromText(value.text(), date1904))
            return *number;
        break;
    default:
        break;
    }
    return ErrorCode::Value;
}

FormulaValue asText(const FormulaValue& value)
{
    switch (value.kind()) {
    case FormulaValue::Kind::Blank:
        return QString();
    case FormulaValue::Kind::Number:
        return plainValueText(value.number());
    case FormulaValue::Kind::Boolean:
        return value.boolean() ? u"TRUE"_s : u"FALSE"_s;
    case FormulaValue::Kind::Text:
    case FormulaValue::Kind::Error:
        return value;
    default:
        return ErrorCode::Value;
    }
}

FormulaValue asBoolean(const FormulaValue& value)
{
    switch (value.kind()) {
    case FormulaValue::Kind::Blank:
        return false;
    case FormulaValue::Kind::Number:
        return value.number() != 0;
    case FormulaValue::Kind::Boolean:
    case FormulaValue::Kind::Error:
        return value;
    case FormulaValue::Kind::Text:
        if (value.text().compare(u"TRUE", Qt::CaseInsensitive) == 0)
            return true;
        if (value.text().compare(u"FALSE", Qt::CaseInsensitive) == 0)
            return false;
        break;
    default:
        break;
    }
    return ErrorCode::Value;
}

/// 48 of the 53 binary digits of a number are somewhat more than 14 decimal ones.
constexpr int binaryDigits = 48;

bool sameNumber(double a, double b)
{
    return a == b || std::abs(a - b) < std::ldexp(std::abs(a), -binaryDigits);
}

double significant(double number)
{
    int exponent = 0;
    const double digits = std::frexp(number, &exponent);
    return std::ldexp(std::round(std::ldexp(digits, binaryDigits)), exponent - binaryDigits);
}

double sum15(double a, double b)
{
    const double sum = a + b;
    const bool cancelled = (a < 0) != (b < 0) && a != 0 && b != 0;
    return cancelled && sameNumber(a, -b) ? 0 : sum;
}

int compareValues(const FormulaValue& a, const FormulaValue& b)
{
    using Kind = FormulaValue::Kind;
    const auto zeroLike = [](const FormulaValue& other) -> FormulaValue {
        if (other.isText())
            return QString();
        if (other.isBoolean())
            return false;
        return 0;
    };
    if (a.isBlank())
        return b.isBlank() ? 0 : compareValues(zeroLike(b), b);
    if (b.isBlank())
        return compareValues(a, zeroLike(a));
    if (a.kind() != b.kind())
        return a.kind() < b.kind() ? -1 : 1;
    if (a.kind() == Kind::Text)
        return a.text().compare(b.text(), Qt::CaseInsensitive);
    if (a.kind() == Kind::Boolean)
        return int(a.boolean()) - int(b.boolean());
    if (a.kind() != Kind::Number || sameNumber(a.number(), b.number()))
        return 0;
    return a.number() < b.number() ? -1 : 1;
}

} // namespace lumivane::engine
