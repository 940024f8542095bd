#pragma once

#include <QDateTime>

namespace lumivane {

/// The present time, local, in whole seconds. Tests put a fixed one in its place.
class Clock
{
public:
    static QDateTime now();
    /// From now on `now()` gives this time; an invalid one goes back to the machine's clock.
    static void setFixed(const QDateTime& time);
};

/// A time of the repository or of a file: local, with the parts below a second cut off. A time that kept them would
/// look newer than the same time read back from the store, for ever.
QDateTime wholeSeconds(const QDateTime& time);
/// A date and time of the clock on the wall. Where a clock change leaves it out, it moves on by as much; where one
/// repeats it, the earlier is meant.
QDateTime localTime(const QDate& date, const QTime& time);
/// 1 January 1900: before every time that a file has.
QDateTime longAgo();

/// The one text form of a date and time in SQL and in logs: "2026-11-24 10:30:00".
QString dateText(const QDateTime& time);
/// With the offset from UTC behind it, "2026-11-24 10:30:00+01:00": for a time that is compared after it was stored. It
/// is the same instant in the hour that a clock change repeats, and where the project is opened in another time zone.
QString instantText(const QDateTime& time);
/// Reads both.
QDateTime dateFromText(const QString& text);

} // namespace lumivane
