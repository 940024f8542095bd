#include "engine/read/ContentText.h"

#include "support/ThrownError.h"

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

QString valueText(const WorkbookContent& workbook, const SheetContent& sheet, const Cell& cell)
{
    switch (cell.kind) {
    case CellKind::Blank:
        return u"_"_s;
    case CellKind::Number:
        return QString::number(cell.number, 'g', 15);
    case CellKind::Text:
        return u'"' + workbook.texts.text(cell.text) + u'"';
    case CellKind::SheetText:
        return u'\'' + sheet.texts.text(cell.text) + u'\'';
    case CellKind::Boolean:
        return cell.number != 0 ? u"TRUE"_s : u"FALSE"_s;
    case CellKind::Error:
        return errorText(static_cast<ErrorCode>(cell.text));
    case CellKind::Uncomputed:
        return u"?"_s;
    }
    return {};
}

QString cellsText(const WorkbookContent& workbook, const SheetContent& sheet)
{
    QStringList lines;
    for (size_t i = 0; i < sheet.rows.size(); ++i) {
        QString line = QString::number(sheet.rows[i].row) + u':';
        for (auto [cell, last] = sheet.rowCells(i); cell != last; ++cell) {
            line +=
                u' ' + columnLetters(cell->column) + (cell->formula ? u"==" : u"=") + valueText(workbook, sheet, *cell);
            if (cell->style != 0)
                line += u'/' + QString::number(cell->style);
        }
        lines.append(line);
    }
    return lines.join(u'\n');
}

} // namespace

QString readCells(const QByteArray& bytes, const QString& fileName)
{
    QString text;
    const ThrownError failure = failureOf([&] {
        const auto file = WorkbookFile::open(writeTemporary(fileName, bytes));
        text = cellsText(*file->content(), *file->sheet(0));
    });
    return failure.number ? failure.text : text;
}

std::shared_ptr<WorkbookFile> openBook(const WorkbookParts& parts)
{
    return WorkbookFile::open(writeTemporary(u"Book.xlsx"_s, parts.package()));
}

std::shared_ptr<const SheetContent> readSheet(const WorkbookParts& parts)
{
    return openBook(parts)->sheet(0);
}

QString addresses(const std::vector<CellArea>& areas)
{
    QStringList texts;
    for (const CellArea& area : areas)
        texts.append(area.relative());
    return texts.join(u' ');
}

} // namespace lumivane::test
