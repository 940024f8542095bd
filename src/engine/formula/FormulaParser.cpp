#include "engine/formula/FormulaLimits.h"
#include "engine/formula/FormulaTree.h"
#include "engine/formula/Function.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

/// Thrown within this file alone.
struct NotUnderstood
{
};

bool isDigit(QChar letter)
{
    return letter >= u'0' && letter <= u'9';
}

bool isAsciiLetter(QChar letter)
{
    return (letter >= u'A' && letter <= u'Z') || (letter >= u'a' && letter <= u'z');
}

bool isNameStart(QChar letter)
{
    return letter.isLetter() || letter == u'_' || letter == u'\\' || letter.isSurrogate();
}

bool isNamePart(QChar letter)
{
    return isNameStart(letter) || letter.isNumber() || letter == u'.' || letter == u'?';
}

bool isBlank(QChar letter)
{
    return letter == u' ' || letter == u'\t' || letter == u'\n' || letter == u'\r';
}

struct OperatorSign
{
    QStringView sign;
    Operator operation;
};

/// From the loosest to the tightest; all of them group from the left.
const std::vector<std::vector<OperatorSign>> binaryOperators{
    {{u"<=", Operator::LessEqual},
     {u">=", Operator::GreaterEqual},
     {u"<>", Operator::NotEqual},
     {u"=", Operator::Equal},
     {u"<", Operator::Less},
     {u">", Operator::Greater}},
    {{u"&", Operator::Join}},
    {{u"+", Operator::Add}, {u"-", Operator::Subtract}},
    {{u"*", Operator::Multiply}, {u"/", Operator::Divide}},
    {{u"^", Operator::Power}},
};

class Parser
{
public:
    explicit Parser(const QString& text) : m_text(text) {}

    FormulaTree formula();
    Reference referenceAlone();

private:
    using Kind = FormulaNode::Kind;

    /// Counts what lies within one another.
    class Nested
    {
    public:
        explicit Nested(int& depth) : m_depth(depth)
        {
            if (++m_depth > FormulaLimits::nesting)
                throw NotUnderstood();
        }
        ~Nested() { --m_depth; }

    private:
        int& m_depth;
    };

    QChar peek(qsizetype ahead = 0) const { return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : QChar(); }
    bool take(QStringView sign);
    void expect(QStringView sign);
    bool skipBlanks();

    int add(Kind kind, int index = 0);
    int addConstant(FormulaValue value);
    int addOperation(Kind kind, Operator operation, std::initializer_list<int> operands);
    void setOperands(FormulaNode& node, std::span<const int> operands);

    int binary(size_t level);
    int signedOperand();
    int intersection();
    int range();
    bool mayBeReference(int node) const;
    int primary();
    int parenthesis();
    int arrayConstant();
    FormulaValue arrayElement();
    int namedThing();
    int qualified(const QString& sheet);
    int call(const QString& written);

    double number();
    QString quoted(QChar quote);
    ErrorCode errorConstant();
    QString identifier();
    std::optional<ReferenceCorner> corner();
    std::optional<Reference> reference();
    bool endsReference() const;

    const QString& m_text;
    qsizetype m_at = 0;
    int m_depth = 0;
    FormulaTree m_tree;
};

bool Parser::take(QStringView sign)
{
    if (!QStringView(m_text).mid(m_at).startsWith(sign))
        return false;
    m_at += sign.size();
    return true;
}

void Parser::expect(QStringView sign)
{
    skipBlanks();
    if (!take(sign))
        throw NotUnderstood();
}

bool Parser::skipBlanks()
{
    const qsizetype before = m_at;
    while (isBlank(peek()))
        ++m_at;
    return m_at > before;
}

int Parser::add(Kind kind, int index)
{
    FormulaNode& node = m_tree.nodes.emplace_back();
    node.kind = kind;
    node.index = index;
    return m_tree.root();
}

int Parser::addConstant(FormulaValue value)
{
    m_tree.constants.push_back(std::move(value));
    return add(Kind::Constant, static_cast<int>(m_tree.constants.size()) - 1);
}

