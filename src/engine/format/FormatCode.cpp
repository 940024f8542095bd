#include "engine/format/FormatCode.h"

#include "engine/format/FormatLocale.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {

bool FormatCondition::holds(double value) const
{
    switch (comparison) {
    case Less:
        return value < limit;
    case LessEqual:
        return value <= limit;
    case Greater:
        return value > limit;
    case GreaterEqual:
        return value >= limit;
    case Equal:
        return value == limit;
    case NotEqual:
        return value != limit;
    }
    return false;
}

bool FormatCondition::onlyNegative() const
{
    return (comparison == Less || comparison == LessEqual || comparison == Equal) && limit <= 0 &&
           !(comparison == Equal && limit == 0);
}

namespace {

bool holdsKind(const FormatSection& section, PartKind kind)
{
    return std::any_of(section.parts.begin(), section.parts.end(),
                       [&](const FormatPart& part) { return part.kind == kind; });
}

/// Reads one code from left to right into sections.
class FormatCodeReader
{
public:
    explicit FormatCodeReader(const QString& code) : m_code(code) {}

    std::optional<std::vector<FormatSection>> read();

private:
    void readPart();
    void readQuoted();
    bool readBracket();
    void readBracketContent(const QString& content);
    bool readCondition(const QString& content);
    bool readElapsed(const QString& content);
    bool readNumerals(const QString& content);
    void readCurrency(const QString& content);
    bool readThaiDigits();
    bool readAmPm();
    bool readGeneral();
    bool readDateLetters();
    void finishSection();
    void settleNumerals();
    void settleYears();
    void settleMinutes();
    void settleSecondFractions();
    void settleDateSigns();
    void settleCommas();
    void settleSlash();

    void add(FormatPart part) { m_section.parts.push_back(std::move(part)); }
    void addLiteral(const QString& text) { add({PartKind::Literal, text, {}, 0}); }
    bool startsWith(QStringView word) const
    {
        return QStringView(m_code).sliced(m_at).startsWith(word, Qt::CaseInsensitive);
    }

