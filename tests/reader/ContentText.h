#pragma once

#include "host/embedded/Content.h"

#include <QByteArray>
#include <string>

namespace lumivane::test {

/// The cells of a sheet, a line for each stored row: `2: A=12.5 C="text" D=TRUE E=#N/A F=? G=_`. Behind "/" stands the
/// style where it is not the first; "?" is a formula without a result, "_" a blank, "=" before a value a formula.
std::string cellsText(const embedded::WorkbookContent& workbook, const embedded::SheetContent& sheet);
std::string areaText(const CellArea& area);

/// The cells of the first sheet of a file with these bytes; of a failure its sentence.
std::string readCells(const QByteArray& bytes, const char* fileName = "Book.xlsx");
/// The sentence with which reading a file with these bytes, first sheet included, fails; empty if it does not.
std::string readFailure(const QByteArray& bytes, const char* fileName = "Book.xlsx");

} // namespace lumivane::test
