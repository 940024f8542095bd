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

/// The one text form of a date and time in SQL and in logs: "2026-11-24 10:30:00". It reads back exactly.
QString dateText(const QDateTime& time);
QDateTime dateFromText(const QString& text);

} // namespace lumivane