    const QString& m_code;
    qsizetype m_at = 0;
    bool m_understood = true;
    FormatSection m_section;
    // Of the section: what its brackets say of numerals and calendar.
    int m_dbNum = -1, m_natNum = -1, m_calendar = 0;
    std::vector<FormatSection> m_sections;
};

// A comma stays a part of its own until the whole section is known, since what it means depends on what follows it.
const QString& pendingComma()
{
    static const QString comma = u","_s;
    return comma;
}

bool isPendingComma(const FormatPart& part)
{
    return part.kind == PartKind::Literal && part.count == 1 && part.text == pendingComma();
}

std::optional<std::vector<FormatSection>> FormatCodeReader::read()
{
    while (m_at < m_code.size() && m_understood)
        readPart();
    finishSection();
    if (!m_understood || m_sections.size() > 4)
        return {};
    return std::move(m_sections);
}

void FormatCodeReader::readPart()
{
    const QChar c = m_code[m_at];
    if (c == u'"')
        return readQuoted();
    if (c == u'[') {
        m_understood = readBracket();
        return;
    }
    if (c == u'\\' || c == u'_' || c == u'*') {
        const QChar next = m_at + 1 < m_code.size() ? m_code[m_at + 1] : QChar();
        m_at += 2;
        if (next.isNull())
            return;
        if (c == u'*')
            add({PartKind::Fill, {}, next, 0});
        else
            addLiteral(c == u'_' ? u" "_s : QString(next));
        return;
    }
    if (readThaiDigits() || readAmPm() || readGeneral() || readDateLetters())
        return;
    ++m_at;
    if (c == u';')
        return finishSection();
    if (c == u'0' || c == u'#' || c == u'?')
        return add({PartKind::Digit, {}, c, 0});
    if (c == u'.')
        return add({PartKind::Point, {}, c, 0});
    if (c == u',')
        return add({PartKind::Literal, pendingComma(), {}, 1});
    if (c == u'/')
        return add({PartKind::Slash, u"/"_s, {}, 0});
    if (c == u'@') {
        m_section.hasText = true;
        return add({PartKind::TextPlace, {}, {}, 0});
    }
    if (c == u'%')
        m_section.powerOfTen += 2;
    if ((c == u'E' || c == u'e') && m_at < m_code.size() && (m_code[m_at] == u'+' || m_code[m_at] == u'-'))
        return add({PartKind::Exponent, QString(c), m_code[m_at++], 0});
    addLiteral(QString(c));
}

void FormatCodeReader::readQuoted()
{
    const qsizetype end = m_code.indexOf(u'"', m_at + 1);
    addLiteral(m_code.mid(m_at + 1, (end < 0 ? m_code.size() : end) - m_at - 1));
    m_at = end < 0 ? m_code.size() : end + 1;
}

bool FormatCodeReader::readBracket()
{
    const qsizetype end = m_code.indexOf(u']', m_at);
    if (end < 0)
        return false;
    const QString content = m_code.mid(m_at + 1, end - m_at - 1);
    m_at = end + 1;
    readBracketContent(content);
    return true;
}

void FormatCodeReader::readBracketContent(const QString& content)
{
    if (content.isEmpty() || readCondition(content) || readElapsed(content) || readNumerals(content))
        return;
    if (content.startsWith(u'$'))
        return readCurrency(content);
    if (const auto color = formatColor(content))
        m_section.color = color;
}

bool FormatCodeReader::readCondition(const QString& content)
{
    static const std::pair<const char16_t*, FormatCondition::Comparison> signs[] = {
        {u"<=", FormatCondition::LessEqual}, {u">=", FormatCondition::GreaterEqual}, {u"<>", FormatCondition::NotEqual},
        {u"<", FormatCondition::Less},       {u">", FormatCondition::Greater},       {u"=", FormatCondition::Equal}};
    for (const auto& [sign, comparison] : signs) {
        const QStringView word(sign);
        if (!content.startsWith(word))
            continue;
        bool isNumber = false;
        const double limit = QStringView(content).sliced(word.size()).trimmed().toDouble(&isNumber);
        m_understood = isNumber;
        m_section.condition = FormatCondition{comparison, limit};
        return true;
    }
    return false;
}

bool FormatCodeReader::readElapsed(const QString& content)
{
    const QChar letter = content[0].toLower();
    const bool same = std::all_of(content.begin(), content.end(), [&](QChar c) { return c.toLower() == letter; });
    if (!same || (letter != u'h' && letter != u'm' && letter != u's'))
        return false;
    const PartKind kind = letter == u'h'   ? PartKind::ElapsedHours
                          : letter == u'm' ? PartKind::ElapsedMinutes
                                           : PartKind::ElapsedSeconds;
    m_section.isDate = true;
    add({kind, {}, {}, static_cast<int>(content.size())});
    return true;
}

/// "DBNum1" and "NatNum1".
bool FormatCodeReader::readNumerals(const QString& content)
{
    for (const auto& [name, kind] : {std::pair("dbnum"_L1, &m_dbNum), {"natnum"_L1, &m_natNum}}) {
        if (!content.startsWith(name, Qt::CaseInsensitive))
            continue;
        bool isNumber = false;
        const int number = QStringView(content).sliced(name.size()).toInt(&isNumber);
        *kind = isNumber ? number : -1;
        return true;
    }
    return false;
}

void FormatCodeReader::readCurrency(const QString& content)
{
    const LocaleTag tag = readLocaleTag(content.mid(1));
    if (!tag.symbol.isEmpty())
        addLiteral(tag.symbol);
    if (!tag.systemCode.isEmpty()) {
        // The system's own date or time stands in place of whatever code follows in the section.
        const auto sections = parseFormatCode(tag.systemCode);
        m_section.parts = sections->front().parts;
        m_section.isDate = true;
        const qsizetype end = m_code.indexOf(u';', m_at);
        m_at = end < 0 ? m_code.size() : end;
        return;
    }
    if (tag.language != 0)
        m_section.locale = tag.language;
    if (tag.calendar != 0)
        m_calendar = tag.calendar;
    if (tag.numerals != 0)
        m_section.numerals = Numerals::tagged(tag.numerals, tag.language);
}

/// A "t" in front of a section asks for Thai digits.
bool FormatCodeReader::readThaiDigits()
{
    constexpr int thai = 0x0d;
    if (m_code[m_at].toLower() != u't' || !m_section.parts.empty() || m_at + 1 == m_code.size() ||
        !QStringView(u"0#?.(-dmyhsbDMYHSB").contains(m_code[m_at + 1]))
        return false;
    m_section.numerals = Numerals::tagged(thai, 0);
    ++m_at;
    return true;
}

bool FormatCodeReader::readAmPm()
{
    for (const QStringView word : {QStringView(u"AM/PM"), QStringView(u"A/P")}) {
        if (!startsWith(word))
            continue;
        add({PartKind::AmPm, m_code.mid(m_at, word.size()), {}, 0});
        m_section.isDate = true;
        m_at += word.size();
        return true;
    }
    return false;
}

bool FormatCodeReader::readGeneral()
{
    const QStringView word = u"General";
    if (!startsWith(word))
        return false;
    add({PartKind::General, {}, {}, 0});
    m_section.hasGeneral = true;
    m_at += word.size();
    return true;
}

bool FormatCodeReader::readDateLetters()
{
    const QChar letter = m_code[m_at].toLower();
    qsizetype end = m_at;
    while (end < m_code.size() && m_code[end].toLower() == letter)
        ++end;
    const int count = static_cast<int>(end - m_at);
    std::optional<PartKind> kind;
    if (letter == u'y')
        kind = PartKind::Year;
    else if (letter == u'b')
        kind = PartKind::BuddhistYear;
    else if (letter == u'm')
        kind = PartKind::Month;
    else if (letter == u'd' || (letter == u'a' && count >= 3))
        kind = PartKind::Day;
    else if (letter == u'h')
        kind = PartKind::Hour;
    else if (letter == u's')
        kind = PartKind::Second;
    else if (letter == u'g' && (m_section.isDate || (end < m_code.size() && m_code[end].toLower() == u'e')))
        kind = PartKind::Era;
    else if (letter == u'e' && !(end < m_code.size() && (m_code[end] == u'+' || m_code[end] == u'-')))
        kind = PartKind::EraYear;
    if (!kind)
        return false;
    add({*kind, {}, {}, count});
    m_section.isDate = true;
    m_at = end;
    return true;
}

void FormatCodeReader::finishSection()
{
    settleNumerals();
    if (m_section.isDate) {
        settleYears();
        settleMinutes();
        settleSecondFractions();
        settleDateSigns();
    } else {
        settleCommas();
        settleSlash();
    }
    m_sections.push_back(std::move(m_section));
    m_section = {};
    m_dbNum = m_natNum = -1;
    m_calendar = 0;
}

/// The language that numerals go by may stand behind them.
void FormatCodeReader::settleNumerals()
{
    if (m_dbNum >= 0)
        m_section.numerals = Numerals::dbNum(m_dbNum, m_section.locale);
    else if (m_natNum >= 0)
        m_section.numerals = Numerals::natNum(m_natNum, m_section.locale);
}

void FormatCodeReader::settleYears()
{
    constexpr int buddhist = 7;
    const bool hasEras = countsEras(m_section.locale) || holdsKind(m_section, PartKind::Era);
    for (FormatPart& part : m_section.parts) {
        if (part.kind == PartKind::Year && m_calendar == buddhist)
            part.kind = PartKind::BuddhistYear;
        // Where no eras are counted, "e" is a year in full whatever its count.
        if (part.kind == PartKind::EraYear && !hasEras)
            part = {PartKind::Year, {}, {}, 4};
    }
}

void FormatCodeReader::settleMinutes()
{
    // An m beside hours or seconds counts minutes; only literals may stand between.
    std::vector<FormatPart*> units;
    for (FormatPart& part : m_section.parts)
        if (part.kind >= PartKind::Year && part.kind != PartKind::AmPm)
            units.push_back(&part);
    for (size_t i = 0; i < units.size(); ++i) {
        if (units[i]->kind != PartKind::Month || units[i]->count > 2)
            continue;
        const PartKind before = i > 0 ? units[i - 1]->kind : PartKind::Year;
        const PartKind after = i + 1 < units.size() ? units[i + 1]->kind : PartKind::Year;
        if (before == PartKind::Hour || before == PartKind::ElapsedHours || after == PartKind::Second ||
            after == PartKind::ElapsedSeconds)
            units[i]->kind = PartKind::Minute;
    }
}

void FormatCodeReader::settleSecondFractions()
{
    std::vector<FormatPart> settled;
    for (size_t i = 0; i < m_section.parts.size(); ++i) {
        FormatPart& part = m_section.parts[i];
        int zeros = 0;
        if (part.kind == PartKind::Point)
            while (i + zeros + 1 < m_section.parts.size() && m_section.parts[i + zeros + 1].kind == PartKind::Digit)
                ++zeros;
        if (zeros > 0) {
            settled.push_back({PartKind::SecondFraction, {}, {}, std::min(zeros, 9)});
            i += static_cast<size_t>(zeros);
        } else {
            settled.push_back(std::move(part));
        }
    }
    m_section.parts = std::move(settled);
}

void FormatCodeReader::settleDateSigns()
{
    for (FormatPart& part : m_section.parts) {
        if (part.kind == PartKind::Point || part.kind == PartKind::Digit)
            part = {PartKind::Literal, QString(part.letter), {}, 0};
        else if (part.kind == PartKind::Exponent)
            part = {PartKind::Literal, part.text + part.letter, {}, 0};
        else if (part.kind == PartKind::Slash)
            part.kind = PartKind::Literal;
    }
    m_section.powerOfTen = 0;
}

void FormatCodeReader::settleCommas()
{
    // Between digits in front of the point a comma groups; behind the last such digit it divides by a thousand.
    std::vector<FormatPart>& parts = m_section.parts;
    const auto isDigit = [](const FormatPart& part) { return part.kind == PartKind::Digit; };
    const auto first = std::find_if(parts.begin(), parts.end(), isDigit);
    const auto end = std::find_if(first, parts.end(), [](const FormatPart& part) {
        return part.kind == PartKind::Point || part.kind == PartKind::Exponent;
    });
    std::vector<FormatPart> settled(parts.begin(), first);
    for (auto part = first; part != parts.end(); ++part) {
        if (!isPendingComma(*part)) {
            settled.push_back(*part);
            continue;
        }
        const bool inInteger = part < end;
        const bool digitFollows = inInteger && std::any_of(part, end, isDigit);
        const FormatPart& before = *std::find_if_not(std::make_reverse_iterator(part), parts.rend(), isPendingComma);
        if (digitFollows)
            m_section.thousands = true;
        else if (before.kind == PartKind::Digit || before.kind == PartKind::Point)
            m_section.powerOfTen -= 3;
        else
            settled.push_back(*part);
    }
    parts = std::move(settled);
}

void FormatCodeReader::settleSlash()
{
    // A slash makes a fraction only between digits; "0/" or "a/b" is plain text.
    std::vector<FormatPart>& parts = m_section.parts;
    bool found = false;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].kind != PartKind::Slash)
            continue;
        const bool before = i > 0 && parts[i - 1].kind == PartKind::Digit;
        const auto digit = [](const FormatPart& p) {
            return p.kind == PartKind::Digit ||
                   (p.kind == PartKind::Literal && !p.text.isEmpty() && p.text[0].isDigit());
        };
        const bool after = i + 1 < parts.size() && digit(parts[i + 1]);
        if (found || !before || !after || holdsKind(m_section, PartKind::Exponent))
            parts[i].kind = PartKind::Literal;
        else
            found = true;
    }
}

} // namespace

bool FormatSection::hasDigits() const
{
    return holdsKind(*this, PartKind::Digit);
}

bool FormatSection::isFraction() const
{
    return holdsKind(*this, PartKind::Slash);
}

std::optional<std::vector<FormatSection>> parseFormatCode(const QString& code)
{
    return FormatCodeReader(code).read();
}

} // namespace lumivane::engine
