#include "repository/Dialect.h"

#include "platform/Clock.h"
#include "platform/DayZero.h"
#include "platform/RuntimeError.h"
#include "platform/Wildcards.h"
#include "repository/Tokens.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QByteArray quotedText(const QString& text)
{
    QString doubled = text;
    return (u'\'' + doubled.replace(u'\'', u"''"_s) + u'\'').toUtf8();
}

/// Walks the tokens of one statement once and writes them for SQLite.
class Rewriter
{
public:
    explicit Rewriter(const QString& statement) : m_statement(statement), m_tokens(readTokens(statement)) {}

    Translation translate()
    {
        dropFinalSemicolon();
        if (m_tokens.empty())
            refuse(0, u"the statement is empty"_s);
        const Token& first = m_tokens.front();
        if (first.is(u"DROP"))
            return dropTable();
        if (first.is(u"INSERT") || first.is(u"UPDATE") || first.is(u"DELETE"))
            m_result.kind = Translation::Kind::Change;
        else if (!first.is(u"SELECT"))
            refuse(0, u"a statement begins with SELECT, INSERT, UPDATE, DELETE or DROP TABLE"_s);
        m_limits.push_back({});
        while (m_at < m_tokens.size())
            step();
        if (m_limits.size() > 1)
            refuse(m_tokens.size(), u"a parenthesis is not closed"_s);
        writeLimit();
        return std::move(m_result);
    }

private:
    void step()
    {
        const Token& token = m_tokens[m_at];
        if (token.isSymbol(u";"))
            refuse(m_at, u"only one statement is run at a time"_s);
        if (token.isSymbol(u"("))
            openParenthesis();
        else if (token.isSymbol(u")"))
            closeParenthesis();
        else if (token.is(u"SELECT"))
            select();
        else if (token.is(u"DELETE") && m_at == 0)
            deleteFrom();
        else if (token.is(u"INTO") && m_result.kind == Translation::Kind::Query)
            selectInto();
        else if (token.is(u"UNION") && !m_limits.back().isEmpty())
            refuse(m_at, u"TOP and UNION do not go together"_s);
        else
            writeNext();
    }

    void openParenthesis()
    {
        if (m_at > 0 && m_tokens[m_at - 1].is(u"IN") && isSymbolAt(m_at + 1, u")"))
            refuse(m_at, u"the list behind IN is empty"_s);
        m_limits.push_back({});
        writeNext();
    }

    void closeParenthesis()
    {
        if (m_limits.size() == 1)
            refuse(m_at, u"a parenthesis is closed that was not opened"_s);
        writeLimit();
        m_limits.pop_back();
        writeNext();
    }

    /// `TOP n` becomes a limit behind the last word of the query it stands in.
    void select()
    {
        writeNext();
        if (isWordAt(m_at, u"DISTINCT") || isWordAt(m_at, u"ALL"))
            writeNext();
        if (!isWordAt(m_at, u"TOP") || !isKindAt(m_at + 1, Token::Kind::Number))
            return;
        if (isWordAt(m_at + 2, u"PERCENT"))
            refuse(m_at + 2, u"TOP takes a number of rows"_s);
        bool isCount = false;
        const int count = m_tokens[m_at + 1].text.toInt(&isCount);
        if (!isCount || !m_limits.back().isEmpty())
            refuse(m_at + 1, u"TOP takes a number of rows, once in a query"_s);
        m_limits.back() = QByteArray::number(count);
        m_at += 2;
    }

    /// `DELETE * FROM` and `DELETE table.* FROM` mean the same as `DELETE FROM`.
    void deleteFrom()
    {
        writeNext();
        if (isSymbolAt(m_at, u"*") && isWordAt(m_at + 1, u"FROM"))
            m_at += 1;
        else if (isSymbolAt(m_at + 1, u".") && isSymbolAt(m_at + 2, u"*") && isWordAt(m_at + 3, u"FROM"))
            m_at += 3;
    }

