#include "host/embedded/CellMatcher.h"

#include <algorithm>
#include <cmath>

namespace lumivane::embedded {

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

BareCode bareCode(const QString& code)
{
    BareCode bare;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code[i];
        const QChar closing = c == u'"' ? u'"' : c == u'[' ? u']' : QChar();
        if (!closing.isNull()) {
            const qsizetype end = code.indexOf(closing, i + 1);
            bare.literals += end < 0 ? code.mid(i + 1) : code.mid(i + 1, end - i - 1);
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

/// Codes that show names (of months, days, halves of the day) or another format altogether.
bool showsNames(const QString& code)
{
    for (const auto name : {"mmm"_L1, "ddd"_L1, "aaa"_L1, "am/pm"_L1, "a/p"_L1, "general"_L1, "[$-f"_L1}) {
        if (code.contains(name, Qt::CaseInsensitive))
            return true;
    }
    return containsAny(bareCode(code).code, u"geb");
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
    if (!sought.whole)
        return FormatReach::Perhaps;
    // General shows what the plain text shows, which is compared anyway.
    if (code.compare("general"_L1, Qt::CaseInsensitive) == 0)
        return FormatReach::Never;
    if (!showsNames(code)) {
        const QString always = u"0123456789.,:/+-%()' \u00a0\u202f\u2212Ee#"_s;
        const bool possible = std::all_of(sought.text.begin(), sought.text.end(), [&](QChar c) {
            return always.contains(c) || code.contains(c, Qt::CaseInsensitive);
        });
        if (!possible)
            return FormatReach::Never;
    }
    return showsPlainDigits(code) && sought.digits ? FormatReach::NearNumber : FormatReach::Perhaps;
}

CellMatcher::CellMatcher(const WorkbookContent& workbook, const SheetContent& sheet, const ShownTexts& texts,
                         const FindQuestion& question)
    : m_workbook(workbook), m_sheet(sheet), m_texts(texts), m_sought(question),
      m_shared(static_cast<size_t>(workbook.texts.size())), m_local(static_cast<size_t>(sheet.texts.size())),
      m_reach(workbook.styles.numberFormats.size()), m_changesTexts(workbook.styles.numberFormats.size())
{
}

bool CellMatcher::hits(const Cell& cell)
{
    if (m_sought.anything)
        return hasContents(m_workbook, m_sheet, cell);
    switch (cell.kind) {
    case CellKind::Number:
        return numberHits(cell);
    case CellKind::Text:
    case CellKind::SheetText:
        return textHits(cell);
    case CellKind::Boolean:
    case CellKind::Error:
        return m_sought.hits(m_texts.plain(cell)) || m_sought.hits(m_texts.shown(cell));
    case CellKind::Blank:
    case CellKind::Uncomputed:
        break;
    }
    return false;
}

bool CellMatcher::hits(const SheetOverlay::Value& value, int style) const
{
    if (!hasContents(value))
        return false;
    return m_sought.anything || m_sought.hits(m_texts.plain(value)) || m_sought.hits(m_texts.shown(value, style));
}

bool CellMatcher::textHits(const Cell& cell)
{
    const bool shared = cell.kind == CellKind::Text;
    if (plainTextHits(shared ? m_workbook.texts : m_sheet.texts, shared ? m_shared : m_local, cell.text))
        return true;
    const int format = m_workbook.styles.cell(static_cast<int>(cell.style)).numberFormat;
    return changesTexts(format) && m_sought.hits(m_texts.shown(cell));
}

bool CellMatcher::plainTextHits(const TextTable& table, std::vector<Known>& known, quint64 index) const
{
    if (index >= known.size())
        return false;
    Known& answer = known[index];
    if (answer == Known::Unknown) {
        const std::string_view bytes = table.utf8(index);
        const QUtf8StringView text(bytes.data(), static_cast<qsizetype>(bytes.size()));
        const bool hit = bytes.empty()    ? false
                         : m_sought.whole ? QAnyStringView::compare(text, m_sought.text, Qt::CaseInsensitive) == 0
                                          : m_sought.hits(text.toString());
        answer = hit ? Known::Hit : Known::Miss;
    }
    return answer == Known::Hit;
}

bool CellMatcher::numberHits(const Cell& cell)
{
    const double value = cell.number;
    if (!m_sought.whole)
        return m_sought.hits(m_texts.plain(cell)) || m_sought.hits(m_texts.shown(cell));

    // Plain texts have 15 digits, so only a number this near can have the sought one.
    const bool plainPossible =
        m_sought.number && std::abs(value - *m_sought.number) <= std::abs(*m_sought.number) * 1e-14;
    if (plainPossible && m_sought.hits(m_texts.plain(cell)))
        return true;
    switch (reach(m_workbook.styles.cell(static_cast<int>(cell.style)).numberFormat)) {
    case FormatReach::Never:
        return false;
    case FormatReach::NearNumber:
        if (std::abs(std::abs(value) - *m_sought.digits) > 1 + std::abs(value) * 1e-14)
            return false;
        break;
    case FormatReach::Perhaps:
        break;
    }
    return m_sought.hits(m_texts.shown(cell));
}

FormatReach CellMatcher::reach(int numberFormat)
{
    const size_t index = static_cast<size_t>(numberFormat);
    if (index >= m_reach.size())
        return FormatReach::Perhaps;
    if (!m_reach[index])
        m_reach[index] = formatReach(m_workbook.styles.numberFormats[index], m_sought);
    return *m_reach[index];
}

bool CellMatcher::changesTexts(int numberFormat)
{
    const size_t index = static_cast<size_t>(numberFormat);
    if (index >= m_changesTexts.size())
        return true;
    if (!m_changesTexts[index]) {
        // A section for texts names them by "@" or stands fourth.
        const QString& code = m_workbook.styles.numberFormats[index];
        m_changesTexts[index] = code != u"@" && (code.contains(u'@') || code.count(u';') >= 3);
    }
    return *m_changesTexts[index];
}

bool hasContents(const WorkbookContent& workbook, const SheetContent& sheet, const Cell& cell)
{
    switch (cell.kind) {
    case CellKind::Blank:
        return false;
    case CellKind::Text:
        return !workbook.texts.utf8(cell.text).empty();
    case CellKind::SheetText:
        return !sheet.texts.utf8(cell.text).empty();
    default:
        return true;
    }
}

bool hasContents(const SheetOverlay::Value& value)
{
    const bool isText = value.kind == CellKind::Text || value.kind == CellKind::SheetText;
    return value.kind != CellKind::Blank && !(isText && value.text.isEmpty());
}

} // namespace lumivane::embedded
