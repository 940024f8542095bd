#pragma once

#include <QString>
#include <memory>
#include <optional>

namespace lumivane::engine {

/// A text as a number format gives it, before it is fitted into a cell.
struct FormattedText
{
    QString text;
    std::optional<quint32> color; ///< of a section such as [Red], 0xffRRGGBB
    int fillPosition = -1;        ///< where a `*x` repeats `fill` to the cell's width; -1: nowhere
    QChar fill;
    bool isError = false;   ///< the value cannot be shown in this format (a negative date): "####" whatever the width
    bool isGeneral = false; ///< the section holds General: fewer digits may be asked for to fit the width
};

/// A number format code made ready: up to four sections with conditions, colours, digits, fractions, exponents, dates,
/// elapsed time, locale tags, text placeholders. Never fails: a code that cannot be understood shows as General.
class NumberFormat
{
public:
    /// Digits that General shows where no width limits it.
    static constexpr int unlimited = 100;

    explicit NumberFormat(const QString& code);
    ~NumberFormat();
    NumberFormat(NumberFormat&&) noexcept;

    /// `generalChars` bounds the characters that General takes in the text.
    FormattedText number(double value, bool date1904, int generalChars = unlimited) const;
    FormattedText text(const QString& value) const;
    bool isGeneral() const;
    bool isDate() const; ///< the first section shows a date or time
    bool isText() const; ///< "@"

private:
    struct Sections;
    std::unique_ptr<Sections> m_sections;
};

/// General with as many significant digits as fit into `maxChars` characters (11 is the customary most). The sign is
/// not counted.
QString generalNumber(double value, int maxChars = 11);
/// The value with up to 15 significant digits, as it is edited: the plain text of a number.
QString plainValueText(double value);

} // namespace lumivane::engine