    void selectInto()
    {
        const bool isNamed = isKindAt(m_at + 1, Token::Kind::Word) || isKindAt(m_at + 1, Token::Kind::Name);
        if (m_limits.size() > 1 || !isNamed || !isWordAt(m_at + 2, u"IN") || !isKindAt(m_at + 3, Token::Kind::Text) ||
            !isWordAt(m_at + 4, u"FROM"))
            refuse(m_at, u"INTO is written as INTO table IN 'file' FROM"_s);
        m_result.kind = Translation::Kind::CopyInto;
        m_result.table = m_tokens[m_at + 1].text;
        m_result.fileName = m_tokens[m_at + 3].text;
        m_at += 4;
    }

    Translation dropTable()
    {
        const bool isNamed = isKindAt(2, Token::Kind::Word) || isKindAt(2, Token::Kind::Name);
        if (!isWordAt(1, u"TABLE") || !isNamed || m_tokens.size() != 3)
            refuse(qMin<size_t>(1, m_tokens.size() - 1), u"DROP is written as DROP TABLE table"_s);
        m_result.kind = Translation::Kind::DropTable;
        m_result.table = m_tokens[2].text;
        return std::move(m_result);
    }

    void writeNext()
    {
        const Token& token = m_tokens[m_at];
        write(token.character, sqlOf(token));
        ++m_at;
    }

    QByteArray sqlOf(const Token& token) const
    {
        switch (token.kind) {
        case Token::Kind::Name:
            return quotedIdentifier(token.text);
        case Token::Kind::Text:
            return quotedText(token.text);
        case Token::Kind::Date: {
            const QString date = storedDate(token.text);
            if (date.isEmpty())
                refuseStatement(m_statement, token.character, u"#"_s + token.text + u"# is no date"_s);
            return quotedText(date);
        }
        case Token::Kind::Word:
            // These two are functions here and joins to SQLite.
            if ((token.is(u"Left") || token.is(u"Right")) && isSymbolAt(m_at + 1, u"("))
                return quotedIdentifier(token.text);
            if (token.is(u"True"))
                return "(-1)";
            if (token.is(u"False"))
                return "(0)";
            [[fallthrough]];
        case Token::Kind::Number:
        case Token::Kind::Symbol:
            break;
        }
        return token.text.toUtf8();
    }

    void write(qsizetype character, const QByteArray& text)
    {
        if (!m_result.sql.isEmpty())
            m_result.sql += ' ';
        m_result.origins.push_back({m_result.sql.size(), character});
        m_result.sql += text;
    }

    void writeLimit()
    {
        if (!m_limits.back().isEmpty())
            write(m_at < m_tokens.size() ? m_tokens[m_at].character : m_statement.size(), "LIMIT " + m_limits.back());
    }

    void dropFinalSemicolon()
    {
        if (!m_tokens.empty() && m_tokens.back().isSymbol(u";"))
            m_tokens.pop_back();
    }

    bool isKindAt(size_t at, Token::Kind kind) const { return at < m_tokens.size() && m_tokens[at].kind == kind; }
    bool isWordAt(size_t at, QStringView word) const { return at < m_tokens.size() && m_tokens[at].is(word); }
    bool isSymbolAt(size_t at, QStringView sign) const { return at < m_tokens.size() && m_tokens[at].isSymbol(sign); }

    [[noreturn]] void refuse(size_t at, const QString& reason) const
    {
        refuseStatement(m_statement, at < m_tokens.size() ? m_tokens[at].character : m_statement.size(), reason);
    }

    const QString& m_statement;
    std::vector<Token> m_tokens;
    size_t m_at = 0;
    std::vector<QByteArray> m_limits; ///< of the query and of each open parenthesis; empty without one
    Translation m_result;
};

