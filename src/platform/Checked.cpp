#include "platform/Checked.h"

#include "platform/ApplicationInfo.h"
#include "platform/CellArea.h"
#include "platform/RuntimeError.h"

#include <QLocale>
#include <QString>
#include <cmath>
#include <limits>

namespace lumivane {

using namespace Qt::StringLiterals;

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

bool largeSheetsOn = false;
constexpr int columnsOfOldSheets = 256;

QString grouped(double number)
{
    return std::abs(number) < 1e15 ? QLocale(QLocale::English).toString(qint64(number)) : plainNumber(number);
}

QString rowSentence(double number)
{
    const QString limit = grouped(rowLimit());
    return (number < 0 ? u"A distance of %1 rows is more than %2, the longest that a panel may move."_s
                       : u"Row %1 is beyond row %2, the last that a panel may use."_s)
               .arg(grouped(std::abs(number)), limit) %
           largeSheetsHint();
}

QString columnSentence(double number)
{
    return u"Column %1 is beyond column %2, the last that a panel may use."_s.arg(grouped(number),
                                                                                  columnLetters(columnLimit())) %
           largeSheetsHint();
}

QString twipsSentence(double number)
{
    return u"%1 twips is beyond %2, the largest place or size of a panel."_s.arg(grouped(number),
                                                                                 grouped(twipsLimit())) %
           largeSheetsHint();
}

/// The limit and one more below zero, as numbers of so many bits have it.
template <class Sentence>
int checked(double number, int limit, Sentence sentence)
{
    // The default rounding mode is to nearest, halves to even.
    const double rounded = std::nearbyint(number);
    if (!(rounded >= -double(limit) - 1 && rounded <= limit))
        throw RuntimeError(RuntimeError::Overflow, sentence(number));
    return static_cast<int>(rounded);
}

} // namespace

void setLargeSheets(bool on)
{
    largeSheetsOn = on;
}

bool largeSheets()
{
    return largeSheetsOn;
}

QString largeSheetsHint()
{
    return largeSheetsOn
               ? QString()
               : u" More is possible with Large Sheets=1 in section [Settings] of %1.INI."_s.arg(executableName());
}

int rowLimit()
{
    return largeSheetsOn ? maxRow : std::numeric_limits<qint16>::max();
}

int columnLimit()
{
    return largeSheetsOn ? maxColumn : columnsOfOldSheets;
}

int twipsLimit()
{
    return largeSheetsOn ? std::numeric_limits<qint32>::max() : std::numeric_limits<qint16>::max();
}

int toRow(double number)
{
    return checked(number, rowLimit(), rowSentence);
}

int toColumn(double number)
{
    const int limit = largeSheetsOn ? maxColumn : std::numeric_limits<qint16>::max();
    return checked(number, limit, columnSentence);
}

int toStoredTwips(double number)
{
    return checked(number, twipsLimit(), twipsSentence);
}

qint16 toInt16(double number)
{
    constexpr int limit = std::numeric_limits<qint16>::max();
    return qint16(checked(number, limit, [](double beyond) {
        return u"The number %1 is beyond %2, the largest that can be kept."_s.arg(grouped(beyond), grouped(limit));
    }));
}

void throwBeyondColumns(int column)
{
    throw RuntimeError(RuntimeError::Overflow, columnSentence(column));
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
