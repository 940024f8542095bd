#pragma once

#include <QStringView>
#include <QtGlobal>
#include <optional>

namespace lumivane {

/// The one border at which numbers become signed 16-bit ones: stored geometry, row and column numbers of ranges.
/// Rounds to nearest with halves to even; throws RuntimeError 6 (overflow) beyond the range and never clamps.
qint16 toInt16(double number);
inline qint16 toInt16(int number)
{
    return toInt16(static_cast<double>(number));
}

/// The number that a text begins with, 0 if it begins with none. The decimal sign is always a point, blanks in front
/// are skipped: the way in which stored heights, widths and row numbers are read back.
double leadingNumber(QStringView text);

/// The number that the whole text is, as a user types one: blanks around it, "," between the digits in front of the
/// point. None for anything else, an empty text included.
std::optional<double> typedNumber(QStringView text);

/// A number as plain text, with a point and without needless digits: "12.75", "8.43", "15".
QString plainNumber(double number);

} // namespace lumivane
