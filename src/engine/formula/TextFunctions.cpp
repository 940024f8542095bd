#include "engine/content/TextTable.h"
#include "engine/format/NumberFormat.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"
#include "engine/formula/Function.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

constexpr int longest = static_cast<int>(maxCellText);

FormulaValue bounded(const QString& text)
{
    return text.size() > longest ? FormulaValue(ErrorCode::Value) : FormulaValue(text);
}

/// A count or place in a text, without decimals; #VALUE! below a bound. Whatever is larger than any text is as good as
/// the longest.
int position(FunctionCall& call, int place, int least, int otherwise)
{
    if (place >= call.count())
        return otherwise;
    const double number = std::trunc(call.number(place));
    if (!(number >= least))
        call.fail(ErrorCode::Value);
    return static_cast<int>(std::clamp<double>(number, least, longest + 1));
}

FormulaValue left(FunctionCall& call)
{
    return call.text(0).left(position(call, 1, 0, 1));
}

FormulaValue right(FunctionCall& call)
{
    return call.text(0).right(position(call, 1, 0, 1));
}

FormulaValue middle(FunctionCall& call)
{
    return call.text(0).mid(position(call, 1, 1, 1) - 1, position(call, 2, 0, 0));
}

FormulaValue length(FunctionCall& call)
{
    return call.text(0).size();
}

/// Blanks alone; other white space stays.
FormulaValue trim(FunctionCall& call)
{
    return call.text(0).split(u' ', Qt::SkipEmptyParts).join(u' ');
}

FormulaValue clean(FunctionCall& call)
{
    QString text = call.text(0);
    text.removeIf([](QChar letter) { return letter < u' '; });
    return text;
}

FormulaValue upper(FunctionCall& call)
{
    return call.text(0).toUpper();
}

FormulaValue lower(FunctionCall& call)
{
    return call.text(0).toLower();
}

FormulaValue proper(FunctionCall& call)
{
    QString text = call.text(0).toLower();
    bool inWord = false;
    for (QChar& letter : text) {
        if (!inWord)
            letter = letter.toUpper();
        inWord = letter.isLetter();
    }
    return text;
}

FormulaValue exact(FunctionCall& call)
{
    return call.text(0) == call.text(1);
}

FormulaValue found(FunctionCall& call, qsizetype place)
{
    return place < 0 && !call.failure() ? FormulaValue(ErrorCode::Value) : FormulaValue(place + 1);
}

FormulaValue find(FunctionCall& call)
{
    const QString sought = call.text(0), text = call.text(1);
    const int from = position(call, 2, 1, 1) - 1;
    return found(call, from > text.size() ? -1 : text.indexOf(sought, from));
}

FormulaValue search(FunctionCall& call)
{
    const QString sought = call.text(0), text = call.text(1);
    const int from = position(call, 2, 1, 1) - 1;
    if (from > text.size())
        return ErrorCode::Value;
    if (!hasWildcards(sought))
        return found(call, text.indexOf(sought, from, Qt::CaseInsensitive));
    if (!call.evaluation().spend(Evaluation::textSteps(text) * sought.size() / 16))
        return ErrorCode::Value;
    return found(call, findWildcards(text, sought, from));
}

FormulaValue substitute(FunctionCall& call)
{
    QString text = call.text(0);
    const QString old = call.text(1), replacement = call.text(2);
    const bool all = call.count() < 4;
    const int wanted = position(call, 3, 1, 1);
    if (old.isEmpty() || call.failure())
        return text;
    if (all) {
        const qint64 growth = text.count(old) * (replacement.size() - old.size());
        return text.size() + growth > longest ? FormulaValue(ErrorCode::Value) : text.replace(old, replacement);
    }
    qsizetype at = text.indexOf(old);
    for (int count = 1; at >= 0 && count < wanted; ++count)
        at = text.indexOf(old, at + old.size());
    return at < 0 ? FormulaValue(text) : bounded(text.replace(at, old.size(), replacement));
}

FormulaValue replace(FunctionCall& call)
{
    const QString text = call.text(0);
    const int start = position(call, 1, 1, 1) - 1;
    const int count = position(call, 2, 0, 0);
    return bounded(text.left(start) + call.text(3) + text.mid(std::min<qsizetype>(start + count, text.size())));
}

FormulaValue repeat(FunctionCall& call)
{
    const QString text = call.text(0);
    const int count = position(call, 1, 0, 0);
    return text.size() * count > longest ? FormulaValue(ErrorCode::Value) : text.repeated(count);
}

/// Adds a value to a text while the text is no longer than a cell's.
bool append(FunctionCall& call, QString& text, const FormulaValue& value, const QString& delimiter)
{
    text += delimiter + call.textOf(value);
    if (text.size() > longest)
        call.fail(ErrorCode::Value);
    return !call.failure();
}

FormulaValue concatenate(FunctionCall& call)
{
    QString text;
    call.eachValue(0, FormulaCells::Texts::Needed,
                   [&](const FormulaValue& value, bool) { return append(call, text, value, QString()); });
    return text;
}

