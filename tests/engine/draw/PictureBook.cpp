#include "PictureBook.h"

#include "engine/draw/SheetPainter.h"
#include "engine/read/WorkbookFile.h"
#include "support/XlsxWriter.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

QImage PictureBook::image(const QString& area, double scale) const
{
    std::string rows, row;
    for (auto cell = m_cells.begin(); cell != m_cells.end();) {
        const int number = cell->first.first;
        const auto height = m_heights.find(number);
        rows += "<row r='" + std::to_string(number) + "'" +
                (height == m_heights.end() ? std::string()
                                           : " customHeight='1' ht='" + std::to_string(height->second) + "'") +
                ">";
        for (; cell != m_cells.end() && cell->first.first == number; ++cell)
            rows += cell->second;
        rows += "</row>";
    }
    WorkbookParts parts({{"Data",
                          "<sheetFormatPr defaultRowHeight='15'/><cols><col min='1' max='99' customWidth='1' width='" +
                              std::to_string(m_width) + "'/></cols><sheetData>" + rows + "</sheetData>" + m_behind,
                          ""}});
    parts.styles("<fonts><font><sz val='11'/><name val='Calibri'/></font></fonts><fills><fill/>" + m_fills +
                 "</fills><borders><border/>" + m_borders + "</borders><cellXfs><xf/>" + m_formats +
                 "</cellXfs><dxfs>" + m_dxfs + "</dxfs>");
    parts.set("xl/worksheets/_rels/sheet1.xml.rels", "<R>" + m_references + "</R>");
    for (const auto& [name, bytes] : m_entries)
        parts.set(name, bytes);
    const auto file = WorkbookFile::open(writeTemporary(u"Looks.xlsx"_s, parts.package()));
    const auto sheet = file->sheet(0);
    EXPECT_EQ(sheet->problem, QString());
    const auto shown = std::make_shared<ShownSheet>(file->content(), sheet, nullptr, WorkbookFile::sheetsOf(file));
    return SheetPainter(shown).image(CellArea::parse(area).value(), scale);
}

} // namespace lumivane::test
