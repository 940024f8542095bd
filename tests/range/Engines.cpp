#include "Engines.h"

#include "host/embedded/EmbeddedHost.h"
#include "host/embedded/EmbeddedSheet.h"
#include "support/PlainSheet.h"
#include "support/XlsxWriter.h"

#include <cmath>
#include <map>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

QString before(const QString& item)
{
    return item.section(u'=', 0, 0);
}

QString behind(const QString& item)
{
    return item.section(u'=', 1);
}

std::shared_ptr<Worksheet> openPlain(const Grid& grid)
{
    auto sheet = std::make_shared<PlainSheet>(u"Data"_s, u"Report.xlsx"_s);
    for (const QString& item : grid.cells)
        sheet->put(before(item), behind(item));
    for (const QString& item : grid.heights)
        sheet->height(before(item), behind(item).toDouble());
    for (const QString& item : grid.widths)
        sheet->width(before(item), behind(item).toDouble());
    return sheet;
}

std::string cellXml(const QString& address, const QString& value)
{
    bool isNumber = false;
    value.toDouble(&isNumber);
    const QString inside = isNumber ? u"><v>%1</v></c>"_s.arg(value)
                                    : u" t=\"inlineStr\"><is><t>%1</t></is></c>"_s.arg(value.toHtmlEscaped());
    return QString(u"<c r=\"%1\""_s.arg(address) + inside).toStdString();
}

std::string columnsXml(const QStringList& widths)
{
    std::string xml;
    for (const QString& item : widths) {
        const QString key = before(item);
        const CellArea area = *CellArea::parse(key.contains(u':') ? key : QString(key % u':' % key));
        // Stored widths count whole pixels of the default font, its padding of five among them.
        const double characters = behind(item).toDouble();
        const double stored = std::floor((std::round(characters * 7) + 5) / 7 * 256) / 256;
        xml += u"<col min=\"%1\" max=\"%2\" width=\"%3\" customWidth=\"1\"%4/>"_s.arg(area.firstColumn)
                   .arg(area.lastColumn)
                   .arg(characters > 0 ? stored : 9.140625)
                   .arg(characters > 0 ? QString() : u" hidden=\"1\""_s)
                   .toStdString();
    }
    return xml.empty() ? xml : "<cols>" + xml + "</cols>";
}

std::string rowsXml(const Grid& grid)
{
    std::map<int, std::pair<std::string, std::map<int, std::string>>> rows; // attributes, cells by column
    for (const QString& item : grid.heights) {
        const QString key = before(item);
        const CellArea area = *CellArea::parse(key.contains(u':') ? key : QString(key % u':' % key));
        const double points = behind(item).toDouble();
        for (int row = area.firstRow; row <= area.lastRow; ++row)
            rows[row].first =
                points > 0 ? u" ht=\"%1\" customHeight=\"1\""_s.arg(points).toStdString() : " hidden=\"1\"";
    }
    for (const QString& item : grid.cells) {
        const CellArea cell = *CellArea::parse(before(item));
        rows[cell.firstRow].second[cell.firstColumn] = cellXml(before(item), behind(item));
    }
    std::string xml;
    for (const auto& [row, content] : rows) {
        xml += "<row r=\"" + std::to_string(row) + "\"" + content.first + ">";
        for (const auto& [column, cell] : content.second)
            xml += cell;
        xml += "</row>";
    }
    return "<sheetData>" + xml + "</sheetData>";
}

std::shared_ptr<Worksheet> openEmbedded(const Grid& grid)
{
    struct Opened
    {
        embedded::ContentCache cache;
        embedded::EmbeddedApplication application{cache};
        std::shared_ptr<Worksheet> sheet;
    };
    const WorkbookParts parts({{"Data", columnsXml(grid.widths) + rowsXml(grid), ""}});
    auto opened = std::make_shared<Opened>();
    opened->sheet =
        opened->application.Open(writeTemporary(u"Report.xlsx"_s, parts.package()))->WorksheetByName(u"Data"_s);
    return {opened, opened->sheet.get()};
}

} // namespace

const Engine engines[] = {{"plain", openPlain}, {"embedded", openEmbedded}};
const int engineCount = std::size(engines);

} // namespace lumivane::test