void Parser::setOperands(FormulaNode& node, std::span<const int> operands)
{
    node.firstOperand = static_cast<int>(m_tree.operands.size());
    node.operands = static_cast<int>(operands.size());
    m_tree.operands.insert(m_tree.operands.end(), operands.begin(), operands.end());
}

int Parser::addOperation(Kind kind, Operator operation, std::initializer_list<int> operands)
{
    const int index = add(kind);
    m_tree.nodes.back().operation = operation;
    setOperands(m_tree.nodes.back(), operands);
    return index;
}

FormulaTree Parser::formula()
{
    binary(0);
    skipBlanks();
    if (m_at != m_text.size())
        throw NotUnderstood();
    return std::move(m_tree);
}

int Parser::binary(size_t level)
{
    if (level == binaryOperators.size())
        return signedOperand();
    int left = binary(level + 1);
    for (;;) {
        skipBlanks();
        const auto& signs = binaryOperators[level];
        const auto found = std::find_if(signs.begin(), signs.end(), [&](const auto& sign) { return take(sign.sign); });
        if (found == signs.end())
            return left;
        const int right = binary(level + 1);
        left = addOperation(Kind::Binary, found->operation, {left, right});
    }
}

/// A sign binds tighter than a power: -2^2 is 4.
int Parser::signedOperand()
{
    constexpr std::pair<QStringView, Operator> signs[]{
        {u"-", Operator::Minus}, {u"+", Operator::Plus}, {u"@", Operator::Single}};
    skipBlanks();
    for (const auto& [sign, operation] : signs) {
        if (take(sign)) {
            const Nested nested(m_depth);
            return addOperation(Kind::Unary, operation, {signedOperand()});
        }
    }
    int operand = intersection();
    for (int count = 0;; ++count) {
        skipBlanks();
        if (!take(u"%"))
            return operand;
        if (count >= FormulaLimits::nesting)
            throw NotUnderstood();
        operand = addOperation(Kind::Unary, Operator::Percent, {operand});
    }
}

bool Parser::mayBeReference(int node) const
{
    const FormulaNode& left = m_tree.nodes[static_cast<size_t>(node)];
    return left.kind == Kind::Reference || left.kind == Kind::Name || left.kind == Kind::Call ||
           left.kind == Kind::Binary;
}

/// Blanks between two references stand for what they have in common.
int Parser::intersection()
{
    int left = range();
    for (;;) {
        const qsizetype before = m_at;
        const bool blanks = skipBlanks();
        const QChar next = peek();
        if (!blanks || !mayBeReference(left) || !(isNameStart(next) || next == u'$' || next == u'\'' || next == u'(')) {
            m_at = before;
            return left;
        }
        const int right = range();
        left = addOperation(Kind::Binary, Operator::Intersection, {left, right});
    }
}

int Parser::range()
{
    int left = primary();
    while (peek() == u':') {
        ++m_at;
        const int right = primary();
        const FormulaNode& last = m_tree.nodes[static_cast<size_t>(right)];
        const FormulaNode& first = m_tree.nodes[static_cast<size_t>(left)];
        // First:Last!A1 goes through several sheets.
        const bool throughSheets = first.kind == Kind::Name && last.kind == Kind::Reference &&
                                   !m_tree.references[static_cast<size_t>(last.index)].sheet.isEmpty();
        if (throughSheets)
            throw NotUnderstood();
        left = addOperation(Kind::Binary, Operator::Range, {left, right});
    }
    return left;
}

int Parser::primary()
{
    skipBlanks();
    const QChar next = peek();
    if (next == u'(')
        return parenthesis();
    if (next == u'{')
        return arrayConstant();
    if (next == u'"')
        return addConstant(quoted(u'"'));
    if (next == u'#')
        return addConstant(errorConstant());
    if (next == u'\'') {
        const QString sheet = quoted(u'\'');
        expect(u"!");
        return qualified(sheet);
    }
    return namedThing();
}

int Parser::parenthesis()
{
    const Nested nested(m_depth);
    expect(u"(");
    int inner = binary(0);
    skipBlanks();
    while (take(u",")) {
        const int right = binary(0);
        inner = addOperation(Kind::Binary, Operator::Union, {inner, right});
        skipBlanks();
    }
    expect(u")");
    return inner;
}

