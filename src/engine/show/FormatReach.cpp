#include "engine/show/FormatReach.h"

#include "platform/FindQuestion.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

std::optional<double> finiteNumber(const QString& text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> digitsOf(const QString& text)
{
    QString digits;
    for (const QChar c : text) {
        if ((c >= u'0' && c <= u'9') || c == u'.')
            digits += c;
    }
    return finiteNumber(digits);
}

/// A format code without what it writes as it stands.
struct BareCode
{
    QString code;     ///< placeholders, separators and letters of dates
    QString literals; ///< quoted and escaped text, the contents of brackets
};

/// "[h]", "[mm]" and the like count what has passed.
bool isElapsedTime(const QString& inBrackets)
{
    return !inBrackets.isEmpty() && std::all_of(inBrackets.begin(), inBrackets.end(),
                                                [](QChar c) { return u"hms"_s.contains(c, Qt::CaseInsensitive); });
}

BareCode bareCode(const QString& code)
{
    BareCode bare;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code[i];
        const QChar closing = c == u'"' ? u'"' : c == u'[' ? u']' : QChar();
        if (!closing.isNull()) {
            const qsizetype end = code.indexOf(closing, i + 1);
            const QString inside = end < 0 ? code.mid(i + 1) : code.mid(i + 1, end - i - 1);
            (c == u'[' && isElapsedTime(inside) ? bare.code : bare.literals) += inside;
            i = end < 0 ? code.size() : end;
        } else if ((c == u'\\' || c == u'_' || c == u'*') && i + 1 < code.size()) {
            bare.literals += code[++i];
        } else {
            bare.code += c;
        }
    }
    return bare;
}

bool containsAny(const QString& text, QStringView characters)
{
    return std::any_of(text.begin(), text.end(), [&](QChar c) { return characters.contains(c, Qt::CaseInsensitive); });
}

/// Numerals of other scripts: a bracket names them, or its locale tag is longer than a language alone.
bool asksForNumerals(const QString& code)
{
    if (code.contains("dbnum"_L1, Qt::CaseInsensitive) || code.contains("natnum"_L1, Qt::CaseInsensitive))
        return true;
    constexpr qsizetype language = 4;
    for (qsizetype i = code.indexOf("[$"_L1); i >= 0; i = code.indexOf("[$"_L1, i + 1)) {
        const qsizetype end = std::max(code.indexOf(u']', i), i);
        const QString content = code.mid(i, end - i);
        const qsizetype hyphen = content.lastIndexOf(u'-');
        if (content.contains(u',') || (hyphen >= 0 && content.size() - 1 - hyphen > language))
            return true;
    }
    return false;
}

/// Codes that show names (of months, days, halves of the day) or another format altogether.
bool showsNames(const QString& code)
{
    for (const auto name : {"mmm"_L1, "ddd"_L1, "aaa"_L1, "am/pm"_L1, "a/p"_L1, "general"_L1, "[$-f"_L1, "[$-x"_L1}) {
        if (code.contains(name, Qt::CaseInsensitive))
            return true;
    }
    return containsAny(bareCode(code).code, u"gebt") || asksForNumerals(code);
}

/// A comma behind the last placeholder divides by a thousand.
bool scales(const QString& section)
{
    for (qsizetype i = section.indexOf(u','); i >= 0; i = section.indexOf(u',', i + 1)) {
        if (i + 1 == section.size() || !u"#0?"_s.contains(section[i + 1]))
            return true;
    }
    return false;
}

/// Codes whose digits are those of the number itself, rounded to some decimals: no percents, fractions, exponents,
/// dates, scaling, and no digits of their own.
bool showsPlainDigits(const QString& code)
{
    const BareCode bare = bareCode(code);
    if (containsAny(bare.literals, u"0123456789."))
        return false;
    const QString placeholders = u"#0?,.+-() $\u20ac\u00a3\u00a5"_s;
    const QStringList forNumbers = bare.code.split(u';').mid(0, 3); // the fourth is for texts
    return std::none_of(forNumbers.begin(), forNumbers.end(), [&](const QString& section) {
        return scales(section) ||
               std::any_of(section.begin(), section.end(), [&](QChar c) { return !placeholders.contains(c); });
    });
}

/// A date or time shows the separators of its code, so a text without them is none.
bool lacksSeparators(const QString& code, const QString& sought)
{
    if (containsAny(code, u";["))
        return false;
    QString bare = bareCode(code).code;
    bare.remove(u"am/pm"_s, Qt::CaseInsensitive).remove(u"a/p"_s, Qt::CaseInsensitive);
    const QString separators = u"/:-"_s;
    return containsAny(bare, u"ymdhs") && std::any_of(separators.begin(), separators.end(),
                                                      [&](QChar c) { return bare.contains(c) && !sought.contains(c); });
}

} // namespace

SoughtText::SoughtText(const FindQuestion& question)
    : text(question.what), whole(question.lookAt == LookAt::Whole), anything(!whole && question.what == u"*"),
      number(finiteNumber(text)), digits(digitsOf(text))
{
}

bool SoughtText::hits(const QString& candidate) const
{
    return whole ? candidate.compare(text, Qt::CaseInsensitive) == 0 : candidate.contains(text, Qt::CaseInsensitive);
}

FormatReach formatReach(const QString& code, const SoughtText& sought)
{
    // What cannot be shown in a format is shown as a row of "#".
    if (!sought.whole || sought.text.contains(u'#'))
        return FormatReach::Perhaps;
    // General shows what the plain text shows, which is compared anyway.
    if (code.compare("general"_L1, Qt::CaseInsensitive) == 0)
        return FormatReach::Never;
    if (lacksSeparators(code, sought.text))
        return FormatReach::Never;
    if (!showsNames(code)) {
        const QString always = u"0123456789.,:/+-%()' \u00a0\u202f\u2212Ee"_s;
        const bool possible = std::all_of(sought.text.begin(), sought.text.end(), [&](QChar c) {
            return always.contains(c) || code.contains(c, Qt::CaseInsensitive);
        });
        if (!possible)
            return FormatReach::Never;
    }
    return showsPlainDigits(code) && sought.digits ? FormatReach::NearNumber : FormatReach::Perhaps;
}

} // namespace lumivane::engine
