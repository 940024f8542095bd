#include "SheetFile.h"

#include "host/embedded/EmbeddedHost.h"
#include "support/XlsxWriter.h"

#include <map>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

/// "5:7=30" as the area of its lines and the text behind the sign, in the order given.
std::vector<std::pair<CellArea, QString>> itemsOf(const QString& list)
{
    std::vector<std::pair<CellArea, QString>> items;
    for (const QString& item : list.split(u'|', Qt::SkipEmptyParts)) {
        const QString key = item.section(u'=', 0, 0);
        const auto area = CellArea::parse(key);
        items.emplace_back(area ? *area : CellArea::parse(QString(key % u':' % key)).value(), item.section(u'=', 1));
    }
    return items;
}

QString rowsXml(const QString& cells)
{
    std::map<int, std::map<int, QString>> rows;
    for (const auto& [area, value] : itemsOf(cells)) {
        bool isNumber = false;
        value.toDouble(&isNumber);
        const QString inside = isNumber                 ? u"><v>%1</v>"_s
                               : value.startsWith(u'=') ? u"><f>%1</f>"_s
                                                        : u" t='inlineStr'><is><t>%1</t></is>"_s;
        rows[area.firstRow][area.firstColumn] =
            u"<c r='%1'"_s.arg(area.relative()) + inside.arg(value.toHtmlEscaped().remove(u'=')) + u"</c>"_s;
    }
    QString xml;
    for (const auto& [row, content] : rows) {
        xml += u"<row r='%1'>"_s.arg(row);
        for (const auto& [column, cell] : content)
            xml += cell;
        xml += u"</row>"_s;
    }
    return xml;
}

} // namespace

std::shared_ptr<Worksheet> openSheet(const QString& cells, const QString& heights, const QString& widths)
{
    struct Opened
    {
        engine::ContentCache cache;
        EmbeddedApplication application{cache};
        std::shared_ptr<Worksheet> sheet;
    };
    const WorkbookParts parts({{"Data", "<sheetData>" + rowsXml(cells).toStdString() + "</sheetData>", ""}});
    auto opened = std::make_shared<Opened>();
    opened->sheet =
        opened->application.Open(writeTemporary(u"Report.xlsx"_s, parts.package()))->WorksheetByName(u"Data"_s);
    for (const auto& [rows, points] : itemsOf(heights))
        opened->sheet->setRowHeight(rows.firstRow, rows.lastRow, points.toDouble());
    for (const auto& [columns, characters] : itemsOf(widths))
        opened->sheet->setColumnWidth(columns.firstColumn, columns.lastColumn, characters.toDouble());
    return {opened, opened->sheet.get()};
}

} // namespace lumivane::test