FormulaValue Parser::arrayElement()
{
    skipBlanks();
    if (peek() == u'"')
        return quoted(u'"');
    if (peek() == u'#')
        return errorConstant();
    if (isNameStart(peek())) {
        const QString word = identifier().toUpper();
        if (word != u"TRUE" && word != u"FALSE")
            throw NotUnderstood();
        return word == u"TRUE";
    }
    const bool negative = take(u"-");
    if (!negative)
        take(u"+");
    const double value = number();
    return negative ? -value : value;
}

int Parser::arrayConstant()
{
    expect(u"{");
    FormulaArray array;
    int inRow = 0;
    for (;;) {
        array.values.push_back(arrayElement());
        ++inRow;
        skipBlanks();
        if (take(u","))
            continue;
        if (array.rows++ == 0)
            array.columns = inRow;
        if (inRow != array.columns)
            throw NotUnderstood();
        inRow = 0;
        if (!take(u";"))
            break;
    }
    expect(u"}");
    return addConstant(std::move(array));
}

QString Parser::quoted(QChar quote)
{
    QString inner;
    for (++m_at; m_at < m_text.size(); ++m_at) {
        if (m_text[m_at] == quote) {
            if (peek(1) != quote) {
                ++m_at;
                return inner;
            }
            ++m_at;
        }
        inner += m_text[m_at];
    }
    throw NotUnderstood();
}

ErrorCode Parser::errorConstant()
{
    for (size_t code = 0; code < std::size(errorNames); ++code) {
        if (take(errorText(static_cast<ErrorCode>(code))))
            return static_cast<ErrorCode>(code);
    }
    throw NotUnderstood();
}

double Parser::number()
{
    const qsizetype start = m_at;
    while (isDigit(peek()))
        ++m_at;
    if (peek() == u'.') {
        ++m_at;
        while (isDigit(peek()))
            ++m_at;
    }
    const bool signedExponent = (peek(1) == u'+' || peek(1) == u'-') && isDigit(peek(2));
    if ((peek() == u'E' || peek() == u'e') && (isDigit(peek(1)) || signedExponent)) {
        m_at += 2;
        while (isDigit(peek()))
            ++m_at;
    }
    bool valid = false;
    const double value = QStringView(m_text).mid(start, m_at - start).toDouble(&valid);
    if (!valid || isNamePart(peek()))
        throw NotUnderstood();
    return value;
}

QString Parser::identifier()
{
    const qsizetype start = m_at;
    while (isNamePart(peek()))
        ++m_at;
    return m_text.mid(start, m_at - start);
}

bool Parser::endsReference() const
{
    return !isNamePart(peek()) && peek() != u'(' && peek() != u'$' && peek() != u'[';
}

/// A cell, a column alone or a row alone; none, without moving, where there is something else.
std::optional<ReferenceCorner> Parser::corner()
{
    const qsizetype start = m_at;
    ReferenceCorner corner;
    bool dollar = take(u"$");
    for (int letters = 0; isAsciiLetter(peek()) && letters < 4; ++letters, ++m_at)
        corner.column = corner.column * 26 + (m_text[m_at].unicode() & ~0x20) - u'A' + 1;
    if (corner.column > 0) {
        corner.columnFixed = dollar;
        dollar = take(u"$");
    }
    const qsizetype digits = m_at;
    for (; isDigit(peek()) && m_at - digits < 8; ++m_at)
        corner.row = corner.row * 10 + m_text[m_at].unicode() - u'0';
    corner.rowFixed = dollar;
    const bool signAlone = dollar && m_at == digits;
    const bool rowZero = m_at > digits && corner.row == 0;
    if (signAlone || rowZero || corner.row > maxRow || corner.column > maxColumn || (!corner.row && !corner.column) ||
        !endsReference()) {
        m_at = start;
        return std::nullopt;
    }
    return corner;
}

