#pragma once

#include "engine/read/WorkbookFile.h"
#include "support/QtPrinting.h"
#include "support/XlsxWriter.h"

namespace lumivane::test {

/// The cells of the first sheet of a file with these bytes, a line for each stored row: `2: A=12.5 C="text" D=TRUE
/// E=#N/A F=? G=_`. Behind "/" stands the style where it is not the first; "?" is a formula without a result, "_" a
/// blank, "==" in front of a value a formula, 'text' a text of the sheet itself. Of a failure its sentence.
QString readCells(const QByteArray& bytes, const QString& fileName = QStringLiteral("Book.xlsx"));

std::shared_ptr<engine::WorkbookFile> openBook(const WorkbookParts& parts);
/// The first sheet of a workbook, read from a file.
std::shared_ptr<const engine::SheetContent> readSheet(const WorkbookParts& parts);

/// "A1:B2 C5": addresses as they come.
QString addresses(const std::vector<CellArea>& areas);

} // namespace lumivane::test
