#pragma once

#include <QString>

namespace lumivane::engine {

struct NumeralScript;

/// The digits in which a number format shows numbers: the common ones, those of another script, or Chinese, Japanese
/// and Korean ones, which also count in words ("one hundred two ten three").
class Numerals
{
public:
    Numerals() = default; ///< the common ones

    /// By the number that a locale tag has for them; the common ones for unknown numbers.
    static Numerals tagged(int number, int languageId);
    /// Of [DBNum1] to [DBNum4] in a language.
    static Numerals dbNum(int kind, int languageId);
    /// Of [NatNum0] to [NatNum11] in a language.
    static Numerals natNum(int kind, int languageId);

    QChar digit(QChar common) const { return m_script ? scriptDigit(common) : common; } ///< other signs stay
    QString digits(const QString& common) const;  ///< the same for every sign of a text
    QString general(const QString& common) const; ///< a number without a format, counted in words where that is usual
    /// A number of a date, counted in words where that is usual, unless it is written with zeros in front.
    QString datePart(const QString& common) const;

private:
    Numerals(int number, bool counts);
    QChar scriptDigit(QChar common) const;
    QString counted(const QString& whole, bool oneBeforeTen) const;

    const NumeralScript* m_script = nullptr;
    bool m_counts = false;
};

} // namespace lumivane::engine
