#pragma once

#include "engine/format/FormatNumerals.h"

#include <QString>
#include <optional>
#include <vector>

// A number format code taken apart.

namespace lumivane::engine {

enum class PartKind : quint8 {
    Literal, ///< `text` as it is
    Digit,   ///< `letter` is 0, # or ?
    Point,
    Slash,    ///< of a fraction
    Exponent, ///< `letter` is + or -
    TextPlace,
    General,
    Fill, ///< `letter` repeated to the width of the cell
    // Dates and times; `count` is the number of letters.
    Year,
    BuddhistYear,
    Era,     ///< name of an emperor's reign
    EraYear, ///< year of it
    Month,
    Day,
    Hour,
    Minute,
    Second,
    SecondFraction, ///< point and `count` digits
    AmPm,           ///< `text` is the code, "AM/PM" or "a/p"
    ElapsedHours,
    ElapsedMinutes,
    ElapsedSeconds,
};

struct FormatPart
{
    PartKind kind = PartKind::Literal;
    QString text;
    QChar letter;
    int count = 0;
};

struct FormatCondition
{
    enum Comparison { Less, LessEqual, Greater, GreaterEqual, Equal, NotEqual };
    Comparison comparison = GreaterEqual;
    double limit = 0;

    bool holds(double value) const;
    /// No number above zero fulfils it, so that the section itself says what is negative.
    bool onlyNegative() const;
};

struct FormatSection
{
    std::vector<FormatPart> parts;
    std::optional<FormatCondition> condition;
    std::optional<quint32> color;
    int locale = 0; ///< language identifier of a tag, 0 for none
    Numerals numerals;
    bool isDate = false;
    bool hasText = false;
    bool hasGeneral = false;
    bool thousands = false; ///< digits in groups of three
    int powerOfTen = 0;     ///< from percent signs and scaling commas

    bool hasDigits() const;
    bool isFraction() const;
};

/// The sections of a code, at least one; none when the code cannot be understood.
std::optional<std::vector<FormatSection>> parseFormatCode(const QString& code);

} // namespace lumivane::engine
