#include "platform/Clock.h"

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

// When a clock change repeats an hour, one text stands for two instants. The earlier is taken always, or a time would
// be another one, and look newer, when it is read back from its text.
QDateTime localTime(const QDate& date, const QTime& time)
{
    const QDateTime found(date, time);
    const QDateTime hourBefore = QDateTime::fromMSecsSinceEpoch(found.toMSecsSinceEpoch() - 3'600'000);
    return hourBefore.time() == time ? hourBefore : found;
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
    if (!time.isValid())
        return {};
    const QDateTime local = time.toLocalTime();
    return localTime(local.date(), QTime(local.time().hour(), local.time().minute(), local.time().second()));
}

QString dateText(const QDateTime& time)
{
    return time.toLocalTime().toString(storedForm());
}

QDateTime dateFromText(const QString& text)
{
    const QDateTime parsed = QDateTime::fromString(text, storedForm());
    return parsed.isValid() ? localTime(parsed.date(), parsed.time()) : QDateTime();
}

} // namespace lumivane
