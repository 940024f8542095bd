#include "engine/format/FormatNumerals.h"

#include <algorithm>
#include <iterator>

namespace lumivane::engine {

struct NumeralScript
{
    int number;    ///< in locale tags
    char16_t zero; ///< the other digits follow it; 0: `digits` has all ten
    const char16_t* digits = nullptr;
    const char16_t* units = nullptr; ///< 10, 100, 1000, 10^4, 10^8, 10^12; null: numbers are not counted in words
    bool zeroInside = false;         ///< "one thousand zero five"
    bool oneBefore = true;           ///< "one hundred", not "hundred"; 10^4 and more always have it
};

namespace {

constexpr char16_t wideZero = 0xff10;
constexpr int arabic = 0x01; // language
constexpr int arabicDigits = 0x02, persianDigits = 0x03;
constexpr int japanese = 0x1b, simplified = 0x1e, traditional = 0x21, korean = 0x24; // the first of each

const NumeralScript scripts[] = {
    {arabicDigits, 0x0660},
    {persianDigits, 0x06f0},
    {0x04, 0x0966}, // Devanagari
    {0x05, 0x09e6}, // Bengali
    {0x06, 0x0a66}, // Gurmukhi
    {0x07, 0x0ae6}, // Gujarati
    {0x08, 0x0b66}, // Odia
    {0x09, 0x0be6}, // Tamil
    {0x0a, 0x0c66}, // Telugu
    {0x0b, 0x0ce6}, // Kannada
    {0x0c, 0x0d66}, // Malayalam
    {0x0d, 0x0e50}, // Thai
    {0x0e, 0x0ed0}, // Lao
    {0x0f, 0x0f20}, // Tibetan
    {0x10, 0x1040}, // Burmese
    {0x12, 0x17e0}, // Khmer
    {0x13, 0x1810}, // Mongolian
    {japanese, 0, u"〇一二三四五六七八九", u"十百千万億兆", false, false},
    {japanese + 1, 0, u"〇壱弐参四伍六七八九", u"拾百阡萬億兆"},
    {japanese + 2, wideZero, nullptr, u"十百千万億兆", false, false},
    {simplified, 0, u"〇一二三四五六七八九", u"十百千万亿兆", true},
    {simplified + 1, 0, u"零壹贰叁肆伍陆柒捌玖", u"拾佰仟万亿兆", true},
    {simplified + 2, wideZero, nullptr, u"十百千万亿兆", true},
    {traditional, 0, u"〇一二三四五六七八九", u"十百千萬億兆", true},
    {traditional + 1, 0, u"零壹貳參肆伍陸柒捌玖", u"拾佰仟萬億兆", true},
    {traditional + 2, wideZero, nullptr, u"十百千萬億兆", true},
    {korean, 0, u"〇一二三四五六七八九", u"十百千万億兆"},
    {korean + 1, 0, u"零壹貳參四伍六七八九", u"拾百阡萬億兆"},
    {korean + 2, wideZero, nullptr, u"十百千万億兆"},
    {korean + 3, 0, u"영일이삼사오육칠팔구", u"십백천만억조"},
};

int primaryLanguage(int languageId)
{
    return languageId & 0x3ff;
}

/// The first of a language's scripts that count in words; Chinese for other languages.
int firstCounting(int languageId)
{
    switch (primaryLanguage(languageId)) {
    case 0x11:
        return japanese;
    case 0x12:
        return korean;
    default:
        const bool isTraditional = languageId == 0x404 || languageId == 0xc04 || languageId == 0x1404;
        return isTraditional ? traditional : simplified;
    }
}

/// Of languages that have digits of their own and do not count in words; 0 for others.
int nativeScript(int languageId)
{
    static constexpr std::pair<int, int> native[] = {
        {0x01, 0x02}, {0x29, 0x03}, {0x20, 0x03}, {0x39, 0x04}, {0x4e, 0x04}, {0x61, 0x04}, {0x45, 0x05},
        {0x46, 0x06}, {0x47, 0x07}, {0x48, 0x08}, {0x49, 0x09}, {0x4a, 0x0a}, {0x4b, 0x0b}, {0x4c, 0x0c},
        {0x1e, 0x0d}, {0x54, 0x0e}, {0x51, 0x0f}, {0x55, 0x10}, {0x53, 0x12}};
    const auto place = std::find_if(std::begin(native), std::end(native),
                                    [&](const auto& entry) { return entry.first == primaryLanguage(languageId); });
    return place == std::end(native) ? 0 : place->second;
}

bool isCountingLanguage(int languageId)
{
    const int language = primaryLanguage(languageId);
    return language == 0x04 || language == 0x11 || language == 0x12;
}

} // namespace

Numerals::Numerals(int number, bool counts)
{
    const auto place = std::find_if(std::begin(scripts), std::end(scripts),
                                    [&](const NumeralScript& script) { return script.number == number; });
    if (place != std::end(scripts))
        m_script = place;
    m_counts = counts && m_script && m_script->units;
}

Numerals Numerals::tagged(int number, int languageId)
{
    // In Arabic the number of the Persian digits gives its own ones.
    if (number == persianDigits && primaryLanguage(languageId) == arabic)
        number = arabicDigits;
    return Numerals(number, true);
}

Numerals Numerals::dbNum(int kind, int languageId)
{
    const int first = firstCounting(languageId);
    if (kind < 1 || kind > (first == korean ? 4 : 3))
        return {};
    return Numerals(first + kind - 1, true);
}

Numerals Numerals::natNum(int kind, int languageId)
{
    if (!isCountingLanguage(languageId))
        return kind == 1 ? Numerals(nativeScript(languageId), false) : Numerals();
    // By kind: which of the language's scripts, and whether it counts in words.
    static constexpr std::pair<int, bool> kinds[] = {{0, false}, {1, false}, {2, false}, {3, false},
                                                     {1, true},  {2, true},  {3, true},  {1, true},
                                                     {2, true},  {4, false}, {4, true},  {4, true}};
    if (kind < 1 || kind >= static_cast<int>(std::size(kinds)))
        return {};
    const auto [script, counts] = kinds[kind];
    const int first = firstCounting(languageId);
    return script == 4 && first != korean ? Numerals() : Numerals(first + script - 1, counts);
}

QChar Numerals::scriptDigit(QChar common) const
{
    const int value = common.unicode() - u'0';
    if (value < 0 || value > 9)
        return common;
    return QChar(m_script->zero ? static_cast<char16_t>(m_script->zero + value) : m_script->digits[value]);
}

QString Numerals::digits(const QString& common) const
{
    if (!m_script)
        return common;
    QString result;
    for (const QChar c : common)
        result += digit(c);
    return result;
}

QString Numerals::general(const QString& common) const
{
    if (!m_counts || common.contains(u'E'))
        return digits(common);
    const qsizetype point = common.indexOf(u'.');
    return counted(common.left(point), true) + (point < 0 ? QString() : digits(common.mid(point)));
}

QString Numerals::datePart(const QString& common) const
{
    return m_counts && !common.startsWith(u'0') ? counted(common, false) : digits(common);
}

QString Numerals::counted(const QString& whole, bool oneBeforeTen) const
{
    constexpr qsizetype most = 16; // digits for which there are words
    if (whole.size() > most || whole == u"0")
        return digits(whole);
    QString result;
    bool zeroBefore = false, inGroup = false; // groups of four digits
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const qsizetype place = whole.size() - 1 - i;
        const qsizetype unit = place % 4;
        if (whole[i] == u'0') {
            zeroBefore = !result.isEmpty();
        } else {
            if (zeroBefore && m_script->zeroInside)
                result += digit(u'0');
            zeroBefore = false;
            inGroup = true;
            const bool withoutOne =
                unit > 0 && whole[i] == u'1' && (!m_script->oneBefore || (!oneBeforeTen && whole.size() == 2));
            if (!withoutOne)
                result += digit(whole[i]);
            if (unit > 0)
                result += QChar(m_script->units[unit - 1]);
        }
        if (unit == 0 && place > 0 && inGroup) {
            result += QChar(m_script->units[2 + place / 4]);
            inGroup = zeroBefore = false;
        }
    }
    return result;
}

} // namespace lumivane::engine
