#include "repository/SqlText.h"

#include "platform/Clock.h"

namespace lumivane {

using namespace Qt::StringLiterals;

QString doubledApostrophes(QString text)
{
    return text.replace(u'\'', u"''"_s);
}

QString dateLiteral(const QDateTime& time)
{
    return u'#' + dateText(time) + u'#';
}

QString blankedNumber(qint64 number)
{
    return (number < 0 ? QString() : u" "_s) + QString::number(number);
}

} // namespace lumivane
