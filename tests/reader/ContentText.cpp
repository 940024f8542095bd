#include "reader/ContentText.h"

#include "host/embedded/reader/WorkbookReader.h"
#include "support/XlsxWriter.h"

#include <sstream>

namespace lumivane::test {

using namespace embedded;

namespace {

std::string valueText(const WorkbookContent& workbook, const SheetContent& sheet, const Cell& cell)
{
    switch (cell.kind) {
    case CellKind::Blank:
        return "_";
    case CellKind::Number:
        return QByteArray::number(cell.number, 'g', 15).toStdString();
    case CellKind::Text:
        return '"' + workbook.texts.text(cell.text).toStdString() + '"';
    case CellKind::SheetText:
        return '\'' + sheet.texts.text(cell.text).toStdString() + '\'';
    case CellKind::Boolean:
        return cell.number != 0 ? "TRUE" : "FALSE";
    case CellKind::Error:
        return errorText(static_cast<ErrorCode>(cell.text)).toStdString();
    case CellKind::Uncomputed:
        return "?";
    }
    return {};
}

} // namespace

std::string cellsText(const WorkbookContent& workbook, const SheetContent& sheet)
{
    std::ostringstream text;
    for (size_t i = 0; i < sheet.rows.size(); ++i) {
        text << (i == 0 ? "" : "\n") << sheet.rows[i].row << ':';
        for (auto [cell, last] = sheet.rowCells(i); cell != last; ++cell) {
            text << ' ' << columnLetters(cell->column).toStdString() << (cell->formula ? "==" : "=")
                 << valueText(workbook, sheet, *cell);
            if (cell->style != 0)
                text << '/' << cell->style;
        }
    }
    return text.str();
}

std::string areaText(const CellArea& area)
{
    const auto corner = [](int row, int column) { return columnLetters(column).toStdString() + std::to_string(row); };
    return corner(area.firstRow, area.firstColumn) + ":" + corner(area.lastRow, area.lastColumn);
}

std::string readCells(const QByteArray& bytes, const char* fileName)
{
    try {
        const auto workbook = readWorkbook(writeTemporary(QString::fromLatin1(fileName), bytes));
        return cellsText(*workbook, *workbook->sheet(0));
    } catch (const RuntimeError& error) {
        return error.description().toStdString();
    }
}

std::string readFailure(const QByteArray& bytes, const char* fileName)
{
    try {
        readWorkbook(writeTemporary(QString::fromLatin1(fileName), bytes))->sheet(0);
    } catch (const RuntimeError& error) {
        return error.description().toStdString();
    }
    return {};
}

} // namespace lumivane::test
