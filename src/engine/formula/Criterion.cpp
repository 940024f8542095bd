#include "engine/formula/Criterion.h"

#include "engine/formula/Coercion.h"
#include "engine/formula/FormulaLimits.h"
#include "platform/Wildcards.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

bool fitsOneCharacter(QStringView pattern, qsizetype& at, QChar character)
{
    if (pattern[at] == u'?') {
        ++at;
        return true;
    }
    const bool marked = pattern[at] == u'~' && at + 1 < pattern.size() &&
                        (pattern[at + 1] == u'*' || pattern[at + 1] == u'?' || pattern[at + 1] == u'~');
    const qsizetype letter = at + (marked ? 1 : 0);
    if (pattern[letter] != character)
        return false;
    at = letter + 1;
    return true;
}

/// Parts of a pattern between its "*".
QStringList partsOf(const QString& pattern)
{
    QStringList parts(1);
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == u'*') {
            parts.append(QString());
            continue;
        }
        parts.back() += pattern[at];
        if (pattern[at] == u'~' && at + 1 < pattern.size())
            parts.back() += pattern[++at];
    }
    return parts;
}

/// How many characters of a text a part fits at a place; -1 if it does not.
qsizetype fitAt(QStringView text, qsizetype place, QStringView part)
{
    const qsizetype start = place;
    for (qsizetype at = 0; at < part.size(); ++place) {
        if (place == text.size() || !fitsOneCharacter(part, at, text[place]))
            return -1;
    }
    return place - start;
}

std::optional<ErrorCode> errorNamed(const QString& text)
{
    for (size_t code = 0; code < std::size(errorNames); ++code) {
        if (text.compare(errorText(static_cast<ErrorCode>(code)), Qt::CaseInsensitive) == 0)
            return static_cast<ErrorCode>(code);
    }
    return std::nullopt;
}

FormulaValue operandOf(const QString& text, bool date1904)
{
    if (const auto number = numberFromText(text, date1904))
        return *number;
    if (const FormulaValue boolean = asBoolean(text); boolean.isBoolean())
        return boolean;
    if (const auto error = errorNamed(text))
        return *error;
    return text;
}

/// Takes the operator from the start of a criterion.
Operator takeOperator(QString& text)
{
    constexpr std::pair<QStringView, Operator> signs[]{
        {u"<=", Operator::LessEqual}, {u">=", Operator::GreaterEqual}, {u"<>", Operator::NotEqual},
        {u"<", Operator::Less},       {u">", Operator::Greater},       {u"=", Operator::Equal},
    };
    for (const auto& [sign, operation] : signs) {
        if (text.startsWith(sign)) {
            text.remove(0, sign.size());
            return operation;
        }
    }
    return Operator::Equal;
}

} // namespace

bool hasWildcards(QStringView text)
{
    return text.contains(u'*') || text.contains(u'?') || text.contains(u'~');
}

bool fitsWildcards(const QString& text, const QString& pattern)
{
    return pattern.size() <= FormulaLimits::patternLength &&
           fitsPattern(text.toCaseFolded(), pattern.toCaseFolded(), fitsOneCharacter);
}

qsizetype findWildcards(const QString& text, const QString& pattern, qsizetype from)
{
    if (pattern.size() > FormulaLimits::patternLength)
        return -1;
    const QString folded = text.toCaseFolded();
    qsizetype found = -1, place = from;
    // Each part is sought behind the one before; the first place of each leaves most room for the next.
    for (const QString& part : partsOf(pattern.toCaseFolded())) {
        qsizetype fits = -1;
        for (; fits < 0 && place <= folded.size(); ++place)
            fits = fitAt(folded, place, part);
        if (fits < 0)
            return -1;
        --place;
        if (found < 0)
            found = place;
        place += fits;
    }
    return found;
}

Criterion::Criterion(const FormulaValue& given, bool date1904)
    : m_operand(given.isBlank() ? FormulaValue(0) : given), m_date1904(date1904)
{
    if (given.isText()) {
        QString text = given.text();
        m_orEmptyText = text.isEmpty();
        m_operation = takeOperator(text);
        m_operand = text.isEmpty() ? FormulaValue() : operandOf(text, date1904);
    }
    m_wild = m_operand.isText() && hasWildcards(m_operand.text()) &&
             (m_operation == Operator::Equal || m_operation == Operator::NotEqual);
    m_holdsForBlank = holds(FormulaValue());
}

bool Criterion::isPlainEquality() const
{
    return m_operation == Operator::Equal && !m_wild &&
           (m_operand.isNumber() || m_operand.isText() || m_operand.isBoolean());
}

bool Criterion::equals(const FormulaValue& cell) const
{
    if (m_operand.isBlank())
        return cell.isBlank() || (m_orEmptyText && cell.isText() && cell.text().isEmpty());
    if (m_operand.isNumber() && cell.isText()) {
        const auto number = numberFromText(cell.text(), m_date1904);
        return number && sameNumber(*number, m_operand.number());
    }
    if (cell.kind() != m_operand.kind())
        return false;
    if (m_operand.isError())
        return cell.error() == m_operand.error();
    return m_wild ? fitsWildcards(cell.text(), m_operand.text()) : compareValues(cell, m_operand) == 0;
}

bool Criterion::holds(const FormulaValue& cell) const
{
    if (m_operation == Operator::Equal)
        return equals(cell);
    if (m_operation == Operator::NotEqual)
        return !equals(cell);
    if (cell.kind() != m_operand.kind() || cell.isBlank() || cell.isError())
        return false;
    const int order = compareValues(cell, m_operand);
    switch (m_operation) {
    case Operator::Less:
        return order < 0;
    case Operator::LessEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

} // namespace lumivane::engine
