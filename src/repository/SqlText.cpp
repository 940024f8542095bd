#include "repository/SqlText.h"

#include "platform/Clock.h"
#include "platform/RuntimeError.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

// Round a text that is refused. Unicode keeps these two for such inner use; a stranger's text that holds one only makes
// its statement fail.
constexpr QChar refusedBegin(0xFDD0), refusedEnd(0xFDD1);

QString inApostrophes(const QString& text)
{
    return u'\'' + text + u'\'';
}

} // namespace

QString textLiteral(const QString& text)
{
    const QString literal = inApostrophes(text);
    return staysOneText(text) ? literal : QString(refusedBegin + literal + refusedEnd);
}

QString doubledLiteral(QString text)
{
    return inApostrophes(text.replace(u'\'', u"''"_s));
}

bool staysOneText(QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] != u'\'')
            continue;
        if (at + 1 >= text.size() || text[at + 1] != u'\'')
            return false;
        ++at;
    }
    return true;
}

QString unstorable(const QString& noun, const QString& text)
{
    if (!text.contains(u'\''))
        return {};
    return u"The %1 [%2] holds an apostrophe, which the project does not take. Please change it and try again."_s.arg(
        noun, text);
}

QString dateLiteral(const QDateTime& time)
{
    return u'#' + dateText(time) + u'#';
}

QString instantLiteral(const QDateTime& time)
{
    return u'#' + instantText(time) + u'#';
}

QString blankedNumber(qint64 number)
{
    return (number < 0 ? QString() : u" "_s) + QString::number(number);
}

QString refusedText(const QString& statement)
{
    const qsizetype begin = statement.indexOf(refusedBegin);
    if (begin < 0)
        return {};
    const QString literal = statement.sliced(begin + 1).section(refusedEnd, 0, 0);
    return literal.size() < 2 ? u""_s : literal.sliced(1, literal.size() - 2);
}

QString readableStatement(QString statement)
{
    return statement.remove(refusedBegin).remove(refusedEnd);
}

} // namespace lumivane
