#pragma once

#include <QStringView>
#include <QtGlobal>
#include <optional>

namespace lumivane {

// The one border at which numbers become rows, columns and lengths of panels, or signed 16-bit ones. Everything here
// rounds to nearest with halves to even, throws RuntimeError 6 with a sentence that names the limit, and never clamps.

/// Whether panels may lie in all of today's sheets and on large dashboards. Off, the limits of 16 bits hold, as they do
/// for whoever else opens the project with a program that knows no others. Set from the key "Large Sheets" in section
/// "Settings" of the settings file, at the start.
void setLargeSheets(bool on);
bool largeSheets();

/// What to add to a sentence that names one of these limits: how more is possible; empty with Large Sheets.
QString largeSheetsHint();

int rowLimit();    ///< 32,767, or the last row of a sheet
int columnLimit(); ///< 256 ("IV"), or the last column of a sheet ("XFD")
int twipsLimit();  ///< 32,767, or what 32 bits hold

/// Rows and distances of rows: between -rowLimit() - 1 and rowLimit().
int toRow(double number);
/// Columns and distances of columns. Without Large Sheets numbers above columnLimit() pass up to 16 bits: it is their
/// letters that end at "IV".
int toColumn(double number);
/// Places and sizes of panels on the dashboard, in twips.
int toStoredTwips(double number);

/// Ids, minutes and what else has 16 bits in any case.
qint16 toInt16(double number);
inline qint16 toInt16(int number)
{
    return toInt16(static_cast<double>(number));
}

/// For a column that has no letters: "Column 300 is beyond column IV, ...".
[[noreturn]] void throwBeyondColumns(int column);

/// The number that a text begins with, 0 if it begins with none. The decimal sign is always a point, blanks in front
/// are skipped: the way in which stored heights, widths and row numbers are read back.
double leadingNumber(QStringView text);

/// The number that the whole text is, as a user types one: blanks around it, "," between the digits in front of the
/// point. None for anything else, an empty text included.
std::optional<double> typedNumber(QStringView text);

/// A number as plain text, with a point and without needless digits: "12.75", "8.43", "15".
QString plainNumber(double number);

} // namespace lumivane
