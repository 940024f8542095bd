#include "platform/Clock.h"

#include <optional>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QDateTime& fixedTime()
{
    static QDateTime time;
    return time;
}

const QString& storedForm()
{
    static const QString form = u"yyyy-MM-dd HH:mm:ss"_s;
    return form;
}

constexpr qsizetype storedSize = 19;
constexpr qint64 secondsOfDay = 86'400;

QDateTime localInstant(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds);
}

/// Seconds east of UTC: "+01:00".
std::optional<int> offsetFromText(QStringView text)
{
    const QTime time = QTime::fromString(text.mid(1).toString(), u"HH:mm"_s);
    if (!time.isValid() || !(text.startsWith(u'+') || text.startsWith(u'-')))
        return std::nullopt;
    const int seconds = QTime(0, 0).secsTo(time);
    return text.startsWith(u'-') ? -seconds : seconds;
}

} // namespace

QDateTime Clock::now()
{
    return wholeSeconds(fixedTime().isValid() ? fixedTime() : QDateTime::currentDateTime());
}

void Clock::setFixed(const QDateTime& time)
{
    fixedTime() = time;
}

QDateTime wholeSeconds(const QDateTime& time)
{
    return time.isValid() ? localInstant(time.toSecsSinceEpoch()) : QDateTime();
}

QDateTime localTime(const QDate& date, const QTime& time)
{
    if (!date.isValid() || !time.isValid())
        return {};
    const qint64 wall = QDateTime(date, time, Qt::UTC).toSecsSinceEpoch();
    const int before = localInstant(wall - secondsOfDay).offsetFromUtc();
    const int behind = localInstant(wall + secondsOfDay).offsetFromUtc();
    // The greater offset is that of the earlier instant.
    for (const int offset : {qMax(before, behind), qMin(before, behind)}) {
        const QDateTime found = localInstant(wall - offset);
        if (found.offsetFromUtc() == offset)
            return found;
    }
    return localInstant(wall - before);
}

QDateTime longAgo()
{
    return localTime(QDate(1900, 1, 1), QTime(0, 0));
}

QString dateText(const QDateTime& time)
{
    return time.toLocalTime().toString(storedForm());
}

QString instantText(const QDateTime& time)
{
    if (!time.isValid())
        return {};
    const QDateTime local = time.toLocalTime();
    const int minutes = local.offsetFromUtc() / 60;
    return local.toString(storedForm()) + (minutes < 0 ? u'-' : u'+') +
           QTime(0, 0).addSecs(qAbs(minutes) * 60).toString(u"HH:mm"_s);
}

QDateTime dateFromText(const QString& text)
{
    const QStringView wall = QStringView(text).first(qMin(text.size(), storedSize));
    const QDate date = QDate::fromString(wall.first(qMin<qsizetype>(10, wall.size())).toString(), u"yyyy-MM-dd"_s);
    const QTime time = wall.mid(10, 1) == u" " ? QTime::fromString(wall.mid(11).toString(), u"HH:mm:ss"_s) : QTime();
    if (!date.isValid() || !time.isValid())
        return {};
    if (text.size() == storedSize)
        return localTime(date, time);
    const auto offset = offsetFromText(QStringView(text).sliced(storedSize));
    return offset ? localInstant(QDateTime(date, time, Qt::UTC).toSecsSinceEpoch() - *offset) : QDateTime();
}

} // namespace lumivane
