#include "platform/Checked.h"

#include "platform/RuntimeError.h"

#include <QLocale>
#include <QString>
#include <cmath>
#include <limits>

namespace lumivane {

namespace {

qsizetype skipDigits(QStringView text, qsizetype at)
{
    while (at < text.size() && text[at] >= u'0' && text[at] <= u'9')
        ++at;
    return at;
}

bool isSign(QStringView text, qsizetype at)
{
    return at < text.size() && (text[at] == u'+' || text[at] == u'-');
}

} // namespace

qint16 toInt16(double number)
{
    // The default rounding mode is to nearest, halves to even.
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<qint16>::min() && rounded <= std::numeric_limits<qint16>::max()))
        throw RuntimeError(RuntimeError::Overflow);
    return static_cast<qint16>(rounded);
}

double leadingNumber(QStringView text)
{
    while (!text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    const qsizetype start = isSign(text, 0) ? 1 : 0;
    qsizetype end = skipDigits(text, start);
    qsizetype digits = end - start;
    if (end < text.size() && text[end] == u'.') {
        const qsizetype fraction = skipDigits(text, end + 1);
        digits += fraction - end - 1;
        end = fraction;
    }
    if (digits == 0)
        return 0;
    if (end < text.size() && (text[end] == u'e' || text[end] == u'E')) {
        const qsizetype exponent = end + (isSign(text, end + 1) ? 2 : 1);
        if (skipDigits(text, exponent) > exponent)
            end = skipDigits(text, exponent);
    }
    return text.first(end).toDouble();
}

std::optional<double> typedNumber(QStringView text)
{
    text = text.trimmed();
    const qsizetype point = text.indexOf(u'.');
    if (text.startsWith(u',') || (point >= 0 && text.lastIndexOf(u',') > point))
        return std::nullopt;
    bool isNumber = false;
    const double number = QLocale::c().toDouble(text.toString().remove(u','), &isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

QString plainNumber(double number)
{
    return QString::number(number, 'g', 15);
}

} // namespace lumivane
