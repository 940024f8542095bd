#include "SheetFile.h"

#include "host/embedded/EmbeddedHost.h"
#include "support/XlsxWriter.h"

#include <cmath>
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

QString columnsXml(const QString& widths)
{
    QString xml;
    for (const auto& [area, text] : itemsOf(widths)) {
        // Stored widths count whole pixels of the default font, its padding of five among them.
        const double characters = text.toDouble();
        const double stored = std::floor((std::round(characters * 7) + 5) / 7 * 256) / 256;
        xml += u"<col min='%1' max='%2' width='%3' customWidth='1'%4/>"_s.arg(area.firstColumn)
                   .arg(area.lastColumn)
                   .arg(characters > 0 ? stored : 9.140625)
                   .arg(characters > 0 ? u""_s : u" hidden='1'"_s);
    }
    return xml.isEmpty() ? xml : u"<cols>"_s + xml + u"</cols>"_s;
}

QString rowsXml(const QString& cells, const QString& heights)
{
    std::map<int, std::pair<QString, std::map<int, QString>>> rows; // attributes, cells by column
    for (const auto& [area, points] : itemsOf(heights)) {
        for (int row = area.firstRow; row <= area.lastRow; ++row)
            rows[row].first = points.toDouble() > 0 ? u" ht='%1' customHeight='1'"_s.arg(points) : u" hidden='1'"_s;
    }
    for (const auto& [area, value] : itemsOf(cells)) {
        bool isNumber = false;
        value.toDouble(&isNumber);
        rows[area.firstRow].second[area.firstColumn] =
            u"<c r='%1'"_s.arg(area.relative()) + (isNumber ? u"><v>%1</v></c>"_s
                                                   : value.startsWith(u'=')
                                                       ? u"><f>%1</f></c>"_s
                                                       : u" t='inlineStr'><is><t>%1</t></is></c>"_s)
                                                      .arg(value.toHtmlEscaped().remove(u'='));
    }
    QString xml;
    for (const auto& [row, content] : rows) {
        xml += u"<row r='%1'%2>"_s.arg(row).arg(content.first);
        for (const auto& [column, cell] : content.second)
            xml += cell;
        xml += u"</row>"_s;
    }
    return u"<sheetData>"_s + xml + u"</sheetData>"_s;
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
    const WorkbookParts parts({{"Data", QString(columnsXml(widths) + rowsXml(cells, heights)).toStdString(), ""}});
    auto opened = std::make_shared<Opened>();
    opened->sheet =
        opened->application.Open(writeTemporary(u"Report.xlsx"_s, parts.package()))->WorksheetByName(u"Data"_s);
    return {opened, opened->sheet.get()};
}

} // namespace lumivane::test
