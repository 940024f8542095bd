#pragma once

#include <QByteArray>
#include <array>

namespace lumivane::engine {

/// A number as people see it: its 15 significant decimal digits, without a sign. Everything that is shown is rounded
/// from these, halves away from zero, so that 2.675 shows as 2.68 although its binary value lies below.
class Decimal
{
public:
    explicit Decimal(double value);

    bool isZero() const { return m_count == 0; }
    /// The power of ten of the first digit: 2 for 123, -1 for 0.5; 0 for zero.
    int exponent() const { return isZero() ? 0 : m_point - 1; }
    int significantDigits() const { return m_count; }
    /// Multiplies by a power of ten.
    void shift(int powerOfTen) { m_point += isZero() ? 0 : powerOfTen; }
    /// Keeps so many digits behind the point; below 0 rounds in front of it.
    void round(int decimals) { keep(m_point + decimals); }

    /// Digits in front of the point without leading zeros; empty below 1.
    QByteArray integerDigits() const;
    /// Exactly `count` digits behind the point.
    QByteArray decimalDigits(int count) const;

private:
    void keep(int digits);

    void dropZeros();

    // No memory is asked for here, since a find formats every number of a sheet.
    std::array<char, 24> m_digits; ///< without zeros at either end
    int m_count = 0;
    int m_point = 0; ///< the value is 0.digits times ten to this power
};

} // namespace lumivane::engine
