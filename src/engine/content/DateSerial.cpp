#include "engine/content/DateSerial.h"

#include "platform/DayZero.h"

namespace lumivane::engine {

std::optional<double> serialFromDay(int year, int month, int day, bool date1904)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    qint64 serial = dayZero(date1904).daysTo(date);
    if (!date1904 && serial <= 60)
        --serial;
    return serial >= 0 && year <= 9999 ? std::optional(double(serial)) : std::nullopt;
}

} // namespace lumivane::engine
