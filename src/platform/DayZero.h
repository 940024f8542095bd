#pragma once

#include <QDate>

namespace lumivane {

/// The day that spreadsheets and the project file count as 0. Numbers from 61 on (1 March 1900) are right; those before
/// are one less in workbooks that count from 1900, as these have a 29 February 1900.
inline QDate dayZero(bool date1904 = false)
{
    return date1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
}

} // namespace lumivane
