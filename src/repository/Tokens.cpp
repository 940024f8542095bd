#include "repository/Tokens.h"

#include "platform/RuntimeError.h"
#include "repository/Dialect.h"
#include "repository/SqlText.h"

#include <QStringList>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

class TokenReader
{
public:
    explicit TokenReader(const QString& statement) : m_statement(statement) {}

    std::vector<Token> read()
    {
        for (skipBlanks(); m_at < m_statement.size(); skipBlanks()) {
            const qsizetype start = m_at;
            Token token = next();
            token.character = start;
            m_tokens.push_back(std::move(token));
        }
        return std::move(m_tokens);
    }

private:
    Token next()
    {
        const QChar c = m_statement[m_at];
        if (isWordChar(c) && !isDigit(c))
            return {Token::Kind::Word, take(&TokenReader::isWordChar), 0};
        if (isDigit(c) || (c == u'.' && isDigit(peek(1))))
            return {Token::Kind::Number, number(), 0};
        if (c == u'\'' || c == u'"')
            return {Token::Kind::Text, enclosed(c, true, u"text"_s), 0};
        if (c == u'[')
            return {Token::Kind::Name, name(u']'), 0};
        if (c == u'`')
            return {Token::Kind::Name, name(u'`'), 0};
        if (c == u'#')
            return {Token::Kind::Date, enclosed(c, false, u"date"_s), 0};
        return {Token::Kind::Symbol, symbol(), 0};
    }

    /// Up to the closing sign; where `doubled` is set, two of them stand for one.
    QString enclosed(QChar closing, bool doubled, const QString& what)
    {
        const qsizetype start = m_at++;
        QString content;
        for (;;) {
            if (m_at >= m_statement.size())
                refuseStatement(m_statement, start, u"the "_s + what + u" that begins there has no end"_s);
            const QChar c = m_statement[m_at++];
            if (c != closing) {
                content += c;
            } else if (doubled && m_at < m_statement.size() && m_statement[m_at] == closing) {
                content += closing;
                ++m_at;
            } else {
                return content;
            }
        }
    }

    QString name(QChar closing)
    {
        const qsizetype start = m_at;
        const QString content = enclosed(closing, false, u"name"_s);
        if (content.trimmed().isEmpty())
            refuseStatement(m_statement, start, u"the name is empty"_s);
        return content;
    }

    QString number()
    {
        QString digits = take(&TokenReader::isDigit);
        if (peek(0) == u'.') {
            ++m_at;
            digits += u'.' + take(&TokenReader::isDigit);
        }
        const bool isSigned = peek(1) == u'+' || peek(1) == u'-';
        if ((peek(0) == u'e' || peek(0) == u'E') && isDigit(peek(isSigned ? 2 : 1))) {
            digits += m_statement.sliced(m_at, isSigned ? 2 : 1);
            m_at += isSigned ? 2 : 1;
            digits += take(&TokenReader::isDigit);
        }
        if (isWordChar(peek(0)))
            refuseStatement(m_statement, m_at, u"a number runs into a word"_s);
        return digits;
    }

    QString symbol()
    {
        static const QStringList known{u"<>"_s, u"<="_s, u">="_s, u"<"_s, u">"_s, u"="_s, u"("_s, u")"_s,
                                       u","_s,  u"."_s,  u"*"_s,  u"+"_s, u"-"_s, u"/"_s, u";"_s};
        const QStringView rest = QStringView(m_statement).sliced(m_at);
        if (rest.startsWith(u"--") || rest.startsWith(u"/*"))
            refuseStatement(m_statement, m_at, u"there are no comments in a statement"_s);
        for (const QString& sign : known) {
            if (rest.startsWith(sign)) {
                m_at += sign.size();
                return sign;
            }
        }
        refuseStatement(m_statement, m_at, u"this sign is not understood"_s);
    }

    static bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }
    static bool isWordChar(QChar c) { return c.isLetter() || isDigit(c) || c == u'_'; }

    QString take(bool (*belongs)(QChar))
    {
        const qsizetype start = m_at;
        while (m_at < m_statement.size() && belongs(m_statement[m_at]))
            ++m_at;
        return m_statement.sliced(start, m_at - start);
    }

    QChar peek(qsizetype ahead) const
    {
        return m_at + ahead < m_statement.size() ? m_statement[m_at + ahead] : QChar();
    }

    void skipBlanks()
    {
        while (m_at < m_statement.size() && m_statement[m_at].isSpace())
            ++m_at;
    }

    const QString& m_statement;
    qsizetype m_at = 0;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> readTokens(const QString& statement)
{
    if (const qsizetype zero = statement.indexOf(QChar()); zero >= 0)
        refuseStatement(statement, zero, u"a null character cannot be stored"_s);
    if (const QString text = refusedText(statement); !text.isNull())
        throw RuntimeError(TextRefused, u"The text ["_s + text +
                                            u"] holds an apostrophe and cannot be stored. Write it without, or give "
                                            "the sheet, file or folder of that name another one."_s);
    return TokenReader(statement).read();
}

} // namespace lumivane