FormulaValue join(FunctionCall& call)
{
    const QString delimiter = call.text(0);
    const bool skipEmpty = call.boolean(1);
    QString text;
    bool first = true;
    const auto add = [&](const FormulaValue& value) {
        const bool empty = value.isBlank() || (value.isText() && value.text().isEmpty());
        if (empty && skipEmpty)
            return true;
        const bool fits = append(call, text, value, first ? QString() : delimiter);
        first = false;
        return fits;
    };
    for (int place = 2; place < call.count() && !call.failure(); ++place) {
        if (skipEmpty) {
            call.eachValueOf(place, FormulaCells::Texts::Needed,
                             [&](const FormulaValue& value, bool) { return add(value); });
            continue;
        }
        const FormulaValue all = call.evaluation().arrayOf(call.value(place));
        for (const FormulaValue& value : all.array().values) {
            if (!add(value))
                break;
        }
    }
    return text;
}

FormulaValue format(FunctionCall& call)
{
    const FormulaValue value = call.evaluation().oneOf(call.value(0));
    const QString code = call.text(1);
    if (value.isError() || code.isEmpty())
        return value.isError() ? value : QString();
    const NumberFormat format(code);
    const FormulaValue number = asNumber(value, call.evaluation().date1904());
    if (value.isBoolean() || !number.isNumber())
        return format.text(call.textOf(value)).text;
    const FormattedText shown = format.number(number.number(), call.evaluation().date1904());
    if (shown.isError) // no such day, or no section for the number
        return format.isDate() ? FormulaValue(ErrorCode::Value) : plainValueText(number.number());
    return bounded(shown.text);
}

FormulaValue value(FunctionCall& call)
{
    return call.number(0);
}

FormulaValue textAlone(FunctionCall& call)
{
    const FormulaValue& value = call.value(0);
    return value.isText() || value.isError() ? value : FormulaValue(QString());
}

/// The characters of Windows' western code page, which differ from Unicode's first 256 from 128 to 159.
constexpr char16_t westernCharacters[]{
    0x20ac, 0x81,   0x201a, 0x192,  0x201e, 0x2026, 0x2020, 0x2021, 0x2c6,  0x2030, 0x160,
    0x2039, 0x152,  0x8d,   0x17d,  0x8f,   0x90,   0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x2dc,  0x2122, 0x161,  0x203a, 0x153,  0x9d,   0x17e,  0x178,
};

FormulaValue character(FunctionCall& call)
{
    const double number = std::trunc(call.number(0));
    if (!(number >= 1 && number <= 255))
        return ErrorCode::Value;
    const auto code = static_cast<char16_t>(number);
    return QString(QChar(code >= 128 && code < 160 ? westernCharacters[code - 128] : code));
}

FormulaValue code(FunctionCall& call)
{
    const QString text = call.text(0);
    if (text.isEmpty())
        return ErrorCode::Value;
    const char16_t first = text[0].unicode();
    const auto western = std::find(std::begin(westernCharacters), std::end(westernCharacters), first);
    if (western != std::end(westernCharacters))
        return 128 + (western - std::begin(westernCharacters));
    return first < 256 ? first : u'?';
}

FormulaValue unicodeCharacter(FunctionCall& call)
{
    const double number = std::trunc(call.number(0));
    const bool surrogate = number >= 0xd800 && number < 0xe000;
    if (!(number >= 1 && number <= 0x10ffff) || surrogate)
        return ErrorCode::Value;
    const auto code = static_cast<char32_t>(number);
    return QString::fromUcs4(&code, 1);
}

FormulaValue unicode(FunctionCall& call)
{
    const QString text = call.text(0);
    return text.isEmpty() ? FormulaValue(ErrorCode::Value) : FormulaValue(text.left(2).toUcs4().front());
}

constexpr Function functions[]{
    {"LEFT", 1, 2, "v", left},
    {"RIGHT", 1, 2, "v", right},
    {"MID", 3, 3, "v", middle},
    {"LEN", 1, 1, "v", length},
    {"TRIM", 1, 1, "v", trim},
    {"CLEAN", 1, 1, "v", clean},
    {"UPPER", 1, 1, "v", upper},
    {"LOWER", 1, 1, "v", lower},
    {"PROPER", 1, 1, "v", proper},
    {"EXACT", 2, 2, "v", exact},
    {"FIND", 2, 3, "v", find},
    {"SEARCH", 2, 3, "v", search},
    {"SUBSTITUTE", 3, 4, "v", substitute},
    {"REPLACE", 4, 4, "v", replace},
    {"REPT", 2, 2, "v", repeat},
    {"CONCATENATE", 1, Function::many, "v", concatenate},
    {"CONCAT", 1, Function::many, "m", concatenate},
    {"TEXTJOIN", 3, Function::many, "vvm", join},
    {"TEXT", 2, 2, "v", format},
    {"VALUE", 1, 1, "v", value},
    {"T", 1, 1, "v", textAlone},
    {"CHAR", 1, 1, "v", character},
    {"CODE", 1, 1, "v", code},
    {"UNICHAR", 1, 1, "v", unicodeCharacter},
    {"UNICODE", 1, 1, "v", unicode},
};

} // namespace

std::span<const Function> textFunctions()
{
    return functions;
}

} // namespace lumivane::engine