/// Whether a character is in the set behind an opening bracket; moves behind the closing one.
bool matchesSet(QStringView pattern, qsizetype& at, QChar c)
{
    const qsizetype end = pattern.indexOf(u']', at + 1);
    if (end < 0)
        throw RuntimeError(InvalidPattern, u"In the pattern ["_s + pattern + u"] a bracket is not closed."_s);
    QStringView set = pattern.sliced(at + 1, end - at - 1);
    at = end + 1;
    const bool inverted = set.startsWith(u'!');
    if (inverted)
        set = set.sliced(1);
    bool found = false;
    for (qsizetype i = 0; i < set.size(); ++i) {
        const QChar low = set[i].toCaseFolded();
        const bool isRange = i + 2 < set.size() && set[i + 1] == u'-';
        const QChar high = isRange ? set[i + 2].toCaseFolded() : low;
        found = found || (c >= low && c <= high);
        i += isRange ? 2 : 0;
    }
    return found != inverted;
}

bool matchesOne(QStringView pattern, qsizetype& at, QChar c)
{
    const QChar p = pattern[at];
    if (p == u'[')
        return matchesSet(pattern, at, c.toCaseFolded());
    ++at;
    if (p == u'?')
        return true;
    if (p == u'#')
        return c >= u'0' && c <= u'9';
    return p.toCaseFolded() == c.toCaseFolded();
}

} // namespace

qsizetype Translation::placeInStatement(qsizetype byte) const
{
    const auto behind = std::upper_bound(origins.begin(), origins.end(), byte,
                                         [](qsizetype value, const Origin& origin) { return value < origin.byte; });
    return byte < 0 || behind == origins.begin() ? 0 : std::prev(behind)->character + 1;
}

QString storedDate(const QString& text)
{
    static const QRegularExpression form(
        uR"(^\s*(?:(?:(\d{4})-(\d{1,2})-(\d{1,2}))|(?:(\d{1,2})/(\d{1,2})/(\d{4})))?)"
        uR"((?:(?:^|\s+|T)(\d{1,2}):(\d{2})(?::(\d{2}))?(?:\s*([AaPp])[Mm])?([+-]\d\d:\d\d)?)?\s*$)"_s);
    const QRegularExpressionMatch match = form.match(text);
    const auto part = [&](int group) { return match.captured(group).toInt(); };
    const bool hasDate = match.hasCaptured(1) || match.hasCaptured(4);
    const bool hasTime = match.hasCaptured(7);
    if (!match.hasMatch() || !(hasDate || hasTime))
        return {};
    QDate date = dayZero();
    if (match.hasCaptured(1))
        date = QDate(part(1), part(2), part(3));
    else if (match.hasCaptured(4))
        date = QDate(part(6), part(4), part(5));
    int hour = part(7);
    if (match.hasCaptured(10)) {
        if (hour < 1 || hour > 12)
            return {};
        hour = hour % 12 + (match.captured(10).compare(u"p"_s, Qt::CaseInsensitive) == 0 ? 12 : 0);
    }
    const QTime time = hasTime ? QTime(hour, part(8), part(9)) : QTime(0, 0);
    if (!date.isValid() || !time.isValid() || date.year() < 100)
        return {};
    return date.toString(Qt::ISODate) + u' ' + time.toString(u"HH:mm:ss"_s) + match.captured(11);
}

QByteArray quotedIdentifier(const QString& name)
{
    QString doubled = name;
    return (u'"' + doubled.replace(u'"', u"\"\""_s) + u'"').toUtf8();
}

Translation translateStatement(const QString& statement)
{
    return Rewriter(statement).translate();
}

bool matchesLikePattern(QStringView text, QStringView pattern)
{
    return fitsPattern(text, pattern, matchesOne);
}

void refuseStatement(const QString& statement, qsizetype character, const QString& reason)
{
    const QString place =
        statement.sliced(qMin(character, statement.size()), qMin<qsizetype>(20, statement.size() - character));
    throw RuntimeError(SyntaxError, u"The statement is not understood at character "_s +
                                        QString::number(character + 1) +
                                        (place.isEmpty() ? u" (its end)"_s : QString(u", ["_s + place + u"]"_s)) +
                                        u": "_s + reason + u"."_s);
}

} // namespace lumivane