/// A cell, an area, whole columns or whole rows; none, without moving, where there is something else.
std::optional<Reference> Parser::reference()
{
    const qsizetype start = m_at;
    Reference reference;
    if (const auto first = corner()) {
        reference.first = reference.last = *first;
        const qsizetype behindFirst = m_at;
        if (take(u":")) {
            const auto last = corner();
            if (last && bool(last->row) == bool(first->row) && bool(last->column) == bool(first->column)) {
                reference.last = *last;
                return reference;
            }
        }
        m_at = behindFirst;
        if (first->row && first->column)
            return reference;
    }
    m_at = start;
    return std::nullopt;
}

int Parser::namedThing()
{
    const qsizetype start = m_at;
    if (auto found = reference()) {
        if (peek() != u'!') {
            m_tree.references.push_back(std::move(*found));
            return add(Kind::Reference, static_cast<int>(m_tree.references.size()) - 1);
        }
        m_at = start; // a sheet that is named like a cell
    }
    if (isDigit(peek()) || peek() == u'.')
        return addConstant(number());
    if (!isNameStart(peek()))
        throw NotUnderstood();
    const QString name = identifier();
    if (take(u"!"))
        return qualified(name);
    if (peek() == u'(')
        return call(name);
    const QString capitals = name.toUpper();
    if (capitals == u"TRUE" || capitals == u"FALSE")
        return addConstant(capitals == u"TRUE");
    if (peek() == u'[')
        throw NotUnderstood();
    m_tree.names.push_back({QString(), name});
    return add(Kind::Name, static_cast<int>(m_tree.names.size()) - 1);
}

/// What stands behind the name of a sheet.
int Parser::qualified(const QString& sheet)
{
    // Another file, or a row of sheets.
    if (sheet.isEmpty() || sheet.contains(u'[') || sheet.contains(u':'))
        throw NotUnderstood();
    if (peek() == u'#')
        return addConstant(errorConstant());
    if (auto found = reference()) {
        found->sheet = sheet;
        m_tree.references.push_back(std::move(*found));
        return add(Kind::Reference, static_cast<int>(m_tree.references.size()) - 1);
    }
    if (!isNameStart(peek()))
        throw NotUnderstood();
    m_tree.names.push_back({sheet, identifier()});
    return add(Kind::Name, static_cast<int>(m_tree.names.size()) - 1);
}

int Parser::call(const QString& written)
{
    const Nested nested(m_depth);
    QString name = written.toUpper();
    // Marks of functions that are newer than the file format.
    for (const QStringView prefix : {u"_XLFN.", u"_XLWS."}) {
        if (name.startsWith(prefix))
            name.remove(0, prefix.size());
    }
    const Function* function = findFunction(name);
    if (!function && m_tree.unknownFunction.isEmpty())
        m_tree.unknownFunction = name;

    expect(u"(");
    std::vector<int> arguments;
    skipBlanks();
    if (!take(u")")) {
        do {
            skipBlanks();
            const bool missing = peek() == u',' || peek() == u')';
            arguments.push_back(missing ? add(Kind::Missing) : binary(0));
            skipBlanks();
        } while (take(u","));
        expect(u")");
    }
    const int count = static_cast<int>(arguments.size());
    if (function && (count < function->least || count > function->most))
        throw NotUnderstood();
    const int index = add(Kind::Call);
    m_tree.nodes.back().function = function;
    setOperands(m_tree.nodes.back(), arguments);
    return index;
}

Reference Parser::referenceAlone()
{
    int node = -1;
    if (peek() == u'\'' || isNameStart(peek()) || peek() == u'$' || isDigit(peek()))
        node = primary();
    if (node < 0 || m_at != m_text.size() || m_tree.nodes.back().kind != Kind::Reference)
        throw NotUnderstood();
    return m_tree.references.back();
}

} // namespace

std::optional<FormulaTree> parseFormula(const QString& text)
{
    if (text.size() > FormulaLimits::length)
        return std::nullopt;
    try {
        return Parser(text).formula();
    } catch (const NotUnderstood&) {
        return std::nullopt;
    }
}

std::optional<Reference> parseReference(const QString& text)
{
    if (text.size() > FormulaLimits::length)
        return std::nullopt;
    try {
        return Parser(text).referenceAlone();
    } catch (const NotUnderstood&) {
        return std::nullopt;
    }
}

} // namespace lumivane::engine
